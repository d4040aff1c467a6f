// Any bytes as a typed date, in locales of every order. Days that do not exist are found out by
// another calendar than Qt's.
#include <QRegularExpression>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

#include "case/date_text.h"
#include "case/number_text.h"
#include "tests/fuzz/require.h"

namespace {

bool Exists(int year, int month, int day) {
  return std::chrono::year_month_day(std::chrono::year(year),
                                     std::chrono::month(static_cast<unsigned>(month)),
                                     std::chrono::day(static_cast<unsigned>(day)))
      .ok();
}

// Three numbers with a year of four digits, in any order of day and month.
bool CanExist(const QString& text) {
  static const QRegularExpression yearLast("^([0-9]{1,2})\\D+([0-9]{1,2})\\D+([0-9]{4})$");
  static const QRegularExpression yearFirst("^([0-9]{4})\\D+([0-9]{1,2})\\D+([0-9]{1,2})$");
  const auto last = yearLast.match(text);
  const auto first = yearFirst.match(text);
  if (!last.hasMatch() && !first.hasMatch()) return true;
  const int year = (last.hasMatch() ? last.captured(3) : first.captured(1)).toInt();
  const int one = (last.hasMatch() ? last.captured(1) : first.captured(2)).toInt();
  const int other = (last.hasMatch() ? last.captured(2) : first.captured(3)).toInt();
  return Exists(year, one, other) || Exists(year, other, one);
}

void Check(const QString& text, const QLocale& locale) {
  const bool valid = Vse::IsValidDate(text, locale);
  Require(Vse::IsValidDate(" " + text + "\t", locale) == valid, "blanks around change nothing");
  if (!valid) return;
  const QString trimmed = text.trimmed();
  Require(!Vse::ReadNumber(trimmed.toStdString()), "a number alone is never a date");
  Require(CanExist(trimmed), "a valid date exists");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::array locales{QLocale("C"), QLocale("en_US"), QLocale("sl_SI"),
                                  QLocale("ja_JP"), QLocale("fa_IR")};
  const QString text =
      QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  for (const QLocale& locale : locales) Check(text, locale);
  return 0;
}
