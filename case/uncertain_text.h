// A result together with its uncertainty as text, the same on screen, on paper and in a copied
// table.
#pragma once

#include <QLocale>
#include <QString>
#include <optional>

namespace Vse {

// Ends of a coverage interval, in the unit of the result.
struct CoverageEnds {
  double low = 0.0;
  double high = 0.0;
};

// What is not known is empty.
struct UncertainTexts {
  QString estimate;
  QString u;
  QString low;
  QString high;
};

// The standard uncertainty has two significant digits, rounded, and the ends of the interval are
// rounded to the same place, last zeros included; without a standard uncertainty, a quarter of the
// interval's width sets the place. The estimate is truncated to two decimals as in the results
// panel, or to more where the ends have more. Ends of an interval without width are the estimate.
UncertainTexts UncertainTextsOf(double estimate, std::optional<double> u,
                                std::optional<CoverageEnds> interval, const QLocale& locale);

}  // namespace Vse
