// The help window: contents, index and search beside the page.
#pragma once

#include <QMainWindow>
#include <QString>
#include <QStringList>
#include <memory>

#include "app/help_file.h"

class HelpPage;
class HelpSearch;
class MessageDoor;
class QAction;
class QHelpContentWidget;
class QHelpIndexWidget;
class QLineEdit;
class QTabWidget;
class QUrl;

class HelpWindow final : public QMainWindow {
 public:
  // A window on the first help file in `folders` (see HelpFolders). Without one, or with a damaged
  // one, says so at `door`, above `parent`, and gives none. The window is not modal, belongs to the
  // caller and does not keep the program running.
  static std::unique_ptr<HelpWindow> Open(const QStringList& folders, MessageDoor& door,
                                          QWidget* parent);

  explicit HelpWindow(std::unique_ptr<HelpFile> file);
  HelpWindow(const HelpWindow&) = delete;
  HelpWindow& operator=(const HelpWindow&) = delete;
  ~HelpWindow() override;

  // Opens the page of a topic and comes to the front. Topics are the ids of the keywords in
  // help/telmarion.qhp: "index", "first-case", "measurements", "entering", "results", "diagram",
  // "view3d", "printing", "files", "model", "messages", "keyboard", "uncertainty", and finer ones
  // such as "ce". An unknown one opens the first page.
  void ShowTopic(const QString& id);

 private:
  void BuildTools();
  void BuildKeys();
  QWidget* ContentsPane();
  QWidget* IndexPane();
  void ShowUrl(const QUrl& url);
  void FollowInContents(const QUrl& url);
  void SetZoom(int percent);
  void ShowSearch();
  void SwapFocus();

  std::unique_ptr<HelpFile> file_;
  HelpPage* page_;
  QTabWidget* panes_;
  QHelpContentWidget* contents_;
  QHelpIndexWidget* index_;
  QLineEdit* filter_;
  HelpSearch* search_;
  QAction* smaller_ = nullptr;
  QAction* larger_ = nullptr;
  int zoom_ = 100;  // percent
};
