// The radiograph with its marks and numbers, on paper and as a picture of its own.
#pragma once

#include <QDate>
#include <QImage>
#include <QLocale>
#include <QString>
#include <QStringView>

#include "case/case_entries.h"
#include "measuring/findings.h"
#include "platform/print_target.h"

namespace Measuring {

struct MeasuredPage {
  QImage picture;  // with its marks; null where memory did not suffice
  CaseEntries entries;
  const Findings& found;
  QString file;
  QLocale locale;
};

// Title of the document.
inline constexpr QStringView kMeasuredTitle = u"TELMARION measurements";

// Prints one page with the header and the footer of the report; the picture is there. Returns what
// went wrong, for the user; empty when the whole document has arrived.
QString PrintMeasured(PrintTarget& target, const MeasuredPage& page, QDate date);

// The picture with the numbers below it, at the picture's own size. Null where memory does not
// suffice.
QImage PictureWithNumbers(const MeasuredPage& page);

}  // namespace Measuring
