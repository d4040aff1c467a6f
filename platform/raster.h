// Filled polygons and strokes straight into the pixels of an image, for pictures of many small
// facets.
#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <span>
#include <vector>

#include "platform/picture.h"

// Fills polygons. Keeps its working space from one to the next.
class PolygonFiller {
 public:
  // Fills every pixel whose corner point lies inside the polygon, which is closed by itself. Where
  // it crosses itself, areas alternate. Left and upper edges belong to it, right and lower ones do
  // not: polygons that share an edge meet without a seam and without a pixel in common. Points may
  // lie anywhere; `image` has 32 bits per pixel.
  void Fill(QImage& image, std::span<const QPoint> points, QRgb colour);

 private:
  void FillRow(QRgb* row, int width, int y, std::span<const QPoint> points, QRgb colour);

  std::vector<int> crossings_;
};

struct Stroke {
  QRgb colour = 0;
  int width = 1;  // pixels, at least 1
  LineStyle style = LineStyle::Solid;
};

// A stroke without smoothing, both ends included. It takes the same pixels in both directions, so
// that an edge of two facets is drawn as one.
void DrawStroke(QImage& image, QPoint from, QPoint to, const Stroke& stroke);
