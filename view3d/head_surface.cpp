// Samples the head in single precision, turns the points and draws the facets on the user's side.
#include "view3d/head_surface.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "view3d/stress_colour.h"

namespace {

constexpr double kPi = std::numbers::pi;
constexpr float kFacingDepth = 0.01F;
constexpr double kPoleOuterRadius = 1.5;  // of the sphere's

struct Angle {
  float value = 0.0F;  // rad
  double sine = 0.0;
  double cosine = 0.0;
};

// The angles of a loop that counts in single precision, from `start` to `end`, with their sines and
// cosines. The sum of the steps may fall short of the end or pass it by rounding.
std::vector<Angle> LoopAngles(double start, double end, float step) {
  const auto last = static_cast<float>(end);
  auto value = static_cast<float>(start);
  std::vector<Angle> angles;
  while (value <= last) {
    const auto wide = static_cast<double>(value);
    angles.push_back({value, std::sin(wide), std::cos(wide)});
    value += step;
  }
  return angles;
}

float StepOf(int steps) {
  return static_cast<float>(kPi / steps);
}

// Room for the points of the loops, whose count may be out by one, and to spare.
SampledSurface MakeSurface(int rows, int columns) {
  const auto facetRows = static_cast<std::size_t>(rows);
  const auto facetColumns = static_cast<std::size_t>(columns);
  const Grid grid(facetRows + 4, facetColumns + 4);
  return {facetRows, facetColumns, grid, grid, grid, grid};
}

// A row of points u·cos + v·sin + w of the column's angle, turned and mapped to the picture. The
// points never lie exactly on an axis, since no angle in single precision does: the matrix serves.
struct RowPlacer {
  const TurnMatrix& turn;
  double centreX, centreY;

  void Place(SampledSurface& surface, std::size_t row, const std::vector<Angle>& columns, Point3 u,
             Point3 v, Point3 w) const {
    u = Turned(u);
    v = Turned(v);
    w = Turned(w);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const auto at = [&](double Point3::*axis) {
        return u.*axis * columns[i].cosine + v.*axis * columns[i].sine + w.*axis;
      };
      surface.x(row, i + 1) = static_cast<float>(centreX + at(&Point3::x));
      surface.y(row, i + 1) = static_cast<float>(centreY + at(&Point3::y));
      surface.depth(row, i + 1) = static_cast<float>(at(&Point3::z));
    }
  }

  Point3 Turned(const Point3& p) const {
    const auto dot = [&](const Point3& row) { return row.x * p.x + row.y * p.y + row.z * p.z; };
    return {dot(turn.rows[0]), dot(turn.rows[1]), dot(turn.rows[2])};
  }
};

// Stress over the area, percent of the legend's top, row by row.
class StressField {
 public:
  StressField(const HeadView& view, float step, const std::vector<Angle>& columns)
      : pole_(view.headCase.poleAngle),
        halfStep_(static_cast<double>(step) / 2.0),
        amplitude_(Amplitude(view.headCase)),
        bounds_(view.exclusionBounds) {
    for (const Angle& b : columns) {
      const double fromMiddle = static_cast<double>(b.value) - kPi + halfStep_;
      columns_.push_back({std::cos(fromMiddle), std::abs(fromMiddle) < Bound(2)});
    }
  }

  // Stores for each facet of the row at `a` the stress at its centre, within limits. Facets that
  // the load does not reach get the colour of 7 %.
  void StoreRow(SampledSurface& surface, std::size_t row, float a) const {
    const auto wide = static_cast<double>(a);
    const double alongRow = amplitude_ * std::cos(wide - 2.0 * kPi + pole_ + halfStep_);
    const bool excluded = 2.0 * kPi - Bound(1) < wide && wide < 2.0 * kPi - Bound(0);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const bool bare = excluded && columns_[i].excluded;
      surface.stress(row, i + 1) = Stored(bare ? 0.0 : alongRow * columns_[i].cosine);
    }
  }

 private:
  struct Column {
    double cosine = 0.0;
    bool excluded = false;
  };

  // The peak lies at the edge when the pole lies beyond it, and at the pole otherwise.
  static double Amplitude(const HeadCase& head) {
    if (head.edgeAngle > head.poleAngle) return head.scalePeak;
    return head.scalePeak / std::cos(head.poleAngle - head.edgeAngle);
  }

  static float Stored(double stress) {
    if (stress > 720.0) return 720.0F;
    return stress >= 0.0 ? static_cast<float>(stress) : 7.0F;
  }

  double Bound(std::size_t i) const { return static_cast<double>(bounds_[i]); }

  double pole_;
  double halfStep_;
  double amplitude_;
  std::array<float, 3> bounds_;
  std::vector<Column> columns_;
};

