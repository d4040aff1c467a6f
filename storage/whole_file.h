// Files that appear whole or not at all: written beside their place, brought to the disk, then
// moved there in one step.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QSaveFile>
#include <QString>

// Each gives the system's reason when it fails, else an empty text.

// Makes or replaces the file at `path`. After a failure the file that was there before is
// untouched, and no other is left behind.
QString WriteWholeFile(const QString& path, const QByteArray& bytes);

// The same piece by piece: for an open file any number of pieces, then the commit, after which
// nothing may be written. A file that is destroyed without it is as if it had failed.
QString WritePiece(QSaveFile& file, QByteArrayView bytes);
QString CommitWholeFile(QSaveFile& file);
