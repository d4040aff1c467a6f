// Watches Escape on its way into the windows.
#include "platform/popup_escape.h"

#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <utility>

PopupEscape::PopupEscape() {
  QCoreApplication::instance()->installEventFilter(this);
}

bool PopupEscape::eventFilter(QObject* watched, QEvent* event) {
  const bool asks = event->type() == QEvent::ShortcutOverride;
  if (!watched->isWindowType() || (!asks && event->type() != QEvent::KeyPress)) return false;
  if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) return false;
  const bool open = QApplication::activePopupWidget() != nullptr;
  if (!asks) return std::exchange(popupWasOpen_, false) && !open;
  popupWasOpen_ = open;
  return false;
}
