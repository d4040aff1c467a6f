// Entries into the form and out of it, and the checks of single entries, under several locales.
#include <QPlainTextEdit>
#include <QRadioButton>

#include "tests/caseform/form_fixture.h"
#include "tests/support/row_name.h"

namespace {

const QStringList kLocales = {"C", "en_US", "de_DE", "sl_SI", "fr_FR"};

std::vector<std::string> LocaleNames() {
  std::vector<std::string> names;
  for (const QString& name : kLocales) names.push_back(name.toStdString());
  return names;
}

class InLocale : public CaseForm, public testing::WithParamInterface<std::string> {
 protected:
  void SetUp() override { Open(QLocale(QString::fromStdString(GetParam()))); }

  void ConfirmWithDate(const QString& date) {
    Find("Text11")->setText(date);
    Confirm();
  }
};

INSTANTIATE_TEST_SUITE_P(Locales, InLocale, testing::ValuesIn(LocaleNames()),
                         [](const auto& row) { return row.param; });

TEST_P(InLocale, ReadsNumbersWithPointOrComma) {
  for (const auto& [text, value] :
       {std::pair("10,40", 10.4), std::pair("10.40", 10.4), std::pair("-3,5", -3.5),
        std::pair(" 12", 12.0), std::pair("30 ", 30.0), std::pair(".5", 0.5), std::pair("5.", 5.0),
        std::pair("1e3", 1000.0), std::pair("1,234", 1.234), std::pair("1.234", 1.234),
        std::pair("\u00a0"
                  "7\u00a0",
                  7.0)}) {
    EXPECT_EQ(form_->ParseNumber(text), value) << text;
    EXPECT_FALSE(form_->inputError()) << text;
  }
}

TEST_P(InLocale, RefusesWhatIsNoNumber) {
  for (const char* text :
       {"1.2.3", "1.234,5", "1,234.5", "1 234",
        "1\u202f"
        "234",
        "1'234", "abc", "", "   ", "nan", "inf", "0x10", "5 €", "$5", "--5", ".", "٣"}) {
    EXPECT_EQ(form_->ParseNumber(text), std::nullopt) << text;
    EXPECT_TRUE(form_->inputError()) << text;
    EXPECT_EQ(door_.Take(), Messages{kNotANumber}) << text;
  }
  EXPECT_FALSE(form_->entryError());
}

TEST_P(InLocale, ProposesThePointEverywhere) {
  EXPECT_EQ(Find("Text1")->text(), "10.40");
  for (const MeasurementEntry& entry : form_->Entries().measurements) {
    EXPECT_TRUE(form_->ParseNumber(entry.text).has_value()) << entry.text.toStdString();
  }
}

TEST_P(InLocale, TakesDatesAndYears) {
  for (const char* text : {"", "Unknown", "1956", "1001", "2999", " 1956 ", "1956-11-15"}) {
    ConfirmWithDate(text);
    EXPECT_EQ(door_.Take(), Messages{}) << text;
  }
  const QString local = QLocale().toString(QDate(1956, 11, 15), QLocale::ShortFormat);
  ConfirmWithDate(local);
  EXPECT_EQ(door_.Take(), Messages{}) << local.toStdString();
  EXPECT_FALSE(form_->entryError());
}

TEST_P(InLocale, RefusesOtherDatesWithOneMessage) {
  for (const char* text : {"956", "1000", "3000", "abc", "1.2.3.4", "31.2.1956", "-1956", "0",
                           "unknown", "1956.5", "1956,5", "1000.5", "2999.9"}) {
    ConfirmWithDate(text);
    EXPECT_EQ(door_.Take(), Messages{kWrongDate}) << text;
    EXPECT_TRUE(form_->entryError()) << text;
  }
}

TEST_F(CaseForm, ANumberClearsTheEarlierError) {
  form_->ParseNumber("abc");
  EXPECT_EQ(door_.Take(), Messages{kNotANumber});
  EXPECT_TRUE(form_->inputError());
  EXPECT_EQ(form_->ParseNumber("10,40"), 10.4);
  EXPECT_FALSE(form_->inputError());
}

TEST_F(CaseForm, AConfirmationCollectsItsErrors) {
  Find("Text1")->setText("1.2.3");
  Find("Text10")->setText("abc");
  Confirm();
  EXPECT_EQ(door_.Take(), (Messages{kNotANumber, kNotANumber}));
  EXPECT_TRUE(form_->entryError());
  EXPECT_TRUE(form_->inputError());
  Find("Text1")->setText("10.4");
  Find("Text10")->setText("70,5");
  Confirm();
  EXPECT_FALSE(form_->entryError());
  EXPECT_FALSE(form_->inputError());
}

TEST_F(CaseForm, MoreThanAFullTurnInRadiansIsAWrongAngle) {
  for (const Sila::Measurement angle : {Sila::Measurement::Zasuk, Sila::Measurement::ThetaCE}) {
    for (const char* text : {"7", "6.2832"}) {
      CaseEntries entries = DefaultCaseEntries();
      entries[angle] = {text, Sila::Unit::Radian};
      form_->SetEntries(entries);
      Confirm();
      EXPECT_EQ(door_.Take(), Messages{kWrongAngle});
      EXPECT_TRUE(form_->entryError());
    }
  }
}

CaseEntries SomeEntries() {
  CaseEntries entries = DefaultCaseEntries();
  entries.surname = "Surname ";
  entries.firstName = "Given";
  entries.sex = Sex::Female;
  entries.dateOfBirth = "15.11.1956";
  entries.bodyWeight = "70";
  entries.hip = HipSide::Left;
  entries.comments = "one\ntwo";
  entries[Sila::Measurement::Lizm] = {"104", Sila::Unit::Millimetre};
  entries[Sila::Measurement::ThetaCE] = {"0,5", Sila::Unit::Radian};
  entries[Sila::Measurement::HeadRadius] = {"0.025", Sila::Unit::Metre};
  return entries;
}

TEST_F(CaseForm, GivesBackTheEntriesItWasGiven) {
  form_->SetEntries(SomeEntries());
  EXPECT_EQ(form_->Entries(), SomeEntries());
  EXPECT_EQ(Find("Text8")->text(), "Surname ");
  EXPECT_EQ(Find("Text7")->text(), "Given");
  EXPECT_EQ(Find("Text11")->text(), "15.11.1956");
  EXPECT_EQ(Find("Text10")->text(), "70");
  EXPECT_EQ(Find<QPlainTextEdit>("Text12")->toPlainText(), "one\ntwo");
  EXPECT_TRUE(Find<QRadioButton>("Option2")->isChecked());
  EXPECT_TRUE(Find<QRadioButton>("Option3")->isChecked());
  EXPECT_EQ(Find("Text1")->text(), "104");
  EXPECT_EQ(Find<QComboBox>("Combo1")->currentText(), "mm");
  EXPECT_EQ(Find<QComboBox>("Combo7")->currentText(), "rad");
  EXPECT_EQ(Find<QComboBox>("Combo8")->currentText(), "m");
  form_->SetEntries(DefaultCaseEntries());
  EXPECT_EQ(form_->Entries(), DefaultCaseEntries());
}

TEST_F(CaseForm, OptionsCanBeChosenAfterTheyWereSet) {
  form_->SetEntries(SomeEntries());
  Find<QRadioButton>("Option1")->click();
  Find<QRadioButton>("Option4")->click();
  EXPECT_EQ(form_->Entries().sex, Sex::Male);
  EXPECT_EQ(form_->Entries().hip, HipSide::Right);
}

TEST_F(CaseForm, ABoxOfBlanksIsAnEmptyBox) {
  CaseEntries entries = DefaultCaseEntries();
  entries.surname = entries.dateOfBirth = entries.bodyWeight = "  ";
  entries.comments = " \n";
  form_->SetEntries(entries);
  EXPECT_EQ(form_->Entries(), DefaultCaseEntries());
}

TEST_F(CaseForm, CommentsPastedFromElsewhereHaveNoCarriageReturns) {
  Find<QPlainTextEdit>("Text12")->insertPlainText("one\r\ntwo\u2028three");
  EXPECT_EQ(form_->Entries().comments, "one\ntwo\nthree");
}

TEST_F(CaseForm, TheAssumedWeightIsWrittenAloneAndIsNoEntry) {
  CaseEntries entries = SomeEntries();
  entries.bodyWeight.clear();
  form_->SetEntries(entries);
  EXPECT_FALSE(form_->weightUnknown());
  form_->AssumeBodyWeight();
  EXPECT_TRUE(form_->weightUnknown());
  EXPECT_EQ(Find("Text10")->text(), "60");
  EXPECT_EQ(form_->Entries(), entries);
}

TEST_F(CaseForm, AWeightOfAnotherCaseIsNotTheAssumedOne) {
  form_->AssumeBodyWeight();
  CaseEntries entries = SomeEntries();
  entries.bodyWeight = "60";
  form_->SetEntries(entries);
  EXPECT_FALSE(form_->weightUnknown());
  EXPECT_EQ(form_->Entries(), entries);
  form_->reject();
  EXPECT_EQ(Find("Text10")->text(), "60");
}

}  // namespace
