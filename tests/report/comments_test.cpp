// Long and odd comments, and what overflows a page.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "report/comments.h"
#include "tests/report/printed_report.h"
#include "tests/report/report_cases.h"

namespace {

constexpr double kBottom = kA4Height - 1440.0;
constexpr double kCommentsY = 1440.0 + 10.0 * kLine10;

PdfPages WithText(const QString& comments) {
  return PrintedReport(WithComments(comments), German());
}

// "Line 1" to "Line n", each on a line of its own.
QString Lines(int count) {
  QString text;
  for (int i = 1; i <= count; ++i) {
    text += QStringLiteral("Line %1").arg(i) + QString(i < count ? "\n" : "");
  }
  return text;
}

TEST(Comments, WrapBetweenWordsAtTheRightMargin) {
  QString words;
  for (int i = 1; i <= 60; ++i) words += QStringLiteral("word%1 ").arg(i);
  const PdfPages pdf = WithText(words);
  QString read;
  int count = 0;
  for (const PdfLine& line : pdf.LinesOf(1)) {
    if (!line.text.contains("word")) continue;
    EXPECT_NEAR(line.x, 720.0, kNear);
    EXPECT_LE(line.right, kA4Width - 720.0 + kNear);
    EXPECT_NEAR(line.y, kCommentsY + count * kLine10, kNear);
    // No word more would fit.
    EXPECT_TRUE(count == 3 || line.right > kA4Width - 720.0 - 700.0) << line.right;
    read += line.text + u' ';
    ++count;
  }
  EXPECT_EQ(count, 4);
  EXPECT_EQ(read, "Comments : " + words);
}

TEST(Comments, AWordWiderThanThePageBeginsALineAndRunsOn) {
  const PdfPages pdf = WithText("before " + QString(200, u'W') + " after");
  const PdfLine before = pdf.Line(1, "Comments : before");
  const PdfLine after = pdf.Line(1, "after");
  EXPECT_NEAR(after.y, before.y + 2.0 * kLine10, kNear);
  EXPECT_NEAR(after.x, 720.0, kNear);
  const QImage page = pdf.PictureOf(1, 144);  // 10 twips a pixel
  const int y = int((before.y + 1.6 * kLine10) / 10.0);
  int ink = 0;  // in the right margin
  for (int x = page.width() - 70; x < page.width(); ++x) {
    ink += qGray(page.pixel(x, y)) < 128 ? 1 : 0;
  }
  EXPECT_GT(ink, 5);
}

// The stops are ten widths of "0" apart, 1000 twips in 10 points.
TEST(Comments, TabsGoToTheNextStop) {
  // After the break, "1234567890" ends on the first stop: the next one is taken.
  const PdfPages pdf = WithText("x\n\tone\ttwo\n1234567890\tthree\n12345678901\tfour");
  EXPECT_NEAR(pdf.Line(1, "one").x, 720.0 + 1000.0, kNear);
  EXPECT_NEAR(pdf.Line(1, "two").x, 720.0 + 2000.0, kNear);
  EXPECT_NEAR(pdf.Line(1, "three").x, 720.0 + 2000.0, kNear);
  EXPECT_NEAR(pdf.Line(1, "four").x, 720.0 + 2000.0, kNear);
}

// Where the word begins, wherever the words of its line are.
double PlaceOf(const PdfPages& pdf, const QString& text) {
  for (const PdfWord& word : pdf.WordsOf(1)) {
    if (word.text == text) return word.box.left();
  }
  ADD_FAILURE() << "no " << text.toStdString();
  return 0.0;
}

// Nine digits and an apostrophe are 9.36 widths of "0", nine and an "e" 9.89: the one is taken for
// 9, the other for 10, which is a stop.
TEST(Comments, ATabTakesTheNearestWidthForItsPlace) {
  const PdfPages pdf = WithText("x\n123456789'\tnear\n123456789e\tfar");
  EXPECT_NEAR(PlaceOf(pdf, "near"), 720.0 + 1000.0, kNear);
  EXPECT_NEAR(PlaceOf(pdf, "far"), 720.0 + 2000.0, kNear);
}

TEST(Comments, LineFeedsBreakTheLineAndOtherControlCharactersAreDropped) {
  const PdfPages pdf = WithText(QStringLiteral("one\r\ntw\ro\n\nth\x01\x1bree"));
  const double y = pdf.Line(1, "Comments : one").y;
  EXPECT_NEAR(pdf.Line(1, "two").y, y + kLine10, kNear);
  EXPECT_NEAR(pdf.Line(1, "three").y, y + 3.0 * kLine10, kNear);
}

TEST(Comments, BlanksAreKept) {
  const PdfPages pdf = WithText("one" + QString(20, u' ') + "two");
  const double blank = 0.25 * 200.0;
  const double right = pdf.Line(1, "Comments : one").right;
  EXPECT_NEAR(pdf.Line(1, "two").x, right + 20.0 * blank, kNear);
}

TEST(Comments, ThreeHundredLinesFillPagesWithHeaderAndFooter) {
  const PdfPages pdf = WithText(Lines(300));
  ASSERT_EQ(pdf.Count(), 7);
  int next = 1;
  for (int page = 1; page <= pdf.Count(); ++page) {
    const PdfLine title = pdf.Line(page, page == 1 ? "TELMARION" : "New Page");
    EXPECT_NEAR((title.x + title.right) / 2.0, kA4Width / 2.0, kNear);
    EXPECT_NEAR(pdf.Line(page, QStringLiteral("Page %1").arg(page)).right, kA4Width - 720.0, kNear);
    EXPECT_NEAR(pdf.Line(page, "15.11.2026").y, kA4Height - 720.0, kNear);
    double y = page == 1 ? kCommentsY : 1440.0;
    for (const PdfLine& line : pdf.LinesOf(page)) {
      if (!line.text.contains("Line ")) continue;
      EXPECT_EQ(line.text.section(u' ', -1).toInt(), next);
      EXPECT_NEAR(line.x, 720.0, kNear);
      EXPECT_NEAR(line.y, y, 3.0 * kNear) << line.text.toStdString();  // rounding adds up
      EXPECT_NEAR(line.size, page == 1 ? 10.0 : 13.0, 0.1);
      EXPECT_LE(line.y, kBottom + kNear);
      y += page == 1 ? kLine10 : kLine13;
      ++next;
    }
  }
  EXPECT_EQ(next, 301);
  EXPECT_NEAR(pdf.Line(7, "Theta-R = 8,47 °").size, 13.0, 0.1);
}

// On the first page line n begins at kCommentsY + (n - 1)·kLine10; the last one above the bottom
// margin is this.
int LastLineOfPage() {
  return int(std::floor((kBottom - kCommentsY) / kLine10)) + 1;
}

TEST(Comments, ALineThatBeginsAboveTheBottomMarginStays) {
  const int last = LastLineOfPage();
  const QString text = QStringLiteral("Line %1");
  EXPECT_TRUE(WithText(Lines(last)).TextsOf(1).contains(text.arg(last)));
  const PdfPages pdf = WithText(Lines(last + 1));
  EXPECT_FALSE(pdf.TextsOf(1).contains(text.arg(last + 1)));
  EXPECT_NEAR(pdf.Line(2, text.arg(last + 1)).y, 1440.0, kNear);
}

TEST(Comments, WrappedWordsTurnThePageToo) {
  QString words;
  for (int i = 1; i <= 1200; ++i) words += QStringLiteral("word%1 ").arg(i);
  const PdfPages pdf = WithText(words);
  ASSERT_GE(pdf.Count(), 2);
  QStringList read;
  for (int page = 1; page <= pdf.Count(); ++page) {
    for (const PdfWord& word : pdf.WordsOf(page)) {
      if (word.text.startsWith("word")) read += word.text;
    }
  }
  EXPECT_EQ(read.join(u' '), words.trimmed());
}

// The comments leave room for a part of the results.
TEST(Overflow, AResultThatDoesNotFitGoesToAFreshPage) {
  const PdfPages pdf = WithText(Lines(LastLineOfPage() - 6));
  ASSERT_EQ(pdf.Count(), 2);
  const PdfLine last = pdf.Line(1, "Theta-pol = 16,41 °");
  EXPECT_LE(last.y + kLine10, kBottom + 1.0);
  pdf.Line(2, "New Page");
  const PdfLine first = pdf.Line(2, "R/Wb = 2,81");
  EXPECT_NEAR(first.y, 1440.0, kNear);
  EXPECT_NEAR(first.x, 720.0, kNear);
  EXPECT_NEAR(first.size, 13.0, 0.1);
  EXPECT_NEAR(pdf.Line(2, "Pmax/Wb = 3006,76 m^-2").y, 1440.0 + 2.0 * kLine13, kNear);
  EXPECT_NEAR(pdf.Line(2, "D").x, kA4Width / 5.0 + 150.0, kNear);
}

TEST(Overflow, ADiagramThatDoesNotFitGoesToAFreshPage) {
  const PdfPages pdf = WithText(Lines(25));
  ASSERT_EQ(pdf.Count(), 2);
  pdf.Line(1, "Pmax = 2066847,58 Pa");
  EXPECT_FALSE(pdf.TextsOf(1).contains("D"));
  EXPECT_EQ(pdf.TextsOf(2).first(), "New Page");
  EXPECT_NEAR(pdf.Line(2, "D").y, 1440.0 + 60.0, 2.0 * kNear);
  EXPECT_NEAR(pdf.Line(2, "Page 2").right, kA4Width - 720.0, kNear);
}

TEST(Overflow, ADiagramThatJustFitsStays) {
  // Its top is 17 lines below the line of the last comment.
  const double room = kBottom - kA4Width / 3.0;
  const int lines = int(std::floor((room - kCommentsY) / kLine10)) - 16;
  EXPECT_EQ(WithText(Lines(lines)).Count(), 1);
  EXPECT_EQ(WithText(Lines(lines + 1)).Count(), 2);
}

}  // namespace
