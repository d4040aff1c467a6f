// Writing a case file.
#include "case/case_file.h"
#include "case/case_file_labels.h"
#include "case/case_places.h"
#include "case/case_texts.h"
#include "case/code_page.h"
#include "case/number_text.h"
#include "storage/whole_file.h"

namespace Vse {

namespace {

constexpr QStringView kEndOfRecord = u"\n\r\n";

void AppendRecord(QString& file, QStringView label, QStringView value, QStringView suffix = {}) {
  file += label;
  file += value;
  file += suffix;
  file += kEndOfRecord;
}

void AppendBlank(QString& file) {
  file += kEndOfRecord;
}

void AppendPatient(QString& file, const PatientTexts& patient) {
  AppendRecord(file, kNameLabel, patient.name);
  AppendRecord(file, kSexLabel, patient.sex);
  AppendRecord(file, kBirthLabel, patient.dateOfBirth);
  AppendRecord(file, kWeightLabel, patient.bodyWeight, FileSuffix(Sila::Kind::Weight));
  AppendRecord(file, kHipLabel, patient.hip);
  AppendRecord(file, kCommentsLabel, patient.comments);
}

void AppendMeasurements(QString& file, const Sila::HipInputs& inputs, const QLocale& locale) {
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    AppendRecord(file, kMeasurementPlaces[Sila::IndexOf(row.id)].fileLabel,
                 MeasurementText(inputs, row, locale), FileSuffix(row.kind()));
  }
}

void AppendResults(QString& file, const CaseRecord& record, const QLocale& locale) {
  for (const ResultPlaces& places : kResultPlaces) {
    const Sila::ResultRow& row = Sila::RowOf(places.id);
    const bool hidden = row.needsWeight && record.data.weightUnknown();
    if (places.fileLabel.isEmpty() || hidden) continue;
    const double held = row.value(record.results());
    const double value =
        places.fileDecimals ? TruncateToDecimals(held, *places.fileDecimals) : held;
    AppendRecord(file, places.fileLabel, NumberText(value, locale), places.fileSuffix);
  }
}

}  // namespace

QByteArray ComposeCaseFile(const CaseRecord& record, const QString& date, const QLocale& locale) {
  QString file = kFileMark.toString().leftJustified(kHeaderWidth) + date + QStringLiteral("\r\n");
  AppendBlank(file);
  AppendPatient(file, PatientTextsOf(record.data.patient));
  AppendBlank(file);
  AppendMeasurements(file, record.data.inputs, locale);
  AppendBlank(file);
  AppendResults(file, record, locale);
  return EncodeText(file, locale);
}

QString WriteCaseFile(const QString& path, const CaseRecord& record, const QString& date,
                      const QLocale& locale) {
  const QByteArray bytes = ComposeCaseFile(record, date, locale);
  if (bytes.size() > kLargestCaseFile) {
    return QStringLiteral("The comments are too long for a case file (at most 1 MiB).");
  }
  return WriteWholeFile(path, bytes);
}

}  // namespace Vse
