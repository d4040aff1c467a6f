// The words for what the 3D view draws.
#include "view3d/head_words.h"

#include <cmath>
#include <numbers>

#include "case/case_record.h"
#include "case/number_text.h"

namespace {

constexpr double kPi = std::numbers::pi;

int WholeTurn(double radians) {
  const int degrees = static_cast<int>(std::lround(radians * 180.0 / kPi)) % 360;
  return degrees > 180 ? degrees - 360 : degrees <= -180 ? degrees + 360 : degrees;
}

}  // namespace

QString HeadWords(const HeadCase& headCase, const QLocale& locale) {
  const auto degrees = [&](double radians) {
    return Vse::NumberText(std::round(Sila::RadiansToDegrees(radians) * 100.0) / 100.0, locale);
  };
  return QStringLiteral(
             "The weight-bearing area up to the edge at %1 °, coloured by contact stress. "
             "The pole of the stress is at %2 °, the peak at %3 % of the legend's top, %4.")
      .arg(degrees(headCase.edgeAngle), degrees(headCase.poleAngle),
           Vse::NumberText(std::round(headCase.scalePeak), locale), LegendTop(headCase));
}

QString TurnWords(const ViewAngles& angles, const QLocale& locale) {
  const auto text = [&](double radians) { return Vse::NumberText(WholeTurn(radians), locale); };
  return QStringLiteral("Turned by %1 ° to the right and %2 ° down.")
      .arg(text(kPi - static_cast<double>(angles.third)), text(-static_cast<double>(angles.first)));
}

QString LegendTop(const HeadCase& headCase) {
  return headCase.perBodyWeight ? QStringLiteral("7000 m^-2") : QStringLiteral("4 MPa");
}

QString LegendWords(const HeadCase& headCase) {
  return QStringLiteral(
             "In steps of a tenth from blue for no stress through green to red at %1; "
             "above that, pure red.")
      .arg(LegendTop(headCase));
}
