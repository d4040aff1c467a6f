// A list to choose from that tells a screen reader what it is for.
#pragma once

#include <QComboBox>

// Qt gives a list's text as its accessible name, and none while nothing is chosen. Here
// the name is what the list is for; the text is the value, and the entry marked in the
// list.
class ChoiceList : public QComboBox {
  Q_OBJECT
 public:
  explicit ChoiceList(const QString& accessibleName, QWidget* parent = nullptr);
};
