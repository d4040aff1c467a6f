// Reading a case file: labels and units are checked, so that no line is taken for another.
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <array>
#include <optional>

#include "case/case_conversion.h"
#include "case/case_file.h"
#include "case/case_file_labels.h"
#include "case/case_file_records.h"
#include "case/code_page.h"

namespace Vse {

namespace {

using Problem = CaseFileContents::Problem;

constexpr qsizetype kSuffixWidth = 3;  // " cm", " kg", " m "; an angle's suffix is one wider

// A record that the reader wants.
struct Wanted {
  QStringView label;
  QStringView suffix;
  bool mayBeEmpty = true;
};

constexpr bool kFilled = false;
constexpr std::size_t kFirstMeasure = 6;  // among the wanted records
constexpr std::array<Wanted, 14> kWanted = {{{kNameLabel, {}},
                                             {kSexLabel, {}},
                                             {kBirthLabel, {}},
                                             {kWeightLabel, kWeightSuffix},
                                             {kHipLabel, {}},
                                             {kCommentsLabel, {}},
                                             {kMeasureLabels[0], kLengthSuffix, kFilled},
                                             {kMeasureLabels[1], kLengthSuffix, kFilled},
                                             {kMeasureLabels[2], kLengthSuffix, kFilled},
                                             {kMeasureLabels[3], kLengthSuffix, kFilled},
                                             {kMeasureLabels[4], kLengthSuffix, kFilled},
                                             {kMeasureLabels[5], kAngleSuffix, kFilled},
                                             {kMeasureLabels[6], kAngleSuffix, kFilled},
                                             {kMeasureLabels[7], kRadiusSuffix, kFilled}}};

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

// One word and the suffix. The blanks behind the unit do not count, since an editor may have
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

// What is wrong where record `index` of the wanted ones does not stand. A label that was cut is the
// end of the file.
QString DefectOfPlace(const QStringList& records, std::size_t index) {
  const Wanted& wanted = kWanted[index];
  const QString there = records.value(static_cast<qsizetype>(index));
  if (wanted.label.startsWith(there)) return Complaint(wanted, QStringLiteral("is missing"));
  if (index > 0 && HasLabel(there, kWanted[index - 1])) {
    return Complaint(kWanted[index - 1], QStringLiteral("is there twice"));
  }
  return Complaint(wanted, QStringLiteral("is missing, or its label was changed"));
}

// A line of these behind the last one is there twice, and it may be that one that counts.
QString DefectBehind(const QStringList& records) {
  for (const QString& record : records.mid(static_cast<qsizetype>(kWanted.size()))) {
    for (const Wanted& wanted : kWanted) {
      if (HasLabel(record, wanted)) return Complaint(wanted, QStringLiteral("is there twice"));
    }
  }
  return {};
}

// Empty, or what is wrong with the first record that is not as it should be.
QString FindDefect(const QStringList& records) {
  for (std::size_t i = 0; i < kWanted.size(); ++i) {
    const auto index = static_cast<qsizetype>(i);
    if (index >= records.size() || !HasLabel(records[index], kWanted[i])) {
      return DefectOfPlace(records, i);
    }
    if (QString defect = DefectOfValue(records[index], kWanted[i]); !defect.isEmpty()) {
      return defect;
    }
  }
  return DefectBehind(records);
}

// A line as it was written, its LF included: whole label, value, whole suffix.
QString WrittenLine(const QString& record, const Wanted& wanted) {
  QString value = record.mid(kLabelWidth);
  if (!wanted.suffix.isEmpty()) {
    value = WithoutBlanksBehind(value).chopped(WithoutBlanksBehind(wanted.suffix).size());
  }
  return wanted.label.toString() + value + wanted.suffix.toString() + u'\n';
}

QStringList WrittenLines(const QStringList& records) {
  QStringList lines;
  for (std::size_t i = 0; i < kWanted.size(); ++i) {
    lines.append(WrittenLine(records[static_cast<qsizetype>(i)], kWanted[i]));
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
  entries.sex = male ? CaseEntries::Sex::Male : CaseEntries::Sex::Female;
  entries.dateOfBirth = FieldText(lines[2]);
  entries.bodyWeight = FieldNumberText(lines[3]).trimmed();
  const bool left = FieldText(lines[4]).trimmed() == u"L";
  entries.hip = left ? CaseEntries::Hip::Left : CaseEntries::Hip::Right;
  entries.comments = FieldText(lines[5]);
}

void FillMeasures(CaseEntries& entries, const QStringList& lines) {
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    const std::size_t index = kFirstMeasure + i;
    const QStringView suffix = kWanted[index].suffix;
    const QStringView unit = suffix == kAngleSuffix    ? kDegree
                             : suffix == kRadiusSuffix ? kMetre
                                                       : kCentimetre;
    const QString text = FieldNumberText(lines[static_cast<qsizetype>(index)]);
    entries.measures[i] = {text, unit.toString()};
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
  const QStringList records = RecordsOf(text).mid(1);  // behind the header
  if (const QString defect = FindDefect(records); !defect.isEmpty()) return Unreadable(defect);
  const QStringList lines = WrittenLines(records);
  FillPatient(contents, lines);
  FillMeasures(contents.entries, lines);
  return contents;
}

CaseFileContents ReadCaseFile(const QString& path, const QLocale& locale) {
  QFile file(path);
  // Reading from a pipe or a device could wait for ever.
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
