// The way of the focus through the form: selection, the picture's marks, Enter and Tab.
#include <QPlainTextEdit>
#include <QSignalSpy>

#include "caseform/hip_picture.h"
#include "tests/caseform/form_fixture.h"
#include "tests/support/row_name.h"

namespace {

struct Marked {
  const char* name;
  const char* box;
  QStringList lines;
  QStringList labels;
};

class Marks : public CaseForm, public testing::WithParamInterface<Marked> {
 protected:
  // Names of the marks that stand out.
  QStringList RedLines() {
    QStringList red;
    for (const auto* line : form_->findChildren<DimensionLine*>()) {
      const bool isRed = line->borderColor() == QColor(255, 0, 0);
      EXPECT_EQ(line->borderWidth(), isRed ? 2 : 1);
      EXPECT_TRUE(isRed || line->borderColor() == QColor(0, 0, 0));
      if (isRed) red << line->objectName();
    }
    return red;
  }
  QStringList RedLabels() {
    QStringList red;
    for (const auto* label : form_->findChildren<DimensionLabel*>()) {
      EXPECT_TRUE(label->isVisible());
      const bool isRed = label->foreColor() == QColor(255, 0, 0);
      EXPECT_TRUE(isRed || label->foreColor() == QColor(0, 0, 0));
      if (isRed) red << label->objectName();
    }
    return red;
  }
};

TEST_P(Marks, StandOutWhileTheBoxHasTheFocus) {
  EXPECT_EQ(RedLines(), QStringList{});
  Find(GetParam().box)->setFocus();
  EXPECT_EQ(RedLines(), GetParam().lines);
  EXPECT_EQ(RedLabels(), GetParam().labels);
  EXPECT_EQ(Find(GetParam().box)->selectedText(), Find(GetParam().box)->text());
  Control("Combo1")->setFocus();
  EXPECT_EQ(RedLines(), QStringList{});
  EXPECT_EQ(RedLabels(), QStringList{});
}

TEST_P(Marks, GoOutWithTheForm) {
  Find(GetParam().box)->setFocus();
  form_->reject();
  EXPECT_EQ(RedLines(), QStringList{});
  EXPECT_EQ(RedLabels(), QStringList{});
}

INSTANTIATE_TEST_SUITE_P(
    Table, Marks,
    testing::Values(Marked{"Lizm", "Text1", {"Line1"}, {"Label20"}},
                    Marked{"Xizm", "Text2", {"Line2"}, {"Label21"}},
                    Marked{"Zizm", "Text3", {"Line3"}, {"Label22"}},
                    Marked{"Cizm", "Text4", {"Line4"}, {"Label23"}},
                    Marked{"Hizm", "Text5", {"Line5"}, {"Label24"}},
                    Marked{"Zasuk", "Text6", {"Line6"}, {"Label25"}},
                    Marked{"ThetaCE", "Text9", {"Line7", "Line8", "Line9"}, {"Label26", "Label27"}},
                    Marked{"HeadRadius", "Text13", {"Line10"}, {"Label28"}}),
    RowName());

TEST_F(CaseForm, OpensInTheSurnameEveryTime) {
  EXPECT_EQ(QApplication::focusWidget(), Control("Text8"));
  Find("Text9")->setFocus();
  form_->reject();
  form_->show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
  EXPECT_EQ(QApplication::focusWidget(), Control("Text8"));
}

TEST_F(CaseForm, EnteringSelectsTheWholeText) {
  for (const QString& name : kNumberBoxes + QStringList{"Text7", "Text8", "Text10", "Text11"}) {
    Find(name)->setText("12.34");
    Control("Command1")->setFocus();
    QTest::mouseClick(Find(name), Qt::LeftButton, {}, {20, 10});
    EXPECT_EQ(Find(name)->selectionStart(), 0) << name.toStdString();
    EXPECT_EQ(Find(name)->selectedText(), "12.34") << name.toStdString();
    Control("Command1")->setFocus();
  }
  EXPECT_EQ(Said(), Messages{kWrongDate});  // 12.34 as a date of birth
}

TEST_F(CaseForm, EnteringTheCommentsSelectsThemAll) {
  auto* comments = Find<QPlainTextEdit>("Text12");
  comments->setPlainText("one\ntwo");
  QTest::mouseClick(comments->viewport(), Qt::LeftButton, {}, {5, 5});
  EXPECT_EQ(comments->textCursor().selectionStart(), 0);
  EXPECT_EQ(comments->textCursor().selectionEnd(), 7);
}

TEST_F(CaseForm, ASecondClickPlacesTheCursor) {
  QTest::mouseClick(Find("Text1"), Qt::LeftButton);
  QTest::qWait(QApplication::doubleClickInterval() + 50);
  QTest::mouseClick(Find("Text1"), Qt::LeftButton);
  EXPECT_FALSE(Find("Text1")->hasSelectedText());
}

TEST_F(CaseForm, AMenuOrAMessageIsNoLeaving) {
  Type("Text1", "abc");
  Find("Text1")->setSelection(1, 1);
  for (const Qt::FocusReason reason : {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason}) {
    QFocusEvent out(QEvent::FocusOut, reason);
    QApplication::sendEvent(Find("Text1"), &out);
    EXPECT_EQ(Said(), Messages{});
    EXPECT_EQ(Find<QWidget>("Picture1")->findChild<DimensionLine*>("Line1")->borderWidth(), 2);
    QFocusEvent in(QEvent::FocusIn, reason);
    QApplication::sendEvent(Find("Text1"), &in);
    EXPECT_EQ(Find("Text1")->selectedText(), "b");
  }
}

TEST_F(CaseForm, EnterIsOkFromEveryBoxButTheComments) {
  const QSignalSpy ok(form_.get(), &Form1::OkPressed);
  int pressed = 0;
  for (const char* name : {"Text8", "Text10", "Text1", "Text13", "Combo1", "Option1", "Command1"}) {
    Control(name)->setFocus();
    QTest::keyClick(Control(name), Qt::Key_Return);
    EXPECT_EQ(ok.count(), ++pressed) << name;
    EXPECT_TRUE(form_->isVisible()) << name;
  }
  Control("Text12")->setFocus();
  QTest::keyClicks(Control("Text12"), "one");
  QTest::keyClick(Control("Text12"), Qt::Key_Return);
  QTest::keyClicks(Control("Text12"), "two");
  EXPECT_EQ(form_->Entries().comments, "one\ntwo");
  EXPECT_EQ(ok.count(), pressed);
  QTest::keyClick(Control("Text12"), Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(ok.count(), pressed + 1);
  EXPECT_EQ(form_->Entries().comments, "one\ntwo");
}

TEST_F(CaseForm, TabLeavesTheComments) {
  Control("Text12")->setFocus();
  QTest::keyClick(Control("Text12"), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), Control("Text1"));
  EXPECT_EQ(form_->Entries().comments, "");
}

}  // namespace
