// The commands of the main window.
#include "app/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>

#include "app/about_box.h"
#include "app/file_name.h"
#include "case/case_conversion.h"
#include "case/case_file.h"
#include "case/case_texts.h"
#include "case/date_text.h"
#include "case/entry_check.h"
#include "report/report.h"

namespace {

using Answer = MessageDoor::Answer;

constexpr QStringView kFilter = u"Text (*.txt)|*.txt";
constexpr QStringView kExtension = u"txt";
constexpr QStringView kSaveQuestion = u"Do you want to save data ?";
constexpr QStringView kEndTitle = u"TELMARION End";
constexpr QStringView kStressesOfCaseBefore =
    u"The stresses are those of the case before. Go on all the same?";
constexpr QStringView kNoStresses = u"There are no stresses for this case. Go on all the same?";

// What is wrong with which file, for a message.
QString FileTrouble(const QString& path, const QString& reason) {
  return QFileInfo(path).fileName() + QStringLiteral(": ") + reason;
}

}  // namespace

MDIForm1::MDIForm1(const AppDoors& doors)
    : doors_(doors), settings_(doors.settingsFile), recovery_(doors.recoveryFolder) {
  setObjectName(QStringLiteral("MDIForm1"));
  setWindowTitle(QStringLiteral("TELMARION"));
  BuildContent();
  BuildMenus();
  BuildToolBar();
  BuildStatusLine();
  setAcceptDrops(true);
  ShowStatus();
}

// The form keeps its entries until New loads it afresh.
void MDIForm1::LoadForm() {
  form_ = std::make_unique<Form1>(doors_.messages, doors_.locale, this);
  formIsMeasured_ = false;
  connect(form_.get(), &Form1::OkPressed, this, &MDIForm1::ConfirmCase);
  connect(form_.get(), &QDialog::rejected, this, &MDIForm1::CancelForm);
  patient_->EnableBoxes();
}

void MDIForm1::ShowForm() {
  shownEntries_ = form_->Entries();
  form_->setWindowModality(Qt::ApplicationModal);  // the 3D view waits as well
  form_->show();
  form_->activateWindow();
  ShowStatus();
}

void MDIForm1::CancelForm() {
  KeepWork();
  ShowStatus();
}

void MDIForm1::New() {
  if (session_.NeedsSaving()) {
    const Answer answer = doors_.messages.AskYesNoCancel(this, kSaveQuestion.toString(),
                                                         QStringLiteral("TELMARION New"));
    if (answer == Answer::Yes) SaveCase();
    if (answer != Answer::No) return;
  }
  LoadForm();
  session_.NoteNew();
  ShowForm();
}

void MDIForm1::Open() {
  if (!session_.saveOK()) {
    const Answer answer = doors_.messages.AskYesNoCancel(
        this, QStringLiteral("Do you want to save data"), QStringLiteral("Open"));
    if (answer == Answer::Yes) SaveCase();
    if (answer != Answer::No) return;
  }
  const QString path = doors_.files.AskOpenFileName(this, kFilter.toString());
  if (path.isEmpty()) return;
  const Vse::CaseFileContents contents = Vse::ReadCaseFile(path, doors_.locale);
  if (contents.problem == Vse::CaseFileContents::Problem::NotCorrectFile) {
    doors_.messages.ShowError(this, QStringLiteral("Not correct file"), QStringLiteral("Error"));
    return;
  }
  if (contents.problem == Vse::CaseFileContents::Problem::Unreadable) {
    doors_.messages.ShowError(this, FileTrouble(path, contents.reason), QStringLiteral("Error"));
    return;
  }
  if (!form_) LoadForm();
  CaseEntries entries = contents.entries;
  if (!contents.hasName) {
    entries.surname = form_->Entries().surname;
    entries.firstName = form_->Entries().firstName;
  }
  form_->SetEntries(entries);
  formIsMeasured_ = false;
  session_.NoteRead(path, Vse::CheckEntries(form_->Entries(), false, doors_.locale).data);
  ShowForm();
}

void MDIForm1::Save() {
  SaveCase();
}

// True when the stresses are the case's own, or the user continues without.
bool MDIForm1::AskAboutStresses() {
  const Stresses stresses = session_.Record().stresses;
  if (stresses == Stresses::Own) return true;
  const QStringView question =
      stresses == Stresses::OfCaseBefore ? kStressesOfCaseBefore : kNoStresses;
  return doors_.messages.WarnYesNo(this, question.toString(), QStringLiteral("Sorry")) ==
         Answer::Yes;
}

