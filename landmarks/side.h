// Which side of the body a hip is on, from what the picture says of its directions and from what
// the user says. Never guessed: where nothing says it, or two things disagree, there is no side.
#pragma once

#include <optional>
#include <string_view>

#include "landmarks/measure.h"
#include "landmarks/point.h"

namespace Landmarks {

enum class Side { Left, Right };

// What a picture's PatientOrientation says.
enum class OrientationStatus {
  Given,
  Missing,        // nothing but blanks
  Unreadable,     // not two values of up to three of the letters L, R, A, P, H, F
  NotFrontal,     // the rows or columns run from front to back
  Contradictory,  // a direction and its opposite in one value, or both values along the same line
};

struct Orientation {
  OrientationStatus status = OrientationStatus::Missing;
  // Unit vectors on the picture, when the status is Given: where the patient's left and head are.
  Point left;
  Point head;
};

// `text` has the direction of the rows and the direction of the columns, with a backslash between:
// "L\F" where the patient's left is at the right edge of the picture and the feet are at the lower
// edge.
Orientation ReadOrientation(std::string_view text);

enum class SideDoubt {
  None,
  NotSaid,    // no orientation that can be used: the user must say
  Disagrees,  // the user says one side and the picture the other
  Unclear,    // lateral runs along the body by this orientation: the hip has no side in it
};

struct SideFinding {
  std::optional<Side> side;
  SideDoubt doubt = SideDoubt::NotSaid;
};

// The side of the hip whose frame this is. `said` is the user's word, which decides where the
// orientation is not Given.
SideFinding SideOf(const Frame& frame, const Orientation& orientation, std::optional<Side> said);

}  // namespace Landmarks
