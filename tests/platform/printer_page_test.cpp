// The page's text cursor, its picture, and what happens when the target fails.
#include "platform/printer_page.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <string>

#include "platform/picture_box.h"
#include "platform/print_dialog.h"
#include "platform/print_target.h"
#include "tests/support/pdf_pages.h"
#include "tests/support/row_name.h"
#include "tests/support/small_files.h"

namespace {

constexpr double kNear = 1.0;      // twip
constexpr double kInkNear = 15.0;  // twips; where a reader sees a letter begin

QPageLayout A4() {
  return UsualPage(QLocale(QLocale::German, QLocale::Germany));
}

class PrinterPageTest : public testing::Test {
 protected:
  PrinterPageTest() : target_(Path(), QStringLiteral("Title"), A4()), page_(target_) {
    page_.SetFontName(QStringLiteral("Times New Roman"));
  }
  QString Path() const { return folder_.filePath(QStringLiteral("page.pdf")); }
  PdfPages Read() {
    EXPECT_EQ(page_.EndDocument().toStdString(), "");
    return PdfPages(Path());
  }

  QTemporaryDir folder_;
  PdfTarget target_;
  PrinterPage page_;
};

TEST_F(PrinterPageTest, PrintEndsWithALineFeed) {
  page_.SetLineStart(300.0);
  page_.SetCurrentX(1000.0);
  page_.SetCurrentY(2000.0);
  page_.Print(QStringLiteral("word"));
  EXPECT_EQ(page_.CurrentX(), 300.0);
  EXPECT_NEAR(page_.CurrentY(), 2000.0 + page_.TextHeight(), kNear);
  const PdfLine line = Read().Line(1, QStringLiteral("word"));
  EXPECT_NEAR(line.x, 1000.0, kInkNear);
  EXPECT_NEAR(line.y, 2000.0, kInkNear);
}

TEST_F(PrinterPageTest, PrintWithoutFeedStaysAfterTheText) {
  page_.SetCurrentX(1000.0);
  page_.SetCurrentY(2000.0);
  page_.PrintWithoutFeed(QStringLiteral("some"));
  EXPECT_NEAR(page_.CurrentX(), 1000.0 + page_.TextWidth(QStringLiteral("some")), kNear);
  EXPECT_EQ(page_.CurrentY(), 2000.0);
  page_.PrintWithoutFeed(QStringLiteral("thing"));
  const PdfLine line = Read().Line(1, QStringLiteral("something"));
  EXPECT_NEAR(line.x, 1000.0, kInkNear);
}

TEST_F(PrinterPageTest, ALineFeedCharacterBreaksTheLine) {
  page_.SetLineStart(300.0);
  page_.SetCurrentX(300.0);
  page_.Print(QStringLiteral("one\ntwo"));
  EXPECT_NEAR(page_.CurrentY(), 2.0 * page_.TextHeight(), kNear);
  const PdfPages pdf = Read();
  EXPECT_NEAR(pdf.Line(1, "two").y - pdf.Line(1, "one").y, 10.0 * 20.0 * 1.149, 3.0);
  EXPECT_NEAR(pdf.Line(1, "two").x, 300.0, kInkNear);
}

// The widths of the metric-compatible family, in thousandths of the type's size: a word printed
// anywhere takes the same place.
TEST_F(PrinterPageTest, MeasuresTimes) {
  page_.SetFontSize(10);
  EXPECT_NEAR(page_.TextWidth(QStringLiteral("0")), 0.500 * 200.0, kNear);
  EXPECT_NEAR(page_.TextWidth(QStringLiteral("Wi")), (0.944 + 0.278) * 200.0, 8.0);  // kerned
  page_.SetFontSize(13);
  EXPECT_NEAR(page_.TextWidth(QStringLiteral("0")), 0.500 * 260.0, kNear);
  EXPECT_NEAR(page_.TextHeight(), 1.149 * 260.0, 3.0);
}

struct PaperRow {
  std::string name;
  QPageSize::PageSizeId size;
  QPageLayout::Orientation orientation;
  double width, height;  // twips
};

class Paper : public testing::TestWithParam<PaperRow> {};

TEST_P(Paper, IsMeasuredFromItsCorner) {
  const QTemporaryDir folder;
  const QPageLayout layout(QPageSize(GetParam().size), GetParam().orientation,
                           QMarginsF(30, 30, 30, 30));
  PdfTarget target(folder.filePath("a.pdf"), {}, layout);
  PrinterPage page(target);
  EXPECT_NEAR(page.ScaleWidth(), GetParam().width, 10.0);
  EXPECT_NEAR(page.ScaleHeight(), GetParam().height, 10.0);
  page.SetCurrentX(720.0);
  page.SetCurrentY(720.0);
  page.Print(QStringLiteral("corner"));
  ASSERT_EQ(page.EndDocument().toStdString(), "");
  const PdfPages pdf(folder.filePath("a.pdf"));
  EXPECT_NEAR(pdf.PaperOf(1).width(), GetParam().width, 10.0);
  EXPECT_NEAR(pdf.PaperOf(1).height(), GetParam().height, 10.0);
  EXPECT_NEAR(pdf.Line(1, "corner").x, 720.0, kInkNear);
  EXPECT_NEAR(pdf.Line(1, "corner").y, 720.0, kInkNear);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Paper,
    testing::Values(PaperRow{"A4", QPageSize::A4, QPageLayout::Portrait, 11906, 16838},
                    PaperRow{"Letter", QPageSize::Letter, QPageLayout::Portrait, 12240, 15840},
                    PaperRow{"A4Lying", QPageSize::A4, QPageLayout::Landscape, 16838, 11906}),
    RowName());

TEST_F(PrinterPageTest, NewPageStartsAtItsTopWithTheNextNumber) {
  page_.SetLineStart(500.0);
  page_.SetCurrentY(3000.0);
  EXPECT_EQ(page_.PageNumber(), 1);
  page_.NewPage();
  EXPECT_EQ(page_.PageNumber(), 2);
  EXPECT_EQ(page_.CurrentX(), 500.0);
  EXPECT_EQ(page_.CurrentY(), 0.0);
  page_.SetCurrentY(100.0);
  page_.Print(QStringLiteral("second"));
  const PdfPages pdf = Read();
  EXPECT_EQ(pdf.Count(), 2);
  EXPECT_EQ(pdf.TextsOf(1), QStringList());
  EXPECT_EQ(pdf.TextsOf(2), QStringList("second"));
}

TEST_F(PrinterPageTest, TextIsTextInAnEmbeddedFont) {
  page_.SetCurrentY(500.0);
  page_.Print(QStringLiteral("Čž °"));
  const PdfPages pdf = Read();
  EXPECT_EQ(pdf.TextsOf(1), QStringList(QStringLiteral("Čž °")));
  ASSERT_FALSE(pdf.Fonts().empty());
  for (const poppler::font_info& font : pdf.Fonts()) {
    EXPECT_TRUE(font.is_embedded());
    EXPECT_NE(font.name().find("LiberationSerif"), std::string::npos) << font.name();
  }
}

TEST_F(PrinterPageTest, APictureIsPaintedAsShapesOverItsPlace) {
  PictureBox box;
  box.Scale(0, 0, 100, 100);
  box.SetBackColor(kWhite);
  box.LineFilledBox({0, 0}, {50, 100}, kRed);
  page_.SetCurrentX(1440.0 + 2000.0);
  page_.SetCurrentY(2880.0);
  page_.Print(QStringLiteral("stays"));
  page_.PaintPicture(box.Image(), QRectF(1440, 2880, 2880, 1440));
  const PdfPages pdf = Read();
  const QImage picture = pdf.PictureOf(1, 100);  // 100 pixels are 1440 twips
  EXPECT_EQ(picture.pixelColor(105, 250), QColor(Qt::red));
  EXPECT_EQ(picture.pixelColor(195, 295), QColor(Qt::red));
  EXPECT_EQ(picture.pixelColor(205, 280), QColor(Qt::white));
  EXPECT_EQ(picture.pixelColor(95, 250), QColor(Qt::white));
  EXPECT_EQ(picture.pixelColor(150, 305), QColor(Qt::white));
  int dark = 0;  // the word is not covered by the picture's ground
  for (int y = 200; y < 220; ++y) {
    for (int x = 238; x < 280; ++x) dark += qGray(picture.pixel(x, y)) < 128 ? 1 : 0;
  }
  EXPECT_GT(dark, 20);
  QFile file(Path());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_FALSE(file.readAll().contains("/Subtype /Image"));
}

TEST_F(PrinterPageTest, TheDocumentStatesItsTitleAndNothingElse) {
  page_.Print(QStringLiteral("Novak"));
  const PdfPages pdf = Read();
  EXPECT_EQ(pdf.Title(), "Title");
  QStringList properties = pdf.Properties();
  properties.sort();
  ASSERT_EQ(properties.size(), 3);
  EXPECT_EQ(properties[0], "Creator=Title");
  EXPECT_TRUE(properties[1].startsWith("Producer=Qt "));
  EXPECT_EQ(properties[2], "Title=Title");
}

// What goes wrong is said at the end and nothing throws on the way.
struct FailureRow {
  std::string name;
  QString file;  // in the test's folder
  QString reason;
};

class PdfFailure : public testing::TestWithParam<FailureRow> {};

TEST_P(PdfFailure, IsReported) {
  const QTemporaryDir folder;
  QDir(folder.path()).mkdir("folder");
  const QString path = folder.filePath(GetParam().file);
  PdfTarget target(path, {}, A4());
  PrinterPage page(target);
  page.Print(QStringLiteral("text"));
  page.NewPage();
  const QString error = page.EndDocument();
  EXPECT_TRUE(error.startsWith(path + " could not be written: ")) << error.toStdString();
  EXPECT_TRUE(error.contains(GetParam().reason)) << error.toStdString();
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 0);
}

