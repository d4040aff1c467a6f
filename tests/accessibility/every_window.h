// Every window of the program, in the states in which a user meets it, for tests that hold for all.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <functional>
#include <ostream>
#include <string>

#include "app/about_box.h"
#include "app/help_window.h"
#include "tests/support/marking_hand.h"
#include "tests/support/row_name.h"
#include "tests/support/running_program.h"

using LookAt = std::function<void(QWidget&)>;

// Opens a window, lets the test look at it while it is open, and closes it.
struct WindowState {
  std::string name;
  std::function<void(const QLocale&, const LookAt&)> visit;
};

inline void PrintTo(const WindowState& state, std::ostream* out) {
  *out << state.name;
}

namespace every_window {

inline void Look(QWidget& window, const LookAt& look) {
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QApplication::processEvents();
  look(window);
}

// A dialog that is open while `open` runs.
inline void LookAtDialog(const std::function<void()>& open, const LookAt& look) {
  bool seen = false;
  QTimer::singleShot(0, qApp, [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    seen = true;
    Look(*dialog, look);
    dialog->done(0);
  });
  open();
  EXPECT_TRUE(seen);
}

inline void MainEmpty(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  Look(program.window, look);
}

inline void MainWithCase(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  program.ConfirmDefaultCase();
  Look(program.window, look);
}

inline void MainWithUnknownPatient(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  program.ConfirmDefaultCase({});
  Look(program.window, look);
}

inline void MainRefused(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  program.ConfirmDefaultCase();
  program.window.Change();
  program.Type("Text9", "-25");
  program.PressOk();
  program.messages.Take();
  Look(program.window, look);
}

inline void CaseForm(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  program.window.New();
  Look(program.Form(), look);
  program.PressCancel();
}

inline void NarrowCaseForm(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  program.window.New();
  program.InForm<QAbstractButton>("Command3")->click();
  Look(program.Form(), look);
  program.PressCancel();
}

inline void CaseFormAfterOkWithoutAWeight(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  program.window.New();
  program.Type("Text1", "abc");
  program.PressOk();
  program.messages.Take();
  Look(program.Form(), look);
  program.messages.Take();
  program.PressCancel();
}

inline void Head(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  program.ConfirmDefaultCase();
  program.window.View3D();
  program.window.HeadView()->findChild<QAbstractButton*>("Check3")->click();
  Look(*program.window.HeadView(), look);
}

inline void LookAtHowSure(RunningProgram& program, const LookAt& look) {
  program.Command("mnuHowSure");
  auto& sure = *program.window.SureView();
  sure.findChild<QLineEdit*>("lizm_u")->setText("0.1");
  sure.findChild<QLineEdit*>("thetaCE_u")->setText("2");
  Look(sure, look);
}

inline void HowSure(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  program.ConfirmDefaultCase();
  LookAtHowSure(program, look);
}

inline void HowSureWithoutAWeight(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  program.ConfirmDefaultCase({});
  LookAtHowSure(program, look);
}

// The longest words beside a box.
inline void HowSureWithWrongEntries(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  program.ConfirmDefaultCase();
  program.Command("mnuHowSure");
  for (const auto& [box, text] : {std::pair("Cizm_u", "abc"), std::pair("Hizm_u", "-1"),
                                  std::pair("magnification", "0"), std::pair("coverage", "120")}) {
    program.window.SureView()->findChild<QLineEdit*>(box)->setText(text);
  }
  LookAtHowSure(program, look);
}

// The longest notice.
inline void HowSureWithRefusedTrials(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  program.ConfirmDefaultCase();
  program.Command("mnuHowSure");
  program.window.SureView()->findChild<QLineEdit*>("magnification_u")->setText("0.5");
  LookAtHowSure(program, look);
}

// Looks at the measuring window on the small phantom after `mark` has been at work.
inline void LookAtMeasuring(const QLocale& locale, const std::function<void(MarkingHand&)>& mark,
                            const LookAt& look) {
  RunningProgram program(locale, {TELMARION_HELP_DIR}, {}, {}, TELMARION_DECODE);
  const QString path = program.Path("phantom.dcm");
  ASSERT_TRUE(WritePhantomDicom(path.toStdString(), FileOf(SmallPhantom())));
  program.window.MeasureOn(path);
  MarkingHand hand(*program.window.Measuring(), SmallPhantom());
  ASSERT_TRUE(hand.WaitForPicture());
  mark(hand);
  Look(*program.window.Measuring(), look);
}

inline void MeasuringEmpty(const QLocale& locale, const LookAt& look) {
  RunningProgram program(locale);
  program.window.Measure();
  Look(*program.window.Measuring(), look);
}

inline void MarkEverything(MarkingHand& hand) {
  hand.MarkBones();
  hand.MarkMidlineAndLine();
  hand.MarkBall();
  hand.Type("rotation", "-1.5");
  hand.Type("bodyWeight", "70");
}

inline void MeasuringMarked(const QLocale& locale, const LookAt& look) {
  LookAtMeasuring(locale, MarkEverything, look);
}

inline void MeasuringWithErrors(const QLocale& locale, const LookAt& look) {
  const auto mark = [](MarkingHand& hand) {
    MarkEverything(hand);
    hand.ShowErrors();
    hand.TypeErrors();
  };
  LookAtMeasuring(locale, mark, look);
}

// The longest words: what is wrong, what is missing and what contradicts the file.
inline void MeasuringWithWrongEntries(const QLocale& locale, const LookAt& look) {
  const auto mark = [](MarkingHand& hand) {
    hand.MarkBones();
    hand.ShowErrors();
    for (const char* box : {"magnification", "rotation", "bodyWeight", "edgeOfCircle_u",
                            "socketEdge_u", "otherPoint_u", "magnification_u", "bodyWeight_u"}) {
      hand.Type(box, "abc");
    }
    hand.SaySide("right");
  };
  LookAtMeasuring(locale, mark, look);
}

inline void Help(int pane, const LookAt& look) {
  RecordingMessageDoor messages;
  const auto window = HelpWindow::Open({TELMARION_HELP_DIR}, messages, nullptr);
  ASSERT_NE(window, nullptr);
  window->ShowTopic("results");
  window->findChild<QTabWidget*>("helpPanes")->setCurrentIndex(pane);
  auto* contents = window->findChild<QAbstractItemView*>("helpContents");
  ASSERT_TRUE(QTest::qWaitFor([&] { return contents->model()->rowCount() > 0; }));
  Look(*window, look);
}

inline void About(const QLocale&, const LookAt& look) {
  Form3 about;
  Look(about, look);
}

inline void ErrorMessage(const QLocale&, const LookAt& look) {
  LookAtDialog([] { DialogMessageDoor().ShowError(nullptr, "numeric value expected", "Error"); },
               look);
}

inline void SaveQuestion(const QLocale&, const LookAt& look) {
  LookAtDialog(
      [] {
        DialogMessageDoor().AskYesNoCancel(nullptr, "Do you want to save data ?", "TELMARION New");
      },
      look);
}

inline void StressesWarning(const QLocale&, const LookAt& look) {
  LookAtDialog(
      [] {
        const QString text = "The stresses are those of the case before. Go on all the same?";
        DialogMessageDoor().WarnYesNo(nullptr, text, "Sorry");
      },
      look);
}

}  // namespace every_window

