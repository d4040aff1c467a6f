// Pictures from SVG files. Their grid of 24 units is the side of a button's picture at 100 %.
#include "app/tool_icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QString>
#include <QSvgRenderer>

namespace {

QString FileOf(ToolPicture picture) {
  switch (picture) {
    case ToolPicture::New:
      return ":/telmarion/icons/new.svg";
    case ToolPicture::Open:
      return ":/telmarion/icons/open.svg";
    case ToolPicture::Save:
      return ":/telmarion/icons/save.svg";
    case ToolPicture::Back:
      return ":/telmarion/icons/back.svg";
    case ToolPicture::Forward:
      return ":/telmarion/icons/forward.svg";
    case ToolPicture::Home:
      return ":/telmarion/icons/home.svg";
    case ToolPicture::Smaller:
      return ":/telmarion/icons/smaller.svg";
    case ToolPicture::Larger:
      return ":/telmarion/icons/larger.svg";
  }
  return {};
}

// Qt's own engine for SVG keeps the colours of the file; this one takes the palette's.
class ToolIconEngine final : public QIconEngine {
 public:
  explicit ToolIconEngine(ToolPicture picture) : picture_(picture) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const QSize pixels = rect.size() * painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, pixmap(pixels, mode, state));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    QSvgRenderer file(FileOf(picture_));
    file.setAspectRatioMode(Qt::KeepAspectRatio);
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    file.render(&painter);
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), QGuiApplication::palette().color(group, QPalette::ButtonText));
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