INSTANTIATE_TEST_SUITE_P(Rows, PdfFailure,
                         testing::Values(FailureRow{"NoSuchFolder", "missing/a.pdf",
                                                    "No such file or directory"},
                                         FailureRow{"AFolder", "folder", "not a file"}),
                         RowName());

TEST(PdfTarget, ADeviceIsNotAFile) {
  PdfTarget target(QStringLiteral("/dev/null"), {}, A4());
  PrinterPage page(target);
  EXPECT_EQ(page.EndDocument(), "/dev/null could not be written: not a file");
}

TEST(PdfTarget, AFullDiskIsReportedAndTheOldFileStays) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("a.pdf");
  QFile old(path);
  ASSERT_TRUE(old.open(QIODevice::WriteOnly));
  old.write("old");
  old.close();
  PdfTarget target(path, {}, A4());
  PrinterPage page(target);
  page.Print(QStringLiteral("text"));
  {
    const SmallFiles full(100);
    EXPECT_TRUE(page.EndDocument().startsWith(path + " could not be written: "));
  }
  ASSERT_TRUE(old.open(QIODevice::ReadOnly));
  EXPECT_EQ(old.readAll(), "old");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("a.pdf"));
}

// A device that paints nothing, or no second page.
class BrokenDevice final : public QPdfWriter {
 public:
  BrokenDevice(QIODevice* out, bool paints) : QPdfWriter(out), paints_(paints) {}
  QPaintEngine* paintEngine() const override {
    return paints_ ? QPdfWriter::paintEngine() : nullptr;
  }
  bool newPage() override { return false; }

