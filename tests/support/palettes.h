// The themes that pictures and colours are tested under.
#pragma once

#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <memory>

#include "platform/readable_palette.h"

inline QPalette LightPalette() {
  const std::unique_ptr<QStyle> style(QStyleFactory::create("Fusion"));
  return style->standardPalette();
}

inline QPalette DarkPalette() {
  const QColor ground(0x2b, 0x2d, 0x30);
  QPalette dark(ground, ground);
  dark.setColor(QPalette::Base, QColor(0x1e, 0x1f, 0x22));
  return dark;
}

// Qt's palette in these colours, as the program takes it.
inline void UseTheme(const QPalette& desktop) {
  QApplication::setPalette(desktop);
  QApplication::setPalette(ReadableColours(QApplication::palette()).resolve(desktop));
}
