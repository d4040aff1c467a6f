// Turns points by the view's three angles. The frame is the screen's: x to the right, y down, z
// towards the user.
#pragma once

#include <array>

// Radians: in the x-y plane, then in the y-z plane, then in the x-z plane.
struct ViewAngles {
  float first = 0.0F;
  float second = 0.0F;
  float third = 0.0F;
};

struct Point3 {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

// Turns points one after another, each pair of coordinates through its polar form.
//
// Deliberate: where the second value of a pair is exactly 0, the first and the second turn leave
// their angle in the third turn's variable and continue with the angle of the previous point (0 for
// the first point). So points that lie exactly on an axis go elsewhere, and the order of the points
// counts. Where both values of a pair are 0, nothing changes.
class PointTurner {
 public:
  explicit PointTurner(const ViewAngles& angles) : angles_(angles) {}
  Point3 Turn(Point3 point);

 private:
  ViewAngles angles_;
  double a_ = 0.0;  // polar angles of the three pairs, rad
  double b_ = 0.0;
  double c_ = 0.0;
};

// The same three turns as one matrix, for points that do not lie exactly on an axis.
struct TurnMatrix {
  // Rows x, y, z.
  std::array<Point3, 3> rows;
};
TurnMatrix MatrixOf(const ViewAngles& angles);
