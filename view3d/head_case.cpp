// Reads a case for the 3D view.
#include "view3d/head_case.h"

#include <cmath>

#include "case/number_text.h"

HeadCase HeadCaseOf(const CaseRecord& record, const QString& thetaPolText) {
  constexpr double kTopPerBodyWeight = 7e3;  // m^-2
  constexpr double kTop = 4e6;               // Pa
  const double degrees = Vse::ReadNumber(thetaPolText.toStdString()).value_or(0.0);
  const Results& results = record.results;
  const double peak = record.weightUnknown ? results.pmaxWb * 100.0 / kTopPerBodyWeight
                                           : results.pmax * 100.0 / kTop;
  return {.edgeAngle = record.geometry.thetaCE,
          .poleAngle = Vse::DegreesToRadians(degrees),
          .scalePeak = peak,
          .perBodyWeight = record.weightUnknown};
}

int WholeDegrees(double radians) {
  constexpr double kNoise = 1e-9;  // degrees
  return static_cast<int>(std::floor(Vse::RadiansToDegrees(radians) + kNoise));
}
