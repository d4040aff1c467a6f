// Every saved file that is kept: opening, confirming and saving it gives the same bytes but for the
// date. The files were not written by this program's own writer.
#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "case/case_conversion.h"
#include "case/case_file.h"
#include "tests/support/row_name.h"
#include "tests/support/running_program.h"

namespace {

struct Kept {
  const char* name;
  const char* file;
  const char* locale;
};

class KeptFiles : public testing::TestWithParam<Kept> {};

QByteArray WithoutDate(const QByteArray& file) {
  return file.mid(file.indexOf("\r\n"));
}

TEST_P(KeptFiles, OpenAndSaveToTheSameBytes) {
  RunningProgram program{QLocale(GetParam().locale)};
  const QString kept = QStringLiteral(TELMARION_SOURCE_DIR "/tests/files/") + GetParam().file;
  program.files.Answers(kept);
  program.window.Open();
  ASSERT_TRUE(program.FormIsOpen());
  program.PressOk();
  ASSERT_FALSE(program.FormIsOpen());
  EXPECT_FALSE(program.window.Session().NeedsSaving());
  const QString saved = program.Path("saved.txt");
  program.files.Answers(saved);
  program.window.Save();
  EXPECT_EQ(WithoutDate(program.Bytes(saved)), WithoutDate(program.Bytes(kept)));
}

INSTANTIATE_TEST_SUITE_P(
    Table, KeptFiles,
    testing::Values(Kept{"WesternPoint", "western_1252_point.txt", "en_US"},
                    Kept{"WesternComma", "western_1252_comma.txt", "de_DE"},
                    Kept{"CentralEuropean", "central_european_1250.txt", "sl_SI"},
                    Kept{"Cyrillic", "cyrillic_1251.txt", "ru_RU"},
                    Kept{"Greek", "greek_1253.txt", "el_GR"},
                    Kept{"Turkish", "turkish_1254.txt", "tr_TR"},
                    Kept{"Baltic", "baltic_1257.txt", "lv_LV"}, Kept{"Utf8", "utf8.txt", "de_DE"},
                    Kept{"WeightUnknown", "weight_unknown.txt", "C"},
                    Kept{"CommentsOfThreeLines", "comments_of_three_lines.txt", "C"},
                    Kept{"RightHipMale", "right_hip_male_birth_unknown.txt", "C"}),
    RowName());

// Text of any kind that can stand in a box: letters of many scripts, signs, pairs of surrogates.
QString RandomText(QRandomGenerator& random, bool lines) {
  static const QList<QString> kPieces = {"a", "Z",  " ", "7",  "ü", "č", "Ж", "Ω", "ş", "ķ",
                                         "א", "字", "😀", "\"", ",", ";", "<", "&", "°", "'"};
  QString text;
  const int length = random.bounded(12);
  for (int i = 0; i < length; ++i) {
    text += lines && random.bounded(6) == 0 ? QStringLiteral("\n")
                                            : kPieces[random.bounded(kPieces.size())];
  }
  return text;
}

CaseEntries RandomEntries(QRandomGenerator& random) {
  CaseEntries entries;
  entries.surname = RandomText(random, false);
  entries.firstName = RandomText(random, false);
  entries.sex = static_cast<CaseEntries::Sex>(random.bounded(3));
  entries.hip = static_cast<CaseEntries::Hip>(random.bounded(3));
  entries.bodyWeight =
      random.bounded(4) == 0 ? QString() : QString::number(random.bounded(200) + 1);
  entries.comments = RandomText(random, true);
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    const bool angle = Vse::IsAngle(static_cast<Measure>(i));
    entries.measures[i] = {QString::number(random.generateDouble() * 20.0, 'g', 15),
                           angle ? Vse::kDegree.toString() : Vse::kCentimetre.toString()};
  }
  return entries;
}

// Whatever the form can confirm comes back from its file: the texts as they were, the measures to
// the fifteen digits that the file holds.
TEST(CaseFileProperty, AnyConfirmedCaseSurvivesWritingAndReading) {
  QRandomGenerator random(20261115);
  for (int round = 0; round < 2000; ++round) {
    const QLocale locale(QStringList{"C", "de_DE", "sl_SI", "ru_RU", "el_GR"}[round % 5]);
    const std::optional<CaseData> data = Vse::DataOf(RandomEntries(random), false);
    ASSERT_TRUE(data);
    CaseRecord record;
    static_cast<CaseData&>(record) = *data;
    Vse::RunModel(record);
    const Vse::CaseFileContents read =
        Vse::ParseCaseFile(Vse::ComposeCaseFile(record, "15.11.2026", locale), locale);
    ASSERT_EQ(read.problem, Vse::CaseFileContents::Problem::None) << read.reason.toStdString();
    const std::optional<CaseData> back = Vse::DataOf(read.entries, false);
    ASSERT_TRUE(back);
    const PatientTexts& patient = record.patient;
    EXPECT_EQ(read.hasName, patient.name.contains(u' ')) << round;
    // A name is split at its last blank; of several blanks before that one, one remains.
    EXPECT_TRUE(!read.hasName || back->patient.name.simplified() == patient.name.simplified())
        << round;
    EXPECT_EQ(back->patient.bodyWeight, patient.bodyWeight) << round;
    EXPECT_EQ(back->patient.comments, patient.comments) << round;
    EXPECT_EQ(back->patient.sex, patient.sex == u"M" ? "M" : "F") << round;
    EXPECT_EQ(back->patient.hip, patient.hip == u"L" ? "L" : "D") << round;
    for (std::size_t i = 0; i < kMeasureCount; ++i) {
      const auto measure = static_cast<Measure>(i);
      const double held = Vse::ValueOf(record.geometry, measure);
      EXPECT_NEAR(Vse::ValueOf(back->geometry, measure), held, 1e-14 * (1.0 + held)) << round;
    }
  }
}

}  // namespace
