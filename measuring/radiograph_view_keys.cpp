// Marking by keys alone.
#include <QFocusEvent>
#include <QKeyEvent>
#include <cmath>

#include "measuring/radiograph_view.h"

namespace Measuring {

namespace {

constexpr double kFineStep = 0.1;  // pixels of the picture
constexpr double kCoarseStep = 20.0;
constexpr double kKeyZoom = 1.25;

// Where an arrow key points, of length 1; of length 0 for any other key.
QPointF WayOf(const QKeyEvent& key) {
  return {double(key.key() == Qt::Key_Right) - double(key.key() == Qt::Key_Left),
          double(key.key() == Qt::Key_Down) - double(key.key() == Qt::Key_Up)};
}

double StepOf(const QKeyEvent& key) {
  if (key.modifiers().testFlag(Qt::ShiftModifier)) return kFineStep;
  return key.modifiers().testFlag(Qt::ControlModifier) ? kCoarseStep : 1.0;
}

}  // namespace

void RadiographView::keyPressEvent(QKeyEvent* event) {
  event->setAccepted(HasPicture() && ActOnKey(*event));
}

// False for a key that is not ours.
bool RadiographView::ActOnKey(const QKeyEvent& event) {
  const QPointF way = WayOf(event);
  if (!way.isNull()) {
    MoveByKey(way * StepOf(event));
    return true;
  }
  if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      SetPointByKey();
      return true;
    case Qt::Key_N:
    case Qt::Key_PageDown:
      StepSelection(1);
      return true;
    case Qt::Key_P:
    case Qt::Key_PageUp:
      StepSelection(-1);
      return true;
    case Qt::Key_Escape:
      Escape();
      return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      ZoomIn();
      return true;
    case Qt::Key_Minus:
      ZoomOut();
      return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      RemoveSelected();
      return true;
    case Qt::Key_Space:
      isSpaceDown_ = true;
      RefreshPointer();
      return true;
    default:
      return false;
  }
}

void RadiographView::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Space || event->isAutoRepeat())
    return QWidget::keyReleaseEvent(event);
  isSpaceDown_ = false;
  RefreshPointer();
}

// `way` in pixels of the picture, as the view shows it: to the right is to the right.
void RadiographView::MoveByKey(QPointF way) {
  if (press_.act != Act::None) return;
  isKeyed_ = isKeysPlaceTold_ = true;
  const QPointF middle(transform_.view.width() / 2.0, transform_.view.height() / 2.0);
  PixelPlace place = KeyPlace().value_or(PlaceAt(transform_, middle));
  place.column += transform_.flipped ? -way.x() : way.x();
  place.row += way.y();
  place = KeptOnPicture(place, PictureSize());
  if (const auto selected = scene_.selected) {
    emit PointMoved(selected->kind, selected->index, place, true);
  } else {
    crossHair_ = place;
  }
  Show(Showing(transform_, place));
}

void RadiographView::StepSelection(int step) {
  if (press_.act != Act::None) return;
  const auto point = NextPoint(scene_, scene_.selected, step);
  if (!point) return;
  isKeyed_ = isKeysPlaceTold_ = true;
  Select(point);
  Show(Showing(transform_, PlaceOf(scene_, *point)));
}

// Never at a place that is not seen: a cross-hair that a mouse has put away comes back first.
void RadiographView::SetPointByKey() {
  if (!crossHair_ || scene_.selected || !scene_.current || press_.act != Act::None) return;
  if (isKeyed_) {
    emit PointAdded(*scene_.current, *crossHair_);
  } else {
    isKeyed_ = isKeysPlaceTold_ = true;
    Show(Showing(transform_, *crossHair_));
  }
}

// The point that takes its number is another one, which nobody has selected.
void RadiographView::RemoveSelected() {
  if (!scene_.selected || press_.act != Act::None) return;
  const MarkPoint point = *scene_.selected;
  Select({});
  emit PointRemoved(point.kind, point.index);
}

// One thing at a time: what the mouse is doing, then the selection, then the cross-hair.
void RadiographView::Escape() {
  if (press_.act != Act::None) return CancelPress();
  if (scene_.selected) {
    Select({});
  } else {
    crossHair_.reset();
  }
  isKeyed_ = isKeysPlaceTold_ = crossHair_.has_value();
  RefreshPointer();
  update();
}

std::optional<Landmarks::PixelPlace> RadiographView::KeyPlace() const {
  if (scene_.selected) return PlaceOf(scene_, *scene_.selected);
  return crossHair_;
}

// What the magnifier shows.
std::optional<Landmarks::PixelPlace> RadiographView::PlacedNow() const {
  if (!HasPicture()) return {};
  if (press_.act == Act::Drag && press_.hasMoved && scene_.selected) return KeyPlace();
  const bool setsPoint =
      press_.act == Act::Set || (press_.act == Act::Drag && !press_.hasMoved && WantsPointHere());
  if (setsPoint && RowOf(*scene_.current).shape != MarkShape::Circle) {
    return KeptOnPicture(PlaceAt(transform_, press_.now), PictureSize());
  }
  return isKeyed_ && hasFocus() ? KeyPlace() : std::nullopt;
}

void RadiographView::ZoomAtPoint(double factor) {
  const QPointF middle(transform_.view.width() / 2.0, transform_.view.height() / 2.0);
  const auto place = KeyPlace();
  if (!HasPicture()) return;
  if (place) transform_ = Showing(transform_, *place);
  ZoomBy(factor, place ? PositionOf(transform_, *place) : middle);
}

void RadiographView::ZoomIn() {
  ZoomAtPoint(kKeyZoom);
}

void RadiographView::ZoomOut() {
  ZoomAtPoint(1.0 / kKeyZoom);
}

void RadiographView::focusInEvent(QFocusEvent*) {
  update();
}

void RadiographView::focusOutEvent(QFocusEvent*) {
  isSpaceDown_ = false;
  isKeyed_ = false;
  RefreshPointer();
  update();
}

}  // namespace Measuring
