// Every kind of case on both papers, under locales that write numbers and dates in different ways.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTemporaryDir>
#include <string>
#include <vector>

#include "case/case_texts.h"
#include "platform/print_target.h"
#include "tests/report/printed_report.h"
#include "tests/report/report_cases.h"
#include "tests/support/row_name.h"

namespace {

constexpr double kMargin = 720.0;          // twips, left and right
constexpr double kTop = 1440.0;            // and at the bottom
constexpr double kFooterTop = kTop / 2.0;  // above the lower edge of the paper

struct LocaleRow {
  std::string name;
  const char* locale;
  QChar separator;
  QString date;  // as it is seen from left to right, blanks aside
};

// What a page must hold; "#" stands for the decimal separator.
struct KindOfCase {
  const char* name;
  CaseRecord record;
  CaseRecord shown;  // whose results the panel shows
  QStringList texts;
  QStringList missing;
  int commentLines = 1;
};

QString LinesOfComments(int count) {
  QStringList lines;
  for (int i = 1; i <= count; ++i) lines += QStringLiteral("Line %1 of the comments").arg(i);
  return lines.join(u'\n');
}

CaseRecord Refused() {
  CaseRecord record = UsualCase();
  record.data.inputs.lizm = {11.25};
  record.data.inputs.thetaCE = {Sila::DegreesToRadians(-20.5)};
  EXPECT_EQ(Vse::RunModel(record), Sila::HipOutcome::NoPole);
  return record;
}

std::vector<KindOfCase> KindsOfCases() {
  const QStringList geometry = {"lizm = 10#4 cm", "xizm = 0#5 cm", "Theta-CE = 30 °",
                                "Radius of head = 0#025 m"};
  const QStringList results = {"Theta-R = 8#47 °", "Theta-pol = 16#41 °", "R/Wb = 2#81",
                               "Pmax/Wb = 3006#76 m^-2"};
  const QStringList peak = {"Pmax = 2066847#58 Pa"};
  const QString words = QStringLiteral("a pain that comes and goes, ").repeated(60);
  const CaseRecord manyLines = WithComments(LinesOfComments(120));
  return {{"ordinary", UsualCase(), UsualCase(), geometry + results + peak, {}},
          {"weight unknown", WithUnknownWeight(), WithUnknownWeight(),
           geometry + results + QStringList("Body weight : Unknown kg"), peak},
          {"refused",
           Refused(),
           UsualCase(),
           QStringList{"lizm = 11#25 cm", "Theta-CE = -20#5 °"} + results + peak,
           {}},
          {"long comments", WithComments(words), UsualCase(), geometry + results + peak, {}},
          {"page turn", manyLines, manyLines, geometry + results + peak, {}, 120}};
}

class LocaleOnPaper : public testing::TestWithParam<LocaleRow> {
 protected:
  PdfPages Printed(const KindOfCase& kind, QPageSize::PageSizeId paper) const {
    const QLocale locale(QString::fromUtf8(GetParam().locale));
    const QString path = folder_.filePath("report.pdf");
    PdfTarget target(path, "TELMARION", {QPageSize(paper), QPageLayout::Portrait, QMarginsF()});
    const ResultTexts results = Vse::ResultTextsOf(kind.shown, locale);
    EXPECT_EQ(Print::PrintCase(target, {kind.record, results, locale}, PrintedDate()), "");
    return PdfPages(path);
  }
  QString Localised(QString text) const { return text.replace(u'#', GetParam().separator); }

 private:
  QTemporaryDir folder_;
};

QStringList AllTexts(const PdfPages& pdf) {
  QStringList texts;
  for (int page = 1; page <= pdf.Count(); ++page) texts += pdf.TextsOf(page);
  return texts;
}

QStringList WithoutBlanks(QStringList texts) {
  return texts.replaceInStrings(QStringLiteral(" "), QString());
}

void ExpectWordsWithinTheMargins(const PdfPages& pdf, int page) {
  const QSizeF paper = pdf.PaperOf(page);
  for (const PdfWord& word : pdf.WordsOf(page)) {
    const std::string text = word.text.toStdString();
    EXPECT_GE(word.box.left(), kMargin - kNear) << text;
    EXPECT_LE(word.box.right(), paper.width() - kMargin + kNear) << text;
    const double y = word.box.top();
    const bool inTitle = y < kTop / 2.0;
    const bool inFooter = y > paper.height() - kFooterTop - 3.0 * kNear;
    const bool inBody = y > kTop - 3.0 * kNear && y < paper.height() - kTop + kNear;
    EXPECT_TRUE(inTitle || inBody || inFooter) << text << " at " << y;
    EXPECT_LE(word.box.bottom(), paper.height()) << text;
  }
}

// Lines of the diagram included.
void ExpectNoInkInTheSideMargins(const PdfPages& pdf, int page) {
  const QImage picture = pdf.PictureOf(page, 72);  // 20 twips a pixel
  const int margin = int(kMargin / 20.0) - 1;
  int ink = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < margin; ++x) {
      ink += qGray(picture.pixel(x, y)) < 250;
      ink += qGray(picture.pixel(picture.width() - 1 - x, y)) < 250;
    }
  }
  EXPECT_EQ(ink, 0);
}

