// What the case form's picture points out: dimension lines and their labels. They are objects with
// a name so that a reader of the window finds the mark that belongs to a box.
#pragma once

#include <QColor>
#include <QFont>
#include <QList>
#include <QObject>
#include <QPainter>
#include <QPainterPath>
#include <QPointF>
#include <QString>

// One dimension line: the measured stretch or arc with its arrow heads, and thin lines that lead
// from the bones to it. Picture coordinates (see hip_bones.h).
class DimensionLine : public QObject {
  Q_OBJECT
  Q_PROPERTY(QColor borderColor READ borderColor)
  Q_PROPERTY(int borderWidth READ borderWidth)

 public:
  struct Arrow {
    QPointF tip;
    QPointF direction;  // towards the tip, any length
  };
  struct Shape {
    QPainterPath stretch;
    QList<Arrow> arrows;
    QPainterPath leaders;
  };

  DimensionLine(const QString& name, Shape shape, QObject* parent);

  QColor borderColor() const { return borderColor_; }
  int borderWidth() const { return borderWidth_; }  // pixels at a display scale of 100 %
  const Shape& shape() const { return shape_; }

  // Red and 2 wide, or black and 1 wide.
  void SetHighlighted(bool highlighted);

  // `pixel` is the size of a pixel, cm of the picture.
  void Draw(QPainter& painter, double pixel) const;

 private:
  Shape shape_;
  QColor borderColor_ = Qt::black;
  int borderWidth_ = 1;
};

// The short name of a dimension, always visible, centred on `centre`.
class DimensionLabel : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString text READ text)
  Q_PROPERTY(QColor foreColor READ foreColor)
  Q_PROPERTY(bool visible READ isVisible)

 public:
  // `height` is the size of the type, cm of the picture.
  DimensionLabel(const QString& name, const QString& text, QPointF centre, double height,
                 QObject* parent);

  QString text() const { return text_; }
  QColor foreColor() const { return foreColor_; }
  bool isVisible() const { return true; }

  // Red, or black.
  void SetHighlighted(bool highlighted);

  // What its letters are set in; an angle's letter asks for the font of symbols.
  QFont Font() const;

  // The letters, picture coordinates.
  QPainterPath Letters() const;

  void Draw(QPainter& painter) const;

 private:
  QString text_;
  QPointF centre_;
  double height_;
  QColor foreColor_ = Qt::black;
};
