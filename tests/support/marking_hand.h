// A made-up radiograph, and the hand that marks it in the measuring window.
#pragma once

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QTabWidget>
#include <QTest>
#include <QWheelEvent>

#include "measuring/measuring_window.h"
#include "tests/support/marked_phantom.h"

// The whole pelvis and a ball in few pixels, rendered once: it takes a while.
inline const Phantom::Picture& SmallPhantom() {
  static const Phantom::Picture picture = [] {
    Phantom::Setup setup;
    setup.width = 600;
    setup.height = 500;
    setup.spacing = {0.72, 0.72};
    setup.ball = Phantom::Ball();
    return Phantom::Render({}, setup);
  }();
  return picture;
}

class MarkingHand {
 public:
  // Gives the window its full size, whatever the screen is.
  MarkingHand(Measuring::MeasuringWindow& window, const Phantom::Picture& picture)
      : window_(window), picture_(picture) {
    window_.resize(1320, 960);
  }

  // False when the window is still at it after all that time.
  [[nodiscard]] bool WaitForPicture() {
    const bool isDone = QTest::qWaitFor([this] { return !window_.IsReading(); }, 20'000);
    QCoreApplication::processEvents();
    return isDone;
  }
  QPoint At(Landmarks::PixelPlace place) const {
    return PositionOf(window_.View().Transform(), place).toPoint();
  }
  void Click(Landmarks::PixelPlace place) {
    QTest::mouseClick(&window_.View(), Qt::LeftButton, {}, At(place));
  }
  void Drag(Landmarks::PixelPlace from, Landmarks::PixelPlace to) {
    QTest::mousePress(&window_.View(), Qt::LeftButton, {}, At(from));
    QTest::mouseMove(&window_.View(), (At(from) + At(to)) / 2);
    QTest::mouseMove(&window_.View(), At(to));
    QTest::mouseRelease(&window_.View(), Qt::LeftButton, {}, At(to));
  }
  void ZoomInAt(Landmarks::PixelPlace place) {
    constexpr QPoint kNotch(0, 120);
    const QPointF at = At(place);
    QWheelEvent wheel(at, window_.View().mapToGlobal(at), {}, kNotch, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&window_.View(), &wheel);
  }
  void Choose(Measuring::MarkKind kind) {
    window_.findChild<TextTable*>("tblMarks")->Choose(static_cast<int>(Measuring::IndexOf(kind)));
  }
  void Type(const char* box, const QString& text) {
    auto* edit = window_.findChild<QLineEdit*>(box);
    edit->selectAll();
    QTest::keyClicks(edit, text);
  }

  // From the centre of a head to its edge, as a hurried hand does it.
  void DrawHead(const Landmarks::Circle& head) {
    const Landmarks::Point middle = head.centre + Landmarks::Point{2.0, -1.0};
    const Landmarks::Point edge = middle + Landmarks::Point{1.08 * head.radius, 0.0};
    Drag(InPixels(middle, picture_.spacing), InPixels(edge, picture_.spacing));
  }
  // All that the measurements need, in the order in which the window asks for it.
  void MarkBones() {
    DrawHead(*picture_.truth.left.head);
    MarkOtherBones();
  }
  void MarkOtherBones() {
    const Phantom::Truth& truth = picture_.truth;
    DrawHead(*truth.right.head);
    for (const auto& point : {truth.left.socketEdge, truth.left.crestTop, truth.left.crestLateral,
                              truth.left.trochanter}) {
      Click(InPixels(*point, picture_.spacing));
    }
  }
  void MarkBall() {
    Choose(Measuring::MarkKind::Ball);
    for (const auto& place : EdgePoints(*picture_.truth.ball, picture_.spacing, 4)) Click(place);
    Type("ballDiameter", "25");
  }
  // What the other marks make unnecessary.
  void MarkMidlineAndLine() {
    const auto at = [this](double across, double down) {
      return Landmarks::PixelPlace{across * picture_.width, down * picture_.height};
    };
    Choose(Measuring::MarkKind::Midline);
    for (const auto place : {at(0.5, 0.1), at(0.5, 0.9)}) Click(place);
    Choose(Measuring::MarkKind::Line);
    for (const auto place : {at(0.3, 0.95), at(0.6, 0.95)}) Click(place);
    Type("lineLength", "120");
  }
  // A ball takes the upper end of the full window; the bones are seen in their own.
  void UseBoneWindow() {
    for (QAction* preset : window_.findChild<QMenu*>("mnuPresets")->actions()) {
      if (preset->text() == "Bone") preset->trigger();
    }
  }
  void SaySide(const QString& side) { window_.findChild<QComboBox*>("side")->setCurrentText(side); }
  void ShowErrors() { window_.findChild<QTabWidget*>("tabs")->setCurrentIndex(1); }
  void TypeErrors() {
    for (const auto& [box, u] :
         {std::pair("edgeOfCircle_u", "1"), std::pair("socketEdge_u", "3"),
          std::pair("otherPoint_u", "4"), std::pair("magnification_u", "0.02"),
          std::pair("bodyWeight_u", "1")}) {
      Type(box, u);
    }
  }

 private:
  Measuring::MeasuringWindow& window_;
  const Phantom::Picture& picture_;
};
