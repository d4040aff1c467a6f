// The one door through which the user is asked for a file. Tests put their own here and give the
// path.
#pragma once

#include <QString>

class QWidget;

// A filter is classic text: description and pattern in turn, with bars between them, as in
// "Text (*.txt)|*.txt". Several patterns of one description have semicolons between them.
class FileDialog {
 public:
  FileDialog() = default;
  FileDialog(const FileDialog&) = delete;
  FileDialog& operator=(const FileDialog&) = delete;
  virtual ~FileDialog() = default;

  // The path of a file that exists; empty when the user has changed their mind.
  virtual QString AskOpenFileName(QWidget* parent, const QString& filter) = 0;

  // The path to write to; empty when the user has changed their mind. `defaultExtension` ("txt")
  // is added to a name that is typed without one; `proposedName` fills the dialog's name box.
  // The dialog itself asks before a file is replaced.
  virtual QString AskSaveFileName(QWidget* parent, const QString& filter,
                                  const QString& defaultExtension, const QString& proposedName) = 0;
};

// The door that people see: Qt's file dialog. It opens in the folder that was chosen last
// in this run, at first in the user's documents.
class SystemFileDialog final : public FileDialog {
 public:
  SystemFileDialog();
  QString AskOpenFileName(QWidget* parent, const QString& filter) override;
  QString AskSaveFileName(QWidget* parent, const QString& filter, const QString& defaultExtension,
                          const QString& proposedName) override;

 private:
  QString lastFolder_;
};
