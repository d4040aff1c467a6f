// The toolkit's message boxes, the only place that uses them.
#include "platform/message_door.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QMessageBox>
#include <QSpacerItem>

namespace {

// Wide enough for its title beside the icon and the buttons of the frame: a short question under a
// long title would have it cut off.
void LeaveRoomForTitle(QMessageBox& box) {
  const QFontMetrics metrics(box.font());
  const int width = metrics.horizontalAdvance(box.windowTitle()) + 10 * metrics.height();
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  if (grid == nullptr) return;
  grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

QMessageBox::StandardButton Show(QWidget* parent, QMessageBox::Icon icon, const QString& text,
                                 const QString& title, QMessageBox::StandardButtons buttons,
                                 QMessageBox::StandardButton escape) {
  QMessageBox box(icon, title, text, buttons, parent);
  box.setTextFormat(Qt::PlainText);  // a file name may hold what looks like markup
  box.setEscapeButton(escape);
  LeaveRoomForTitle(box);
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
