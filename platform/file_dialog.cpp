// Qt's file dialogs; the only place that uses them.
#include "platform/file_dialog.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStringList>

namespace {

// "Text (*.txt)|*.txt" as Qt's "Text (*.txt)".
QStringList NameFilters(const QString& filter) {
  static const QRegularExpression ownPattern(QStringLiteral("\\s*\\([^)]*\\)\\s*$"));
  const QStringList parts = filter.split(u'|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString description = QString(parts[i]).remove(ownPattern);
    const QString patterns = QString(parts[i + 1]).replace(u';', u' ');
    filters += QStringLiteral("%1 (%2)").arg(description, patterns);
  }
  return filters;
}

// Empty when the user has changed their mind.
QString Ask(QFileDialog& dialog, QString& lastFolder) {
  if (dialog.exec() != QDialog::Accepted) return {};
  QString path = dialog.selectedFiles().value(0);
  lastFolder = QFileInfo(path).absolutePath();
  return path;
}

}  // namespace

SystemFileDialog::SystemFileDialog()
    : lastFolder_(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)) {}

QString SystemFileDialog::AskOpenFileName(QWidget* parent, const QString& filter) {
  QFileDialog dialog(parent, QString(), lastFolder_);
  dialog.setNameFilters(NameFilters(filter));
  dialog.setFileMode(QFileDialog::ExistingFile);
  return Ask(dialog, lastFolder_);
}

QString SystemFileDialog::AskSaveFileName(QWidget* parent, const QString& filter,
                                          const QString& defaultExtension,
                                          const QString& proposedName) {
  QFileDialog dialog(parent, QString(), lastFolder_);
  dialog.setNameFilters(NameFilters(filter));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(defaultExtension);
  dialog.selectFile(proposedName);
  return Ask(dialog, lastFolder_);
}
