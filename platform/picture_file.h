// A picture on the screen as a file.
#pragma once

#include <QImage>
#include <QString>

// Makes or replaces the file in one step, in a format such as "bmp" or "png". Returns what to tell
// the user when it failed: the file and the reason.
QString WritePictureFile(const QImage& image, const QString& path, const char* format);
