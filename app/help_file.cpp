// Finds, checks and opens the help file.
#include "app/help_file.h"

#include <QDir>
#include <QFileInfo>
#include <QHelpLink>
#include <algorithm>
#include <utility>

QStringList HelpFolders(const QString& programFolder) {
  const QDir folder(programFolder);
  QStringList folders;
  for (const char* place : {".", "../share/telmarion", "../help"}) {
    folders.append(QDir::cleanPath(folder.absoluteFilePath(QString::fromLatin1(place))));
  }
  return folders;
}

QString FindHelpFile(const QStringList& folders) {
  for (const QString& folder : folders) {
    const QFileInfo file(QDir(folder), QString::fromLatin1(kHelpFileName));
    if (file.isFile()) return file.absoluteFilePath();
  }
  return {};
}

HelpFile::Opened HelpFile::Open(const QString& path) {
  std::unique_ptr<HelpFile> file(new HelpFile);
  const QString trouble = file->Read(path);
  if (trouble.isEmpty()) return {std::move(file), {}};
  return {nullptr, trouble};
}

QString HelpFile::Read(const QString& path) {
  const QString name = QDir::toNativeSeparators(path);
  QString damaged = QStringLiteral("The help file \"%1\" is damaged or cannot be read.").arg(name);
  if (!folder_.isValid()) {
    return QStringLiteral("The help file \"%1\" cannot be shown: %2")
        .arg(name, folder_.errorString());
  }
  space_ = QHelpEngineCore::namespaceName(path);
  if (space_.isEmpty()) return damaged;

  engine_ = std::make_unique<QHelpEngine>(folder_.filePath("help.qhc"));
  engine_->setReadOnly(false);
  engine_->setUsesFilterEngine(true);
  engine_->searchEngine();  // made before the set-up, at whose end it begins its index
  if (!engine_->setupData() || !engine_->registerDocumentation(path)) {
    return damaged + "\n" + engine_->error();
  }
  const QList<QUrl> pages = Pages();
  const bool whole = pages.contains(Home()) && std::ranges::all_of(pages, [&](const QUrl& page) {
                       return !engine_->fileData(page).isEmpty();
                     });
  if (!whole) return damaged;
  engine_->setupData();  // once more, now that there are contents to show and to search
  return {};
}

QUrl HelpFile::Home() const {
  return QUrl(QStringLiteral("qthelp://%1/help/index.html").arg(space_));
}

QUrl HelpFile::Topic(const QString& id) const {
  const QList<QHelpLink> links = engine_->documentsForIdentifier(id);
  return links.isEmpty() ? Home() : links.first().url;
}

QList<QUrl> HelpFile::Pages() const {
  return engine_->files(space_, QString(), QStringLiteral("html"));
}
