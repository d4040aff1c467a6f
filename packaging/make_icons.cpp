// A tool of the build: paints the application's icon at the sizes that desktops look for.
//   make_icons SVG FOLDER SIDE…   writes FOLDER/SIDE.png
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QStringList>
#include <QSvgRenderer>
#include <algorithm>
#include <cstdio>

namespace {

bool WriteIcon(QSvgRenderer& picture, const QString& folder, const QString& side) {
  const int pixels = side.toInt();
  if (pixels <= 0) return false;
  QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  picture.render(&painter);
  painter.end();
  return image.save(folder + '/' + side + ".png");
}

}  // namespace

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  if (arguments.size() < 4) {
    std::fprintf(stderr, "usage: make_icons SVG FOLDER SIDE...\n");
    return 2;
  }
  QSvgRenderer picture(arguments[1]);
  const bool written =
      picture.isValid() &&
      std::all_of(arguments.begin() + 3, arguments.end(),
                  [&](const QString& side) { return WriteIcon(picture, arguments[2], side); });
  if (!written) std::fprintf(stderr, "make_icons: the icons could not be made\n");
  return written ? 0 : 1;
}
