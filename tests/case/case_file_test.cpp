// The case file, byte for byte, as it is composed and parsed.
#include "case/case_file.h"
#include "case/case_texts.h"

#include <gtest/gtest.h>

#include <optional>

#include "case/case_conversion.h"
#include "case/case_file_labels.h"
#include "case/case_places.h"
#include "tests/case/case_file_sample.h"
#include "tests/case/line_ends.h"
#include "tests/support/row_name.h"

void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}

namespace {

using Vse::CaseFileContents;

CaseFileContents Parse(const QByteArray& bytes, const QLocale& locale = QLocale::c()) {
  return Vse::ParseCaseFile(bytes, locale);
}

TEST(CaseFileWriter, WritesTheseBytes) {
  EXPECT_EQ(Compose(DefaultCase()), kDefaultFile);
}

TEST(CaseFileWriter, LeavesOutThePeakStressOfAnUnknownWeight) {
  CaseRecord record = DefaultCase();
  record.data.inputs.bodyWeight.reset();
  record.data.patient.bodyWeight = "Unknown";
  const QByteArray file = Compose(record);
  EXPECT_TRUE(file.contains("Body weight   : Unknown kg\n\r\n"));
  EXPECT_TRUE(file.endsWith("Pmax/Wb       = 3006.761 m^-2\n\r\n"));
}

TEST(CaseFileWriter, RoundsResultsTowardsMinusInfinity) {
  CaseRecord record = DefaultCase();
  record.model.results.rWb = 2.8719;
  record.model.results.thetaR = {-3.4561};
  EXPECT_TRUE(Compose(record).contains("R/Wb          = 2.871\n\r\n"));
  EXPECT_TRUE(Compose(record).contains("Theta-R       = -3.457 \xB0 \n\r\n"));
}

TEST(CaseFileWriter, WritesTheLocalesSeparator) {
  const QByteArray file = Compose(DefaultCase(), QLocale("de_DE"));
  EXPECT_TRUE(file.contains("lizm          = 10,4 cm\n\r\n"));
  EXPECT_TRUE(file.contains("Pmax = 2066847,58429341 Pa\n\r\n"));
}

TEST(CaseFileWriter, LabelsAreSixteenWideButForThePeakStress) {
  QList<QStringView> labels = {Vse::kNameLabel,   Vse::kSexLabel, Vse::kBirthLabel,
                               Vse::kWeightLabel, Vse::kHipLabel, Vse::kCommentsLabel};
  for (const auto& places : Vse::kMeasurementPlaces) labels << places.fileLabel;
  for (const Sila::Result id : {Sila::Result::RWb, Sila::Result::ThetaR, Sila::Result::PmaxWb}) {
    labels << Vse::kResultPlaces[Sila::IndexOf(id)].fileLabel;
  }
  for (const QStringView label : labels) EXPECT_EQ(label.size(), 16);
  EXPECT_EQ(Vse::kResultPlaces[Sila::IndexOf(Sila::Result::Pmax)].fileLabel.size(), 7);
}

TEST(CaseFileReader, GivesTheEntries) {
  const CaseFileContents contents = Parse(kDefaultFile);
  EXPECT_EQ(contents.problem, CaseFileContents::Problem::None) << contents.reason.toStdString();
  EXPECT_TRUE(contents.hasName);
  EXPECT_TRUE(contents.entries == DefaultEntries());
}

TEST(CaseFileReader, DoesNotNeedTheResults) {
  const CaseFileContents contents = Parse(kDefaultFile.left(kDefaultFile.indexOf("R/Wb")));
  EXPECT_EQ(contents.problem, CaseFileContents::Problem::None);
  EXPECT_TRUE(contents.entries == DefaultEntries());
}

TEST(CaseFileReader, UnknownReadsAsEmptySecondOptionAndRight) {
  CaseRecord record = DefaultCase();
  record.data.inputs.bodyWeight.reset();
  record.data.patient =
      Vse::PatientFrom({"Unknown", "Unknown", "Unknown", "Unknown", "Unknown", "No"});
  const CaseFileContents contents = Parse(Compose(record));
  EXPECT_FALSE(contents.hasName);
  EXPECT_EQ(contents.entries.sex, Sex::Female);
  EXPECT_EQ(contents.entries.hip, HipSide::Right);
  EXPECT_EQ(contents.entries.dateOfBirth, "");
  EXPECT_EQ(contents.entries.bodyWeight, "");
  EXPECT_EQ(contents.entries.comments, "No");
}

struct Name {
  const char* name;
  const char* held;
  bool hasName;
  const char* surname;
  const char* firstName;
};

class CaseFileNames : public testing::TestWithParam<Name> {};

TEST_P(CaseFileNames, TheLastBlankDecides) {
  CaseRecord record = DefaultCase();
  record.data.patient.name = GetParam().held;
  const CaseFileContents contents = Parse(Compose(record));
  EXPECT_EQ(contents.hasName, GetParam().hasName);
  EXPECT_EQ(contents.entries.surname, GetParam().surname);
  EXPECT_EQ(contents.entries.firstName, GetParam().firstName);
}

INSTANTIATE_TEST_SUITE_P(Table, CaseFileNames,
                         testing::Values(Name{"Two", "Surname Given", true, "Surname ", "Given"},
                                         Name{"Three", "van Berg Jan", true, "van Berg ", "Jan"},
                                         Name{"SurnameAlone", "Berg ", true, "Berg ", ""},
                                         Name{"FirstAlone", " Jan", true, " ", "Jan"},
                                         Name{"NoBlank", "Berg", false, "", ""}),
                         RowName());

TEST(CaseFileNames, DoNotGrowBlanksOnRoundTrips) {
  for (const char* held : {"Surname Given", "Berg ", " Jan", "van Berg Jan"}) {
    const std::optional<Vse::NameParts> parts = Vse::SplitName(held);
    ASSERT_TRUE(parts);
    EXPECT_EQ(Vse::ComposeName(parts->surname, parts->firstName), held);
  }
}

TEST(FieldText, TakesWhatIsBehindTheLabel) {
  EXPECT_EQ(Vse::FieldText("Name          : Surname Given\n"), "Surname Given");
  EXPECT_EQ(Vse::FieldText("Name          : Unknown\n"), "");
  EXPECT_EQ(Vse::FieldText("Name"), "");
  EXPECT_EQ(Vse::FieldNumberText("lizm          = 10.4 cm\n"), "10.4");
  EXPECT_EQ(Vse::FieldNumberText("theta-CE      = 30 °  \n"), "30 ");
  EXPECT_EQ(Vse::FieldNumberText("Body weight   : Unknown kg\n"), "");
  EXPECT_EQ(Vse::FieldNumberText("lizm          =\n"), "");
}

TEST(CaseFileReader, RefusesAnotherFirstLine) {
  for (const QByteArray& bytes : {QByteArray(), QByteArray("TELMARIO"), QByteArray("telmarion x"),
                                  " " + kDefaultFile, QByteArray("\0\0\0", 3)}) {
    EXPECT_EQ(Parse(bytes).problem, CaseFileContents::Problem::NotCorrectFile);
  }
}

TEST(CaseFileReader, NamesTheFirstLineThatATruncatedFileLacks) {
  const QList<QByteArray> labels = {"Name",     "Sex",   "Date of birth", "Body weight",   "Hip",
                                    "Comments", "lizm",  "xizm",          "zizm",          "Cizm",
                                    "Hizm",     "zasuk", "theta-CE",      "radius of head"};
  for (const QByteArray& label : labels) {
    const CaseFileContents contents =
        Parse(kDefaultFile.left(kDefaultFile.indexOf("\n" + label) + 1));
    EXPECT_EQ(contents.problem, CaseFileContents::Problem::Unreadable);
    EXPECT_EQ(contents.reason, "The line \"" + label + "\" is missing.");
  }
}

// A cut is never half an answer, such as a radius without its last digit.
TEST(CaseFileReader, MakesNothingUpFromAnyTruncation) {
  for (const LineEndForm& form : LineEndForms()) {
    const QByteArray file = InForm(kDefaultFile, form);
    const qsizetype whole = file.indexOf("radius of head= 0.025 m") + 23;
    for (qsizetype size = 0; size < file.size(); ++size) {
      const CaseFileContents contents = Parse(file.left(size));
      EXPECT_EQ(contents.problem == CaseFileContents::Problem::None, size >= whole)
          << form.name << ' ' << size;
    }
  }
}

TEST(CaseFileReader, NamesALineThatIsTooShort) {
  QByteArray bytes = kDefaultFile;
  bytes.replace("Cizm          = 4.4 cm\n", "Cizm          = cm\n");
  const CaseFileContents contents = Parse(bytes);
  EXPECT_EQ(contents.problem, CaseFileContents::Problem::Unreadable);
  EXPECT_EQ(contents.reason, "The line \"Cizm\" is too short to hold a value.");
}

class ChangedLineEnds : public testing::TestWithParam<LineEndForm> {};

TEST_P(ChangedLineEnds, ReadToTheSameEntries) {
  CaseRecord record = DefaultCase();
  for (const QString& comments :
       {QStringLiteral("No"), QStringLiteral("one\ntwo\n\nfour"), QStringLiteral("ends\n\n"),
        QStringLiteral("Sex           : M\nlizm          = 99 cm\nxizm          = 1 cm")}) {
    record.data.patient.comments = comments;
    const CaseFileContents contents = Parse(InForm(Compose(record), GetParam()));
    ASSERT_EQ(contents.problem, CaseFileContents::Problem::None) << contents.reason.toStdString();
    CaseEntries expected = DefaultEntries();
    expected.comments = comments;
    EXPECT_EQ(contents.entries.comments, comments);
    EXPECT_TRUE(contents.entries == expected);
  }
}

INSTANTIATE_TEST_SUITE_P(Table, ChangedLineEnds, testing::ValuesIn(LineEndForms()), RowName());

struct Page {
  const char* name;
  const char* locale;
  QString surname;
  QByteArray bytes;
};

class CodePages : public testing::TestWithParam<Page> {};

TEST_P(CodePages, WriteAndReadTheLanguagesLetters) {
  CaseRecord record = DefaultCase();
  record.data.patient.name = GetParam().surname + " X";
  const QLocale locale(GetParam().locale);
  const QByteArray file = Compose(record, locale);
  EXPECT_TRUE(file.contains("Name          : " + GetParam().bytes + " X\n")) << file.toStdString();
  EXPECT_TRUE(file.contains(" \xB0  \n"));
  EXPECT_EQ(Parse(file, locale).entries.surname, GetParam().surname + " ");
}

INSTANTIATE_TEST_SUITE_P(Table, CodePages,
                         testing::Values(Page{"C", "C", u"Müller"_qs, "M\xFCller"},
                                         Page{"German", "de_DE", u"Müller"_qs, "M\xFCller"},
                                         Page{"Slovenian", "sl_SI", u"Kovač"_qs, "Kova\xE8"},
                                         Page{"Polish", "pl_PL", u"Łoś"_qs, "\xA3o\x9C"},
                                         Page{"Russian", "ru_RU", u"Иванов"_qs,
                                              "\xC8\xE2\xE0\xED\xEE\xE2"},
                                         Page{"Serbian", "sr_Cyrl_RS", u"Ђ"_qs, "\x80"},
                                         Page{"SerbianLatin", "sr_Latn_RS", u"Đ"_qs, "\xD0"},
                                         Page{"Greek", "el_GR", u"Άννα"_qs, "\xA2\xED\xED\xE1"},
                                         Page{"Turkish", "tr_TR", u"Şahin"_qs,
                                              "\xDE"
                                              "ahin"},
                                         Page{"Azerbaijani", "az_Latn_AZ", u"Şirin"_qs, "\xDEirin"},
                                         Page{"Uzbek", "uz_Cyrl_UZ", u"Ли"_qs, "\xCB\xE8"},
                                         Page{"Latvian", "lv_LV", u"Ķ"_qs, "\xCD"}),
                         RowName());

TEST(CodePages, FallBackToUtf8WithoutAMarkWhenALetterHasNoPlace) {
  CaseRecord record = DefaultCase();
  for (const QString& surname : {u"Иванов"_qs, u"Kovač"_qs, u"😀"_qs, u"שלום"_qs, u"～"_qs}) {
    record.data.patient.name = surname + " X";
    const QByteArray file = Compose(record, QLocale("de_DE"));
    EXPECT_TRUE(file.startsWith("TELMARION"));
    EXPECT_TRUE(file.contains(surname.toUtf8()));
    EXPECT_TRUE(file.contains(u" °  "_qs.toUtf8()));
    for (const char* reader : {"de_DE", "ru_RU", "C"}) {
      EXPECT_EQ(Parse(file, QLocale(reader)).entries.surname, surname + " ");
      EXPECT_EQ(Parse(file, QLocale(reader)).entries[Sila::Measurement::ThetaCE].text, "30 ");
    }
  }
}

TEST(CodePages, AMarkThatAnEditorAddedIsDropped) {
  EXPECT_TRUE(Parse("\xEF\xBB\xBF" + QString::fromLatin1(kDefaultFile).toUtf8()).entries ==
              DefaultEntries());
}

}  // namespace
