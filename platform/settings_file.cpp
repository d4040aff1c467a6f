// The settings as a JSON file that is replaced as a whole.
#include "platform/settings_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include "storage/whole_file.h"

namespace {

constexpr qint64 kLargest = 1 << 20;  // bytes; more is no file of ours

// Opening or reading a pipe or a device could wait forever.
bool IsSomethingElse(const QFileInfo& info) {
  return info.exists() && !info.isFile();
}

}  // namespace

QJsonObject SettingsFile::Read() const {
  if (path_.isEmpty() || !QFileInfo(path_).isFile()) return {};
  QFile file(path_);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QJsonDocument::fromJson(file.read(kLargest)).object();
}

QJsonObject SettingsFile::Section(const QString& name) const {
  return Read().value(name).toObject();
}

QString SettingsFile::Keep(const QString& name, const QJsonObject& section) const {
  if (path_.isEmpty()) return {};
  const QFileInfo info(path_);
  if (IsSomethingElse(info)) return QStringLiteral("it is not a file");
  QJsonObject all = Read();
  if (all.value(name) == QJsonValue(section)) return {};
  all.insert(name, section);
  QDir().mkpath(info.absolutePath());  // a failure shows in what follows
  return WriteWholeFile(path_, QJsonDocument(all).toJson());
}
