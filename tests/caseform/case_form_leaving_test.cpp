// What is said when the focus leaves a box, and what is not: messages, one at a time, after the
// move.
#include <QDialog>
#include <QSignalSpy>
#include <QTimer>
#include <QWindow>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "caseform/hip_picture.h"
#include "tests/caseform/form_fixture.h"

namespace {

TEST_F(CaseForm, ABadNumberIsReportedOnLeavingItsBox) {
  for (const QString& name : kNumberBoxes + QStringList{"Text10"}) {
    Type(name, "1.2.3");
    QTest::keyClick(Find(name), Qt::Key_Tab);
    EXPECT_EQ(door_.Take(), Messages{}) << "from inside the focus event: " << name.toStdString();
    EXPECT_EQ(Said(), Messages{kNotANumber}) << name.toStdString();
    EXPECT_TRUE(form_->inputError());
    EXPECT_EQ(Find(name)->text(), "1.2.3");
    EXPECT_NE(QApplication::focusWidget(), Find(name));
    Find(name)->setText("12");
  }
}

TEST_F(CaseForm, AGoodNumberIsLeftAsTyped) {
  form_->ParseNumber("abc");
  EXPECT_EQ(door_.Take(), Messages{kNotANumber});
  Type("Text1", " 10,40 ");
  QTest::keyClick(Find("Text1"), Qt::Key_Tab);
  EXPECT_EQ(Said(), Messages{});
  EXPECT_FALSE(form_->inputError());
  EXPECT_EQ(Find("Text1")->text(), " 10,40 ");
}

TEST_F(CaseForm, AnEmptyWeightIsFineAnEmptyLengthIsNot) {
  Type("Text10", "");
  Control("Combo1")->setFocus();
  EXPECT_EQ(Said(), Messages{});
  Type("Text10", "  ");
  Control("Combo1")->setFocus();
  EXPECT_EQ(Said(), Messages{});
  Type("Text1", "");
  Control("Combo1")->setFocus();
  EXPECT_EQ(Said(), Messages{kNotANumber});
}

TEST_F(CaseForm, ABadDateIsReportedOnLeavingItsBox) {
  Type("Text11", "956");
  Control("Text10")->setFocus();
  EXPECT_EQ(Said(), Messages{kWrongDate});
  EXPECT_EQ(Find("Text11")->text(), "956");
  for (const char* good : {"1956", "1956-11-15", "Unknown", ""}) {
    Type("Text11", good);
    Control("Text10")->setFocus();
    EXPECT_EQ(Said(), Messages{}) << good;
  }
}

TEST_F(CaseForm, NamesAndCommentsAreNotChecked) {
  for (const char* name : {"Text7", "Text8"}) Type(name, "1.2.3");
  Control("Text12")->setFocus();
  QTest::keyClicks(Control("Text12"), "1.2.3");
  Control("Combo1")->setFocus();
  EXPECT_EQ(Said(), Messages{});
}

TEST_F(CaseForm, SeveralBadBoxesGiveOneMessageEach) {
  Find("Text1")->setText("abc");
  Find("Text4")->setText("abc");
  Find("Text1")->setFocus();
  Find("Text4")->setFocus();
  Find("Text5")->setFocus();
  EXPECT_EQ(Said(), (Messages{kNotANumber, kNotANumber}));
  EXPECT_EQ(Said(), Messages{});
}

TEST_F(CaseForm, WithoutWindowFocusAMoveStillLeavesTheBox) {
  Type("Text1", "abc");
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  EXPECT_EQ(Said(), Messages{});
  Find("Text5")->setFocus();  // takes effect when the form comes back
  other.close();
  form_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
  EXPECT_EQ(Said(), Messages{kNotANumber});
  EXPECT_EQ(form_->findChild<DimensionLine*>("Line1")->borderWidth(), 1);
  EXPECT_EQ(form_->findChild<DimensionLine*>("Line5")->borderWidth(), 2);
}

// Plays the confirmation: checks the entries as the listener of OK does.
void ConfirmOnOk(Form1& form) {
  QObject::connect(&form, &Form1::OkPressed, &form, [&form] {
    form.BeginConfirmation();
    for (const Vse::Fault& fault :
         Vse::CheckEntries(form.Entries(), form.weightUnknown(), QLocale::c()).faults) {
      form.ShowFault(fault);
    }
  });
}

// With message boxes as people see them, which take the focus and give it back.
class CaseFormWithBoxes : public testing::Test {
 protected:
  void SetUp() override {
    QObject::connect(&closer_, &QTimer::timeout, [this] {
      auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (box == nullptr || box == &form_) return;
      ++shown_;
      box->accept();
    });
    closer_.start(10);
    form_.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form_));
  }
  void TypeBadNumber(const char* name) {
    form_.findChild<QLineEdit*>(name)->setFocus();
    QTest::keyClicks(form_.findChild<QLineEdit*>(name), "abc");
  }
  // The number of boxes that came up within a while. Without a window manager nobody brings the
  // form to the front again.
  int BoxesShown() {
    QTest::qWait(150);
    if (form_.isVisible()) {
      form_.activateWindow();
      EXPECT_TRUE(QTest::qWaitForWindowActive(&form_));
    }
    return std::exchange(shown_, 0);
  }

  DialogMessageDoor door_;
  Form1 form_{door_, QLocale::c()};
  QTimer closer_;
  int shown_ = 0;
};

