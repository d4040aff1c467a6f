// Numbers that carry their unit in their type.
#pragma once

namespace Sila {

// The force model's own π; the contact stress has another. Both are kept digit for digit; they show
// in the results.
inline constexpr double kPi = 3.14159265358979;

// Reads as a plain number in a formula; only braces or another quantity of the same unit write it,
// so a length in metres cannot end up where centimetres are kept.
template <class Unit>
struct Quantity {
  double value = 0.0;

  constexpr operator double() const { return value; }
};

using Centimetres = Quantity<struct CentimetreTag>;
using Metres = Quantity<struct MetreTag>;
using Radians = Quantity<struct RadianTag>;
using Degrees = Quantity<struct DegreeTag>;
using Kilograms = Quantity<struct KilogramTag>;
using PerSquareMetre = Quantity<struct PerSquareMetreTag>;  // stress over body weight
using Pascals = Quantity<struct PascalTag>;

}  // namespace Sila
