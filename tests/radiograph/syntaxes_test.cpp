// Every way in which a DICOM file may pack its pixels.
#include "tests/radiograph/sample_files.h"
#include "tests/support/row_name.h"

using namespace Radiography;

namespace {

struct Packing {
  const char* name;
  const char* tool;
  const char* uid;  // the transfer syntax that the tool is to have written
};

const Packing kLossless[] = {
    {"ImplicitLittleEndian", "dcmconv +ti", "1.2.840.10008.1.2"},
    {"ExplicitLittleEndian", "dcmconv +te", "1.2.840.10008.1.2.1"},
    {"ExplicitBigEndian", "dcmconv +tb", "1.2.840.10008.1.2.2"},
    {"Deflated", "dcmconv +td", "1.2.840.10008.1.2.1.99"},
    {"WithoutAPreamble", "dcmconv +ti -F", ""},
    {"RunLength", "dcmcrle", "1.2.840.10008.1.2.5"},
    {"JpegLossless", "dcmcjpeg +el", "1.2.840.10008.1.2.4.57"},
    {"JpegLosslessFirstOrder", "dcmcjpeg +e1", "1.2.840.10008.1.2.4.70"},
    {"JpegLosslessInFragments", "dcmcjpeg +e1 +fs 1", "1.2.840.10008.1.2.4.70"},
    {"JpegLs", "dcmcjpls +el", "1.2.840.10008.1.2.4.80"},
    {"Jpeg2000", "gdcmconv --j2k", "1.2.840.10008.1.2.4.90"},
};

struct Depth {
  const char* name;
  int bits;
  bool isSigned;
};

const Depth kDepths[] = {
    {"8Bits", 8, false},   {"10Bits", 10, false},      {"12Bits", 12, false},
    {"16Bits", 16, false}, {"Signed12Bits", 12, true}, {"Signed16Bits", 16, true},
};

using LosslessRow = std::tuple<Packing, Depth>;
class LosslessFile : public ReadingFiles, public testing::WithParamInterface<LosslessRow> {};

TEST_P(LosslessFile, HasThePixelsOfTheUncompressedOne) {
  const auto& [packing, depth] = GetParam();
  const PhantomDicom disk = MakeDisk(depth.bits, depth.isSigned);
  const std::string path = Convert(packing.tool, Save(disk));
  EXPECT_TRUE(BytesOf(path).contains(packing.uid));
  const Radiograph radiograph = MustRead(path);
  EXPECT_EQ(radiograph.width, disk.columns);
  EXPECT_EQ(radiograph.height, disk.rows);
  EXPECT_EQ(radiograph.bits, disk.bitsStored);
  EXPECT_EQ(radiograph.levels, LevelsOf(disk));
  EXPECT_EQ(radiograph.intercept, depth.isSigned ? -(1 << (depth.bits - 1)) : 0);
}

INSTANTIATE_TEST_SUITE_P(Of, LosslessFile,
                         testing::Combine(testing::ValuesIn(kLossless), testing::ValuesIn(kDepths)),
                         [](const auto& row) {
                           return std::string(std::get<0>(row.param).name) + "With" +
                                  std::get<1>(row.param).name;
                         });

struct LossyRow {
  const char* name;
  const char* tool;
  const char* uid;
  int bits;
  int bound;  // levels
};

const LossyRow kLossy[] = {
    {"Jpeg8Bits", "dcmcjpeg +eb +q 100", "1.2.840.10008.1.2.4.50", 8, 2},
    {"JpegExtended8Bits", "dcmcjpeg +ee +q 100", "1.2.840.10008.1.2.4.51", 8, 4},
    {"JpegExtended12Bits", "dcmcjpeg +ee +q 100", "1.2.840.10008.1.2.4.51", 12, 4},
    {"JpegLsNear3", "dcmcjpls +en +md 3", "1.2.840.10008.1.2.4.81", 12, 3},
    {"JpegLsNear3Of16Bits", "dcmcjpls +en +md 3", "1.2.840.10008.1.2.4.81", 16, 3},
    {"Jpeg2000With12Bits", "gdcmconv --j2k --lossy", "1.2.840.10008.1.2.4.91", 12, 400},
    {"Jpeg2000With16Bits", "gdcmconv --j2k --lossy", "1.2.840.10008.1.2.4.91", 16, 6400},
};

class LossyFile : public ReadingFiles, public testing::WithParamInterface<LossyRow> {};

TEST_P(LossyFile, HasPixelsWithinTheLoss) {
  const LossyRow& row = GetParam();
  PhantomDicom disk = MakeDisk(row.bits, false);
  disk.attributes = {{"WindowCenter", ""}, {"WindowWidth", ""}};
  const std::string path = Convert(row.tool, Save(disk));
  EXPECT_TRUE(BytesOf(path).contains(row.uid));
  const Radiograph radiograph = MustRead(path);
  EXPECT_EQ(radiograph.bits, disk.bitsStored);
  const int difference = LargestDifference(radiograph.levels, LevelsOf(disk));
  EXPECT_LE(difference, row.bound);
}

INSTANTIATE_TEST_SUITE_P(Of, LossyFile, testing::ValuesIn(kLossy), RowName());

// Black and white stripes of 10 bits, with the edges inside the blocks of JPEG: what is lost swings
// beyond white and black. Taken as 10 bits the swings would turn white into black.
PhantomDicom MakeStripes(bool isSigned) {
  PhantomDicom stripes = MakeDisk(12, isSigned);
  for (std::size_t i = 0; i < stripes.pixels.size(); ++i) {
    const int value = i % 90 / 5 % 2 == 0 ? 0 : 1023;
    stripes.pixels[i] = static_cast<std::uint16_t>(isSigned ? value - 512 : value);
  }
  stripes.attributes = {{"WindowCenter", ""}, {"WindowWidth", ""}};
  return stripes;
}

class LossyStripes : public ReadingFiles {};

TEST_F(LossyStripes, StayBlackAndWhiteWhenTheLossGoesBeyondTheBitsStored) {
  const PhantomDicom stripes = MakeStripes(false);
  const std::string path = Convert("dcmcjpeg +ee +q 60", Save(stripes));
  const auto wide = MustRead(path).levels;
  ASSERT_GT(*std::max_element(wide.begin(), wide.end()), 1023) << "nothing went beyond";
  ASSERT_EQ(QProcess::execute("dcmodify", {"-nb", "-m", "BitsStored=10", "-m", "HighBit=9",
                                           QString::fromStdString(path)}),
            0);
  const Radiograph radiograph = MustRead(path);
  EXPECT_EQ(radiograph.bits, 10);
  EXPECT_EQ(*std::max_element(radiograph.levels.begin(), radiograph.levels.end()), 1023);
  EXPECT_LT(LargestDifference(radiograph.levels, stripes.pixels), 300);
}

}  // namespace
