// File names from patients' names.
#include "app/file_name.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "tests/support/row_name.h"

namespace {

struct Name {
  const char* name;
  QString patient;
  QString file;
};

class SafeFileNames : public testing::TestWithParam<Name> {};

TEST_P(SafeFileNames, CanBeWritten) {
  EXPECT_EQ(SafeFileName(GetParam().patient).toStdString(), GetParam().file.toStdString());
  const QTemporaryDir folder;
  QFile file(folder.filePath(SafeFileName(GetParam().patient) + ".txt"));
  EXPECT_TRUE(file.open(QIODevice::WriteOnly));
}

INSTANTIATE_TEST_SUITE_P(
    Table, SafeFileNames,
    testing::Values(
        Name{"Plain", "Surname Given", "Surname Given"}, Name{"SurnameAlone", "Berg ", "Berg"},
        Name{"Unknown", "Unknown", "Unknown"}, Name{"Letters", u"Kovač Žiga"_qs, u"Kovač Žiga"_qs},
        Name{"Separators", "../../etc/passwd \\ x", "_.._etc_passwd _ x"},
        Name{"Reserved", "a:b*c?d\"e<f>g|h", "a_b_c_d_e_f_g_h"}, Name{"OnlyDots", "..", "Unknown"},
        Name{"Empty", "", "Unknown"}, Name{"Hidden", ".profile", "profile"},
        Name{"Device", "con", "con_"},
        Name{"Controls", QString("a\nb\tc") + QChar(0) + "d", "a b c_d"},
        Name{"DirectionMarks", QString("abc") + QChar(0x202E) + "txt.exe", "abc_txt.exe"},
        Name{"RightToLeft", u"שלום"_qs, u"שלום"_qs}, Name{"Emoji", u"😀 X"_qs, u"😀 X"_qs}),
    RowName());

TEST(SafeFileNames, AreNotTooLongAndCutNoCharacterInHalf) {
  for (const QString& letter : {QStringLiteral("x"), QString(u"č"_qs), QString(u"😀"_qs)}) {
    const QString name = SafeFileName(letter.repeated(10000));
    EXPECT_LE(name.toUtf8().size(), 200);
    EXPECT_GE(name.toUtf8().size(), 150);
    EXPECT_EQ(QString::fromUtf8(name.toUtf8()), name);
    EXPECT_FALSE(name.back().isHighSurrogate());
  }
}

}  // namespace
