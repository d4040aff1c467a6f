// Shows a picture in a window.
#include "platform/picture_view.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <algorithm>
#include <cmath>

PictureView::PictureView(QWidget* parent) : QWidget(parent) {
  TellPictures();
  box_.OnChange([this] { update(); });
  FitBox();
}

void PictureView::HoldRatio(QSize ratio) {
  ratio_ = ratio;
  FitBox();
  update();
}

// On whole device pixels, so that the picture is not smeared over its neighbours.
QRectF PictureView::PictureArea() const {
  const double pixels = devicePixelRatioF();
  const QSizeF room = QSizeF(size()) * pixels;
  const QSizeF wanted = ratio_.isEmpty() ? room : QSizeF(ratio_).scaled(room, Qt::KeepAspectRatio);
  const QSizeF whole(std::max(1.0, std::round(wanted.width())),
                     std::max(1.0, std::round(wanted.height())));
  const QPointF corner(std::floor((room.width() - whole.width()) / 2.0),
                       std::floor((room.height() - whole.height()) / 2.0));
  return {corner / pixels, whole / pixels};
}

QSize PictureView::sizeHint() const {
  return {600, 400};
}

void PictureView::FitBox() {
  box_.SetSize(PictureArea().size(), devicePixelRatioF());
}

void PictureView::RefreshCache() {
  const PaintOptions options{palette(), devicePixelRatioF(), true};
  const QSize pixels = box_.PixelSize();
  const QRectF target(QPointF(0, 0), pixels);
  if (cache_.size() != pixels || cachedGeneration_ != box_.Generation()) {
    cache_ = box_.Image().ToImage(pixels, options.lineUnit, options.palette);
  } else if (cachedDrawings_ < box_.Drawings().size()) {
    QPainter painter(&cache_);
    PaintDrawings(painter, target, options,
                  box_.Drawings().begin() + std::ptrdiff_t(cachedDrawings_), box_.Drawings().end());
  }
  cachedGeneration_ = box_.Generation();
  cachedDrawings_ = box_.Drawings().size();
}

void PictureView::PaintOver(QPainter&, const QRectF&) {}

void PictureView::paintEvent(QPaintEvent*) {
  if (box_.PixelRatio() != devicePixelRatioF()) FitBox();  // moved to another display
  RefreshCache();
  QPainter painter(this);
  const QRectF area = PictureArea();
  painter.drawImage(area, cache_);
  PaintDrawings(painter, area, {palette(), 1.0, false}, box_.DrawingsOver().begin(),
                box_.DrawingsOver().end());
  PaintOver(painter, area);
}

void PictureView::resizeEvent(QResizeEvent*) {
  FitBox();
}

void PictureView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) {
    cache_ = QImage();
    update();
  }
  QWidget::changeEvent(event);
}
