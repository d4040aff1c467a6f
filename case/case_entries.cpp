// From typed units to held units.
#include "case/case_entries.h"

#include "case/case_record.h"

namespace Vse {

namespace {

double HeldRadius(double typed, QStringView unit) {
  if (unit == kMillimetre) return typed / 1000.0;
  return unit == kMetre ? typed : typed / 100.0;
}

}  // namespace

double HeldValue(Measure measure, double typed, QStringView unit) {
  if (IsAngle(measure)) return unit == kDegree ? DegreesToRadians(typed) : typed;
  if (measure == Measure::HeadRadius) return HeldRadius(typed, unit);
  return unit == kMillimetre ? typed / 10.0 : typed;
}

}  // namespace Vse
