// Prints a report into a PDF and reads it back.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "case/case_texts.h"
#include "report/report.h"
#include "tests/report/report_cases.h"
#include "tests/support/pdf_pages.h"
#include "tests/support/recording_print_dialog.h"

// Twips.
inline constexpr double kA4Width = 11906.0;
inline constexpr double kA4Height = 16838.0;
inline constexpr double kNear = 15.0;               // where a reader sees a letter begin
inline constexpr double kLine10 = 10 * 20 * 1.149;  // from line to line in 10 points
inline constexpr double kLine13 = 13 * 20 * 1.149;

inline void PrintInto(const QString& path, const CaseRecord& record, const QLocale& locale,
                      const ResultTexts& results) {
  RecordingPrintDialog dialog;
  dialog.Answers(path);
  const auto target = dialog.AskPrinter(nullptr, Print::kTitle.toString(), locale);
  EXPECT_EQ(Print::PrintCase(*target, {record, results, locale}, PrintedDate()).toStdString(), "");
}

inline void PrintInto(const QString& path, const CaseRecord& record, const QLocale& locale) {
  PrintInto(path, record, locale, Vse::ResultTextsOf(record, locale));
}

inline PdfPages PrintedReport(const CaseRecord& record, const QLocale& locale,
                              const ResultTexts& results) {
  const QTemporaryDir folder;
  PrintInto(folder.filePath("report.pdf"), record, locale, results);
  return PdfPages(folder.filePath("report.pdf"));
}

inline PdfPages PrintedReport(const CaseRecord& record, const QLocale& locale) {
  return PrintedReport(record, locale, Vse::ResultTextsOf(record, locale));
}
