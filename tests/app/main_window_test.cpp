// The main window as such: what is in it, how it is reached, how it bears sizes and themes.
#include "app/main_window.h"
#include "case/case_texts.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QMenuBar>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolButton>

#include "app/about_box.h"
#include "app/help_window.h"
#include "tests/support/running_program.h"

namespace {

TEST(MainWindow, HasSixButtonsAndFourMenusAndNothingMore) {
  RunningProgram program;
  QStringList captions;
  for (QAction* action : program.InWindow<QToolBar>("Toolbar")->actions()) {
    if (!action->isSeparator()) captions << action->text();
  }
  EXPECT_EQ(captions, (QStringList{"New", "Open", "Save", "Print", "Change", "3D vizualization"}));
  QStringList menus;
  for (QAction* action : program.window.menuBar()->actions()) {
    for (QAction* entry : action->menu()->actions()) {
      if (!entry->isSeparator()) menus << action->text() + ' ' + entry->text().remove('&');
    }
  }
  EXPECT_EQ(menus, (QStringList{"&File New", "&File Open", "&File Save", "&File Print",
                                "&File Exit", "&Edit Change", "&Tools How sure is this case…",
                                "&Tools Measure on radiograph…", "&Help Help", "&Help About"}));
}

TEST(MainWindow, ShortcutsAreTheUsualOnes) {
  RunningProgram program;
  for (const auto& [action, keys] :
       {std::pair("mnuNew", "Ctrl+N"), std::pair("mnuOpen", "Ctrl+O"),
        std::pair("mnuSave", "Ctrl+S"), std::pair("mnuPrint", "Ctrl+P"),
        std::pair("mnuExit", "Ctrl+Q"), std::pair("mnuHelpT", "F1")}) {
    EXPECT_EQ(program.InWindow<QAction>(action)->shortcut(), QKeySequence(keys)) << action;
  }
}

TEST(MainWindow, PicturesStandOnNewOpenAndSaveAlone) {
  RunningProgram program;
  for (const char* name : {"CmdNew", "CmdOpen", "CmdSave"}) {
    EXPECT_FALSE(program.InWindow<QToolButton>(name)->icon().isNull()) << name;
  }
  for (const char* name : {"CmdPrint", "CmdChange", "Cmd3D"}) {
    EXPECT_TRUE(program.InWindow<QToolButton>(name)->icon().isNull()) << name;
  }
}

TEST(MainWindow, ButtonsAndCaptionsOfTheDiagramAreSetInTimes) {
  RunningProgram program;
  for (const char* name :
       {"CmdNew", "CmdOpen", "CmdSave", "CmdPrint", "CmdChange", "Cmd3D", "Picture2"}) {
    EXPECT_EQ(program.InWindow<QWidget>(name)->font().families().value(0), "Times New Roman")
        << name;
  }
}

TEST(MainWindow, HelpOpensAtATopicThatFits) {
  RunningProgram program;
  program.Command("mnuHelpT");
  HelpWindow* help = nullptr;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* found = dynamic_cast<HelpWindow*>(widget)) help = found;
  }
  ASSERT_NE(help, nullptr);
  EXPECT_TRUE(help->isVisible());
  EXPECT_FALSE(help->isModal());
  const auto page = [&] { return help->findChild<QTextBrowser*>("helpPage")->source().fileName(); };
  EXPECT_EQ(page(), "first-case.html");
  program.ConfirmDefaultCase();
  program.Command("mnuHelpT");
  EXPECT_EQ(page(), "results.html");
}

TEST(MainWindow, AMissingHelpFileIsAMessage) {
  RunningProgram program(QLocale::c(), {});
  program.Command("mnuHelpT");
  const QList<Message> said = program.messages.Take();
  ASSERT_EQ(said.size(), 1);
  EXPECT_EQ(said[0].title, "Error");
  EXPECT_TRUE(said[0].text.contains("Telmarion.hlp"));
}