// The colours of the bands, worked out once for all facets.
class BandColours {
 public:
  BandColours() {
    for (std::size_t i = 0; i < colours_.size(); ++i) {
      colours_[i] = StressColour(10.0 * static_cast<double>(i));
    }
  }
  Colour Of(float percent) const {
    return percent > 100.0F ? kRed : colours_[static_cast<std::size_t>(percent / 10.0F)];
  }

 private:
  std::array<Colour, 11> colours_{};  // 100 % itself is the eleventh band
};

void AddCorners(Polygon& polygon, const SampledSurface& surface, std::size_t row,
                std::size_t column) {
  const auto add = [&](std::size_t r, std::size_t c) {
    polygon.Point(surface.x(r, c), surface.y(r, c));
  };
  add(row, column);
  add(row, column + 1);
  add(row + 1, column + 1);
  add(row + 1, column);
}

// `setFill` is called before each facet is drawn.
template <class SetFill>
void DrawFacets(Polygon& polygon, const SampledSurface& surface, const SetFill& setFill) {
  for (std::size_t row = 1; row <= surface.facetRows; ++row) {
    for (std::size_t column = 1; column <= surface.facetColumns; ++column) {
      if (!surface.IsFacing(row, column)) continue;
      AddCorners(polygon, surface, row, column);
      setFill(row, column);
      polygon.draw();
    }
  }
}

RowPlacer PlacerOf(const RasterBox& picture, const TurnMatrix& turn) {
  return {turn, picture.ScaleWidth() / 2.0, picture.ScaleHeight() / 2.0};
}

}  // namespace

bool SampledSurface::IsFacing(std::size_t row, std::size_t column) const {
  return depth(row, column) > kFacingDepth || depth(row, column + 1) > kFacingDepth ||
         depth(row + 1, column + 1) > kFacingDepth || depth(row + 1, column) > kFacingDepth;
}

float Vse::ScreenX(const RasterBox& picture, double x) {
  return static_cast<float>(picture.ScaleWidth() / 2.0 + x);
}

float Vse::ScreenY(const RasterBox& picture, double y) {
  return static_cast<float>(picture.ScaleHeight() / 2.0 + y);
}

float DrawingRadius(const RasterBox& picture) {
  return static_cast<float>(std::max(picture.ScaleWidth(), picture.ScaleHeight()) / 4.0);
}

// Both loops begin a whole turn late, which sines and cosines do not notice but single precision
// does.
SampledSurface SampleSphere(const RasterBox& picture, const HeadView& view,
                            const RowCall& beforeRow) {
  const float step = StepOf(view.sphereSteps);
  const auto wideStep = static_cast<double>(step);
  const auto radius = static_cast<double>(view.radius);
  const std::vector<Angle> polar = LoopAngles(2.0 * kPi, 3.0 * kPi + wideStep, step);
  const std::vector<Angle> azimuth = LoopAngles(2.0 * kPi, 4.0 * kPi + wideStep, step);
  const TurnMatrix turn = MatrixOf(view.angles);
  const RowPlacer placer = PlacerOf(picture, turn);
  SampledSurface surface = MakeSurface(view.sphereSteps, 2 * view.sphereSteps);
  for (std::size_t i = 0; i < polar.size(); ++i) {
    beforeRow();
    const double ring = radius * polar[i].sine;
    placer.Place(surface, i + 1, azimuth, {ring, 0, 0}, {0, 0, ring},
                 {0, radius * polar[i].cosine, 0});
  }
  return surface;
}

