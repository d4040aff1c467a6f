// How long each step over a radiograph of 3000 x 3000 pixels takes, from the event to the painted
// view of 1200 x 900: worst and median.
#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

#include "measuring/radiograph_view.h"

using namespace Measuring;

namespace {

constexpr int kSide = 3000;
constexpr int kSteps = 100;

std::shared_ptr<const Radiography::Radiograph> MakeRadiograph() {
  auto radiograph = std::make_shared<Radiography::Radiograph>();
  radiograph->width = radiograph->height = kSide;
  radiograph->bits = 12;
  unsigned grain = 1;
  for (int i = 0; i < kSide * kSide; ++i) {
    grain = grain * 1664525U + 1013904223U;
    const int level = 1000 + i / kSide / 2 + i % kSide / 4 + static_cast<int>(grain >> 27);
    radiograph->levels.push_back(static_cast<std::uint16_t>(level));
  }
  return radiograph;
}

MarkPoints MakePoints() {
  MarkPoints points;
  points[IndexOf(MarkKind::Head)] = {{2000, 1800}, {1800, 2000}, {1600, 1800}, {1800, 1600}};
  points[IndexOf(MarkKind::OtherHead)] = {{1200, 1800}, {1000, 2000}, {800, 1800}, {1000, 1600}};
  points[IndexOf(MarkKind::Midline)] = {{1400, 600}, {1410, 2000}};
  points[IndexOf(MarkKind::SocketEdge)] = {{1950, 1550}};
  points[IndexOf(MarkKind::CrestTop)] = {{1900, 500}};
  points[IndexOf(MarkKind::CrestLateral)] = {{2300, 800}};
  points[IndexOf(MarkKind::Trochanter)] = {{2400, 1900}};
  return points;
}

CirclesOnPicture MakeCircles() {
  CirclesOnPicture circles;
  circles[IndexOf(MarkKind::Head)] = CircleOnPicture{{1800, 1800}, 200, 200};
  circles[IndexOf(MarkKind::OtherHead)] = CircleOnPicture{{1000, 1800}, 200, 200};
  return circles;
}

void Send(QWidget& view, QEvent::Type type, QPointF at, Qt::MouseButton button) {
  const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
  const Qt::MouseButton cause = type == QEvent::MouseMove ? Qt::NoButton : button;
  QMouseEvent event(type, at, view.mapToGlobal(at), cause, held, Qt::NoModifier);
  QApplication::sendEvent(&view, &event);
}

void Measure(const char* what, QWidget& view, const std::function<void(int)>& step) {
  std::vector<double> times;  // ms
  for (int i = 0; i < kSteps; ++i) {
    const auto start = std::chrono::steady_clock::now();
    step(i);
    view.repaint();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    times.push_back(time.count());
  }
  std::sort(times.begin(), times.end());
  std::printf("%-40s: median %6.2f ms, worst %6.2f ms\n", what, times[kSteps / 2], times.back());
}

void MeasureDrag(const char* what, QWidget& view, Qt::MouseButton button, QPointF from) {
  Send(view, QEvent::MouseButtonPress, from, button);
  Measure(what, view, [&](int i) {
    Send(view, QEvent::MouseMove, from + QPointF(2 * i % 150, i % 90), button);
  });
  Send(view, QEvent::MouseButtonRelease, from, button);
}

void Wheel(QWidget& view, int i) {
  const QPointF at(400, 300);
  const QPoint turn(0, i % 40 < 20 ? 120 : -120);
  QWheelEvent event(at, view.mapToGlobal(at), {}, turn, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&view, &event);
}

void MeasureAll(RadiographView& view) {
  MeasureDrag("window, fitted", view, Qt::RightButton, {400, 300});
  Measure("zoom by wheel, fitted and in and out", view, [&](int i) { Wheel(view, i); });
  view.OneToOne();
  MeasureDrag("pan, 1:1", view, Qt::MiddleButton, {400, 300});
  MeasureDrag("window, 1:1", view, Qt::RightButton, {400, 300});
  view.Fit();
  MeasureDrag("pan, fitted", view, Qt::MiddleButton, {400, 300});
  view.Fit();
  const QPointF handle = PositionOf(view.Transform(), {2000, 1800});
  MeasureDrag("a mark under the magnifier, fitted", view, Qt::LeftButton, handle);
  view.OneToOne();
  const QPointF other = PositionOf(view.Transform(), {1800, 1600});
  MeasureDrag("a mark under the magnifier, 1:1", view, Qt::LeftButton, other);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  MarkPoints points = MakePoints();
  const CirclesOnPicture circles = MakeCircles();
  RadiographView view;
  view.resize(1200, 900);
  view.show();
  QApplication::processEvents();  // what is not on the screen is not painted
  const auto radiograph = MakeRadiograph();
  const auto start = std::chrono::steady_clock::now();
  view.SetRadiograph(radiograph, 1.0);
  view.repaint();
  const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
  std::printf("%-40s: %6.2f ms\n", "shown for the first time", time.count());
  QObject::connect(&view, &RadiographView::PointMoved,
                   [&](MarkKind kind, std::size_t index, Landmarks::PixelPlace place, bool) {
                     points[IndexOf(kind)][index] = place;
                     view.ShowMarks(points, circles);
                   });
  view.SetCurrent(MarkKind::Head);
  view.ShowMarks(points, circles);
  MeasureAll(view);
  return 0;
}
