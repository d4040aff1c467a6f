// The whole way in the windows: a made-up radiograph, marked by mouse, measured, and handed over to
// the case form.
#include <gtest/gtest.h>

#include <QStatusBar>
#include <QTest>
#include <memory>
#include <new>
#include <vector>

#include "case/number_text.h"
#include "measuring/measured_texts.h"
#include "tests/app/measuring_program.h"
#include "tests/support/little_memory.h"

namespace {

using namespace Measuring;
using Answer = MessageDoor::Answer;
using Landmarks::PixelPlace;

TEST_F(Measure, GoesFromTheFileToTheResultsWithinTheirInterval) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  const Findings& found = measuring.Window().Found();
  for (const MeasurementFinding& own : found.measurements) EXPECT_EQ(own.missing, "");
  ASSERT_TRUE(found.record);
  for (const char* box : {"edgeOfCircle_u", "socketEdge_u", "otherPoint_u"}) {
    measuring.Hand().Type(box, "1");
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
  for (const PixelPlace& place : EdgePoints(head, Rendered().spacing, 3)) {
    walk(Qt::Key_Right, Qt::Key_Left, place.column - view.CrossHair()->column);
    walk(Qt::Key_Down, Qt::Key_Up, place.row - view.CrossHair()->row);
    QTest::keyClick(&view, Qt::Key_Return);
  }
  measuring.Hand().Type("magnification", QString::number(Rendered().truth.magnification, 'g', 6));
  QTest::keyClick(measuring.In<QLineEdit>("magnification"), Qt::Key_Return, Qt::ControlModifier);
  ASSERT_TRUE(measuring.program.FormIsOpen());
  const CaseEntries entries = measuring.program.Form().Entries();
  EXPECT_NEAR(*Vse::ReadNumber(entries[Sila::Measurement::HeadRadius].text.toStdString()), 2.4,
              0.03);
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

TEST_F(Measure, TheGreyValueToldIsThatOfTheChosenPointAlsoAfterUndo) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  RadiographView& view = measuring.Window().View();
  const auto* told = measuring.In<QLabel>("lblPointer");
  QTest::keyClick(&view, Qt::Key_Right);
  QTest::keyClick(&view, Qt::Key_Return);
  QTest::keyClick(&view, Qt::Key_N);
  const QString before = told->text();
  QTest::keyClick(&view, Qt::Key_Right, Qt::ControlModifier);
  EXPECT_NE(told->text(), before);
  measuring.In<QAction>("mnuUndo")->trigger();
  EXPECT_EQ(told->text(), before);
}

TEST_F(Measure, LeavesBoxesEmptyForWhatWasNotMarked) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.Hand().DrawHead(*Rendered().truth.left.head);
  measuring.Hand().Type("magnification", "1.15");
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
  measuring.Hand().Click({300.0, 200.0});
  const Draft before = measuring.Window().Marked();
  measuring.Hand().Drag(before[MarkKind::CrestTop][0], {380.0, 260.0});
  EXPECT_NE(measuring.Window().Marked(), before);
  measuring.In<QAction>("mnuUndo")->trigger();
  EXPECT_EQ(measuring.Window().Marked(), before);
}

TEST_F(Measure, WhatEndsWhereItBeganIsNoStep) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  MarkingHand hand = measuring.Hand();
  RadiographView& view = measuring.Window().View();
  hand.Choose(MarkKind::CrestTop);
  hand.Click({300.0, 200.0});
  QTest::mousePress(&view, Qt::LeftButton, {}, hand.At({300.0, 200.0}));
  QTest::mouseMove(&view, hand.At({400.0, 300.0}));
  QTest::keyClick(&view, Qt::Key_Escape);
  QTest::mouseRelease(&view, Qt::LeftButton, {}, hand.At({400.0, 300.0}));
  QTest::keyClicks(measuring.In<QLineEdit>("bodyWeight"), "7");
  QTest::keyClick(measuring.In<QLineEdit>("bodyWeight"), Qt::Key_Backspace);
  EXPECT_FALSE(measuring.Window().Marked() == Draft{});
  measuring.In<QAction>("mnuUndo")->trigger();
  EXPECT_EQ(measuring.Window().Marked(), Draft{});
}

