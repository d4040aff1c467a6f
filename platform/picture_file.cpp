#include "platform/picture_file.h"

#include <QBuffer>
#include <QImageWriter>

#include "storage/whole_file.h"

// Without transparency: a bitmap then has 24 bits per pixel.
QString WritePictureFile(const QImage& image, const QString& path, const char* format) {
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  QImageWriter writer(&bytes, format);
  const bool made = writer.write(image.convertToFormat(QImage::Format_RGB32));
  const QString reason = made ? WriteWholeFile(path, bytes.data()) : writer.errorString();
  return reason.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(path, reason);
}
