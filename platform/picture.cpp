// Painting of the shapes of a picture.
#include "platform/picture.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/length_units.h"

namespace {

// Button face where the palette's own is too dark to draw on, and the darkest grey level, of 255,
// on which a blue stroke still reads.
constexpr QRgb kLightFace = 0xFFEFEFEF;
constexpr int kDarkestFace = 140;

// Dots of a dotted line: ink and gap in pen widths.
constexpr double kDot = 2.0;
constexpr double kGap = 3.0;

double Degrees(double radians) {
  return radians * 180.0 / std::numbers::pi;
}

// Carries the user coordinates of one drawing to the target.
class Mapping {
 public:
  Mapping(const QRectF& scale, const QRectF& target, const PaintOptions& options)
      : scale_(scale), target_(target), options_(options) {}

  QPointF Point(QPointF p) const {
    return {target_.left() + (p.x() - scale_.left()) / scale_.width() * target_.width(),
            target_.top() + (p.y() - scale_.top()) / scale_.height() * target_.height()};
  }
  double Length(double horizontal) const {
    return std::abs(horizontal / scale_.width() * target_.width());
  }
  double PenWidth(int width) const {
    const double exact = width * options_.lineUnit;
    return options_.snapToPixels ? std::max(1.0, std::round(exact)) : exact;
  }
  // Where a stroke of `penWidth` across this coordinate covers whole pixels.
  double Snapped(double coordinate, double penWidth) const {
    if (!options_.snapToPixels) return coordinate;
    const bool odd = std::lround(penWidth) % 2 == 1;
    return odd ? std::floor(coordinate) + 0.5 : std::round(coordinate);
  }

 private:
  QRectF scale_;
  QRectF target_;
  const PaintOptions& options_;
};

class ShapePainter {
 public:
  ShapePainter(QPainter& painter, const QRectF& target, const PaintOptions& options)
      : painter_(painter), target_(target), options_(options) {}

  void Paint(const Drawing& drawing) {
    const Mapping map(drawing.scale, target_, options_);
    const bool inked = drawing.pen.style != LineStyle::None;
    penWidth_ = inked ? map.PenWidth(drawing.pen.width) : 0.0;
    painter_.setPen(MakePen(drawing.pen));
    painter_.setBrush(MakeBrush(drawing.fill));
    std::visit([&](const auto& shape) { PaintShape(shape, map); }, drawing.shape);
  }

 private:
  QPen MakePen(const Pen& pen) const {
    if (pen.style == LineStyle::None) return Qt::NoPen;
    QPen result(PaintColour(pen.colour, options_.palette), penWidth_, Qt::SolidLine, Qt::FlatCap,
                Qt::MiterJoin);
    if (pen.style == LineStyle::Dotted) result.setDashPattern({kDot, kGap});
    return result;
  }
  QBrush MakeBrush(const Fill& fill) const {
    if (fill.kind == FillKind::Transparent) return Qt::NoBrush;
    return PaintColour(fill.colour, options_.palette);
  }

  void PaintShape(const LineShape& line, const Mapping& map) {
    QPointF a = map.Point(line.from);
    QPointF b = map.Point(line.to);
    if (a == b) return;
    if (line.from.x() == line.to.x()) {
      a.setX(map.Snapped(a.x(), penWidth_));
      b.setX(a.x());
    }
    if (line.from.y() == line.to.y()) {
      a.setY(map.Snapped(a.y(), penWidth_));
      b.setY(a.y());
    }
    painter_.drawLine(a, b);
  }

  void PaintShape(const BoxShape& box, const Mapping& map) {
    const auto corner = [&](QPointF user) {
      const QPointF p = map.Point(user);
      return QPointF(map.Snapped(p.x(), penWidth_), map.Snapped(p.y(), penWidth_));
    };
    painter_.drawRect(QRectF(corner(box.from), corner(box.to)).normalized());
  }

  void PaintShape(const ArcShape& arc, const Mapping& map) {
    const double radius = map.Length(arc.radius);
    const QPointF reach(radius, radius);
    const QPointF centre = map.Point(arc.centre);
    const QRectF around(centre - reach, centre + reach);
    if (arc.sweep >= 2.0 * std::numbers::pi) {
      painter_.drawEllipse(around);
      return;
    }
    if (arc.sweep == 0.0) return;
    QPainterPath path;
    path.arcMoveTo(around, Degrees(arc.start));
    path.arcTo(around, Degrees(arc.start), Degrees(arc.sweep));
    painter_.strokePath(path, painter_.pen());
  }

  QPainter& painter_;
  QRectF target_;
  const PaintOptions& options_;
  double penWidth_ = 1.0;
};

}  // namespace

QColor PaintColour(Colour colour, const QPalette& palette) {
  if (colour == kButtonFace) {
    const QColor face = palette.color(QPalette::Window);
    return qGray(face.rgb()) < kDarkestFace ? QColor(kLightFace) : face;
  }
  return QColor(PixelOf(colour));
}

void PaintDrawings(QPainter& painter, const QRectF& target, const PaintOptions& options,
                   std::vector<Drawing>::const_iterator begin,
                   std::vector<Drawing>::const_iterator end) {
  painter.save();
  painter.setClipRect(target, Qt::IntersectClip);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  ShapePainter shapes(painter, target, options);
  for (auto drawing = begin; drawing != end; ++drawing) shapes.Paint(*drawing);
  painter.restore();
}

void Picture::Paint(QPainter& painter, const QRectF& target, const PaintOptions& options) const {
  if (ground) painter.fillRect(target, PaintColour(*ground, options.palette));
  PaintDrawings(painter, target, options, drawings.begin(), drawings.end());
}

QImage Picture::ToImage(QSize pixels, double pixelRatio, const QPalette& palette) const {
  QImage image(pixels, ground ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  constexpr double kMetresPerInch = 0.0254;
  const int dotsPerMetre = int(std::lround(kPixelsPerInch * pixelRatio / kMetresPerInch));
  image.setDotsPerMeterX(dotsPerMetre);
  image.setDotsPerMeterY(dotsPerMetre);
  QPainter painter(&image);
  Paint(painter, QRectF(QPointF(0, 0), pixels), {palette, pixelRatio, true});
  return image;
}
