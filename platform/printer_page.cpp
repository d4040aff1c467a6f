// Printing at the text cursor.
#include "platform/printer_page.h"

#include <QPageLayout>
#include <QPalette>
#include <QPointF>
#include <QSizeF>
#include <QStringList>
#include <optional>

#include "platform/length_units.h"

namespace {

QSizeF PaperInTwips(QPagedPaintDevice& device) {
  return device.pageLayout().fullRect(QPageLayout::Point).size() * kTwipsPerPoint;
}

}  // namespace

PrinterPage::PrinterPage(PrintTarget& target)
    : target_(target),
      dotsPerTwip_(target.Device().logicalDpiX() / kTwipsPerInch),
      metrics_(font_, &target.Device()),
      error_(target.Check()) {
  // Letters keep their positions whatever the resolution.
  font_.setHintingPreference(QFont::PreferNoHinting);
  font_.setPointSize(10);
  if (error_.isEmpty() && !painter_.begin(&target.Device())) Refuse();
  SetFontSize(FontSize());
}

double PrinterPage::ScaleWidth() const {
  return PaperInTwips(target_.Device()).width();
}

double PrinterPage::ScaleHeight() const {
  return PaperInTwips(target_.Device()).height();
}

void PrinterPage::SetFontName(const QString& family) {
  font_.setFamily(family);
  SetFontSize(FontSize());
}

void PrinterPage::SetFontSize(int points) {
  font_.setPointSize(points);
  metrics_ = QFontMetricsF(font_, &target_.Device());
  if (painter_.isActive()) painter_.setFont(font_);
}

double PrinterPage::TextWidth(const QString& text) const {
  return metrics_.horizontalAdvance(text) / dotsPerTwip_;
}

double PrinterPage::TextHeight() const {
  return metrics_.lineSpacing() / dotsPerTwip_;
}

void PrinterPage::Print(const QString& text) {
  PrintWithoutFeed(text);
  LineFeed();
}

void PrinterPage::PrintWithoutFeed(const QString& text) {
  const QStringList lines = text.split(u'\n');
  for (qsizetype i = 0; i < lines.size(); ++i) {
    if (i > 0) LineFeed();
    const QPointF baseline(Device(x_), Device(y_) + metrics_.ascent());
    if (painter_.isActive()) painter_.drawText(baseline, lines[i]);
    x_ += TextWidth(lines[i]);
  }
}

void PrinterPage::LineFeed() {
  x_ = lineStart_;
  y_ += TextHeight();
}

void PrinterPage::PaintPicture(const Picture& picture, const QRectF& target) {
  if (!painter_.isActive()) return;
  Picture onPaper = picture;
  onPaper.ground = std::nullopt;
  const double lineUnit = target_.Device().logicalDpiX() / kPixelsPerInch;
  onPaper.Paint(painter_, Device(target), {QPalette(Qt::white), lineUnit, false});
}

void PrinterPage::PaintImage(const QImage& image, const QRectF& target) {
  if (painter_.isActive()) painter_.drawImage(Device(target), image);
}

QRectF PrinterPage::Device(const QRectF& twips) const {
  return {twips.topLeft() * dotsPerTwip_, twips.size() * dotsPerTwip_};
}

void PrinterPage::NewPage() {
  if (painter_.isActive() && !target_.Device().newPage()) {
    painter_.end();
    Refuse();
  }
  ++pageNumber_;
  x_ = lineStart_;
  y_ = 0.0;
}

QString PrinterPage::EndDocument() {
  if (!painter_.isActive()) return error_;
  if (painter_.end()) return target_.Deliver();
  Refuse();
  return error_;
}

void PrinterPage::Refuse() {
  error_ = target_.Refusal(QStringLiteral("it does not take the document"));
}
