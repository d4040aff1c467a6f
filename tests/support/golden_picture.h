// Compares a picture with the one that was accepted before. A difference leaves the picture that
// came out, and a picture of the difference, in `pictures` beside the test program, and says how to
// accept it.
#pragma once

#include <gtest/gtest.h>

#include <QColor>
#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QString>
#include <algorithm>
#include <cstdlib>
#include <string>

namespace golden {

inline constexpr int kColourTolerance = 64;  // of 255 a channel
inline constexpr int kPixelTolerance = 10;   // pixels that may differ nevertheless

inline int Distance(QRgb a, QRgb b) {
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                   std::abs(qBlue(a) - qBlue(b))});
}

// Whether `image` has this colour at the pixel or next to it: smoothing may fall a little
// differently.
inline bool HasNear(const QImage& image, int x, int y, QRgb colour) {
  for (int ny = std::max(0, y - 1); ny <= std::min(image.height() - 1, y + 1); ++ny) {
    for (int nx = std::max(0, x - 1); nx <= std::min(image.width() - 1, x + 1); ++nx) {
      if (Distance(image.pixel(nx, ny), colour) <= kColourTolerance) return true;
    }
  }
  return false;
}

struct Difference {
  int pixels = 0;
  QImage picture;  // what differs in red over a pale copy
};

// Of two pictures of one size.
inline Difference Compare(const QImage& got, const QImage& wanted) {
  Difference difference{0, QImage(wanted.size(), QImage::Format_RGB32)};
  for (int y = 0; y < wanted.height(); ++y) {
    for (int x = 0; x < wanted.width(); ++x) {
      const bool same =
          HasNear(wanted, x, y, got.pixel(x, y)) && HasNear(got, x, y, wanted.pixel(x, y));
      if (!same) ++difference.pixels;
      const int pale = 192 + qGray(wanted.pixel(x, y)) / 4;
      difference.picture.setPixel(x, y, same ? qRgb(pale, pale, pale) : qRgb(255, 0, 0));
    }
  }
  return difference;
}

inline std::string AcceptCommand() {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  return "TELMARION_ACCEPT_PICTURES=1 " + QCoreApplication::applicationFilePath().toStdString() +
         " --gtest_filter=" + test->test_suite_name() + "." + test->name();
}

// Leaves the pictures of a failure for a person to look at.
inline void Fail(const QString& name, const QImage& got, const QImage& difference,
                 const std::string& what) {
  const QDir folder(QCoreApplication::applicationDirPath() + QStringLiteral("/pictures"));
  folder.mkpath(QStringLiteral("."));
  const QString gotPath = folder.filePath(name + QStringLiteral("_got.png"));
  const QString differencePath = folder.filePath(name + QStringLiteral("_difference.png"));
  got.save(gotPath);
  if (!difference.isNull()) difference.save(differencePath);
  ADD_FAILURE() << name.toStdString() << ": " << what << "\n  came out:   " << gotPath.toStdString()
                << "\n  difference: " << differencePath.toStdString()
                << "\n  to accept:  " << AcceptCommand();
}

}  // namespace golden

// `folder` is where the accepted pictures are, seen from the top of the sources; `name` has no
// ending.
inline void ExpectGoldenPicture(const QImage& picture, const QString& folder, const QString& name) {
  const QString path = QStringLiteral(TELMARION_SOURCE_DIR "/%1/%2.png").arg(folder, name);
  const QImage got = picture.convertToFormat(QImage::Format_RGB32);
  if (qEnvironmentVariableIsSet("TELMARION_ACCEPT_PICTURES")) {
    ASSERT_TRUE(got.save(path)) << path.toStdString();
    return;
  }
  const QImage wanted = QImage(path).convertToFormat(QImage::Format_RGB32);
  if (wanted.isNull()) return golden::Fail(name, got, {}, "there is no accepted picture");
  if (wanted.size() != got.size()) return golden::Fail(name, got, {}, "the size differs");
  const golden::Difference difference = golden::Compare(got, wanted);
  if (difference.pixels > golden::kPixelTolerance) {
    golden::Fail(name, got, difference.picture,
                 std::to_string(difference.pixels) + " pixels differ");
  }
}
