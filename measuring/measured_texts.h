// What was found as texts: the same on screen, on the clipboard, on paper and in the saved picture.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>
#include <vector>

#include "measuring/findings.h"
#include "report/uncertain_rows.h"

namespace Measuring {

// Cells of a table: the mark with its number, and how much of it is set.
std::vector<QStringList> MarkCells(const Draft& draft);

// A measurement with its unit, and its value or why there is none; by kMeasurementMarks.
std::vector<QStringList> MeasurementCells(const Findings& found);

// A row for each result that the hip can have, with intervals where errors are known.
std::vector<Print::UncertainRow> ResultRows(const Findings& found, const QLocale& locale);

// Why there is less than a user expects, and what is odd about the marks; a line each.
QStringList NoticesOf(const Findings& found);

QString SideText(const Findings& found);

// For a picture: the file, the hip and its scale, what was entered and measured, the results, the
// notices; a line each.
QStringList NumberLines(const QString& file, const Findings& found, const QLocale& locale);

// Lines of fields with tabs between, for a spreadsheet.
QString MeasuredTable(const Findings& found, const QLocale& locale);

}  // namespace Measuring