 private:
  bool paints_;
};

class BrokenTarget final : public PrintTarget {
 public:
  explicit BrokenTarget(bool paints, QString check = {})
      : check_(std::move(check)), device_(&out_, paints) {
    out_.open(QIODevice::WriteOnly);
  }
  QPagedPaintDevice& Device() override { return device_; }
  QString Check() override { return check_; }
  QString Deliver() override {
    ADD_FAILURE() << "a document that is not whole was delivered";
    return {};
  }
  QString Refusal(const QString& reason) const override { return "broken: " + reason; }

 private:
  QString check_;
  QBuffer out_;
  BrokenDevice device_;
};

TEST(PrinterPageFailure, ADeviceThatCannotBePaintedOn) {
  BrokenTarget target(false);
  PrinterPage page(target);
  page.Print(QStringLiteral("text"));
  EXPECT_GT(page.CurrentY(), 0.0);
  EXPECT_EQ(page.EndDocument(), "broken: it does not take the document");
}

TEST(PrinterPageFailure, APageThatCannotBeTurned) {
  BrokenTarget target(true);
  PrinterPage page(target);
  page.NewPage();
  page.Print(QStringLiteral("text"));
  page.PaintPicture(PictureBox().Image(), QRectF(0, 0, 100, 100));
  EXPECT_EQ(page.PageNumber(), 2);
  EXPECT_EQ(page.EndDocument(), "broken: it does not take the document");
}

TEST(PrinterPageFailure, ATargetThatFailsItsCheck) {
  BrokenTarget target(true, QStringLiteral("no paper"));
  PrinterPage page(target);
  EXPECT_EQ(page.EndDocument(), "no paper");
}

}  // namespace
