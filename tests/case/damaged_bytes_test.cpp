// Every byte of the labels, units and line ends of every kept file is damaged, one at a time. What
// comes of it is the same case or a refusal that names the line, never another case.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <optional>

#include "case/case_conversion.h"
#include "case/case_file.h"
#include "case/case_texts.h"
#include "case/entry_check.h"
#include "tests/case/line_ends.h"
#include "tests/support/row_name.h"

namespace {

using Vse::CaseFileContents;

// The case as a person compares it: blanks around a text do not count. Whether the date is one
// depends on the language of the file.
std::optional<CaseData> CaseOf(const CaseFileContents& contents) {
  CaseEntries entries = contents.entries;
  entries.dateOfBirth.clear();
  std::optional<CaseData> data = Vse::CheckEntries(entries, false, QLocale::c()).data;
  if (!data) return data;
  Patient& patient = data->patient;
  patient.name = patient.name.trimmed();
  patient.dateOfBirth = contents.entries.dateOfBirth.trimmed();
  patient.comments = patient.comments.trimmed();
  return data;
}

// A kept file with one kind of line ends, and the case that it holds.
struct Sample {
  QString name;
  QByteArray bytes;
  CaseData data;
};

QList<Sample> Samples(const LineEndForm& form) {
  const QDir folder(QStringLiteral(TELMARION_SOURCE_DIR "/tests/files"));
  QList<Sample> samples;
  for (const QString& name : folder.entryList(QDir::Files)) {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    const QByteArray bytes = InForm(file.readAll(), form);
    samples.append({name, bytes, CaseOf(Vse::ParseCaseFile(bytes, QLocale::c())).value()});
  }
  return samples;
}

bool ReadsToTheSameCase(const CaseFileContents& contents, const CaseData& expected) {
  const std::optional<CaseData> data = CaseOf(contents);
  return data && Vse::IsSameCase(*data, expected);
}

// Bytes that are damaged: those of a label or of a unit.
struct Place {
  QByteArray line;  // its name
  qsizetype from;
  qsizetype to;
};

// A unit begins with the blank behind the number and ends with the line.
Place UnitOf(const QByteArray& file, const Place& label) {
  qsizetype end = label.to;
  while (file[end] != '\n' && file[end] != '\r') ++end;
  return {label.line, file.indexOf(' ', label.to), end};
}

QList<Place> PlacesIn(const QByteArray& file) {
  QList<Place> places;
  for (const QByteArray line :
       {"Name", "Sex", "Date of birth", "Hip", "Comments", "Body weight", "lizm", "xizm", "zizm",
        "Cizm", "Hizm", "zasuk", "theta-CE", "radius of head"}) {
    const qsizetype at = file.indexOf(line.leftJustified(14));
    EXPECT_GT(at, 0) << line.toStdString();
    const Place label{line, at, at + 16};
    places.append(label);
    if (places.size() > 5) places.append(UnitOf(file, label));
  }
  return places;
}

// The byte at `i` deleted, doubled and changed into others.
QByteArrayList DamagesAt(const QByteArray& file, qsizetype i, const QByteArray& others) {
  QByteArrayList damages = {QByteArray(file).remove(i, 1), QByteArray(file).insert(i, file[i])};
  for (const char other : others) damages.append(QByteArray(file).replace(i, 1, &other, 1));
  damages.removeAll(file);
  return damages;
}

qsizetype CountLineEnds(const QByteArray& bytes) {
  return bytes.count('\n') + bytes.count('\r');
}

// Behind a new line end, and in UTF-8 that is none any more, another line may be found first; and
// one letter makes a second "xizm" of "zizm".
bool Names(const QString& reason, const QByteArray& line, const Sample& sample,
           const QByteArray& damaged) {
  const bool any =
      sample.name == u"utf8.txt" || CountLineEnds(damaged) != CountLineEnds(sample.bytes);
  return reason.startsWith(any ? QStringLiteral("The line \"") : "The line \"" + line + '"') ||
         reason == u"The line \"xizm\" is there twice.";
}

struct DamageRow {
  const char* name;
  int form;
  QByteArray others;
};

class DamagedByte : public testing::TestWithParam<DamageRow> {};

TEST_P(DamagedByte, OfALabelOrUnitIsToldByTheLinesNameOrChangesNothing) {
  for (const Sample& sample : Samples(LineEndForms()[GetParam().form])) {
    for (const Place& place : PlacesIn(sample.bytes)) {
      for (qsizetype i = place.from; i < place.to; ++i) {
        for (const QByteArray& damaged : DamagesAt(sample.bytes, i, GetParam().others)) {
          const CaseFileContents contents = Vse::ParseCaseFile(damaged, QLocale::c());
          ASSERT_TRUE(contents.problem == CaseFileContents::Problem::None
                          ? ReadsToTheSameCase(contents, sample.data)
                          : Names(contents.reason, place.line, sample, damaged))
              << contents.reason.toStdString() << '\n'
              << damaged.toStdString();
        }
      }
    }
  }
}

// A line end within the comments is text, which nobody can know to be damaged.
TEST_P(DamagedByte, OfALineEndIsToldOrChangesNothingButLinesOfComments) {
  for (Sample& sample : Samples(LineEndForms()[GetParam().form])) {
    sample.data.patient.comments.remove('\n');
    for (qsizetype i = 0; i < sample.bytes.size(); ++i) {
      if (sample.bytes[i] != '\n' && sample.bytes[i] != '\r') continue;
      for (const QByteArray& damaged : DamagesAt(sample.bytes, i, {})) {
        CaseFileContents contents = Vse::ParseCaseFile(damaged, QLocale::c());
        contents.entries.comments.remove('\n');
        ASSERT_TRUE(contents.problem == CaseFileContents::Problem::None
                        ? ReadsToTheSameCase(contents, sample.data)
                        : contents.reason.startsWith("The line \""))
            << contents.reason.toStdString() << '\n'
            << damaged.toStdString();
      }
    }
  }
}

// Blanks of several kinds, digits, letters of labels and units, bytes beyond ASCII.
const QByteArray kManyBytes("\0 \t\n\r05,.:=xmMckg?\x80\xA0\xB0\xC2\xFF", 23);
const QByteArray kFewBytes(" 0m\n");

INSTANTIATE_TEST_SUITE_P(Table, DamagedByte,
                         testing::Values(DamageRow{"OwnLineEnds", 0, kManyBytes},
                                         DamageRow{"CrLfAlone", 1, kFewBytes},
                                         DamageRow{"LfAlone", 2, kFewBytes},
                                         DamageRow{"CrDropped", 3, kFewBytes}),
                         RowName());

}  // namespace
