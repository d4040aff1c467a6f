// The report's sheet of paper: its margins, its header and footer, and lines in two columns.
#pragma once

#include <QString>

#include "platform/printer_page.h"

namespace Print {

// Twips from the edges of the paper.
inline constexpr double kLeftMargin = 720.0;
inline constexpr double kRightMargin = 720.0;
inline constexpr double kTopMargin = 1440.0;
inline constexpr double kBottomMargin = 1440.0;

struct Sheet {
  PrinterPage& page;
  QString date;  // of the footer
};

// The lowest place that text may reach, twips.
double BottomOf(const PrinterPage& page);

// Prints the title above and date and page number below, in 13 points, and leaves the cursor at the
// top left of the text area.
void PrintPageHeader(const Sheet& sheet, const QString& title);

// Continues at the top of a fresh page with the header "New Page". The font stays at the header's
// 13 points. Deliberate.
void TurnPage(const Sheet& sheet);

// One line: "left label : left value" where the cursor is, "right label = right value" from half
// the paper's width. The labels are replaced by the composed texts, which are also given joined.
QString PrintTwoColumns(PrinterPage& page, QString& leftLabel, QString& rightLabel,
                        const QString& leftValue, const QString& rightValue);

// The same with a blank instead of the colon: if the left is empty, only the right column has text.
QString PrintRightColumn(PrinterPage& page, QString& leftLabel, QString& rightLabel,
                         const QString& leftValue, const QString& rightValue);

}  // namespace Print
