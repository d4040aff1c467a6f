// A picture kept as pixels, for drawings of so many facets that a list of shapes would be slow and
// large. It has the properties of PictureBox under the same names. A pen's width of 1 is
// PixelRatio() device pixels, at least one.
#pragma once

#include <QImage>
#include <QPointF>
#include <QSize>
#include <span>

#include "platform/drawing_tools.h"
#include "platform/picture.h"
#include "platform/raster.h"
#include "platform/user_scale.h"

class RasterBox : public DrawingTools {
 public:
  // `size` in device-independent pixels (1/96 inch), `pixelRatio` device pixels in each.
  explicit RasterBox(QSizeF size = {600, 400}, double pixelRatio = 1.0);
  RasterBox(const RasterBox&) = delete;
  RasterBox& operator=(const RasterBox&) = delete;
  ~RasterBox() = default;

  // A new size clears the picture: pixels do not stretch well.
  void SetSize(QSizeF size, double pixelRatio);
  QSizeF Size() const { return size_; }
  QSize PixelSize() const { return image_.size(); }
  double PixelRatio() const { return pixelRatio_; }

  // The user coordinates, as those of PictureBox.
  ScaleUnit ScaleMode() const { return scale_.Mode(); }
  double ScaleLeft() const { return scale_.Area().left(); }
  double ScaleTop() const { return scale_.Area().top(); }
  double ScaleWidth() const { return scale_.Area().width(); }
  double ScaleHeight() const { return scale_.Area().height(); }
  void SetScaleMode(ScaleUnit mode);
  void Scale(double x1, double y1, double x2, double y2) { scale_.Set(x1, y1, x2, y2); }

  // In user units, without smoothing. A line with a coordinate that is not finite is left out.
  void Line(QPointF from, QPointF to, Colour colour);
  // In device pixels, outlined in black, filled by FillStyle. At least one point.
  void Polygon(std::span<const QPoint> points);
  void Cls();

  // The ground that Cls leaves; button face is taken from the application's palette.
  Colour BackColor() const { return backColor_; }
  void SetBackColor(Colour colour);

  // The pixels. Their device pixel ratio is 1.
  const QImage& Image() const { return image_; }

 private:
  Stroke StrokeOf(Colour colour) const;
  QPoint PixelOf(QPointF user) const;

  QSizeF size_;
  double pixelRatio_ = 1.0;
  UserScale scale_;
  Colour backColor_ = kButtonFace;
  QImage image_;
  PolygonFiller filler_;
};
