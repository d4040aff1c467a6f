// Reads a case for the 3D view.
#include "view3d/head_case.h"

#include <cmath>

#include "case/number_text.h"

HeadCase HeadCaseOf(const CaseRecord& record, const QString& thetaPolText) {
  constexpr double kTopPerBodyWeight = 7e3;  // m^-2
  constexpr double kTop = 4e6;               // Pa
  const double degrees = Vse::ReadNumber(thetaPolText.toStdString()).value_or(0.0);
  const Sila::HipResults& results = record.results();
  const bool perBodyWeight = record.data.weightUnknown();
  const double peak =
      perBodyWeight ? results.pmaxWb * 100.0 / kTopPerBodyWeight : results.pmax * 100.0 / kTop;
  return {.edgeAngle = record.data.inputs.thetaCE,
          .poleAngle = Sila::DegreesToRadians(degrees),
          .scalePeak = peak,
          .perBodyWeight = perBodyWeight};
}

int WholeDegrees(double radians) {
  constexpr double kNoise = 1e-9;  // degrees
  return static_cast<int>(std::floor(Sila::RadiansToDegrees(radians) + kNoise));
}
