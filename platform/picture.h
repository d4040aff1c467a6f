// A drawing as shapes in the user's units, so that it can be painted at any resolution, on screen
// or on paper, and read as geometry.
#pragma once

#include <QColor>
#include <QImage>
#include <QPalette>
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

class QPainter;

// A colour as 0x00BBGGRR (255 is red, 0xFF0000 blue), or a colour of the desktop.
using Colour = std::uint32_t;
inline constexpr Colour kBlack = 0;
inline constexpr Colour kRed = 255;
inline constexpr Colour kBlue = 0xFF0000;
inline constexpr Colour kWhite = 0xFFFFFF;
inline constexpr Colour kButtonFace = 0x8000000F;  // the only desktop colour in use

// The opaque pixel of a colour that is not the desktop's.
inline QRgb PixelOf(Colour colour) {
  return qRgb(static_cast<int>(colour & 0xFFU), static_cast<int>(colour >> 8U & 0xFFU),
              static_cast<int>(colour >> 16U & 0xFFU));
}

// The colour to paint with. Button face is the palette's window colour; under a dark palette it is
// a light grey instead, since black and blue strokes cannot be read on a dark ground.
QColor PaintColour(Colour colour, const QPalette& palette);

// How strokes are drawn and areas filled. The numbers are the classic ones.
enum class LineStyle { Solid = 0, Dotted = 2, None = 5 };
enum class FillKind { Solid = 0, Transparent = 1 };

struct Pen {
  Colour colour = kBlack;
  int width = 1;  // device-independent pixels, at least 1
  LineStyle style = LineStyle::Solid;
  bool operator==(const Pen&) const = default;
};

struct Fill {
  Colour colour = kBlack;
  FillKind kind = FillKind::Transparent;
  bool operator==(const Fill&) const = default;
};

struct LineShape {
  QPointF from, to;
};
struct BoxShape {
  QPointF from, to;  // opposite corners
};
// `radius` counts in horizontal units; the circle is round whatever the scale. Angles in radians,
// counter-clockwise from +x as seen on the screen.
struct ArcShape {
  QPointF centre;
  double radius = 0.0;
  double start = 0.0;
  double sweep = 0.0;  // 0 to 2π; 2π is the whole circle
};
using Shape = std::variant<LineShape, BoxShape, ArcShape>;

// One shape, with the user coordinates that were in force: `scale` is the whole picture in them
// (left, top, width, height; width and height of either sign).
struct Drawing {
  Shape shape;
  Pen pen;
  Fill fill;
  QRectF scale;
};

// How a picture meets its target.
struct PaintOptions {
  QPalette palette;
  double lineUnit = 1.0;  // a pen of width 1 in units of the painter; 1/96 inch is a good choice
  // Painter units are device pixels: upright and level lines then cover whole pixels.
  bool snapToPixels = false;
};

// A finished picture: what PictureBox::Image gives and what its background can be.
struct Picture {
  std::optional<Colour> ground;  // none: what lies below shows through
  std::vector<Drawing> drawings;

  // Stretched over `target`, clipped to it, at the painter's own resolution.
  void Paint(QPainter& painter, const QRectF& target, const PaintOptions& options) const;

  // In `pixels` pixels; a pen of width 1 is `pixelRatio` pixels wide.
  QImage ToImage(QSize pixels, double pixelRatio, const QPalette& palette) const;
};

// Paints drawings one by one over what `target` shows.
void PaintDrawings(QPainter& painter, const QRectF& target, const PaintOptions& options,
                   std::vector<Drawing>::const_iterator begin,
                   std::vector<Drawing>::const_iterator end);
