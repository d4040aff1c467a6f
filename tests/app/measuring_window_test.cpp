// The whole way in the windows: a made-up radiograph, marked by mouse, measured, and handed over to
// the case form; and what must not be lost on it.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include "case/number_text.h"
#include "measuring/measured_page.h"
#include "measuring/measured_texts.h"
#include "tests/support/marking_hand.h"
#include "tests/support/pdf_pages.h"
#include "tests/support/running_program.h"

namespace {

using namespace Measuring;
using Answer = MessageDoor::Answer;
using Landmarks::PixelPlace;

Phantom::Setup MakeSetup() {
  Phantom::Setup setup;
  setup.width = 1200;
  setup.height = 1000;
  setup.spacing = {0.36, 0.36};
  return setup;
}

// Rendered once: it takes a second.
const Phantom::Picture& Rendered() {
  static const Phantom::Picture picture = Phantom::Render({}, MakeSetup());
  return picture;
}

class MeasuringProgram {
 public:
  explicit MeasuringProgram(const QString& folder)
      : program(QLocale::c(), {TELMARION_HELP_DIR}, folder, folder + "/settings.json",
                TELMARION_DECODE) {}

  void Open(const QString& path) {
    program.window.MeasureOn(path);
    Wait();
  }
  void Wait() { ASSERT_TRUE(Hand().WaitForPicture()); }
  MeasuringWindow& Window() { return *program.window.Measuring(); }
  template <class Widget>
  Widget* In(const char* name) {
    auto* widget = Window().findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  MarkingHand Hand() { return {Window(), Rendered()}; }
  void Click(PixelPlace place) { Hand().Click(place); }
  void Drag(PixelPlace from, PixelPlace to) { Hand().Drag(from, to); }
  void DrawHead(const Landmarks::Circle& head) { Hand().DrawHead(head); }
  void Type(const char* box, const QString& text) { Hand().Type(box, text); }
  // Every mark by mouse, in the order in which the window asks for them.
  void MarkAll() {
    Hand().MarkBones();
    Type("magnification", QString::number(Rendered().truth.magnification, 'g', 6));
    Type("bodyWeight", "70");
  }
  double Number(const QString& text) { return Vse::ReadNumber(text.toStdString()).value_or(-1e9); }

  RunningProgram program;
};

class Measure : public testing::Test {
 protected:
  Measure() {
    path = folder.filePath("phantom.dcm");
    EXPECT_TRUE(WritePhantomDicom(path.toStdString(), FileOf(Rendered())));
  }
  QTemporaryDir folder;
  QString path;
};

TEST_F(Measure, GoesFromTheFileToTheResultsWithinTheirInterval) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  const Findings& found = measuring.Window().Found();
  for (const MeasurementFinding& own : found.measurements) EXPECT_EQ(own.missing, "");
  ASSERT_TRUE(found.record);
  for (const char* box : {"edgeOfCircle_u", "socketEdge_u", "otherPoint_u"}) {
    measuring.Type(box, "1");
  }
  ASSERT_TRUE(found.sure);

  const Phantom::Anatomy anatomy;
  Sila::HipInputs truth;
  truth.lizm = {anatomy.halfInterhip / 10.0};
  truth.xizm = {anatomy.trochanterX / 10.0};
  truth.zizm = {anatomy.trochanterZ / 10.0};
  truth.Cizm = {anatomy.crestWidth / 10.0};
  truth.Hizm = {anatomy.crestHeight / 10.0};
  truth.thetaCE = {anatomy.centreEdge};
  truth.headRadius = {anatomy.headRadius / 1000.0};
  truth.bodyWeight = Sila::Kilograms{70.0};
  Sila::HipState state;
  ASSERT_EQ(ComputeHip(truth, state), Sila::HipOutcome::Ok);
  for (const Sila::ResultRow& row : Sila::kResults) {
    const auto& interval = found.sure->results[Sila::IndexOf(row.id)]->spread.interval;
    ASSERT_TRUE(interval) << row.key;
    EXPECT_LT(interval->low, row.value(state.results)) << row.key;
    EXPECT_GT(interval->high, row.value(state.results)) << row.key;
  }
}

TEST_F(Measure, HandsOverWhatTheFormThenComputesToTheDigit) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  const std::vector<Print::UncertainRow> shown =
      ResultRows(measuring.Window().Found(), QLocale::c());
  measuring.In<QPushButton>("cmdUse")->click();
  RunningProgram& program = measuring.program;
  ASSERT_TRUE(program.FormIsOpen());
  const CaseEntries entries = program.Form().Entries();
  EXPECT_EQ(entries.surname, "Doe");
  EXPECT_EQ(entries.firstName, "Jane");
  EXPECT_EQ(entries.dateOfBirth, "1956-11-15");
  EXPECT_EQ(entries.sex, Sex::Female);
  EXPECT_EQ(entries.hip, HipSide::Left);
  EXPECT_EQ(entries.bodyWeight, "70");
  program.PressOk();
  ASSERT_FALSE(program.FormIsOpen());
  const CaseRecord& record = program.window.Session().Record();
  for (const Print::UncertainRow& row : shown) {
    EXPECT_EQ(Vse::ResultTextsOf(record, QLocale::c())[row.id], row.texts.estimate)
        << row.caption.toStdString();
  }
  EXPECT_EQ(shown.size(), Sila::kResultCount);
}