SampledSurface SampleArea(const RasterBox& picture, const HeadView& view,
                          const RowCall& beforeRow) {
  const float step = StepOf(view.areaSteps);
  const auto wideStep = static_cast<double>(step);
  const auto radius = static_cast<double>(view.radius);
  const double edge = view.headCase.edgeAngle;
  const std::vector<Angle> rows = LoopAngles(2.0 * kPi - edge, 3.0 * kPi - edge + wideStep, step);
  const std::vector<Angle> columns = LoopAngles(kPi / 2.0, 3.0 * kPi / 2.0 + wideStep, step);
  const TurnMatrix turn = MatrixOf(view.angles);
  const RowPlacer placer = PlacerOf(picture, turn);
  const StressField field(view, step, columns);
  SampledSurface surface = MakeSurface(view.areaSteps, view.areaSteps);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    beforeRow();
    placer.Place(surface, i + 1, columns, {-radius * rows[i].sine, 0, radius * rows[i].cosine},
                 {0, radius, 0}, {});
    field.StoreRow(surface, i + 1, rows[i].value);
  }
  return surface;
}

void DrawSphere(RasterBox& picture, Polygon& polygon, HeadView& view, const RowCall& beforeRow) {
  polygon.Device(picture);
  view.radius = DrawingRadius(picture);
  const SampledSurface surface = SampleSphere(picture, view, beforeRow);
  picture.Cls();
  DrawFacets(polygon, surface, [](std::size_t, std::size_t) {});
}

void DrawArea(RasterBox& picture, Polygon& polygon, const HeadView& view,
              const RowCall& beforeRow) {
  polygon.Device(picture);
  const SampledSurface surface = SampleArea(picture, view, beforeRow);
  const BandColours colours;
  picture.SetFillStyle(FillKind::Solid);
  DrawFacets(polygon, surface, [&](std::size_t row, std::size_t column) {
    picture.SetFillColor(colours.Of(surface.stress(row, column)));
  });
}

// The pole is a point of the area, with an angle that is out of a half turn by rounding: so it
// never lies exactly on an axis, where the turn would lead it astray.
PoleMark FindPole(const RasterBox& picture, const HeadView& view) {
  const double radius = static_cast<double>(view.radius);
  const double a = 2.0 * kPi - view.headCase.poleAngle;
  const double b = static_cast<double>(static_cast<float>(kPi));
  PointTurner turner(view.angles);
  const auto place = [&](double r) {
    return turner.Turn(
        {-r * std::sin(a) * std::cos(b), r * std::sin(b), r * std::cos(a) * std::cos(b)});
  };
  const auto onScreen = [&](const Point3& p) {
    return QPointF(static_cast<double>(Vse::ScreenX(picture, p.x)),
                   static_cast<double>(Vse::ScreenY(picture, p.y)));
  };
  const Point3 pole = place(radius);
  return {onScreen(pole), onScreen(place(kPoleOuterRadius * radius)), pole.z};
}

// The facets before may have been drawn without outlines; the line is always seen.
void DrawPole(RasterBox& picture, const PoleMark& mark) {
  const LineStyle style = picture.DrawStyle();
  picture.SetDrawStyle(LineStyle::Solid);
  picture.Line(mark.pole, mark.outer, kBlack);
  picture.SetDrawStyle(style);
}

std::array<QPointF, 3> DrawAxes(PictureBox& picture, const ViewAngles& angles) {
  picture.Cls();
  picture.Scale(0.0, 0.0, 1.0, 1.0);
  const QPointF origin(0.5, 0.5);
  PointTurner turner(angles);
  std::array<QPointF, 3> ends;
  const std::array<Point3, 3> axes = {Point3{kAxisLength, 0, 0}, Point3{0, -kAxisLength, 0},
                                      Point3{0, 0, kAxisLength}};
  for (std::size_t i = 0; i < axes.size(); ++i) {
    const Point3 end = turner.Turn(axes[i]);
    ends[i] = origin + QPointF(end.x, end.y);
    picture.Line(origin, ends[i], kBlack);
  }
  return ends;
}

void DrawLegend(PictureBox& picture) {
  constexpr int kBands = 10;
  picture.Cls();
  picture.SetScaleMode(ScaleUnit::Pixels);
  picture.SetDrawStyle(LineStyle::None);
  picture.SetFillStyle(FillKind::Solid);
  const double height = picture.ScaleHeight();
  const auto level = [&](int band) { return std::round(height * (kBands - band) / kBands); };
  for (int band = 0; band < kBands; ++band) {
    picture.LineFilledBox({-1.0, level(band)}, {picture.ScaleWidth(), level(band + 1)},
                          StressColour(100.0 * band / kBands));
  }
}
