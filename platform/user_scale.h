// The user coordinates of a picture: a unit, or a scale of the user's own.
#pragma once

#include <QRectF>
#include <QSize>

// The unit of the user coordinates: twips are 1/1440 inch, points 1/72 inch; a pixel is a pixel of
// the device, 1/96 inch divided by the device's pixel ratio. The numbers are the classic ones.
enum class ScaleUnit { User = 0, Twips = 1, Points = 2, Pixels = 3 };

class UserScale {
 public:
  ScaleUnit Mode() const { return mode_; }
  // The whole picture in user coordinates; width and height of either sign.
  const QRectF& Area() const { return area_; }

  // `size` in device-independent pixels (1/96 inch), `pixels` the same in device pixels. A mode
  // other than User moves the origin to the top left corner.
  void SetMode(ScaleUnit mode, QSizeF size, QSize pixels);

  // The picture has a new size: a user scale stays, under the other modes the area follows.
  void Follow(QSizeF size, QSize pixels);

  // User scale by its top left and bottom right corner.
  void Set(double x1, double y1, double x2, double y2);

  // User scale, one number of it.
  void SetWidth(double width);
  void SetHeight(double height);

 private:
  ScaleUnit mode_ = ScaleUnit::Twips;
  QRectF area_;
};
