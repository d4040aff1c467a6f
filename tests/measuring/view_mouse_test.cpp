// Mouse, wheel and touch over the radiograph, event by event.
#include <QHelpEvent>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QToolTip>
#include <cmath>

#include "tests/measuring/view_fixture.h"
#include "tests/support/golden_picture.h"

namespace {

using namespace Measuring;
using Landmarks::PixelPlace;

class ViewMouseTest : public RadiographViewTest {};

TEST_F(ViewMouseTest, AClickSetsThePointUnderItToThePixel) {
  Click(At(120, 40));
  ASSERT_EQ(Count(MarkKind::Trochanter), 1U);
  ExpectPlace(Place(MarkKind::Trochanter), 120, 40);
  EXPECT_EQ(view_.Selected(), (MarkPoint{MarkKind::Trochanter, 0})) << "so that keys can nudge it";
}

TEST_F(ViewMouseTest, AClickSetsThePointThatIsSeenWhenZoomedPannedAndFlipped) {
  view_.SetFlipped(true);
  Wheel({250, 100}, 600);
  Drag({100, 100}, {130, 90}, Qt::MiddleButton);
  const QPoint at(222, 111);
  Click(at);
  const PixelPlace place = Place(MarkKind::Trochanter);
  const QPointF position = PositionOf(view_.Transform(), place);
  EXPECT_NEAR(position.x(), at.x(), 1e-9);
  EXPECT_NEAR(position.y(), at.y(), 1e-9);
}

TEST_F(ViewMouseTest, AClickBesideThePictureSetsNothing) {
  view_.resize(600, 300);
  Click({20, 150});
  EXPECT_EQ(Count(MarkKind::Trochanter), 0U);
}

TEST_F(ViewMouseTest, ANewPointFollowsThePointerUnderTheMagnifierUntilTheButtonIsLetGo) {
  Press(At(120, 60));
  EXPECT_TRUE(view_.Magnifier());
  Move(At(130, 70));
  EXPECT_EQ(Count(MarkKind::Trochanter), 0U);
  Release(At(131, 72));
  ExpectPlace(Place(MarkKind::Trochanter), 131, 72);
  EXPECT_FALSE(view_.Magnifier());
}

TEST_F(ViewMouseTest, ADragOnFreeGroundDrawsARoughCircle) {
  view_.SetCurrent(MarkKind::Head);
  QSignalSpy rough(&view_, &RadiographView::RoughCircleDrawn);
  const QImage before = Shown();
  Press(At(100, 70));
  Move(At(130, 70));
  const QImage during = Shown();
  EXPECT_GT(golden::Compare(during, before).pixels, 100) << "the circle is shown";
  Release(At(100, 100));
  ASSERT_EQ(rough.count(), 1);
  EXPECT_EQ(rough[0][0].value<MarkKind>(), MarkKind::Head);
  ExpectPlace(rough[0][1].value<PixelPlace>(), 100, 70);
  ExpectPlace(rough[0][2].value<PixelPlace>(), 100, 100);
  EXPECT_EQ(Count(MarkKind::Head), 0U);
  EXPECT_EQ(Shown(), before) << "it is the caller's from here on";
}

TEST_F(ViewMouseTest, AClickOfAnUnsteadyHandSetsAPointOfACircle) {
  view_.SetCurrent(MarkKind::Head);
  QSignalSpy rough(&view_, &RadiographView::RoughCircleDrawn);
  Drag(At(100, 70), At(101, 71));
  EXPECT_EQ(rough.count(), 0);
  ExpectPlace(Place(MarkKind::Head), 101, 71);
}

TEST_F(ViewMouseTest, AHandleIsDraggedAsFarAsThePointerMoves) {
  Mark(MarkKind::Trochanter, {{100.25, 70.5}});
  QSignalSpy moved(&view_, &RadiographView::PointMoved);
  const QPoint grab = At(102, 72);  // beside the point, within its reach
  Press(grab);
  EXPECT_EQ(view_.Selected(), (MarkPoint{MarkKind::Trochanter, 0}));
  Move(grab + QPoint(40, -20));
  ExpectPlace(Place(MarkKind::Trochanter), 120.25, 60.5);
  Release(grab + QPoint(42, -20));
  ExpectPlace(Place(MarkKind::Trochanter), 121.25, 60.5);
  ASSERT_EQ(moved.count(), 2);
  EXPECT_FALSE(moved[0][3].toBool());
  EXPECT_TRUE(moved[1][3].toBool());
  EXPECT_EQ(Count(MarkKind::Trochanter), 1U);
}

TEST_F(ViewMouseTest, AClickOnAHandleMovesNothing) {
  Mark(MarkKind::Head, {{100, 70}, {120, 70}});
  view_.SetCurrent(MarkKind::Head);
  QSignalSpy moved(&view_, &RadiographView::PointMoved);
  QSignalSpy added(&view_, &RadiographView::PointAdded);
  Drag(At(121, 71), At(122, 71));  // a slip
  QTest::mouseDClick(&view_, Qt::LeftButton, {}, At(120, 70));
  EXPECT_EQ(view_.Selected(), (MarkPoint{MarkKind::Head, 1}));
  EXPECT_EQ(moved.count(), 0);
  EXPECT_EQ(added.count(), 0);
}

TEST_F(ViewMouseTest, AClickOnTheHandleOfAnotherMarkSetsThePointThatIsWanted) {
  Mark(MarkKind::SocketEdge, {{100, 70}});
  Press(At(101, 71));
  EXPECT_TRUE(view_.Magnifier());
  Release(At(101, 71));
  ExpectPlace(Place(MarkKind::SocketEdge), 100, 70);
  ASSERT_EQ(Count(MarkKind::Trochanter), 1U);
  ExpectPlace(Place(MarkKind::Trochanter), 101, 71);
}

TEST_F(ViewMouseTest, ADragMovesAnotherMarkAlsoWhileAPointIsWanted) {
  Mark(MarkKind::SocketEdge, {{100, 70}});
  Drag(At(100, 70), At(110, 80));
  ExpectPlace(Place(MarkKind::SocketEdge), 110, 80);
  EXPECT_EQ(Count(MarkKind::Trochanter), 0U);
}

TEST_F(ViewMouseTest, AHandleReachesTenPixels) {
  Mark(MarkKind::Head, {{100, 70}});
  view_.SetCurrent(MarkKind::Head);
  Click(At(100, 70) + QPoint(10, 0));
  EXPECT_EQ(view_.Selected(), (MarkPoint{MarkKind::Head, 0}));
  Click(At(100, 70) + QPoint(11, 0));
  EXPECT_EQ(view_.Selected(), (MarkPoint{MarkKind::Head, 1})) << "a new one";
}

TEST_F(ViewMouseTest, OfTwoHandlesInOnePlaceTheCurrentMarksIsTaken) {
  Mark(MarkKind::SocketEdge, {{100, 70}});
  Mark(MarkKind::CrestTop, {{100, 70}});
  view_.SetCurrent(MarkKind::CrestTop);
  Click(At(100, 70));
  EXPECT_EQ(view_.Selected()->kind, MarkKind::CrestTop);
  view_.SetCurrent(MarkKind::SocketEdge);
  Click(At(100, 70));
  EXPECT_EQ(view_.Selected()->kind, MarkKind::SocketEdge);
}

TEST_F(ViewMouseTest, APointIsNotDraggedOffThePicture) {
  Mark(MarkKind::Trochanter, {{100, 70}});
  Drag(At(100, 70), {-50, 500});
  ExpectPlace(Place(MarkKind::Trochanter), -0.5, 149.5);
}

TEST_F(ViewMouseTest, AHandleStaysUnderThePointerThatZoomsWhileItDrags) {
  Mark(MarkKind::Trochanter, {{100, 70}});
  Press(At(100, 70));
  Move(At(140, 90));
  Wheel(At(140, 90), 360);
  Move(At(141, 90));
  const QPointF point = PositionOf(view_.Transform(), Place(MarkKind::Trochanter));
  EXPECT_NEAR(point.x(), At(141, 90).x(), 1.0);
  EXPECT_NEAR(point.y(), At(141, 90).y(), 1.0);
  Release(At(141, 90));
}

TEST_F(ViewMouseTest, ADragEndsWithThePointThatItHolds) {
  Mark(MarkKind::Head, {{100, 70}});
  Press(At(100, 70));
  Move(At(110, 70));
  QSignalSpy moved(&view_, &RadiographView::PointMoved);
  Mark(MarkKind::Head, {});  // undone in the middle of it
  Move(At(120, 70));
  Release(At(120, 70));
  EXPECT_EQ(moved.count(), 0);
}

TEST_F(ViewMouseTest, EscapeTakesADragBack) {
  Mark(MarkKind::Trochanter, {{100, 70}});
  Press(At(100, 70));
  Move(At(130, 90));
  Key(Qt::Key_Escape);
  ExpectPlace(Place(MarkKind::Trochanter), 100, 70);
  Move(At(140, 90));
  Release(At(140, 90));
  ExpectPlace(Place(MarkKind::Trochanter), 100, 70);
}

TEST_F(ViewMouseTest, TheRightButtonSetsTheWindow) {
  const double width = view_.ShownWindow().width;
  const double centre = view_.ShownWindow().centre;
  Drag({100, 100}, {200, 60}, Qt::RightButton);
  EXPECT_NEAR(view_.ShownWindow().width, width * std::sqrt(2.0), 1e-6);
  EXPECT_NEAR(view_.ShownWindow().centre, centre - width / 10.0, 1e-6);
  EXPECT_EQ(Count(MarkKind::Trochanter), 0U);
}

TEST_F(ViewMouseTest, EscapeBringsTheTableBackThatADragHasMadeAWindow) {
  radiograph_->tables = {{0, 8, {255, 0, 255, 0}, "ODD"}};
  view_.SetRadiograph(radiograph_, 1.0);
  const QImage before = Shown();
  Press({100, 100}, Qt::RightButton);
  Move({200, 60});
  EXPECT_NE(Shown(), before);
  Key(Qt::Key_Escape);
  Release({200, 60}, Qt::RightButton);
  EXPECT_EQ(Shown(), before);
}

TEST_F(ViewMouseTest, DraggingUpBrightensWhatIsSeenHoweverThePictureIsTurned) {
  for (const bool fileInverted : {false, true}) {
    for (const bool inverted : {false, true}) {
      radiograph_->inverted = fileInverted;
      view_.SetRadiograph(radiograph_, 1.0);
      view_.SetInverted(inverted);
      const int before = ColourAt(Shown(), {150, 150}).lightness();
      Drag({100, 200}, {100, 100}, Qt::RightButton);
      EXPECT_GT(ColourAt(Shown(), {150, 150}).lightness(), before + 20);
    }
  }
}

TEST_F(ViewMouseTest, TheMiddleButtonPullsThePictureAlong) {
  const PixelPlace place = PlaceAt(view_.Transform(), {100, 100});
  Drag({100, 100}, {130, 75}, Qt::MiddleButton);
  const QPointF now = PositionOf(view_.Transform(), place);
  EXPECT_NEAR(now.x(), 130, 1e-9);
  EXPECT_NEAR(now.y(), 75, 1e-9);
}

TEST_F(ViewMouseTest, SpaceMakesTheLeftButtonPull) {
  Mark(MarkKind::SocketEdge, {{49, 49}});
  const PixelPlace place = PlaceAt(view_.Transform(), {100, 100});
  QTest::keyPress(&view_, Qt::Key_Space);
  EXPECT_EQ(view_.cursor().shape(), Qt::OpenHandCursor);
  Press({100, 100});
  EXPECT_EQ(view_.cursor().shape(), Qt::ClosedHandCursor);
  Move({130, 75});
  Release({130, 75});
  QTest::keyRelease(&view_, Qt::Key_Space);
  EXPECT_NEAR(PositionOf(view_.Transform(), place).x(), 130, 1e-9);
  ExpectPlace(Place(MarkKind::SocketEdge), 49, 49);
  EXPECT_EQ(Count(MarkKind::Trochanter), 0U);
  Click({200, 150});
  EXPECT_EQ(Count(MarkKind::Trochanter), 1U) << "without Space it sets again";
}

TEST_F(ViewMouseTest, TheWheelZoomsAndThePlaceUnderThePointerStays) {
  const QPointF pointer(310, 44);
  const PixelPlace place = PlaceAt(view_.Transform(), pointer);
  const double zoom = view_.Zoom();
  Wheel(pointer, 240);
  EXPECT_NEAR(view_.Zoom() / zoom, 1.25 * 1.25, 1e-9);
  ExpectPlace(PlaceAt(view_.Transform(), pointer), place.column, place.row);
  Wheel(pointer, 12000);
  EXPECT_NEAR(view_.Zoom(), 64.0, 1e-9) << "no further";
  ExpectPlace(PlaceAt(view_.Transform(), pointer), place.column, place.row);
  Wheel(pointer, -120000);
  EXPECT_NEAR(view_.Zoom(), zoom / 20.0, 1e-9) << "nor smaller";
}

TEST_F(ViewMouseTest, APinchOnTheTouchpadZoomsToThePointer) {
  const QPointF pointer(310, 44);
  const PixelPlace place = PlaceAt(view_.Transform(), pointer);
  const double zoom = view_.Zoom();
  QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2,
                            pointer, pointer, view_.mapToGlobal(pointer), 0.5, {});
  QApplication::sendEvent(&view_, &pinch);
  EXPECT_NEAR(view_.Zoom() / zoom, 1.5, 1e-9);
  ExpectPlace(PlaceAt(view_.Transform(), pointer), place.column, place.row);
}

