// The heading over a group of controls.
#pragma once

#include <QFont>
#include <QLabel>
#include <QString>

inline QLabel* Heading(const QString& text) {
  auto* label = new QLabel(text);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}
