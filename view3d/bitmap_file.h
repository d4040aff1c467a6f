// Pictures as bitmap files.
#pragma once

#include <QImage>
#include <QString>

// Writes a BMP of 24 bits a pixel. A file that is there already is replaced only when all has been
// written. Gives what to tell the user when that failed: the file and the system's reason.
QString WriteBitmapFile(const QImage& image, const QString& path);
