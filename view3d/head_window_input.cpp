// Turning the head of the 3D view by mouse and keys.
#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPen>
#include <algorithm>
#include <numbers>

#include "view3d/head_window.h"

namespace {

constexpr float kPi = std::numbers::pi_v<float>;
constexpr float kKeyTurn = kPi / 18.0F;
constexpr float kTickTurn = kPi / 30.0F;
constexpr int kDragSteps = 5;    // resolution while the mouse moves
constexpr int kQuickSteps = 70;  // resolution up to which a held key keeps turning

}  // namespace

bool FormGula::eventFilter(QObject* watched, QEvent* event) {
  const auto pixel = [&] {
    return controls_.picture->PixelPoint(static_cast<QMouseEvent*>(event)->position());
  };
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      PressMouse(pixel());
      return true;
    case QEvent::MouseMove:
      MoveMouse(pixel());
      return true;
    case QEvent::MouseButtonRelease:
      if (static_cast<QMouseEvent*>(event)->buttons() == Qt::NoButton) ReleaseMouse();
      return true;
    case QEvent::KeyPress:
      return TurnByKey(*static_cast<QKeyEvent*>(event));
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      update();
      return false;
    default:
      return QMainWindow::eventFilter(watched, event);
  }
}

// A click without a move turns nothing: the latest position is this one.
void FormGula::PressMouse(QPointF pixel) {
  if (dragging_) return;  // a second button begins no second drag
  dragging_ = true;
  savedThird_ = view_.angles.third;
  savedFirst_ = view_.angles.first;
  from_ = to_ = pixel;
  controls_.picture->setCursor(Qt::ClosedHandCursor);
}

void FormGula::MoveMouse(QPointF pixel) {
  view_.sphereSteps = view_.areaSteps = kDragSteps;
  timer_->setInterval(kDragInterval);
  to_ = pixel;
  if (!dragging_) return;
  controls_.poleLabel->hide();
  timer_->start();
  Tick();
}

// The third angle moves on a little after the drawing, until the next step sets it. Deliberate.
void FormGula::Tick() {
  TurnByDrag();
  DrawSurfaces(LineStyle::Solid, LineStyle::Solid);
  controls_.picture->ShowDrawing();
  DrawAxesAndLabels();
  view_.angles.third += kTickTurn;
}

// A drag over the drawing radius turns the head by half a turn.
void FormGula::TurnByDrag() {
  const QPointF way = from_ - to_;
  view_.angles.third = static_cast<float>(way.x()) * kPi / view_.radius + savedThird_;
  view_.angles.first = static_cast<float>(way.y()) * kPi / view_.radius + savedFirst_;
}

// An arrow key turns as a drag of the mouse that way does. False for any other key.
bool FormGula::TurnByKey(const QKeyEvent& key) {
  const int right = (key.key() == Qt::Key_Right) - (key.key() == Qt::Key_Left);
  const int down = (key.key() == Qt::Key_Down) - (key.key() == Qt::Key_Up);
  if (right == 0 && down == 0) return false;
  ReadResolutions();
  const bool slow = std::max(view_.sphereSteps, view_.areaSteps) > kQuickSteps;
  if (dragging_ || (key.isAutoRepeat() && slow)) return true;
  view_.angles.third -= static_cast<float>(right) * kKeyTurn;
  view_.angles.first -= static_cast<float>(down) * kKeyTurn;
  DrawAxesAndLabels();
  RedrawFully();
  return true;
}

// Outside the picture, so that it is not saved with it.
void FormGula::paintEvent(QPaintEvent* event) {
  QMainWindow::paintEvent(event);
  if (!controls_.picture->hasFocus()) return;
  constexpr int kGap = 3;  // device-independent pixels, middle of the frame to the picture
  constexpr int kWidth = 2;
  const QWidget& picture = *controls_.picture;
  const QRect area(picture.mapTo(this, QPoint(0, 0)), picture.size());
  QPainter painter(this);
  painter.setPen(QPen(palette().color(QPalette::Highlight), kWidth, Qt::SolidLine, Qt::SquareCap,
                      Qt::MiterJoin));
  painter.drawRect(QRectF(area).adjusted(-kGap, -kGap, kGap, kGap));
}

// The drag ends after the drawing: the progress bar rests meanwhile.
void FormGula::ReleaseMouse() {
  if (!dragging_) return;
  TurnByDrag();
  RedrawFully();
  DrawAxesAndLabels();
  dragging_ = false;
  timer_->stop();
  controls_.picture->setCursor(Qt::OpenHandCursor);
}
