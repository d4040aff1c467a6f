// Placeholders, letters and digits.
#include "case/case_texts.h"

#include "case/number_text.h"

namespace Vse {

namespace {

// `text`, or `placeholder` where it is empty; and back.
QString TextOr(const QString& text, QStringView placeholder) {
  return text.isEmpty() ? placeholder.toString() : text;
}
QString Unless(const QString& text, QStringView placeholder) {
  return text == placeholder ? QString() : text;
}

// The letter of a choice, "Unknown" for none; and back.
template <class Choice>
QString Letter(std::optional<Choice> choice, Choice first, QStringView ofFirst,
               QStringView ofSecond) {
  if (!choice) return kUnknown.toString();
  return (*choice == first ? ofFirst : ofSecond).toString();
}

}  // namespace

PatientTexts PatientTextsOf(const Patient& patient) {
  return {.name = TextOr(patient.name, kUnknown),
          .sex = Letter(patient.sex, Sex::Male, u"M", u"F"),
          .dateOfBirth = TextOr(patient.dateOfBirth, kUnknown),
          .bodyWeight = TextOr(patient.bodyWeight, kUnknown),
          .hip = Letter(patient.hip, HipSide::Left, u"L", u"D"),
          .comments = TextOr(patient.comments, kNoComments)};
}

Patient PatientFrom(const PatientTexts& texts) {
  Patient patient = {.name = Unless(texts.name, kUnknown),
                     .sex = {},
                     .dateOfBirth = Unless(texts.dateOfBirth, kUnknown),
                     .bodyWeight = Unless(texts.bodyWeight, kUnknown),
                     .hip = {},
                     .comments = Unless(texts.comments, kNoComments)};
  if (texts.sex != kUnknown) patient.sex = texts.sex == u"M" ? Sex::Male : Sex::Female;
  if (texts.hip != kUnknown) patient.hip = texts.hip == u"L" ? HipSide::Left : HipSide::Right;
  return patient;
}

QString UnitCaption(Sila::Result id) {
  const std::string_view unit = Sila::RowOf(id).unit;
  if (unit.empty()) return {};
  return u' ' + QString::fromUtf8(unit);
}

QString ResultText(double value, const QLocale& locale) {
  constexpr int kShownDecimals = 2;
  return NumberText(TruncateToDecimals(value, kShownDecimals), locale);
}

ResultTexts ResultTextsOf(const CaseRecord& record, const QLocale& locale) {
  ResultTexts texts;
  for (const Sila::ResultRow& row : Sila::kResults) {
    if (row.needsWeight && record.data.weightUnknown()) continue;
    texts[row.id] = ResultText(row.value(record.results()), locale);
  }
  return texts;
}

QString MeasurementText(const Sila::HipInputs& inputs, const Sila::MeasurementRow& row,
                        const QLocale& locale) {
  const Sila::Unit unit = Sila::UnitsOf(row.kind()).front();
  return NumberText(Sila::FromHeld(row.kind(), unit, Sila::ValueOf(inputs, row)), locale);
}

QString OlderText(const Sila::MeasurementRow& row) {
  if (!row.later) return {};
  Sila::HipInputs older;
  Sila::SetValue(older, row, row.later->without);
  return MeasurementText(older, row, QLocale::c());
}

}  // namespace Vse
