// The box for comments: it gives back what it was given, and wraps so that long texts stay quick.
#include "platform/comments_box.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <QTextBlock>
#include <string>

#include "tests/support/row_name.h"

namespace {

constexpr auto kBetweenWords = QTextOption::WrapAtWordBoundaryOrAnywhere;
constexpr auto kAnywhere = QTextOption::WrapAnywhere;

// Long enough to be handled as such.
QString Many(const QString& unit) {
  return unit.repeated(30'000);
}

struct TextRow {
  std::string name;
  QString text;
};
class CommentsBoxTexts : public testing::TestWithParam<TextRow> {};

TEST_P(CommentsBoxTexts, ComeBackAsTheyWere) {
  CommentsBox box;
  box.show();
  box.ShowText(GetParam().text);
  EXPECT_TRUE(box.Text() == GetParam().text);
}

TEST_P(CommentsBoxTexts, AreCopiedAndPastedAsTheyAre) {
  CommentsBox from;
  from.ShowText(GetParam().text);
  from.selectAll();
  from.copy();
  EXPECT_TRUE(QApplication::clipboard()->text() == GetParam().text);
  CommentsBox to;
  to.show();
  to.ShowText("beforeafter");
  to.moveCursor(QTextCursor::Start);
  for (int i = 0; i < 6; ++i) to.moveCursor(QTextCursor::Right);
  to.paste();
  EXPECT_TRUE(to.Text() == "before" + GetParam().text + "after");
  to.undo();
  EXPECT_EQ(to.Text(), "beforeafter");
}

INSTANTIATE_TEST_SUITE_P(
    Texts, CommentsBoxTexts,
    testing::Values(TextRow{"Usual", " Control after two years.\n\n\tNo pain. \n"},
                    TextRow{"NoBlanks", Many("x")}, TextRow{"Blanks", Many(" ")},
                    TextRow{"Words", Many("word ")}, TextRow{"Tabs", Many("\t")},
                    TextRow{"LineFeeds", Many("\n")}, TextRow{"ShortLines", Many("x\n")},
                    TextRow{"LinesAndEmptyOnes", Many("one\n\ntwo ")},
                    TextRow{"RightToLeft", Many("א")}, TextRow{"Combining", Many("a\u0301")},
                    TextRow{"Emoji", Many("\U0001F600")},
                    TextRow{"ControlCharacters", Many("\x01")}),
    RowName());

TEST(CommentsBoxTest, KeepsBlanksThatDoNotBreak) {
  CommentsBox box;
  box.ShowText(QStringLiteral("5\u00a0kg"));
  EXPECT_EQ(box.Text(), QStringLiteral("5\u00a0kg"));
}

TEST(CommentsBoxTest, ReadOnlyTakesNothingFromTheClipboard) {
  CommentsBox box;
  box.ShowText("shown");
  box.setReadOnly(true);
  QApplication::clipboard()->setText("pasted");
  box.paste();
  EXPECT_EQ(box.Text(), "shown");
}

struct WrapRow {
  std::string name;
  QString text;
  QTextOption::WrapMode mode;
};
class CommentsBoxWrap : public testing::TestWithParam<WrapRow> {};

// A word that fills many lines takes time with the square of its length unless it may be broken
// anywhere.
TEST_P(CommentsBoxWrap, BreaksWordsOnlyIfTheyAreVeryLong) {
  CommentsBox box;
  box.ShowText(GetParam().text);
  EXPECT_EQ(box.wordWrapMode(), GetParam().mode);
  box.ShowText("usual");
  EXPECT_EQ(box.wordWrapMode(), kBetweenWords);
  box.setPlainText(GetParam().text);
  EXPECT_EQ(box.wordWrapMode(), GetParam().mode);
}
INSTANTIATE_TEST_SUITE_P(
    Texts, CommentsBoxWrap,
    testing::Values(WrapRow{"Words", Many("Control, after 2 years. "), kBetweenWords},
                    WrapRow{"Lines", Many("Control:none\n"), kBetweenWords},
                    WrapRow{"AWebAddress", "see " + QString(900, u'x') + " there", kBetweenWords},
                    WrapRow{"NoBlanks", Many("x"), kAnywhere},
                    WrapRow{"OneAmongWords", Many("word ") + QString(1100, u'x'), kAnywhere},
                    WrapRow{"BlanksBeforeSignsThatStayOnTheLine", Many(" !"), kAnywhere},
                    WrapRow{"BracketsThatKeepTheWordBehindABlank", Many("( a"), kAnywhere}),
    RowName());

TEST(CommentsBoxTest, AWordThatGrowsWhileItIsTypedIsWrappedAnywhere) {
  CommentsBox box;
  box.show();
  box.ShowText(QString(990, u'x'));
  QTest::keyClicks(&box, "yyyyy");
  EXPECT_EQ(box.wordWrapMode(), kBetweenWords);
  QTest::keyClicks(&box, "yyyyy");
  QTest::keyClicks(&box, "yyyyy");
  EXPECT_EQ(box.wordWrapMode(), kAnywhere);
  box.selectAll();
  box.cut();
  box.ShowText("usual");
  box.paste();
  EXPECT_EQ(box.wordWrapMode(), kAnywhere);
}

// Each paragraph costs the box as much as a whole line.
TEST(CommentsBoxTest, VeryManyLinesMakeFewParagraphs) {
  CommentsBox box;
  box.resize(400, 120);
  box.show();
  box.ShowText(Many("x\n"));
  EXPECT_LT(box.blockCount(), 100);
  EXPECT_LT(box.document()->begin().length(), 3000) << "nor are they long";
  box.moveCursor(QTextCursor::Down);
  QTest::keyClicks(&box, "y");
  QTest::keyClick(&box, Qt::Key_Return);
  EXPECT_TRUE(box.Text().startsWith("x\ny\nx\nx\n"));
  box.ShowText("one\ntwo");
  EXPECT_EQ(box.blockCount(), 2);
}

// A scroll bar that comes when all is laid out has all laid out once more.
TEST(CommentsBoxTest, LongTextsHaveTheirScrollBarFromTheStart) {
  CommentsBox box;
  box.ShowText(Many("x"));
  EXPECT_EQ(box.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
  box.ShowText("usual");
  EXPECT_EQ(box.verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
}

}  // namespace
