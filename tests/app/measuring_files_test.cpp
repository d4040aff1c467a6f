// What comes into the measuring window, what goes out of it, and what must not be lost in it.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QStatusBar>
#include <QTest>
#include <QUrl>

#include "measuring/measured_page.h"
#include "measuring/measured_texts.h"
#include "tests/app/measuring_program.h"
#include "tests/support/pdf_pages.h"

namespace {

using namespace Measuring;
using Answer = MessageDoor::Answer;

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

TEST_F(Measure, AFileThatCannotBeReadLeavesTheWindowAsItWas) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.Hand().DrawHead(*Rendered().truth.left.head);
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

TEST_F(Measure, SaysThatItOpensAPictureAlsoWhileMarksAreSet) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.Window().OpenPicture(path);
  ASSERT_TRUE(measuring.Window().IsReading());
  const QStatusBar& status = *measuring.Window().statusBar();
  EXPECT_EQ(status.currentMessage(), "Opening… Escape cancels.");
  measuring.Hand().Click({300.0, 200.0});
  EXPECT_NE(measuring.Window().Marked(), Draft{});
  EXPECT_EQ(status.currentMessage(), "Opening… Escape cancels.");
  measuring.program.messages.Answers(Answer::Yes);  // the mark may go
  measuring.Wait();
  EXPECT_EQ(measuring.program.messages.Take().size(), 1);
  EXPECT_EQ(status.currentMessage(), "");
}

TEST_F(Measure, TellsWhatReadingTheFileHasNoted) {
  PhantomDicom file = FileOf(Rendered());
  file.attributes["WindowCenter"] = "100";
  file.attributes["WindowWidth"] = "-5";
  Write(file);
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  EXPECT_EQ(measuring.In<QLabel>("lblNotice")->text(), "A window of the file cannot be used.");
  EXPECT_TRUE(measuring.In<QLabel>("lblNotice")->isVisible());
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
  measuring.Hand().DrawHead(*Rendered().truth.left.head);
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

TEST_F(Measure, FindsThePictureOfKeptMarksFromAnyFolder) {
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(folder.path()));
  {
    MeasuringProgram measuring(folder.path());
    measuring.Open("phantom.dcm");
    measuring.MarkAll();
    measuring.program.window.Exit();
  }
  ASSERT_TRUE(QDir::setCurrent(before));
  MeasuringProgram next(folder.path());
  next.program.messages.Answers(Answer::Yes);
  next.program.window.OfferKeptWork();
  next.Wait();
  EXPECT_EQ(next.program.messages.Take().size(), 1);
  EXPECT_TRUE(next.Window().Found().record);
}

TEST_F(Measure, KeepsMarksThatWereToGoForAPictureThatCannotBeRead) {
  {
    MeasuringProgram measuring(folder.path());
    measuring.Open(path);
    measuring.MarkAll();
    measuring.program.window.Exit();
  }
  ASSERT_TRUE(QFile::rename(path, path + ".away"));
  MeasuringProgram next(folder.path());
  next.program.messages.Answers(Answer::Yes);
  next.program.window.OfferKeptWork();
  next.Wait();
  const QJsonObject kept = next.Window().WorkToKeep();
  EXPECT_FALSE(kept.isEmpty());
  next.program.messages.Answers(Answer::Yes);  // the marks may go
  next.Open(folder.filePath("gone.dcm"));
  EXPECT_EQ(next.program.messages.Take().size(), 4);
  EXPECT_EQ(next.Window().WorkToKeep(), kept);
  next.program.messages.Answers(Answer::Yes);
  next.Open(path + ".away");
  EXPECT_EQ(next.program.messages.Take().size(), 1);
  EXPECT_EQ(next.Window().Marked(), Draft{});
  EXPECT_TRUE(next.Window().WorkToKeep().isEmpty());
}

TEST_F(Measure, AsksForMarksThatWereSetWhileAnotherPictureIsRead) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  const QString other = folder.filePath("other.dcm");
  ASSERT_TRUE(QFile::copy(path, other));
  measuring.program.window.MeasureOn(other);
  ASSERT_TRUE(measuring.Window().IsReading());
  measuring.program.messages.Answers(Answer::No);
  measuring.MarkAll();
  const Draft marked = measuring.Window().Marked();
  measuring.Wait();
  EXPECT_EQ(measuring.program.messages.Take().size(), 1);
  EXPECT_EQ(measuring.Window().Marked(), marked);
  EXPECT_TRUE(measuring.Window().windowTitle().startsWith("phantom.dcm"));
  measuring.program.messages.Answers(Answer::Yes);
  measuring.Open(other);
  EXPECT_EQ(measuring.program.messages.Take().size(), 1) << "once is enough";
  EXPECT_EQ(measuring.Window().Marked(), Draft{});
}

