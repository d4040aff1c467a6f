#include "measuring/pelvis_drawing.h"

#include <QPainter>
#include <QTransform>
#include <cmath>

#include "platform/hip_bones.h"

namespace Measuring {

namespace {

// Both hips, in the drawing's centimetres.
constexpr QRectF kPelvis(-9.0, -17.6, 2.0 * (HipBones::kMidline + 9.0), 28.8);
const QPointF kHead(0.0, 0.0);
const QPointF kOtherHead(2.0 * HipBones::kMidline, 0.0);
const QPointF kBall(-6.5, 8.5);
constexpr double kBallRadius = 1.6;
const QLineF kKnownLine(-7.5, 10.0, 5.5, 10.0);
const QLineF kMidline(HipBones::kMidline, -17.0, HipBones::kMidline, 10.5);

QTransform IntoWidget(const QSize& size) {
  const double scale = std::min(size.width() / kPelvis.width(), size.height() / kPelvis.height());
  QTransform into;
  into.translate(size.width() / 2.0, size.height() / 2.0);
  into.scale(scale, scale);
  into.translate(-kPelvis.center().x(), -kPelvis.center().y());
  return into;
}

void PaintBones(QPainter& painter, const QPalette& palette) {
  QTransform mirrored(-1.0, 0.0, 0.0, 1.0, 2.0 * HipBones::kMidline, 0.0);
  QColor line = palette.color(QPalette::WindowText);
  line.setAlphaF(0.55F);
  QColor fill = line;
  fill.setAlphaF(0.12F);
  painter.setPen(QPen(line, 0.25));
  painter.setBrush(fill);
  for (const QPainterPath& bone : {HipBones::HalfPelvis(), HipBones::Femur()}) {
    painter.drawPath(bone);
    painter.drawPath(mirrored.map(bone));
  }
}

void PaintPoint(QPainter& painter, QPointF at) {
  constexpr double kDot = 1.0;
  painter.setBrush(painter.pen().color());
  painter.drawEllipse(at, kDot, kDot);
}

void PaintCircle(QPainter& painter, QPointF centre, double radius) {
  painter.drawEllipse(centre, radius, radius);
}

void PaintMark(QPainter& painter, MarkKind kind) {
  switch (kind) {
    case MarkKind::Head:
      return PaintCircle(painter, kHead, HipBones::kHeadRadius);
    case MarkKind::OtherHead:
      return PaintCircle(painter, kOtherHead, HipBones::kHeadRadius);
    case MarkKind::Midline:
      return painter.drawLine(kMidline);
    case MarkKind::SocketEdge:
      return PaintPoint(painter,
                        HipBones::OnCircle(HipBones::kSocketRadius, 90.0 + HipBones::kEdgeAngle));
    case MarkKind::CrestTop:
      return PaintPoint(painter, HipBones::kCrestTop);
    case MarkKind::CrestLateral:
      return PaintPoint(painter, HipBones::kCrestSide);
    case MarkKind::Trochanter:
      return PaintPoint(painter, HipBones::kTrochanter);
    case MarkKind::Ball:
      return PaintCircle(painter, kBall, kBallRadius);
    case MarkKind::Line:
      return painter.drawLine(kKnownLine);
  }
}

}  // namespace

PelvisDrawing::PelvisDrawing(QWidget* parent) : QWidget(parent) {
  TellPictures();
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setAccessibleName(QStringLiteral("Where the mark belongs"));
  ShowMark(shown_);
}

void PelvisDrawing::ShowMark(MarkKind kind) {
  shown_ = kind;
  setAccessibleDescription(RowOf(kind).caption.toString());
  update();
}

// Orange and a thick stroke: seen by the colour-blind on either ground.
void PelvisDrawing::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setTransform(IntoWidget(size()), true);
  PaintBones(painter, palette());
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(0xd5, 0x5e, 0x00), 0.7, Qt::SolidLine, Qt::RoundCap));
  PaintMark(painter, shown_);
}

}  // namespace Measuring
