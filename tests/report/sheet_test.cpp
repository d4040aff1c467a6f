// Lines in two columns, and paper that is too small.
#include "report/sheet.h"
#include "case/case_texts.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "platform/print_dialog.h"
#include "tests/report/printed_report.h"
#include "tests/report/report_cases.h"

namespace {

class Columns : public testing::Test {
 protected:
  Columns() : target_(folder_.filePath("a.pdf"), {}, UsualPage(German())), page_(target_) {
    page_.SetLineStart(720.0);
    page_.SetCurrentX(720.0);
    page_.SetCurrentY(1440.0);
  }

  QTemporaryDir folder_;
  PdfTarget target_;
  PrinterPage page_;
  QString left_ = QStringLiteral("Name");
  QString right_ = QStringLiteral("lizm");
};

TEST_F(Columns, TwoAreComposedJoinedAndPrintedOnOneLine) {
  EXPECT_EQ(Print::PrintTwoColumns(page_, left_, right_, "Novak", "10 cm"),
            "Name : Novaklizm = 10 cm");
  EXPECT_EQ(left_, "Name : Novak");
  EXPECT_EQ(right_, "lizm = 10 cm");
  EXPECT_EQ(page_.CurrentX(), 720.0);
  EXPECT_NEAR(page_.CurrentY(), 1440.0 + page_.TextHeight(), 1.0);
  ASSERT_EQ(page_.EndDocument().toStdString(), "");
  const PdfPages pdf(folder_.filePath("a.pdf"));
  EXPECT_NEAR(pdf.Line(1, left_).x, 720.0, 15.0);
  EXPECT_NEAR(pdf.Line(1, right_).x, page_.ScaleWidth() / 2.0, 15.0);
  EXPECT_EQ(pdf.Line(1, left_).y, pdf.Line(1, right_).y);
}

TEST_F(Columns, TheRightOneAloneHasABlankInsteadOfTheColon) {
  left_ = QStringLiteral(" ");
  EXPECT_EQ(Print::PrintRightColumn(page_, left_, right_, {}, "10 cm"), "  lizm = 10 cm");
  EXPECT_EQ(left_, "  ");
  EXPECT_EQ(right_, "lizm = 10 cm");
  left_ = QStringLiteral("a");
  right_ = QStringLiteral("b");
  EXPECT_EQ(Print::PrintRightColumn(page_, left_, right_, "1", "2"), "a 1b = 2");
  ASSERT_EQ(page_.EndDocument().toStdString(), "");
  EXPECT_EQ(PdfPages(folder_.filePath("a.pdf")).TextsOf(1),
            QStringList({"lizm = 10 cm", "a 1", "b = 2"}));
}

TEST_F(Columns, AnEmptyLeftTextHasALengthOfOneAtLeast) {
  left_.clear();
  Print::PrintRightColumn(page_, left_, right_, {}, {});
  EXPECT_EQ(left_, " ");
}

// Every part turns its page once and is then printed, however little fits.
TEST(SmallPaper, Terminates) {
  const QTemporaryDir folder;
  const CaseRecord record = WithComments("one\ntwo\nthree");
  const ResultTexts results = Vse::ResultTextsOf(record, German());
  PdfTarget target(folder.filePath("a.pdf"), {},
                   {QPageSize(QPageSize::A7), QPageLayout::Landscape, QMarginsF()});
  ASSERT_EQ(Print::PrintCase(target, {record, results, German()}, PrintedDate()).toStdString(), "");
  const PdfPages pdf(folder.filePath("a.pdf"));
  EXPECT_GT(pdf.Count(), 3);
  EXPECT_TRUE(pdf.TextsOf(pdf.Count()).contains("D"));
}

}  // namespace