// From the middle of the view to the place, in whole pixels, and Enter.
TEST_F(Measure, GoesByKeysAloneFromThePictureToTheForm) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  RadiographView& view = measuring.Window().View();
  const auto walk = [&](int key, int back, double way) {
    const int pixels = static_cast<int>(std::lround(std::abs(way)));
    for (int i = 0; i < pixels / 20; ++i) {
      QTest::keyClick(&view, Qt::Key(way > 0.0 ? key : back), Qt::ControlModifier);
    }
    for (int i = 0; i < pixels % 20; ++i) QTest::keyClick(&view, Qt::Key(way > 0.0 ? key : back));
  };
  QTest::keyClick(&view, Qt::Key_Right);  // the cross-hair appears
  const Landmarks::Circle& head = *Rendered().truth.left.head;
  for (const PixelPlace& place : EdgePoints(head, MakeSetup().spacing, 3)) {
    walk(Qt::Key_Right, Qt::Key_Left, place.column - view.CrossHair()->column);
    walk(Qt::Key_Down, Qt::Key_Up, place.row - view.CrossHair()->row);
    QTest::keyClick(&view, Qt::Key_Return);
  }
  measuring.Type("magnification", QString::number(Rendered().truth.magnification, 'g', 6));
  QTest::keyClick(measuring.In<QLineEdit>("magnification"), Qt::Key_Return, Qt::ControlModifier);
  ASSERT_TRUE(measuring.program.FormIsOpen());
  const CaseEntries entries = measuring.program.Form().Entries();
  EXPECT_NEAR(measuring.Number(entries[Sila::Measurement::HeadRadius].text), 2.4, 0.03);
}

TEST_F(Measure, TellsOfNoPixelThatThePictureDoesNotHave) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  RadiographView& view = measuring.Window().View();
  const auto* told = measuring.In<QLabel>("lblPointer");
  for (int i = 0; i < 40; ++i) QTest::keyClick(&view, Qt::Key_Right, Qt::ControlModifier);
  for (int i = 0; i < 40; ++i) QTest::keyClick(&view, Qt::Key_Down, Qt::ControlModifier);
  EXPECT_TRUE(told->text().startsWith("1199, 999: ")) << told->text().toStdString();
  for (int i = 0; i < 80; ++i) QTest::keyClick(&view, Qt::Key_Left, Qt::ControlModifier);
  for (int i = 0; i < 80; ++i) QTest::keyClick(&view, Qt::Key_Up, Qt::ControlModifier);
  EXPECT_TRUE(told->text().startsWith("0, 0: ")) << told->text().toStdString();
}

TEST_F(Measure, EscapeGivesUpReadingAndLeavesTheWindowAsItWas) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  const QString title = measuring.Window().windowTitle();
  const QString other = folder.filePath("other.dcm");
  ASSERT_TRUE(QFile::copy(path, other));
  measuring.Window().OpenPicture(other);
  ASSERT_TRUE(measuring.Window().IsReading());
  ASSERT_TRUE(QTest::qWaitForWindowActive(&measuring.Window()));
  QTest::keyClick(&measuring.Window().View(), Qt::Key_Escape);
  EXPECT_FALSE(measuring.Window().IsReading());
  QCoreApplication::processEvents();
  EXPECT_EQ(measuring.Window().windowTitle(), title);
}