TEST_F(Measure, SnapsToTheHeadHoweverTheFileHoldsBrightness) {
  for (const char* slope : {"1", "-1"}) {
    for (const char* photometric : {"MONOCHROME1", "MONOCHROME2"}) {
      PhantomDicom file = FileOf(Rendered());
      file.attributes["RescaleSlope"] = slope;
      file.attributes["RescaleIntercept"] = "0";
      file.attributes["PhotometricInterpretation"] = photometric;
      const bool boneIsHigh = (*slope == '1') == (photometric == std::string("MONOCHROME2"));
      for (std::uint16_t& pixel : file.pixels) {
        if (!boneIsHigh) pixel = static_cast<std::uint16_t>(4095 - pixel);
      }
      Write(file);
      MeasuringProgram measuring(folder.path());
      measuring.Open(path);
      const Landmarks::Circle& head = *Rendered().truth.left.head;
      measuring.Hand().DrawHead(head);
      const auto& fit = measuring.Window().Found().circles[IndexOf(MarkKind::Head)];
      ASSERT_TRUE(fit) << slope << photometric;
      EXPECT_NEAR(fit->circle.radius, head.radius, 0.3) << slope << photometric;
    }
  }
}

#ifdef TELMARION_MEMORY_CAN_BE_LIMITED
TEST_F(Measure, SaysThatThereIsNoMemoryToSnapACircleOrToPrint) {
  PhantomDicom file = FileOf(Rendered());
  file.attributes["PhotometricInterpretation"] = "MONOCHROME1";
  for (std::uint16_t& pixel : file.pixels) pixel = static_cast<std::uint16_t>(4095 - pixel);
  Write(file);
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.Hand().DrawHead(*Rendered().truth.left.head);
  measuring.Hand().Choose(MarkKind::Head);
  const Draft before = measuring.Window().Marked();
  std::vector<std::unique_ptr<char[]>> taken(4096);
  {
    const LittleMemory none(0);
    for (auto& megabyte : taken) megabyte.reset(new (std::nothrow) char[1U << 20U]);
    measuring.In<QAction>("mnuSnap")->trigger();
    measuring.In<QAction>("mnuPrintPage")->trigger();
    taken.clear();
  }
  EXPECT_EQ(measuring.Window().statusBar()->currentMessage(),
            "There is not enough memory to find the edge. Click three or more points on the edge "
            "instead.");
  EXPECT_EQ(measuring.Window().Marked(), before);
  EXPECT_EQ(measuring.program.messages.Take(),
            QList{ErrorSaid("There is not enough memory to print the radiograph.")});
}
#endif

TEST_F(Measure, AClickOnFreeGroundDoesNotMoveAMarkThatIsSet) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  const Draft whole = measuring.Window().Marked();
  measuring.Hand().Click({600.0, 900.0});
  EXPECT_EQ(measuring.Window().Marked(), whole);
}

TEST_F(Measure, HidesTheErrorOfTheMagnificationBesideALineUnlessItIsWrong) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  const auto* notice = measuring.In<QLabel>("lblNotice");
  EXPECT_EQ(notice->text(),
            "Intervals need the errors of your marks: enter them under \"How sure\".");
  measuring.Hand().Type("magnification_u", "abc");
  EXPECT_EQ(notice->text(), "No intervals: an entry under \"How sure\" is wrong.");
  measuring.Hand().MarkMidlineAndLine();
  ASSERT_TRUE(measuring.Window().Found().scale.isByObject);
  EXPECT_FALSE(measuring.In<QLineEdit>("magnification_u")->isHidden());
  measuring.Hand().Type("magnification_u", "0.02");
  EXPECT_TRUE(measuring.In<QLineEdit>("magnification_u")->isHidden());
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

}  // namespace