TEST_F(CaseFormWithBoxes, OneComesUpOnLeavingAndTheFocusHasMoved) {
  TypeBadNumber("Text1");
  QTest::keyClick(form_.findChild<QLineEdit*>("Text1"), Qt::Key_Tab);
  EXPECT_EQ(BoxesShown(), 1);
  EXPECT_EQ(QApplication::focusWidget(), form_.findChild<QComboBox*>("Combo1"));
  EXPECT_EQ(form_.findChild<DimensionLine*>("Line1")->borderWidth(), 1);
}

TEST_F(CaseFormWithBoxes, TwoComeUpOneAfterTheOther) {
  TypeBadNumber("Text1");
  TypeBadNumber("Text4");
  form_.findChild<QLineEdit*>("Text5")->setFocus();
  EXPECT_EQ(BoxesShown(), 2);
  EXPECT_EQ(QApplication::focusWidget(), form_.findChild<QLineEdit*>("Text5"));
}

TEST_F(CaseFormWithBoxes, OneComesUpForOkAndTheBoxKeepsTheFocus) {
  ConfirmOnOk(form_);
  TypeBadNumber("Text1");
  QTest::keyClick(form_.findChild<QLineEdit*>("Text1"), Qt::Key_Return);
  EXPECT_EQ(BoxesShown(), 1);
  EXPECT_EQ(QApplication::focusWidget(), form_.findChild<QLineEdit*>("Text1"));
  EXPECT_EQ(form_.findChild<DimensionLine*>("Line1")->borderWidth(), 2);
  QTest::mouseClick(form_.findChild<QPushButton*>("Command1"), Qt::LeftButton);
  EXPECT_EQ(BoxesShown(), 1);
}

TEST_F(CaseFormWithBoxes, NoneComesUpForCancel) {
  TypeBadNumber("Text1");
  QTest::mouseClick(form_.findChild<QPushButton*>("Command2"), Qt::LeftButton);
  EXPECT_EQ(BoxesShown(), 0);
  EXPECT_FALSE(form_.isVisible());
}

TEST_F(CaseForm, ClickingOkWithABadBoxInFocusSaysSoOnce) {
  ConfirmOnOk(*form_);
  Type("Text1", "abc");
  QTest::mouseClick(Control("Command1"), Qt::LeftButton);
  EXPECT_EQ(Said(), Messages{kNotANumber});
  EXPECT_TRUE(form_->isVisible());
  EXPECT_TRUE(form_->entryError());
}