TEST_F(Measure, LeavesBoxesEmptyForWhatWasNotMarked) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.DrawHead(*Rendered().truth.left.head);
  measuring.Type("magnification", "1.15");
  measuring.In<QPushButton>("cmdUse")->click();
  const CaseEntries entries = measuring.program.Form().Entries();
  EXPECT_NE(entries[Sila::Measurement::HeadRadius].text, "");
  EXPECT_EQ(entries[Sila::Measurement::Lizm].text, "");
}

TEST_F(Measure, TakesBackStepByStepAndAgain) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  const Draft whole = measuring.Window().Marked();
  auto* undo = measuring.In<QAction>("mnuUndo");
  int steps = 0;
  while (undo->isEnabled()) {
    undo->trigger();
    ++steps;
  }
  EXPECT_EQ(steps, 8);  // two heads, four points, two boxes
  EXPECT_EQ(measuring.Window().Marked(), Draft{});
  EXPECT_EQ(measuring.In<QLineEdit>("magnification")->text(), "");
  while (measuring.In<QAction>("mnuRedo")->isEnabled()) {
    measuring.In<QAction>("mnuRedo")->trigger();
  }
  EXPECT_EQ(measuring.Window().Marked(), whole);
}

TEST_F(Measure, ADragIsOneStep) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.In<TextTable>("tblMarks")->Choose(static_cast<int>(IndexOf(MarkKind::CrestTop)));
  measuring.Click({300.0, 200.0});
  const Draft before = measuring.Window().Marked();
  measuring.Drag(before[MarkKind::CrestTop][0], {380.0, 260.0});
  EXPECT_NE(measuring.Window().Marked(), before);
  measuring.In<QAction>("mnuUndo")->trigger();
  EXPECT_EQ(measuring.Window().Marked(), before);
}

TEST_F(Measure, AClickOnFreeGroundDoesNotMoveAMarkThatIsSet) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  const Draft whole = measuring.Window().Marked();
  measuring.Click({600.0, 900.0});
  EXPECT_EQ(measuring.Window().Marked(), whole);
}

TEST_F(Measure, AFileThatCannotBeReadLeavesTheWindowAsItWas) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.DrawHead(*Rendered().truth.left.head);
  const Draft before = measuring.Window().Marked();
  measuring.program.messages.Answers(Answer::Yes);  // the marks may go
  measuring.Open(folder.filePath("gone.dcm"));
  const QList<Message> said = measuring.program.messages.Take();
  ASSERT_EQ(said.size(), 2);
  EXPECT_EQ(said[1].title, "Error");
  EXPECT_TRUE(said[1].text.startsWith("gone.dcm: The file cannot be read"))
      << said[1].text.toStdString();
  EXPECT_EQ(measuring.Window().Marked(), before);
  EXPECT_NE(measuring.Window().Found().measurements[6].missing, "needs mark 1");
}

TEST_F(Measure, ADecoderThatIsMissingIsSaid) {
  RunningProgram program;
  program.window.MeasureOn(path);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !program.window.Measuring()->IsReading(); }));
  EXPECT_EQ(program.messages.Take().size(), 1);
  EXPECT_FALSE(program.window.Measuring()->Found().HasMeasurement());
}

TEST_F(Measure, AsksBeforeMarksAreGivenUpForAnotherPicture) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.DrawHead(*Rendered().truth.left.head);
  const Draft before = measuring.Window().Marked();
  measuring.program.messages.Answers(Answer::No);
  measuring.Open(path);
  EXPECT_EQ(measuring.program.messages.Take().size(), 1);
  EXPECT_EQ(measuring.Window().Marked(), before);
  measuring.program.messages.Answers(Answer::Yes);
  measuring.Open(path);
  EXPECT_EQ(measuring.program.messages.Take().size(), 1);
  EXPECT_EQ(measuring.Window().Marked(), Draft{});
}

