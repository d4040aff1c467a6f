// QSaveFile alone does not look at what its last flush and its syncing say: on a full or a broken
// disk a shortened file would take the place of the old one.
#include "storage/whole_file.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace {

QString Sync(int descriptor) {
  while (fdatasync(descriptor) != 0) {
    if (errno == EINTR) continue;
    const bool cannotSync = errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
    if (cannotSync) break;  // some file systems never can
    return QString::fromStdString(std::generic_category().message(errno));
  }
  return {};
}

}  // namespace

QString WriteWholeFile(const QString& path, const QByteArray& bytes) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
    return file.errorString();
  }
  return CommitWholeFile(file);
}

QString CommitWholeFile(QSaveFile& file) {
  if (!file.flush()) return file.errorString();
  const QString reason = Sync(file.handle());
  if (!reason.isEmpty()) return reason;
  return file.commit() ? QString() : file.errorString();
}
