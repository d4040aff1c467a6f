// What the user has set, kept between sessions in one file of our own. Without the file everything
// works.
#pragma once

#include <QJsonObject>
#include <QString>

class SettingsFile {
 public:
  // The file need not be there, nor its folder. With an empty path nothing is ever kept.
  explicit SettingsFile(QString path) : path_(std::move(path)) {}

  // What was kept under this name; empty when nothing was, or when the file cannot be read.
  QJsonObject Section(const QString& name) const;

  // Puts the section in place of what was kept under its name; the others stay as they are in the
  // file by now. Gives the reason when it cannot be kept, which is also when they cannot be read;
  // else an empty text.
  QString Keep(const QString& name, const QJsonObject& section) const;

 private:
  QString path_;
};
