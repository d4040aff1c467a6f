// The exposure: rays from the source through the bodies to the picture.
#include "tests/support/phantom.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "tests/support/phantom_bodies.h"
#include "tests/support/random_numbers.h"

namespace Phantom {

namespace {

using Landmarks::Circle;
using Landmarks::Point;

struct Interval {
  double from = 0.0;
  double to = 0.0;
};

struct Ray {
  Space source;
  Space direction;  // of length 1
};

// Between the patient's frame and the picture.
class View {
 public:
  explicit View(const Setup& setup) : setup_(setup) {
    const Point middle = {(setup.width - 1) * setup.spacing.column / 2.0,
                          (setup.height - 1) * setup.spacing.row / 2.0};
    axis_ = setup.axis.value_or(middle);
    cosine_ = std::cos(setup.tilt);
    sine_ = std::sin(setup.tilt);
    mirror_ = setup.flipped ? -1.0 : 1.0;
  }

  // From the central ray, with z from the source.
  Space AtTable(Space p) const {
    return {mirror_ * (p.x * cosine_ - p.y * sine_) + setup_.pelvis.x,
            p.x * sine_ + p.y * cosine_ + setup_.pelvis.y, p.z + setup_.sourceToHip};
  }

  Point Project(Space p) const {
    const Space t = AtTable(p);
    return axis_ + setup_.sourceToDetector / t.z * Point{t.x, t.y};
  }

  Ray RayTo(Point point) const {
    const Point flat = point - axis_;
    const double length = std::hypot(flat.x, flat.y, setup_.sourceToDetector);
    Space direction = Turned(flat);
    direction.z = setup_.sourceToDetector;
    Space source = Turned(-1.0 * setup_.pelvis);
    source.z = -setup_.sourceToHip;
    return {source, {direction.x / length, direction.y / length, direction.z / length}};
  }

  // The outline of a ball is where the rays that touch it meet the picture, an ellipse whose long
  // axis points to the central ray. Its axes differ so little that the circle that fits best has
  // the mean of both as its radius.
  Circle Outline(Space centre, double radius) const {
    const Space t = AtTable(centre);
    const double sideways = std::hypot(t.x, t.y);
    const double off = std::atan2(sideways, t.z);
    const double half = std::asin(radius / std::hypot(sideways, t.z));
    const double far = setup_.sourceToDetector * std::tan(off + half);
    const double near = setup_.sourceToDetector * std::tan(off - half);
    const double longHalf = (far - near) / 2.0;
    const double shortHalf =
        longHalf * std::sqrt(1.0 - std::pow(std::sin(off) / std::cos(half), 2));
    const double middle = (far + near) / 2.0;
    const Point outward = sideways > 0.0 ? 1.0 / sideways * Point{t.x, t.y} : Point{};
    return {axis_ + middle * outward, (longHalf + shortHalf) / 2.0};
  }

 private:
  Space Turned(Point p) const {
    const double x = mirror_ * p.x;
    return {x * cosine_ + p.y * sine_, -x * sine_ + p.y * cosine_, 0.0};
  }

