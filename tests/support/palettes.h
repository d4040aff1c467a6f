// The themes that pictures and colours are tested under.
#pragma once

#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

inline QPalette LightPalette() {
  return QStyleFactory::create("Fusion")->standardPalette();
}

inline QPalette DarkPalette() {
  const QColor ground(0x2b, 0x2d, 0x30);
  QPalette dark(ground, ground);
  dark.setColor(QPalette::Base, QColor(0x1e, 0x1f, 0x22));
  return dark;
}
