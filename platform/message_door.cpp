// The toolkit's message boxes, the only place that uses them.
#include "platform/message_door.h"

#include <QMessageBox>

namespace {

QMessageBox::StandardButton Show(QWidget* parent, QMessageBox::Icon icon, const QString& text,
                                 const QString& title, QMessageBox::StandardButtons buttons,
                                 QMessageBox::StandardButton escape) {
  QMessageBox box(icon, title, text, buttons, parent);
  box.setTextFormat(Qt::PlainText);  // a file name may hold what looks like markup
  box.setEscapeButton(escape);
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

}  // namespace

void DialogMessageDoor::ShowError(QWidget* parent, const QString& text, const QString& title) {
  Show(parent, QMessageBox::Warning, text, title, QMessageBox::Ok, QMessageBox::Ok);
}

MessageDoor::Answer DialogMessageDoor::AskYesNo(QWidget* parent, const QString& text,
                                                const QString& title) {
  const auto button = Show(parent, QMessageBox::Question, text, title,
                           QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
  return button == QMessageBox::Yes ? Answer::Yes : Answer::No;
}

MessageDoor::Answer DialogMessageDoor::AskYesNoCancel(QWidget* parent, const QString& text,
                                                      const QString& title) {
  const auto button =
      Show(parent, QMessageBox::Question, text, title,
           QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Cancel);
  if (button == QMessageBox::Yes) return Answer::Yes;
  return button == QMessageBox::No ? Answer::No : Answer::Cancel;
}
