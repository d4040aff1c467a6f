// The search pane of the help window: a box for words and the pages that hold them. Qt Help's own
// query box takes "R/Wb" for a command, and its list of results cannot be walked by the keyboard.
#pragma once

#include <QString>
#include <QUrl>
#include <QWidget>

class QHelpSearchEngine;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

class HelpSearch final : public QWidget {
  Q_OBJECT

 public:
  explicit HelpSearch(QHelpSearchEngine& engine, QWidget* parent = nullptr);

  // Puts the cursor into the box, its text selected.
  void Begin();

 signals:
  // A page was chosen; `word` is the first that was looked for.
  void Chosen(const QUrl& url, const QString& word);

 private:
  void Search();
  void ShowResults();
  void Choose(const QListWidgetItem* item);

  QHelpSearchEngine& engine_;
  QLineEdit* box_;
  QLabel* status_;
  QListWidget* results_;
  bool indexed_ = false;
  bool wanted_ = false;  // a search waits for the index
};
