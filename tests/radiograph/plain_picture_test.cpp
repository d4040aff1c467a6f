// Pictures that are no DICOM: PNG, JPEG, TIFF and BMP.
#include <QImage>
#include <QImageWriter>
#include <QtEndian>

#include "tests/radiograph/sample_files.h"
#include "tests/support/row_name.h"

using namespace Radiography;

namespace {

class PlainPicture : public ReadingFiles {
 protected:
  std::string SaveImage(const QImage& image, const char* format) const {
    const std::string path = Path("picture");
    QImageWriter writer(QString::fromStdString(path), format);
    EXPECT_TRUE(writer.write(image)) << format << writer.errorString().toStdString();
    return path;
  }
};

// Rises from black to almost white, pixel by pixel.
QImage MakeGrey(QImage::Format format) {
  QImage image(37, 20, QImage::Format_Grayscale16);
  for (int y = 0; y < image.height(); ++y) {
    auto* line = reinterpret_cast<quint16*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) line[x] = static_cast<quint16>((y * 37 + x) * 88);
  }
  return image.convertToFormat(format);
}

TEST_F(PlainPicture, Of16BitsKeepsThem) {
  for (const char* format : {"png", "tiff"}) {
    const Radiograph radiograph = MustRead(SaveImage(MakeGrey(QImage::Format_Grayscale16), format));
    EXPECT_EQ(radiograph.bits, 16) << format;
    ASSERT_EQ(radiograph.levels.size(), 740U);
    for (int i = 0; i < 740; ++i) ASSERT_EQ(radiograph.levels[std::size_t(i)], i * 88) << format;
  }
}

TEST_F(PlainPicture, Of8BitsIsReadInEveryFormat) {
  const QImage grey = MakeGrey(QImage::Format_Grayscale8);
  for (const char* format : {"png", "tiff", "bmp", "jpeg"}) {
    const Radiograph radiograph = MustRead(SaveImage(grey, format));
    EXPECT_EQ(radiograph.bits, 8) << format;
    EXPECT_EQ(radiograph.width, 37);
    EXPECT_EQ(radiograph.height, 20);
    const int loss = std::string(format) == "jpeg" ? 12 : 0;
    for (int i = 0; i < 740; ++i) {
      ASSERT_NEAR(radiograph.levels[std::size_t(i)], qGray(grey.pixel(i % 37, i / 37)), loss)
          << format;
    }
  }
}

TEST_F(PlainPicture, StoredAsColoursThatAreGreyIsGrey) {
  const Radiograph radiograph = MustRead(
      SaveImage(MakeGrey(QImage::Format_Grayscale8).convertToFormat(QImage::Format_RGB32), "png"));
  EXPECT_EQ(radiograph.bits, 8);
  EXPECT_EQ(radiograph.levels[3], 1);
}

TEST_F(PlainPicture, InColourIsRefused) {
  QImage image = MakeGrey(QImage::Format_RGB32);
  image.setPixel(5, 5, qRgb(200, 10, 10));
  for (const char* format : {"png", "tiff", "bmp"}) {
    EXPECT_EQ(MustFail(SaveImage(image, format)).trouble, ReadTrouble::Colour) << format;
  }
}

// A scanner may store white as zero; shown as it is meant, not as its negative.
TEST_F(PlainPicture, InTiffWithWhiteAsZeroIsShownAsMeant) {
  const std::string path = SaveImage(MakeGrey(QImage::Format_Grayscale8), "png");
  for (const char* depth : {"8", "16"}) {
    const std::string tiff = Path("white.tiff");
    ASSERT_EQ(QProcess::execute("convert",
                                {"png:" + QString::fromStdString(path), "-depth", depth, "-define",
                                 "quantum:polarity=min-is-white", QString::fromStdString(tiff)}),
              0);
    QProcess other;  // another reader
    other.start("convert", {tiff.c_str(), "-depth", "8", "gray:-"});
    ASSERT_TRUE(other.waitForFinished());
    const QByteArray meant = other.readAllStandardOutput();
    const Radiograph radiograph = MustRead(tiff);
    ASSERT_EQ(meant.size(), 740);
    for (int i = 0; i < 740; ++i) {
      const int level = radiograph.levels[std::size_t(i)] >> (radiograph.bits - 8);
      ASSERT_NEAR(level, static_cast<uchar>(meant[i]), 1) << depth;
    }
  }
}

TEST_F(PlainPicture, HasNoScaleAndNoPatient) {
  QImage image = MakeGrey(QImage::Format_Grayscale8);
  image.setDotsPerMeterX(7000);
  image.setDotsPerMeterY(7000);
  const Radiograph radiograph = MustRead(SaveImage(image, "png"));
  EXPECT_EQ(radiograph.scale, ScaleAttributes());
  EXPECT_EQ(FindScale(radiograph.scale).rule, ScaleRule::None);
  EXPECT_EQ(radiograph.patient, Patient());
  EXPECT_EQ(radiograph.sha256.size(), 64U);
}

TEST_F(PlainPicture, CutShortAnywhereIsRefusedOrWhole) {
  for (const char* format : {"png", "tiff", "bmp", "jpeg"}) {
    const std::string path = SaveImage(MakeGrey(QImage::Format_Grayscale8), format);
    const QByteArray whole = BytesOf(path);
    for (qsizetype part = 0; part < 10; ++part) {
      const ReadResult result = Read(Save("cut", whole.left(whole.size() * part / 10)));
      const auto* failure = std::get_if<ReadFailure>(&result);
      ASSERT_NE(failure, nullptr) << format << part;
      EXPECT_NE(failure->trouble, ReadTrouble::DecoderDied) << format << part;
    }
  }
}

TEST_F(PlainPicture, OfTooManyPixelsIsRefusedBeforeItIsDecoded) {
  QByteArray png = BytesOf(SaveImage(MakeGrey(QImage::Format_Grayscale8), "png"));
  qToBigEndian<quint32>(20000, png.data() + 16);  // the width, in the head
  qToBigEndian<quint32>(0, png.data() + 29);      // which has a check sum behind it
  const ReadFailure failure = MustFail(Save("wide.png", png));
  EXPECT_TRUE(failure.trouble == ReadTrouble::TooLarge || failure.trouble == ReadTrouble::Damaged);
  QByteArray bmp = BytesOf(SaveImage(MakeGrey(QImage::Format_Grayscale8), "bmp"));
  qToLittleEndian<quint32>(20000, bmp.data() + 18);
  EXPECT_EQ(MustFail(Save("wide.bmp", bmp)).trouble, ReadTrouble::TooLarge);
}

}  // namespace
