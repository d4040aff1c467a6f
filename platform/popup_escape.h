// Escape folds an open list and does nothing more.
#pragma once

#include <QObject>

// The toolkit folds the list of a combo box while it still asks whether the key is a shortcut.
// Where the desktop gives the keys to the window below the list (Wayland does), the key itself then
// reaches that window, and a dialog takes it for Cancel. While it lives, this one keeps such a key
// from it.
class PopupEscape final : public QObject {
 public:
  // Needs the application, and must not outlive it.
  PopupEscape();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool popupWasOpen_ = false;  // when the key came
};
