// Entries to record and back.
#include "case/case_conversion.h"

#include "case/number_text.h"

namespace Vse {

namespace {

QString UnlessUnknown(const QString& text) {
  return text == kUnknown ? QString() : text;
}

// `text`, or `placeholder` where it is empty.
QString TextOr(const QString& text, QStringView placeholder) {
  return text.isEmpty() ? placeholder.toString() : text;
}

QString SexText(CaseEntries::Sex sex) {
  if (sex == CaseEntries::Sex::NotChosen) return kUnknown.toString();
  return sex == CaseEntries::Sex::Male ? QStringLiteral("M") : QStringLiteral("F");
}

QString HipText(CaseEntries::Hip hip) {
  if (hip == CaseEntries::Hip::NotChosen) return kUnknown.toString();
  return hip == CaseEntries::Hip::Left ? QStringLiteral("L") : QStringLiteral("D");
}

std::optional<double> Read(const QString& text) {
  return ReadNumber(text.trimmed().toStdString());
}

}  // namespace

std::optional<NameParts> SplitName(const QString& name) {
  const qsizetype blank = name.lastIndexOf(u' ');
  if (blank < 0) return std::nullopt;
  return NameParts{name.left(blank + 1), name.mid(blank + 1)};
}

QString ComposeName(const QString& surname, const QString& firstName) {
  const QString last = surname.trimmed();
  const QString first = firstName.trimmed();
  if (last.isEmpty() && first.isEmpty()) return kUnknown.toString();
  return last + QLatin1Char(' ') + first;
}

PatientTexts PatientTextsOf(const CaseEntries& entries, bool weightUnknown) {
  return {.name = ComposeName(entries.surname, entries.firstName),
          .sex = SexText(entries.sex),
          .dateOfBirth = TextOr(entries.dateOfBirth, kUnknown),
          .bodyWeight = TextOr(weightUnknown ? QString() : entries.bodyWeight, kUnknown),
          .hip = HipText(entries.hip),
          .comments = TextOr(entries.comments, kNoComments)};
}

std::optional<CaseData> DataOf(const CaseEntries& entries, bool weightUnknown) {
  CaseData data;
  data.weightUnknown = weightUnknown || entries.bodyWeight.isEmpty();
  data.patient = PatientTextsOf(entries, data.weightUnknown);
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    const MeasureEntry& entry = entries.measures[i];
    const std::optional<double> typed = Read(entry.text);
    if (!typed) return std::nullopt;
    const auto measure = static_cast<Measure>(i);
    SetValue(data.geometry, measure, HeldValue(measure, *typed, entry.unit));
  }
  const std::optional<double> weight =
      entries.bodyWeight.isEmpty() ? kAssumedBodyWeight : Read(entries.bodyWeight);
  if (!weight) return std::nullopt;
  data.bodyWeight = *weight;
  return data;
}

bool IsSameCase(const CaseData& a, const CaseData& b) {
  const QLocale any = QLocale::c();
  return a.patient == b.patient && a.weightUnknown == b.weightUnknown &&
         NumberText(a.bodyWeight, any) == NumberText(b.bodyWeight, any) &&
         EntriesOf(a, any, {}).measures == EntriesOf(b, any, {}).measures;
}

CaseEntries EntriesOf(const CaseData& data, const QLocale& locale, const CaseEntries& current) {
  CaseEntries entries = current;
  const PatientTexts& patient = data.patient;
  if (const std::optional<NameParts> name = SplitName(patient.name)) {
    entries.surname = name->surname;
    entries.firstName = name->firstName;
  } else if (patient.name == kUnknown) {
    entries.surname.clear();
    entries.firstName.clear();
  }
  entries.sex = patient.sex == u"M" ? CaseEntries::Sex::Male : CaseEntries::Sex::Female;
  entries.hip = patient.hip == u"L" ? CaseEntries::Hip::Left : CaseEntries::Hip::Right;
  entries.dateOfBirth = UnlessUnknown(patient.dateOfBirth);
  entries.bodyWeight = UnlessUnknown(patient.bodyWeight);
  entries.comments = patient.comments == kNoComments ? QString() : patient.comments;
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    const auto measure = static_cast<Measure>(i);
    const double held = ValueOf(data.geometry, measure);
    const bool angle = IsAngle(measure);
    const QStringView unit = angle                            ? kDegree
                             : measure == Measure::HeadRadius ? kMetre
                                                              : kCentimetre;
    entries.measures[i] = {NumberText(angle ? RadiansToDegrees(held) : held, locale),
                           unit.toString()};
  }
  return entries;
}

}  // namespace Vse
