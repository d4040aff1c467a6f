// Header, footer and columns.
#include "report/sheet.h"

namespace {

using Print::kBottomMargin;
using Print::kLeftMargin;
using Print::kRightMargin;
using Print::kTopMargin;

// In a smaller type when it is wider than `width`: a long name must not run into the right column.
void PrintFitting(PrinterPage& page, const QString& text, double width) {
  constexpr int kSmallestType = 4;
  const int size = page.FontSize();
  while (page.TextWidth(text) > width && page.FontSize() > kSmallestType) {
    page.SetFontSize(page.FontSize() - 1);
  }
  page.Print(text);
  page.SetFontSize(size);
}

void PrintColumns(PrinterPage& page, const QString& left, const QString& right) {
  const double line = page.CurrentY();
  const double middle = page.ScaleWidth() / 2.0;
  PrintFitting(page, left, middle - page.CurrentX() - page.TextWidth(QStringLiteral("0")));
  page.SetCurrentY(line);
  page.SetCurrentX(middle);
  page.Print(right);
}

// Prints the line whose left entry has `between` between label and value.
QString PrintLine(PrinterPage& page, const QString& between, QString& leftLabel,
                  QString& rightLabel, const QString& leftValue, const QString& rightValue) {
  leftLabel = (leftLabel + between + leftValue).leftJustified(1);
  rightLabel = rightLabel + QStringLiteral(" = ") + rightValue;
  PrintColumns(page, leftLabel, rightLabel);
  return leftLabel + rightLabel;
}

}  // namespace

double Print::BottomOf(const PrinterPage& page) {
  return page.ScaleHeight() - kBottomMargin;
}

void Print::PrintPageHeader(const Sheet& sheet, const QString& title) {
  PrinterPage& page = sheet.page;
  page.SetFontSize(13);
  page.SetLineStart(kLeftMargin);
  page.SetCurrentY((kTopMargin - page.TextHeight()) / 2.0);
  page.SetCurrentX((page.ScaleWidth() - page.TextWidth(title)) / 2.0);
  page.Print(title);

  const double footer = page.ScaleHeight() - kBottomMargin / 2.0;
  page.SetCurrentX(kLeftMargin);
  page.SetCurrentY(footer);
  page.Print(sheet.date);

  const QString number = QStringLiteral("Page ") + QString::number(page.PageNumber());
  page.SetCurrentX(page.ScaleWidth() - (page.TextWidth(number) + kRightMargin));
  page.SetCurrentY(footer);
  page.Print(number);

  page.SetCurrentX(kLeftMargin);
  page.SetCurrentY(kTopMargin);
}

void Print::TurnPage(const Sheet& sheet) {
  sheet.page.NewPage();
  PrintPageHeader(sheet, QStringLiteral("New Page"));
}

QString Print::PrintTwoColumns(PrinterPage& page, QString& leftLabel, QString& rightLabel,
                               const QString& leftValue, const QString& rightValue) {
  return PrintLine(page, QStringLiteral(" : "), leftLabel, rightLabel, leftValue, rightValue);
}

QString Print::PrintRightColumn(PrinterPage& page, QString& leftLabel, QString& rightLabel,
                                const QString& leftValue, const QString& rightValue) {
  return PrintLine(page, QStringLiteral(" "), leftLabel, rightLabel, leftValue, rightValue);
}
