// Every command in every state of the case, with every answer.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>

#include "case/case_file.h"
#include "case/case_texts.h"
#include "tests/support/row_name.h"
#include "tests/support/running_program.h"

namespace {

using Answer = MessageDoor::Answer;

// Saves, changes the case, and opens what was saved, leaving the change unsaved. Gives the changed
// case.
CaseData OpenAfterAChange(RunningProgram& program) {
  const QString path = program.Path("before.txt");
  program.files.Answers(path);
  program.window.Save();
  program.window.Change();
  program.Type("Text1", "11");
  program.PressOk();
  CaseData changed = program.window.Session().Record().data;
  program.messages.Answers(Answer::No);
  program.files.Answers(path);
  program.window.Open();
  program.messages.Take();
  return changed;
}

// The states that the prompts tell apart.
enum class State { Fresh, Unsaved, Saved, Opened };

void BringTo(RunningProgram& program, State state) {
  if (state == State::Fresh) return;
  program.ConfirmDefaultCase();
  if (state == State::Saved) {
    program.files.Answers(program.Path("before.txt"));
    program.window.Save();
  }
  if (state == State::Opened) {
    OpenAfterAChange(program);
    program.PressOk();  // only openOK is set
    program.files.Take();
  }
}

struct Path {
  const char* name;
  const char* command;
  State state;
  std::optional<Answer> answer;  // nothing when no question is to be asked
  bool saves;                    // a file is written
  bool opensForm;
  bool ends;
};

Message QuestionOf(const QString& command) {
  if (command == "mnuNew") {
    return {"yes/no/cancel", "TELMARION New", "Do you want to save data ?"};
  }
  if (command == "mnuOpen") return {"yes/no/cancel", "Open", "Do you want to save data"};
  if (command == "mnuPrint") return {"yes/no", "TELMARION print", "Print results?"};
  if (command == "mnuExit") return {"yes/no/cancel", "TELMARION End", "Do you want to save data ?"};
  return {"yes/no", "TELMARION End", "Do you want to save data ?"};
}

class CommandTable : public testing::TestWithParam<Path> {};

TEST_P(CommandTable, AsksSavesAndGoesOnAsTheAnswerSays) {
  const Path& row = GetParam();
  RunningProgram program;
  const QString existing = program.Path("existing.txt");
  {
    CaseRecord record;
    record.data.patient = Vse::PatientFrom({"Other Case", "M", "1960", "80", "D", "No"});
    record.data.inputs = {10.0, 1.0, 6.5, 4.0, 15.0, 0.0, 0.5, 0.024};
    ASSERT_EQ(Vse::WriteCaseFile(existing, record, "1.1.2026", QLocale::c()), "");
  }
  BringTo(program, row.state);
  const QString saved = program.Path("saved.txt");
  const bool saveOK = program.window.Session().saveOK();
  const bool openOK = program.window.Session().openOK();
  if (row.answer) program.messages.Answers(*row.answer);
  const bool prints = row.command == QString("mnuPrint") && row.answer == Answer::Yes;
  if (prints) program.printers.Answers(program.Path("report.pdf"));
  if (row.saves) program.files.Answers(saved);
  if (row.command == QString("mnuOpen") && row.opensForm) program.files.Answers(existing);

  if (row.command == QString("close")) {
    program.window.close();
  } else {
    program.Command(row.command);
  }
  EXPECT_EQ(program.messages.Take(),
            row.answer ? QList<Message>{QuestionOf(row.command)} : QList<Message>{});
  EXPECT_EQ(QFile::exists(saved), row.saves);
  EXPECT_EQ(program.FormIsOpen(), row.opensForm);
  EXPECT_EQ(program.window.isVisible(), !row.ends);
  EXPECT_EQ(QFile::exists(program.Path("report.pdf")), prints);
  const bool reads = row.command == QString("mnuOpen") && row.opensForm;
  EXPECT_EQ(program.window.Session().saveOK(), row.saves || saveOK);
  EXPECT_EQ(program.window.Session().openOK(), reads || openOK);
}

constexpr auto kYes = Answer::Yes;
constexpr auto kNo = Answer::No;
constexpr auto kCancel = Answer::Cancel;
constexpr std::nullopt_t kNotAsked = std::nullopt;

INSTANTIATE_TEST_SUITE_P(
    Table, CommandTable,
    testing::Values(
        Path{"NewFresh", "mnuNew", State::Fresh, kNotAsked, false, true, false},
        Path{"NewSaved", "mnuNew", State::Saved, kNotAsked, false, true, false},
        Path{"NewOpened", "mnuNew", State::Opened, kNotAsked, false, true, false},
        Path{"NewUnsavedYesSavesAndStops", "mnuNew", State::Unsaved, kYes, true, false, false},
        Path{"NewUnsavedNo", "mnuNew", State::Unsaved, kNo, false, true, false},
        Path{"NewUnsavedCancel", "mnuNew", State::Unsaved, kCancel, false, false, false},
        Path{"OpenFresh", "mnuOpen", State::Fresh, kNotAsked, false, true, false},
        Path{"OpenSaved", "mnuOpen", State::Saved, kNotAsked, false, true, false},
        Path{"OpenOpenedNo", "mnuOpen", State::Opened, kNo, false, true, false},
        Path{"OpenOpenedYes", "mnuOpen", State::Opened, kYes, true, false, false},
        Path{"OpenOpenedCancel", "mnuOpen", State::Opened, kCancel, false, false, false},
        Path{"OpenUnsavedYesSavesAndStops", "mnuOpen", State::Unsaved, kYes, true, false, false},
        Path{"OpenUnsavedNo", "mnuOpen", State::Unsaved, kNo, false, true, false},
        Path{"OpenUnsavedCancel", "mnuOpen", State::Unsaved, kCancel, false, false, false},
        Path{"ChangeFresh", "mnuChange", State::Fresh, kNotAsked, false, true, false},
        Path{"ChangeUnsaved", "mnuChange", State::Unsaved, kNotAsked, false, true, false},
        Path{"ChangeSaved", "mnuChange", State::Saved, kNotAsked, false, true, false},
        Path{"ChangeOpened", "mnuChange", State::Opened, kNotAsked, false, true, false},
        Path{"SaveUnsaved", "mnuSave", State::Unsaved, kNotAsked, true, false, false},
        Path{"SaveSaved", "mnuSave", State::Saved, kNotAsked, true, false, false},
        Path{"SaveOpened", "mnuSave", State::Opened, kNotAsked, true, false, false},
        Path{"PrintUnsavedYes", "mnuPrint", State::Unsaved, kYes, false, false, false},
        Path{"PrintUnsavedNo", "mnuPrint", State::Unsaved, kNo, false, false, false},
        Path{"PrintSavedYes", "mnuPrint", State::Saved, kYes, false, false, false},
        Path{"PrintSavedNo", "mnuPrint", State::Saved, kNo, false, false, false},
        Path{"PrintOpenedYes", "mnuPrint", State::Opened, kYes, false, false, false},
        Path{"PrintOpenedNo", "mnuPrint", State::Opened, kNo, false, false, false},
        Path{"HelpUnsaved", "mnuHelpT", State::Unsaved, kNotAsked, false, false, false},
        Path{"AboutUnsaved", "mnuAbout", State::Unsaved, kNotAsked, false, false, false},
        Path{"ExitFresh", "mnuExit", State::Fresh, kNotAsked, false, false, true},
        Path{"ExitSaved", "mnuExit", State::Saved, kNotAsked, false, false, true},
        Path{"ExitOpened", "mnuExit", State::Opened, kNotAsked, false, false, true},
        Path{"ExitUnsavedYes", "mnuExit", State::Unsaved, kYes, true, false, true},
        Path{"ExitUnsavedNo", "mnuExit", State::Unsaved, kNo, false, false, true},
        Path{"ExitUnsavedCancel", "mnuExit", State::Unsaved, kCancel, false, false, false},
        Path{"CloseFresh", "close", State::Fresh, kNotAsked, false, false, true},
        Path{"CloseSaved", "close", State::Saved, kNotAsked, false, false, true},
        Path{"CloseOpened", "close", State::Opened, kNotAsked, false, false, true},
        Path{"CloseUnsavedYes", "close", State::Unsaved, kYes, true, false, true},
        Path{"CloseUnsavedNo", "close", State::Unsaved, kNo, false, false, true}),
    RowName());

TEST(Commands, ToolButtonsDoWhatTheMenuDoes) {
  RunningProgram program;
  program.InWindow<QAbstractButton>("CmdNew")->click();
  EXPECT_TRUE(program.FormIsOpen());
  program.Type("Text10", "70");
  program.PressOk();
  program.InWindow<QAbstractButton>("CmdChange")->click();
  EXPECT_TRUE(program.FormIsOpen());
  program.PressCancel();
  program.files.Answers(program.Path("case.txt"));
  program.InWindow<QAbstractButton>("CmdSave")->click();
  program.files.Answers(program.Path("case.txt"));
  program.InWindow<QAbstractButton>("CmdOpen")->click();
  EXPECT_TRUE(program.FormIsOpen());
}

TEST(Commands, NeedACaseBeforeTheySaveOrPrint) {
  RunningProgram program;
  for (const char* action : {"mnuSave", "mnuPrint"}) {
    EXPECT_FALSE(program.InWindow<QAction>(action)->isEnabled()) << action;
  }
  for (const char* button : {"CmdSave", "CmdPrint", "Cmd3D"}) {
    EXPECT_FALSE(program.InWindow<QAbstractButton>(button)->isEnabled()) << button;
  }
  for (const char* button : {"CmdNew", "CmdOpen", "CmdChange"}) {
    EXPECT_TRUE(program.InWindow<QAbstractButton>(button)->isEnabled()) << button;
  }
  program.ConfirmDefaultCase();
  for (const char* button : {"CmdSave", "CmdPrint"}) {
    EXPECT_TRUE(program.InWindow<QAbstractButton>(button)->isEnabled()) << button;
  }
}

TEST(Commands, SaveProposesThePatientsNameAndWritesTheCase) {
  RunningProgram program;
  program.window.New();
  program.Type("Text8", "a/b: Sur*name");
  program.Type("Text7", "Given");
  program.Type("Text10", "70");
  program.PressOk();
  program.files.Answers(program.Path("case.txt"));
  program.window.Save();
  EXPECT_EQ(
      program.files.Take(),
      (QList<FileQuestion>{{"save", "Text (*.txt)|*.txt", "txt", "a_b_ Sur_name Given.txt"}}));
  const QByteArray bytes = program.Bytes(program.Path("case.txt"));
  EXPECT_TRUE(bytes.startsWith("TELMARION" + QByteArray(40, ' ') + "15 Nov 2026\r\n\n\r\n"))
      << bytes.toStdString();
  EXPECT_TRUE(bytes.contains("Name          : a/b: Sur*name Given\n\r\n"));
  EXPECT_TRUE(bytes.endsWith("Pmax = 2066847.58429341 Pa\n\r\n"));
}

TEST(Commands, OpenFillsTheFormInHeldUnits) {
  RunningProgram program(QLocale("de_DE"));
  program.ConfirmDefaultCase();
  program.files.Answers(program.Path("case.txt"));
  program.window.Save();
  program.window.New();
  program.PressCancel();
  program.files.Answers(program.Path("case.txt"));
  program.window.Open();
  EXPECT_TRUE(program.FormIsOpen());
  EXPECT_EQ(program.Entry("Text1"), "10,4");
  EXPECT_EQ(program.Entry("Text9"), "30 ");
  EXPECT_EQ(program.Entry("Text13"), "0,025");
  EXPECT_EQ(program.InForm<QComboBox>("Combo8")->currentText(), "m");
  EXPECT_TRUE(program.window.Session().openOK());
  program.PressOk();
  EXPECT_EQ(program.Panel("txtPmax"), "2066847,58");
  EXPECT_FALSE(program.window.Session().NeedsSaving());
}

TEST(Commands, ChangeShowsHeldUnitsAndEmptiesPlaceholders) {
  RunningProgram program;
  program.window.New();
  program.Type("Text1", "104");
  program.ChooseUnit("Combo1", "mm");
  program.Type("Text13", "25");
  program.ChooseUnit("Combo8", "mm");
  program.PressOk();
  program.window.Change();
  EXPECT_EQ(program.Entry("Text1"), "10.4");
  EXPECT_EQ(program.InForm<QComboBox>("Combo1")->currentText(), "cm");
  EXPECT_EQ(program.Entry("Text13"), "0.025");
  EXPECT_EQ(program.InForm<QComboBox>("Combo8")->currentText(), "m");
  EXPECT_EQ(program.Entry("Text10"), "");
  EXPECT_EQ(program.Entry("Text11"), "");
  EXPECT_EQ(program.InForm<QPlainTextEdit>("Text12")->toPlainText(), "");
  EXPECT_TRUE(program.InForm<QRadioButton>("Option2")->isChecked());
  EXPECT_TRUE(program.InForm<QRadioButton>("Option4")->isChecked());
}

TEST(Commands, ConfirmingUnchangedLeavesTheFlags) {
  RunningProgram program;
  program.window.New();
  program.Type("Text8", "Berg");
  program.Type("Text10", "70");
  program.Choose("Option1");
  program.Choose("Option3");
  program.PressOk();
  EXPECT_TRUE(program.window.Session().NeedsSaving());
  program.files.Answers(program.Path("case.txt"));
  program.window.Save();
  EXPECT_FALSE(program.window.Session().NeedsSaving());
  program.window.Change();
  program.PressOk();
  EXPECT_TRUE(program.window.Session().saveOK());
  program.files.Answers(program.Path("case.txt"));
  program.window.Open();
  program.PressOk();
  EXPECT_TRUE(program.window.Session().saveOK());
  EXPECT_TRUE(program.window.Session().openOK());
  program.window.Change();
  program.Type("Text1", "10.5");
  program.PressOk();
  EXPECT_FALSE(program.window.Session().saveOK());
  EXPECT_FALSE(program.window.Session().openOK());
}

TEST(Commands, CancellingTheFormAfterOpenKeepsTheCaseOnScreen) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  const CaseData before = OpenAfterAChange(program);
  EXPECT_EQ(program.Entry("Text1"), "10.4");
  program.PressCancel();
  EXPECT_TRUE(program.window.Session().Record().data == before);
  EXPECT_TRUE(program.window.Session().openOK());
}

