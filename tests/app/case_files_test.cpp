// Every saved file that is kept: opening, confirming and saving it gives the same bytes but for the
// date. The files were not written by this program's own writer.
#include <gtest/gtest.h>

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

}  // namespace