TEST_F(ViewMouseTest, TwoFingersZoomAndSetNoPoint) {
  QPointingDevice* screen = QTest::createTouchDevice();
  screen->setParent(qApp);  // Qt leaves it to the caller
  const double zoom = view_.Zoom();
  const auto touch = [&](int half) {
    QTest::touchEvent(&view_, screen)
        .move(0, QPoint(200 - half, 150))
        .move(1, QPoint(200 + half, 150));
  };
  QTest::touchEvent(&view_, screen).press(0, QPoint(180, 150));
  QTest::touchEvent(&view_, screen).stationary(0).press(1, QPoint(220, 150));
  for (int half = 20; half <= 80; half += 5) touch(half);
  QTest::touchEvent(&view_, screen).release(0, QPoint(120, 150)).release(1, QPoint(280, 150));
  EXPECT_GT(view_.Zoom() / zoom, 1.5);
  EXPECT_LE(view_.Zoom() / zoom, 4.0 + 1e-6);
  EXPECT_EQ(Count(MarkKind::Trochanter), 0U);
}

TEST_F(ViewMouseTest, ThePlaceUnderThePointerIsTold) {
  QSignalSpy pointer(&view_, &RadiographView::PointerMoved);
  Wheel({201, 151}, -480);  // about pixel 100, 75
  const auto told = [&] { return pointer.last()[0].value<std::optional<PixelPlace>>(); };
  Move({201, 151});
  ASSERT_TRUE(told());
  // At odd scales of the display the mouse of the tests may be off by one pixel of the view.
  constexpr double kPixelOfView = 1.23;
  EXPECT_NEAR(told()->column, 100, kPixelOfView);
  EXPECT_NEAR(told()->row, 75, kPixelOfView);
  Move({5, 5});
  EXPECT_FALSE(told());
  Move({201, 151});
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&view_, &leave);
  EXPECT_FALSE(told());
}

