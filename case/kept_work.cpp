// Kept work as JSON: a person can read it, and a damaged text is told from a whole one.
#include "case/kept_work.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <array>
#include <stdexcept>

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
constexpr std::array kMeasureNames{"lizm", "xizm",  "zizm",    "Cizm",
                                   "Hizm", "zasuk", "thetaCE", "headRadius"};
static_assert(kMeasureNames.size() == kMeasureCount);

QJsonValue Member(const QJsonObject& object, const char* name, QJsonValue::Type type) {
  QJsonValue value = object.value(QLatin1String(name));
  if (value.type() != type) throw Damaged();
  return value;
}
QString TextIn(const QJsonObject& object, const char* name) {
  return Member(object, name, QJsonValue::String).toString();
}
QJsonObject ObjectIn(const QJsonObject& object, const char* name) {
  return Member(object, name, QJsonValue::Object).toObject();
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
  WriteTexts(kPatientFields, data.patient, patient);
  QJsonObject measures;
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    measures.insert(QLatin1String(kMeasureNames[i]),
                    ValueOf(data.geometry, static_cast<Measure>(i)));
  }
  return {{"patient", patient},
          {"measures", measures},
          {"computedWeight", data.bodyWeight},
          {"weightUnknown", data.weightUnknown}};
}

// What single lines held before control characters were kept out of them could not be opened again
// once it was saved.
PatientTexts PatientFromJson(const QJsonObject& object) {
  PatientTexts patient;
  ReadTexts(kPatientFields, object, patient);
  for (const auto& field : kPatientFields) {
    QString& text = patient.*field.text;
    if (field.text != &PatientTexts::comments) text = OneLine(text);
  }
  patient.comments.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
  return patient;
}

CaseData CaseFromJson(const QJsonObject& object) {
  CaseData data;
  data.patient = PatientFromJson(ObjectIn(object, "patient"));
  const QJsonObject measures = ObjectIn(object, "measures");
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    SetValue(data.geometry, static_cast<Measure>(i),
             Member(measures, kMeasureNames[i], QJsonValue::Double).toDouble());
  }
  data.bodyWeight = Member(object, "computedWeight", QJsonValue::Double).toDouble();
  // A weight that is not known is never a number, whatever an older version wrote beside it.
  data.weightUnknown = Member(object, "weightUnknown", QJsonValue::Bool).toBool() ||
                       data.patient.bodyWeight == kUnknown;
  return data;
}

QJsonObject EntriesToJson(const CaseEntries& entries) {
  QJsonObject object{{"sex", static_cast<int>(entries.sex)},
                     {"hip", static_cast<int>(entries.hip)}};
  WriteTexts(kEntryFields, entries, object);
  QJsonObject measures;
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    const MeasureEntry& entry = entries.measures[i];
    measures.insert(QLatin1String(kMeasureNames[i]),
                    QJsonObject{{"text", entry.text}, {"unit", entry.unit}});
  }
  object.insert("measures", measures);
  return object;
}

// The sexes and the hips: none, the first, the second.
template <class Choice>
Choice ChoiceIn(const QJsonObject& object, const char* name) {
  const double value = Member(object, name, QJsonValue::Double).toDouble();
  for (const int choice : {0, 1, 2}) {
    if (value == choice) return static_cast<Choice>(choice);
  }
  throw Damaged();
}

CaseEntries EntriesFromJson(const QJsonObject& object) {
  CaseEntries entries;
  entries.sex = ChoiceIn<CaseEntries::Sex>(object, "sex");
  entries.hip = ChoiceIn<CaseEntries::Hip>(object, "hip");
  ReadTexts(kEntryFields, object, entries);
  const QJsonObject measures = ObjectIn(object, "measures");
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    const QJsonObject entry = ObjectIn(measures, kMeasureNames[i]);
    entries.measures[i] = {TextIn(entry, "text"), TextIn(entry, "unit")};
    if (!IsUnitOf(static_cast<Measure>(i), entries.measures[i].unit)) throw Damaged();
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
  if (!object.contains("form")) return work;
  const QJsonObject form = ObjectIn(object, "form");
  work.entries = EntriesFromJson(form);
  work.weightUnknownInForm =
      form.contains("weightUnknown") && Member(form, "weightUnknown", QJsonValue::Bool).toBool();
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
    object.insert("form", form);
  }
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
