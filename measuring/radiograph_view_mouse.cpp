// Mouse, wheel and touch over the radiograph.
#include <QEvent>
#include <QGestureEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "measuring/radiograph_view.h"

namespace Measuring {

namespace {

// Device-independent pixels from which a press is a drag. A slip of the hand moves no point.
constexpr double kSlip = 3.0;
constexpr double kLeastCircle = 8.0;
constexpr double kWheelStep = 120.0;  // a notch, in eighths of a degree
constexpr double kNotchZoom = 1.25;

double Distance(QPointF a, QPointF b) {
  return std::hypot(a.x() - b.x(), a.y() - b.y());
}

}  // namespace

bool RadiographView::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::ToolTip: {
      const auto* help = static_cast<QHelpEvent*>(event);
      if (ShowHoverWords(help->pos(), help->globalPos())) return true;
      break;
    }
    case QEvent::Gesture:
      return PinchByGesture(*static_cast<QGestureEvent*>(event));
    case QEvent::NativeGesture:
      if (PinchByPad(*static_cast<QNativeGestureEvent*>(event))) return true;
      break;
    default:
      break;
  }
  return QWidget::event(event);
}

bool RadiographView::ShowHoverWords(QPoint position, QPoint onScreen) {
  const QString words = HasPicture() ? WordsUnder(scene_, transform_, position) : QString();
  if (words.isEmpty()) {
    QToolTip::hideText();
    return true;
  }
  constexpr int kAround = 10;
  const QRect stays(position - QPoint(kAround, kAround), QSize(2 * kAround, 2 * kAround));
  QToolTip::showText(onScreen, words, this, stays);
  return true;
}

bool RadiographView::PinchByGesture(const QGestureEvent& event) {
  const auto* pinch = static_cast<QPinchGesture*>(event.gesture(Qt::PinchGesture));
  if (pinch == nullptr) return false;
  CancelPress();  // the first finger of two sets no point
  ZoomBy(pinch->scaleFactor(), mapFromGlobal(pinch->centerPoint()));
  return true;
}

bool RadiographView::PinchByPad(const QNativeGestureEvent& event) {
  if (event.gestureType() != Qt::ZoomNativeGesture) return false;
  ZoomBy(1.0 + event.value(), event.position());
  return true;
}

void RadiographView::wheelEvent(QWheelEvent* event) {
  event->accept();
  const double notches = event->angleDelta().y() / kWheelStep;
  if (notches != 0.0) ZoomBy(std::pow(kNotchZoom, notches), event->position());
  NoteMouse(event->position());
}

RadiographView::Act RadiographView::ActOf(const QMouseEvent& event) const {
  if (event.button() == Qt::RightButton) return Act::Window;
  if (event.button() == Qt::MiddleButton) return Act::Pan;
  if (event.button() != Qt::LeftButton) return Act::None;
  if (isSpaceDown_) return Act::Pan;
  if (PointUnder(scene_, transform_, event.position())) return Act::Drag;
  const bool canSet =
      scene_.current && IsOnPicture(PlaceAt(transform_, event.position()), PictureSize());
  return canSet ? Act::Set : Act::None;
}

void RadiographView::BeginPress(const QMouseEvent& event, Act act) {
  press_ = {act, event.button(), event.position(), event.position(), false, {}, transform_, look_};
  if (act == Act::Set) Select({});
  if (act == Act::Drag) {
    Select(PointUnder(scene_, transform_, event.position()));
    press_.place = PlaceOf(scene_, *scene_.selected);
  }
  if (act == Act::Pan) setCursor(Qt::ClosedHandCursor);
  update();
}

void RadiographView::mousePressEvent(QMouseEvent* event) {
  isKeyed_ = false;
  NoteMouse(event->position());
  if (!HasPicture() || press_.act != Act::None) return;  // a second button begins nothing
  BeginPress(*event, ActOf(*event));
}

// The second press of the left button is none of its own: it would set a second point there.
void RadiographView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || isSpaceDown_) mousePressEvent(event);
}

void RadiographView::mouseMoveEvent(QMouseEvent* event) {
  NoteMouse(event->position());
  press_.now = event->position();
  const QPointF way = press_.now - press_.from;
  if (press_.act != Act::None && Distance(press_.now, press_.from) > kSlip) press_.hasMoved = true;
  switch (press_.act) {
    case Act::Window:
      ShowLook(
          Dragged(WindowOf(press_.look), way, full_, pyramid_.radiograph->inverted != isInverted_));
      return;
    case Act::Pan:
      isFitted_ = false;
      Show(KeptInView(Panned(press_.transform, way), PictureSize()));
      return;
    case Act::Drag:
      if (press_.hasMoved && scene_.selected) DragPoint(false);
      return;
    case Act::Set:
      update();
      return;
    case Act::None:
      return;
  }
}