TEST_F(ViewMouseTest, PointingAtAMarkSaysWhatItIs) {
  Mark(MarkKind::Head, {{60, 40}, {40, 60}, {20, 40}, {40, 20}});
  view_.circles[IndexOf(MarkKind::Head)] = CircleOnPicture{{40, 40}, 20, 20};
  Mark(MarkKind::Midline, {{100, 20}, {100, 120}});
  Mark(MarkKind::Trochanter, {{160, 100}});
  const auto words = [&](QPoint at) {
    QHelpEvent help(QEvent::ToolTip, at, view_.mapToGlobal(at));
    QApplication::sendEvent(&view_, &help);
    return QToolTip::text();
  };
  EXPECT_EQ(words(At(60, 40)), "Head circle, point 1 of 4");
  EXPECT_EQ(words(At(54, 54)), "Head circle") << "its outline";
  EXPECT_EQ(words(At(100, 70) + QPoint(4, 0)), "Midline");
  EXPECT_EQ(words(At(160, 100)), "Trochanter");
  words(At(40, 40));  // inside the circle is free ground
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 5000));
  words(At(190, 20));
  EXPECT_FALSE(QToolTip::isVisible());
}

TEST_F(ViewMouseTest, ThePointerShowsWhatAPressWouldDo) {
  Mark(MarkKind::Trochanter, {{160, 100}});
  Move(At(160, 100));
  EXPECT_EQ(view_.cursor().shape(), Qt::SizeAllCursor);
  Move(At(60, 100));
  EXPECT_EQ(view_.cursor().shape(), Qt::CrossCursor);
}

