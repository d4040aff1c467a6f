// Places for kept work, and how it is written.
#include "app/recovery_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtGlobal>

#include "storage/whole_file.h"

namespace {

constexpr int kPlaces = 16;  // sessions at a time whose work is kept

QString PlaceName(int place, const char* suffix) {
  return QStringLiteral("unsaved-case-%1.%2").arg(place).arg(QLatin1String(suffix));
}

// Opening or reading a pipe or a device could wait forever, and a link may lead to one.
bool IsFile(const QString& path) {
  return QFileInfo(path).isFile();
}

bool IsFree(const QString& path) {
  const QFileInfo info(path);
  return !info.exists() && !info.isSymLink();
}

bool IsFreeOrFile(const QString& path) {
  return IsFree(path) || IsFile(path);
}

// A lock is read by Qt to see whether its session is still alive, and so is the lock with
// which it takes away the lock of a dead one.
bool CanLock(const QString& path) {
  return IsFreeOrFile(path) && IsFreeOrFile(path + QStringLiteral(".rmlock"));
}

}  // namespace

RecoveryFile::RecoveryFile(const QString& folder) : folder_(folder) {
  if (folder_.isEmpty() || !QDir().mkpath(folder_)) return;
  pending_ = TakePlace(Wanted::KeptWork);
  if (!pending_) TakePlace(Wanted::Nothing);
}

bool RecoveryFile::TakePlace(Wanted wanted) {
  const QDir folder(folder_);
  for (int place = 1; place <= kPlaces; ++place) {
    const QString path = folder.filePath(PlaceName(place, "json"));
    const QString lockPath = folder.filePath(PlaceName(place, "lock"));
    if (!(wanted == Wanted::KeptWork ? IsFile(path) : IsFree(path))) continue;
    if (!CanLock(lockPath)) continue;
    auto lock = std::make_unique<QLockFile>(lockPath);
    lock->setStaleLockTime(
        0);  // a session may run for weeks; a dead one is recognised by its process
    if (!lock->tryLock()) continue;
    lock_ = std::move(lock);
    path_ = path;
    return true;
  }
  return false;
}

bool RecoveryFile::IsMarksOnly() const {
  QFile file(path_);
  if (!IsFile(path_) || !file.open(QIODevice::ReadOnly)) return false;
  const std::optional<KeptWork> work = Vse::ParseKeptWork(file.readAll());
  return work && work->IsMarksOnly();
}

std::optional<KeptWork> RecoveryFile::Read(QString& trouble) {
  QFile file(path_);
  const bool isFile = IsFile(path_);
  const bool opened = isFile && file.open(QIODevice::ReadOnly);
  std::optional<KeptWork> work;
  if (opened) work = Vse::ParseKeptWork(file.readAll());
  if (work && !work->IsEmpty()) return work;
  pending_ = false;
  const QString reason = opened   ? QStringLiteral("it is damaged")
                         : isFile ? file.errorString()
                                  : QStringLiteral("it is not a file");
  file.close();
  trouble = QStringLiteral("An unsaved case was kept, but it cannot be read: %1 (%2)")
                .arg(reason, QDir::toNativeSeparators(PutAside()));
  return std::nullopt;
}

// Where it cannot be put aside it stays, and its place is left to it.
QString RecoveryFile::PutAside() {
  QString path = path_;
  QString aside = path + QStringLiteral(".damaged");
  QFile::remove(aside);
  if (IsFile(path) && QFile::rename(path, aside)) return aside;
  Leave();
  return path;
}

void RecoveryFile::Discard() {
  pending_ = false;
  Remove();
}

void RecoveryFile::Leave() {
  pending_ = false;
  lock_.reset();
  path_.clear();
  TakePlace(Wanted::Nothing);
}

bool RecoveryFile::Keep(const KeptWork& work) {
  if (folder_.isEmpty() || pending_) return true;
  if (work.IsEmpty()) {
    if (IsFile(path_)) QFile::remove(path_);
    return true;
  }
  const bool possible = !path_.isEmpty() && IsFreeOrFile(path_);
  if (possible &&
      WriteWholeFile(path_, Vse::ComposeKeptWork(work), FileAccess::OwnerOnly).isEmpty()) {
    return true;
  }
  qWarning("The unsaved case could not be kept in %s", qUtf8Printable(folder_));
  return false;
}
