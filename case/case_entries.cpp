// Texts of one line, and units as text.
#include "case/case_entries.h"

#include <algorithm>

namespace Vse {

namespace {

bool IsControl(QChar character) {
  return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
         character == QChar::ParagraphSeparator;
}

}  // namespace

QString OneLine(const QString& text) {
  if (std::none_of(text.begin(), text.end(), IsControl)) return text;
  QString line;
  bool inRun = false;
  for (const QChar character : text) {
    const bool control = IsControl(character);
    if (!control) line += character;
    if (control && !inRun) line += u' ';
    inRun = control;
  }
  return line.trimmed();
}

QStringView UnitText(Sila::Unit unit) {
  switch (unit) {
    case Sila::Unit::Millimetre:
      return u"mm";
    case Sila::Unit::Centimetre:
      return u"cm";
    case Sila::Unit::Metre:
      return u"m";
    case Sila::Unit::Degree:
      return u"  °  ";
    case Sila::Unit::Radian:
      return u"rad";
    case Sila::Unit::Kilogram:
      break;
  }
  return u"kg";
}

std::optional<Sila::Unit> UnitOf(Sila::Kind kind, QStringView text) {
  for (const Sila::Unit unit : Sila::UnitsOf(kind)) {
    if (UnitText(unit) == text) return unit;
  }
  return std::nullopt;
}

}  // namespace Vse