TEST_F(ViewMouseTest, WhatIsSaidAtARestingMouseFollowsTheMarks) {
  Mark(MarkKind::Head, {{60, 40}, {160, 100}});
  Move(At(160, 100));
  QHelpEvent help(QEvent::ToolTip, At(160, 100), view_.mapToGlobal(At(160, 100)));
  QApplication::sendEvent(&view_, &help);
  EXPECT_EQ(QToolTip::text(), "Head circle, point 2 of 2");
  Mark(MarkKind::Head, {{20, 20}, {60, 40}, {160, 100}});
  EXPECT_EQ(QToolTip::text(), "Head circle, point 3 of 3");
  Mark(MarkKind::Head, {{20, 20}});
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 5000));
  EXPECT_EQ(view_.cursor().shape(), Qt::CrossCursor);
  Mark(MarkKind::Head, {{160, 100}});
  EXPECT_EQ(view_.cursor().shape(), Qt::SizeAllCursor);
}

TEST_F(ViewMouseTest, ThePlaceUnderARestingMouseFollowsTheView) {
  QSignalSpy pointer(&view_, &RadiographView::PointerMoved);
  const auto told = [&] { return pointer.last()[0].value<std::optional<PixelPlace>>(); };
  Move(At(20, 30));
  const double column = told()->column;
  view_.SetFlipped(true);
  EXPECT_NEAR(told()->column, 199.0 - column, 1e-6);
  view_.SetRadiograph(MakeRadiograph(100, 75, LevelAt), 1.0);
  EXPECT_NEAR(told()->column, (column + 0.5) / 2.0 - 0.5, 1e-6);
}

