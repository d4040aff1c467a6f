// What a screen reader learns of a list.
#include "platform/choice_list.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QTest>

namespace {

class ChoiceListTest : public testing::Test {
 protected:
  void SetUp() override {
    list_.addItems({"mm", "cm"});
    list_.show();
  }
  QAccessibleInterface* Thing() { return QAccessible::queryAccessibleInterface(&list_); }
  bool IsMarked(int entry) { return Thing()->child(0)->child(entry)->state().selected; }

  ChoiceList list_{"l/2 unit"};
};

TEST_F(ChoiceListTest, IsNamedByWhatItIsForAndHasItsTextForAValue) {
  EXPECT_EQ(Thing()->role(), QAccessible::ComboBox);
  EXPECT_EQ(Thing()->text(QAccessible::Name), "l/2 unit");
  EXPECT_EQ(Thing()->text(QAccessible::Value), "mm");
  list_.setCurrentText("cm");
  EXPECT_EQ(Thing()->text(QAccessible::Name), "l/2 unit");
  EXPECT_EQ(Thing()->text(QAccessible::Value), "cm");
}

TEST_F(ChoiceListTest, MarksItsEntryThoughItIsFolded) {
  ASSERT_EQ(Thing()->childCount(), 1);
  EXPECT_EQ(Thing()->child(0)->text(QAccessible::Name), "l/2 unit");
  EXPECT_EQ(Thing()->child(0)->childCount(), 2);
  EXPECT_EQ(Thing()->indexOfChild(Thing()->child(0)), 0);
  for (const int chosen : {1, 0}) {
    list_.setCurrentIndex(chosen);
    EXPECT_TRUE(IsMarked(chosen));
    EXPECT_FALSE(IsMarked(1 - chosen));
  }
  list_.setCurrentIndex(-1);
  EXPECT_FALSE(IsMarked(0) || IsMarked(1));
}

TEST_F(ChoiceListTest, UnfoldsAndFoldsByAnAction) {
  EXPECT_TRUE(Thing()->state().collapsed);
  auto* actor = Thing()->actionInterface();
  ASSERT_NE(actor, nullptr);
  const QStringList actions = actor->actionNames();
  ASSERT_FALSE(actions.isEmpty());
  for (const QString& action : actions) {
    actor->doAction(action);
    EXPECT_TRUE(list_.view()->isVisible());
    EXPECT_TRUE(Thing()->state().expanded);
    actor->doAction(action);
    EXPECT_FALSE(list_.view()->isVisible());
  }
}

}  // namespace
