// Units, and the way from a row to its member.
#include "model/vocabulary.h"

namespace Sila {

namespace {

// held = given · multiply / divide, in this order: the digits depend on it.
struct Conversion {
  double multiply = 1.0;
  double divide = 1.0;
};

Conversion ConversionOf(Kind kind, Unit unit) {
  const bool radius = kind == Kind::Radius;
  switch (unit) {
    case Unit::Millimetre:
      return {.divide = radius ? 1000.0 : 10.0};
    case Unit::Centimetre:
      return {.divide = radius ? 100.0 : 1.0};
    case Unit::Degree:
      return {.multiply = kPi, .divide = 180.0};
    case Unit::Metre:
    case Unit::Radian:
    case Unit::Kilogram:
      break;
  }
  return {};
}

template <class Unit>
double Held(const Quantity<Unit>& quantity) {
  return quantity;
}
double Held(const std::optional<Kilograms>& weight) {
  return weight.value_or(kAssumedBodyWeight);
}

template <class Unit>
void Hold(Quantity<Unit>& quantity, double held) {
  quantity.value = held;
}
void Hold(std::optional<Kilograms>& weight, double held) {
  weight = Kilograms{held};
}

constexpr std::array kLengthUnits = {Unit::Centimetre, Unit::Millimetre};
constexpr std::array kAngleUnits = {Unit::Degree, Unit::Radian};
constexpr std::array kRadiusUnits = {Unit::Metre, Unit::Centimetre, Unit::Millimetre};
constexpr std::array kWeightUnits = {Unit::Kilogram};

}  // namespace

double ValueOf(const HipInputs& inputs, const MeasurementRow& row) {
  return std::visit([&](auto member) { return Held(inputs.*member); }, row.member);
}

void SetValue(HipInputs& inputs, const MeasurementRow& row, double held) {
  std::visit([&](auto member) { Hold(inputs.*member, held); }, row.member);
}

double DegreesToRadians(double degrees) {
  return ToHeld(Kind::Angle, Unit::Degree, degrees);
}

double RadiansToDegrees(double radians) {
  return FromHeld(Kind::Angle, Unit::Degree, radians);
}

std::span<const Unit> UnitsOf(Kind kind) {
  switch (kind) {
    case Kind::Length:
      return kLengthUnits;
    case Kind::Angle:
      return kAngleUnits;
    case Kind::Radius:
      return kRadiusUnits;
    case Kind::Weight:
      break;
  }
  return kWeightUnits;
}

double ToHeld(Kind kind, Unit unit, double given) {
  const Conversion conversion = ConversionOf(kind, unit);
  return given * conversion.multiply / conversion.divide;
}

double FromHeld(Kind kind, Unit unit, double held) {
  const Conversion conversion = ConversionOf(kind, unit);
  return held * conversion.divide / conversion.multiply;
}

}  // namespace Sila
