// A file dialog for tests: records what was asked and gives the path laid out for it. An unforeseen
// question and a question that was not asked fail the test.
#pragma once

#include <gtest/gtest.h>

#include <QList>
#include <ostream>
#include <utility>

#include "platform/file_dialog.h"

struct FileQuestion {
  QString kind;  // "open" or "save"
  QString filter;
  QString defaultExtension;
  QString proposedName;
  bool operator==(const FileQuestion&) const = default;
};

inline void PrintTo(const FileQuestion& question, std::ostream* out) {
  *out << question.kind.toStdString() << " [" << question.filter.toStdString() << "] "
       << question.defaultExtension.toStdString() << " " << question.proposedName.toStdString();
}

class RecordingFileDialog final : public FileDialog {
 public:
  RecordingFileDialog() = default;
  RecordingFileDialog(const RecordingFileDialog&) = delete;
  RecordingFileDialog& operator=(const RecordingFileDialog&) = delete;
  ~RecordingFileDialog() override {
    EXPECT_TRUE(answers_.isEmpty()) << "a file that the test expected was not asked for";
  }

  // Lays out the path for the next question; an empty one means that the user cancels.
  void Answers(const QString& path) { answers_.append(path); }

  // What was asked since the last call.
  QList<FileQuestion> Take() { return std::exchange(asked_, {}); }

  QString AskOpenFileName(QWidget*, const QString& filter) override {
    asked_.append({"open", filter, {}, {}});
    return Next();
  }
  QString AskSaveFileName(QWidget*, const QString& filter, const QString& defaultExtension,
                          const QString& proposedName) override {
    asked_.append({"save", filter, defaultExtension, proposedName});
    return Next();
  }

 private:
  QString Next() {
    if (answers_.isEmpty()) {
      ADD_FAILURE() << "a file was asked for without an answer laid out";
      return {};
    }
    return answers_.takeFirst();
  }

  QList<FileQuestion> asked_;
  QList<QString> answers_;
};
