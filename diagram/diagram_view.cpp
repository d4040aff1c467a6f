// The diagram in a window.
#include "diagram/diagram_view.h"

#include <QPainter>

namespace {

void PaintLabels(QPainter& painter, const QRectF& target, const PictureBox& picture,
                 const Vizual::DiagramLabels& labels, const QPalette& palette) {
  for (const PictureLabel* label : {&labels.stressLegend, &labels.forceLegend, &labels.edgeAngle,
                                    &labels.forceAngle, &labels.leftHip, &labels.rightHip}) {
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