  const Setup& setup_;
  Point axis_;
  double cosine_ = 1.0;
  double sine_ = 0.0;
  double mirror_ = 1.0;
};

// Where along the ray the ellipsoid is, in mm; empty as from ≥ to.
Interval Inside(const Ray& ray, const Ellipsoid& e) {
  const Space d = {ray.direction.x / e.semiAxes.x, ray.direction.y / e.semiAxes.y,
                   ray.direction.z / e.semiAxes.z};
  const Space s = {(ray.source.x - e.centre.x) / e.semiAxes.x,
                   (ray.source.y - e.centre.y) / e.semiAxes.y,
                   (ray.source.z - e.centre.z) / e.semiAxes.z};
  const double dd = d.x * d.x + d.y * d.y + d.z * d.z;
  const double middle = -(d.x * s.x + d.y * s.y + d.z * s.z) / dd;
  const double square = middle * middle - (s.x * s.x + s.y * s.y + s.z * s.z - 1.0) / dd;
  if (!(square > 0.0)) return {};
  return {middle - std::sqrt(square), middle + std::sqrt(square)};
}

double UnionLength(std::vector<Interval>& intervals) {
  std::sort(intervals.begin(), intervals.end(),
            [](const Interval& a, const Interval& b) { return a.from < b.from; });
  double length = 0.0;
  double end = -std::numeric_limits<double>::infinity();
  for (const Interval& interval : intervals) {
    length += std::max(0.0, interval.to - std::max(interval.from, end));
    end = std::max(end, interval.to);
  }
  return length;
}

// A part and the square of the picture outside which it throws no shadow.
struct Shadow {
  const Ellipsoid* part = nullptr;
  Point centre;
  double reach = 0.0;
};

std::vector<Shadow> ShadowsOf(const Body& body, const View& view, const Setup& setup) {
  constexpr double kSlack = 1.1;  // a shadow off the central ray is an ellipse
  std::vector<Shadow> shadows;
  for (const Ellipsoid& part : body.parts) {
    const double radius = std::max({part.semiAxes.x, part.semiAxes.y, part.semiAxes.z});
    const double depth = view.AtTable(part.centre).z - radius;
    shadows.push_back(
        {&part, view.Project(part.centre), kSlack * radius * setup.sourceToDetector / depth});
  }
  return shadows;
}

// One row of the picture: a ray to each pixel, and its path through everything so far.
struct Row {
  double y = 0.0;
  std::vector<Ray> rays;
  std::vector<double> paths;
  std::vector<std::vector<Interval>> inside;  // the body that is being added, of each ray
};

Row RowAt(int row, const View& view, const Setup& setup) {
  const auto width = static_cast<std::size_t>(setup.width);
  Row made{row * setup.spacing.row,
           {},
           std::vector<double>(width),
           std::vector<std::vector<Interval>>(width)};
  for (int column = 0; column < setup.width; ++column) {
    made.rays.push_back(view.RayTo({column * setup.spacing.column, made.y}));
  }
  return made;
}

// The columns that a shadow may cover, the last one not included.
std::pair<std::size_t, std::size_t> ColumnsOf(const Shadow& shadow, const Setup& setup) {
  const auto column = [&](double x) {
    return static_cast<std::size_t>(
        std::clamp(x / setup.spacing.column, 0.0, static_cast<double>(setup.width)));
  };
  return {column(shadow.centre.x - shadow.reach), column(shadow.centre.x + shadow.reach)};
}

void AddBody(const std::vector<Shadow>& shadows, double attenuation, const Setup& setup, Row& row) {
  std::size_t first = row.rays.size();
  std::size_t end = 0;
  for (const Shadow& shadow : shadows) {
    if (std::abs(shadow.centre.y - row.y) >= shadow.reach) continue;
    const auto [from, to] = ColumnsOf(shadow, setup);
    first = std::min(first, from);
    end = std::max(end, to);
    for (std::size_t i = from; i < to; ++i) {
      const Interval found = Inside(row.rays[i], *shadow.part);
      if (found.to > found.from) row.inside[i].push_back(found);
    }
  }
  for (std::size_t i = first; i < end; ++i) {
    if (row.inside[i].empty()) continue;
    row.paths[i] += attenuation * UnionLength(row.inside[i]);
    row.inside[i].clear();
  }
}

double PathOf(const std::vector<Body>& bodies, const Ray& ray) {
  double path = 0.0;
  for (const Body& body : bodies) {
    std::vector<Interval> inside;
    for (const Ellipsoid& part : body.parts) inside.push_back(Inside(ray, part));
    path += body.attenuation * UnionLength(inside);
  }
  return path;
}

// A photon count. Above a few dozen it is a rounded normal number to better than the eye can tell.
double Count(RandomNumbers& random, double expected) {
  return std::max(0.0, std::round(random.Normal(expected, std::sqrt(expected))));
}

// The path that a count of photons stands for; `boneCount` come through at path 0.
double Noisy(double path, double boneCount, RandomNumbers& random) {
  if (!(boneCount > 0.0)) return path;
  return -std::log(std::max(0.5, Count(random, boneCount * std::exp(-path))) / boneCount);
}

// Photographic density: as a detector's processing shows it, linear in the path.
std::uint16_t Grey(double pathAboveBone) {
  constexpr double kBone = 1500.0;
  constexpr double kPerPath = 800.0;
  return static_cast<std::uint16_t>(
      std::clamp(std::lround(kBone + kPerPath * pathAboveBone), 0L, long{kMostGrey}));
}

Landmarks::Marks MarksOf(const Anatomy& anatomy, const View& view, double side) {
  const Landmarks3 at = LandmarksOf(anatomy, side);
  Landmarks::Marks marks;
  marks.head = view.Outline(at.head, anatomy.headRadius);
  marks.other = view.Outline(LandmarksOf(anatomy, -side).head, anatomy.headRadius);
  marks.socketEdge = view.Project(at.socketEdge);
  marks.crestTop = view.Project(at.crestTop);
  marks.crestLateral = view.Project(at.crestLateral);
  marks.trochanter = view.Project(at.trochanter);
  return marks;
}

}  // namespace

Truth TruthOf(const Anatomy& anatomy, const Setup& setup) {
  const View view(setup);
  Truth truth{MarksOf(anatomy, view, 1.0), MarksOf(anatomy, view, -1.0),
              setup.sourceToDetector / setup.sourceToHip, std::nullopt};
  if (setup.ball) {
    truth.ball = view.Outline({setup.ball->x, setup.ball->y, 0.0}, setup.ball->diameter / 2.0);
  }
  return truth;
}

Picture Render(const Anatomy& anatomy, const Setup& setup) {
  const View view(setup);
  const std::vector<Body> bodies = BodiesOf(anatomy, setup);
  std::vector<std::vector<Shadow>> shadows;
  shadows.reserve(bodies.size());
  for (const Body& body : bodies) shadows.push_back(ShadowsOf(body, view, setup));
  const double bone = PathOf(bodies, view.RayTo(view.Project(LandmarksOf(anatomy, 1.0).head)));
  const double boneCount = setup.signalToNoise * setup.signalToNoise;
  RandomNumbers random(setup.seed);
  Picture picture{setup.width, setup.height, setup.spacing, {}, TruthOf(anatomy, setup)};
  for (int y = 0; y < setup.height; ++y) {
    Row row = RowAt(y, view, setup);
    for (std::size_t i = 0; i < bodies.size(); ++i) {
      AddBody(shadows[i], bodies[i].attenuation, setup, row);
    }
    for (const double path : row.paths) {
      picture.grey.push_back(Grey(Noisy(path - bone, boneCount, random)));
    }
  }
  return picture;
}

Setup PartOf(const Setup& setup, Point centre, double halfWidth) {
  const Point middle = {(setup.width - 1) * setup.spacing.column / 2.0,
                        (setup.height - 1) * setup.spacing.row / 2.0};
  const int column = static_cast<int>((centre.x - halfWidth) / setup.spacing.column);
  const int row = static_cast<int>((centre.y - halfWidth) / setup.spacing.row);
  Setup part = setup;
  part.axis =
      setup.axis.value_or(middle) - Point{column * setup.spacing.column, row * setup.spacing.row};
  part.width = static_cast<int>(2.0 * halfWidth / setup.spacing.column);
  part.height = static_cast<int>(2.0 * halfWidth / setup.spacing.row);
  return part;
}

}  // namespace Phantom
