// The panels as they are seen: captions, units, boxes that show and are not typed in.
#include "app/panels.h"

#include <gtest/gtest.h>

#include <QGroupBox>
#include <vector>

#include "tests/support/row_name.h"
#include "tests/support/running_program.h"

namespace {

struct PanelRow {
  const char* name;
  const char* frame;
  const char* box;
  QString caption;
  QString unit;  // empty where there is none
};

// With every box filled in.
void ConfirmFullCase(RunningProgram& program) {
  program.window.New();
  program.Type("Text8", "Novak");
  program.Type("Text11", "1956");
  program.Type("Text10", "70");
  program.InForm<QPlainTextEdit>("Text12")->setPlainText("as before");
  program.Choose("Option2");
  program.Choose("Option4");
  program.PressOk();
  ASSERT_FALSE(program.FormIsOpen());
}

// The labels of a panel that stand on the line of this box.
std::vector<const QLabel*> LabelsBeside(const QWidget& frame, const QWidget& box) {
  std::vector<const QLabel*> beside;
  const int line = box.geometry().top() + box.fontMetrics().height() / 2;
  for (const QLabel* label : frame.findChildren<QLabel*>()) {
    const QRect area = label->geometry();
    if (area.top() <= line && line <= area.bottom() && label->isVisible()) beside.push_back(label);
  }
  return beside;
}

class PanelTable : public testing::TestWithParam<PanelRow> {};

TEST_P(PanelTable, ShowsCaptionBeforeAndUnitBehindTheBox) {
  const PanelRow& row = GetParam();
  RunningProgram program;
  ConfirmFullCase(program);
  const auto* frame = program.InWindow<QGroupBox>(row.frame);
  const auto* box = program.InWindow<QWidget>(row.box);
  ASSERT_TRUE(frame->isAncestorOf(box));
  QString before;
  QString behind;
  for (const QLabel* label : LabelsBeside(*frame, *box)) {
    (label->geometry().right() < box->geometry().left() ? before : behind) += label->text();
  }
  EXPECT_EQ(before, row.caption);
  EXPECT_EQ(behind, row.unit);
}

TEST_P(PanelTable, LetsNothingBeTyped) {
  RunningProgram program;
  ConfirmFullCase(program);
  auto* box = program.InWindow<QWidget>(GetParam().box);
  ASSERT_TRUE(box->isEnabled());
  const auto text = [box] {
    const auto* line = qobject_cast<const QLineEdit*>(box);
    return line != nullptr ? line->text() : qobject_cast<const QPlainTextEdit*>(box)->toPlainText();
  };
  const QString before = text();
  EXPECT_FALSE(before.isEmpty());
  box->setFocus();
  QTest::keyClicks(box, "7x");
  QTest::keyClick(box, Qt::Key_Backspace);
  QTest::keyClick(box, Qt::Key_Delete);
  EXPECT_EQ(text(), before);
}

INSTANTIATE_TEST_SUITE_P(
    Table, PanelTable,
    testing::Values(PanelRow{"Name", "framePatient", "txtName", "Name", ""},
                    PanelRow{"Sex", "framePatient", "txtSex", "Sex", ""},
                    PanelRow{"Hip", "framePatient", "txtHip", "Hip", ""},
                    PanelRow{"Birth", "framePatient", "txtDateOfBirth", "Date of birth", ""},
                    PanelRow{"Weight", "framePatient", "txtBodyWeight", "Weight", "kg"},
                    PanelRow{"Comments", "framePatient", "txtComments", "Comments", ""},
                    PanelRow{"RWb", "frameResults", "txtRWb", "R/Wb", ""},
                    PanelRow{"ThetaR", "frameResults", "txtThetaR", "Theta-R", "°"},
                    PanelRow{"ThetaPol", "frameResults", "txtThetaPol", "Theta-pol", "°"},
                    PanelRow{"PmaxWb", "frameResults", "txtPmaxWb", "Pmax/Wb", "m^-2"},
                    PanelRow{"Pmax", "frameResults", "txtPmax", "Pmax", "Pa"}),
    RowName());

TEST(Panels, AreTitled) {
  RunningProgram program;
  EXPECT_EQ(program.InWindow<QGroupBox>("framePatient")->title(), "Patient");
  EXPECT_EQ(program.InWindow<QGroupBox>("frameResults")->title(), "Results");
}

}  // namespace
