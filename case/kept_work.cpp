// Kept work as JSON: it is readable, and damaged text can be distinguished from intact text.
#include "case/kept_work.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <array>
#include <stdexcept>
#include <string_view>

#include "case/case_texts.h"

namespace Vse {

namespace {

constexpr QLatin1String kKind("TELMARION kept work");
constexpr int kVersion = 1;

struct Damaged : std::runtime_error {
  Damaged() : std::runtime_error("not kept work") {}
};

// Names and places of the texts and numbers, for both directions.
template <class Owner>
struct TextField {
  const char* name;
  QString Owner::*text;
};
constexpr std::array kPatientFields{
    TextField<PatientTexts>{"name", &PatientTexts::name},
    TextField<PatientTexts>{"sex", &PatientTexts::sex},
    TextField<PatientTexts>{"dateOfBirth", &PatientTexts::dateOfBirth},
    TextField<PatientTexts>{"bodyWeight", &PatientTexts::bodyWeight},
    TextField<PatientTexts>{"hip", &PatientTexts::hip},
    TextField<PatientTexts>{"comments", &PatientTexts::comments}};
constexpr std::array kEntryFields{TextField<CaseEntries>{"surname", &CaseEntries::surname},
                                  TextField<CaseEntries>{"firstName", &CaseEntries::firstName},
                                  TextField<CaseEntries>{"dateOfBirth", &CaseEntries::dateOfBirth},
                                  TextField<CaseEntries>{"bodyWeight", &CaseEntries::bodyWeight},
                                  TextField<CaseEntries>{"comments", &CaseEntries::comments}};
// The numbers for a choice in an open form: none, the first, the second.
template <class Choice>
int NumberOf(std::optional<Choice> choice) {
  return choice ? static_cast<int>(*choice) + 1 : 0;
}

QLatin1String KeyOf(const Sila::MeasurementRow& row) {
  return {row.key.data(), static_cast<qsizetype>(row.key.size())};
}

QJsonValue Member(const QJsonObject& object, std::string_view name, QJsonValue::Type type) {
  QJsonValue value = object.value(QLatin1String(name.data(), static_cast<qsizetype>(name.size())));
  if (value.type() != type) throw Damaged();
  return value;
}
QString TextIn(const QJsonObject& object, std::string_view name) {
  return Member(object, name, QJsonValue::String).toString();
}
QJsonObject ObjectIn(const QJsonObject& object, std::string_view name) {
  return Member(object, name, QJsonValue::Object).toObject();
}

// Whether the measurement was not there yet when these were kept.
bool IsOlderThan(const Sila::MeasurementRow& row, const QJsonObject& measurements) {
  return row.later && !measurements.contains(KeyOf(row));
}

template <class Fields, class Owner>
void WriteTexts(const Fields& fields, const Owner& owner, QJsonObject& object) {
  for (const auto& field : fields) object.insert(QLatin1String(field.name), owner.*field.text);
}
template <class Fields, class Owner>
void ReadTexts(const Fields& fields, const QJsonObject& object, Owner& owner) {
  for (const auto& field : fields) owner.*field.text = TextIn(object, field.name);
}

QJsonObject CaseToJson(const CaseData& data) {
  QJsonObject patient;
  WriteTexts(kPatientFields, PatientTextsOf(data.patient), patient);
  QJsonObject measurements;
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    measurements.insert(KeyOf(row), Sila::ValueOf(data.inputs, row));
  }
  return {
      {"patient", patient},
      {"measures", measurements},
      {"computedWeight", Sila::ValueOf(data.inputs, Sila::RowOf(Sila::Measurement::BodyWeight))},
      {"weightUnknown", data.weightUnknown()}};
}

// What single lines held before control characters were kept out of them could not be opened again
// once it was saved.
Patient PatientFromJson(const QJsonObject& object) {
  PatientTexts patient;
  ReadTexts(kPatientFields, object, patient);
  for (const auto& field : kPatientFields) {
    QString& text = patient.*field.text;
    if (field.text != &PatientTexts::comments) text = OneLine(text);
  }
  patient.comments.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
  return PatientFrom(patient);
}

CaseData CaseFromJson(const QJsonObject& object) {
  CaseData data;
  data.patient = PatientFromJson(ObjectIn(object, "patient"));
  const QJsonObject measurements = ObjectIn(object, "measures");
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    Sila::SetValue(data.inputs, row,
                   IsOlderThan(row, measurements)
                       ? row.later->without
                       : Member(measurements, row.key, QJsonValue::Double).toDouble());
  }
  const double weight = Member(object, "computedWeight", QJsonValue::Double).toDouble();
  // A weight that is not known is never a number, whatever an older version wrote beside it.
  const bool unknown = Member(object, "weightUnknown", QJsonValue::Bool).toBool();
  if (!unknown && !data.patient.bodyWeight.isEmpty()) {
    data.inputs.bodyWeight = Sila::Kilograms{weight};
  }
  return data;
}

