// Labels on the left, bars from a common line, shares behind them.
#include "platform/share_bars.h"

#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/length_units.h"
#include "platform/readable_palette.h"

namespace {

constexpr int kLongestBar = 20 * kGrid;  // at the least size of the picture

QString WordsOf(const std::vector<ShareBar>& bars) {
  QStringList words;
  for (const ShareBar& bar : bars) {
    if (bar.share) words << bar.label + u' ' + ShareText(*bar.share);
  }
  return words.isEmpty() ? QStringLiteral("Empty.") : words.join(QStringLiteral(", "));
}

}  // namespace

QString ShareText(double share) {
  if (share > 0.0 && share < 0.005) return QStringLiteral("< 1 %");
  return QStringLiteral("%1 %").arg(std::lround(100.0 * share));
}

ShareBars::ShareBars(QWidget* parent) : QWidget(parent) {
  TellPictures();
  setAccessibleDescription(WordsOf({}));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ShareBars::Show(std::vector<ShareBar> bars) {
  const QSize before = sizeHint();
  bars_ = std::move(bars);
  setAccessibleDescription(WordsOf(bars_));
  if (sizeHint() != before) updateGeometry();
  update();
}

int ShareBars::RowHeight() const {
  return std::max(3 * kGrid, fontMetrics().height());
}

int ShareBars::LabelWidth() const {
  int width = 0;
  for (const ShareBar& bar : bars_) {
    width = std::max(width, fontMetrics().horizontalAdvance(bar.label));
  }
  return width;
}

QSize ShareBars::sizeHint() const {
  const int text = fontMetrics().horizontalAdvance(ShareText(1.0));
  return {LabelWidth() + text + kLongestBar + 3 * kGrid,
          RowHeight() * static_cast<int>(bars_.size())};
}

void ShareBars::PaintBar(QPainter& painter, const ShareBar& bar, const QRect& row) const {
  const int text = fontMetrics().horizontalAdvance(ShareText(1.0));
  painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter, bar.label);
  if (!bar.share) return;
  const double start = LabelWidth() + 2 * kGrid;
  const double room = row.width() - start - kGrid - text;
  const double length = std::clamp(*bar.share, 0.0, 1.0) * room;
  const QColor ground = palette().color(QPalette::Window);
  painter.fillRect(QRectF(start, row.top() + kGrid / 2.0, length, row.height() - kGrid),
                   ReadableOn(ground, palette().color(QPalette::Highlight)));
  const QRectF behind(start + length + kGrid, row.top(), text, row.height());
  painter.drawText(behind, Qt::AlignLeft | Qt::AlignVCenter, ShareText(*bar.share));
}

void ShareBars::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  QRect row(0, 0, width(), RowHeight());
  for (const ShareBar& bar : bars_) {
    PaintBar(painter, bar, row);
    row.translate(0, row.height());
  }
}
