// What the decoder sends is believed only where it can be true.
#include "radiograph/answer.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "tests/support/row_name.h"

using namespace Radiography;

namespace {

using namespace std::chrono;

Radiograph MakeRadiograph() {
  Radiograph made;
  made.width = 3;
  made.height = 2;
  made.bits = 12;
  made.levels = {0, 1, 2, 3, 4, 4095};
  made.slope = 0.5;
  made.intercept = -3.25;
  made.inverted = true;
  made.windows = {{50, 100, WindowShape::Sigmoid, "BONE"}, {60, 20, WindowShape::Linear, ""}};
  made.tables = {{-5, 8, {1, 2, 255}, "table"}};
  made.patient = {"Žebovec", "Črt", 1956y / November / 15, PatientSex::Male};
  made.studyDate = 2026y / November / 15;
  made.rowDirection = "L";
  made.columnDirection = "F";
  made.sopInstanceUid = "1.2.3";
  made.sha256 = std::string(64, 'a');
  made.frames = 2;
  made.scale.pixelSpacing = {0.12, 0.13};
  made.scale.calibrationType = "FIDUCIAL";
  made.scale.pixelAspectRatio = {4, 3};
  made.notes = {"one", "two"};
  return made;
}

TEST(Answer, ComesBackAsItWas) {
  const ReadResult radiograph = MakeRadiograph();
  EXPECT_EQ(ParseAnswer(ComposeAnswer(radiograph)), radiograph);
  const ReadResult failure = ReadFailure{ReadTrouble::Colour, "why"};
  EXPECT_EQ(ParseAnswer(ComposeAnswer(failure)), failure);
}

bool IsRefused(const std::string& bytes) {
  return ParseAnswer(bytes) == ReadResult(ReadFailure{ReadTrouble::DecoderDied, {}});
}

TEST(Answer, CutShortOrTooLongIsRefused) {
  for (const ReadResult& result :
       {ReadResult(MakeRadiograph()), ReadResult(ReadFailure{ReadTrouble::Colour, "why"})}) {
    const std::string whole = ComposeAnswer(result);
    for (std::size_t length = 0; length < whole.size(); ++length) {
      EXPECT_TRUE(IsRefused(whole.substr(0, length))) << length;
    }
    EXPECT_TRUE(IsRefused(whole + '\0'));
  }
}

TEST(Answer, WithAnyByteChangedIsRefusedOrSound) {
  const std::string whole = ComposeAnswer(MakeRadiograph());
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const int turn : {1, 128, 255}) {
      std::string bytes = whole;
      bytes[at] = static_cast<char>(bytes[at] ^ turn);
      const ReadResult result = ParseAnswer(bytes);
      const auto* radiograph = std::get_if<Radiograph>(&result);
      if (radiograph == nullptr) continue;
      EXPECT_EQ(radiograph->levels.size(), 6U);
      EXPECT_LE(*std::max_element(radiograph->levels.begin(), radiograph->levels.end()),
                (1 << radiograph->bits) - 1);
    }
  }
}

struct LieRow {
  const char* name;
  std::function<void(Radiograph&)> lie;
};

const double kNotANumber = std::numeric_limits<double>::quiet_NaN();

const LieRow kLies[] = {
    {"MorePixelsThanLevels", [](Radiograph& r) { r.width = 4; }},
    {"FewerPixelsThanLevels", [](Radiograph& r) { r.height = 1; }},
    {"NegativeSize", [](Radiograph& r) { r.width = -3, r.height = -2; }},
    {"NoSize", [](Radiograph& r) { r.width = 0, r.levels.clear(); }},
    {"TooManyRows",
     [](Radiograph& r) { r.width = 1, r.height = 16385, r.levels.assign(16385, 0); }},
    {"LevelAboveItsBits", [](Radiograph& r) { r.levels[2] = 4096; }},
    {"NoBits", [](Radiograph& r) { r.bits = 0, r.levels.assign(6, 0); }},
    {"TooManyBits", [](Radiograph& r) { r.bits = 17; }},
    {"SlopeZero", [](Radiograph& r) { r.slope = 0.0; }},
    {"SlopeThatIsNoNumber", [](Radiograph& r) { r.slope = kNotANumber; }},
    {"InterceptThatIsNoNumber", [](Radiograph& r) { r.intercept = kNotANumber; }},
    {"WindowWithoutWidth", [](Radiograph& r) { r.windows[0].width = 0.0; }},
    {"WindowWithoutCentre", [](Radiograph& r) { r.windows[0].centre = kNotANumber; }},
    {"WindowOfUnknownShape",
     [](Radiograph& r) { r.windows[0].shape = static_cast<WindowShape>(3); }},
    {"EmptyTable", [](Radiograph& r) { r.tables[0].entries.clear(); }},
    {"TableAboveItsBits", [](Radiograph& r) { r.tables[0].entries[0] = 256; }},
    {"TableWithoutBits", [](Radiograph& r) { r.tables[0].bits = 0; }},
    {"TableTooLong", [](Radiograph& r) { r.tables[0].entries.assign(65537, 1); }},
    {"SexOutOfRange", [](Radiograph& r) { r.patient.sex = static_cast<PatientSex>(4); }},
    {"DateThatDoesNotExist", [](Radiograph& r) { r.studyDate = 2026y / February / 30; }},
    {"NoFrames", [](Radiograph& r) { r.frames = 0; }},
    {"ShortHash", [](Radiograph& r) { r.sha256 = "ab"; }},
    {"TooManyNotes", [](Radiograph& r) { r.notes.assign(257, "note"); }},
};

class Lie : public testing::TestWithParam<LieRow> {};

TEST_P(Lie, IsRefused) {
  Radiograph radiograph = MakeRadiograph();
  GetParam().lie(radiograph);
  EXPECT_TRUE(IsRefused(ComposeAnswer(radiograph)));
}

INSTANTIATE_TEST_SUITE_P(Of, Lie, testing::ValuesIn(kLies), RowName());

TEST(Answer, WithAnUnknownTroubleIsRefused) {
  EXPECT_TRUE(IsRefused(ComposeAnswer(ReadFailure{static_cast<ReadTrouble>(13), {}})));
}

}  // namespace
