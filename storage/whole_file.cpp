// QSaveFile alone does not look at what its last flush, its syncing and its look at the old file
// say: on a full or a broken disk a shortened file would take the place of the old one, or one that
// nobody can open.
#include "storage/whole_file.h"

#include <cerrno>
#include <system_error>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

// 0 when the file's bytes are on the disk; else errno tells why not.
int BringToDisk(int descriptor) {
#if defined(Q_OS_WIN)
  return _commit(descriptor);
#elif defined(Q_OS_DARWIN)
  return fsync(descriptor);  // there is no fdatasync
#else
  return fdatasync(descriptor);
#endif
}

QString Sync(int descriptor) {
  while (BringToDisk(descriptor) != 0) {
    if (errno == EINTR) continue;
    const bool cannotSync = errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
    if (cannotSync) break;  // some file systems never can
    return QString::fromStdString(std::generic_category().message(errno));
  }
  return {};
}

// QSaveFile gives a new file the permissions of the old one. Where the system does not tell them it
// takes that for none at all, and its owner could not open the file any more.
void LetTheOwnerOpen(QSaveFile& file) {
  constexpr auto kOwner = QSaveFile::ReadOwner | QSaveFile::WriteOwner;
  if (!(file.permissions() & kOwner)) file.setPermissions(kOwner);
}

}  // namespace

QString WriteWholeFile(const QString& path, const QByteArray& bytes) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return file.errorString();
  QString reason = WritePiece(file, bytes);
  if (reason.isEmpty()) reason = CommitWholeFile(file);
  return reason;
}

// On a disk that fills up the first call writes what still fits, the second tells the reason.
QString WritePiece(QSaveFile& file, QByteArrayView bytes) {
  while (!bytes.isEmpty()) {
    const qint64 count = file.write(bytes.data(), bytes.size());
    if (count <= 0) return file.errorString();
    bytes = bytes.sliced(count);
  }
  return {};
}

QString CommitWholeFile(QSaveFile& file) {
  if (!file.flush() && !file.flush()) return file.errorString();  // twice, as above
  LetTheOwnerOpen(file);
  QString reason = Sync(file.handle());
  if (reason.isEmpty() && !file.commit()) reason = file.errorString();
  return reason;
}
