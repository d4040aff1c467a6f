// Pictures drawn on a grid of 16 by 16 units, every point on a whole device pixel.
#include "app/tool_icons.h"

#include <QColor>
#include <QGuiApplication>
#include <QIconEngine>
#include <QList>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

namespace {

constexpr double kGrid = 16.0;      // units to a side
constexpr double kPenUnits = 1.25;  // before rounding to whole pixels
constexpr int kShade = 40;          // of 255, how much of the pen's colour fills a shape

// A painter in device pixels with lines that begin and end on them.
class GridPen {
 public:
  GridPen(QPainter& painter, const QRectF& pixels, const QColor& colour)
      : painter_(painter), pixels_(pixels), scale_(pixels.width() / kGrid) {
    width_ = std::max(1.0, std::round(kPenUnits * scale_));
    shade_ = colour;
    shade_.setAlpha(kShade);
    painter_.setPen(QPen(colour, width_, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  }

  void Shape(const QList<QPointF>& units) {
    painter_.setBrush(shade_);
    painter_.drawPolygon(Snapped(units));
  }
  void Line(const QList<QPointF>& units) { painter_.drawPolyline(Snapped(units)); }

 private:
  // A pen of odd width is sharp when its middle runs through the middle of a pixel.
  QPolygonF Snapped(const QList<QPointF>& units) const {
    const double middle = std::fmod(width_, 2.0) / 2.0;
    QPolygonF points;
    for (const QPointF& unit : units) {
      points.append(pixels_.topLeft() + QPointF(std::round(unit.x() * scale_ - middle) + middle,
                                                std::round(unit.y() * scale_ - middle) + middle));
    }
    return points;
  }

  QPainter& painter_;
  QRectF pixels_;
  double scale_;
  double width_;
  QColor shade_;
};

void DrawNew(GridPen& pen) {
  pen.Shape({{3, 1.5}, {9, 1.5}, {13, 5.5}, {13, 14.5}, {3, 14.5}});
  pen.Line({{9, 1.5}, {9, 5.5}, {13, 5.5}});
}

void DrawOpen(GridPen& pen) {
  pen.Line({{2, 13.5}, {2, 3}, {6, 3}, {8, 5}, {13, 5}, {13, 7.5}});
  pen.Shape({{2, 13.5}, {4.5, 7.5}, {15, 7.5}, {12.5, 13.5}});
}

void DrawSave(GridPen& pen) {
  pen.Shape({{2, 2}, {11, 2}, {14, 5}, {14, 14}, {2, 14}});
  pen.Line({{5, 2}, {5, 6}, {10, 6}, {10, 2}});
  pen.Line({{4.5, 14}, {4.5, 9.5}, {11.5, 9.5}, {11.5, 14}});
}

void DrawBack(GridPen& pen) {
  pen.Line({{7, 3}, {2, 8}, {7, 13}});
  pen.Line({{2, 8}, {14, 8}});
}

void DrawForward(GridPen& pen) {
  pen.Line({{9, 3}, {14, 8}, {9, 13}});
  pen.Line({{2, 8}, {14, 8}});
}

void DrawHome(GridPen& pen) {
  pen.Line({{1.5, 8}, {8, 2}, {14.5, 8}});
  pen.Shape({{3.5, 7},
             {3.5, 14},
             {6.5, 14},
             {6.5, 9.5},
             {9.5, 9.5},
             {9.5, 14},
             {12.5, 14},
             {12.5, 7},
             {8, 2.5}});
}

void DrawLetter(GridPen& pen) {
  pen.Line({{1.5, 14}, {5.5, 3}, {9.5, 14}});
  pen.Line({{3, 10}, {8, 10}});
}

void DrawSmaller(GridPen& pen) {
  DrawLetter(pen);
  pen.Line({{11, 5}, {15, 5}});
}

void DrawLarger(GridPen& pen) {
  DrawSmaller(pen);
  pen.Line({{13, 3}, {13, 7}});
}

void Draw(ToolPicture picture, GridPen& pen) {
  switch (picture) {
    case ToolPicture::New:
      return DrawNew(pen);
    case ToolPicture::Open:
      return DrawOpen(pen);
    case ToolPicture::Save:
      return DrawSave(pen);
    case ToolPicture::Back:
      return DrawBack(pen);
    case ToolPicture::Forward:
      return DrawForward(pen);
    case ToolPicture::Home:
      return DrawHome(pen);
    case ToolPicture::Smaller:
      return DrawSmaller(pen);
    case ToolPicture::Larger:
      return DrawLarger(pen);
  }
}

// The largest square on whole pixels in the middle of `pixels`.
QRectF Square(const QRectF& pixels) {
  const double side = std::floor(std::min(pixels.width(), pixels.height()));
  return {std::floor(pixels.center().x() - side / 2.0),
          std::floor(pixels.center().y() - side / 2.0), side, side};
}

class ToolIconEngine final : public QIconEngine {
 public:
  explicit ToolIconEngine(ToolPicture picture) : picture_(picture) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const double ratio = painter->device()->devicePixelRatioF();
    const QRectF pixels(rect.x() * ratio, rect.y() * ratio, rect.width() * ratio,
                        rect.height() * ratio);
    painter->save();
    painter->scale(1.0 / ratio, 1.0 / ratio);
    painter->setRenderHint(QPainter::Antialiasing);
    GridPen pen(
        *painter, Square(pixels),
        QGuiApplication::palette().color(
            mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active, QPalette::ButtonText));
    Draw(picture_, pen);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new ToolIconEngine(picture_); }

 private:
  ToolPicture picture_;
};

const QLatin1String kApplicationPicture(":/telmarion/telmarion.svg");

QPixmap Rendered(QSvgRenderer& picture, int side) {
  QPixmap pixmap(side, side);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  picture.render(&painter);
  return pixmap;
}

}  // namespace

QIcon ToolIcon(ToolPicture picture) {
  return QIcon(new ToolIconEngine(picture));  // the icon owns its engine
}

QIcon ApplicationIcon() {
  QSvgRenderer picture(kApplicationPicture);
  QIcon icon;
  for (const int side : {16, 24, 32, 48, 64, 128, 256}) icon.addPixmap(Rendered(picture, side));
  return icon;
}

QPixmap ApplicationPicture(int side, double devicePixelRatio) {
  QSvgRenderer picture(kApplicationPicture);
  QPixmap pixmap = Rendered(picture, qRound(side * devicePixelRatio));
  pixmap.setDevicePixelRatio(devicePixelRatio);
  return pixmap;
}
