// Kept work comes back exactly as it was, or not at all.
#include "case/kept_work.h"
#include "case/case_texts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "tests/support/default_inputs.h"
#include "tests/support/row_name.h"

namespace {

CaseData SampleCase() {
  CaseData data;
  data.patient = Vse::PatientFrom({.name = QStringLiteral("Kovač Ana"),
                                   .sex = QStringLiteral("Unknown"),
                                   .dateOfBirth = QStringLiteral("15.11.1956"),
                                   .bodyWeight = QStringLiteral("70,0"),
                                   .hip = QStringLiteral("L"),
                                   .comments = QStringLiteral("two\nlines, \"quoted\" \\ 字 😀")});
  data.inputs = DefaultInputs();
  data.inputs.bodyWeight = Sila::Kilograms{70.0};
  return data;
}

CaseEntries SampleEntries() {
  CaseEntries entries;
  entries.surname = QStringLiteral("Kov");
  entries.sex = Sex::Female;
  entries.bodyWeight = QStringLiteral("70 k");
  entries.comments = QStringLiteral("not\ndone");
  for (MeasurementEntry& entry : entries.measurements) entry = {"10,", Sila::Unit::Millimetre};
  entries[Sila::Measurement::Zasuk] = {"0.1", Sila::Unit::Radian};
  entries[Sila::Measurement::ThetaCE] = {"", Sila::Unit::Degree};
  entries[Sila::Measurement::HeadRadius] = {"0.025", Sila::Unit::Metre};
  return entries;
}

struct Work {
  const char* name;
  KeptWork work;
};

class KeptWorks : public testing::TestWithParam<Work> {};

TEST_P(KeptWorks, ComeBackAsTheyWere) {
  const KeptWork& work = GetParam().work;
  EXPECT_EQ(Vse::ParseKeptWork(Vse::ComposeKeptWork(work)), work);
}

INSTANTIATE_TEST_SUITE_P(Table, KeptWorks,
                         testing::Values(Work{"Nothing", {}}, Work{"Case", {SampleCase(), {}, {}}},
                                         Work{"CaseOfAFile",
                                              {SampleCase(), "/home/ana/kovač.txt", {}}},
                                         Work{"Form", {{}, {}, SampleEntries()}},
                                         Work{"Both", {SampleCase(), "a.txt", SampleEntries()}}),
                         RowName());

// A measure that lost one digit of its seventeen would be another hip.
TEST(KeptWork, KeepsEveryBitOfANumber) {
  for (const double value :
       {0.1 + 0.2, 1.0 / 3.0, -std::numbers::pi, 0.028999999999999998, std::nextafter(10.4, 11.0),
        std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min(), 1e22}) {
    KeptWork work{SampleCase(), {}, {}};
    work.data->inputs.thetaCE = {value};
    work.data->inputs.bodyWeight = Sila::Kilograms{value};
    EXPECT_EQ(Vse::ParseKeptWork(Vse::ComposeKeptWork(work)), work) << value;
  }
}

TEST(KeptWork, KeepsThatTheWeightIsUnknown) {
  KeptWork work{SampleCase(), {}, {}};
  work.data->inputs.bodyWeight.reset();
  work.data->patient.bodyWeight.clear();
  EXPECT_EQ(Vse::ParseKeptWork(Vse::ComposeKeptWork(work)), work);
}

TEST(KeptWork, KeepsWhatTheFormKnowsOfTheWeight) {
  KeptWork work{{}, {}, SampleEntries()};
  work.weightUnknownInForm = true;
  EXPECT_EQ(Vse::ParseKeptWork(Vse::ComposeKeptWork(work)), work);
}

TEST(KeptWork, KeepsThatTheFormWasMeasured) {
  KeptWork work{{}, {}, SampleEntries()};
  work.formIsMeasured = true;
  EXPECT_EQ(Vse::ParseKeptWork(Vse::ComposeKeptWork(work)), work);
}

TEST(KeptWork, KeepsTheCaseWhoseStressesARefusedOneHas) {
  KeptWork work{SampleCase(), {}, {}};
  work.computedBefore = SampleCase();
  work.computedBefore->inputs.thetaCE = {0.1 + 0.2};
  work.computedBefore->inputs.bodyWeight = Sila::Kilograms{80.0};
  EXPECT_EQ(Vse::ParseKeptWork(Vse::ComposeKeptWork(work)), work);
}

// What version 1.0.0 left behind on a day on which its user had pressed OK without a weight.
const QByteArray kWorkOfTheFirstVersion = R"({
    "case": {
        "computedWeight": 60,
        "measures": {"Cizm": 4.4, "Hizm": 16, "headRadius": 0.025, "lizm": 10.4,
                     "thetaCE": 0.5235987755982983, "xizm": 0.5, "zasuk": 0, "zizm": 6},
        "patient": {"bodyWeight": "Unknown", "comments": "No", "dateOfBirth": "Unknown",
                    "hip": "L", "name": "Kovac Ana", "sex": "F"},
        "weightUnknown": false
    },
    "file": "/home/ana/kovac.txt",
    "form": {
        "bodyWeight": "", "comments": "", "dateOfBirth": "", "firstName": "Ana", "hip": 1,
        "measures": {
            "Cizm": {"text": "4.4", "unit": "cm"}, "Hizm": {"text": "16", "unit": "cm"},
            "headRadius": {"text": "0.025", "unit": "m"}, "lizm": {"text": "10,5", "unit": "cm"},
            "thetaCE": {"text": "30", "unit": "  °  "}, "xizm": {"text": "0.5", "unit": "cm"},
            "zasuk": {"text": "0", "unit": "  °  "}, "zizm": {"text": "6", "unit": "cm"}
        },
        "sex": 2, "surname": "Kovac "
    },
    "kind": "TELMARION kept work",
    "version": 1
})";

