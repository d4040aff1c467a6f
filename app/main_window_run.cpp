// From OK on the case form to the results in the window: check, record, patient panel, model,
// results and diagram.
#include "app/main_window.h"
#include "case/case_texts.h"
#include "case/entry_check.h"
#include "diagram/case_diagram.h"

namespace {

constexpr QStringView kNoAnswer = u"In this range of input data you could not use this model";

// Shown in place of the captions of a computed case.
constexpr QStringView kNoResults =
    u"No results for this case: in this range of input data you could not use this model";

}  // namespace

// Each fault has its own message, in the order of the boxes. An empty weight box gets the assumed
// weight between those of the numbers and that of the date.
void MDIForm1::ShowFaults(const std::vector<Vse::Fault>& faults, bool assumeWeight) {
  form_->BeginConfirmation();
  for (const Vse::Fault& fault : faults) {
    if (fault.measurement) form_->ShowFault(fault);
  }
  if (assumeWeight) form_->AssumeBodyWeight();
  for (const Vse::Fault& fault : faults) {
    if (!fault.measurement) form_->ShowFault(fault);
  }
}

void MDIForm1::ConfirmCase() {
  if (!form_->isVisible()) return;  // a second press that came before the form was gone
  const CaseEntries entries = form_->Entries();
  const Vse::CheckedCase checked =
      Vse::CheckEntries(entries, form_->weightUnknown(), doors_.locale);
  ShowFaults(checked.faults, entries.bodyWeight.isEmpty());
  if (checked.data) {
    session_.Confirm(*checked.data);
    EnableCase();
    form_->hide();
    if (formIsMeasured_ && measuring_) measuring_->NoteUsed();
    KeepWork();  // what follows may wait for the user
    ShowCase();
  }
  ShowStatus();
}

void MDIForm1::EnableCase() {
  patient_->setEnabled(true);
  patient_->EnableBoxes();
  results_->setEnabled(true);
  for (QAction* command : std::as_const(caseCommands_)) command->setEnabled(true);
}

void MDIForm1::ShowCase() {
  ClearCharts();
  CopyPatientToPanel();
  if (sure_) sure_->ShowCase(session_.Record().data);
  ComputeAll();
}

void MDIForm1::CopyPatientToPanel() {
  patient_->Show(session_.Record().data.patient);
}

bool MDIForm1::ComputeAll() {
  const Sila::HipOutcome outcome = session_.Compute();
  if (outcome == Sila::HipOutcome::Ok) {
    ShowResults();
    return true;
  }
  SetCaptions({kNoResults.toString()});
  results_->EnableBoxes(false);
  KeepWork();  // before the user reads: what is kept must not take these stresses for the case's
  if (outcome == Sila::HipOutcome::DivisionByZero) {
    doors_.messages.ShowError(this, QStringLiteral("Division by zero"), QStringLiteral("Error"));
  } else {
    doors_.messages.ShowError(this, kNoAnswer.toString(), QStringLiteral("Sorry"));
  }
  return false;
}

void MDIForm1::ShowResults() {
  const CaseRecord& record = session_.Record();
  shownResults_ = Vse::ResultTextsOf(record, doors_.locale);
  computed_ = record.data;
  computed_.patient = {};  // but for the weight, nothing of the patient is needed to compute again
  computed_.patient.bodyWeight = record.data.patient.bodyWeight;
  results_->Show(shownResults_);
  LoadView3D();
  view3d_->CaseComputed();
  Vizual::DrawCaseDiagram(record, !record.data.weightUnknown(), diagram_->Screen());
  diagram_->setAccessibleDescription(Vizual::DiagramWords(record, doors_.locale));
  SetCaptions(Vizual::DiagramCaptions(record, doors_.locale));
}

void MDIForm1::ClearCharts() {
  PictureBox& box = diagram_->Box();
  box.SetPicture(background_);
  box.Cls();
  box.SetDrawStyle(LineStyle::Solid);
  diagram_->Labels() = {};
  SetCaptions({});
  diagram_->setAccessibleDescription(QStringLiteral("Empty."));
}

void MDIForm1::SetCaptions(const QStringList& captions) {
  captions_->setText(captions.join(u'\n'));
  captions_->setAccessibleName(QStringLiteral("Captions of the diagram: ") +
                               captions.join(QStringLiteral(", ")));
}
