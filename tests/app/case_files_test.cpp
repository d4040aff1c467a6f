// Every saved file that is kept: opening, confirming and saving it gives the same bytes but for the
// date. The files were not written by this program's own writer.
#include <gtest/gtest.h>

#include <array>

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

// A copy of a kept file, changed as an editor or a hand would.
QString Edited(RunningProgram& program, const QByteArray& from, const QByteArray& to) {
  const QString kept = QStringLiteral(TELMARION_SOURCE_DIR "/tests/files/western_1252_point.txt");
  const QByteArray bytes = program.Bytes(kept);
  EXPECT_TRUE(bytes.contains(from)) << from.toStdString();
  const QString path = program.Path("edited.txt");
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray(bytes).replace(from, to));
  return path;
}

TEST(EditedFile, WithADamagedLineIsRefusedByItsNameAndTheFormUnchanged) {
  const QList<std::array<QString, 3>> edits = {
      {"theta-CE      = 30", "theta-CE     = 30",
       "The line \"theta-CE\" is missing, or its label was changed."},
      {"0.025 m ", "2.5 cm", "The line \"radius of head\" does not end with its unit, \"m\"."},
      {"70 kg", "154 lb", "The line \"Body weight\" does not end with its unit, \"kg\"."}};
  RunningProgram program{QLocale("en_US")};
  program.window.New();
  program.Type("Text8", "Berg");
  const CaseEntries before = program.Form().Entries();
  for (const auto& [from, to, reason] : edits) {
    program.files.Answers(Edited(program, from.toLatin1(), to.toLatin1()));
    program.window.Open();
    EXPECT_EQ(program.messages.Take(), QList<Message>{ErrorSaid("edited.txt: " + reason)});
    EXPECT_TRUE(program.Form().Entries() == before);
    EXPECT_FALSE(program.window.Session().openOK());
  }
}

TEST(EditedFile, WithStrippedBlanksGivesTheSameResults) {
  RunningProgram program{QLocale("en_US")};
  program.files.Answers(Edited(program, " m \n", " m\n"));
  program.window.Open();
  EXPECT_EQ(program.Entry("Text13"), "0.025");
  program.PressOk();
  EXPECT_EQ(program.window.Session().Record().data.inputs.headRadius, 0.025);
}

TEST(EditedFile, WithoutANameTakesNoNameOfTheCaseBefore) {
  RunningProgram program{QLocale("en_US")};
  program.window.New();
  program.Type("Text8", "Berg");
  program.Type("Text7", "Jan");
  program.files.Answers(Edited(program, "Name          : M\xFCller Jos\xE9", "Name          : "));
  program.window.Open();
  EXPECT_EQ(program.Form().Entries().surname + program.Form().Entries().firstName, "");
}

}  // namespace
