// The main window as such: what is in it, how it is reached, how it bears sizes and themes.
#include "app/main_window.h"

#include <gtest/gtest.h>

#include <QMenuBar>
#include <QTextBrowser>
#include <QToolBar>
#include <QToolButton>

#include "app/about_box.h"
#include "app/help_window.h"
#include "tests/support/running_program.h"

namespace {

TEST(MainWindow, HasSixButtonsAndThreeMenusAndNothingMore) {
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
                                "&File Exit", "&Edit Change", "&Help Help", "&Help About"}));
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

TEST(MainWindow, EveryControlHasAName) {
  RunningProgram program;
  for (const QWidget* widget : program.window.findChildren<QWidget*>()) {
    const bool control = qobject_cast<const QLineEdit*>(widget) != nullptr ||
                         qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                         qobject_cast<const QPlainTextEdit*>(widget) != nullptr;
    if (!control || widget->objectName().startsWith("qt_")) continue;
    EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
  }
}

// 10,000 characters, emoji, line breaks pasted into single lines, very many lines: what can be
// typed can be saved and comes back.
TEST(MainWindow, StrangeTextsSurviveConfirmSaveAndOpen) {
  RunningProgram program;
  const QString name = QString(u"😀 שלום <b>/\\"_qs) + QString(10000, u'x');
  const QString comments = QString(u"tab\there\nno\u00a0break"_qs) + QString(100000, u'č') +
                           QString("line\n").repeated(20000) + "\n\n";
  program.window.New();
  program.InForm<QLineEdit>("Text8")->setText(name);
  program.InForm<QLineEdit>("Text7")->setText("one\ttwo\nthree");
  program.InForm<QPlainTextEdit>("Text12")->setPlainText(comments);
  program.PressOk();
  const CaseData before = program.window.Session().Record();
  program.files.Answers(program.Path("case.txt"));
  program.window.Save();
  program.files.Answers(program.Path("case.txt"));
  program.window.Open();
  EXPECT_TRUE(program.InForm<CommentsBox>("Text12")->Text() == comments);
  program.PressOk();
  EXPECT_TRUE(program.InWindow<CommentsBox>("txtComments")->Text() == comments);
  const PatientTexts& after = program.window.Session().Record().patient;
  EXPECT_TRUE(after.comments == comments);
  EXPECT_TRUE(before.patient.comments == comments);
  EXPECT_EQ(after.name, before.patient.name);
}

}  // namespace
