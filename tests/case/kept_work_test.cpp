// Kept work comes back exactly as it was, or not at all.
#include "case/kept_work.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "tests/support/default_geometry.h"
#include "tests/support/row_name.h"

namespace {

CaseData SampleCase() {
  CaseData data;
  data.patient = {.name = QStringLiteral("Kovač Ana"),
                  .sex = QStringLiteral("Unknown"),
                  .dateOfBirth = QStringLiteral("15.11.1956"),
                  .bodyWeight = QStringLiteral("70,0"),
                  .hip = QStringLiteral("L"),
                  .comments = QStringLiteral("two\nlines, \"quoted\" \\ 字 😀")};
  data.geometry = DefaultGeometry();
  data.bodyWeight = 70.0;
  return data;
}

CaseEntries SampleEntries() {
  CaseEntries entries;
  entries.surname = QStringLiteral("Kov");
  entries.sex = CaseEntries::Sex::Female;
  entries.bodyWeight = QStringLiteral("70 k");
  entries.comments = QStringLiteral("not\ndone");
  for (MeasureEntry& entry : entries.measures) entry = {"10,", Vse::kMillimetre.toString()};
  entries[Measure::ThetaCE] = {"", Vse::kDegree.toString()};
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
    work.data->geometry.thetaCE = value;
    work.data->bodyWeight = value;
    EXPECT_EQ(Vse::ParseKeptWork(Vse::ComposeKeptWork(work)), work) << value;
  }
}

TEST(KeptWork, KeepsThatTheWeightIsUnknown) {
  KeptWork work{SampleCase(), {}, {}};
  work.data->weightUnknown = true;
  EXPECT_EQ(Vse::ParseKeptWork(Vse::ComposeKeptWork(work)), work);
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
                    Damage{"NumberTooLarge", "\"lizm\": 10.4", "\"lizm\": 1e999"},
                    Damage{"FormAsText", "\"form\": {", "\"form\": 1, \"rest\": {"}),
    RowName());

}  // namespace