TEST(KeptWork, OfTheFirstVersionIsRead) {
  const std::optional<KeptWork> work = Vse::ParseKeptWork(kWorkOfTheFirstVersion);
  ASSERT_TRUE(work && work->data && work->entries);
  EXPECT_EQ(work->file, "/home/ana/kovac.txt");
  EXPECT_EQ(work->data->patient.name, "Kovac Ana");
  EXPECT_EQ(work->data->inputs.thetaCE, 0.5235987755982983);
  EXPECT_EQ(work->data->inputs.headRadius, 0.025);
  EXPECT_EQ((*work->entries)[Sila::Measurement::Lizm].text, "10,5");
  EXPECT_FALSE(work->weightUnknownInForm);
  EXPECT_FALSE(work->computedBefore);
}

// The first version could write "Unknown" beside a flag that said that the weight was known.
TEST(KeptWork, OfTheFirstVersionNeverHasAnAssumedWeightForAMeasuredOne) {
  EXPECT_TRUE(Vse::ParseKeptWork(kWorkOfTheFirstVersion)->data->weightUnknown());
}

// It also took line ends into single lines, which a case file cannot hold.
TEST(KeptWork, OfTheFirstVersionComesBackInOneLine) {
  KeptWork work{SampleCase(), {}, {}};
  work.data->patient.bodyWeight = QStringLiteral("70\r\n");
  work.data->patient.name = QStringLiteral("Kovac\nAna");
  work.data->patient.comments = QStringLiteral("one\r\ntwo\rthree\tfour\n");
  const std::optional<KeptWork> back = Vse::ParseKeptWork(Vse::ComposeKeptWork(work));
  ASSERT_TRUE(back && back->data);
  EXPECT_EQ(back->data->patient.bodyWeight, "70");
  EXPECT_EQ(back->data->patient.name, "Kovac Ana");
  EXPECT_EQ(back->data->patient.comments, "one\ntwo\nthree\tfour\n");
}

// A power cut can leave any part of a file.
TEST(KeptWork, ThatIsCutShortIsRefused) {
  const QByteArray text = Vse::ComposeKeptWork({SampleCase(), "a.txt", SampleEntries()});
  for (qsizetype length = 0; length < text.trimmed().size(); ++length) {
    EXPECT_FALSE(Vse::ParseKeptWork(text.left(length))) << length;
  }
}

struct Damage {
  const char* name;
  const char* from;
  const char* to;
};

class DamagedWork : public testing::TestWithParam<Damage> {};

TEST_P(DamagedWork, IsRefused) {
  QByteArray text = Vse::ComposeKeptWork({SampleCase(), "a.txt", SampleEntries()});
  ASSERT_TRUE(text.contains(GetParam().from));
  text.replace(GetParam().from, GetParam().to);
  EXPECT_FALSE(Vse::ParseKeptWork(text));
}

INSTANTIATE_TEST_SUITE_P(
    Table, DamagedWork,
    testing::Values(Damage{"OtherKind", "TELMARION kept work", "something else"},
                    Damage{"OtherVersion", "\"version\": 1", "\"version\": 2"},
                    Damage{"NumberAsText", "\"lizm\": 10.4", "\"lizm\": \"10.4\""},
                    Damage{"MeasureMissing", "\"Hizm\"", "\"other\""},
                    Damage{"PatientMissing", "\"patient\"", "\"other\""},
                    Damage{"TextMissing", "\"comments\"", "\"other\""},
                    Damage{"ChoiceOutOfRange", "\"sex\": 2", "\"sex\": 3"},
                    Damage{"ChoiceWithAFraction", "\"sex\": 2", "\"sex\": 1.5"},
                    Damage{"FlagAsNumber", "\"weightUnknown\": false", "\"weightUnknown\": 0"},
                    Damage{"FlagOfTheFormAsText", "\"weightUnknown\": false\n    },\n    \"kind\"",
                           "\"weightUnknown\": \"no\"\n    },\n    \"kind\""},
                    Damage{"UnitOfNoList", "\"unit\": \"m\"", "\"unit\": \"ell\""},
                    Damage{"UnitOfAnotherMeasure", "\"unit\": \"rad\"", "\"unit\": \"mm\""},
                    Damage{"NumberTooLarge", "\"lizm\": 10.4", "\"lizm\": 1e999"},
                    Damage{"FormAsText", "\"form\": {", "\"form\": 1, \"rest\": {"}),
    RowName());

}  // namespace
