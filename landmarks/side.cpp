// Reads the letters of PatientOrientation, and compares them with where the hip lies.
#include "landmarks/side.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

namespace Landmarks {

namespace {

// Axes of the patient.
enum Axis : std::size_t { kLeft, kHead, kFront, kAxes };
using Direction = std::array<double, kAxes>;

struct Letter {
  Axis axis;
  double sign;
};

std::optional<Letter> LetterOf(char letter) {
  switch (letter) {
    case 'L':
      return Letter{kLeft, 1.0};
    case 'R':
      return Letter{kLeft, -1.0};
    case 'H':
      return Letter{kHead, 1.0};
    case 'F':
      return Letter{kHead, -1.0};
    case 'A':
      return Letter{kFront, 1.0};
    case 'P':
      return Letter{kFront, -1.0};
    default:
      return std::nullopt;
  }
}

// A value is padded with a blank to an even length.
std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kPadding(" \0", 2);
  const std::size_t first = text.find_first_not_of(kPadding);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kPadding) - first + 1);
}

struct Value {
  OrientationStatus status = OrientationStatus::Given;
  Direction direction{};
  Axis main = kLeft;
};

// The first letter is the main direction; each further one says to which side it leans, less.
Value ReadValue(std::string_view text) {
  constexpr std::size_t kMostLetters = 3;
  constexpr double kLean = 0.5;
  Value value;
  if (text.empty() || text.size() > kMostLetters) return {OrientationStatus::Unreadable, {}, {}};
  double weight = 1.0;
  for (const char character : text) {
    const std::optional<Letter> letter = LetterOf(character);
    if (!letter) return {OrientationStatus::Unreadable, {}, {}};
    double& along = value.direction[letter->axis];
    if (along != 0.0) return {OrientationStatus::Contradictory, {}, {}};
    along = weight * letter->sign;
    weight *= kLean;
  }
  value.main = LetterOf(text.front())->axis;
  return value;
}

// Rows and columns of a picture are at right angles; letters say their directions only roughly.
bool AreAtRightAngles(const Value& row, const Value& column) {
  constexpr double kFar = 0.75;
  double product = 0.0;
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    product += row.direction[axis] * column.direction[axis];
  }
  return row.main != column.main && std::abs(product) < kFar;
}

Point Towards(Axis axis, const Value& row, const Value& column) {
  const Point p = {row.direction[axis], column.direction[axis]};
  return 1.0 / Length(p) * p;
}

}  // namespace

Orientation ReadOrientation(std::string_view text) {
  text = Trimmed(text);
  if (text.empty()) return {};
  const std::size_t gap = text.find('\\');
  if (gap == std::string_view::npos) return {OrientationStatus::Unreadable, {}, {}};
  const Value row = ReadValue(Trimmed(text.substr(0, gap)));
  const Value column = ReadValue(Trimmed(text.substr(gap + 1)));
  for (const Value& value : {row, column}) {
    if (value.status != OrientationStatus::Given) return {value.status, {}, {}};
  }
  if (row.main == kFront || column.main == kFront) return {OrientationStatus::NotFrontal, {}, {}};
  if (!AreAtRightAngles(row, column)) return {OrientationStatus::Contradictory, {}, {}};
  return {OrientationStatus::Given, Towards(kLeft, row, column), Towards(kHead, row, column)};
}

SideFinding SideOf(const Frame& frame, const Orientation& orientation, std::optional<Side> said) {
  constexpr double kSlant = 0.5;  // less than 30° off the length of the body
  if (orientation.status != OrientationStatus::Given) {
    return {said, said ? SideDoubt::None : SideDoubt::NotSaid};
  }
  const double towardsLeft = Dot(frame.lateral, orientation.left);
  if (std::abs(towardsLeft) < kSlant) return {std::nullopt, SideDoubt::Unclear};
  const Side seen = towardsLeft > 0.0 ? Side::Left : Side::Right;
  if (said && *said != seen) return {std::nullopt, SideDoubt::Disagrees};
  return {seen, SideDoubt::None};
}

}  // namespace Landmarks
