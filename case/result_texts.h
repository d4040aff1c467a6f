// The results as people read them, the same in the window and on paper.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringView>
#include <optional>

#include "case/case_record.h"

// Truncated to two decimals, in the locale's way.
struct ResultTexts {
  QString rWb;
  QString thetaR;               // degrees
  QString thetaPol;             // degrees
  QString pmaxWb;               // m^-2
  std::optional<QString> pmax;  // Pa; nothing while the body weight is unknown
};

namespace Vse {

// What stands behind a result; the blank keeps it apart from the number.
inline constexpr QStringView kDegreeCaption = u" °";
inline constexpr QStringView kPmaxWbCaption = u" m^-2";
inline constexpr QStringView kPmaxCaption = u" Pa";

// One value, truncated to two decimals.
QString ResultText(double value, const QLocale& locale);

ResultTexts ResultTextsOf(const CaseRecord& record, const QLocale& locale);

}  // namespace Vse
