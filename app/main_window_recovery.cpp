// How the main window keeps work for the next start and takes it up again.
#include <optional>

#include "app/main_window.h"

namespace {

constexpr QStringView kQuestion =
    u"A case was not saved when TELMARION ended. It was kept.\n"
    u"Continue with it?\n\n"
    u"\"No\" discards it. \"Cancel\" keeps it for another start.";
constexpr QStringView kMarksQuestion =
    u"Marks on a radiograph were not used when TELMARION ended. They were kept.\n"
    u"Continue with them?\n\n"
    u"\"No\" discards them. \"Cancel\" keeps them for another start.";
constexpr QStringView kTitle = u"TELMARION Start";

}  // namespace

void MDIForm1::OfferKeptWork() {
  if (!recovery_.IsPending()) return;
  const QStringView question = recovery_.IsMarksOnly() ? kMarksQuestion : kQuestion;
  const MessageDoor::Answer answer =
      doors_.messages.AskYesNoCancel(this, question.toString(), kTitle.toString());
  if (systemEnds_) return;
  if (answer == MessageDoor::Answer::No) return recovery_.Discard();
  if (answer == MessageDoor::Answer::Cancel) return recovery_.Leave();
  QString trouble;
  const std::optional<KeptWork> work = recovery_.Read(trouble);
  if (!work) return doors_.messages.ShowError(this, trouble, QStringLiteral("Error"));
  GoOnWith(*work);
  recovery_.TakeOver();  // not before, since a refusal may still be read when the system ends
}

void MDIForm1::GoOnWith(const KeptWork& work) {
  if (work.data) GoOnWithCase(work);
  if (!work.marks.isEmpty()) GoOnWithMarks(work.marks);
  if (work.entries) GoOnWithForm(work);  // last: it is in front of all other windows
  ShowStatus();
}

// A refused case is shown beside the results of the case before.
void MDIForm1::GoOnWithCase(const KeptWork& work) {
  EnableCase();
  if (work.computedBefore) {
    session_.Recover(*work.computedBefore, work.file);
    ComputeAll();
  }
  session_.Recover(*work.data, work.file);
  ShowCase();
}

void MDIForm1::GoOnWithForm(const KeptWork& work) {
  LoadForm();
  session_.NoteNew();
  const CaseEntries proposed = form_->Entries();
  form_->SetEntries(*work.entries);
  form_->SetWeightUnknown(work.weightUnknownInForm);
  formIsMeasured_ = work.formIsMeasured;
  ShowForm();
  shownEntries_ = proposed;  // what was typed before is to be kept again
}

KeptWork MDIForm1::WorkToKeep() const {
  KeptWork work;
  if (session_.NeedsSaving()) {
    work.data = session_.Record().data;
    work.file = session_.FileInUse();
    const bool refused = session_.Record().stresses == Stresses::OfCaseBefore;
    if (refused) work.computedBefore = computed_;
  }
  if (form_ && form_->isVisible() && form_->Entries() != shownEntries_) {
    work.entries = form_->Entries();
    work.weightUnknownInForm = form_->weightUnknown();
    work.formIsMeasured = formIsMeasured_;
  }
  work.marks = MarksToKeep();
  return work;
}

void MDIForm1::KeepWork() {
  if (systemEnds_ || ending_) return;
  cannotKeep_ = !recovery_.Keep(WorkToKeep());
  ShowStatus();
}

void MDIForm1::EndForSystem() {
  KeepWork();
  systemEnds_ = true;
}