QJsonObject EntriesToJson(const CaseEntries& entries) {
  QJsonObject object{{"sex", NumberOf(entries.sex)}, {"hip", NumberOf(entries.hip)}};
  WriteTexts(kEntryFields, entries, object);
  QJsonObject measurements;
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    const MeasurementEntry& entry = entries[row.id];
    measurements.insert(
        KeyOf(row), QJsonObject{{"text", entry.text}, {"unit", UnitText(entry.unit).toString()}});
  }
  object.insert("measures", measurements);
  return object;
}

template <class Choice>
std::optional<Choice> ChoiceIn(const QJsonObject& object, const char* name) {
  const double number = Member(object, name, QJsonValue::Double).toDouble();
  if (number == 0.0) return std::nullopt;
  for (const int choice : {0, 1}) {
    if (number == choice + 1) return static_cast<Choice>(choice);
  }
  throw Damaged();
}

MeasurementEntry EntryFromJson(Sila::Kind kind, const QJsonObject& object) {
  const std::optional<Sila::Unit> unit = UnitOf(kind, TextIn(object, "unit"));
  if (!unit) throw Damaged();
  return {TextIn(object, "text"), *unit};
}

CaseEntries EntriesFromJson(const QJsonObject& object) {
  CaseEntries entries;
  entries.sex = ChoiceIn<Sex>(object, "sex");
  entries.hip = ChoiceIn<HipSide>(object, "hip");
  ReadTexts(kEntryFields, object, entries);
  const QJsonObject measurements = ObjectIn(object, "measures");
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    entries[row.id] = IsOlderThan(row, measurements)
                          ? MeasurementEntry{OlderText(row), Sila::UnitsOf(row.kind()).front()}
                          : EntryFromJson(row.kind(), ObjectIn(measurements, row.key));
  }
  return entries;
}

KeptWork WorkFromJson(const QJsonObject& object) {
  if (TextIn(object, "kind") != kKind) throw Damaged();
  if (Member(object, "version", QJsonValue::Double).toInt() != kVersion) throw Damaged();
  KeptWork work;
  work.file = TextIn(object, "file");
  if (object.contains("case")) work.data = CaseFromJson(ObjectIn(object, "case"));
  if (object.contains("computedBefore")) {
    work.computedBefore = CaseFromJson(ObjectIn(object, "computedBefore"));
  }
  if (object.contains("marks")) work.marks = ObjectIn(object, "marks");
  if (!object.contains("form")) return work;
  const QJsonObject form = ObjectIn(object, "form");
  work.entries = EntriesFromJson(form);
  work.weightUnknownInForm =
      form.contains("weightUnknown") && Member(form, "weightUnknown", QJsonValue::Bool).toBool();
  work.formIsMeasured = form.contains("measured");
  return work;
}

}  // namespace

QByteArray ComposeKeptWork(const KeptWork& work) {
  QJsonObject object{{"kind", kKind}, {"version", kVersion}, {"file", work.file}};
  if (work.data) object.insert("case", CaseToJson(*work.data));
  if (work.computedBefore) object.insert("computedBefore", CaseToJson(*work.computedBefore));
  if (work.entries) {
    QJsonObject form = EntriesToJson(*work.entries);
    form.insert("weightUnknown", work.weightUnknownInForm);
    if (work.formIsMeasured) form.insert("measured", true);
    object.insert("form", form);
  }
  if (!work.marks.isEmpty()) object.insert("marks", work.marks);
  return QJsonDocument(object).toJson();
}

std::optional<KeptWork> ParseKeptWork(const QByteArray& text) {
  try {
    return WorkFromJson(QJsonDocument::fromJson(text).object());
  } catch (const Damaged&) {
    return std::nullopt;
  }
}

}  // namespace Vse
