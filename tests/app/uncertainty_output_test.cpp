// What the window "How sure is this case" leaves behind: settings, the clipboard, a printed page.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>

#include "tests/app/how_sure_program.h"
#include "tests/support/pdf_pages.h"

namespace {

using Sila::Result;
using Column = HowSureProgram::Column;

QString Entry(HowSureProgram& program, const char* box) {
  return program.InSure<QLineEdit>(box)->text();
}

TEST(HowSureSettings, AreEmptyAtFirstAndKeptForTheNextStart) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("config/settings.json");
  {
    HowSureProgram program(QLocale::c(), path);
    program.OpenOnDefaultCase();
    for (const char* box : {"lizm_u", "thetaCE_u", "bodyWeight_u", "magnification_u"}) {
      EXPECT_EQ(Entry(program, box), "");
    }
    EXPECT_EQ(Entry(program, "coverage"), "95");
    program.Enter("lizm_u", "0,1");
    program.Enter("thetaCE_u", "2");
    program.Enter("magnification", "1.2");
    program.Enter("magnification_u", "0.02");
    program.Enter("coverage", "90");
    program.InSure<QComboBox>("thetaCE_distribution")->setCurrentText("triangular");
    program.Sure().close();
    EXPECT_EQ(program.Sure().statusBar()->currentMessage(), "");
  }
  HowSureProgram program(QLocale::c(), path);
  program.OpenOnDefaultCase();
  EXPECT_EQ(Entry(program, "lizm_u"), "0,1");
  EXPECT_EQ(Entry(program, "thetaCE_u"), "2");
  EXPECT_EQ(Entry(program, "magnification"), "") << "it belongs to one picture";
  EXPECT_EQ(Entry(program, "magnification_u"), "0.02");
  EXPECT_EQ(Entry(program, "coverage"), "90");
  EXPECT_EQ(program.InSure<QComboBox>("thetaCE_distribution")->currentText(), "triangular");
  EXPECT_EQ(program.InSure<QComboBox>("lizm_distribution")->currentText(), "normal");
  EXPECT_NE(program.Cell(Result::Pmax, Column::kU), "0");
}

TEST(HowSureSettings, AreKeptWhenTheProgramEndsWithTheWindowOpen) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("settings.json");
  {
    HowSureProgram program(QLocale::c(), path);
    program.OpenOnDefaultCase();
    program.Enter("zizm_u", "0.3");
    program.messages.Answers(MessageDoor::Answer::No);
    program.Command("mnuExit");
    EXPECT_EQ(program.messages.Take().size(), 1);
    EXPECT_FALSE(program.Sure().isVisible());
  }
  HowSureProgram program(QLocale::c(), path);
  program.OpenOnDefaultCase();
  EXPECT_EQ(Entry(program, "zizm_u"), "0.3");
}

