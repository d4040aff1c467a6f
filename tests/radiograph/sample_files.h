// Pictures for the tests of reading, and the tools that convert them.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "radiograph/reader.h"
#include "tests/support/phantom_dicom.h"

// A bright disk on a slope with a grain over it; holds the lowest and the highest value.
inline PhantomDicom MakeDisk(int bits, bool isSigned, int rows = 70, int columns = 90) {
  PhantomDicom phantom;
  phantom.rows = rows;
  phantom.columns = columns;
  phantom.bitsStored = bits;
  phantom.bitsAllocated = bits <= 8 ? 8 : 16;
  phantom.isSigned = isSigned;
  const int range = 1 << bits;
  const int lowest = isSigned ? -range / 2 : 0;
  unsigned grain = 1;
  for (int y = 0; y < rows; ++y) {
    for (int x = 0; x < columns; ++x) {
      grain = grain * 1664525U + 1013904223U;
      const bool inside = std::hypot(y - rows / 2, x - columns / 3) < rows / 4;
      const double share = 0.2 + 0.3 * y / rows + (inside ? 0.4 : 0.0) + (grain >> 24) / 25600.0;
      phantom.pixels.push_back(
          static_cast<std::uint16_t>(lowest + static_cast<int>(share * range)));
    }
  }
  phantom.pixels[3] = static_cast<std::uint16_t>(lowest);
  phantom.pixels[500] = static_cast<std::uint16_t>(lowest + range - 1);
  return phantom;
}

// What the levels of the phantom are: its values counted from the lowest possible.
inline std::vector<std::uint16_t> LevelsOf(const PhantomDicom& phantom) {
  std::vector<std::uint16_t> levels;
  const int lowest = phantom.isSigned ? -(1 << (phantom.bitsStored - 1)) : 0;
  for (const std::uint16_t pixel : phantom.pixels) {
    const int value = phantom.isSigned ? static_cast<std::int16_t>(pixel) : pixel;
    levels.push_back(static_cast<std::uint16_t>(value - lowest));
  }
  return levels;
}

// The largest difference of two pictures, in levels.
inline int LargestDifference(const std::vector<std::uint16_t>& a,
                             const std::vector<std::uint16_t>& b) {
  EXPECT_EQ(a.size(), b.size());
  int largest = 0;
  for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
    largest = std::max(largest, std::abs(a[i] - b[i]));
  }
  return largest;
}

class ReadingFiles : public testing::Test {
 protected:
  std::string Path(const std::string& name) const {
    return folder_.filePath(QString::fromStdString(name)).toStdString();
  }

  std::string Save(const std::string& name, const QByteArray& bytes) const {
    QFile file(QString::fromStdString(Path(name)));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    return Path(name);
  }

  std::string Save(const PhantomDicom& phantom, const std::string& name = "plain.dcm") const {
    EXPECT_TRUE(WritePhantomDicom(Path(name), phantom));
    return Path(name);
  }

  QByteArray BytesOf(const std::string& path) const {
    QFile file(QString::fromStdString(path));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path;
    return file.readAll();
  }

  // Runs a tool on `from`; its words may be several, with blanks between.
  std::string Convert(const std::string& tool, const std::string& from) const {
    QStringList words = QString::fromStdString(tool).split(' ');
    const QString program = words.takeFirst();
    const std::string to = Path("converted");
    QProcess process;
    process.start(program, words << QString::fromStdString(from) << QString::fromStdString(to));
    EXPECT_TRUE(process.waitForFinished(60000)) << tool;
    EXPECT_EQ(process.exitCode(), 0) << tool << process.readAllStandardError().toStdString();
    return to;
  }

  Radiography::ReadResult Read(const std::string& path) const {
    return Radiography::ReadRadiograph(path, reader);
  }

  Radiography::Radiograph MustRead(const std::string& path) const {
    const Radiography::ReadResult result = Read(path);
    if (const auto* failure = std::get_if<Radiography::ReadFailure>(&result)) {
      ADD_FAILURE() << FailureText(*failure);
      return {};
    }
    return std::get<Radiography::Radiograph>(result);
  }

  // Why the file was refused.
  Radiography::ReadFailure MustFail(const std::string& path) const {
    const Radiography::ReadResult result = Read(path);
    const auto* failure = std::get_if<Radiography::ReadFailure>(&result);
    if (failure != nullptr) return *failure;
    ADD_FAILURE() << path << " was read";
    return {};
  }

  Radiography::RadiographReader reader{TELMARION_DECODE, {}};

 private:
  QTemporaryDir folder_;
};
