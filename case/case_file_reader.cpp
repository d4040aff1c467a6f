// Reading a case file: labels and units are checked, so that no line is taken for another.
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <optional>
#include <vector>

#include "case/case_conversion.h"
#include "case/case_file.h"
#include "case/case_file_labels.h"
#include "case/case_file_records.h"
#include "case/case_places.h"
#include "case/case_texts.h"
#include "case/code_page.h"
#include "case/number_text.h"

namespace Vse {

namespace {

using Problem = CaseFileContents::Problem;

constexpr qsizetype kSuffixWidth = 3;  // " cm", " kg", " m "; an angle's suffix is one wider

// A record that the reader wants.
struct Wanted {
  QStringView label;
  QStringView suffix = {};
  bool mayBeEmpty = true;
  QString withoutLine = {};  // the value of a line that is not there; empty: it must be there
};

constexpr std::size_t kFirstMeasurement = 6;  // among the wanted records

std::vector<Wanted> MakeWanted() {
  std::vector<Wanted> wanted = {{kNameLabel},  {kSexLabel},
                                {kBirthLabel}, {kWeightLabel, FileSuffix(Sila::Kind::Weight)},
                                {kHipLabel},   {kCommentsLabel}};
  for (const MeasurementPlaces& places : kMeasurementPlaces) {
    const Sila::MeasurementRow& row = Sila::RowOf(places.id);
    wanted.push_back({places.fileLabel, FileSuffix(row.kind()), false, OlderText(row)});
  }
  return wanted;
}

CaseFileContents Unreadable(const QString& reason) {
  CaseFileContents contents;
  contents.problem = Problem::Unreadable;
  contents.reason = reason;
  return contents;
}

// For the user: what is wrong with the line of this label.
QString Complaint(const Wanted& wanted, const QString& trouble) {
  const QString label = wanted.label.chopped(2).trimmed().toString();
  return QStringLiteral("The line \"%1\" %2.").arg(label, trouble);
}

// An editor may have stripped the blank of a label that has no value.
bool HasLabel(const QString& record, const Wanted& wanted) {
  return record.startsWith(wanted.label) || record == wanted.label.chopped(1);
}

QString WithoutBlanksBehind(QStringView text) {
  while (!text.isEmpty() && text.back().isSpace()) text.chop(1);
  return text.toString();
}

// One word and the suffix. The blanks after the unit do not count, since an editor may have
// stripped them. The one before it does: a digit in its place would belong to the number.
QString DefectOfValue(const QString& record, const Wanted& wanted) {
  if (wanted.suffix.isEmpty()) return {};
  const QString text = WithoutBlanksBehind(QStringView(record).mid(kLabelWidth));
  const QString suffix = WithoutBlanksBehind(wanted.suffix);
  const QString unit = suffix.trimmed();
  if (!wanted.mayBeEmpty && (text.isEmpty() || text.trimmed() == unit)) {
    return Complaint(wanted, QStringLiteral("is too short to hold a value"));
  }
  const bool whole = text.endsWith(suffix);
  if (whole && !text.chopped(suffix.size()).trimmed().contains(u' ')) return {};
  return Complaint(wanted, QStringLiteral("does not end with its unit, \"%1\"").arg(unit));
}

// What is wrong where record `index` of the wanted ones is not in its place. A label that was cut
// is the end of the file.
QString DefectOfPlace(const QStringList& records, const std::vector<Wanted>& all,
                      std::size_t index) {
  const Wanted& wanted = all[index];
  const QString there = records.value(static_cast<qsizetype>(index));
  if (wanted.label.startsWith(there)) return Complaint(wanted, QStringLiteral("is missing"));
  if (index > 0 && HasLabel(there, all[index - 1])) {
    return Complaint(all[index - 1], QStringLiteral("is there twice"));
  }
  return Complaint(wanted, QStringLiteral("is missing, or its label was changed"));
}

// One of these lines after the last one appears twice, and the second may be the one that counts.
QString DefectBehind(const QStringList& records, const std::vector<Wanted>& all) {
  for (const QString& record : records.mid(static_cast<qsizetype>(all.size()))) {
    for (const Wanted& wanted : all) {
      if (HasLabel(record, wanted)) return Complaint(wanted, QStringLiteral("is there twice"));
    }
  }
  return {};
}

// Empty, or what is wrong with the first record that is not as it should be.
QString FindDefect(const QStringList& records, const std::vector<Wanted>& all) {
  for (std::size_t i = 0; i < all.size(); ++i) {
    const auto index = static_cast<qsizetype>(i);
    if (index >= records.size() || !HasLabel(records[index], all[i])) {
      return DefectOfPlace(records, all, i);
    }
    if (QString defect = DefectOfValue(records[index], all[i]); !defect.isEmpty()) {
      return defect;
    }
  }
  return DefectBehind(records, all);
}

// A file of a version that did not have a measurement yet lacks its line. One that ends before it
// lacks others, too.
QStringList WithMissingLines(QStringList records, const std::vector<Wanted>& all) {
  for (std::size_t i = 0; i < all.size(); ++i) {
    const auto index = static_cast<qsizetype>(i);
    if (all[i].withoutLine.isEmpty() || HasLabel(records.value(index), all[i])) continue;
    if (index > records.size()) break;
    records.insert(index, all[i].label.toString() + all[i].withoutLine + all[i].suffix.toString());
  }
  return records;
}

// A line as it was written, its LF included: whole label, value, whole suffix.
QString WrittenLine(const QString& record, const Wanted& wanted) {
  QString value = record.mid(kLabelWidth);
  if (!wanted.suffix.isEmpty()) {
    value = WithoutBlanksBehind(value).chopped(WithoutBlanksBehind(wanted.suffix).size());
  }
  return wanted.label.toString() + value + wanted.suffix.toString() + u'\n';
}

QStringList WrittenLines(const QStringList& records, const std::vector<Wanted>& all) {
  QStringList lines;
  for (std::size_t i = 0; i < all.size(); ++i) {
    lines.append(WrittenLine(records[static_cast<qsizetype>(i)], all[i]));
  }
  return lines;
}

// An empty name empties its boxes; one without a blank, "Unknown" too, leaves them alone.
void FillName(CaseFileContents& contents, const QString& line) {
  contents.name = FieldText(line);
  const bool empty = line.size() == kLabelWidth + 1;
  const std::optional<NameParts> name = empty ? NameParts() : SplitName(contents.name);
  if (!name) return;
  contents.entries.surname = name->surname;
  contents.entries.firstName = name->firstName;
  contents.hasName = true;
}

void FillPatient(CaseFileContents& contents, const QStringList& lines) {
  CaseEntries& entries = contents.entries;
  FillName(contents, lines[0]);
  const bool male = FieldText(lines[1]).trimmed() == u"M";
  entries.sex = male ? Sex::Male : Sex::Female;
  entries.dateOfBirth = FieldText(lines[2]);
  entries.bodyWeight = FieldNumberText(lines[3]).trimmed();
  const bool left = FieldText(lines[4]).trimmed() == u"L";
  entries.hip = left ? HipSide::Left : HipSide::Right;
  entries.comments = FieldText(lines[5]);
}

void FillMeasurements(CaseEntries& entries, const QStringList& lines) {
  for (const Sila::MeasurementRow& row : Sila::kRadiographMeasurements) {
    const std::size_t index = kFirstMeasurement + Sila::IndexOf(row.id);
    const auto line = static_cast<qsizetype>(index);
    entries[row.id] = {FieldNumberText(lines[line]), Sila::UnitsOf(row.kind()).front()};
  }
}

// A blank doubled in the label does not make a value of "Unknown".
QString Field(const QString& line, qsizetype behind) {
  const qsizetype length = line.size() - kLabelWidth - behind;
  const QString value = length > 0 ? line.mid(kLabelWidth, length) : QString();
  return value.trimmed() == kUnknown ? QString() : value;
}

}  // namespace

QString FieldText(const QString& line) {
  return Field(line, 1);
}

QString FieldNumberText(const QString& line) {
  return Field(line, 1 + kSuffixWidth);
}

CaseFileContents ParseCaseFile(const QByteArray& bytes, const QLocale& locale) {
  return ParseCaseFile(bytes, CodePageOf(locale));
}

CaseFileContents ParseCaseFile(const QByteArray& bytes, const char* codePage) {
  CaseFileContents contents;
  const QString text = DecodeText(bytes, codePage);
  if (bytes.size() > kLargestCaseFile || !text.startsWith(kFileMark)) {
    contents.problem = Problem::NotCorrectFile;
    return contents;
  }
  const std::vector<Wanted> all = MakeWanted();
  const QStringList records = WithMissingLines(RecordsOf(text).mid(1), all);  // after the header
  const QString defect = FindDefect(records, all);
  if (!defect.isEmpty()) return Unreadable(defect);
  const QStringList lines = WrittenLines(records, all);
  FillPatient(contents, lines);
  FillMeasurements(contents.entries, lines);
  return contents;
}

CaseFileContents ReadCaseFile(const QString& path, const QLocale& locale) {
  QFile file(path);
  // Reading from a pipe or a device could wait forever.
  const QFileInfo info(path);
  if (info.exists() && !info.isFile() && !info.isDir()) {
    return Unreadable(QStringLiteral("It is not a file."));
  }
  if (!file.open(QIODevice::ReadOnly)) return Unreadable(file.errorString());
  const QByteArray bytes = file.read(kLargestCaseFile + 1);
  if (file.error() != QFileDevice::NoError) return Unreadable(file.errorString());
  return ParseCaseFile(bytes, locale);
}

}  // namespace Vse
