// Code pages by language, and the conversions.
#include "case/code_page.h"

#include <QStringDecoder>
#include <QStringEncoder>

namespace Vse {

const char* CodePageOf(const QLocale& locale) {
  const bool cyrillic = locale.script() == QLocale::CyrillicScript;
  switch (locale.language()) {
    case QLocale::Czech:
    case QLocale::Slovak:
    case QLocale::Polish:
    case QLocale::Hungarian:
    case QLocale::Romanian:
    case QLocale::Slovenian:
    case QLocale::Croatian:
    case QLocale::Albanian:
    case QLocale::LowerSorbian:
    case QLocale::UpperSorbian:
      return "windows-1250";
    case QLocale::Bosnian:
    case QLocale::Serbian:
      return cyrillic ? "windows-1251" : "windows-1250";
    case QLocale::Russian:
    case QLocale::Ukrainian:
    case QLocale::Belarusian:
    case QLocale::Bulgarian:
    case QLocale::Macedonian:
    case QLocale::Kazakh:
    case QLocale::Kirghiz:
    case QLocale::Mongolian:
    case QLocale::Tajik:
    case QLocale::Tatar:
      return "windows-1251";
    case QLocale::Greek:
      return "windows-1253";
    case QLocale::Turkish:
      return "windows-1254";
    case QLocale::Azerbaijani:
    case QLocale::Uzbek:
      return cyrillic ? "windows-1251" : "windows-1254";
    case QLocale::Estonian:
    case QLocale::Latvian:
    case QLocale::Lithuanian:
      return "windows-1257";
    default:
      return "windows-1252";
  }
}

QByteArray EncodeText(const QString& text, const QLocale& locale) {
  QStringEncoder encoder(CodePageOf(locale));
  if (encoder.isValid()) {
    QByteArray bytes = encoder.encode(text);
    const bool whole = !encoder.hasError();
    QStringDecoder decoder(CodePageOf(locale));
    if (whole && decoder.decode(bytes) == text) return bytes;
  }
  return text.toUtf8();
}

bool IsCodePage(const QByteArray& name) {
  QByteArray ascii = "\t\r\n";
  for (char c = ' '; c <= '~'; ++c) ascii += c;
  QStringDecoder decoder(name.constData());
  return decoder.isValid() && decoder.decode(ascii) == QString::fromLatin1(ascii);
}

QString DecodeText(const QByteArray& bytes, const QLocale& locale) {
  return DecodeText(bytes, CodePageOf(locale));
}

QString DecodeText(const QByteArray& bytes, const char* codePage) {
  QStringDecoder utf8(QStringDecoder::Utf8);
  QString text = utf8.decode(bytes);
  if (!utf8.hasError()) return text;
  QStringDecoder decoder(codePage);
  if (decoder.isValid()) return decoder.decode(bytes);
  return QString::fromLatin1(bytes);
}

}  // namespace Vse
