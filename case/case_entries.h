// What stands in the boxes of the case form: the entry texts, as typed or as read from a case file.
#pragma once

#include <QString>
#include <array>
#include <cstddef>

// The units of the form's lists. The degree stands between blanks, as in the list.
namespace Vse {
inline constexpr QStringView kMillimetre = u"mm";
inline constexpr QStringView kCentimetre = u"cm";
inline constexpr QStringView kMetre = u"m";
inline constexpr QStringView kDegree = u"  °  ";
inline constexpr QStringView kRadian = u"rad";
}  // namespace Vse

// The measures in the order of the form and of the case file.
enum class Measure : std::size_t { Lizm, Xizm, Zizm, Cizm, Hizm, Zasuk, ThetaCE, HeadRadius };
inline constexpr std::size_t kMeasureCount = 8;

struct MeasureEntry {
  QString text;
  QString unit;  // one of the unit texts above
  bool operator==(const MeasureEntry&) const = default;
};

struct CaseEntries {
  enum class Sex { NotChosen, Male, Female };
  enum class Hip { NotChosen, Left, Right };

  QString surname;
  QString firstName;
  Sex sex = Sex::NotChosen;
  QString dateOfBirth;
  QString bodyWeight;  // kg; empty when it is not known
  Hip hip = Hip::NotChosen;
  QString comments;  // lines end with LF
  std::array<MeasureEntry, kMeasureCount> measures;

  MeasureEntry& operator[](Measure measure) { return measures[static_cast<std::size_t>(measure)]; }
  const MeasureEntry& operator[](Measure measure) const {
    return measures[static_cast<std::size_t>(measure)];
  }
  bool operator==(const CaseEntries&) const = default;
};

namespace Vse {

// A text for a box of one line: every run of line ends and other control characters is one blank,
// and a text that held any is trimmed. Any other text stays as it is.
QString OneLine(const QString& text);

// Whether the unit list of a measure has this unit.
bool IsUnitOf(Measure measure, QStringView unit);

// Degrees to radians and back, with the force model's π.
double DegreesToRadians(double degrees);
double RadiansToDegrees(double radians);

// A typed number in the unit that the record holds: lengths in cm, the head radius in m, angles in
// radians. `unit` is the text of the unit list; a length that is not in mm counts as cm, a radius
// that is neither in mm nor in m as cm, an angle that is not in degrees as radians.
double HeldValue(Measure measure, double typed, QStringView unit);

// The largest angle that may be typed in radians, 2π.
inline constexpr double kLargestRadians = 6.28318530717958;

// True for an angle, which is checked when it is typed in radians.
constexpr bool IsAngle(Measure measure) {
  return measure == Measure::Zasuk || measure == Measure::ThetaCE;
}

}  // namespace Vse
