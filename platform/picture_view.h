// A PictureBox in a window, sharp at every size and scale factor of the display.
#pragma once

#include <QImage>
#include <QRectF>
#include <QSize>
#include <QWidget>

#include "platform/picture_access.h"
#include "platform/picture_box.h"

class PictureView : public QWidget {
  Q_OBJECT
  TELMARION_PICTURE
 public:
  explicit PictureView(QWidget* parent = nullptr);

  PictureBox& Box() { return box_; }
  const PictureBox& Box() const { return box_; }

  // Keeps the picture at this ratio of width to height, as large as fits, in the middle of the
  // widget. Without it the picture fills the widget.
  void HoldRatio(QSize ratio);

  // Where the picture lies in the widget.
  QRectF PictureArea() const;

  QSize sizeHint() const override;

 protected:
  // Called after the picture has been painted; `area` is where it lies. For labels and the like.
  virtual void PaintOver(QPainter& painter, const QRectF& area);

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void FitBox();
  void RefreshCache();

  PictureBox box_;
  QSize ratio_;
  // What has been painted of the box so far, in device pixels.
  QImage cache_;
  unsigned cachedGeneration_ = 0;
  std::size_t cachedDrawings_ = 0;
};
