// The diagram in a window: the picture, held at 3:2, with its labels as sharp text.
#pragma once

#include "diagram/hip_diagram.h"
#include "platform/picture_view.h"

namespace Vizual {

// Paints the picture's image with its visible labels.
void PaintDiagram(QPainter& painter, const QRectF& target, const PictureBox& picture,
                  const DiagramLabels& labels, const PaintOptions& options);

class DiagramView : public PictureView {
  Q_OBJECT
 public:
  explicit DiagramView(QWidget* parent = nullptr);

  DiagramLabels& Labels() { return labels_; }
  Target Screen() { return Target::Screen(Box(), labels_); }

 protected:
  void PaintOver(QPainter& painter, const QRectF& area) override;

 private:
  DiagramLabels labels_;
};

}  // namespace Vizual
