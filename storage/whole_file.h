// Files that appear whole or not at all: written beside their place, brought to the disk, then
// moved there in one step.
#pragma once

#include <QByteArray>
#include <QSaveFile>
#include <QString>

// Both give the system's reason when they fail, and an empty text when the file stands whole in its
// place. After a failure the file that was there before is untouched, and no other is left behind.

// Makes or replaces the file at `path`.
QString WriteWholeFile(const QString& path, const QByteArray& bytes);

// The end of a file that has been written piece by piece. Nothing may be written to it afterwards.
QString CommitWholeFile(QSaveFile& file);
