// Writes bitmap files.
#include "view3d/bitmap_file.h"

#include <QImageWriter>
#include <QSaveFile>

namespace {

QString Failure(const QString& path, const QString& reason) {
  return QStringLiteral("%1: %2").arg(path, reason);
}

}  // namespace

// The writer makes 24 bits of an image that has 32 and no transparency.
QString WriteBitmapFile(const QImage& image, const QString& path) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return Failure(path, file.errorString());
  QImageWriter writer(&file, "bmp");
  if (!writer.write(image.convertToFormat(QImage::Format_RGB32))) {
    return Failure(path, writer.errorString());
  }
  if (!file.commit()) return Failure(path, file.errorString());
  return {};
}
