// Dates between text and calendar, in the ways of a locale.
#pragma once

#include <QDate>
#include <QLocale>
#include <QString>

namespace Vse {

// The locale's short form with the year in four digits.
QString ShortDate(QDate date, const QLocale& locale);

// Whether a typed text is a date that exists: ISO (1956-11-15); the locale's short form, with two
// or four digits of the year; its long form, with or without the weekday; or day, month and year in
// digits with point, slash or dash between them, the month first where the locale writes it so.
// Blanks around the text and after a separator are ignored. A number alone is never a date.
bool IsValidDate(const QString& text, const QLocale& locale);

}  // namespace Vse
