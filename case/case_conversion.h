// Conversions between the boxes of the case form and the record.
#pragma once

#include <QLocale>
#include <QString>
#include <optional>

#include "case/case_entries.h"
#include "case/case_record.h"

namespace Vse {

// Splits a name at its last blank: the surname keeps the blank. Empty when the name has no blank.
struct NameParts {
  QString surname;
  QString firstName;
};
std::optional<NameParts> SplitName(const QString& name);

// The name as held: surname and first name, each trimmed, with one blank between; empty when both
// are. A surname alone keeps the blank after it.
QString ComposeName(const QString& surname, const QString& firstName);

// The patient of these entries. While the weight is not known a text in its box is not the
// patient's.
Patient PatientOf(const CaseEntries& entries, bool weightUnknown);

// Whether two cases are the same to a person: texts alike and measurements alike to the fifteen
// digits that form and file show. A radius of 2.9 cm is held as 0.028999999999999998 m and shown as
// 0.029.
bool IsSameCase(const CaseData& a, const CaseData& b);

// The case as entries of the form, for changing it: lengths in cm, angles in degrees, the radius in
// m. What is missing gives empty boxes; sex and hip are always chosen (what is not known as female
// and right). A name without a blank leaves the names of `current` as they are.
CaseEntries EntriesOf(const CaseData& data, const QLocale& locale, const CaseEntries& current);

}  // namespace Vse
