#include "radiograph/reader.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "tests/support/phantom_dicom.h"

namespace {

TEST(Reading, GivesTheStoredLevels) {
  PhantomDicom phantom;
  phantom.rows = 40;
  phantom.columns = 30;
  for (int i = 0; i < 1200; ++i) phantom.pixels.push_back(static_cast<std::uint16_t>(i * 3));
  const QTemporaryDir folder;
  const std::string path = folder.filePath("a.dcm").toStdString();
  ASSERT_TRUE(WritePhantomDicom(path, phantom));
  const ReadResult result = ReadRadiograph(path, {TELMARION_DECODE, {}});
  if (const auto* failure = std::get_if<ReadFailure>(&result)) FAIL() << FailureText(*failure);
  const auto& radiograph = std::get<Radiograph>(result);
  EXPECT_EQ(radiograph.levels, phantom.pixels);
  EXPECT_EQ(radiograph.patient.familyName, "Phantom");
}

}  // namespace
