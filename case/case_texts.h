// The case as people read it, the same in the window, in the file and on paper.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringView>
#include <array>

#include "case/case_record.h"

// What is missing is shown as "Unknown", empty comments as "No".
struct PatientTexts {
  QString name;
  QString sex;  // "M" or "F"
  QString dateOfBirth;
  QString bodyWeight;  // kg
  QString hip;         // "L" is the left hip, "D" the right
  QString comments;
  bool operator==(const PatientTexts&) const = default;
};

// Each truncated to two decimals, in the locale's way; empty while it is hidden.
class ResultTexts {
 public:
  QString& operator[](Sila::Result id) { return texts_[Sila::IndexOf(id)]; }
  const QString& operator[](Sila::Result id) const { return texts_[Sila::IndexOf(id)]; }

 private:
  std::array<QString, Sila::kResultCount> texts_;
};

namespace Vse {

// Placeholders for missing patient data and for empty comments.
inline constexpr QStringView kUnknown = u"Unknown";
inline constexpr QStringView kNoComments = u"No";

PatientTexts PatientTextsOf(const Patient& patient);

// The patient that such texts describe.
Patient PatientFrom(const PatientTexts& texts);

// Behind a result: a blank and its unit, or nothing for a ratio.
QString UnitCaption(Sila::Result id);

// One value, truncated to two decimals.
QString ResultText(double value, const QLocale& locale);

ResultTexts ResultTextsOf(const CaseRecord& record, const QLocale& locale);

// A measurement in the unit of case files: lengths in cm, angles in degrees, the radius in m.
QString MeasurementText(const Sila::HipInputs& inputs, const Sila::MeasurementRow& row,
                        const QLocale& locale);

// The value of a case from before the measurement was there, as a file would have it; empty for one
// that has always been there.
QString OlderText(const Sila::MeasurementRow& row);

}  // namespace Vse
