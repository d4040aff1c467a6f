// Escape folds an open list and does nothing else.
#pragma once

#include <QObject>

// Qt folds the list of a combo box while it still asks whether the key is a shortcut.
// Where the desktop sends keys to the window below the list (Wayland does), the key itself then
// reaches that window, and a dialog takes it for Cancel. While this object lives, it stops such a
// key.
class PopupEscape final : public QObject {
 public:
  // Needs the application, and must not outlive it.
  PopupEscape();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool popupWasOpen_ = false;  // when the key came
};
