// The report through a real print queue.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTimer>
#include <memory>

#include "case/case_texts.h"
#include "platform/print_dialog.h"
#include "report/report.h"
#include "tests/report/report_cases.h"
#include "tests/support/pdf_pages.h"
#include "tests/support/private_print_server.h"

namespace {

class PrintQueue : public testing::Test {
 protected:
  static void SetUpTestSuite() { server_ = std::make_unique<PrivatePrintServer>(); }
  static void TearDownTestSuite() { server_.reset(); }

  void SetUp() override {
    const QString problem = server_->Start();
    // A print server may not be allowed where the tests run (a sandbox without sockets, say); the
    // program's own part in printing is tested without one.
    if (!problem.isEmpty()) GTEST_SKIP() << problem.toStdString();
  }

  // As the print dialog gives it for the queue.
  std::unique_ptr<PrintTarget> Target() const {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setPrinterName(server_->Queue());
    printer->setDocName(Print::kTitle.toString());
    printer->setCreator(Print::kTitle.toString());
    printer->setPageSize(UsualPage(German()).pageSize());
    EXPECT_EQ(printer->outputFormat(), QPrinter::NativeFormat);
    return std::make_unique<PrinterTarget>(std::move(printer));
  }

  QString PrintUsualCase(PrintTarget& target) const {
    const CaseRecord record = WithComments(QString("Line\n").repeated(60));
    const ResultTexts results = Vse::ResultTextsOf(record, German());
    return Print::PrintCase(target, {record, results, German()}, PrintedDate());
  }

  static std::unique_ptr<PrivatePrintServer> server_;
};

std::unique_ptr<PrivatePrintServer> PrintQueue::server_;

TEST_F(PrintQueue, DeliversTheWholeReport) {
  ASSERT_EQ(QPrinterInfo::availablePrinterNames(), QStringList(server_->Queue()));
  const auto target = Target();
  ASSERT_EQ(PrintUsualCase(*target).toStdString(), "");
  const auto job = server_->Job();
  ASSERT_TRUE(job) << server_->Log().toStdString();
  EXPECT_EQ(server_->JobTitle(), "TELMARION");
  const PdfPages pdf(*job);
  ASSERT_EQ(pdf.Count(), 2);
  EXPECT_NEAR(pdf.PaperOf(1).width(), 11906.0, 10.0);
  EXPECT_EQ(pdf.Title(), "TELMARION");
  EXPECT_TRUE(pdf.Properties().filter("Novak").isEmpty());
  EXPECT_NEAR(pdf.Line(1, "Name : Novak Marija").x, 720.0, 15.0);
  EXPECT_NEAR(pdf.Line(1, "lizm = 10,4 cm").x, 11906.0 / 2.0, 15.0);
  EXPECT_NEAR(pdf.Line(1, "Page 1").right, 11906.0 - 720.0, 15.0);
  EXPECT_NEAR(pdf.Line(1, "15.11.2026").y, 16838.0 - 720.0, 15.0);
  pdf.Line(2, "New Page");
  pdf.Line(2, "Theta-R = 8,47 °");
  pdf.Line(2, "D");
  for (const poppler::font_info& font : pdf.Fonts()) EXPECT_TRUE(font.is_embedded());
}

// Through the system's dialog: the printer is there to choose, and the paper that was laid out
// stays.
TEST_F(PrintQueue, IsOfferedByTheDialog) {
  QTimer::singleShot(0, [] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    auto* printers = dialog->findChild<QComboBox*>("printers");
    ASSERT_NE(printers, nullptr);
    ASSERT_GE(printers->findText(server_->Queue()), 0);
    printers->setCurrentIndex(printers->findText(server_->Queue()));
    dialog->accept();
  });
  const auto target = SystemPrintDialog().AskPrinter(nullptr, "TELMARION", American());
  ASSERT_NE(target, nullptr);
  ASSERT_EQ(PrintUsualCase(*target).toStdString(), "");
  const auto job = server_->Job();
  ASSERT_TRUE(job) << server_->Log().toStdString();
  EXPECT_EQ(server_->JobTitle(), "TELMARION");
  EXPECT_EQ(PdfPages(*job).PaperOf(1), QSizeF(12240, 15840));
}

TEST_F(PrintQueue, ARefusedJobIsReported) {
  const auto target = Target();
  server_->RefuseJobs();
  EXPECT_EQ(PrintUsualCase(*target),
            "Printer paper cannot print: Destination \"paper\" is not accepting jobs.");
}

// The document waits there until it is sent.
TEST_F(PrintQueue, AFullTemporaryFolderIsReported) {
  const auto target = Target();
  const QByteArray before = qgetenv("TMPDIR");
  qputenv("TMPDIR", "/proc");  // has room for nothing
  const QString error = PrintUsualCase(*target);
  before.isEmpty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
  EXPECT_EQ(error, "Printer paper cannot print: no space left in /proc");
}

TEST_F(PrintQueue, AServerThatHasGoneIsReported) {
  const auto target = Target();
  server_->Stop();
  const QString error = PrintUsualCase(*target);
  EXPECT_TRUE(error.startsWith("Printer paper cannot print: ")) << error.toStdString();
}

// An earlier failure does not stick to the next document.
TEST_F(PrintQueue, PrintsAgainAfterARefusal) {
  const auto first = Target();
  server_->RefuseJobs();
  EXPECT_NE(PrintUsualCase(*first), "");
  server_->TakeJobs();
  const auto second = Target();
  EXPECT_EQ(PrintUsualCase(*second).toStdString(), "");
  EXPECT_TRUE(server_->Job());
}

}  // namespace
