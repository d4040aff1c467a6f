// First the circle whose outline gets darker outward all around, among all within reach; then the
// edge itself along rays from its centre, point by point.
#include "landmarks/edge_snap.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <tuple>
#include <utility>

#include "landmarks/grey_slope.h"

namespace Landmarks {

namespace {

// All lengths are parts of the rough circle's radius.
constexpr double kCentreReach = 0.3;
constexpr double kRadiusReach = 0.25;
constexpr double kBlur = 0.022;
constexpr double kSearchStep = 0.04;
constexpr double kOtherCircle = 0.14;  // from here on circles are different ones
constexpr double kEdgeReach = 0.08;    // from the found circle to its edge
constexpr double kOnOutline = 0.012;   // points that are nearer always belong to the outline
constexpr double kOffOutline = 0.02;   // and points that are further never do

constexpr double kNoiseAlone = 6.0;   // the clearness that noise alone does not reach
constexpr double kFaint = 0.3;        // of the usual slope; a fainter one is no edge
constexpr double kMostSlanted = 0.7;  // slope along the outline over slope across it
constexpr double kLeastSeen = 0.6;
constexpr double kMostOther = 0.85;  // score of another circle over that of the best

constexpr int kRays = 180;
constexpr int kSearchRays = 48;

// Of a square root's start, smoothed: the place of its steepest slope, in standard deviations.
constexpr double kSteepestInside = 0.76495;

std::vector<Point> Directions(int rays) {
  std::vector<Point> directions;
  for (int ray = 0; ray < rays; ++ray) {
    const double angle = 2.0 * std::numbers::pi * ray / rays;
    directions.push_back({std::cos(angle), std::sin(angle)});
  }
  return directions;
}

double Median(std::vector<double> values) {
  if (values.empty()) return 0.0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// What the search for a circle goes by.
struct Search {
  GreySlope slope;
  std::vector<Point> outward;  // the rays' directions
  double usual = 0.0;          // slope of a head's edge, grey levels per mm
};

// The steepest slope of each ray near the rough outline, as the median of all rays.
double UsualSlope(const Search& search, const Circle& rough) {
  const double reach = kCentreReach * rough.radius;
  const double step = search.slope.Blur() / 2.0;
  const int steps = static_cast<int>(reach / step);
  std::vector<double> steepest;
  for (const Point& outward : search.outward) {
    double most = 0.0;
    for (int i = -steps; i <= steps; ++i) {
      const Point at = rough.centre + (rough.radius + i * step) * outward;
      const double drop = search.slope.Drop(at, outward);
      if (drop > most) most = drop;
    }
    steepest.push_back(most);
  }
  return Median(std::move(steepest));
}

struct Scored {
  Circle circle;
  double score = 0.0;
};

// From 0 to 1: how much darker it gets outward, where no place counts more than the usual slope.
double Score(const Search& search, const Circle& circle) {
  double sum = 0.0;
  for (const Point& outward : search.outward) {
    const double drop = search.slope.Drop(circle.centre + circle.radius * outward, outward);
    if (drop > 0.0) sum += std::min(drop / search.usual, 1.0);
  }
  return sum / static_cast<double>(search.outward.size());
}

std::vector<Scored> SearchAll(const Search& search, const Circle& rough) {
  const int centres = static_cast<int>(kCentreReach / kSearchStep);
  const int radii = static_cast<int>(kRadiusReach / kSearchStep);
  const double step = kSearchStep * rough.radius;
  std::vector<Scored> all;
  for (int x = -centres; x <= centres; ++x) {
    for (int y = -centres; y <= centres; ++y) {
      for (int r = -radii; r <= radii; ++r) {
        const Circle circle = {rough.centre + Point{x * step, y * step}, rough.radius + r * step};
        all.push_back({circle, Score(search, circle)});
      }
    }
  }
  return all;
}

bool IsBetter(const Scored& a, const Scored& b) {
  return a.score < b.score;
}

// Uphill with ever smaller steps.
Scored Climb(const Search& search, Scored best, double step) {
  const double end = step / 10.0;
  while (step > end) {
    const Scored before = best;
    for (const auto& [x, y, r] :
         {std::tuple{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}}) {
      Circle moved = before.circle;
      moved.centre = moved.centre + Point{x * step, y * step};
      moved.radius += r * step;
      const double score = Score(search, moved);
      if (score > best.score) best = {moved, score};
    }
    if (!(best.score > before.score)) step /= 2.0;
  }
  return best;
}

double Apart(const Circle& a, const Circle& b) {
  return std::max(Length(a.centre - b.centre), std::abs(a.radius - b.radius));
}

// The highest peak of the slope along one ray, the nearer to the circle the better; where it is
// from the centre.
std::optional<double> EdgeOnRay(const GreySlope& slope, const Circle& circle, Point outward,
                                double reach, double least) {
  const double step = slope.Blur() / 6.0;
  const auto dropAt = [&](double at) { return slope.Drop(circle.centre + at * outward, outward); };
  std::optional<double> edge;
  double best = 0.0;
  const int steps = static_cast<int>(reach / step);
  for (int i = -steps; i <= steps; ++i) {
    const double off = i * step;
    const double at = circle.radius + off;
    const double before = dropAt(at - step);
    const double here = dropAt(at);
    const double after = dropAt(at + step);
    if (!(here >= least) || !(here >= before) || !(here > after)) continue;
    const double weight = here * std::exp(-4.0 * off * off / (reach * reach));
    if (weight <= best) continue;
    best = weight;
    edge = at + step * (before - after) / (before - 2.0 * here + after) / 2.0;
  }
  return edge;
}

// Points on the edge, one a ray where there is one, as the ball's outline has them.
std::vector<Point> EdgePoints(const GreySlope& slope, const Circle& circle, double reach,
                              double least) {
  const double inside = kSteepestInside * slope.Blur();
  const Circle steepest = {circle.centre, circle.radius - inside};
  std::vector<Point> points;
  for (const Point& outward : Directions(kRays)) {
    const auto edge = EdgeOnRay(slope, steepest, outward, reach, least);
    if (!edge) continue;
    const Point at = circle.centre + *edge * outward;
    const double along = slope.Drop(at, {-outward.y, outward.x});
    if (!(std::abs(along) <= kMostSlanted * slope.Drop(at, outward))) continue;
    points.push_back(at + inside * outward);
  }
  return points;
}

std::vector<Point> OnOutline(const std::vector<Point>& points, const Circle& circle, double unit) {
  std::vector<double> off;
  off.reserve(points.size());
  for (const Point& point : points) {
    off.push_back(std::abs(Length(point - circle.centre) - circle.radius));
  }
  const double most = std::clamp(3.0 * Median(off), kOnOutline * unit, kOffOutline * unit);
  std::vector<Point> kept;
  kept.reserve(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (off[i] <= most) kept.push_back(points[i]);
  }
  return kept;
}

// Fits, leaves out what does not lie on the circle, and fits again.
std::optional<CircleFit> FitOutline(std::vector<Point>& points, Circle circle, double unit) {
  constexpr int kRounds = 6;
  std::optional<CircleFit> fit;
  std::vector<Point> kept = points;
  for (int round = 0; round < kRounds; ++round) {
    fit = FitCircle(kept);
    if (!fit) return std::nullopt;
    circle = fit->circle;
    kept = OnOutline(points, circle, unit);
  }
  points = kept;
  return fit;
}

Snap Refused(SnapDoubt doubt, Snap snap = {}) {
  snap.doubt = doubt;
  snap.fit.reset();
  return snap;
}

bool IsUsable(const GreyView& view, const Circle& rough) {
  constexpr double kFewestPixels = 12.0;  // in the radius
  const double pixel = std::max(view.spacing.row, view.spacing.column);
  const auto pixels = static_cast<std::size_t>(view.width) * static_cast<std::size_t>(view.height);
  return view.width > 0 && view.height > 0 && view.grey.size() >= pixels && pixel > 0.0 &&
         std::isfinite(rough.radius) && rough.radius >= kFewestPixels * pixel &&
         std::isfinite(rough.centre.x) && std::isfinite(rough.centre.y);
}

// From the circle that the search found to the one that its edge points give.
Snap FollowEdge(const Search& search, const Circle& rough, Circle circle) {
  const GreySlope& slope = search.slope;
  Snap snap;
  snap.clearness = search.usual / slope.Noise();
  const double least = std::max(kFaint * search.usual, 4.0 * slope.Noise());
  circle.radius += kSteepestInside * slope.Blur();
  for (const double narrower : {1.0, 0.7, 0.5}) {
    snap.edge = EdgePoints(slope, circle, narrower * kEdgeReach * rough.radius, least);
    snap.fit = FitOutline(snap.edge, circle, rough.radius);
    if (!snap.fit) return Refused(SnapDoubt::TooLittle, snap);
    circle = snap.fit->circle;
  }
  snap.seen = static_cast<double>(snap.edge.size()) / kRays;
  return snap;
}

// The best score of circles that are not the one found.
double OtherScore(const Search& search, const std::vector<Scored>& all, const Scored& found,
                  double unit) {
  const auto isOther = [&](const Scored& scored) {
    return Apart(scored.circle, found.circle) > kOtherCircle * unit;
  };
  Scored other;
  for (const Scored& scored : all) {
    if (scored.score > other.score && isOther(scored)) other = scored;
  }
  const Scored climbed = Climb(search, other, kSearchStep * unit / 2.0);
  return isOther(climbed) ? climbed.score : other.score;
}

bool IsWithinReach(const Circle& circle, const Circle& rough) {
  return Length(circle.centre - rough.centre) <= kCentreReach * rough.radius &&
         std::abs(circle.radius - rough.radius) <= kRadiusReach * rough.radius;
}

}  // namespace

Snap SnapToEdge(const GreyView& view, const Circle& rough) {
  if (!IsUsable(view, rough)) return Refused(SnapDoubt::NoStart);
  constexpr double kReach = 1.0 + kCentreReach + kRadiusReach + 2.0 * kEdgeReach;
  Search search{GreySlope(view, rough.centre, kReach * rough.radius, kBlur * rough.radius),
                Directions(kSearchRays)};
  search.usual = UsualSlope(search, rough);
  if (!(search.usual > kNoiseAlone * search.slope.Noise())) return Refused(SnapDoubt::NoEdge);
  const std::vector<Scored> all = SearchAll(search, rough);
  const Scored best = *std::max_element(all.begin(), all.end(), IsBetter);
  const Scored found = Climb(search, best, kSearchStep * rough.radius / 2.0);
  const double other = OtherScore(search, all, found, rough.radius);
  Snap snap = FollowEdge(search, rough, found.circle);
  if (!snap.fit) return snap;
  if (snap.seen < kLeastSeen) return Refused(SnapDoubt::TooLittle, snap);
  if (other > kMostOther * found.score) return Refused(SnapDoubt::OtherRound, snap);
  if (!IsWithinReach(snap.fit->circle, rough)) return Refused(SnapDoubt::TooFar, snap);
  snap.doubt = SnapDoubt::None;
  return snap;
}

}  // namespace Landmarks
