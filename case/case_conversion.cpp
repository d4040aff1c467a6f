// Entries to record and back.
#include "case/case_conversion.h"

#include <algorithm>

#include "case/case_texts.h"
#include "case/number_text.h"

namespace Vse {

std::optional<NameParts> SplitName(const QString& name) {
  const qsizetype blank = name.lastIndexOf(u' ');
  if (blank < 0) return std::nullopt;
  return NameParts{name.left(blank + 1), name.mid(blank + 1)};
}

QString ComposeName(const QString& surname, const QString& firstName) {
  const QString last = surname.trimmed();
  const QString first = firstName.trimmed();
  if (last.isEmpty() && first.isEmpty()) return {};
  return last + QLatin1Char(' ') + first;
}

Patient PatientOf(const CaseEntries& entries, bool weightUnknown) {
  return {.name = ComposeName(entries.surname, entries.firstName),
          .sex = entries.sex,
          .dateOfBirth = entries.dateOfBirth,
          .bodyWeight = weightUnknown ? QString() : entries.bodyWeight,
          .hip = entries.hip,
          .comments = entries.comments};
}

bool IsSameCase(const CaseData& a, const CaseData& b) {
  const QLocale any = QLocale::c();
  if (PatientTextsOf(a.patient) != PatientTextsOf(b.patient)) return false;
  if (a.weightUnknown() != b.weightUnknown()) return false;
  return std::all_of(Sila::kMeasurements.begin(), Sila::kMeasurements.end(), [&](const auto& row) {
    return MeasurementText(a.inputs, row, any) == MeasurementText(b.inputs, row, any);
  });
}

CaseEntries EntriesOf(const CaseData& data, const QLocale& locale, const CaseEntries& current) {
  CaseEntries entries = current;
  const Patient& patient = data.patient;
  if (const std::optional<NameParts> name = SplitName(patient.name)) {
    entries.surname = name->surname;
    entries.firstName = name->firstName;
  } else if (patient.name.isEmpty()) {
    entries.surname.clear();
    entries.firstName.clear();
  }
  entries.sex = patient.sex.value_or(Sex::Female);
  entries.hip = patient.hip.value_or(HipSide::Right);
  entries.dateOfBirth = patient.dateOfBirth == kUnknown ? QString() : patient.dateOfBirth;
  entries.bodyWeight = patient.bodyWeight;
  entries.comments = patient.comments == kNoComments ? QString() : patient.comments;
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    entries[row.id] = {MeasurementText(data.inputs, row, locale),
                       Sila::UnitsOf(row.kind()).front()};
  }
  return entries;
}

}  // namespace Vse
