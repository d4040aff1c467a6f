// Case files that an editor, a mail program or a hand has changed: read to what they say, or
// refused by the name of the line.
#include <gtest/gtest.h>

#include "case/case_conversion.h"
#include "tests/case/case_file_sample.h"
#include "tests/case/line_ends.h"
#include "tests/support/row_name.h"

namespace {

using Vse::CaseFileContents;
using Problem = CaseFileContents::Problem;

CaseFileContents Parse(const QByteArray& bytes) {
  return Vse::ParseCaseFile(bytes, QLocale::c());
}

QByteArray Replaced(const QByteArray& from, const QByteArray& to) {
  EXPECT_TRUE(kDefaultFile.contains(from)) << from.toStdString();
  return QByteArray(kDefaultFile).replace(from, to);
}

struct Edit {
  const char* name;
  QByteArray from;
  QByteArray to;
  QString reason;
};

// In files with their own line ends and with every other kind.
class RefusedEdit : public testing::TestWithParam<Edit> {};

TEST_P(RefusedEdit, NamesTheLine) {
  const QByteArray edited = Replaced(GetParam().from, GetParam().to);
  for (const LineEndForm& form : LineEndForms()) {
    const CaseFileContents contents = Parse(InForm(edited, form));
    EXPECT_EQ(contents.problem, Problem::Unreadable) << form.name;
    EXPECT_EQ(contents.reason.toStdString(), GetParam().reason.toStdString()) << form.name;
  }
}

const QByteArray kLizm = "lizm          = 10.4 cm\n\r\n";
const QByteArray kRadius = "radius of head= 0.025 m \n\r\n";

INSTANTIATE_TEST_SUITE_P(
    Table, RefusedEdit,
    testing::Values(
        Edit{"ThetaCeLabelLostABlank", "theta-CE      = 30", "theta-CE     = 30",
             "The line \"theta-CE\" is missing, or its label was changed."},
        Edit{"RadiusInCentimetres", "0.025 m ", "2.5 cm",
             "The line \"radius of head\" does not end with its unit, \"m\"."},
        Edit{"RadiusInMillimetres", "0.025 m ", "25 mm",
             "The line \"radius of head\" does not end with its unit, \"m\"."},
        Edit{"WeightInPounds", "70 kg", "154 lb",
             "The line \"Body weight\" does not end with its unit, \"kg\"."},
        Edit{"LengthInMillimetres", "4.4 cm", "44 mm",
             "The line \"Cizm\" does not end with its unit, \"cm\"."},
        Edit{"AngleInRadians", "30 \xB0  ", "0.52 rad",
             "The line \"theta-CE\" does not end with its unit, \"°\"."},
        Edit{"UnitLost", "10.4 cm", "10.4",
             "The line \"lizm\" does not end with its unit, \"cm\"."},
        Edit{"UnitTwice", "10.4 cm", "10.4 cm cm",
             "The line \"lizm\" does not end with its unit, \"cm\"."},
        Edit{"DigitBeforeTheUnit", "10.4 cm", "10.45cm",
             "The line \"lizm\" does not end with its unit, \"cm\"."},
        Edit{"ValueLost", "Cizm          = 4.4 cm", "Cizm          =  cm",
             "The line \"Cizm\" is too short to hold a value."},
        Edit{"ValueAndUnitLost", "Cizm          = 4.4 cm",
             "Cizm          =", "The line \"Cizm\" is too short to hold a value."},
        Edit{"WeightAndUnitLost", "Body weight   : 70 kg",
             "Body weight   : ", "The line \"Body weight\" does not end with its unit, \"kg\"."},
        Edit{"MeasureDoubled", kLizm, kLizm + kLizm, "The line \"lizm\" is there twice."},
        Edit{"LastMeasureDoubled", kRadius, kRadius + kRadius,
             "The line \"radius of head\" is there twice."},
        Edit{"PatientLineDoubled", "Hip           : L\n\r\n",
             "Hip           : L\n\r\nHip           : L\n\r\n", "The line \"Hip\" is there twice."},
        Edit{"MeasureRemoved", kLizm, "",
             "The line \"lizm\" is missing, or its label was changed."},
        Edit{"LinesExchanged", "Sex           : F\n\r\nDate of birth : 15.11.1956",
             "Date of birth : 15.11.1956\n\r\nSex           : F",
             "The line \"Sex\" is missing, or its label was changed."},
        Edit{"LongNameWrapped", "Surname Given", "Surname\n\r\nGiven",
             "The line \"Sex\" is missing, or its label was changed."},
        Edit{"NoBreakSpacesForBlanks", "xizm          = 0.5", "xizm\xA0\xA0\xA0= 0.5",
             "The line \"xizm\" is missing, or its label was changed."},
        Edit{"TabForBlanks", "Sex           : F", "Sex\t: F",
             "The line \"Sex\" is missing, or its label was changed."},
        Edit{"QuotedByAMailProgram", "\n\r\nSex ", "\n\r\n> Sex ",
             "The line \"Sex\" is missing, or its label was changed."},
        Edit{"DegreeAsAQuestionMark", "zasuk         = 0 \xB0", "zasuk         = 0 ?",
             "The line \"zasuk\" does not end with its unit, \"°\"."},
        Edit{"DegreeEncodedTwice", "zasuk         = 0 \xB0", "zasuk         = 0 \xC2\xB0",
             "The line \"zasuk\" does not end with its unit, \"°\"."},
        Edit{"EveryDegreeLost", "\xB0", "",
             "The line \"zasuk\" does not end with its unit, \"°\"."}),
    RowName());

// An editor that strips the blanks at the ends of lines makes 0.02 of a radius of 0.025 m, and 3 of
// an angle of 30 degrees, for a reader that counts characters from the end.
TEST(EditedCaseFile, StrippedBlanksAreMendedWithEveryKindOfLineEnds) {
  for (const LineEndForm& form : LineEndForms()) {
    QByteArray bytes = kDefaultFile;
    for (int round = 0; round < 2; ++round) bytes.replace(" \n", "\n");
    ASSERT_TRUE(bytes.contains("30 \xB0\n") && bytes.contains("0.025 m\n"));
    EXPECT_TRUE(Parse(InForm(bytes, form)).entries == DefaultEntries()) << form.name;
  }
}

TEST(EditedCaseFile, BlanksAndEmptyLinesTooManyDoNotCount) {
  const QByteArray edits[] = {Replaced("0.025 m ", "0.025 m   "),
                              Replaced("30 \xB0  ", "30 \xB0 "),
                              Replaced("\n\r\nSex", "\n\r\n\n\r\nSex"),
                              Replaced("\n\r\nxizm", "\n\r\n  \n\r\nxizm"),
                              kDefaultFile + "\n\n",
                              kDefaultFile.chopped(3)};
  for (const QByteArray& edited : edits) {
    for (const LineEndForm& form : LineEndForms()) {
      EXPECT_TRUE(Parse(InForm(edited, form)).entries == DefaultEntries()) << form.name << '\n'
                                                                           << edited.toStdString();
    }
  }
}

// With other line ends it could as well be a line of the comments.
TEST(EditedCaseFile, ADoubledCommentsLineIsToldWithOwnLineEnds) {
  const QByteArray comments = "Comments      : No\n\r\n";
  EXPECT_EQ(Parse(Replaced(comments, comments + comments)).reason,
            u"The line \"Comments\" is there twice.");
}

TEST(EditedCaseFile, LinesTypedIntoTheCommentsAreRead) {
  for (const char* lineEnd : {"\n", "\r\n"}) {
    const QByteArray typed = Replaced("No\n\r\n", QByteArray("one") + lineEnd + "two\n\r\n");
    EXPECT_EQ(Parse(typed).entries.comments, u"one\ntwo");
  }
}

// With or without the blank of the label, and with every kind of line ends.
struct EmptyRow {
  const char* name;
  QByteArray from;
  QByteArray to;
  void (*expect)(CaseEntries& entries);
};

class EmptyValue : public testing::TestWithParam<EmptyRow> {};

TEST_P(EmptyValue, IsAnEmptyEntryOrTheSecondOption) {
  CaseEntries expected = DefaultEntries();
  GetParam().expect(expected);
  for (const QByteArray& to : {GetParam().to, GetParam().to.trimmed()}) {
    for (const LineEndForm& form : LineEndForms()) {
      const CaseFileContents contents = Parse(InForm(Replaced(GetParam().from, to), form));
      EXPECT_EQ(contents.reason, "");
      EXPECT_TRUE(contents.entries == expected) << form.name;
      EXPECT_TRUE(contents.hasName);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, EmptyValue,
    testing::Values(
        EmptyRow{"Name", "Name          : Surname Given", "Name          : ",
                 [](CaseEntries& entries) {
                   entries.surname = "";
                   entries.firstName = "";
                 }},
        EmptyRow{"Sex", "Sex           : F",
                 "Sex           : ", [](CaseEntries& entries) { entries.sex = Sex::Female; }},
        EmptyRow{"Date", "Date of birth : 15.11.1956",
                 "Date of birth : ", [](CaseEntries& entries) { entries.dateOfBirth = ""; }},
        EmptyRow{"Weight", "Body weight   : 70 kg", "Body weight   :  kg",
                 [](CaseEntries& entries) { entries.bodyWeight = ""; }},
        EmptyRow{"Hip", "Hip           : L",
                 "Hip           : ", [](CaseEntries& entries) { entries.hip = HipSide::Right; }},
        EmptyRow{"Comments", "Comments      : No",
                 "Comments      : ", [](CaseEntries& entries) { entries.comments = ""; }}),
    RowName());

TEST(EditedCaseFile, AllThatMayBeEmptyIsEmptyAtOnce) {
  QByteArray bytes = kDefaultFile;
  for (const char* value : {"Surname Given", "15.11.1956", "70", "No"}) {
    bytes.replace(QByteArray(": ") + value, ": ");
  }
  bytes.replace("Sex           : F", "Sex           : ")
      .replace("Hip           : L", "Hip           : ");
  for (const LineEndForm& form : LineEndForms()) {
    const CaseFileContents contents = Parse(InForm(bytes, form));
    EXPECT_EQ(contents.reason, "");
    EXPECT_EQ(contents.entries.dateOfBirth + contents.entries.bodyWeight, "");
    EXPECT_EQ(contents.entries[Sila::Measurement::HeadRadius].text, "0.025");
  }
}

// The lengths, angles and radius of another hip, as somebody might note them.
const QByteArray kOtherMeasures =
    "lizm          = 9 cm\nxizm          = 1 cm\nzizm          = 5 cm\nCizm          = 4 cm\n"
    "Hizm          = 15 cm\nzasuk         = 1 \xB0  \ntheta-CE      = 20 \xB0  \n"
    "radius of head= 0.02 m \n";

QByteArray WithComments(const QByteArray& comments) {
  return Replaced("Comments      : No", "Comments      : " + comments);
}

TEST(CommentsThatLookLikeRecords, AreReadAsCommentsWithEveryKindOfLineEnds) {
  QByteArray whole = kDefaultFile;
  whole = whole.replace("\n\r\n", "\n").replace("\r\n", "\n").replace("30", "20").trimmed();
  const QByteArray before = "before:\n\n" + kOtherMeasures + "\nafter";
  for (const QByteArray& comments : {before, "see\n" + whole, whole + "\n\n" + whole}) {
    for (const LineEndForm& form : LineEndForms()) {
      const CaseFileContents contents = Parse(InForm(WithComments(comments), form));
      CaseEntries expected = DefaultEntries();
      expected.comments = QString::fromLatin1(comments);
      EXPECT_EQ(contents.reason, "") << form.name;
      EXPECT_TRUE(contents.entries == expected) << form.name << '\n' << comments.toStdString();
    }
  }
}

TEST(CommentsThatLookLikeRecords, NeverStandInForADamagedMeasure) {
  const QByteArray file = WithComments("before\n\n\n\n" + kOtherMeasures.trimmed());
  for (const char* damaged :
       {"lizm          = 10.4", "Hizm          = 16", "radius of head= 0.025"}) {
    for (const QByteArray& to : {QByteArray("x"), QByteArray()}) {
      for (const LineEndForm& form : LineEndForms()) {
        const CaseFileContents contents =
            Parse(InForm(QByteArray(file).replace(damaged, to), form));
        EXPECT_EQ(contents.problem, Problem::Unreadable) << form.name << ' ' << damaged;
      }
    }
  }
}

// The name of one patient would stand above the hip of the other.
TEST(EditedCaseFile, TwoCasesInOneFileAreRefused) {
  const QByteArray other = Replaced("Surname Given", "Other Patient").replace("30 ", "20 ");
  const QByteArray cut = kDefaultFile.left(kDefaultFile.indexOf("\n\r\nlizm"));
  for (const QByteArray& first : {kDefaultFile, cut, WithComments("one\ntwo")}) {
    for (const LineEndForm& form : LineEndForms()) {
      const CaseFileContents contents = Parse(InForm(first + other, form));
      EXPECT_EQ(contents.problem, Problem::Unreadable) << form.name;
    }
  }
}

TEST(EditedCaseFile, ResultsMayBeDamagedOrMissing) {
  const qsizetype results = kDefaultFile.indexOf("R/Wb");
  for (const QByteArray& rest : {QByteArray(), QByteArray("R/Wb\n"), QByteArray("Regards,\r\nAnn"),
                                 QByteArray("Pmax = 1 psi"), QByteArray("\0\xFF\n\r\n\n\r\n", 8)}) {
    for (const LineEndForm& form : LineEndForms()) {
      const CaseFileContents contents = Parse(InForm(kDefaultFile.left(results) + rest, form));
      EXPECT_TRUE(contents.entries == DefaultEntries()) << form.name << rest.toStdString();
    }
  }
}

// Whatever the file is made of, its reading takes time in proportion to its size.
TEST(EditedCaseFile, AMebibyteOfLineEndsIsReadAtOnce) {
  const qsizetype size = Vse::kLargestCaseFile - kDefaultFile.size();
  for (const QByteArray& piece : QByteArrayList{"\r", "\n", "\r\n", "\n\r\n", "\r\r\n",
                                                "\nComments      :", "\n\nlizm          = "}) {
    const QByteArray many = piece.repeated(size / piece.size());
    for (const QByteArray& file : {kDefaultFile + many, Replaced("No", many), "TELMARION" + many}) {
      EXPECT_NE(Parse(file).problem, Problem::NotCorrectFile);
    }
  }
}

}  // namespace
