// Shows help pages. Their colours come from the palette here, and not from the pages, so that one
// text serves light and dark desktops.
#include "app/help_page.h"

#include <QByteArray>
#include <QColor>
#include <QEvent>
#include <QFont>
#include <QFontMetricsF>
#include <QHelpEngineCore>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QResizeEvent>
#include <QScrollBar>
#include <QSvgRenderer>
#include <QTextDocument>
#include <algorithm>
#include <array>

#include "platform/readable_palette.h"

namespace {

constexpr double kLongestLine = 88.0;  // in widths of the letter x; longer lines are hard to follow

// The ground of tables and notes, which is the harder to read on.
QColor TintedGround(const QPalette& palette) {
  return Mixed(palette.color(QPalette::Text), palette.color(QPalette::Base), 0.07);
}

QString StyleSheet(const QPalette& palette) {
  const QColor ink = palette.color(QPalette::Text);
  const QColor ground = palette.color(QPalette::Base);
  return QStringLiteral(
             "a { color: %1; text-decoration: underline; }"
             "h1 { font-size: xx-large; font-weight: 600; margin-top: 4px; margin-bottom: 12px; }"
             "h2 { font-size: large; font-weight: 600; margin-top: 22px; margin-bottom: 6px; }"
             "p { margin-top: 6px; margin-bottom: 6px; }"
             "li { margin-bottom: 4px; }"
             "pre { white-space: pre-wrap; }"
             "table.data { border: 1px solid %3; border-collapse: collapse;"
             " margin-top: 8px; margin-bottom: 8px; }"
             "table.data td, table.data th { border: 1px solid %3; }"
             "table.data th { background-color: %2; text-align: left; }"
             "table.note { background-color: %2; margin-top: 8px; margin-bottom: 8px; }"
             "table.note td { padding: 6px 12px; }")
      .arg(ReadableOn(TintedGround(palette), palette.color(QPalette::Link)).name(),
           TintedGround(palette).name(), Mixed(ink, ground, 0.3).name());
}

// The drawing with the text's colour, and with its own colours so that they can be read here.
QByteArray InColoursOf(const QPalette& palette, QByteArray svg) {
  constexpr std::array kOwn = {"#d9483b", "#2f80d0"};
  svg.replace("currentColor", palette.color(QPalette::Text).name().toLatin1());
  for (const char* own : kOwn) {
    svg.replace(own, ReadableOn(TintedGround(palette), QColor(own)).name().toLatin1());
  }
  return svg;
}

}  // namespace

HelpPage::HelpPage(const QHelpEngineCore& engine, QWidget* parent)
    : QTextBrowser(parent), engine_(engine), usualPoints_(font().pointSizeF()) {
  setObjectName("helpPage");
  setAccessibleName(QStringLiteral("Page"));
  setFrameShape(QFrame::NoFrame);
  document()->setDocumentMargin(20);
  document()->setIndentWidth(24);
  setLineWrapMode(QTextEdit::FixedPixelWidth);
  // Else the bar would come and go as pages load, and change the width that they are laid out for.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  Restyle();
}

void HelpPage::SetZoom(int percent) {
  zoom_ = percent / 100.0;
  QFont letters = font();
  letters.setPointSizeF(usualPoints_ * zoom_);
  setFont(letters);
  Restyle();
}

QVariant HelpPage::loadResource(int type, const QUrl& name) {
  const QUrl url = name.isRelative() ? source().resolved(name) : name;
  const QByteArray content = engine_.fileData(engine_.findFile(url));
  if (url.path().endsWith(".svg")) return Drawing(content);
  if (url.path().endsWith(".png")) return ProgramPicture(content);
  return type == QTextDocument::HtmlResource ? QVariant(QString::fromUtf8(content))
                                             : QVariant(content);
}

// The pixels for a picture of this usual size, at this zoom and no wider than the text.
QSize HelpPage::PixelsOf(QSizeF usual) const {
  const double room = std::max(100.0, LineWidth() - 2.0 * document()->documentMargin());
  QSizeF size = usual * zoom_ * std::max(1.0, usualPoints_ / 10.0);
  if (size.width() > room) size.scale(room, size.height(), Qt::KeepAspectRatio);
  return (size * devicePixelRatioF()).toSize();
}

// Redrawn for each size and theme: lines stay sharp, and text can be read on a dark ground.
QImage HelpPage::Drawing(const QByteArray& svg) const {
  QSvgRenderer drawing(InColoursOf(palette(), svg));
  QImage image(PixelsOf(drawing.defaultSize()), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  drawing.render(&painter);
  painter.end();
  image.setDevicePixelRatio(devicePixelRatioF());
  return image;
}

// Stored at twice its size, so that it is sharp on a fine display.
QImage HelpPage::ProgramPicture(const QByteArray& png) const {
  const QImage whole = QImage::fromData(png);
  if (whole.isNull()) return {};
  QImage picture = whole.scaled(PixelsOf(QSizeF(whole.size()) / 2.0), Qt::IgnoreAspectRatio,
                                Qt::SmoothTransformation);
  picture.setDevicePixelRatio(devicePixelRatioF());
  return picture;
}

void HelpPage::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) Restyle();
}

// A drawing that fits the old width may not fit the new one.
void HelpPage::resizeEvent(QResizeEvent* event) {
  QTextBrowser::resizeEvent(event);
  if (lineWrapColumnOrWidth() != LineWidth()) Restyle();
}

// Styles and drawings take effect when a page is loaded, so the page is loaded again at its place.
void HelpPage::Restyle() {
  document()->setDefaultStyleSheet(StyleSheet(palette()));
  setLineWrapColumnOrWidth(LineWidth());
  if (source().isEmpty()) return;
  const int longest = std::max(1, verticalScrollBar()->maximum());
  const double place = static_cast<double>(verticalScrollBar()->value()) / longest;
  document()->clear();  // forgets the drawings of the old size and theme
  reload();
  verticalScrollBar()->setValue(static_cast<int>(place * verticalScrollBar()->maximum()));
}

int HelpPage::LineWidth() const {
  const double longest = kLongestLine * QFontMetricsF(font()).horizontalAdvance('x');
  return std::min(static_cast<int>(longest), viewport()->width());
}
