// The help file: where it lies, and whether it can be read.
#pragma once

#include <QHelpEngine>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>
#include <memory>

inline constexpr auto kHelpFileName = "Telmarion.hlp";

// Where the help file may lie, best place first, for a program in `programFolder`: beside it, where
// it is installed, and in the build tree.
QStringList HelpFolders(const QString& programFolder);

// The path of the help file in the first of `folders` that holds it; empty where none does.
QString FindHelpFile(const QStringList& folders);

// An opened help file. Its contents, index and search come from engine().
class HelpFile {
 public:
  // What Open() gives: the file, or why it could not be opened.
  struct Opened {
    std::unique_ptr<HelpFile> file;
    QString trouble;  // a text for the user; empty when `file` is there
  };

  // Every page is read once, so that a damaged file is found here and not page by page later.
  static Opened Open(const QString& path);

  QHelpEngine& engine() const { return *engine_; }

  // The page and place of a topic; the first page where the topic is not known.
  QUrl Topic(const QString& id) const;
  QUrl Home() const;

  // Every page, in no particular order.
  QList<QUrl> Pages() const;

 private:
  HelpFile() = default;
  QString Read(const QString& path);  // empty when all is well

  QTemporaryDir folder_;  // for what the engine writes: its collection and the search index
  std::unique_ptr<QHelpEngine> engine_;
  QString space_;  // the namespace that the pages were compiled into
};
