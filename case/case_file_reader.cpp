// Reading a case file, also one whose line ends were changed on the way.
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QRegularExpression>
#include <algorithm>
#include <array>

#include "case/case_conversion.h"
#include "case/case_file.h"
#include "case/case_file_labels.h"
#include "case/code_page.h"

namespace Vse {

namespace {

using Problem = CaseFileContents::Problem;

constexpr qsizetype kSuffixWidth = 3;  // " cm", " kg", " m "; an angle's suffix is one wider

// A record that the reader wants: its label, and whether its value is followed by a unit suffix.
struct Wanted {
  QStringView label;
  QStringView suffix;
};

constexpr qsizetype kCommentsIndex = 5;  // among the wanted records
const std::array<Wanted, 14> kWanted = {{{kNameLabel, {}},
                                         {kSexLabel, {}},
                                         {kBirthLabel, {}},
                                         {kWeightLabel, kWeightSuffix},
                                         {kHipLabel, {}},
                                         {kCommentsLabel, {}},
                                         {kMeasureLabels[0], kLengthSuffix},
                                         {kMeasureLabels[1], kLengthSuffix},
                                         {kMeasureLabels[2], kLengthSuffix},
                                         {kMeasureLabels[3], kLengthSuffix},
                                         {kMeasureLabels[4], kLengthSuffix},
                                         {kMeasureLabels[5], kAngleSuffix},
                                         {kMeasureLabels[6], kAngleSuffix},
                                         {kMeasureLabels[7], kRadiusSuffix}}};

CaseFileContents Unreadable(const QString& reason) {
  CaseFileContents contents;
  contents.problem = Problem::Unreadable;
  contents.reason = reason;
  return contents;
}

// Line input: a line stops at CR; the LF behind it is swallowed, one before it stays with the line.
QList<QString> SplitAtCarriageReturns(const QString& text) {
  QList<QString> lines;
  qsizetype start = 0;
  while (start < text.size()) {
    qsizetype end = text.indexOf(u'\r', start);
    if (end < 0) end = text.size();
    lines.append(text.mid(start, end - start));
    start = end + 1;
    if (start < text.size() && text[start] == u'\n') ++start;
  }
  return lines;
}

// The wanted records of a file as this program writes it: found by counting, whatever their labels.
// A record without the LF at its end was cut off; its last digits may be gone with it.
QList<QString> RecordsByPosition(const QString& text) {
  const QList<QString> lines = SplitAtCarriageReturns(text);
  constexpr qsizetype kFirstPatient = 2;  // behind header and blank record
  constexpr qsizetype kFirstMeasure = 9;  // behind the blank record that ends the patient's
  QList<QString> records = lines.mid(kFirstPatient, kCommentsIndex + 1);
  if (lines.size() > kFirstMeasure) {
    records += lines.mid(kFirstMeasure, static_cast<qsizetype>(kMeasureCount));
  }
  const auto cut = std::find_if(records.begin(), records.end(),
                                [](const QString& record) { return !record.endsWith(u'\n'); });
  records.erase(cut, records.end());
  return records;
}

// Where a line begins with `label`, from `from` on; -1 if none does. With `last` the last such
// place.
qsizetype FindLabel(const QString& text, QStringView label, qsizetype from, bool last = false) {
  const QString mark = u'\n' + label.toString();
  const qsizetype at =
      last ? text.lastIndexOf(mark) : text.indexOf(mark, qMax<qsizetype>(0, from - 1));
  return at + 1 >= qMax<qsizetype>(1, from) ? at + 1 : -1;
}

qsizetype TrailingLineEnds(QStringView text) {
  qsizetype count = 0;
  while (count < text.size() && text[text.size() - 1 - count] == u'\n') ++count;
  return count;
}

// Blanks at the end of a line get lost on the way easily; those of the unit come back. A value that
// has lost its unit may have lost digits too: empty.
QString WithWholeSuffix(const QString& value, QStringView suffix) {
  if (value.endsWith(suffix)) return value;
  const QStringView bare = suffix.trimmed();
  const QString trimmed = value.trimmed();
  if (!trimmed.endsWith(bare)) return {};
  return trimmed.chopped(bare.size()).trimmed() + suffix.toString();
}

// How the ends of records look after the change, counted in line ends.
struct LineEnds {
  qsizetype perRecord = 1;  // behind a record
  qsizetype perLine = 1;    // what one line end has become
};

LineEnds MeasureLineEnds(const QString& text, qsizetype name, qsizetype sex) {
  LineEnds ends;
  ends.perRecord = TrailingLineEnds(QStringView(text).mid(name, sex - name));
  // Between header and name stand one line end and one blank record.
  const qsizetype gap = TrailingLineEnds(QStringView(text).left(name));
  ends.perLine = qMax<qsizetype>(1, gap - ends.perRecord);
  return ends;
}

QString CommentsBetween(const QString& text, const LineEnds& ends) {
  // The comments' own record end and the blank record stand behind them.
  const qsizetype behind = qMin(TrailingLineEnds(text), 2 * ends.perRecord);
  QString comments = text.chopped(behind);
  if (ends.perLine > 1) {
    comments.replace(QString(ends.perLine, u'\n'), QStringLiteral("\n"));
  }
  return comments;
}

// The wanted records of a file with other line ends: found by their labels, in their order. The
// comments may hold lines that look like labels; the real measures are the last ones.
QList<QString> RecordsByLabel(const QString& changed) {
  static const QRegularExpression lineEnd(QStringLiteral("\r*\n|\r"));
  QString text = changed;
  text.replace(lineEnd, QStringLiteral("\n"));

  QList<qsizetype> starts;
  qsizetype from = 1;
  for (std::size_t i = 0; i < kWanted.size(); ++i) {
    const bool last = kWanted[i].label == kMeasureLabels[0];
    const qsizetype at = FindLabel(text, kWanted[i].label, from, last);
    if (at < 0) break;
    starts.append(at);
    from = at + kLabelWidth;
  }
  const LineEnds ends =
      starts.size() > 1 ? MeasureLineEnds(text, starts[0], starts[1]) : LineEnds();

  QList<QString> records;
  for (qsizetype i = 0; i < starts.size(); ++i) {
    const qsizetype end = i + 1 < starts.size() ? starts[i + 1] : text.size();
    QString record = text.mid(starts[i], end - starts[i]);
    if (i == kCommentsIndex) {
      record = CommentsBetween(record, ends);
    } else {
      record.truncate(
          qMin(record.size(), record.indexOf(u'\n') < 0 ? record.size() : record.indexOf(u'\n')));
      const QStringView suffix = kWanted[static_cast<std::size_t>(i)].suffix;
      record = record.left(kLabelWidth) + WithWholeSuffix(record.mid(kLabelWidth), suffix);
    }
    records.append(record + u'\n');
  }
  return records;
}

// Untouched files have a blank record, LF CR LF, right behind the header's CR LF.
bool HasOwnLineEnds(const QString& text) {
  const qsizetype end = text.indexOf(u'\r');
  return end >= 0 && QStringView(text).mid(end).startsWith(u"\r\n\n\r\n");
}

// Empty, or what is wrong with the first record that is missing or too short to hold a value.
QString FindDefect(const QList<QString>& records) {
  for (std::size_t i = 0; i < kWanted.size(); ++i) {
    const Wanted& wanted = kWanted[i];
    const QString label = wanted.label.left(kLabelWidth - 2).trimmed().toString();
    const auto index = static_cast<qsizetype>(i);
    if (index >= records.size()) return QStringLiteral("The line \"%1\" is missing.").arg(label);
    const qsizetype suffix = wanted.suffix.isEmpty() ? 0 : kSuffixWidth;
    if (records[index].size() < kLabelWidth + 1 + suffix + 1) {
      return QStringLiteral("The line \"%1\" is too short to hold a value.").arg(label);
    }
  }
  return {};
}

void FillPatient(CaseFileContents& contents, const QList<QString>& records) {
  CaseEntries& entries = contents.entries;
  contents.name = FieldText(records[0]);
  if (const std::optional<NameParts> name = SplitName(contents.name)) {
    entries.surname = name->surname;
    entries.firstName = name->firstName;
    contents.hasName = true;
  }
  entries.sex = FieldText(records[1]) == u"M" ? CaseEntries::Sex::Male : CaseEntries::Sex::Female;
  entries.dateOfBirth = FieldText(records[2]);
  entries.bodyWeight = FieldNumberText(records[3]);
  entries.hip = FieldText(records[4]) == u"L" ? CaseEntries::Hip::Left : CaseEntries::Hip::Right;
  entries.comments = FieldText(records[kCommentsIndex]);
}

void FillMeasures(CaseEntries& entries, const QList<QString>& records) {
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    const QStringView suffix = kWanted[kCommentsIndex + 1 + i].suffix;
    const QStringView unit = suffix == kAngleSuffix    ? kDegree
                             : suffix == kRadiusSuffix ? kMetre
                                                       : kCentimetre;
    entries.measures[i] = {FieldNumberText(records[kCommentsIndex + 1 + static_cast<qsizetype>(i)]),
                           unit.toString()};
  }
}

QString Field(const QString& line, qsizetype behind) {
  const qsizetype length = line.size() - kLabelWidth - behind;
  const QString value = length > 0 ? line.mid(kLabelWidth, length) : QString();
  return value == kUnknown ? QString() : value;
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
  const QList<QString> records =
      HasOwnLineEnds(text) ? RecordsByPosition(text) : RecordsByLabel(text);
  if (const QString defect = FindDefect(records); !defect.isEmpty()) return Unreadable(defect);
  FillPatient(contents, records);
  FillMeasures(contents.entries, records);
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
