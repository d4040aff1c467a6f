// The diagram in a window.
#include "diagram/diagram_view.h"

#include <QPainter>

namespace {

// The force angle's label as it is painted: with a small centre-edge angle both angle labels have
// the same place, and this one is then moved below the other.
PictureLabel ClearOfEdgeAngle(const QPainter& painter, const QRectF& target,
                              const PictureBox& picture, const Vizual::DiagramLabels& labels) {
  PictureLabel moved = labels.forceAngle;
  const QRectF edge = LabelArea(painter, target, picture, labels.edgeAngle);
  const QRectF force = LabelArea(painter, target, picture, labels.forceAngle);
  if (labels.edgeAngle.visible && edge.intersects(force)) {
    moved.top += (edge.bottom() - force.top()) / target.height() * picture.ScaleHeight();
  }
  return moved;
}

void PaintLabels(QPainter& painter, const QRectF& target, const PictureBox& picture,
                 const Vizual::DiagramLabels& labels, const QPalette& palette) {
  const PictureLabel forceAngle = ClearOfEdgeAngle(painter, target, picture, labels);
  for (const PictureLabel* label : {&labels.stressLegend, &labels.forceLegend, &labels.edgeAngle,
                                    &forceAngle, &labels.leftHip, &labels.rightHip}) {
    PaintLabel(painter, target, picture, *label, palette);
  }
}

}  // namespace

void Vizual::PaintDiagram(QPainter& painter, const QRectF& target, const PictureBox& picture,
                          const DiagramLabels& labels, const PaintOptions& options) {
  picture.Image().Paint(painter, target, options);
  PaintLabels(painter, target, picture, labels, options.palette);
}

Vizual::DiagramView::DiagramView(QWidget* parent) : PictureView(parent) {
  HoldRatio({3, 2});
}

void Vizual::DiagramView::PaintOver(QPainter& painter, const QRectF& area) {
  PaintLabels(painter, area, Box(), labels_, palette());
}