// Reading a file gives up the case before, but only a confirmation takes it away.
TEST(Commands, ACancelledOpenLeavesTheCaseOnScreenUnsaved) {
  for (const char* command : {"mnuNew", "mnuExit", "close"}) {
    RunningProgram program;
    program.ConfirmDefaultCase();
    OpenAfterAChange(program);
    EXPECT_TRUE(program.InWindow<QLabel>("lblUnsaved")->isVisible());
    program.PressCancel();
    EXPECT_TRUE(program.InWindow<QLabel>("lblUnsaved")->isVisible());
    program.messages.Answers(Answer::Yes);
    program.files.Answers(program.Path("kept.txt"));
    if (command == QString("close")) program.window.close();
    if (command != QString("close")) program.Command(command);
    EXPECT_EQ(program.messages.Take(), QList<Message>{QuestionOf(command)}) << command;
    EXPECT_TRUE(program.Bytes(program.Path("kept.txt")).contains("= 11 cm")) << command;
  }
}

TEST(Commands, AFileThatWasReadAndConfirmedIsLeftWithoutAQuestion) {
  RunningProgram program;
  BringTo(program, State::Opened);
  EXPECT_FALSE(program.InWindow<QLabel>("lblUnsaved")->isVisible());
  program.files.Answers(program.Path("before.txt"));
  program.messages.Answers(Answer::No);  // Open asks whenever it was not saved
  program.window.Open();
  program.messages.Take();
  program.PressCancel();
  program.window.Exit();
  EXPECT_FALSE(program.window.isVisible());
}

