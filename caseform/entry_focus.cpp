// Follows the focus through the entry boxes.
#include "caseform/entry_focus.h"

#include <QEvent>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace {

void SelectAll(QWidget* box) {
  if (auto* line = qobject_cast<QLineEdit*>(box)) line->selectAll();
  if (auto* lines = qobject_cast<QPlainTextEdit*>(box)) lines->selectAll();
}

bool HasSelection(const QWidget* box) {
  if (const auto* line = qobject_cast<const QLineEdit*>(box)) return line->hasSelectedText();
  const auto* lines = qobject_cast<const QPlainTextEdit*>(box);
  return lines != nullptr && lines->textCursor().hasSelection();
}

// A window or a menu comes to the front; the box gets the focus back afterwards.
bool IsInterruption(Qt::FocusReason reason) {
  return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

}  // namespace

void EntryFocus::Watch(QWidget* box) {
  boxes_.insert(box, box);
  box->installEventFilter(this);
  if (const auto* lines = qobject_cast<QPlainTextEdit*>(box)) {
    boxes_.insert(lines->viewport(), box);  // gets the mouse
    lines->viewport()->installEventFilter(this);
  }
}

bool EntryFocus::eventFilter(QObject* watched, QEvent* event) {
  QWidget* box = boxes_.value(watched);
  if (event->type() == QEvent::FocusIn && watched == box) {
    Enter(box, static_cast<QFocusEvent*>(event)->reason());
  } else if (event->type() == QEvent::FocusOut && watched == box) {
    if (!IsInterruption(static_cast<QFocusEvent*>(event)->reason()) && box == current_) Leave(box);
  } else if (event->type() == QEvent::MouseButtonRelease) {
    FinishClick(box);
  }
  return QObject::eventFilter(watched, event);
}

void EntryFocus::Enter(QWidget* box, Qt::FocusReason reason) {
  if (box == current_) return;
  Leave(current_);  // the focus may have been moved on while another window was in front
  current_ = box;
  clicked_ = reason == Qt::MouseFocusReason ? box : nullptr;
  if (clicked_ == nullptr) SelectAll(box);
  emit Entered(box);
}

void EntryFocus::Leave(QWidget* box) {
  current_ = nullptr;
  clicked_ = nullptr;
  if (box != nullptr) emit Left(box);
}

// Not at the press, which puts the cursor where the mouse is, and on selected text begins to drag
// it.
void EntryFocus::FinishClick(QWidget* box) {
  if (box == clicked_ && !HasSelection(box)) SelectAll(box);
  clicked_ = nullptr;
}
