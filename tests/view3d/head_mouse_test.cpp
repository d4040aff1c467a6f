// The mouse over the 3D view, event by event.
#include <QElapsedTimer>
#include <numbers>

#include "tests/view3d/head_fixture.h"

namespace {

constexpr float kPi = std::numbers::pi_v<float>;
constexpr float kTickTurn = kPi / 30.0F;

class HeadMouseTest : public HeadWindowTest {
 protected:
  void SetUp() override {
    Open();
    Choose("Combo1", "Medium");
    Choose("Combo2", "High");
  }
  // What a drag of this many pixels of the widget turns.
  float Turn(int pixels) {
    return float(pixels * Picture()->devicePixelRatioF()) * kPi / View().radius;
  }
};

TEST_F(HeadMouseTest, AClickWithoutAMoveTurnsNothing) {
  const QImage before = Image().copy();
  Move({5, 5});  // the pointer came from elsewhere
  Press({120, 90});
  Release({120, 90});
  EXPECT_EQ(View().angles.first, 0.0F);
  EXPECT_EQ(View().angles.third, kPi);
  EXPECT_EQ(View().sphereSteps, 50);
  EXPECT_EQ(View().areaSteps, 70);
  EXPECT_EQ(Image(), before);
}

TEST_F(HeadMouseTest, MovingWithoutPressingDrawsNothing) {
  const QImage before = Image().copy();
  Timer()->setInterval(77);
  Move({120, 90});
  EXPECT_EQ(View().sphereSteps, 5);
  EXPECT_EQ(View().areaSteps, 5);
  EXPECT_EQ(Timer()->interval(), 500);
  EXPECT_FALSE(Timer()->isActive());
  EXPECT_EQ(Image(), before);
  Check("Check3", true);
  EXPECT_EQ(View().sphereSteps, 50);
  EXPECT_EQ(View().areaSteps, 70);
}

TEST_F(HeadMouseTest, EachMoveOfADragIsDrawnAtOnce) {
  Check("Check3", true);
  ASSERT_TRUE(PoleLabel()->isVisible());
  Press({200, 200});
  EXPECT_FALSE(Timer()->isActive());
  EXPECT_TRUE(PoleLabel()->isVisible());
  const QImage before = Image().copy();
  Move({170, 215});
  EXPECT_TRUE(Timer()->isActive());
  EXPECT_EQ(Timer()->interval(), 500);
  EXPECT_FALSE(PoleLabel()->isVisible());
  EXPECT_EQ(View().sphereSteps, 5);
  EXPECT_FLOAT_EQ(View().angles.third, kPi + Turn(30) + kTickTurn) << "the tick goes on a little";
  EXPECT_FLOAT_EQ(View().angles.first, Turn(-15));
  EXPECT_NE(Image(), before);
  EXPECT_GT(CountBlack(), 300) << "with outlines whatever the boxes say";
  Move({180, 200});
  EXPECT_FLOAT_EQ(View().angles.third, kPi + Turn(20) + kTickTurn)
      << "from the press, not added up";
  EXPECT_FLOAT_EQ(View().angles.first, 0.0F);
  Release({180, 200});
}

TEST_F(HeadMouseTest, TheTimerDrawsTheSameTurnAgain) {
  Press({200, 200});
  Move({160, 200});
  TickOnce();  // the sphere now has the fill that the area left at this turn
  const QImage moved = Image().copy();
  for (int tick = 0; tick < 3; ++tick) {
    TickOnce();
    EXPECT_EQ(Image(), moved);
    EXPECT_FLOAT_EQ(View().angles.third, kPi + Turn(40) + kTickTurn);
  }
  Release({160, 200});
}

// On the real clock. The picture is wiped, so that each tick must draw it again.
TEST_F(HeadMouseTest, TheTimerTicksEveryHalfSecondUntilTheRelease) {
  QElapsedTimer clock;
  clock.start();  // before the press, which starts the timer
  Press({200, 200});
  Move({160, 200});
  TickOnce();
  const QImage moved = Image().copy();
  QSignalSpy ticks(Timer(), &QTimer::timeout);
  for (int tick = 1; tick <= 2; ++tick) {
    Picture()->Box().Cls();
    ASSERT_TRUE(ticks.wait(5000));
    EXPECT_GE(clock.elapsed(), tick * 450) << "a timer of this kind may be 5 % early";
    EXPECT_EQ(ticks.count(), tick);
    EXPECT_EQ(Image(), moved);
  }
  Release({160, 200});
  EXPECT_FALSE(ticks.wait(600));
}

TEST_F(HeadMouseTest, TheReleaseDrawsInFullWithTheBarAtRest) {
  Check("Check3", true);
  Press({200, 200});
  Move({190, 210});
  QSignalSpy progress(Find<QProgressBar>("ProgressBar"), &QProgressBar::valueChanged);
  Release({190, 210});
  EXPECT_FLOAT_EQ(View().angles.third, kPi + Turn(10)) << "without the tick's turn";
  EXPECT_FLOAT_EQ(View().angles.first, Turn(-10));
  EXPECT_EQ(View().sphereSteps, 50);
  EXPECT_EQ(View().areaSteps, 70);
  EXPECT_FALSE(Timer()->isActive());
  EXPECT_EQ(progress.count(), 0);
  EXPECT_TRUE(PoleLabel()->isVisible());
  EXPECT_EQ(Picture()->cursor().shape(), Qt::OpenHandCursor);
  const ViewAngles released = View().angles;
  Move({10, 10});
  EXPECT_EQ(View().angles.third, released.third) << "the drag is over";
  Check("Check1", true);
  EXPECT_GT(progress.count(), 100) << "the bar moves again";
}

TEST_F(HeadMouseTest, ThePointerShowsTheDrag) {
  EXPECT_EQ(Picture()->cursor().shape(), Qt::OpenHandCursor);
  Press({200, 200});
  EXPECT_EQ(Picture()->cursor().shape(), Qt::ClosedHandCursor);
  Release({200, 200});
  EXPECT_EQ(Picture()->cursor().shape(), Qt::OpenHandCursor);
}

TEST_F(HeadMouseTest, ADragOverTheRadiusIsHalfATurn) {
  Press({200, 200});
  const int radius = int(double(View().radius) / Picture()->devicePixelRatioF());
  Move({200 - radius, 200});
  Release({200 - radius, 200});
  EXPECT_NEAR(double(View().angles.third), 2.0 * std::numbers::pi, 0.03);
}

TEST_F(HeadMouseTest, TheNextDragStartsWhereTheLastEnded) {
  Press({200, 200});
  Move({190, 200});
  Release({190, 200});
  Press({50, 60});
  Move({40, 60});
  Release({40, 60});
  EXPECT_NEAR(double(View().angles.third), double(kPi + Turn(20)), 1e-5);
}

// As when the button was let go over another window.
TEST_F(HeadMouseTest, BecomingActiveEndsADragWithoutAButton) {
  QMouseEvent press(QEvent::MouseButtonPress, QPointF(200, 200), QPointF(200, 200), Qt::LeftButton,
                    Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(Picture(), &press);
  Move({190, 200});
  QEvent activation(QEvent::ActivationChange);
  QApplication::sendEvent(form_.get(), &activation);
  EXPECT_FALSE(Timer()->isActive());
  EXPECT_EQ(Picture()->cursor().shape(), Qt::OpenHandCursor);
  EXPECT_EQ(View().sphereSteps, 50) << "drawn in full";
  const QImage before = Image().copy();
  Move({100, 100});
  EXPECT_EQ(Image(), before);
}

// As when the press is the click that brings the window to the front.
TEST_F(HeadMouseTest, BecomingActiveWithTheButtonDownKeepsTheDrag) {
  Press({200, 200});
  ASSERT_NE(QGuiApplication::mouseButtons(), Qt::NoButton);
  QEvent activation(QEvent::ActivationChange);
  QApplication::sendEvent(form_.get(), &activation);
  Move({190, 200});
  EXPECT_TRUE(Timer()->isActive());
  Release({190, 200});
  EXPECT_FLOAT_EQ(View().angles.third, kPi + Turn(10));
}

}  // namespace
