// From a radiograph to the case form: the measuring window, and a picture that is dropped on the
// main window.
#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>

#include "app/main_window.h"
#include "case/case_conversion.h"

namespace {

// One file of this computer; whether it is a picture is found out when it is read.
QString FileIn(const QMimeData& dropped) {
  const QList<QUrl> urls = dropped.urls();
  return urls.size() == 1 && urls[0].isLocalFile() ? urls[0].toLocalFile() : QString();
}

bool IsSameName(const QString& a, const QString& b) {
  return a.simplified().compare(b.simplified(), Qt::CaseInsensitive) == 0;
}

}  // namespace

void MDIForm1::LoadMeasuring() {
  if (measuring_) return;
  measuring_ = std::make_unique<Measuring::MeasuringWindow>(Measuring::MeasuringNeeds{
      doors_.messages, doors_.files, doors_.printers, settings_, doors_.radiographs, doors_.today,
      [this] { ShowHelp(QStringLiteral("measuring")); },
      [this](const CaseEntries& measured) { UseMeasured(measured); }, [this] { KeepWork(); },
      doors_.locale});
}

void MDIForm1::Measure() {
  LoadMeasuring();
  measuring_->show();
  measuring_->raise();
  measuring_->activateWindow();
}

void MDIForm1::MeasureOn(const QString& path) {
  Measure();
  measuring_->OpenPicture(path);
}

// The measurements are those of a picture, and the case on screen may be another patient's.
bool MDIForm1::AgreesToUse(const CaseEntries& measured) {
  using Answer = MessageDoor::Answer;
  if (session_.NeedsSaving()) {
    const Answer answer = doors_.messages.AskYesNoCancel(
        measuring_.get(), QStringLiteral("Do you want to save data ?"),
        QStringLiteral("TELMARION New"));
    if (answer == Answer::Cancel) return false;
    if (answer == Answer::Yes && SaveCase() != SaveOutcome::Saved) return false;
  }
  const QString name = Vse::ComposeName(measured.surname, measured.firstName);
  const QString& onScreen = session_.Record().data.patient.name;
  if (name.isEmpty() || onScreen.isEmpty() || IsSameName(name, onScreen)) return true;
  const QString question = QStringLiteral(
                               "The case on screen is that of %1, the radiograph that of %2. "
                               "Open a new case with these measurements?")
                               .arg(onScreen.simplified(), name.simplified());
  return doors_.messages.WarnYesNo(measuring_.get(), question, QStringLiteral("TELMARION New")) ==
         Answer::Yes;
}

void MDIForm1::UseMeasured(const CaseEntries& measured) {
  if (!AgreesToUse(measured)) return;
  LoadForm();
  session_.NoteNew();
  form_->SetEntries(measured);
  formIsMeasured_ = true;
  activateWindow();
  ShowForm();
  shownEntries_ = {};  // all of it is to be kept when the system ends the program
}

QJsonObject MDIForm1::MarksToKeep() const {
  return measuring_ ? measuring_->WorkToKeep() : QJsonObject();
}

void MDIForm1::GoOnWithMarks(const QJsonObject& marks) {
  Measure();
  measuring_->GoOnWith(marks);
}

void MDIForm1::dragEnterEvent(QDragEnterEvent* event) {
  if (!FileIn(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

// Never as a move, after which the other program may delete the file; and it is not kept waiting
// for an answer of the user.
void MDIForm1::dropEvent(QDropEvent* event) {
  const QString path = FileIn(*event->mimeData());
  if (path.isEmpty()) return;
  event->setDropAction(Qt::CopyAction);
  event->accept();
  QMetaObject::invokeMethod(
      this, [this, path] { MeasureOn(path); }, Qt::QueuedConnection);
}
