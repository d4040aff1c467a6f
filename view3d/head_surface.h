// The femoral head as facets: the articular sphere, the weight-bearing area with its stress, the
// pole of the stress, the axes and the legend.
//
// Lengths are device pixels of the picture, seen from its centre before they are mapped to it; the
// frame is that of view3d/turn.h.
#pragma once

#include <QPointF>
#include <array>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <vector>

#include "platform/picture_box.h"
#include "platform/raster_box.h"
#include "view3d/head_case.h"
#include "view3d/polygon_renderer.h"
#include "view3d/turn.h"

// What the window knows about the view.
struct HeadView {
  ViewAngles angles;
  int sphereSteps = 10;  // in a half turn
  int areaSteps = 10;
  float radius = 0.0F;  // of the drawing; set by DrawSphere
  HeadCase headCase;
  // Window of the area without stress, rad; with all three 0 it leaves nothing out.
  std::array<float, 3> exclusionBounds{};
};

// Called before each row of points, to show how far the drawing is.
using RowCall = std::function<void()>;

// Numbers by (row, column), both from 0.
class Grid {
 public:
  Grid(std::size_t lastRow, std::size_t lastColumn)
      : rows_(lastRow + 1), columns_(lastColumn + 1), values_(rows_ * columns_) {}
  float& operator()(std::size_t row, std::size_t column) { return values_[Index(row, column)]; }
  float operator()(std::size_t row, std::size_t column) const {
    return values_[Index(row, column)];
  }

 private:
  std::size_t Index(std::size_t row, std::size_t column) const {
    if (row >= rows_ || column >= columns_) throw std::out_of_range("beyond the grid");
    return row * columns_ + column;
  }
  std::size_t rows_;
  std::size_t columns_;
  std::vector<float> values_;
};

// Sampled points, each turned once. Rows and columns of points count from 1; the facet (row,
// column) has this point as its first corner.
struct SampledSurface {
  std::size_t facetRows = 0;
  std::size_t facetColumns = 0;
  Grid x, y;    // on the screen, user units of the picture
  Grid depth;   // positive on the user's side
  Grid stress;  // percent of the legend's top, held within 7 (nothing below 0) to 720; area only

  // True when a corner is on the user's side.
  bool IsFacing(std::size_t row, std::size_t column) const;
};

namespace Vse {
// Screen coordinate of a point at `x`, `y` from the centre of the picture.
float ScreenX(const RasterBox& picture, double x);
float ScreenY(const RasterBox& picture, double y);
}  // namespace Vse

// One quarter of the larger side of the picture.
float DrawingRadius(const RasterBox& picture);

// `view.radius` must be set.
SampledSurface SampleSphere(
    const RasterBox& picture, const HeadView& view, const RowCall& beforeRow = [] {});
SampledSurface SampleArea(
    const RasterBox& picture, const HeadView& view, const RowCall& beforeRow = [] {});

// Clears the picture, sets the view's radius and draws the sphere with the picture's pen and fill.
void DrawSphere(
    RasterBox& picture, Polygon& polygon, HeadView& view, const RowCall& beforeRow = [] {});

// Draws the area over the sphere with the picture's pen. The picture is left with the fill of the
// last facet.
void DrawArea(
    RasterBox& picture, Polygon& polygon, const HeadView& view, const RowCall& beforeRow = [] {});

// The pole of the stress and a point farther out on its ray, on the screen.
struct PoleMark {
  QPointF pole;
  QPointF outer;
  double depth = 0.0;  // of the pole
};
PoleMark FindPole(const RasterBox& picture, const HeadView& view);

// Draws the line from the pole to the outer point.
void DrawPole(RasterBox& picture, const PoleMark& mark);

// Draws the three axes from the centre of the square picture and gives their ends x, y, z; lengths
// in parts of its width.
std::array<QPointF, 3> DrawAxes(PictureBox& picture, const ViewAngles& angles);
inline constexpr double kAxisLength = 1.0 / 2.3;

// The colours from 0 % at the bottom to 100 % at the top.
void DrawLegend(PictureBox& picture);
