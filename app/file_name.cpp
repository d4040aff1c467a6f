// Making a patient's name safe for file systems.
#include "app/file_name.h"

#include <QRegularExpression>

#include "case/case_texts.h"

namespace {

constexpr qsizetype kLongest = 200;  // bytes of UTF-8; file systems take 255, the ending needs some

QString WithoutEnds(const QString& name) {
  static const QRegularExpression ends(QStringLiteral("^[\\s.]+|[\\s.]+$"));
  return QString(name).remove(ends);
}

// Cuts whole characters, never half of one.
QString Shortened(QString name) {
  while (name.toUtf8().size() > kLongest) {
    const bool pair = name.size() > 1 && name.back().isLowSurrogate();
    name.chop(pair ? 2 : qMax<qsizetype>(1, (name.toUtf8().size() - kLongest) / 4));
    if (!name.isEmpty() && name.back().isHighSurrogate()) name.chop(1);
  }
  return name;
}

}  // namespace

QString SafeFileName(const QString& name) {
  // Separators, reserved characters, control and format characters (they can turn a name's
  // direction).
  static const QRegularExpression forbidden(QStringLiteral("[/\\\\:*?\"<>|\\p{C}\\p{Zl}\\p{Zp}]"),
                                            QRegularExpression::UseUnicodePropertiesOption);
  static const QRegularExpression device(QStringLiteral("^(con|prn|aux|nul|com\\d|lpt\\d)$"),
                                         QRegularExpression::CaseInsensitiveOption);
  QString safe = name.simplified().replace(forbidden, QStringLiteral("_"));
  safe = WithoutEnds(Shortened(WithoutEnds(safe)));
  if (safe.isEmpty()) return Vse::kUnknown.toString();
  return device.match(safe).hasMatch() ? safe + u'_' : safe;
}
