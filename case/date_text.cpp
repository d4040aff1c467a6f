// Dates between text and calendar.
#include "case/date_text.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>

#include "case/number_text.h"

namespace {

// The locale's short form; its year, which may have two digits, in four.
QString ShortFormat(const QLocale& locale) {
  static const QRegularExpression year(QStringLiteral("'[^']*'(*SKIP)(*FAIL)|y+"));
  return locale.dateFormat(QLocale::ShortFormat).replace(year, QStringLiteral("yyyy"));
}

QString LongFormatWithoutWeekday(const QLocale& locale) {
  static const QRegularExpression weekday(QStringLiteral("[\\s,،]*dddd[\\s,،]*"));
  return locale.dateFormat(QLocale::LongFormat).replace(weekday, QStringLiteral(" ")).trimmed();
}

bool MonthComesFirst(const QLocale& locale) {
  const QString format = locale.dateFormat(QLocale::ShortFormat);
  return format.indexOf(u'M') < format.indexOf(u'd') && format.indexOf(u'M') < format.indexOf(u'y');
}

// Two digits of a year can mean either century: 29.2.00 was a day in 2000.
bool Exists(int day, int month, const QString& year) {
  if (year.size() == 4) return QDate::isValid(year.toInt(), month, day);
  return QDate::isValid(1900 + year.toInt(), month, day) ||
         QDate::isValid(2000 + year.toInt(), month, day);
}

// Digits of every script as ASCII digits; Qt does not read those of Adlam and Chakma.
QString WithWesternDigits(const QString& text) {
  QList<uint> letters = text.toUcs4();
  for (uint& letter : letters) {
    if (QChar::category(letter) == QChar::Number_DecimalDigit) {
      letter = U'0' + static_cast<uint>(QChar::digitValue(letter));
    }
  }
  return QString::fromUcs4(reinterpret_cast<const char32_t*>(letters.data()), letters.size());
}

bool IsDateInDigits(const QString& text, const QLocale& locale) {
  static const QRegularExpression form(
      QStringLiteral("^([0-9]{1,2})([./-])\\s*([0-9]{1,2})\\2\\s*([0-9]{4}|[0-9]{2})$"));
  const auto match = form.match(WithWesternDigits(text));
  if (!match.hasMatch()) return false;
  int day = match.captured(1).toInt();
  int month = match.captured(3).toInt();
  if (MonthComesFirst(locale)) std::swap(day, month);
  return Exists(day, month, match.captured(4));
}

}  // namespace

QString Vse::ShortDate(QDate date, const QLocale& locale) {
  return locale.toString(date, ShortFormat(locale));
}

bool Vse::IsValidDate(const QString& text, const QLocale& locale) {
  const QString trimmed = text.trimmed();
  if (ReadNumber(trimmed.toStdString())) return false;
  const std::array formats{
      QStringLiteral("yyyy-MM-dd"),
      locale.dateFormat(QLocale::ShortFormat),
      ShortFormat(locale),
      locale.dateFormat(QLocale::LongFormat),
      LongFormatWithoutWeekday(locale),
  };
  return std::any_of(
             formats.begin(), formats.end(),
             [&](const QString& format) { return locale.toDate(trimmed, format).isValid(); }) ||
         IsDateInDigits(trimmed, locale);
}
