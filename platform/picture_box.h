// A picture to draw on, with a user scale, a pen and a fill. It needs no screen: PictureView shows
// it in a window, Image() gives it to a printer or a file.
#pragma once

#include <QRectF>
#include <QSize>
#include <functional>
#include <vector>

#include "platform/drawing_tools.h"
#include "platform/picture.h"
#include "platform/user_scale.h"

class PictureBox : public DrawingTools {
 public:
  // `size` in device-independent pixels (1/96 inch), `pixelRatio` device pixels in each.
  explicit PictureBox(QSizeF size = {600, 400}, double pixelRatio = 1.0);
  PictureBox(const PictureBox&) = delete;
  PictureBox& operator=(const PictureBox&) = delete;
  ~PictureBox() = default;

  // What has been drawn stretches with the size. A user scale stays as it is; under the other modes
  // ScaleWidth and ScaleHeight follow.
  void SetSize(QSizeF size, double pixelRatio);
  QSizeF Size() const { return size_; }
  QSize PixelSize() const;
  double PixelRatio() const { return pixelRatio_; }

  // The user coordinates. Setting a mode other than User moves the origin to the top left corner;
  // setting its width or height switches to User. Width and height may be negative (the axis
  // then runs the other way); while one of them is zero nothing is drawn.
  ScaleUnit ScaleMode() const { return scale_.Mode(); }
  double ScaleLeft() const { return scale_.Area().left(); }
  double ScaleTop() const { return scale_.Area().top(); }
  double ScaleWidth() const { return scale_.Area().width(); }
  double ScaleHeight() const { return scale_.Area().height(); }
  void SetScaleMode(ScaleUnit mode) { scale_.SetMode(mode, size_, PixelSize()); }
  void SetScaleWidth(double width) { scale_.SetWidth(width); }
  void SetScaleHeight(double height) { scale_.SetHeight(height); }
  // User scale by its top left and bottom right corner.
  void Scale(double x1, double y1, double x2, double y2) { scale_.Set(x1, y1, x2, y2); }

  // All coordinates in user units. A shape with a coordinate that is not finite is left out.
  void Line(QPointF from, QPointF to, Colour colour);
  void LineFilledBox(QPointF from, QPointF to, Colour colour);  // filled with the pen's colour
  void Circle(QPointF centre, double radius, Colour colour);    // filled by FillStyle
  // Counter-clockwise from `start` to `end`, radians from +x; equal angles draw nothing. Never
  // filled.
  void Circle(QPointF centre, double radius, Colour colour, double start, double end);

  // While AutoRedraw is on, drawings belong to the image. While it is off they are shown over it
  // until the next Cls, and Cls clears them alone.
  bool AutoRedraw() const { return autoRedraw_; }
  void SetAutoRedraw(bool on) { autoRedraw_ = on; }
  void Cls();

  // Setting the ground clears all drawings; the background picture stays.
  Colour BackColor() const { return backColor_; }
  void SetBackColor(Colour colour);
  void SetPicture(Picture picture);

  // Ground, background picture and the drawings that belong to the image.
  Picture Image() const;

  // The drawings of the image, in the order they were made, and those drawn over it.
  const std::vector<Drawing>& Drawings() const { return drawings_; }
  const std::vector<Drawing>& DrawingsOver() const { return drawingsOver_; }

  // Grows with everything that takes away or changes what was drawn; drawing more leaves it alone.
  // A view needs it to know whether it may paint the new drawings over the old.
  unsigned Generation() const { return generation_; }
  // Called after every change of what is seen.
  void OnChange(std::function<void()> call) { onChange_ = std::move(call); }

  // A point given in user units, as parts of the picture's width and height (0 to 1).
  QPointF PartPoint(QPointF user) const;

 private:
  void Draw(const Shape& shape, Pen pen, Fill fill);
  void Changed();

  QSizeF size_;
  double pixelRatio_ = 1.0;
  UserScale scale_;
  bool autoRedraw_ = true;
  Colour backColor_ = kButtonFace;
  Picture background_;
  std::vector<Drawing> drawings_;
  std::vector<Drawing> drawingsOver_;
  unsigned generation_ = 0;
  std::function<void()> onChange_;
};
