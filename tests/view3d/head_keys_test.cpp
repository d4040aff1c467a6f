// The 3D view by the keyboard, and in words.
#include <numbers>

#include "tests/view3d/head_fixture.h"
#include "view3d/head_words.h"

namespace {

constexpr float kPi = std::numbers::pi_v<float>;
constexpr float kStep = kPi / 18.0F;

class HeadKeysTest : public HeadWindowTest {
 protected:
  void SetUp() override {
    Open();
    Picture()->setFocus();
  }
  void Key(Qt::Key key) { QTest::keyClick(Picture(), key); }
  QString TurnInWords() { return Find<QWidget>("CoorPic")->accessibleDescription(); }
};

TEST_F(HeadKeysTest, EachArrowTurnsAsADragThatWay) {
  EXPECT_EQ(TurnInWords(), "Turned by 0 ° to the right and 0 ° down.");
  const QImage before = Image().copy();
  Key(Qt::Key_Right);
  EXPECT_FLOAT_EQ(View().angles.third, kPi - kStep);
  EXPECT_EQ(TurnInWords(), "Turned by 10 ° to the right and 0 ° down.");
  EXPECT_NE(Image(), before) << "and is drawn";
  Key(Qt::Key_Down);
  EXPECT_FLOAT_EQ(View().angles.first, -kStep);
  EXPECT_EQ(TurnInWords(), "Turned by 10 ° to the right and 10 ° down.");
  Key(Qt::Key_Left);
  Key(Qt::Key_Up);
  EXPECT_FLOAT_EQ(View().angles.third, kPi);
  EXPECT_FLOAT_EQ(View().angles.first, 0.0F);
  EXPECT_EQ(View().angles.second, 0.0F);
}

// Way and turn are the same as with the mouse.
TEST_F(HeadKeysTest, TurnsToTheSideOfADrag) {
  Press({200, 200});
  Move({220, 210});
  Release({220, 210});
  const ViewAngles dragged = View().angles;
  EXPECT_LT(dragged.third, kPi);
  EXPECT_LT(dragged.first, 0.0F);
  Key(Qt::Key_Right);
  Key(Qt::Key_Down);
  EXPECT_LT(View().angles.third, dragged.third);
  EXPECT_LT(View().angles.first, dragged.first);
}

TEST_F(HeadKeysTest, DrawsAtTheChosenResolution) {
  Choose("Combo1", "Medium");
  Choose("Combo2", "High");
  Move({5, 5});  // a mouse that passes by makes the next drawing coarse
  Key(Qt::Key_Left);
  EXPECT_EQ(View().sphereSteps, 50);
  EXPECT_EQ(View().areaSteps, 70);
}

TEST_F(HeadKeysTest, AHeldKeyTurnsOnWhileDrawingIsQuick) {
  const auto hold = [&] {
    QTest::sendKeyEvent(QTest::Press, Picture(), Qt::Key_Right, QString(), {});
  };
  const auto repeat = [&] {
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(Picture(), &event);
  };
  hold();
  repeat();
  EXPECT_FLOAT_EQ(View().angles.third, kPi - 2.0F * kStep);
  Find<QComboBox>("Combo1")->setCurrentText("Extra");
  repeat();
  EXPECT_FLOAT_EQ(View().angles.third, kPi - 2.0F * kStep) << "else it would turn on for long";
}

TEST_F(HeadKeysTest, KeysTurnNothingWhileTheMouseDrags) {
  Press({200, 200});
  Key(Qt::Key_Right);
  EXPECT_EQ(View().angles.third, kPi);
  Release({200, 200});
}

TEST_F(HeadKeysTest, OtherKeysAndOtherFocusTurnNothing) {
  Key(Qt::Key_A);
  auto* box = Find<QCheckBox>("Check1");
  box->setFocus();
  QTest::keyClick(box, Qt::Key_Right);
  EXPECT_EQ(View().angles.third, kPi);
}

TEST_F(HeadKeysTest, TheFrameOfTheFocusIsNotSavedWithThePicture) {
  const QImage focused = Picture()->grab().toImage();
  const QImage around = form_->grab().toImage();
  Find<QCheckBox>("Check1")->setFocus();
  QApplication::processEvents();
  EXPECT_EQ(Picture()->grab().toImage(), focused);
  EXPECT_NE(form_->grab(QRect(0, 0, 8, form_->height())).toImage(),
            around.copy(0, 0, 8, around.height()));
}

TEST_F(HeadKeysTest, DescribesTheCaseInWords) {
  EXPECT_EQ(Picture()->accessibleDescription(),
            "The weight-bearing area up to the edge at 30 °, coloured by contact stress. The pole "
            "of the stress is at 16.41 °, the peak at 52 % of the legend's top, 4 MPa.");
  EXPECT_TRUE(Find<QWidget>("Mierka")->accessibleDescription().contains("red at 4 MPa"));
  Open(head_cases::Default());
  EXPECT_TRUE(Picture()->accessibleDescription().endsWith("% of the legend's top, 7000 m^-2."));
}

TEST(TurnWords, StayWithinHalfATurn) {
  const auto words = [](float third) { return TurnWords({0.0F, 0.0F, third}, QLocale::c()); };
  EXPECT_TRUE(words(kPi - 3.5F * kPi).startsWith("Turned by -90 °"));
  EXPECT_TRUE(words(0.0F).startsWith("Turned by 180 °"));
  EXPECT_TRUE(words(2.0F * kPi).startsWith("Turned by 180 °"));
}

}  // namespace