TEST(MainWindow, AboutIsModalAndCloses) {
  RunningProgram program;
  program.Command("mnuAbout");
  auto* about = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  ASSERT_NE(dynamic_cast<Form3*>(about), nullptr);
  QTest::keyClick(about, Qt::Key_Escape);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(MainWindow, FitsASmallScreenAndFillsALargeOne) {
  RunningProgram program;
  EXPECT_LE(program.window.minimumSizeHint().width(), 1024);
  EXPECT_LE(program.window.minimumSizeHint().height(), 700);
  for (const QSize size : {QSize(1024, 700), QSize(3840, 2100)}) {
    program.window.resize(size);
    program.ConfirmDefaultCase();
    auto* diagram = program.InWindow<PictureView>("Picture1");
    const QRectF area = diagram->PictureArea();
    EXPECT_NEAR(area.width() / area.height(), 1.5, 0.01);
    EXPECT_GT(area.width(), size.width() / 3.0);
    program.files.Answers(program.Path("case.txt"));
    program.window.Save();
  }
}

// What is pasted often ends with a line end.
TEST(MainWindow, PastedLineEndsDoNotGetIntoTheFile) {
  RunningProgram program;
  program.window.New();
  for (const auto& [box, text] :
       {std::pair("Text8", "Ko\r\nvac\r\n"), std::pair("Text7", "Ana\r\n"),
        std::pair("Text11", "15.11.1956\r\n"), std::pair("Text10", "70\r\n"),
        std::pair("Text1", "10.5\r\n")}) {
    auto* edit = program.InForm<QLineEdit>(box);
    QGuiApplication::clipboard()->setText(text);
    edit->selectAll();
    edit->paste();
  }
  program.PressOk();
  EXPECT_EQ(program.Panel("txtName"), "Ko vac Ana");
  EXPECT_EQ(program.Panel("txtBodyWeight"), "70");
  EXPECT_EQ(program.Panel("txtDateOfBirth"), "15.11.1956");
  program.files.Answers(program.Path("case.txt"));
  program.window.Save();
  EXPECT_TRUE(program.Bytes(program.Path("case.txt")).contains("Body weight   : 70 kg\n\r\n"));
  program.files.Answers(program.Path("case.txt"));
  program.window.Open();
  EXPECT_EQ(program.Entry("Text10"), "70");
  EXPECT_EQ(program.Entry("Text1"), "10.5");
  EXPECT_EQ(program.Entry("Text7"), "Ana");
}

// Thousands of characters, emoji, line breaks pasted into single lines: what can be typed can be
// saved and comes back.
TEST(MainWindow, StrangeTextsSurviveConfirmSaveAndOpen) {
  RunningProgram program;
  const QString name = QString(u"😀 שלום <b>/\\"_qs) + QString(2000, u'x');
  const QString comments = QString(u"tab\there\nno\u00a0break"_qs) + QString(2000, u'č') +
                           QString("line\n").repeated(2000) + "\n\n";
  program.window.New();
  program.InForm<QLineEdit>("Text8")->setText(name);
  program.InForm<QLineEdit>("Text7")->setText("one\ttwo\nthree");
  program.InForm<QPlainTextEdit>("Text12")->setPlainText(comments);
  program.PressOk();
  const CaseData before = program.window.Session().Record().data;
  program.files.Answers(program.Path("case.txt"));
  program.window.Save();
  program.files.Answers(program.Path("case.txt"));
  program.window.Open();
  EXPECT_TRUE(program.InForm<CommentsBox>("Text12")->Text() == comments);
  program.PressOk();
  EXPECT_TRUE(program.InWindow<CommentsBox>("txtComments")->Text() == comments);
  const Patient& after = program.window.Session().Record().data.patient;
  EXPECT_TRUE(after.comments == comments);
  EXPECT_TRUE(before.patient.comments == comments);
  EXPECT_EQ(after.name, before.patient.name);
}

}  // namespace
