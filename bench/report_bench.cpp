// The printed report into a PDF file: one page, comments of fifty pages and
// of a mebibyte.
#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <cstdlib>

#include "bench/mebibyte.h"
#include "case/case_texts.h"
#include "platform/print_dialog.h"
#include "report/report.h"
#include "tests/report/report_cases.h"

namespace {

constexpr int kWordsOfFiftyPages = 19'600;

void PrintReport(benchmark::State& state, const QString& comments) {
  int pages = 0;
  const QTemporaryDir folder;
  const CaseRecord record = WithComments(comments);
  const ResultTexts results = Vse::ResultTextsOf(record, German());
  for (auto _ : state) {
    PdfTarget target(folder.filePath(QStringLiteral("report.pdf")), Print::kTitle.toString(),
                     UsualPage(German()));
    PrinterPage page(target);
    page.SetFontName(QStringLiteral("Times New Roman"));
    const Print::Sheet sheet{page, QStringLiteral("15.11.2026")};
    Print::PrintPageHeader(sheet, Print::kTitle.toString());
    if (!Print::PrintReport(sheet, {record, results, German()}).isEmpty()) std::abort();
    pages = page.PageNumber();
  }
  state.counters["pages"] = pages;
}

void OnePage(benchmark::State& state) {
  PrintReport(state, QStringLiteral("Control after two years"));
}

void FiftyPages(benchmark::State& state) {
  QString words;
  for (int i = 1; i <= kWordsOfFiftyPages; ++i) words += QStringLiteral("word%1 ").arg(i);
  PrintReport(state, words);
}

BENCHMARK(OnePage)->Unit(benchmark::kMillisecond);
BENCHMARK(FiftyPages)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  return RunWithMebibytes(argc, argv, {{"Mebibyte", PrintReport}});
}
