// Shows a picture of pixels in a window.
#include "platform/raster_view.h"

#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>

RasterView::RasterView(QWidget* parent) : QWidget(parent) {
  TellPictures();
  setAttribute(Qt::WA_OpaquePaintEvent);
}

QPointF RasterView::PixelPoint(QPointF position) const {
  return position * devicePixelRatioF();
}

QSize RasterView::sizeHint() const {
  return {600, 600};
}

void RasterView::FitBox() {
  const QSizeF room(size());
  if (room == box_.Size() && devicePixelRatioF() == box_.PixelRatio()) return;
  box_.SetSize(room, devicePixelRatioF());
  emit Cleared();
}

void RasterView::ShowDrawing() {
  shown_ = box_.Image();
  update();
}

// Moved to a display with another scale factor, the widget is painted without being resized. It is
// not redrawn from inside the painting.
void RasterView::paintEvent(QPaintEvent*) {
  if (box_.PixelRatio() != devicePixelRatioF()) {
    QMetaObject::invokeMethod(this, &RasterView::FitBox, Qt::QueuedConnection);
  }
  const bool fits = shown_.size() == (QSizeF(size()) * devicePixelRatioF()).toSize();
  const QSizeF area = fits ? QSizeF(shown_.size()) / devicePixelRatioF() : QSizeF(size());
  QPainter painter(this);
  painter.drawImage(QRectF({0, 0}, area), shown_);
}

void RasterView::resizeEvent(QResizeEvent*) {
  FitBox();
}