TEST_F(ViewMouseTest, ASecondButtonBeginsNothing) {
  Mark(MarkKind::Trochanter, {{100, 70}});
  const auto window = view_.ShownWindow();
  Press(At(100, 70));
  Press(At(100, 70), Qt::RightButton);
  Move(At(120, 70));
  Release(At(120, 70), Qt::RightButton);
  Move(At(130, 70));
  Release(At(130, 70));
  ExpectPlace(Place(MarkKind::Trochanter), 130, 70);
  EXPECT_EQ(view_.ShownWindow(), window);
}

TEST_F(ViewMouseTest, TheMagnifierNeverCoversThePoint) {
  Mark(MarkKind::Trochanter, {{100, 70}});
  Press(At(100, 70));
  for (int x = 0; x < 400; x += 10) {
    for (int y = 0; y < 300; y += 10) {
      Move({x, y});
      const QPointF point = PositionOf(view_.Transform(), Place(MarkKind::Trochanter));
      EXPECT_FALSE(view_.Magnifier() && view_.Magnifier()->contains(point)) << x << ' ' << y;
    }
  }
  Release(At(100, 70));
  EXPECT_FALSE(view_.Magnifier());
}

TEST_F(ViewMouseTest, TheMagnifierStaysWhereItIsAsLongAsItCan) {
  Mark(MarkKind::Trochanter, {{100, 70}});
  Press(At(100, 70));
  Move(At(150, 100));
  const QRectF left = *view_.Magnifier();
  EXPECT_LT(left.center().x(), 200);
  Move({50, 50});
  const QRectF right = *view_.Magnifier();
  EXPECT_GT(right.center().x(), 200);
  Move(At(100, 100));
  EXPECT_EQ(*view_.Magnifier(), right);
  Release(At(100, 100));
}

// A picture with a single bright pixel: it fills the middle of the magnifier, at least four device
// pixels each way, around a cross that leaves it free.
TEST_F(ViewMouseTest, TheMagnifierShowsThePointEnlargedInItsMiddle) {
  view_.SetRadiograph(
      MakeRadiograph(200, 150, [](int x, int y) { return x == 120 && y == 70 ? 1000 : 0; }), 1.0);
  Mark(MarkKind::Trochanter, {{100, 70}});
  Press(At(100, 70));
  Move(At(120, 70));
  const QRectF area = *view_.Magnifier();
  const QImage shown = Shown();
  EXPECT_GT(ColourAt(shown, area.center().toPoint()).lightness(), 200);
  EXPECT_GT(ColourAt(shown, area.center().toPoint() + QPoint(1, 1)).lightness(), 100);
  const QPoint arm = area.center().toPoint() + QPoint(30, 0);
  int brightest = 0;
  for (int y = -2; y <= 2; ++y) {
    brightest = std::max(brightest, ColourAt(shown, arm + QPoint(0, y)).lightness());
  }
  EXPECT_GT(brightest, 100) << "the fine cross";
  Release(At(120, 70));
}

}  // namespace
