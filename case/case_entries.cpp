// Texts of one line; from typed units to held units.
#include "case/case_entries.h"

#include <algorithm>

#include "model/resultant_force.h"

namespace Vse {

namespace {

double HeldRadius(double typed, QStringView unit) {
  if (unit == kMillimetre) return typed / 1000.0;
  return unit == kMetre ? typed : typed / 100.0;
}

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

bool IsUnitOf(Measure measure, QStringView unit) {
  if (IsAngle(measure)) return unit == kDegree || unit == kRadian;
  return unit == kMillimetre || unit == kCentimetre ||
         (measure == Measure::HeadRadius && unit == kMetre);
}

double DegreesToRadians(double degrees) {
  return degrees * Sila::kPi / 180.0;
}

double RadiansToDegrees(double radians) {
  return radians * 180.0 / Sila::kPi;
}

double HeldValue(Measure measure, double typed, QStringView unit) {
  if (IsAngle(measure)) return unit == kDegree ? DegreesToRadians(typed) : typed;
  if (measure == Measure::HeadRadius) return HeldRadius(typed, unit);
  return unit == kMillimetre ? typed / 10.0 : typed;
}

}  // namespace Vse
