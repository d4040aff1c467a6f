// A small drawing of a pelvis that shows where a mark belongs.
#pragma once

#include <QWidget>

#include "measuring/marks.h"
#include "platform/picture_access.h"

namespace Measuring {

class PelvisDrawing final : public QWidget {
  Q_OBJECT
  TELMARION_PICTURE
 public:
  explicit PelvisDrawing(QWidget* parent = nullptr);

  void ShowMark(MarkKind kind);

  QSize sizeHint() const override { return {144, 96}; }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  MarkKind shown_ = MarkKind::Head;
};

}  // namespace Measuring
