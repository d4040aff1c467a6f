// Numbers that carry their unit in their type.
#pragma once

namespace Sila {

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