TEST(HowSureSettings, ThatCannotBeWrittenAreSaidInTheStatusLineAndDisturbNothing) {
  const QTemporaryDir folder;
  QFile file(folder.filePath("file"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  HowSureProgram program(QLocale::c(), folder.filePath("file/settings.json"));
  program.OpenOnDefaultCase();
  program.Enter("bodyWeight_u", "2");
  QTest::keyClick(program.InSure<QLineEdit>("bodyWeight_u"), Qt::Key_Return);
  const QString said = program.Sure().statusBar()->currentMessage();
  EXPECT_TRUE(said.startsWith("These entries cannot be kept for the next start: "))
      << said.toStdString();
  EXPECT_NE(program.Cell(Result::Pmax, Column::kU), "0");
}

TEST(HowSureSettings, ThatAreDamagedOrChangedByHandAreNoTrouble) {
  const QTemporaryDir folder;
  for (const QByteArray& bytes :
       {QByteArray("{"), QByteArray("[1]"), QByteArray("{\"uncertainty\": 3}"),
        QByteArray("{\"uncertainty\": {\"lizm\": {\"u\": 3, \"distribution\": \"odd\"}}}")}) {
    QFile file(folder.filePath("settings.json"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    HowSureProgram program(QLocale::c(), file.fileName());
    program.OpenOnDefaultCase();
    EXPECT_EQ(Entry(program, "lizm_u"), "");
    EXPECT_EQ(Entry(program, "coverage"), "95");
    EXPECT_EQ(program.Cell(Result::Pmax, Column::kU), "0") << bytes.toStdString();
  }
}

// Entries that are wrong come back as they were typed, marked.
TEST(HowSureSettings, KeepWhatIsWrongAsItWasTyped) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("settings.json");
  {
    HowSureProgram program(QLocale::c(), path);
    program.OpenOnDefaultCase();
    program.Enter("Cizm_u", "abc");
  }
  {
    HowSureProgram program(QLocale::c(), path);
    program.OpenOnDefaultCase();
    EXPECT_EQ(Entry(program, "Cizm_u"), "abc");
    EXPECT_EQ(program.Words("Cizm_fault"), "not a number");
  }
}

TEST(HowSureCopy, PutsTheTableOnTheClipboardAsShown) {
  HowSureProgram program(QLocale("de_DE"));
  program.OpenOnDefaultCase();
  program.Enter("bodyWeight_u", "3,5");
  QTest::keyClick(program.InSure<QAbstractButton>("cmdCopyTable"), Qt::Key_Space);
  const QStringList lines = QGuiApplication::clipboard()->text().split('\n');
  ASSERT_EQ(lines.size(), 7);
  EXPECT_EQ(lines[0], "Result\tUnit\tValue\tu\t95 % interval from\t95 % interval to");
  EXPECT_EQ(lines[1], "R/Wb\t\t2,81\t0\t2,81\t2,81");
  EXPECT_EQ(lines[2], "Theta-R\t°\t8,47\t0\t8,47\t8,47");
  EXPECT_EQ(lines[3], "Theta-pol\t°\t16,41\t0\t16,41\t16,41");
  EXPECT_EQ(lines[4], "Pmax/Wb\tm^-2\t3006,76\t0\t3006,76\t3006,76");
  const QStringList pmax = lines[5].split('\t');
  ASSERT_EQ(pmax.size(), 6);
  EXPECT_EQ(pmax.mid(0, 4), (QStringList{"Pmax", "Pa", "2066847,58", "100000"}));
  EXPECT_EQ(pmax[4] + " to " + pmax[5], program.Cell(Result::Pmax, Column::kInterval));
  EXPECT_EQ(lines[6], "");
}

// Prints the window, and gives the lines of the page.
QStringList PrintedLines(HowSureProgram& program) {
  const QString path = program.Path("sure.pdf");
  program.printers.Answers(path);
  program.InSure<QAbstractButton>("cmdPrintPage")->click();
  EXPECT_EQ(program.printers.Take(), QList<QString>{"TELMARION uncertainty"});
  const PdfPages pdf(path);
  EXPECT_EQ(pdf.Count(), 1);
  QStringList lines;
  for (const PdfLine& line : pdf.LinesOf(1, 1e5)) lines << line.text;
  return lines;
}

void ExpectLine(const QStringList& page, const QString& line) {
  EXPECT_EQ(page.count(line), 1) << line.toStdString() << " in\n" << page.join('\n').toStdString();
}

TEST(HowSurePrint, IsOnePageWithReadingsResultsAndBudget) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.ChangeEntry("Text8", "Novak");
  program.Enter("bodyWeight_u", "3.5");
  program.Enter("magnification", "1");
  program.InSure<QComboBox>("bodyWeight_distribution")->setCurrentText("uniform");
  const QStringList page = PrintedLines(program);
  EXPECT_EQ(page.first(), "TELMARION");
  ExpectLine(page, "How sure is this case");
  EXPECT_EQ(page.filter("Name : Novak").size(), 1);
  EXPECT_EQ(page.filter("Coverage = 95 %").size(), 1);
  ExpectLine(page, "Reading Value u Distribution");
  ExpectLine(page, "l/2 10.4 cm");
  ExpectLine(page, "Body weight 70 kg 3.5 kg uniform");
  ExpectLine(page, "Magnification 1");
  ExpectLine(page, "Result Value u 95 % interval from to");
  ExpectLine(page, "R/Wb 2.81 0 2.81 2.81");
  const QString pmax = program.Cell(Result::Pmax, Column::kInterval).replace(" to ", " ");
  ExpectLine(page, "Pmax, Pa 2066847.58 " + program.Cell(Result::Pmax, Column::kU) + " " + pmax);
  ExpectLine(page, "Budget: part of the variance R/Wb Theta-R Theta-pol Pmax/Wb Pmax");
  ExpectLine(page, "Body weight 0 % 0 % 0 % 0 % 100 %");
  EXPECT_EQ(page.filter("For research and teaching only.").size(), 1);
  EXPECT_TRUE(page.last().endsWith("Page 1"));
}

TEST(HowSurePrint, SaysWhyNumbersAreMissing) {
  HowSureProgram program;
  program.OpenOnDefaultCase({});
  program.ChangeEntry("Text9", "-25");
  program.messages.Take();
  const QStringList page = PrintedLines(program);
  ExpectLine(page,
             "No results for this case: in this range of input data you could not use this model");
  EXPECT_TRUE(page.filter("Pmax, Pa").isEmpty());
  EXPECT_TRUE(page.filter("Body weight").isEmpty());
}

TEST(HowSurePrint, ATargetThatCannotBeWrittenIsReported) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.printers.Answers(program.Path("none/sure.pdf"));
  program.InSure<QAbstractButton>("cmdPrintPage")->click();
  const QList<Message> said = program.messages.Take();
  ASSERT_EQ(said.size(), 1);
  EXPECT_EQ(said[0].title, "Error");
  EXPECT_TRUE(said[0].text.contains("sure.pdf"));
}

TEST(HowSurePrint, CancellingPrintsNothing) {
  HowSureProgram program;
  program.OpenOnDefaultCase();
  program.printers.Answers({});
  ASSERT_TRUE(QTest::qWaitForWindowActive(&program.Sure()));
  QTest::keyClick(&program.Sure(), Qt::Key_P, Qt::ControlModifier);
  EXPECT_EQ(program.printers.Take().size(), 1);
}

}  // namespace
