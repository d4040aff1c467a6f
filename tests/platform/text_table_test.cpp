// A table of texts: what it shows, which row is chosen, how large it is.
#include "platform/text_table.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

namespace {

class Table : public testing::Test {
 protected:
  TextTable table_{"Results", {{"Result", "a name", false}, {"Value", "12.34"}}};
};

TEST_F(Table, ShowsTextsAndTitles) {
  table_.Show({{"one", "1.5"}, {"two", "2.5"}});
  EXPECT_EQ(table_.rowCount(), 2);
  EXPECT_EQ(table_.item(1, 1)->text(), "2.5");
  EXPECT_EQ(table_.horizontalHeaderItem(1)->text(), "Value");
  table_.SetTitle(1, "Mean");
  EXPECT_EQ(table_.horizontalHeaderItem(1)->text(), "Mean");
}

TEST_F(Table, NumbersStandAtTheRight) {
  table_.Show({{"one", "1.5"}});
  EXPECT_TRUE(table_.item(0, 0)->textAlignment() & Qt::AlignLeft);
  EXPECT_TRUE(table_.item(0, 1)->textAlignment() & Qt::AlignRight);
  EXPECT_TRUE(table_.horizontalHeaderItem(1)->textAlignment() & Qt::AlignRight);
}

TEST_F(Table, KeepsTheChosenRowAsFarAsThereIsOne) {
  table_.Show({{"one"}, {"two"}, {"three"}});
  table_.Choose(2);
  QSignalSpy chosen(&table_, &TextTable::RowChosen);
  table_.Show({{"1"}, {"2"}, {"3"}});
  EXPECT_EQ(table_.ChosenRow(), 2);
  EXPECT_EQ(chosen.size(), 0);
  table_.Show({{"1"}, {"2"}});
  EXPECT_EQ(table_.ChosenRow(), 1);
  ASSERT_EQ(chosen.size(), 1);
  EXPECT_EQ(chosen.first().first().toInt(), 1);
}

TEST_F(Table, ArrowsChooseAndNothingCanBeTyped) {
  table_.Show({{"one"}, {"two"}});
  table_.Choose(0);
  QSignalSpy chosen(&table_, &TextTable::RowChosen);
  QTest::keyClick(&table_, Qt::Key_Down);
  EXPECT_EQ(table_.ChosenRow(), 1);
  EXPECT_EQ(chosen.size(), 1);
  QTest::keyClicks(&table_, "x");
  EXPECT_EQ(table_.item(1, 0)->text(), "two");
}

TEST_F(Table, EmptyCellsAreSaid) {
  table_.Show({{"one", ""}});
  EXPECT_EQ(table_.item(0, 1)->data(Qt::AccessibleTextRole).toString(), "none");
  table_.Show({{"one", "5"}});
  EXPECT_TRUE(table_.item(0, 1)->data(Qt::AccessibleTextRole).isNull());
}

TEST_F(Table, IsLargeEnoughForAllItsTexts) {
  table_.Show({{"one", "1"}, {"two", "2"}});
  table_.resize(table_.sizeHint());
  table_.show();
  const QRect last = table_.visualItemRect(table_.item(1, 1));
  EXPECT_TRUE(table_.viewport()->rect().contains(last));
  table_.Show({{"one", "1"}, {"two", "a text that is a good deal longer"}});
  EXPECT_GE(table_.columnWidth(1),
            table_.fontMetrics().horizontalAdvance("a text that is a good deal longer"));
}

}  // namespace
