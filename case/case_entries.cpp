// From typed units to held units.
#include "case/case_entries.h"

#include "model/resultant_force.h"

namespace Vse {

namespace {

double HeldRadius(double typed, QStringView unit) {
  if (unit == kMillimetre) return typed / 1000.0;
  return unit == kMetre ? typed : typed / 100.0;
}

}  // namespace

double DegreesToRadians(double degrees) {
  return degrees * Sila::kPi / 180.0;
}

double RadiansToDegrees(double radians) {
  return radians * 180.0 / Sila::kPi;
}

double HeldValue(Measure measure, double typed, QStringView unit) {
  if (IsAngle(measure)) return unit == kDegree ? DegreesToRadians(typed) : typed;
  if (measure == Measure::HeadRadius) return HeldRadius(typed, unit);
  return unit == kMillimetre ? typed / 10.0 : typed;
}

}  // namespace Vse
