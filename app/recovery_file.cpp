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
    if (QFileInfo::exists(path) != (wanted == Wanted::KeptWork)) continue;
    auto lock = std::make_unique<QLockFile>(folder.filePath(PlaceName(place, "lock")));
    lock->setStaleLockTime(0);  // a session may run for weeks; a dead one is told by its process
    if (!lock->tryLock()) continue;
    lock_ = std::move(lock);
    path_ = path;
    return true;
  }
  return false;
}

std::optional<KeptWork> RecoveryFile::Read(QString& trouble) {
  QFile file(path_);
  const bool opened = file.open(QIODevice::ReadOnly);
  std::optional<KeptWork> work;
  if (opened) work = Vse::ParseKeptWork(file.readAll());
  if (work && !work->IsEmpty()) return work;
  pending_ = false;
  const QString reason = opened ? QStringLiteral("it is damaged") : file.errorString();
  file.close();
  const QString aside = path_ + QStringLiteral(".damaged");
  QFile::remove(aside);
  const QString place = QFile::rename(path_, aside) ? aside : path_;
  trouble = QStringLiteral("An unsaved case was kept, but it cannot be read: %1 (%2)")
                .arg(reason, QDir::toNativeSeparators(place));
  return std::nullopt;
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

void RecoveryFile::Keep(const KeptWork& work) {
  if (path_.isEmpty() || pending_) return;
  if (work.IsEmpty()) {
    QFile::remove(path_);
  } else if (!WriteWholeFile(path_, Vse::ComposeKeptWork(work), FileAccess::OwnerOnly).isEmpty()) {
    qWarning("The unsaved case could not be kept in %s", qUtf8Printable(path_));
  }
}
