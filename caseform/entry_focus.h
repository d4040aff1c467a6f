// Tells which entry box a person is in. A message, a menu or another window on top does not count
// as leaving: the person comes back to the same box.
#pragma once

#include <QHash>
#include <QObject>

class QWidget;

class EntryFocus : public QObject {
  Q_OBJECT

 public:
  explicit EntryFocus(QObject* parent) : QObject(parent) {}

  // `box` is a QLineEdit or a QPlainTextEdit. Entering it selects its whole text, a click included;
  // dragging the mouse selects what it passes over.
  void Watch(QWidget* box);

  // No box is in use any more; emits Left for the last one.
  void Reset() { Leave(current_); }

 signals:
  void Entered(QWidget* box);
  // Emitted from inside the focus event: listeners must not open a window.
  void Left(QWidget* box);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Enter(QWidget* box, Qt::FocusReason reason);
  void Leave(QWidget* box);
  void FinishClick(QWidget* box);

  QHash<QObject*, QWidget*> boxes_;  // the box that a widget belongs to
  QWidget* current_ = nullptr;       // the box that a person is in; null when there is none
  QWidget* clicked_ = nullptr;  // entered by a press of the mouse that has not been released yet
};
