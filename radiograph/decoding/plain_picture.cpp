#include "radiograph/decoding/plain_picture.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <array>
#include <cstring>

#include "radiograph/decoding/codestream_size.h"

namespace Radiography {

namespace {

constexpr std::array kFormats = {"png", "jpeg", "tiff", "bmp"};

bool IsFormat(const QByteArray& format) {
  return std::find(kFormats.begin(), kFormats.end(), format) != kFormats.end();
}

QImage Read(QBuffer& buffer, const PictureLimits& limits) {
  const QByteArray format = QImageReader::imageFormat(&buffer);
  if (!IsFormat(format)) Refuse(ReadTrouble::NotAPicture);
  QImageReader reader(&buffer, format);
  reader.setAutoTransform(false);  // marks are kept in the pixels of the file
  const QSize size = reader.size();
  if (!size.isValid()) Refuse(ReadTrouble::Damaged);
  if (IsTooLarge(size.width(), size.height(), 1, limits)) Refuse(ReadTrouble::TooLarge);
  const Bytes bytes(reinterpret_cast<const std::uint8_t*>(buffer.data().constData()),
                    static_cast<std::size_t>(buffer.size()));
  if (format == "jpeg" && !JpegEnds(bytes)) Refuse(ReadTrouble::CutShort);
  if (format == "bmp" && !BmpEnds(bytes)) Refuse(ReadTrouble::CutShort);
  QImageReader::setAllocationLimit(static_cast<int>(limits.bytes >> 20));
  QImage image = reader.read();
  if (!image.isNull()) return image;
  Refuse(ReadTrouble::Damaged, reader.errorString().toStdString());
}

bool IsGrey(const QImage& image) {
  return image.format() == QImage::Format_Grayscale16 || image.isGrayscale() || image.allGray();
}

// Colours of more than 8 bits are kept only where the picture is grey throughout.
QImage Grey(const QImage& image) {
  if (!IsGrey(image)) Refuse(ReadTrouble::Colour);
  const bool deep =
      image.format() == QImage::Format_Grayscale16 || image.pixelFormat().bitsPerPixel() > 32;
  const auto format = deep ? QImage::Format_Grayscale16 : QImage::Format_Grayscale8;
  return image.format() == format ? image : image.convertToFormat(format);
}

void CopyLevels(const QImage& image, Radiograph& radiograph) {
  const bool deep = image.format() == QImage::Format_Grayscale16;
  const auto width = static_cast<std::size_t>(image.width());
  radiograph.width = image.width();
  radiograph.height = image.height();
  radiograph.bits = deep ? 16 : 8;
  radiograph.levels.resize(width * static_cast<std::size_t>(image.height()));
  std::uint16_t* to = radiograph.levels.data();
  for (int y = 0; y < image.height(); ++y, to += width) {
    const uchar* line = image.constScanLine(y);
    if (deep) {
      std::memcpy(to, line, 2 * width);
    } else {
      std::copy(line, line + width, to);
    }
  }
}

}  // namespace

Radiograph DecodePlainPicture(Bytes file, const PictureLimits& limits) {
  QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()),
                                             static_cast<qsizetype>(file.size()));
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  Radiograph radiograph;
  CopyLevels(Grey(Read(buffer, limits)), radiograph);
  return radiograph;
}

}  // namespace Radiography
