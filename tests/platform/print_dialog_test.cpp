// The real print dialog, where there is no printer: it offers a PDF file.
#include "platform/print_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <string>

#include "platform/printer_page.h"
#include "tests/support/pdf_pages.h"
#include "tests/support/row_name.h"

namespace {

struct LocaleRow {
  std::string name;
  QLocale locale;
  QPageSize::PageSizeId paper;
};

class UsualPaper : public testing::TestWithParam<LocaleRow> {};

TEST_P(UsualPaper, IsThatOfTheCountryUpright) {
  const QPageLayout page = UsualPage(GetParam().locale);
  EXPECT_EQ(page.pageSize().id(), GetParam().paper);
  EXPECT_EQ(page.orientation(), QPageLayout::Portrait);
}

std::vector<LocaleRow> Locales() {
  return {{"Germany", {QLocale::German, QLocale::Germany}, QPageSize::A4},
          {"Slovenia", {QLocale::Slovenian, QLocale::Slovenia}, QPageSize::A4},
          {"Britain", {QLocale::English, QLocale::UnitedKingdom}, QPageSize::A4},
          {"NoLocale", QLocale::c(), QPageSize::A4},
          {"UnitedStates", {QLocale::English, QLocale::UnitedStates}, QPageSize::Letter},
          {"Canada", {QLocale::French, QLocale::Canada}, QPageSize::Letter},
          {"Mexico", {QLocale::Spanish, QLocale::Mexico}, QPageSize::Letter}};
}

INSTANTIATE_TEST_SUITE_P(Rows, UsualPaper, testing::ValuesIn(Locales()), RowName());

class SystemPrintDialogTest : public testing::TestWithParam<LocaleRow> {
 protected:
  // A place where nobody answers: the machine's own printers do not come into the test.
  static void SetUpTestSuite() { qputenv("CUPS_SERVER", "127.0.0.1:1"); }

  std::unique_ptr<PrintTarget> Ask(const std::function<void(QPrintDialog&)>& act) {
    bool seen = false;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      seen = true;
      act(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
    auto target = door_.AskPrinter(nullptr, QStringLiteral("TELMARION"), GetParam().locale);
    EXPECT_TRUE(seen);
    return target;
  }

  SystemPrintDialog door_;
};

QLineEdit* FileName(QPrintDialog& dialog) {
  return dialog.findChild<QLineEdit*>(QStringLiteral("filename"));
}

TEST_P(SystemPrintDialogTest, LaysOutUprightPaperOfTheLocaleAndAPdf) {
  Ask([](QPrintDialog& dialog) {
    const QPrinter& printer = *dialog.printer();
    EXPECT_EQ(printer.pageLayout().pageSize().id(), GetParam().paper);
    EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Portrait);
    EXPECT_EQ(printer.docName(), "TELMARION");
    EXPECT_EQ(printer.outputFormat(), QPrinter::PdfFormat);
    ASSERT_NE(FileName(dialog), nullptr);
    EXPECT_TRUE(FileName(dialog)->text().endsWith("TELMARION.pdf"))
        << FileName(dialog)->text().toStdString();
    EXPECT_FALSE(dialog.testOption(QAbstractPrintDialog::PrintPageRange));
  });
}

TEST_P(SystemPrintDialogTest, GivesNothingWhenCancelled) {
  const auto target = Ask([](QPrintDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(target, nullptr);
}

TEST_P(SystemPrintDialogTest, GivesThePdfThatWasNamed) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("report.pdf");
  const auto target = Ask([&](QPrintDialog& dialog) {
    FileName(dialog)->setText(path);
    dialog.accept();
  });
  ASSERT_NE(target, nullptr);
  EXPECT_FALSE(QFile::exists(path));  // nothing is printed by asking
  PrinterPage page(*target);
  page.SetCurrentY(1000.0);
  page.Print(QStringLiteral("printed"));
  ASSERT_EQ(page.EndDocument().toStdString(), "");
  const PdfPages pdf(path);
  EXPECT_EQ(pdf.TextsOf(1), QStringList("printed"));
  const QSizeF paper = QPageSize(GetParam().paper).size(QPageSize::Point) * 20.0;
  EXPECT_NEAR(pdf.PaperOf(1).width(), paper.width(), 10.0);
  EXPECT_NEAR(pdf.PaperOf(1).height(), paper.height(), 10.0);
  EXPECT_EQ(pdf.Title(), "TELMARION");
}

INSTANTIATE_TEST_SUITE_P(Rows, SystemPrintDialogTest,
                         testing::Values(Locales().front(), Locales().at(4)), RowName());

// A printer that has gone away since it was chosen.
TEST(PrinterTarget, SaysThatThePrinterIsMissing) {
  qputenv("CUPS_SERVER", "127.0.0.1:1");
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  printer->setOutputFormat(QPrinter::NativeFormat);
  PrinterTarget target(std::move(printer));
  PrinterPage page(target);
  page.Print(QStringLiteral("text"));
  const QString error = page.EndDocument();
  EXPECT_TRUE(error.startsWith("Printer ")) << error.toStdString();
  EXPECT_TRUE(error.contains(" cannot print: ")) << error.toStdString();
}

}  // namespace