TEST_F(Measure, KeepsMarksForTheNextStart) {
  Draft marked;
  {
    MeasuringProgram measuring(folder.path());
    measuring.Open(path);
    measuring.MarkAll();
    marked = measuring.Window().Marked();
    measuring.program.window.Exit();
  }
  MeasuringProgram next(folder.path());
  next.program.messages.Answers(Answer::Yes);
  next.program.window.OfferKeptWork();
  EXPECT_TRUE(next.program.messages.Take().value(0).text.startsWith("Marks on a radiograph"));
  next.Wait();
  EXPECT_EQ(next.Window().Marked(), marked);
  EXPECT_TRUE(next.Window().Found().record);
}

TEST_F(Measure, KeepsMarksWhosePictureIsGone) {
  {
    MeasuringProgram measuring(folder.path());
    measuring.Open(path);
    measuring.MarkAll();
    measuring.program.window.EndForSystem();
  }
  ASSERT_TRUE(QFile::rename(path, path + ".away"));
  {
    MeasuringProgram next(folder.path());
    next.program.messages.Answers(Answer::Yes);
    next.program.window.OfferKeptWork();
    next.Wait();
    EXPECT_EQ(next.program.messages.Take().size(), 2);
    next.program.window.Exit();
  }
  ASSERT_TRUE(QFile::rename(path + ".away", path));
  MeasuringProgram last(folder.path());
  last.program.messages.Answers(Answer::Yes);
  last.program.window.OfferKeptWork();
  last.Wait();
  last.program.messages.Take();
  EXPECT_TRUE(last.Window().Found().record);
}

TEST_F(Measure, KeepsNothingOfMarksThatWereUsed) {
  {
    MeasuringProgram measuring(folder.path());
    measuring.Open(path);
    measuring.MarkAll();
    measuring.In<QPushButton>("cmdUse")->click();
    measuring.program.PressOk();
    measuring.program.messages.Answers(Answer::No);  // to saving the case
    measuring.program.window.Exit();
    measuring.program.messages.Take();
  }
  MeasuringProgram next(folder.path());
  next.program.window.OfferKeptWork();  // asks nothing
}

TEST_F(Measure, TakesUpTheFormBeforeTheMarksThatFillIt) {
  {
    MeasuringProgram measuring(folder.path());
    measuring.Open(path);
    measuring.MarkAll();
    measuring.In<QPushButton>("cmdUse")->click();
    measuring.program.window.EndForSystem();
  }
  MeasuringProgram next(folder.path());
  next.program.messages.Answers(Answer::Yes);
  next.program.window.OfferKeptWork();
  next.program.messages.Take();
  next.Wait();
  EXPECT_EQ(QApplication::activeWindow(), &next.program.Form());
  EXPECT_FALSE(next.Window().WorkToKeep().isEmpty());
  next.program.PressOk();
  EXPECT_TRUE(next.Window().WorkToKeep().isEmpty());
  EXPECT_TRUE(next.Window().Found().record);
}

TEST_F(Measure, CountsTheMarksAsUsedWhenTheFormIsConfirmedLater) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  measuring.In<QPushButton>("cmdUse")->click();
  measuring.program.PressCancel();
  measuring.program.window.Change();
  measuring.program.PressOk();
  EXPECT_TRUE(measuring.Window().WorkToKeep().isEmpty());
}

TEST_F(Measure, HidesTheErrorOfTheMagnificationBesideALineUnlessItIsWrong) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  measuring.Type("magnification_u", "abc");
  measuring.Hand().MarkMidlineAndLine();
  ASSERT_TRUE(measuring.Window().Found().scale.isByObject);
  EXPECT_FALSE(measuring.In<QLineEdit>("magnification_u")->isHidden());
  measuring.Type("magnification_u", "0.02");
  EXPECT_TRUE(measuring.In<QLineEdit>("magnification_u")->isHidden());
}

TEST_F(Measure, KeepsTheMarksWhenTheFormIsCancelled) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  measuring.In<QPushButton>("cmdUse")->click();
  measuring.program.PressCancel();
  EXPECT_FALSE(measuring.Window().WorkToKeep().isEmpty());
}

