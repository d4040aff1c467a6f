// What the view shows: fit, zoom, window, flip, and what it says of itself.
#include <QAccessible>
#include <cmath>
#include <new>

#include "tests/measuring/view_fixture.h"
#include "tests/support/little_memory.h"
#include "tests/support/palettes.h"

namespace {

using namespace Measuring;
using Landmarks::PixelPlace;

TEST_F(RadiographViewTest, APictureComesUpFittedInTheFilesFirstWindow) {
  radiograph_->windows = {{1000, 500, {}, "FIRST"}, {2000, 100, {}, "SECOND"}};
  view_.SetInverted(true);
  view_.SetFlipped(true);
  view_.SetRadiograph(radiograph_, 1.0);
  EXPECT_EQ(PictureOnView(view_.Transform(), {200, 150}), QRectF(0, 0, 400, 300));
  EXPECT_EQ(view_.ShownWindow().name, "FIRST");
  EXPECT_FALSE(view_.IsInverted());
  EXPECT_FALSE(view_.IsFlipped());
}

#ifdef TELMARION_MEMORY_CAN_BE_LIMITED
TEST_F(RadiographViewTest, WithoutMemoryForAPictureTheOneBeforeStays) {
  const auto large = MakeRadiograph(9000, 9000, [](int, int) { return 7; });
  const QImage before = Shown();
  {
    const LittleMemory little(8U << 20U);
    EXPECT_THROW(view_.SetRadiograph(large, 1.0), std::bad_alloc);
  }
  EXPECT_EQ(Shown(), before);
  EXPECT_EQ(PictureOnView(view_.Transform(), {200, 150}), QRectF(0, 0, 400, 300));
}
#endif

TEST_F(RadiographViewTest, WithoutAWindowInTheFileAllLevelsAreSeen) {
  const double most = LevelAt(199, 149);
  EXPECT_EQ(view_.ShownWindow().centre, most / 2.0);
  EXPECT_EQ(view_.ShownWindow().width, most);
  EXPECT_LT(ColourAt(Shown(), {8, 8}).lightness(), 10);
  EXPECT_GT(ColourAt(Shown(), {392, 292}).lightness(), 245);
}

TEST_F(RadiographViewTest, TheFittedPictureStaysFittedWhenTheViewChangesItsSize) {
  view_.resize(500, 300);
  QApplication::processEvents();
  EXPECT_EQ(PictureOnView(view_.Transform(), {200, 150}), QRectF(50, 0, 400, 300));
  Wheel({100, 100}, 120);
  const PixelPlace middle = view_.Transform().middle;
  const double zoom = view_.Zoom();
  view_.resize(400, 400);
  QApplication::processEvents();
  EXPECT_EQ(view_.Transform().middle, middle) << "one that the user has chosen stays";
  EXPECT_EQ(view_.Zoom(), zoom);
}

TEST_F(RadiographViewTest, OneToOneShowsEveryPixelAsItIs) {
  view_.resize(401, 303);
  view_.OneToOne();
  view_.clearFocus();  // no frame
  EXPECT_EQ(view_.Zoom(), 1.0);
  const QImage shown = Shown();
  const double ratio = shown.devicePixelRatio();
  const QPointF first = PositionOf(view_.Transform(), {0, 0}) * ratio - QPointF(0.5, 0.5);
  const QPoint corner = first.toPoint();
  EXPECT_NEAR(first.x(), corner.x(), 1e-6);
  for (int y = 0; y < 150; ++y) {
    for (int x = 0; x < 200; ++x) {
      const int grey = int(std::lround(255.0 * LevelAt(x, y) / LevelAt(199, 149)));
      ASSERT_NEAR(qGray(shown.pixel(corner + QPoint(x, y))), grey, 1) << x << ' ' << y;
    }
  }
}

TEST_F(RadiographViewTest, HighPixelsAreShownHigh) {
  view_.SetRadiograph(radiograph_, 2.0);
  EXPECT_EQ(PictureOnView(view_.Transform(), {200, 150}), QRectF(100, 0, 200, 300));
}

TEST_F(RadiographViewTest, FlippedShowsTheOtherSideAndSaysSo) {
  const QImage before = Shown();
  view_.SetFlipped(true);
  const QImage after = Shown();
  EXPECT_NEAR(ColourAt(after, {300, 100}).lightness(), ColourAt(before, {100, 100}).lightness(), 3);
  view_.SetFlipped(false);
  EXPECT_EQ(Shown(), before);
  // The words stand in the lower left corner: white letters.
  const auto whiteBelow = [](const QImage& image) {
    int white = 0;
    const double ratio = image.devicePixelRatio();
    for (int y = int(270 * ratio); y < int(292 * ratio); ++y) {
      for (int x = int(8 * ratio); x < int(70 * ratio); ++x) {
        if (image.pixelColor(x, y).lightness() > 230) ++white;
      }
    }
    return white;
  };
  EXPECT_EQ(whiteBelow(before), 0);
  EXPECT_GT(whiteBelow(after), 30);
}

TEST_F(RadiographViewTest, InvertedShowsDarkWhatWasBright) {
  const int before = ColourAt(Shown(), {300, 200}).lightness();
  view_.SetInverted(true);
  EXPECT_EQ(ColourAt(Shown(), {300, 200}).lightness(), 255 - before);
}

TEST_F(RadiographViewTest, ATableCanBeChosen) {
  radiograph_->tables = {{0, 8, {0, 255}, "ALL WHITE"}};
  view_.SetRadiograph(radiograph_, 1.0);
  EXPECT_EQ(ColourAt(Shown(), {200, 150}), QColor(Qt::white));
  view_.UsePreset(1);
  EXPECT_NE(ColourAt(Shown(), {200, 150}), QColor(Qt::white));
}

TEST_F(RadiographViewTest, TheValueIsThatOfThePixelUnderThePlace) {
  radiograph_->slope = 2.0;
  radiograph_->intercept = -50.0;
  EXPECT_EQ(view_.ValueAt({12.4, 7.6}), 2.0 * LevelAt(12, 8) - 50.0);
  EXPECT_EQ(view_.ValueAt({-0.5, -0.5}), 2.0 * LevelAt(0, 0) - 50.0);
  EXPECT_EQ(view_.ValueAt({199.5, 149.5}), 2.0 * LevelAt(199, 149) - 50.0);
  EXPECT_FALSE(view_.ValueAt({199.6, 20.0}));
}

TEST_F(RadiographViewTest, WithoutAPictureEverythingIsDarkAndNothingHappens) {
  QSignalSpy added(&view_, &RadiographView::PointAdded);
  view_.SetRadiograph(nullptr, 1.0);
  view_.clearFocus();
  const QImage shown = Shown();
  for (const QPoint at : {QPoint(5, 5), QPoint(200, 150), QPoint(395, 295)}) {
    EXPECT_LT(ColourAt(shown, at).lightness(), 40);
  }
  Click({100, 100});
  Drag({100, 100}, {150, 150}, Qt::RightButton);
  Wheel({100, 100}, 120);
  for (const int key : {Qt::Key_Left, Qt::Key_Return, Qt::Key_N, Qt::Key_Plus, Qt::Key_Delete}) {
    Key(key);
  }
  view_.Fit();
  view_.OneToOne();
  view_.ZoomIn();
  EXPECT_TRUE(added.empty());
  EXPECT_TRUE(view_.PictureWithMarks().isNull());
  EXPECT_EQ(view_.accessibleDescription(), "No picture.");
}

TEST_F(RadiographViewTest, TheSurroundIsDarkInBothThemes) {
  const QPalette before = QApplication::palette();
  view_.resize(600, 300);
  for (const QPalette& theme : {LightPalette(), DarkPalette()}) {
    UseTheme(theme);
    QApplication::processEvents();
    EXPECT_LT(ColourAt(Shown(), {50, 150}).lightness(), 40);
  }
  QApplication::setPalette(before);
}

TEST_F(RadiographViewTest, FocusIsSeen) {
  const QImage with = Shown();
  view_.clearFocus();
  EXPECT_NE(ColourAt(Shown(), {200, 1}), ColourAt(with, {200, 1}));
}

TEST_F(RadiographViewTest, AScreenReaderIsToldWhatIsMarked) {
  const QAccessibleInterface* access = QAccessible::queryAccessibleInterface(&view_);
  EXPECT_EQ(access->role(), QAccessible::Graphic);
  EXPECT_EQ(access->text(QAccessible::Name), "Radiograph");
  EXPECT_EQ(access->text(QAccessible::Description), "Nothing is marked.");
  Mark(MarkKind::Head, {{10, 10}, {20, 20}});
  Mark(MarkKind::OtherHead, {{10, 10}, {20, 20}, {20, 40}});
  Mark(MarkKind::Midline, {{90, 20}});
  Mark(MarkKind::Trochanter, {{90, 90}});
  EXPECT_EQ(access->text(QAccessible::Description),
            "Head circle: 2 points of 3. Other head: 3 points. Midline: 1 point of 2. "
            "Trochanter: set.");
  view_.Select(MarkPoint{MarkKind::Head, 1});
  EXPECT_TRUE(access->text(QAccessible::Description)
                  .startsWith("Selected: Head circle, point 2 of 2. Head circle:"));
}

TEST_F(RadiographViewTest, ASelectedPointThatIsGoneIsSelectedNoMore) {
  Mark(MarkKind::Trochanter, {{90, 90}});
  view_.Select(MarkPoint{MarkKind::Trochanter, 0});
  Mark(MarkKind::Trochanter, {});
  EXPECT_FALSE(view_.Selected());
}

TEST_F(RadiographViewTest, ThePictureWithMarksIsWholeAndHasTheMarksWhereTheyAre) {
  Mark(MarkKind::Line, {{40, 30}, {160, 30}});
  Wheel({100, 100}, 1200);
  const QImage saved = view_.PictureWithMarks();
  ASSERT_EQ(saved.size(), QSize(200, 150));
  const QColor line = saved.pixelColor(100, 30);
  EXPECT_GT(line.red() - line.blue(), 100) << "orange";
  for (const QPoint at : {QPoint(2, 2), QPoint(100, 90), QPoint(197, 147)}) {
    const int grey = int(std::lround(255.0 * LevelAt(at.x(), at.y()) / LevelAt(199, 149)));
    EXPECT_EQ(qGray(saved.pixel(at)), grey);
  }
}

TEST_F(RadiographViewTest, ThePictureWithMarksIsAsItIsShown) {
  const QImage plain = view_.PictureWithMarks();
  view_.SetInverted(true);
  view_.SetFlipped(true);
  const QImage turned = view_.PictureWithMarks();
  EXPECT_EQ(qGray(turned.pixel(199 - 120, 40)), 255 - qGray(plain.pixel(120, 40)));
}

TEST_F(RadiographViewTest, ThePictureWithMarksHasSquarePixels) {
  view_.SetRadiograph(radiograph_, 2.0);
  EXPECT_EQ(view_.PictureWithMarks().size(), QSize(200, 300));
}

}  // namespace