// All that is ours: the file and the print dialog are Qt's own.
inline std::vector<WindowState> OurWindows() {
  using namespace every_window;
  const auto help = [](int pane) {
    return [pane](const QLocale&, const LookAt& look) { Help(pane, look); };
  };
  return {{"MainEmpty", MainEmpty},
          {"MainWithCase", MainWithCase},
          {"MainWithUnknownPatient", MainWithUnknownPatient},
          {"MainRefused", MainRefused},
          {"CaseForm", CaseForm},
          {"NarrowCaseForm", NarrowCaseForm},
          {"CaseFormAfterOkWithoutAWeight", CaseFormAfterOkWithoutAWeight},
          {"Head", Head},
          {"HowSure", HowSure},
          {"HowSureWithoutAWeight", HowSureWithoutAWeight},
          {"HowSureWithWrongEntries", HowSureWithWrongEntries},
          {"HowSureWithRefusedTrials", HowSureWithRefusedTrials},
          {"MeasuringEmpty", MeasuringEmpty},
          {"MeasuringMarked", MeasuringMarked},
          {"MeasuringWithErrors", MeasuringWithErrors},
          {"MeasuringWithWrongEntries", MeasuringWithWrongEntries},
          {"HelpContents", help(0)},
          {"HelpIndex", help(1)},
          {"HelpSearch", help(2)},
          {"About", About},
          {"ErrorMessage", ErrorMessage},
          {"SaveQuestion", SaveQuestion},
          {"StressesWarning", StressesWarning}};
}

class EveryWindow : public testing::TestWithParam<WindowState> {
 protected:
  static void Visit(const LookAt& look, const QLocale& locale = QLocale::c()) {
    GetParam().visit(locale, look);
  }
};
