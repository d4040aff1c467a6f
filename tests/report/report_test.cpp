// The report on paper, read back from its PDF.
#include "report/report.h"
#include "case/case_texts.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QCursor>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <string>
#include <vector>

#include "diagram/case_diagram.h"
#include "platform/print_dialog.h"
#include "tests/report/painted_texts.h"
#include "tests/report/printed_report.h"
#include "tests/report/report_cases.h"
#include "tests/support/golden_picture.h"
#include "tests/support/row_name.h"

namespace {

struct ColumnRow {
  int line;  // below the top margin
  QString left;
  QString right;
};

TEST(Report, PutsPatientAndGeometryInTwoColumns) {
  const PdfPages pdf = PrintedReport(UsualCase(), German());
  for (const ColumnRow& row :
       {ColumnRow{1, "Name : Novak Marija", "lizm = 10,4 cm"},
        ColumnRow{2, "Sex : F", "xizm = 0,5 cm"},
        ColumnRow{3, "Date of birth : 15.11.1956", "zizm = 6 cm"},
        ColumnRow{4, "Body weight : 70 kg", "Hizm = 16 cm"},
        ColumnRow{5, "Hip : L", "Cizm = 4,4 cm"}, ColumnRow{6, {}, "zasuk = 0 °"},
        ColumnRow{7, {}, "Theta-CE = 30 °"}, ColumnRow{8, {}, "Radius of head = 0,025 m"}}) {
    const double y = 1440.0 + row.line * kLine10;
    const PdfLine right = pdf.Line(1, row.right);
    EXPECT_NEAR(right.x, kA4Width / 2.0, kNear);
    EXPECT_NEAR(right.y, y, kNear);
    EXPECT_NEAR(right.size, 10.0, 0.1);
    if (row.left.isEmpty()) continue;
    const PdfLine left = pdf.Line(1, row.left);
    EXPECT_NEAR(left.x, 720.0, kNear);
    EXPECT_NEAR(left.y, y, kNear);
    EXPECT_NEAR(left.size, 10.0, 0.1);
  }
}

TEST(Report, PutsCommentsAndResultsBelow) {
  const PdfPages pdf = PrintedReport(UsualCase(), German());
  const auto expectLine = [&](int line, const QString& text) {
    EXPECT_NEAR(pdf.Line(1, text).x, 720.0, kNear);
    EXPECT_NEAR(pdf.Line(1, text).y, 1440.0 + line * kLine10, kNear) << text.toStdString();
    EXPECT_NEAR(pdf.Line(1, text).size, 10.0, 0.1);
  };
  expectLine(10, "Comments : Control after two years");
  expectLine(12, "Theta-R = 8,47 °");
  expectLine(14, "Theta-pol = 16,41 °");
  expectLine(16, "R/Wb = 2,81");
  expectLine(18, "Pmax/Wb = 3006,76 m^-2");
  expectLine(20, "Pmax = 2066847,58 Pa");
}

TEST(Report, HasHeaderAndFooter) {
  const PdfPages pdf = PrintedReport(UsualCase(), German());
  ASSERT_EQ(pdf.Count(), 1);
  const PdfLine title = pdf.Line(1, "TELMARION");
  EXPECT_NEAR((title.x + title.right) / 2.0, kA4Width / 2.0, kNear);
  EXPECT_NEAR(title.y, (1440.0 - kLine13) / 2.0, kNear);
  EXPECT_NEAR(title.size, 13.0, 0.1);
  const PdfLine date = pdf.Line(1, "15.11.2026");
  EXPECT_NEAR(date.x, 720.0, kNear);
  EXPECT_NEAR(date.y, kA4Height - 720.0, kNear);
  EXPECT_NEAR(date.size, 13.0, 0.1);
  const PdfLine number = pdf.Line(1, "Page 1");
  EXPECT_NEAR(number.right, kA4Width - 720.0, kNear);
  EXPECT_NEAR(number.y, kA4Height - 720.0, kNear);
  EXPECT_NEAR(number.size, 13.0, 0.1);
}

TEST(Report, IsOnLetterInAmerica) {
  const PdfPages pdf = PrintedReport(UsualCase(), American());
  EXPECT_EQ(pdf.PaperOf(1), QSizeF(12240, 15840));
  EXPECT_NEAR(pdf.Line(1, "lizm = 10.4 cm").x, 6120.0, kNear);
  EXPECT_NEAR(pdf.Line(1, "11/15/2026").y, 15840.0 - 720.0, kNear);
  EXPECT_NEAR(pdf.Line(1, "Page 1").right, 12240.0 - 720.0, kNear);
  pdf.Line(1, "Pmax/Wb = 3006.76 m^-2");
}

TEST(Report, SaysWhatIsMissing) {
  CaseRecord record = WithUnknownWeight();
  record.data.patient = {};
  const PdfPages pdf = PrintedReport(record, German());
  for (const char* text : {"Name : Unknown", "Sex : Unknown", "Date of birth : Unknown",
                           "Body weight : Unknown kg", "Hip : Unknown", "Comments : No"}) {
    pdf.Line(1, text);
  }
}

// Two blanks behind the sign of degrees, and two before the value of the peak stress.
TEST(Report, KeepsTheBlanksOfItsTexts) {
  const CaseRecord record = UsualCase();
  const ResultTexts results = Vse::ResultTextsOf(record, American());
  NotingTarget target;
  ASSERT_EQ(Print::PrintCase(target, {record, results, American()}, PrintedDate()), "");
  for (const char* text :
       {"Name : Novak Marija", "  ", "zasuk = 0 °  ", "Theta-CE = 30 °  ",
        "Radius of head = 0.025 m", "Comments", "Theta-R = 8.47 °", "Theta-pol = 16.41 °",
        "R/Wb = 2.81", "Pmax/Wb = 3006.76 m^-2", "Pmax =  2066847.58 Pa"}) {
    EXPECT_TRUE(target.Texts().contains(QString::fromUtf8(text)))
        << '"' << text << "\" is not among\n"
        << target.Texts().join(u'\n').toStdString();
  }
}

TEST(Report, LeavesOutThePeakStressOfAnUnknownWeight) {
  const QStringList known = PrintedReport(UsualCase(), German()).TextsOf(1);
  const QStringList unknown = PrintedReport(WithUnknownWeight(), German()).TextsOf(1);
  EXPECT_EQ(known.filter("Pmax =").size(), 1);
  EXPECT_EQ(unknown.filter("Pmax =").size(), 0);
  EXPECT_TRUE(known.contains("Pmax"));
  EXPECT_TRUE(known.contains("MPa"));
  EXPECT_TRUE(unknown.contains("Pmax/Wb"));
  EXPECT_TRUE(unknown.contains("1000 m^-2"));
  EXPECT_TRUE(unknown.contains("R/Wb"));
  EXPECT_TRUE(unknown.contains("1"));
}

// A refused case leaves the panel as it was; the report shows what the panel shows.
TEST(Report, PrintsTheResultsOfThePanel) {
  CaseRecord record = UsualCase();
  const ResultTexts panel = Vse::ResultTextsOf(record, German());
  record.model.results.rWb = 9.0;
  record.model.results.thetaR = {-5.0};
  const PdfPages pdf = PrintedReport(record, German(), panel);
  pdf.Line(1, "Theta-R = 8,47 °");
  pdf.Line(1, "R/Wb = 2,81");
}

// The weight has become unknown since the panel was filled, or known.
TEST(Report, PrintsThePeakStressOnlyWhenPanelAndWeightAllowIt) {
  const ResultTexts shown = Vse::ResultTextsOf(UsualCase(), German());
  const ResultTexts hidden = Vse::ResultTextsOf(WithUnknownWeight(), German());
  for (const PdfPages& pdf : {PrintedReport(WithUnknownWeight(), German(), shown),
                              PrintedReport(UsualCase(), German(), hidden)}) {
    EXPECT_EQ(pdf.TextsOf(1).filter("Pmax =").size(), 0);
    EXPECT_TRUE(pdf.TextsOf(1).contains("1000 m^-2"));
  }
}

TEST(Report, KeepsALongNameOutOfTheRightColumn) {
  CaseRecord record = UsualCase();
  record.data.patient.name = QStringLiteral("Hohenzollern-Sigmaringen ").repeated(4).trimmed();
  const PdfPages pdf = PrintedReport(record, German());
  const PdfLine name = pdf.Line(1, "Name : " + record.data.patient.name);
  EXPECT_LT(name.right, kA4Width / 2.0);
  EXPECT_LT(name.size, 9.0);
  EXPECT_NEAR(pdf.Line(1, "Sex : F").y, 1440.0 + 2.0 * kLine10, kNear);
  EXPECT_NEAR(pdf.Line(1, "Sex : F").size, 10.0, 0.1);
}

struct HipRow {
  std::string name;
  std::optional<HipSide> hip;
  QString letter, force;
};

class HipOnPaper : public testing::TestWithParam<HipRow> {};

// The letter is that of the form, which is crossed with the hip.
TEST_P(HipOnPaper, HasTheTextsOfItsForm) {
  const PdfPages pdf = PrintedReport(WithHip(GetParam().hip), German());
  const double x = kA4Width / 5.0;
  const double y = 1440.0 + 27.0 * kLine10;  // below twenty lines of text and five empty ones
  const PdfLine letter = pdf.Line(1, GetParam().letter);
  EXPECT_NEAR(letter.size, 15.0, 0.1);
  EXPECT_NEAR(letter.x, x + 150.0, kNear);
  EXPECT_NEAR(letter.y, y + 60.0, 2.0 * kNear);
  EXPECT_NEAR(pdf.Line(1, "Pmax").x, x + 5800.0, kNear);
  EXPECT_NEAR(pdf.Line(1, "Pmax").y, y + 300.0, 2.0 * kNear);
  EXPECT_NEAR(pdf.Line(1, "MPa").y, y + 800.0, 2.0 * kNear);
  EXPECT_NEAR(pdf.Line(1, "R").y, y + 2350.0, 2.0 * kNear);
  EXPECT_NEAR(pdf.Line(1, GetParam().force).y, y + 2850.0, 2.0 * kNear);
  EXPECT_NEAR(pdf.Line(1, "Theta CE").size, 7.0, 0.1);
  EXPECT_NEAR(pdf.Line(1, "Theta-R").size, 7.0, 0.1);
}

INSTANTIATE_TEST_SUITE_P(Rows, HipOnPaper,
                         testing::Values(HipRow{"Left", HipSide::Left, "D", "N"},
                                         HipRow{"Right", HipSide::Right, "L", "1 N"},
                                         HipRow{"Unknown", std::nullopt, "L", "1 N"}),
                         RowName());

bool IsRed(QRgb pixel) {
  return qRed(pixel) > 200 && qGreen(pixel) < 100 && qBlue(pixel) < 100;
}

// The legend bar of the stress is one unit long: from its place and length follow the picture's.
TEST(Report, PaintsThePictureAtAFifthOfTheWidthAndAThirdHigh) {
  const CaseRecord record = UsualCase();
  const QImage page = PrintedReport(record, German()).PictureOf(1, 288);  // 5 twips a pixel
  const double unit = kA4Width / 3.0 / 5000.0 / 5.0;                      // pixels
  const double left = kA4Width / 5.0 / 5.0;
  const double top = (1440.0 + 27.0 * kLine10) / 5.0;
  const int x = int(std::lround(left + 5700.0 * unit));
  int first = 0;
  int last = 0;
  for (int y = 0; y < page.height(); ++y) {
    if (!IsRed(page.pixel(x, y)) && !IsRed(page.pixel(x + 1, y)) && !IsRed(page.pixel(x - 1, y))) {
      continue;
    }
    if (first == 0) first = y;
    last = y;
  }
  const double megapascals = record.results().pmax / 1e6;
  EXPECT_NEAR(first, top + 250.0 * unit, 8.0);
  EXPECT_NEAR(last - first, 2000.0 / megapascals * unit, 3.0);
}

TEST(Report, IsDrawnAtThePrintersResolution) {
  const QTemporaryDir folder;
  PrintInto(folder.filePath("a.pdf"), UsualCase(), German());
  QFile file(folder.filePath("a.pdf"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_FALSE(file.readAll().contains("/Subtype /Image"));
}

TEST(Report, LooksAsAccepted) {
  ExpectGoldenPicture(PrintedReport(UsualCase(), German()).PictureOf(1, 72), "tests/report/golden",
                      "left_hip_a4");
  CaseRecord right = WithUnknownWeight();
  right.data.patient.hip = HipSide::Right;
  ExpectGoldenPicture(PrintedReport(right, American()).PictureOf(1, 72), "tests/report/golden",
                      "right_hip_weight_unknown_letter");
}

TEST(Report, CanBeSearchedAndHasNoPersonalMetadata) {
  const PdfPages pdf = PrintedReport(UsualCase(), German());
  EXPECT_EQ(pdf.Title(), "TELMARION");
  EXPECT_TRUE(pdf.Properties().filter("Novak").isEmpty());
  EXPECT_EQ(pdf.Properties().filter("Author").size(), 0);
  ASSERT_FALSE(pdf.Fonts().empty());
  for (const poppler::font_info& font : pdf.Fonts()) {
    EXPECT_TRUE(font.is_embedded());
    EXPECT_NE(font.name().find("LiberationSerif"), std::string::npos);
  }
}

TEST(Report, LeavesTheScreensDiagramAlone) {
  const CaseRecord record = UsualCase();
  PictureBox picture;
  Vizual::DiagramLabels labels;
  Vizual::DrawCaseDiagram(record, true, Vizual::Target::Screen(picture, labels));
  const auto pixels = [&] { return picture.Image().ToImage({600, 400}, 1.0, QPalette()); };
  const QImage before = pixels();
  const QString caption = labels.stressLegend.caption;
  PrintedReport(record, German());
  EXPECT_EQ(pixels(), before);
  EXPECT_EQ(labels.stressLegend.caption, caption);
  EXPECT_EQ(labels.stressLegend.backColor, kButtonFace);
}

bool PointerIsHourglass() {
  const QCursor* pointer = QGuiApplication::overrideCursor();
  return pointer != nullptr && pointer->shape() == Qt::WaitCursor;
}

// Notes the pointer's shape whenever the document turns to its device, and at its end.
class PointerTarget final : public PrintTarget {
 public:
  explicit PointerTarget(QString error) : error_(std::move(error)), writer_(&out_) {
    out_.open(QIODevice::WriteOnly);
  }
  QPagedPaintDevice& Device() override {
    hourglass.push_back(PointerIsHourglass());
    return writer_;
  }
  QString Check() override { return {}; }
  QString Deliver() override {
    hourglass.push_back(PointerIsHourglass());
    return error_;
  }
  QString Refusal(const QString& reason) const override { return reason; }

  std::vector<bool> hourglass;

 private:
  QString error_;
  QBuffer out_;
  QPdfWriter writer_;
};

TEST(Report, ShowsAnHourglassAndRestoresThePointer) {
  const CaseRecord record = UsualCase();
  const ResultTexts results = Vse::ResultTextsOf(record, German());
  for (const QString& error : {QString(), QStringLiteral("no paper")}) {
    PointerTarget target(error);
    EXPECT_EQ(Print::PrintCase(target, {record, results, German()}, PrintedDate()), error);
    EXPECT_TRUE(target.hourglass.back());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  }
}

TEST(Report, ShowsTheHourglassFromTheBeginningOfTheBodyToTheEndOfTheDocument) {
  const CaseRecord record = UsualCase();
  const ResultTexts results = Vse::ResultTextsOf(record, German());
  PointerTarget target({});
  PrinterPage page(target);
  const Print::Sheet sheet{page, {}};
  Print::PrintPageHeader(sheet, Print::kTitle.toString());
  EXPECT_EQ(std::count(target.hourglass.begin(), target.hourglass.end(), true), 0);
  target.hourglass.clear();
  Print::PrintReport(sheet, {record, results, German()});
  EXPECT_EQ(std::count(target.hourglass.begin(), target.hourglass.end(), false), 0);
  EXPECT_GT(target.hourglass.size(), 10U);
  EXPECT_FALSE(PointerIsHourglass());
}

TEST(Report, RestoresThePointerThatItFound) {
  const CaseRecord record = UsualCase();
  const ResultTexts results = Vse::ResultTextsOf(record, German());
  QGuiApplication::setOverrideCursor(Qt::CrossCursor);
  PointerTarget target({});
  Print::PrintCase(target, {record, results, German()}, PrintedDate());
  ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::CrossCursor);
  QGuiApplication::restoreOverrideCursor();
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(Report, ReportsATargetThatCannotBeWritten) {
  const CaseRecord record = UsualCase();
  const ResultTexts results = Vse::ResultTextsOf(record, German());
  PdfTarget target(QStringLiteral("/no such folder/a.pdf"), "TELMARION", UsualPage(German()));
  const QString error = Print::PrintCase(target, {record, results, German()}, PrintedDate());
  EXPECT_EQ(error, "/no such folder/a.pdf could not be written: No such file or directory");
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

}  // namespace