TEST_F(Measure, AsksAboutAnUnsavedCaseAndOfAnotherPatient) {
  MeasuringProgram measuring(folder.path());
  RunningProgram& program = measuring.program;
  program.window.New();
  program.Type("Text8", "Roe");
  program.Type("Text7", "John");
  program.PressOk();
  program.messages.Take();
  measuring.Open(path);
  measuring.MarkAll();
  program.messages.Answers(Answer::Cancel);
  measuring.In<QPushButton>("cmdUse")->click();
  EXPECT_EQ(program.messages.Take(),
            (QList<Message>{{"yes/no/cancel", "TELMARION New", "Do you want to save data ?"}}));
  EXPECT_FALSE(program.FormIsOpen());
  program.messages.Answers(Answer::No);
  program.messages.Answers(Answer::Yes);
  measuring.In<QPushButton>("cmdUse")->click();
  EXPECT_TRUE(program.messages.Take().value(1).text.startsWith(
      "The case on screen is that of Roe John, the radiograph that of Doe Jane."));
  EXPECT_TRUE(program.FormIsOpen());
}

TEST_F(Measure, TakesAPictureThatIsDroppedOnTheMainWindow) {
  MeasuringProgram measuring(folder.path());
  QMimeData dropped;
  dropped.setUrls({QUrl::fromLocalFile(path)});
  QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &dropped, Qt::LeftButton, {});
  QApplication::sendEvent(&measuring.program.window, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &dropped, Qt::LeftButton, {});
  QApplication::sendEvent(&measuring.program.window, &drop);
  measuring.Wait();
  EXPECT_TRUE(measuring.Window().windowTitle().startsWith("phantom.dcm"));
}

TEST_F(Measure, CopiesPrintsAndSavesWhatItShows) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  measuring.In<QAction>("mnuCopyTable")->trigger();
  const QString table = QGuiApplication::clipboard()->text();
  EXPECT_TRUE(table.contains("l/2\tcm\t")) << table.toStdString();
  EXPECT_TRUE(table.contains("Pmax\tPa\t"));

  const QString pdf = folder.filePath("marked.pdf");
  measuring.program.printers.Answers(pdf);
  measuring.In<QAction>("mnuPrintPage")->trigger();
  EXPECT_EQ(measuring.program.printers.Take(), QList<QString>{kMeasuredTitle.toString()});
  const PdfPages pages(pdf);
  EXPECT_EQ(pages.Count(), 1);
  pages.Line(1, "Name : Doe Jane");
  pages.Line(1, "Rotation = 0°");
  EXPECT_TRUE(pages.TextsOf(1).join(u' ').contains(
      "Scale: pixel spacing at the detector ÷ the magnification given by the user."));
  measuring.program.files.Answers(folder.filePath("marked.png"));
  measuring.In<QPushButton>("cmdSavePicture")->click();
  const QImage saved(folder.filePath("marked.png"));
  EXPECT_EQ(saved.width(), 1200);
  EXPECT_GT(saved.height(), 1000);

  measuring.program.files.Answers(folder.filePath("nowhere/marked.png"));
  measuring.In<QPushButton>("cmdSavePicture")->click();
  EXPECT_EQ(measuring.program.messages.Take().size(), 1);
}

TEST_F(Measure, SaysWhereTheNumbersStandWhatTheyAreFor) {
  MeasuringProgram measuring(folder.path());
  measuring.program.window.Measure();
  const auto* purpose = measuring.In<QLabel>("lblPurpose");
  EXPECT_TRUE(purpose->isVisible());
  EXPECT_EQ(purpose->text(), "For research and teaching, not for decisions about a patient.");
}

TEST_F(Measure, TheFirstMarkIsChosenBeforeThereIsAPicture) {
  MeasuringProgram measuring(folder.path());
  measuring.program.window.Measure();
  EXPECT_EQ(measuring.In<TextTable>("tblMarks")->ChosenRow(), 0);
}

TEST_F(Measure, KeepsTheErrorsOfMarksBetweenSessions) {
  {
    MeasuringProgram measuring(folder.path());
    measuring.program.window.Measure();
    measuring.Type("edgeOfCircle_u", "1.5");
  }
  MeasuringProgram next(folder.path());
  next.program.window.Measure();
  EXPECT_EQ(next.In<QLineEdit>("edgeOfCircle_u")->text(), "1.5");
}

}  // namespace
