// A RasterBox in a window, pixel for pixel at every scale factor of the display.
#pragma once

#include <QImage>
#include <QPointF>
#include <QWidget>

#include "platform/picture_access.h"
#include "platform/raster_box.h"

class RasterView : public QWidget {
  Q_OBJECT
  TELMARION_PICTURE
 public:
  explicit RasterView(QWidget* parent = nullptr);

  // What is drawn is seen after the next ShowDrawing.
  RasterBox& Box() { return box_; }
  const RasterBox& Box() const { return box_; }

  // Shows the picture as it is now, until the next call: half a drawing is never seen. After a
  // change of the widget's size the picture shown is stretched until then.
  void ShowDrawing();

  // A point of the widget (of a mouse event, say) in device pixels of the picture.
  QPointF PixelPoint(QPointF position) const;

  QSize sizeHint() const override;

 signals:
  // The picture has a new size and is empty; it wants to be drawn and shown again.
  void Cleared();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void FitBox();

  RasterBox box_;
  QImage shown_;
};
