// Qt's message boxes; the only place that uses them.
#include "platform/message_door.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QGridLayout>
#include <QKeyEvent>
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

QMessageBox::StandardButton Run(QMessageBox& box) {
  box.setTextFormat(Qt::PlainText);  // a file name may hold what looks like markup
  LeaveRoomForTitle(box);
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

QMessageBox::StandardButton Show(QWidget* parent, QMessageBox::Icon icon, const QString& text,
                                 const QString& title, QMessageBox::StandardButtons buttons,
                                 QMessageBox::StandardButton escape) {
  QMessageBox box(icon, title, text, buttons, parent);
  box.setEscapeButton(escape);
  return Run(box);
}

// Without a third way out: a slip of the finger is no answer. Qt would take it for No.
class YesNoBox final : public QMessageBox {
 public:
  YesNoBox(Icon icon, const QString& title, const QString& text, QWidget* parent)
      : QMessageBox(icon, title, text, Yes | No, parent) {}
  void reject() override {}

 protected:
  void closeEvent(QCloseEvent* event) override { event->ignore(); }
  void keyPressEvent(QKeyEvent* event) override {
    if (!event->matches(QKeySequence::Cancel)) QMessageBox::keyPressEvent(event);
  }
};

// If the system ends the program, the box closes without an answer, which counts as No.
MessageDoor::Answer AnswerOf(QMessageBox& box) {
  return Run(box) == QMessageBox::Yes ? MessageDoor::Answer::Yes : MessageDoor::Answer::No;
}

}  // namespace

void DialogMessageDoor::ShowError(QWidget* parent, const QString& text, const QString& title) {
  Show(parent, QMessageBox::Warning, text, title, QMessageBox::Ok, QMessageBox::Ok);
}

MessageDoor::Answer DialogMessageDoor::AskYesNo(QWidget* parent, const QString& text,
                                                const QString& title) {
  YesNoBox box(QMessageBox::Question, title, text, parent);
  return AnswerOf(box);
}

MessageDoor::Answer DialogMessageDoor::WarnYesNo(QWidget* parent, const QString& text,
                                                 const QString& title) {
  YesNoBox box(QMessageBox::Warning, title, text, parent);
  box.setDefaultButton(QMessageBox::No);
  return AnswerOf(box);
}

MessageDoor::Answer DialogMessageDoor::AskYesNoCancel(QWidget* parent, const QString& text,
                                                      const QString& title) {
  const auto button =
      Show(parent, QMessageBox::Question, text, title,
           QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Cancel);
  if (button == QMessageBox::Yes) return Answer::Yes;
  return button == QMessageBox::No ? Answer::No : Answer::Cancel;
}
