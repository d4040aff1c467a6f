// Escape while a list is unfolded, as it comes where the window below the list has the keys.
#include "platform/popup_escape.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QMenu>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

namespace {

class EscapeInADialog : public testing::Test {
 protected:
  EscapeInADialog() : list_(new QComboBox) {
    list_->addItems({"mm", "cm"});
    (new QVBoxLayout(&dialog_))->addWidget(list_);
    dialog_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog_));
  }
  bool Unfolded() const { return list_->view()->isVisible(); }
  void PressEscape() { QTest::keyClick(dialog_.windowHandle(), Qt::Key_Escape); }

  PopupEscape popupEscape_;
  QDialog dialog_;
  QComboBox* list_;
};

TEST_F(EscapeInADialog, FoldsTheListAndLeavesTheDialogOpen) {
  list_->showPopup();
  ASSERT_TRUE(Unfolded());
  PressEscape();
  EXPECT_FALSE(Unfolded());
  EXPECT_TRUE(dialog_.isVisible());
}

TEST_F(EscapeInADialog, CancelsItOnceTheListIsFolded) {
  list_->showPopup();
  PressEscape();
  PressEscape();
  EXPECT_FALSE(dialog_.isVisible());
}

TEST_F(EscapeInADialog, ClosesAMenuAlone) {
  QMenu menu(&dialog_);
  menu.addAction("Copy");
  menu.popup(dialog_.mapToGlobal(QPoint(5, 5)));
  ASSERT_TRUE(menu.isVisible());
  PressEscape();
  EXPECT_FALSE(menu.isVisible());
  EXPECT_TRUE(dialog_.isVisible());
}

}  // namespace
