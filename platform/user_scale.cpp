// User coordinates under each unit.
#include "platform/user_scale.h"

#include "platform/length_units.h"

void UserScale::SetMode(ScaleUnit mode, QSizeF size, QSize pixels) {
  mode_ = mode;
  Follow(size, pixels);
}

void UserScale::Follow(QSizeF size, QSize pixels) {
  switch (mode_) {
    case ScaleUnit::User:
      return;
    case ScaleUnit::Twips:
      area_ = QRectF({0, 0}, size * kTwipsPerPixel);
      return;
    case ScaleUnit::Points:
      area_ = QRectF({0, 0}, size * (kPointsPerInch / kPixelsPerInch));
      return;
    case ScaleUnit::Pixels:
      area_ = QRectF({0, 0}, QSizeF(pixels));
      return;
  }
}

void UserScale::Set(double x1, double y1, double x2, double y2) {
  mode_ = ScaleUnit::User;
  area_ = QRectF(x1, y1, x2 - x1, y2 - y1);
}

void UserScale::SetWidth(double width) {
  mode_ = ScaleUnit::User;
  area_.setWidth(width);
}

void UserScale::SetHeight(double height) {
  mode_ = ScaleUnit::User;
  area_.setHeight(height);
}
