// The radiograph with its marks, as the user looks at it and marks it by mouse, touch and keys. It
// owns neither: it tells what the user wants done to a mark and shows the marks it is given.
#pragma once

#include <QImage>
#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

#include "measuring/grey_presets.h"
#include "measuring/grey_pyramid.h"
#include "measuring/mark_scene.h"
#include "measuring/view_transform.h"
#include "platform/picture_access.h"

class QGestureEvent;
class QNativeGestureEvent;

namespace Measuring {

class RadiographView : public QWidget {
  Q_OBJECT
  TELMARION_PICTURE
 public:
  using PixelPlace = Landmarks::PixelPlace;

  explicit RadiographView(QWidget* parent = nullptr);

  // Null: nothing to show. `pixelAspect` is the spacing of rows over that of columns. The picture
  // comes up fitted, as it is, in the first of its presets.
  void SetRadiograph(std::shared_ptr<const Radiography::Radiograph> radiograph, double pixelAspect);

  void ShowMarks(const MarkPoints& points, const CirclesOnPicture& circles);
  // The mark whose points a click adds.
  void SetCurrent(MarkKind kind);
  std::optional<MarkPoint> Selected() const { return scene_.selected; }
  void Select(std::optional<MarkPoint> point);

  const std::vector<GreyPreset>& Presets() const { return presets_; }
  void UsePreset(std::size_t index);
  void SetInverted(bool inverted);
  void SetFlipped(bool flipped);
  void Fit();
  void OneToOne();  // a pixel of the picture is one of the display
  // About the selected point, the cross-hair or the middle, whichever there is first.
  void ZoomIn();
  void ZoomOut();

  const ViewTransform& Transform() const { return transform_; }
  double Zoom() const;  // device pixels a pixel
  Radiography::Window ShownWindow() const { return WindowOf(look_); }
  bool IsInverted() const { return isInverted_; }
  bool IsFlipped() const { return transform_.flipped; }
  // Needs a picture.
  QSize PictureSize() const;
  // Of the pixel there; nothing outside the picture.
  std::optional<double> ValueAt(PixelPlace place) const;
  // Where the magnifier is; nothing while there is none.
  std::optional<QRectF> Magnifier() const;
  // Where the keys set points; nothing before its first use.
  std::optional<PixelPlace> CrossHair() const { return crossHair_; }

  // The whole picture as it is shown, with captions to all marks, a pixel for each of its own
  // (where they are not square, enough to make them so). Null where memory does not suffice.
  QImage PictureWithMarks() const;

  QSize sizeHint() const override { return {900, 700}; }

 signals:
  void PointAdded(Measuring::MarkKind kind, Landmarks::PixelPlace place);
  // `isDone` is false as long as the mouse holds the point.
  void PointMoved(Measuring::MarkKind kind, std::size_t index, Landmarks::PixelPlace place,
                  bool isDone);
  void PointRemoved(Measuring::MarkKind kind, std::size_t index);
  void RoughCircleDrawn(Measuring::MarkKind kind, Landmarks::PixelPlace centre,
                        Landmarks::PixelPlace edge);
  void PointerMoved(std::optional<Landmarks::PixelPlace> place);  // nothing off the picture
  void ViewChanged();  // zoom, place, window, inversion or flip

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  enum class Act { None, Set, Drag, Window, Pan };
  // What the mouse has been doing since a button went down.
  struct Press {
    Act act = Act::None;
    Qt::MouseButton button = Qt::NoButton;
    QPointF from;
    QPointF now;
    bool hasMoved = false;
    // At the start: where the point that is dragged was, and what was seen.
    PixelPlace place;
    ViewTransform transform;
    GreyLook look;
  };

  bool HasPicture() const { return pyramid_.radiograph != nullptr; }
  double Aspect() const { return transform_.aspect; }
  void Show(const ViewTransform& transform);
  void ShowLook(const GreyLook& look);
  void RefreshSeen();
  void ZoomBy(double factor, QPointF about);
  void ZoomAtPoint(double factor);
  void Tell();  // what is marked and selected, to a screen reader

  void PaintOver(QPainter& painter) const;
  void PaintRoughCircle(QPainter& painter) const;
  void PaintFocus(QPainter& painter) const;

  bool ShowHoverWords(QPoint position, QPoint onScreen);
  bool PinchByGesture(const QGestureEvent& event);
  bool PinchByPad(const QNativeGestureEvent& event);

  void BeginPress(const QMouseEvent& event, Act act);
  Act ActOf(const QMouseEvent& event) const;
  bool WantsPointHere() const;
  void DragPoint(bool isDone);
  void SetPoint(QPointF position);
  void CancelPress();
  bool DrawsRoughCircle() const;
  void NoteMouse(QPointF position);
  void RefreshPointer();
  void RefreshUnderPointer();

  bool ActOnKey(const QKeyEvent& event);
  void MoveByKey(QPointF way);
  void StepSelection(int step);
  void SetPointByKey();
  void RemoveSelected();
  void Escape();
  std::optional<PixelPlace> KeyPlace() const;
  std::optional<PixelPlace> PlacedNow() const;
  std::optional<PixelPlace> ToldPlace() const;

  GreyPyramid pyramid_;
  std::vector<GreyPreset> presets_;
  Radiography::Window full_;
  GreyLook look_;
  std::vector<std::uint8_t> brightness_;
  bool isInverted_ = false;

  ViewTransform transform_;
  bool isFitted_ = true;  // and stays so when the view changes its size

  MarkScene scene_;
  std::optional<PixelPlace> crossHair_;
  bool isKeyed_ = false;  // the keys are placing a point: the magnifier shows it
  bool isSpaceDown_ = false;
  std::optional<QPointF> mouse_;  // while it is over the view
  bool isKeysPlaceTold_ = false;  // else the mouse's: whichever moved last
  Press press_;
  mutable QRectF magnifier_;  // where it was last

  QImage seen_;  // the picture as the view shows it, in device pixels
  bool isSeenFresh_ = false;
};

}  // namespace Measuring
