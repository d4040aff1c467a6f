// The printed report of one case: patient and geometry, comments, results and diagram.
#pragma once

#include <QDate>
#include <QLocale>
#include <QString>

#include "case/case_record.h"
#include "case/case_texts.h"
#include "platform/print_target.h"
#include "report/sheet.h"

namespace Print {

// The contents of a report.
struct Case {
  const CaseRecord& record;
  // As the results panel shows them: after a refused case they are older than the record's.
  const ResultTexts& results;
  QLocale locale;
};

// Prints the body below the header and ends the document; the pointer is an hourglass meanwhile. A
// results line or a diagram that does not fit above the bottom margin goes to a fresh page. Returns
// what went wrong, for the user; empty when the whole document has arrived.
QString PrintReport(const Sheet& sheet, const Case& printed);

// The whole report, headed "TELMARION", with `date` in the footer. Returns what PrintReport
// returns.
QString PrintCase(PrintTarget& target, const Case& printed, QDate date);

// Title of the report and of its document.
inline constexpr QStringView kTitle = u"TELMARION";

}  // namespace Print