TEST_F(Measure, KeepsNothingWhereNothingIsMarkedAnyMore) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  measuring.In<QPushButton>("cmdUse")->click();
  measuring.program.PressOk();
  while (measuring.In<QAction>("mnuUndo")->isEnabled()) {
    measuring.In<QAction>("mnuUndo")->trigger();
  }
  EXPECT_TRUE(measuring.Window().WorkToKeep().isEmpty());
  measuring.Open(path);  // asks nothing
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

TEST_F(Measure, ShowsMarksThatBecameACaseBeforeTheirPictureWasReadAgain) {
  Draft marked;
  {
    MeasuringProgram measuring(folder.path());
    measuring.Open(path);
    measuring.MarkAll();
    marked = measuring.Window().Marked();
    measuring.In<QPushButton>("cmdUse")->click();
    measuring.program.window.EndForSystem();
  }
  MeasuringProgram next(folder.path());
  next.program.messages.Answers(Answer::Yes);
  next.program.window.OfferKeptWork();
  next.program.messages.Take();
  ASSERT_TRUE(next.Window().IsReading());
  next.program.PressOk();
  EXPECT_TRUE(next.Window().WorkToKeep().isEmpty());
  next.Wait();
  EXPECT_EQ(next.Window().Marked(), marked);
  EXPECT_TRUE(next.Window().WorkToKeep().isEmpty());
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

TEST_F(Measure, KeepsTheMarksWhenTheFormIsCancelled) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  measuring.In<QPushButton>("cmdUse")->click();
  measuring.program.PressCancel();
  EXPECT_FALSE(measuring.Window().WorkToKeep().isEmpty());
}

TEST_F(Measure, TakesAPictureThatIsDroppedOnTheMainWindow) {
  MeasuringProgram measuring(folder.path());
  QMimeData dropped;
  dropped.setUrls({QUrl::fromLocalFile(path)});
  QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &dropped, Qt::LeftButton, {});
  QApplication::sendEvent(&measuring.program.window, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(10, 10), Qt::CopyAction | Qt::MoveAction, &dropped, Qt::LeftButton,
                  Qt::ShiftModifier);
  drop.setDropAction(Qt::MoveAction);
  QApplication::sendEvent(&measuring.program.window, &drop);
  EXPECT_TRUE(drop.isAccepted());
  EXPECT_EQ(drop.dropAction(), Qt::CopyAction) << "the file stays where it is";
  QCoreApplication::processEvents();
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

TEST_F(Measure, WritesBelowThePictureWhoseHipItIsAndWhatTheResultsRestOn) {
  MeasuringProgram measuring(folder.path());
  measuring.Open(path);
  measuring.MarkAll();
  measuring.Hand().Type("bodyWeight", "70.5");
  const QLocale locale("de_DE");
  const QStringList lines = NumberLines("hip.dcm", measuring.Window().Found(), locale);
  EXPECT_TRUE(lines.value(0).startsWith("hip.dcm    Left hip    pixel spacing at the detector"));
  EXPECT_TRUE(lines.value(1).startsWith("Rotation angle: 0°    Body weight: 70.5 kg    l/2, cm: "));
  EXPECT_TRUE(lines.value(2).startsWith("R/Wb: "));
  EXPECT_TRUE(lines.value(3).startsWith("Intervals need the errors of your marks"));
  EXPECT_TRUE(lines.last().contains("not the error of the model itself"));
}

TEST_F(Measure, NeverSavesAPictureOverTheRadiographItself) {
  const QString radiograph = folder.filePath("hip.png");
  QImage grey(300, 200, QImage::Format_Grayscale8);
  grey.fill(90);
  ASSERT_TRUE(grey.save(radiograph));
  ASSERT_TRUE(QFile::link(radiograph, folder.filePath("link.png")));
  MeasuringProgram measuring(folder.path());
  const QByteArray before = measuring.program.Bytes(radiograph);
  measuring.Open(radiograph);
  for (const QString& chosen : {radiograph, folder.filePath("link.png")}) {
    measuring.program.files.Answers(chosen);
    measuring.In<QPushButton>("cmdSavePicture")->click();
    EXPECT_EQ(measuring.program.messages.Take(),
              QList{ErrorSaid(chosen + " is the radiograph itself. Choose another name.")});
    EXPECT_EQ(measuring.program.files.Take().value(0).proposedName, "hip-marked.png");
  }
  EXPECT_EQ(measuring.program.Bytes(radiograph), before);
  ASSERT_TRUE(QFile::remove(radiograph));
  measuring.program.files.Answers(folder.filePath("new.png"));
  measuring.In<QPushButton>("cmdSavePicture")->click();
  EXPECT_TRUE(QFile::exists(folder.filePath("new.png")));
}

TEST_F(Measure, KeepsTheErrorsOfMarksBetweenSessions) {
  {
    MeasuringProgram measuring(folder.path());
    measuring.program.window.Measure();
    measuring.Hand().Type("edgeOfCircle_u", "1.5");
  }
  MeasuringProgram next(folder.path());
  next.program.window.Measure();
  EXPECT_EQ(next.In<QLineEdit>("edgeOfCircle_u")->text(), "1.5");
}

}  // namespace