void RadiographView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != press_.button) return;
  press_.now = event->position();
  if (press_.act == Act::Drag && press_.hasMoved && scene_.selected) DragPoint(true);
  const bool isCircle = DrawsRoughCircle();
  const Press done = std::exchange(press_, {});
  if (isCircle) {
    emit RoughCircleDrawn(*scene_.current, PlaceAt(transform_, done.from),
                          PlaceAt(transform_, done.now));
  } else if (done.act == Act::Set ||
             (done.act == Act::Drag && !done.hasMoved && WantsPointHere())) {
    SetPoint(done.now);
  }
  NoteMouse(event->position());
  update();
}

// A click where another mark has a handle: marks may lie close together, as the edge of the socket
// and the head's outline do.
bool RadiographView::WantsPointHere() const {
  return scene_.current && scene_.selected && scene_.selected->kind != *scene_.current &&
         !IsWhole(scene_.points, *scene_.current);
}

// As far from the pointer as it was when the button went down, however the wheel has zoomed since.
void RadiographView::DragPoint(bool isDone) {
  const QPointF from = PositionOf(press_.transform, press_.place);
  const PixelPlace place =
      KeptOnPicture(PlaceAt(transform_, from + press_.now - press_.from), PictureSize());
  const MarkPoint point = *scene_.selected;
  emit PointMoved(point.kind, point.index, place, isDone);
}

// The new point is selected when it has been taken, so that the keys can nudge it.
void RadiographView::SetPoint(QPointF position) {
  const PixelPlace place = KeptOnPicture(PlaceAt(transform_, position), PictureSize());
  const MarkKind kind = *scene_.current;
  emit PointAdded(kind, place);
  const auto& points = scene_.points[IndexOf(kind)];
  const auto found = std::find(points.begin(), points.end(), place);
  if (found != points.end()) {
    Select(MarkPoint{kind, static_cast<std::size_t>(found - points.begin())});
  }
}

// What the mouse was doing has not happened.
void RadiographView::CancelPress() {
  const Press press = std::exchange(press_, {});
  if (press.act == Act::Drag && press.hasMoved && scene_.selected) {
    emit PointMoved(scene_.selected->kind, scene_.selected->index, press.place, true);
  }
  if (press.act == Act::Window) ShowLook(press.look);
  if (press.act == Act::Pan) Show(press.transform);
  RefreshPointer();
  update();
}

bool RadiographView::DrawsRoughCircle() const {
  return press_.act == Act::Set && RowOf(*scene_.current).shape == MarkShape::Circle &&
         Distance(press_.now, press_.from) >= kLeastCircle;
}

void RadiographView::NoteMouse(QPointF position) {
  mouse_ = position;
  isKeysPlaceTold_ = false;
  RefreshPointer();
}

std::optional<Landmarks::PixelPlace> RadiographView::ToldPlace() const {
  if (!HasPicture()) return {};
  if (isKeysPlaceTold_ && KeyPlace()) return KeyPlace();
  if (!mouse_) return {};
  const PixelPlace place = PlaceAt(transform_, *mouse_);
  return IsOnPicture(place, PictureSize()) ? std::optional(place) : std::nullopt;
}

// The place that is told, and the cursor.
void RadiographView::RefreshPointer() {
  emit PointerMoved(ToldPlace());
  if (!HasPicture() || press_.act == Act::Pan) return;
  if (isSpaceDown_) {
    setCursor(Qt::OpenHandCursor);
  } else {
    const bool isOnPoint = mouse_ && PointUnder(scene_, transform_, *mouse_);
    setCursor(isOnPoint ? Qt::SizeAllCursor : Qt::CrossCursor);
  }
}

// Marks or picture have moved under a mouse that rests. Its words, if any, are those of before.
void RadiographView::RefreshUnderPointer() {
  RefreshPointer();
  if (mouse_ && QToolTip::isVisible()) {
    ShowHoverWords(mouse_->toPoint(), mapToGlobal(*mouse_).toPoint());
  }
}

void RadiographView::leaveEvent(QEvent*) {
  mouse_.reset();
  RefreshPointer();
}

}  // namespace Measuring
