// A print dialog for tests: records what was asked and gives the PDF file laid out for it. An
// unforeseen question and a question that was not asked fail the test.
#pragma once

#include <gtest/gtest.h>

#include <QList>
#include <memory>
#include <utility>

#include "platform/print_dialog.h"

class RecordingPrintDialog final : public PrintDialog {
 public:
  RecordingPrintDialog() = default;
  RecordingPrintDialog(const RecordingPrintDialog&) = delete;
  RecordingPrintDialog& operator=(const RecordingPrintDialog&) = delete;
  ~RecordingPrintDialog() override {
    EXPECT_TRUE(answers_.isEmpty()) << "a printer that the test expected was not asked for";
  }

  // Lays out the PDF file for the next question; an empty path means that the user cancels.
  void Answers(const QString& path) { answers_.append(path); }

  // The titles that were asked with since the last call.
  QList<QString> Take() { return std::exchange(asked_, {}); }

  std::unique_ptr<PrintTarget> AskPrinter(QWidget*, const QString& title,
                                          const QLocale& locale) override {
    asked_.append(title);
    if (answers_.isEmpty()) {
      ADD_FAILURE() << "a printer was asked for without an answer laid out";
      return nullptr;
    }
    const QString path = answers_.takeFirst();
    if (path.isEmpty()) return nullptr;
    return std::make_unique<PdfTarget>(path, title, UsualPage(locale));
  }

 private:
  QList<QString> asked_;
  QList<QString> answers_;
};
