// Writes bitmap files.
#include "view3d/bitmap_file.h"

#include <QBuffer>
#include <QImageWriter>

#include "storage/whole_file.h"

// The writer makes 24 bits of an image that has 32 and no transparency.
QString WriteBitmapFile(const QImage& image, const QString& path) {
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  QImageWriter writer(&bytes, "bmp");
  const bool made = writer.write(image.convertToFormat(QImage::Format_RGB32));
  const QString reason = made ? WriteWholeFile(path, bytes.data()) : writer.errorString();
  return reason.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(path, reason);
}
