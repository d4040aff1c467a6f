// A radiograph in its view, driven by real events, and what it answers kept as a window would.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <memory>
#include <vector>

#include "measuring/radiograph_view.h"

// Marks a picture as the window around the view does: what is asked for is done and shown.
class MarkedView : public Measuring::RadiographView {
 public:
  MarkedView() {
    using Measuring::MarkKind;
    connect(this, &RadiographView::PointAdded, this,
            [this](MarkKind kind, Landmarks::PixelPlace place) {
              points[Measuring::IndexOf(kind)].push_back(place);
              ShowMarks(points, circles);
            });
    connect(this, &RadiographView::PointMoved, this,
            [this](MarkKind kind, std::size_t index, Landmarks::PixelPlace place, bool) {
              points[Measuring::IndexOf(kind)][index] = place;
              ShowMarks(points, circles);
            });
    connect(this, &RadiographView::PointRemoved, this, [this](MarkKind kind, std::size_t index) {
      auto& places = points[Measuring::IndexOf(kind)];
      places.erase(places.begin() + std::ptrdiff_t(index));
      ShowMarks(points, circles);
    });
  }
  const std::vector<Landmarks::PixelPlace>& PointsOf(Measuring::MarkKind kind) const {
    return points[Measuring::IndexOf(kind)];
  }

  Measuring::MarkPoints points;
  Measuring::CirclesOnPicture circles;
};

// Column and row of a place, for comparison to a tenth of what a hand can do.
inline void ExpectPlace(Landmarks::PixelPlace got, double column, double row) {
  EXPECT_NEAR(got.column, column, 1e-6);
  EXPECT_NEAR(got.row, row, 1e-6);
}

// Levels from `level` at column and row.
template <class Level>
std::shared_ptr<Radiography::Radiograph> MakeRadiograph(int width, int height, Level level) {
  auto radiograph = std::make_shared<Radiography::Radiograph>();
  radiograph->width = width;
  radiograph->height = height;
  radiograph->bits = 12;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      radiograph->levels.push_back(static_cast<std::uint16_t>(level(x, y)));
    }
  }
  return radiograph;
}

// A picture of 200 x 150 pixels in a view of 400 x 300: fitted, a pixel of it is two of the view,
// and the first one's centre is at 1, 1.
class RadiographViewTest : public testing::Test {
 protected:
  using MarkKind = Measuring::MarkKind;
  static int LevelAt(int x, int y) { return 13 * x + 7 * y; }

  void SetUp() override {
    radiograph_ = MakeRadiograph(200, 150, LevelAt);
    view_.resize(400, 300);
    view_.SetRadiograph(radiograph_, 1.0);
    view_.SetCurrent(MarkKind::Trochanter);
    view_.show();
    view_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view_));
    view_.setFocus();
    ASSERT_TRUE(view_.hasFocus());
  }

  // The middle of a picture's pixel in the fitted view.
  static QPoint At(int column, int row) { return {2 * column + 1, 2 * row + 1}; }

  void Press(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(&view_, button, {}, at);
  }
  void Move(QPoint to) { QTest::mouseMove(&view_, to); }
  void Release(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseRelease(&view_, button, {}, at);
  }
  void Click(QPoint at) { QTest::mouseClick(&view_, Qt::LeftButton, {}, at); }
  void Drag(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton) {
    Press(from, button);
    Move(to);
    Release(to, button);
  }
  void Key(int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(&view_, Qt::Key(key), modifiers);
  }
  void Wheel(QPointF at, int turn) {
    QWheelEvent event(at, view_.mapToGlobal(at), {}, {0, turn}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&view_, &event);
  }
  QImage Shown() { return view_.grab().toImage(); }
  // The colour at a position of the view.
  static QColor ColourAt(const QImage& shown, QPoint at) {
    return shown.pixelColor((QPointF(at) * shown.devicePixelRatio()).toPoint());
  }
  std::size_t Count(MarkKind kind) const { return view_.PointsOf(kind).size(); }
  Landmarks::PixelPlace Place(MarkKind kind, std::size_t index = 0) const {
    return view_.PointsOf(kind)[index];
  }
  void Mark(MarkKind kind, std::vector<Landmarks::PixelPlace> places) {
    view_.points[Measuring::IndexOf(kind)] = std::move(places);
    view_.ShowMarks(view_.points, view_.circles);
  }

  std::shared_ptr<Radiography::Radiograph> radiograph_;
  MarkedView view_;
};
