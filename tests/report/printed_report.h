// Prints a report into a PDF and reads it back.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "report/report.h"
#include "tests/report/report_cases.h"
#include "tests/support/pdf_pages.h"
#include "tests/support/recording_print_dialog.h"

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
