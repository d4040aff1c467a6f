// The user coordinates of a picture: a unit, or a scale of the user's own.
#pragma once

#include <QRectF>
#include <QSize>

#include "platform/picture_box.h"

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

 private:
  ScaleUnit mode_ = ScaleUnit::Twips;
  QRectF area_;
};
