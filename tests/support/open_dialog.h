// Reaches into a dialog that runs an event loop of its own.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTimer>
#include <utility>

// Calls `look` with the dialog of this kind that is open once events are handled; it must close it.
template <class Dialog, class Look>
void WhenOpen(Look look) {
  QTimer::singleShot(0, [look = std::move(look)] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    look(*dialog);
  });
}
