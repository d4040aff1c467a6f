// Writing a case file.
#include <array>

#include "case/case_file.h"
#include "case/case_file_labels.h"
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
  AppendRecord(file, kWeightLabel, patient.bodyWeight, kWeightSuffix);
  AppendRecord(file, kHipLabel, patient.hip);
  AppendRecord(file, kCommentsLabel, patient.comments);
}

void AppendGeometry(QString& file, const Geometry& g, const QLocale& locale) {
  const std::array<double, 8> values = {g.lizm,
                                        g.xizm,
                                        g.zizm,
                                        g.Cizm,
                                        g.Hizm,
                                        RadiansToDegrees(g.zasuk),
                                        RadiansToDegrees(g.thetaCE),
                                        g.headRadius};
  const std::array<QStringView, 8> suffixes = {kLengthSuffix, kLengthSuffix, kLengthSuffix,
                                               kLengthSuffix, kLengthSuffix, kAngleSuffix,
                                               kAngleSuffix,  kRadiusSuffix};
  for (std::size_t i = 0; i < values.size(); ++i) {
    AppendRecord(file, kMeasureLabels[i], NumberText(values[i], locale), suffixes[i]);
  }
}

void AppendResults(QString& file, const CaseRecord& record, const QLocale& locale) {
  const Results& r = record.results;
  const auto truncated = [&](double value) {
    return NumberText(TruncateToDecimals(value, 3), locale);
  };
  AppendRecord(file, kRWbLabel, truncated(r.rWb));
  AppendRecord(file, kThetaRLabel, truncated(r.thetaR), kThetaRSuffix);
  AppendRecord(file, kPmaxWbLabel, truncated(r.pmaxWb), kPmaxWbSuffix);
  if (!record.weightUnknown) {
    AppendRecord(file, kPmaxLabel, NumberText(r.pmax, locale), kPmaxSuffix);
  }
}

}  // namespace

QByteArray ComposeCaseFile(const CaseRecord& record, const QString& date, const QLocale& locale) {
  QString file = kFileMark.toString().leftJustified(kHeaderWidth) + date + QStringLiteral("\r\n");
  AppendBlank(file);
  AppendPatient(file, record.patient);
  AppendBlank(file);
  AppendGeometry(file, record.geometry, locale);
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
