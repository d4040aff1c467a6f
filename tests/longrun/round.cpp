// The commands in the order of a day's work.
#include "tests/longrun/round.h"

#include <QDialog>
#include <QMouseEvent>
#include <QPushButton>

#include "platform/raster_view.h"
#include "tests/support/marking_hand.h"

namespace {

using Answer = MessageDoor::Answer;

// Rounds between two closings of the 3D view and the help: people leave them open. Each time that
// they come back Qt keeps some 120 bytes, which would drown what we look for.
constexpr int kClosedEvery = 20;

// As the event loop of the program does between two commands.
void HandleEvents() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void NewCase(RunningProgram& program, int number) {
  program.Command("mnuNew");
  program.Type("Text11", QString::number(1940 + number % 60));
  program.Type("Text10", QString::number(50 + number % 50));
  program.Type("Text1", QStringLiteral("abc"));
  program.PressOk();
  EXPECT_EQ(program.messages.Take().size(), 1) << "no number";
  program.Type("Text1", QStringLiteral("10,4"));
  program.PressOk();
  EXPECT_FALSE(program.FormIsOpen());
  EXPECT_TRUE(program.window.Session().NeedsSaving());
}

void Save(RunningProgram& program) {
  program.files.Answers(program.Path("case.txt"));
  program.Command("mnuSave");
  EXPECT_EQ(program.files.Take().size(), 1);
  EXPECT_FALSE(program.window.Session().NeedsSaving());
}

void Open(RunningProgram& program) {
  program.files.Answers(program.Path("case.txt"));
  program.Command("mnuOpen");
  EXPECT_EQ(program.files.Take().size(), 1);
  program.PressOk();
  EXPECT_FALSE(program.FormIsOpen());
}

// Refused by the model first, then computed.
void Change(RunningProgram& program, int number) {
  program.Command("mnuChange");
  program.Type("Text9", QStringLiteral("-20"));
  program.PressOk();
  EXPECT_EQ(program.messages.Take().size(), 1) << "refused";
  program.Command("mnuChange");
  program.Type("Text9", QString::number(20 + number % 20));
  program.PressOk();
  EXPECT_EQ(program.messages.Take().size(), 0);
  program.Command("mnuChange");
  program.PressCancel();
}

void Drag(RasterView* picture) {
  constexpr QPoint kFrom(100, 100);
  QTest::mousePress(picture, Qt::LeftButton, {}, kFrom);
  for (int step = 1; step <= 5; ++step) {
    const QPointF to = kFrom + QPoint(10, 6) * step;
    QMouseEvent move(QEvent::MouseMove, to, picture->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(picture, &move);
  }
  QTest::mouseRelease(picture, Qt::LeftButton, {}, kFrom + QPoint(50, 30));
}

void LookAtTheHead(RunningProgram& program, int number) {
  program.InWindow<QAbstractButton>("Cmd3D")->click();
  FormGula* view = program.window.HeadView();
  ASSERT_NE(view, nullptr);
  HandleEvents();
  const Qt::Key other = number % 2 == 0 ? Qt::Key_Down : Qt::Key_Up;
  QTest::keyClick(view->findChild<QComboBox*>("Combo2"), other);
  view->findChild<QCheckBox*>("Check3")->click();
  Drag(view->findChild<RasterView*>("picTest"));
  program.files.Answers(program.Path("hip.bmp"));
  view->findChild<QPushButton*>("Command1")->click();
  EXPECT_EQ(program.files.Take().size(), 1);
  if (number % kClosedEvery == 0) view->close();
}

void Print(RunningProgram& program) {
  program.messages.Answers(Answer::Yes);
  program.printers.Answers(program.Path("report.pdf"));
  program.Command("mnuPrint");
  EXPECT_EQ(program.messages.Take().size(), 1) << "the question alone";
  EXPECT_EQ(program.printers.Take().size(), 1);
}

void AskForHelp(RunningProgram& program, int number) {
  program.Command("mnuHelpT");
  HandleEvents();
  program.Command("mnuAbout");
  HandleEvents();
  auto* about = program.InWindow<QDialog>("Form3");
  EXPECT_TRUE(about->isVisible());
  about->close();
  if (number % kClosedEvery != 0) return;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->inherits("HelpWindow")) window->close();
  }
}

}  // namespace

void WorkOneRound(RunningProgram& program, int number) {
  NewCase(program, number);
  Save(program);
  Open(program);
  Change(program, number);
  LookAtTheHead(program, number);
  Print(program);
  AskForHelp(program, number);
  Save(program);
  HandleEvents();
  EXPECT_EQ(program.window.findChild<QDialog*>("Form3"), nullptr);
}

// The marks of the round before were not used: the program asks before it gives them up.
void MarkARadiograph(RunningProgram& program, const QString& path) {
  Measuring::MeasuringWindow* window = program.window.Measuring();
  const bool asks = window != nullptr && !window->WorkToKeep().isEmpty();
  if (asks) program.messages.Answers(Answer::Yes);
  program.window.MeasureOn(path);
  EXPECT_EQ(program.messages.Take().size(), asks ? 1 : 0);
  window = program.window.Measuring();
  MarkingHand hand(*window, SmallPhantom());
  ASSERT_TRUE(hand.WaitForPicture());
  hand.DrawHead(*SmallPhantom().truth.left.head);
  hand.Type("magnification", "1.15");
  EXPECT_TRUE(window->Found().HasMeasurement());
  window->close();
  HandleEvents();
}
