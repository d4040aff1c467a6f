// Drawing of the dimension lines and labels.
#include "caseform/dimension_marks.h"

#include <QPen>
#include <QPolygonF>
#include <QTransform>
#include <cmath>
#include <utility>

#include "caseform/form_fonts.h"

namespace {

constexpr double kArrowLength = 0.5;      // cm
constexpr double kArrowHalfWidth = 0.15;  // cm
constexpr int kLetterPixels = 100;        // laid out large, then scaled: smooth at any size

QPolygonF ArrowHead(const DimensionLine::Arrow& arrow) {
  const double length = std::hypot(arrow.direction.x(), arrow.direction.y());
  const QPointF along = arrow.direction / length;
  const QPointF across(-along.y(), along.x());
  const QPointF base = arrow.tip - along * kArrowLength;
  return QPolygonF{arrow.tip, base + across * kArrowHalfWidth, base - across * kArrowHalfWidth};
}

}  // namespace

DimensionLine::DimensionLine(const QString& name, Shape shape, QObject* parent)
    : QObject(parent), shape_(std::move(shape)) {
  setObjectName(name);
}

void DimensionLine::SetHighlighted(bool highlighted) {
  borderColor_ = highlighted ? Qt::red : Qt::black;
  borderWidth_ = highlighted ? 2 : 1;
}

void DimensionLine::Draw(QPainter& painter, double pixel) const {
  QColor faint = borderColor_;
  faint.setAlphaF(0.45F);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(faint, pixel, Qt::SolidLine, Qt::FlatCap));
  painter.drawPath(shape_.leaders);
  painter.setPen(QPen(borderColor_, borderWidth_ * pixel, Qt::SolidLine, Qt::FlatCap));
  painter.drawPath(shape_.stretch);
  painter.setPen(Qt::NoPen);
  painter.setBrush(borderColor_);
  for (const Arrow& arrow : shape_.arrows) painter.drawPolygon(ArrowHead(arrow));
}

DimensionLabel::DimensionLabel(const QString& name, const QString& text, QPointF centre,
                               double height, QObject* parent)
    : QObject(parent), text_(text), centre_(centre), height_(height) {
  setObjectName(name);
}

void DimensionLabel::SetHighlighted(bool highlighted) {
  foreColor_ = highlighted ? Qt::red : Qt::black;
}

QFont DimensionLabel::Font() const {
  const bool angle = text_.size() == 1 && text_[0].script() == QChar::Script_Greek;
  return angle ? FormFonts::Symbol() : FormFonts::Label();
}

QPainterPath DimensionLabel::Letters() const {
  QFont font = Font();
  font.setPixelSize(kLetterPixels);
  QPainterPath letters;
  letters.addText(0.0, 0.0, font, text_);
  const double scale = height_ / kLetterPixels;
  const QPointF middle = letters.boundingRect().center();
  const QTransform place = QTransform::fromTranslate(-middle.x(), -middle.y()) *
                           QTransform::fromScale(scale, scale) *
                           QTransform::fromTranslate(centre_.x(), centre_.y());
  return place.map(letters);
}

void DimensionLabel::Draw(QPainter& painter) const {
  painter.setPen(Qt::NoPen);
  painter.setBrush(foreColor_);
  painter.drawPath(Letters());
}