// Every number with a fraction has this separator; dates have none of this form.
void ExpectSeparator(const QStringList& texts, QChar separator) {
  static const QRegularExpression fraction(QStringLiteral("=\\s*-?[0-9]+([^0-9\\s])[0-9]"));
  int found = 0;
  for (const QString& text : texts) {
    const auto match = fraction.match(text);
    if (!match.hasMatch()) continue;
    ++found;
    EXPECT_EQ(match.captured(1), separator) << text.toStdString();
  }
  EXPECT_GE(found, 7);
}

TEST_P(LocaleOnPaper, ReadsBackWithItsSeparatorAndStaysWithinTheMargins) {
  for (const KindOfCase& kind : KindsOfCases()) {
    for (const auto paper : {QPageSize::A4, QPageSize::Letter}) {
      SCOPED_TRACE(std::string(kind.name) + (paper == QPageSize::A4 ? " on A4" : " on Letter"));
      const PdfPages pdf = Printed(kind, paper);
      const QStringList texts = AllTexts(pdf);
      for (const QString& text : kind.texts) {
        EXPECT_EQ(texts.count(Localised(text)), 1) << Localised(text).toStdString();
      }
      for (const QString& text : kind.missing) EXPECT_FALSE(texts.contains(Localised(text)));
      ExpectSeparator(texts, GetParam().separator);
      for (int page = 1; page <= pdf.Count(); ++page) {
        EXPECT_TRUE(WithoutBlanks(pdf.TextsOf(page)).contains(GetParam().date))
            << pdf.TextsOf(page).join(u'\n').toStdString();
        ExpectWordsWithinTheMargins(pdf, page);
        ExpectNoInkInTheSideMargins(pdf, page);
      }
    }
  }
}

TEST_P(LocaleOnPaper, TurnsAFullPageWithoutLosingALine) {
  const KindOfCase turned = KindsOfCases().back();
  for (const auto paper : {QPageSize::A4, QPageSize::Letter}) {
    const PdfPages pdf = Printed(turned, paper);
    EXPECT_GE(pdf.Count(), 3);
    const QStringList lines = AllTexts(pdf).filter("of the comments");
    ASSERT_EQ(lines.size(), turned.commentLines);
    for (int i = 0; i < turned.commentLines; ++i) {
      EXPECT_TRUE(lines[i].endsWith(QStringLiteral("Line %1 of the comments").arg(i + 1)));
    }
    for (int page = 2; page <= pdf.Count(); ++page) {
      EXPECT_EQ(pdf.TextsOf(page).first(), "New Page");
      EXPECT_TRUE(pdf.TextsOf(page).contains(QStringLiteral("Page %1").arg(page)));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Rows, LocaleOnPaper,
                         testing::Values(LocaleRow{"C", "C", u'.', "15Nov2026"},
                                         LocaleRow{"American", "en_US", u'.', "11/15/2026"},
                                         LocaleRow{"German", "de_DE", u',', "15.11.2026"},
                                         LocaleRow{"Slovene", "sl_SI", u',', "15.11.2026"},
                                         LocaleRow{"Swedish", "sv_SE", u',', "2026-11-15"},
                                         LocaleRow{"Polish", "pl_PL", u',', "15.11.2026"},
                                         LocaleRow{"Swiss", "de_CH", u'.', "15.11.2026"},
                                         LocaleRow{"Persian", "fa_IR", u',', "۲۰۲۶/۱۱/۱۵"},
                                         LocaleRow{"Arabic", "ar_EG", u',', "٢٠٢٦/١١/١٥"}),
                         RowName());

}  // namespace
