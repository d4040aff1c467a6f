// How a DICOM file wants its values shown: modality, windows, brightness tables, and which end is
// dark.
#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

#include <functional>

#include "radiograph/windowing.h"
#include "tests/radiograph/sample_files.h"
#include "tests/support/row_name.h"

using namespace Radiography;

namespace {

using Notes = std::vector<std::string>;

// A small picture whose levels are its pixel numbers.
PhantomDicom MakeSteps(int bits = 12) {
  PhantomDicom steps;
  steps.rows = 10;
  steps.columns = 10;
  steps.bitsStored = bits;
  for (std::uint16_t i = 0; i < 100; ++i) steps.pixels.push_back(i);
  steps.attributes = {{"WindowCenter", ""}, {"WindowWidth", ""}};
  return steps;
}

// A look-up table as an item of a sequence.
void AddTable(DcmItem& item, const DcmTagKey& sequence, const std::vector<Uint16>& descriptor,
              const std::vector<Uint16>& entries, const char* name) {
  DcmItem* table = nullptr;
  item.findOrCreateSequenceItem(sequence, table, -2);
  auto* described = new DcmUnsignedShort(DcmTag(DCM_LUTDescriptor, EVR_US));
  described->putUint16Array(descriptor.data(), descriptor.size());
  table->insert(described);
  auto* data = new DcmUnsignedShort(DcmTag(DCM_LUTData, EVR_US));
  data->putUint16Array(entries.data(), entries.size());
  table->insert(data);
  table->putAndInsertString(DCM_LUTExplanation, name);
  table->putAndInsertString(DCM_ModalityLUTType, "US");
}

class Shown : public ReadingFiles {
 protected:
  Radiograph ReadEdited(const PhantomDicom& phantom, const std::function<void(DcmItem&)>& edit) {
    const std::string path = Save(phantom);
    DcmFileFormat file;
    EXPECT_TRUE(file.loadFile(path.c_str()).good());
    edit(*file.getDataset());
    EXPECT_TRUE(file.saveFile(path.c_str(), EXS_LittleEndianExplicit).good());
    return MustRead(path);
  }
};

struct DarkRow {
  const char* name;
  const char* photometric;
  const char* presentation;
  bool inverted;
};

const DarkRow kDark[] = {
    {"Monochrome1Alone", "MONOCHROME1", "", true},
    {"Monochrome2Alone", "MONOCHROME2", "", false},
    {"Monochrome1WithInverseIsTurnedOnce", "MONOCHROME1", "INVERSE", true},
    {"Monochrome1WithIdentityIsNotTurned", "MONOCHROME1", "IDENTITY", false},
    {"Monochrome2WithInverseIsTurned", "MONOCHROME2", "INVERSE", true},
    {"Monochrome2WithIdentity", "MONOCHROME2", "IDENTITY", false},
    {"Monochrome1WithAShapeThatIsNotKnown", "MONOCHROME1", "LIN OD", true},
};

class DarkEnd : public ReadingFiles, public testing::WithParamInterface<DarkRow> {};

TEST_P(DarkEnd, IsDecidedOnce) {
  PhantomDicom steps = MakeSteps();
  steps.attributes["PhotometricInterpretation"] = GetParam().photometric;
  steps.attributes["PresentationLUTShape"] = GetParam().presentation;
  const Radiograph radiograph = MustRead(Save(steps));
  EXPECT_EQ(radiograph.inverted, GetParam().inverted);
  const auto brightness = ComputeBrightness(radiograph, FullWindow(radiograph));
  EXPECT_EQ(brightness[0], GetParam().inverted ? 255 : 0);
  EXPECT_EQ(brightness[99], GetParam().inverted ? 0 : 255);
}

INSTANTIATE_TEST_SUITE_P(Of, DarkEnd, testing::ValuesIn(kDark), RowName());

TEST_F(Shown, ValuesAreRescaled) {
  PhantomDicom steps = MakeSteps();
  steps.attributes["RescaleSlope"] = "0.5";
  steps.attributes["RescaleIntercept"] = "-20";
  const Radiograph radiograph = MustRead(Save(steps));
  EXPECT_EQ(radiograph.slope, 0.5);
  EXPECT_EQ(radiograph.intercept, -20.0);
  EXPECT_EQ(radiograph.levels[60] * radiograph.slope + radiograph.intercept, 10.0);
}

TEST_F(Shown, ARescaleThatCannotBeIsNotedAndLeft) {
  for (const char* slope : {"0", "much"}) {
    PhantomDicom steps = MakeSteps();
    steps.attributes["RescaleSlope"] = slope;
    const Radiograph radiograph = MustRead(Save(steps));
    EXPECT_EQ(radiograph.slope, 1.0);
    EXPECT_EQ(radiograph.notes, Notes{"rescale slope or intercept cannot be used; stored values "
                                      "are shown"});
  }
}

TEST_F(Shown, AModalityTableGoesBeforeTheRescale) {
  const Radiograph radiograph = ReadEdited(MakeSteps(), [](DcmItem& item) {
    item.putAndInsertString(DCM_RescaleSlope, "7");
    AddTable(item, DCM_ModalityLUTSequence, {4, 10, 10}, {5, 700, 800, 1023}, "density");
  });
  EXPECT_EQ(radiograph.bits, 10);
  EXPECT_EQ(radiograph.slope, 1.0);
  EXPECT_EQ(radiograph.levels[0], 5) << "below the table: its first entry";
  EXPECT_EQ(radiograph.levels[10], 5);
  EXPECT_EQ(radiograph.levels[11], 700);
  EXPECT_EQ(radiograph.levels[13], 1023);
  EXPECT_EQ(radiograph.levels[99], 1023) << "above the table: its last entry";
}

TEST_F(Shown, SeveralWindowsKeepTheirNames) {
  PhantomDicom steps = MakeSteps();
  steps.attributes["WindowCenter"] = "50\\60.5";
  steps.attributes["WindowWidth"] = "100\\20";
  steps.attributes["WindowCenterWidthExplanation"] = "WIDE\\BONE";
  const Radiograph radiograph = MustRead(Save(steps));
  const std::vector<Window> wanted{{50, 100, WindowShape::Linear, "WIDE"},
                                   {60.5, 20, WindowShape::Linear, "BONE"}};
  EXPECT_EQ(radiograph.windows, wanted);
  EXPECT_EQ(radiograph.notes, Notes{});
}

TEST_F(Shown, WindowsHaveTheShapeThatTheFileNames) {
  for (const auto& [name, shape] : {std::pair{"LINEAR", WindowShape::Linear},
                                    {"LINEAR_EXACT", WindowShape::LinearExact},
                                    {"SIGMOID", WindowShape::Sigmoid}}) {
    PhantomDicom steps = MakeSteps();
    steps.attributes["WindowCenter"] = "50";
    steps.attributes["WindowWidth"] = "100";
    steps.attributes["VOILUTFunction"] = name;
    const Radiograph radiograph = MustRead(Save(steps));
    ASSERT_EQ(radiograph.windows.size(), 1U);
    EXPECT_EQ(radiograph.windows[0].shape, shape) << name;
  }
}

TEST_F(Shown, AWindowThatCannotBeIsNotedAndLeft) {
  for (const auto& [centre, width] :
       {std::pair{"50", "0"}, {"50", "-3"}, {"50", "0.5"}, {"fifty", "3"}, {"50\\60", "9"}}) {
    PhantomDicom steps = MakeSteps();
    steps.attributes["WindowCenter"] = centre;
    steps.attributes["WindowWidth"] = width;
    const Radiograph radiograph = MustRead(Save(steps));
    EXPECT_EQ(radiograph.notes, Notes{"a window of the file cannot be used"}) << width;
    EXPECT_EQ(radiograph.windows.size(), std::string(width) == "9" ? 1U : 0U) << width;
  }
}

TEST_F(Shown, ABrightnessTableIsKeptWithItsName) {
  const Radiograph radiograph = ReadEdited(MakeSteps(), [](DcmItem& item) {
    AddTable(item, DCM_VOILUTSequence, {3, 20, 8}, {0, 51, 255}, "bone");
    AddTable(item, DCM_VOILUTSequence, {2, 0, 8}, {0, 4095}, "more bits than it says");
  });
  ASSERT_EQ(radiograph.tables.size(), 2U);
  EXPECT_EQ(radiograph.tables[0], (BrightnessTable{20, 8, {0, 51, 255}, "bone"}));
  EXPECT_EQ(radiograph.tables[1].bits, 12);
  const auto brightness = ComputeBrightness(radiograph, radiograph.tables[0]);
  EXPECT_EQ(brightness[0], 0);
  EXPECT_EQ(brightness[21], 51);
  EXPECT_EQ(brightness[22], 255);
  EXPECT_EQ(brightness[4095], 255);
}

TEST_F(Shown, ABrightnessTableOfSignedValuesBeginsBelowZero) {
  PhantomDicom steps = MakeSteps();
  steps.isSigned = true;
  const Radiograph radiograph = ReadEdited(steps, [](DcmItem& item) {
    AddTable(item, DCM_VOILUTSequence, {2, 0xFFFF, 8}, {0, 255}, "step at zero");
  });
  ASSERT_EQ(radiograph.tables.size(), 1U);
  EXPECT_EQ(radiograph.tables[0].first, -1);
  const auto brightness = ComputeBrightness(radiograph, radiograph.tables[0]);
  EXPECT_EQ(brightness[2047], 0) << "the value -1";
  EXPECT_EQ(brightness[2048], 255) << "the value 0";
}

TEST_F(Shown, ADamagedTableIsNotedAndLeft) {
  const Radiograph radiograph = ReadEdited(MakeSteps(), [](DcmItem& item) {
    AddTable(item, DCM_VOILUTSequence, {300, 0, 16}, {0, 51, 255}, "cut short");
  });
  EXPECT_TRUE(radiograph.tables.empty());
  EXPECT_EQ(radiograph.notes, Notes{"a look-up table of the file is damaged and is not used"});
}

// Worked by hand from the formulas of the standard (PS3.3 C.11.2.1.2 and C.11.2.1.3).
struct ShapeRow {
  const char* name;
  double centre;
  double width;
  WindowShape shape;
  std::vector<std::pair<int, int>> brightnessOf;  // level, brightness
};

const ShapeRow kShapes[] = {
    {"LinearOf4096",
     2048,
     4096,
     WindowShape::Linear,
     {{0, 0}, {1, 0}, {9, 1}, {2048, 128}, {2047, 127}, {4095, 255}}},
    {"LinearOf100", 50, 100, WindowShape::Linear, {{0, 0}, {50, 129}, {99, 255}, {98, 252}}},
    {"LinearOfWidthOneIsAStep", 50, 1, WindowShape::Linear, {{49, 0}, {50, 255}}},
    {"LinearExact",
     50,
     100,
     WindowShape::LinearExact,
     {{0, 0}, {50, 128}, {99, 252}, {100, 255}, {200, 255}}},
    {"Sigmoid", 50, 100, WindowShape::Sigmoid, {{50, 128}, {0, 30}, {100, 225}, {1000, 255}}},
};

class WindowOf : public testing::TestWithParam<ShapeRow> {};

TEST_P(WindowOf, GivesTheBrightnessOfItsFormula) {
  Radiograph radiograph;
  radiograph.bits = 12;
  const ShapeRow& row = GetParam();
  const auto brightness = ComputeBrightness(radiograph, {row.centre, row.width, row.shape, {}});
  ASSERT_EQ(brightness.size(), 4096U);
  for (const auto& [level, wanted] : row.brightnessOf) {
    EXPECT_EQ(brightness[static_cast<std::size_t>(level)], wanted) << level;
  }
}

INSTANTIATE_TEST_SUITE_P(Shape, WindowOf, testing::ValuesIn(kShapes), RowName());

TEST(Windowing, UsesValuesNotLevels) {
  Radiograph radiograph;
  radiograph.bits = 12;
  radiograph.slope = -2.0;
  radiograph.intercept = 100.0;
  const auto brightness = ComputeBrightness(radiograph, {50, 100, WindowShape::LinearExact, {}});
  EXPECT_EQ(brightness[0], 255);  // the value 100
  EXPECT_EQ(brightness[25], 128);
  EXPECT_EQ(brightness[50], 0);
}

TEST(Windowing, PaintsEveryPixelAndKeepsTheImage) {
  Radiograph radiograph;
  radiograph.width = 3;  // lines of an image are padded to four bytes
  radiograph.height = 2;
  radiograph.bits = 3;
  radiograph.levels = {0, 1, 2, 3, 4, 7};
  QImage image;
  PaintLevels(radiograph, ComputeBrightness(radiograph, FullWindow(radiograph)), image);
  ASSERT_EQ(image.size(), QSize(3, 2));
  const int wanted[] = {0, 36, 73, 109, 146, 255};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(qGray(image.pixel(i % 3, i / 3)), wanted[i]) << i;
  const uchar* memory = image.constBits();
  PaintLevels(radiograph, ComputeBrightness(radiograph, {2, 1, WindowShape::Linear, {}}), image);
  EXPECT_EQ(image.constBits(), memory);
  EXPECT_EQ(qGray(image.pixel(1, 0)), 0);
  EXPECT_EQ(qGray(image.pixel(2, 0)), 255);
}

TEST(Windowing, OfAnEvenPictureIsNoDivisionByZero) {
  Radiograph radiograph;
  radiograph.bits = 12;
  radiograph.levels = {7, 7};
  const Window window = FullWindow(radiograph);
  EXPECT_GT(window.width, 0.0);
  EXPECT_EQ(ComputeBrightness(radiograph, window)[7], 128);
}

}  // namespace
