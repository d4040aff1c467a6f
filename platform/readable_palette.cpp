// Contrast by the relative luminance of sRGB colours.
#include "platform/readable_palette.h"

#include <QApplication>
#include <QEvent>
#include <algorithm>
#include <array>
#include <cmath>

namespace {

double Linear(float channel) {
  const double c = static_cast<double>(channel);
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
  return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
         0.0722 * Linear(colour.blueF());
}

struct Pair {
  QPalette::ColorRole stays;
  QPalette::ColorRole moves;
};
// Of a selection the ground moves: its text is white or black already.
constexpr std::array kPairs = {Pair{QPalette::Window, QPalette::WindowText},
                               Pair{QPalette::Base, QPalette::Text},
                               Pair{QPalette::Button, QPalette::ButtonText},
                               Pair{QPalette::Base, QPalette::PlaceholderText},
                               Pair{QPalette::Base, QPalette::Link},
                               Pair{QPalette::HighlightedText, QPalette::Highlight}};

}  // namespace

QColor Mixed(const QColor& ink, const QColor& ground, double share) {
  const auto part = [share](int a, int b) {
    return static_cast<int>(std::lround(b + share * (a - b)));
  };
  return {part(ink.red(), ground.red()), part(ink.green(), ground.green()),
          part(ink.blue(), ground.blue())};
}

double ContrastOf(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

QColor ReadableOn(const QColor& other, const QColor& colour) {
  constexpr int kSteps = 64;
  const QColor opaque = colour.alpha() == 255 ? colour : Mixed(colour, other, colour.alphaF());
  const QColor end =
      ContrastOf(other, Qt::black) > ContrastOf(other, Qt::white) ? Qt::black : Qt::white;
  QColor readable = opaque;
  for (int step = 1; step <= kSteps && ContrastOf(readable, other) < kLeastContrast; ++step) {
    readable = Mixed(end, opaque, static_cast<double>(step) / kSteps);
  }
  return readable;
}

QPalette ReadableColours(const QPalette& desktop) {
  QPalette changed;
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    for (const Pair& pair : kPairs) {
      const QColor colour = desktop.color(group, pair.moves);
      const QColor readable = ReadableOn(desktop.color(group, pair.stays), colour);
      if (readable != colour) changed.setColor(group, pair.moves, readable);
    }
  }
  return changed;
}

PaletteKeeper::PaletteKeeper() {
  Keep();
  QCoreApplication::instance()->installEventFilter(this);
}

bool PaletteKeeper::eventFilter(QObject* watched, QEvent* event) {
  const bool changed = event->type() == QEvent::ApplicationPaletteChange;
  if (changed && watched == QCoreApplication::instance() && !keeping_) Keep();
  return QObject::eventFilter(watched, event);
}

// The desktop's own colours are seen only while none are set.
void PaletteKeeper::Keep() {
  keeping_ = true;
  QApplication::setPalette(QPalette());
  QApplication::setPalette(ReadableColours(QApplication::palette()));
  keeping_ = false;
}
