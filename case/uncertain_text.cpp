// How many digits an uncertain number deserves.
#include "case/uncertain_text.h"

#include <algorithm>
#include <cmath>

#include "case/number_text.h"

namespace Vse {

namespace {

constexpr int kPanelDecimals = 2;

// The place of the second significant digit: 0.052 has 3 decimals, 240 has -1.
int DecimalsOf(double spread) {
  constexpr int kMost = 12;
  if (!(spread > 0.0) || !std::isfinite(spread)) return kPanelDecimals;
  const double decimals = 1.0 - std::floor(std::log10(spread));
  return static_cast<int>(std::min<double>(decimals, kMost));
}

double Rounded(double value, int decimals) {
  const double power = std::pow(10.0, std::abs(decimals));
  return decimals < 0 ? std::round(value / power) * power : std::round(value * power) / power;
}

// With its last zeros, which say how far it is known.
QString RoundedText(double value, int decimals, const QLocale& locale) {
  constexpr double kLargest = 1e15;  // beyond it digits are no longer exact
  const double rounded = Rounded(value, decimals);
  if (!(std::abs(rounded) < kLargest)) return NumberText(rounded, locale);
  const QString point = NumberText(0.5, locale).mid(1, 1);
  const QString digits =
      QString::number(rounded == 0.0 ? 0.0 : rounded, 'f', std::max(decimals, 0));
  return QString(digits).replace(u'.', point);
}

int PlaceOf(std::optional<double> u, std::optional<CoverageEnds> interval) {
  if (u && *u > 0.0) return DecimalsOf(*u);
  return interval ? DecimalsOf((interval->high - interval->low) / 4.0) : kPanelDecimals;
}

}  // namespace

UncertainTexts UncertainTextsOf(double estimate, std::optional<double> u,
                                std::optional<CoverageEnds> interval, const QLocale& locale) {
  const int decimals = PlaceOf(u, interval);
  UncertainTexts texts;
  texts.estimate =
      NumberText(TruncateToDecimals(estimate, std::max(decimals, kPanelDecimals)), locale);
  if (u) texts.u = *u > 0.0 ? RoundedText(*u, decimals, locale) : QStringLiteral("0");
  if (!interval) return texts;
  const bool point = interval->low == interval->high;
  texts.low = point ? texts.estimate : RoundedText(interval->low, decimals, locale);
  texts.high = point ? texts.estimate : RoundedText(interval->high, decimals, locale);
  return texts;
}

}  // namespace Vse