TEST(Commands, ANamelessCaseNeverTakesTheNameTypedForAnother) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.files.Answers(program.Path("case.txt"));
  program.window.Save();
  program.window.New();
  program.Type("Text8", "Smith");
  program.PressCancel();
  program.window.Change();
  EXPECT_EQ(program.Entry("Text8"), "");
}

TEST(Commands, ACancelledOrFailedDialogChangesNothing) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  program.files.Answers({});
  program.window.Save();
  EXPECT_TRUE(program.window.Session().NeedsSaving());
  EXPECT_EQ(program.messages.Take(), QList<Message>());
  program.files.Answers(program.Path("none/case.txt"));
  program.window.Save();
  EXPECT_TRUE(program.window.Session().NeedsSaving());
  const QList<Message> said = program.messages.Take();
  ASSERT_EQ(said.size(), 1);
  EXPECT_EQ(said[0].title, "Error");
  EXPECT_TRUE(said[0].text.startsWith("case.txt: "));
}

TEST(Commands, AFileThatIsNoCaseLeavesTheForm) {
  RunningProgram program;
  const QString path = program.Path("letter.txt");
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("Dear colleague,\r\n");
  file.close();
  program.files.Answers(path);
  program.window.Open();
  EXPECT_EQ(program.messages.Take(), QList<Message>{ErrorSaid("Not correct file")});
  EXPECT_FALSE(program.FormIsOpen());
  EXPECT_FALSE(program.window.Session().openOK());
  QDir(program.folder.path()).mkdir("folder.txt");
  program.files.Answers(program.Path("folder.txt"));
  program.window.Open();
  const QList<Message> said = program.messages.Take();
  ASSERT_EQ(said.size(), 1);
  EXPECT_TRUE(said[0].text.startsWith("folder.txt: ")) << said[0].text.toStdString();
  EXPECT_FALSE(program.FormIsOpen());
}

TEST(Commands, ExitKeepsTheProgramWhenSavingDoesNotCome) {
  for (const QString& path : {QString(), QStringLiteral("/proc/none/case.txt")}) {
    RunningProgram program;
    program.ConfirmDefaultCase();
    program.messages.Answers(Answer::Yes);
    program.files.Answers(path);
    program.window.Exit();
    EXPECT_TRUE(program.window.isVisible());
    EXPECT_EQ(program.messages.Take().size(), path.isEmpty() ? 1 : 2);
  }
}

TEST(Commands, TheCloseBoxKeepsTheProgramOnlyWhenWritingFails) {
  for (const QString& path : {QString(), QStringLiteral("/proc/none/case.txt")}) {
    RunningProgram program;
    program.ConfirmDefaultCase();
    program.messages.Answers(Answer::Yes);
    program.files.Answers(path);
    program.window.close();
    EXPECT_EQ(program.window.isVisible(), !path.isEmpty());
    EXPECT_EQ(program.messages.Take().size(), path.isEmpty() ? 1 : 2);
  }
}

}  // namespace
