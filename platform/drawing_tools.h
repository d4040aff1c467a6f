// Pen and fill of the pictures that are drawn on.
#pragma once

#include <cassert>

#include "platform/picture.h"

// The part that PictureBox and RasterBox share: what the next shapes are drawn with.
class DrawingTools {
 public:
  // Each stroke is given its colour. A width of 1 is a device-independent pixel.
  int DrawWidth() const { return drawWidth_; }
  LineStyle DrawStyle() const { return drawStyle_; }
  FillKind FillStyle() const { return fill_.kind; }
  Colour FillColor() const { return fill_.colour; }
  void SetDrawWidth(int width) {
    assert(width >= 1);
    drawWidth_ = width;
  }
  void SetDrawStyle(LineStyle style) { drawStyle_ = style; }
  void SetFillStyle(FillKind kind) { fill_.kind = kind; }
  void SetFillColor(Colour colour) { fill_.colour = colour; }

 protected:
  DrawingTools() = default;
  ~DrawingTools() = default;

  Pen PenOf(Colour colour) const { return {colour, drawWidth_, drawStyle_}; }
  const Fill& Filling() const { return fill_; }

 private:
  int drawWidth_ = 1;
  LineStyle drawStyle_ = LineStyle::Solid;
  Fill fill_;
};