TEST_F(CaseForm, EnterWithABadBoxInFocusSaysSoOnce) {
  ConfirmOnOk(*form_);
  Type("Text1", "abc");
  QTest::keyClick(Find("Text1"), Qt::Key_Return);
  EXPECT_EQ(Said(), Messages{kNotANumber});
}

// The press moves the focus; a message before the release would swallow the click.
TEST_F(CaseForm, ASlowClickOnAButtonIsNotBrokenOff) {
  ConfirmOnOk(*form_);
  for (const auto& [button, messages] :
       {std::pair("Command1", Messages{kNotANumber}), std::pair("Command2", Messages{})}) {
    Type("Text1", "abc");
    const QPoint at = Control(button)->mapTo(form_.get(), Control(button)->rect().center());
    QTest::mousePress(form_->windowHandle(), Qt::LeftButton, {}, at);
    QTest::qWait(60);
    EXPECT_EQ(QApplication::focusWidget(), Control(button));
    EXPECT_EQ(door_.Take(), Messages{}) << button;
    QTest::mouseRelease(form_->windowHandle(), Qt::LeftButton, {}, at);
    QTest::qWait(60);
    EXPECT_EQ(door_.Take(), messages) << button;
  }
  EXPECT_FALSE(form_->isVisible());
}

TEST_F(CaseForm, AClickGivenUpOnOkStillChecksTheBox) {
  Type("Text1", "abc");
  const QPoint at = Control("Command1")->mapTo(form_.get(), QPoint(5, 5));
  QTest::mousePress(form_->windowHandle(), Qt::LeftButton, {}, at);
  QTest::mouseRelease(form_->windowHandle(), Qt::LeftButton, {}, at - QPoint(60, 0));
  QTest::qWait(60);
  EXPECT_EQ(door_.Take(), Messages{kNotANumber});
}

TEST_F(CaseForm, AnOpenUnitListIsNotBrokenOff) {
  Type("Text1", "abc");
  Find<QComboBox>("Combo1")->setFocus();
  Find<QComboBox>("Combo1")->showPopup();
  QTest::qWait(60);
  EXPECT_EQ(door_.Take(), Messages{});
  Find<QComboBox>("Combo1")->hidePopup();
  QTest::qWait(60);
  EXPECT_EQ(door_.Take(), Messages{kNotANumber});
}

TEST_F(CaseForm, LeavingWithoutOkSaysNothing) {
  const auto leave = std::map<std::string, std::function<void()>>{
      {"Cancel", [this] { QTest::mouseClick(Control("Command2"), Qt::LeftButton); }},
      {"Escape", [this] { QTest::keyClick(Find("Text1"), Qt::Key_Escape); }},
      {"close box", [this] { form_->close(); }}};
  for (const auto& [name, way] : leave) {
    form_->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    const QSignalSpy rejected(form_.get(), &Form1::rejected);
    Type("Text11", "956");
    Type("Text1", "abc");
    Messages said = Said();
    EXPECT_EQ(said, Messages{kWrongDate}) << name;
    way();
    EXPECT_EQ(Said(), Messages{}) << name;
    EXPECT_FALSE(form_->isVisible()) << name;
    EXPECT_EQ(rejected.count(), 1) << name;
    EXPECT_EQ(Find("Text1")->text(), "abc") << name;
  }
}

TEST_F(CaseForm, TakingTheFormDownSaysNothing) {
  Type("Text1", "abc");
  form_ = nullptr;
  EXPECT_EQ(Said(), Messages{});
}

TEST_F(CaseForm, NewEntriesTakeTheCheckOfTheOldOnesAway) {
  Type("Text1", "abc");
  Find("Text5")->setFocus();
  form_->SetEntries(DefaultCaseEntries());
  EXPECT_EQ(Said(), Messages{});
}

}  // namespace
