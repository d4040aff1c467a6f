// The settings as a JSON file that is replaced as a whole.
#include "platform/settings_file.h"

#include <fcntl.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <cerrno>

#include "storage/whole_file.h"

namespace {

constexpr qint64 kLargest = 1 << 20;  // bytes; more is no file of ours

// What a file holds, or why it cannot be known. A file that is not there holds nothing, as does one
// that is damaged.
struct Contents {
  QJsonObject sections;
  QString trouble;
};

Contents Read(const QString& path) {
  // To wait for a pipe or a device could take forever.
  const int descriptor =
      ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return {{}, errno == ENOENT ? QString() : qt_error_string(errno)};
  QFile file;
  if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
    return {{}, file.errorString()};
  }
  if (file.isSequential()) return {{}, QStringLiteral("it is not a file")};
  const QByteArray bytes = file.read(kLargest);
  if (file.error() != QFileDevice::NoError) return {{}, file.errorString()};
  return {QJsonDocument::fromJson(bytes).object(), {}};
}

}  // namespace

QJsonObject SettingsFile::Section(const QString& name) const {
  return path_.isEmpty() ? QJsonObject() : Read(path_).sections.value(name).toObject();
}

QString SettingsFile::Keep(const QString& name, const QJsonObject& section) const {
  if (path_.isEmpty()) return {};
  Contents now = Read(path_);
  // To write what could not be read would be to lose the other sections.
  if (!now.trouble.isEmpty()) return now.trouble;
  if (now.sections.value(name) == QJsonValue(section)) return {};
  now.sections.insert(name, section);
  QDir().mkpath(QFileInfo(path_).absolutePath());  // a failure shows in what follows
  return WriteWholeFile(path_, QJsonDocument(now.sections).toJson());
}
