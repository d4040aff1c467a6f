// Painting of the texts on a picture.
#include "platform/picture_label.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <cmath>

#include "platform/length_units.h"

namespace {

QStringList Lines(const QString& caption) {
  static const QRegularExpression run(QStringLiteral("\\s{2,}"));
  return caption.trimmed().split(run);
}

QFont LabelFont(const QPainter& painter, const QRectF& target, const PictureBox& box,
                const PictureLabel& label) {
  QFont font(QStringLiteral("Times New Roman"));
  const double height = std::abs(label.fontHeight / box.ScaleHeight()) * target.height();
  // In points, since sizes in pixels are whole numbers and the text would not grow with the
  // picture.
  font.setPointSizeF(std::max(1.0, height * kPointsPerInch / painter.device()->logicalDpiY()));
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

// Clear of a line that ends at the label.
double Inset(const QFontMetricsF& metrics) {
  return 0.12 * metrics.height();
}

double Within(double value, double least, double most) {
  return std::max(least, std::min(value, most));
}

}  // namespace

QRectF LabelArea(const QPainter& painter, const QRectF& target, const PictureBox& box,
                 const PictureLabel& label) {
  const QFontMetricsF metrics(LabelFont(painter, target, box, label), painter.device());
  const QStringList lines = Lines(label.caption);
  double width = 0.0;
  for (const QString& line : lines) width = std::max(width, metrics.horizontalAdvance(line));
  const QPointF part = box.PartPoint({label.left, label.top});
  QRectF area(target.left() + part.x() * target.width(), target.top() + part.y() * target.height(),
              width + 2.0 * Inset(metrics), double(lines.size()) * metrics.height());
  area.moveLeft(Within(area.left(), target.left(), target.right() - area.width()));
  area.moveTop(Within(area.top(), target.top(), target.bottom() - area.height()));
  return area;
}

void PaintLabel(QPainter& painter, const QRectF& target, const PictureBox& box,
                const PictureLabel& label, const QPalette& palette) {
  if (!label.visible) return;
  const QRectF area = LabelArea(painter, target, box, label);
  painter.fillRect(area, PaintColour(label.backColor, palette));
  const QFont font = LabelFont(painter, target, box, label);
  const QFontMetricsF metrics(font, painter.device());
  painter.setFont(font);
  painter.setPen(PaintColour(label.foreColor, palette));
  double baseline = area.top() + metrics.ascent();
  for (const QString& line : Lines(label.caption)) {
    painter.drawText(QPointF(area.left() + Inset(metrics), baseline), line);
    baseline += metrics.height();
  }
}
