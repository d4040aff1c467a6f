// The program with its window "How sure is this case", as a person meets it.
#pragma once

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QStatusBar>
#include <QTest>
#include <optional>

#include "case/number_text.h"
#include "platform/share_bars.h"
#include "platform/text_table.h"
#include "tests/support/running_program.h"

class HowSureProgram : public RunningProgram {
 public:
  explicit HowSureProgram(const QLocale& locale = QLocale::c(), const QString& settings = {})
      : RunningProgram(locale, {TELMARION_HELP_DIR}, {}, settings) {}

  // The default case, with the window open on it.
  void OpenOnDefaultCase(const QString& weight = QStringLiteral("70")) {
    ConfirmDefaultCase(weight);
    Command("mnuHowSure");
  }

  UncertaintyWindow& Sure() { return *window.SureView(); }

  template <class Widget>
  Widget* InSure(const char* name) {
    auto* widget = Sure().findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }

  // By the keyboard, as everything in a test.
  void Enter(const char* box, const QString& text) {
    auto* edit = InSure<QLineEdit>(box);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
  }

  // The table: rows by results, columns as below.
  enum Column { kCaption, kValue, kU, kInterval };
  TextTable& Table() { return *InSure<TextTable>("tblResults"); }
  QString Cell(Sila::Result result, Column column) {
    return Table().item(static_cast<int>(Sila::IndexOf(result)), column)->text();
  }
  double Number(Sila::Result result, Column column) {
    return Vse::ReadNumber(Cell(result, column).toStdString()).value();
  }
  double Low(Sila::Result result) { return End(result, 0); }
  double High(Sila::Result result) { return End(result, 1); }

  QString Words(const char* label) { return InSure<QLabel>(label)->text(); }

  // The part of a source in the variance of the chosen result.
  std::optional<double> Share(const QString& source) {
    for (const ShareBar& bar : InSure<ShareBars>("picBudget")->Bars()) {
      if (bar.label == source) return bar.share;
    }
    ADD_FAILURE() << "no bar for " << source.toStdString();
    return std::nullopt;
  }

  // Through the form, as a user changes an entry.
  void ChangeEntry(const char* box, const QString& text) {
    window.Change();
    Type(box, text);
    PressOk();
  }

 private:
  double End(Sila::Result result, int which) {
    const QStringList ends = Cell(result, kInterval).split(QStringLiteral(" to "));
    EXPECT_EQ(ends.size(), 2) << Cell(result, kInterval).toStdString();
    return Vse::ReadNumber(ends.value(which).toStdString()).value();
  }
};
