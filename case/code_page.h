// The 8-bit text of case files.
#pragma once

#include <QByteArray>
#include <QLocale>
#include <QString>

namespace Vse {

// Name of the 8-bit Windows code page of the locale's language, as Qt's converters know
// it: 1252 for Western Europe and wherever nothing else fits.
const char* CodePageOf(const QLocale& locale);

// The text in the locale's code page; the whole of it in UTF-8, without a mark, when any character
// has no place there. No character is ever replaced.
QByteArray EncodeText(const QString& text, const QLocale& locale);

// Whether a name is that of a code page that text can be read in: one that Qt knows and
// that has the letters of ASCII where ASCII has them.
bool IsCodePage(const QByteArray& name);

// Bytes that are valid UTF-8 are read as UTF-8 (a mark at the front is dropped), all others in the
// locale's code page, or the named one.
QString DecodeText(const QByteArray& bytes, const QLocale& locale);
QString DecodeText(const QByteArray& bytes, const char* codePage);

}  // namespace Vse
