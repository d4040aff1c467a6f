// A printed page to draw on, with the user scale, the pen and the fill of a picture.
#pragma once

#include <QPolygon>
#include <QRectF>
#include <QSizeF>

#include "platform/length_units.h"
#include "platform/picture_box.h"
#include "platform/printer_page.h"

class PageSurface {
 public:
  // `page` outlives the surface. Device pixels are 1/`dotsPerInch` inch, whatever the printer's own
  // resolution. The user scale is in twips at first, from the corner of the paper.
  explicit PageSurface(PrinterPage& page, int dotsPerInch = 1200)
      : page_(page),
        picture_(QSizeF(page.ScaleWidth(), page.ScaleHeight()) / kTwipsPerPixel,
                 dotsPerInch / kPixelsPerInch) {}

  ScaleUnit ScaleMode() const { return picture_.ScaleMode(); }
  double ScaleLeft() const { return picture_.ScaleLeft(); }
  double ScaleTop() const { return picture_.ScaleTop(); }
  double ScaleWidth() const { return picture_.ScaleWidth(); }
  double ScaleHeight() const { return picture_.ScaleHeight(); }
  void SetScaleMode(ScaleUnit mode) { picture_.SetScaleMode(mode); }
  void Scale(double x1, double y1, double x2, double y2) { picture_.Scale(x1, y1, x2, y2); }

  void SetForeColor(Colour colour) { picture_.SetForeColor(colour); }
  void SetDrawWidth(int width) { picture_.SetDrawWidth(width); }
  void SetDrawStyle(LineStyle style) { picture_.SetDrawStyle(style); }
  void SetFillStyle(FillKind kind) { picture_.SetFillStyle(kind); }
  void SetFillColor(Colour colour) { picture_.SetFillColor(colour); }

  // In device pixels, with pen and fill, on the page at once. What lies outside is not printed.
  void Polygon(const QPolygon& points) {
    picture_.Polygon(points);
    page_.PaintPicture(picture_.Image(), QRectF(0, 0, page_.ScaleWidth(), page_.ScaleHeight()));
    picture_.Cls();
  }

 private:
  PrinterPage& page_;
  PictureBox picture_;
};
