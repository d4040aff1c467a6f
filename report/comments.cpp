// Word wrap.
#include "report/comments.h"

#include <cmath>

namespace {

using Print::kLeftMargin;
using Print::kRightMargin;
using Print::Sheet;

constexpr int kTabStop = 10;  // widths of "0"

bool IsOfWord(QChar c) {
  return c > u' ';
}

void BeginLine(const Sheet& sheet) {
  PrinterPage& page = sheet.page;
  page.LineFeed();
  if (page.CurrentY() > Print::BottomOf(page)) {
    Print::TurnPage(sheet);
  } else {
    page.SetCurrentX(kLeftMargin);
  }
}

void PrintWord(const Sheet& sheet, const QString& word) {
  PrinterPage& page = sheet.page;
  const double right = page.ScaleWidth() - kRightMargin;
  if (page.CurrentX() + page.TextWidth(word) > right) BeginLine(sheet);
  page.PrintWithoutFeed(word);
}

// From a stop the next one is taken.
void PrintTab(PrinterPage& page) {
  const double digit = page.TextWidth(QStringLiteral("0"));
  const long n = std::lrint((page.CurrentX() - kLeftMargin) / digit);
  const long stop = n + kTabStop - n % kTabStop;
  page.SetCurrentX(kLeftMargin + digit * double(stop));
}

void PrintBetweenWords(const Sheet& sheet, QChar c) {
  if (c == u' ') {
    sheet.page.PrintWithoutFeed(QStringLiteral(" "));
  } else if (c == u'\n') {
    BeginLine(sheet);
  } else if (c == u'\t') {
    PrintTab(sheet.page);
  }
}

}  // namespace

void Print::PrintComments(const Sheet& sheet, const QString& text) {
  qsizetype at = 0;
  while (at < text.size()) {
    const qsizetype start = at;
    while (at < text.size() && IsOfWord(text[at])) ++at;
    if (at > start) PrintWord(sheet, text.mid(start, at - start));
    for (; at < text.size() && !IsOfWord(text[at]); ++at) PrintBetweenWords(sheet, text[at]);
  }
}