MDIForm1::SaveOutcome MDIForm1::SaveCase() {
  if (!AskAboutStresses()) return SaveOutcome::Declined;
  const QString path = doors_.files.AskSaveFileName(this, kFilter.toString(), kExtension.toString(),
                                                    ProposedFileName());
  if (path.isEmpty()) return SaveOutcome::Cancelled;
  const QString date = Vse::ShortDate(doors_.today(), doors_.locale);
  const QString trouble = Vse::WriteCaseFile(path, session_.Record(), date, doors_.locale);
  if (!trouble.isEmpty()) {
    doors_.messages.ShowError(this, FileTrouble(path, trouble), QStringLiteral("Error"));
    return SaveOutcome::Failed;
  }
  session_.NoteSaved(path);
  KeepWork();
  ShowStatus();
  return SaveOutcome::Saved;
}

void MDIForm1::Print() {
  if (!AskAboutStresses()) return;
  const Answer answer = doors_.messages.AskYesNo(this, QStringLiteral("Print results?"),
                                                 QStringLiteral("TELMARION print"));
  if (answer != Answer::Yes) return;
  const std::unique_ptr<PrintTarget> target =
      doors_.printers.AskPrinter(this, Print::kTitle.toString(), doors_.locale);
  if (!target) return;
  const Print::Case printed = {session_.Record(), shownResults_, doors_.locale};
  const QString trouble = Print::PrintCase(*target, printed, doors_.today());
  if (!trouble.isEmpty()) doors_.messages.ShowError(this, trouble, QStringLiteral("Error"));
}

void MDIForm1::Change() {
  if (!form_) LoadForm();
  if (session_.HasCase()) {
    form_->SetEntries(Vse::EntriesOf(session_.Record().data, doors_.locale, form_->Entries()));
    formIsMeasured_ = false;
  }
  session_.NoteChange();
  ShowForm();
}

void MDIForm1::LoadView3D() {
  if (view3d_) return;
  view3d_ = std::make_unique<FormGula>(HeadWindowNeeds{
      [this] { return HeadCaseOf(session_.Record(), shownResults_[Sila::Result::ThetaPol]); },
      doors_.messages, doors_.files, doors_.locale});
  view3d_->setAttribute(Qt::WA_QuitOnClose, false);  // it goes with the main window
}

void MDIForm1::View3D() {
  LoadView3D();
  view3d_->show();
  view3d_->raise();
  view3d_->activateWindow();
}

void MDIForm1::HowSure() {
  if (!sure_) {
    sure_ = std::make_unique<UncertaintyWindow>(
        UncertaintyNeeds{doors_.messages, doors_.printers, settings_, doors_.today,
                         [this] { ShowHelp(QStringLiteral("uncertainty")); }, doors_.locale});
    sure_->ShowCase(session_.Record().data);
  }
  sure_->show();
  sure_->raise();
  sure_->activateWindow();
}

void MDIForm1::ShowHelp(const QString& topic) {
  if (!help_) {
    help_ = HelpWindow::Open(doors_.helpFolders, doors_.messages, this);
    if (!help_) return;
  }
  help_->ShowTopic(topic);
}

void MDIForm1::Help() {
  ShowHelp(session_.HasCase() ? QStringLiteral("results") : QStringLiteral("first-case"));
}

void MDIForm1::About() {
  auto* about = new Form3(this);
  about->setAttribute(Qt::WA_DeleteOnClose);
  about->show();
}

void MDIForm1::Exit() {
  if (session_.NeedsSaving()) {
    const Answer answer =
        doors_.messages.AskYesNoCancel(this, kSaveQuestion.toString(), kEndTitle.toString());
    if (answer == Answer::Cancel) return;
    if (answer == Answer::Yes && SaveCase() != SaveOutcome::Saved) return;
  }
  ending_ = true;
  close();
}

// The close box asks without Cancel, deliberately: a cancelled file dialog ends the program as
// well. A failed write keeps it, and so does a save that the user thought better of: the case would
// be lost against the user's word.
void MDIForm1::closeEvent(QCloseEvent* event) {
  if (!ending_ && session_.NeedsSaving()) {
    const Answer answer =
        doors_.messages.AskYesNo(this, kSaveQuestion.toString(), kEndTitle.toString());
    const SaveOutcome outcome = answer == Answer::Yes ? SaveCase() : SaveOutcome::Cancelled;
    if (outcome == SaveOutcome::Failed || outcome == SaveOutcome::Declined) {
      event->ignore();
      return;
    }
  }
  ending_ = true;
  KeptWork left;
  left.marks = MarksToKeep();  // nothing else saves them
  if (!systemEnds_) recovery_.Keep(left);
  QMainWindow::closeEvent(event);
  QApplication::closeAllWindows();
}

QString MDIForm1::ProposedFileName() const {
  return SafeFileName(Vse::PatientTextsOf(session_.Record().data.patient).name) +
         QStringLiteral(".txt");
}
