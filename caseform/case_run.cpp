// Confirmation, computation and display of one case.
#include "caseform/case_run.h"

#include <optional>

#include "case/case_conversion.h"
#include "case/number_text.h"
#include "case/result_texts.h"
#include "diagram/case_diagram.h"

namespace {

constexpr QStringView kNoAnswer = u"In this range of input data you could not use this model";

// Stands where the captions of a computed case stand.
constexpr QStringView kNoResults =
    u"No results for this case: in this range of input data you could not use this model";

// The body weight in kg. An empty box is an unknown weight: the model then takes 60 kg.
std::optional<double> ConfirmBodyWeight(Form1& form, const QString& text) {
  if (!text.isEmpty()) return form.ConfirmNumber(text);
  form.AssumeBodyWeight();
  return Vse::kAssumedBodyWeight;
}

// Every entry in the order of the checks, in held units. Each check that fails has its own message.
std::optional<CaseData> CheckEntries(Form1& form) {
  const CaseEntries entries = form.Entries();
  CaseData data;
  form.BeginConfirmation();
  for (std::size_t i = 0; i < kMeasureCount; ++i) {
    const auto measure = static_cast<Measure>(i);
    const std::optional<double> held = form.ConfirmMeasure(measure, entries.measures[i]);
    Vse::SetValue(data.geometry, measure, held.value_or(0.0));
  }
  data.bodyWeight = ConfirmBodyWeight(form, entries.bodyWeight).value_or(0.0);
  form.CheckDateOfBirth(entries.dateOfBirth);
  if (form.entryError()) return std::nullopt;
  data.weightUnknown = form.weightUnknown();
  data.patient = Vse::PatientTextsOf(entries, data.weightUnknown);
  return data;
}

QStringList Captions(const CaseRecord& record, const QLocale& locale) {
  constexpr double kCentimetresPerMetre = 100.0;
  const Geometry& g = record.geometry;
  const QString edge = Vse::NumberText(Vse::RadiansToDegrees(g.thetaCE), locale);
  const QString radius = Vse::NumberText(g.headRadius * kCentimetresPerMetre, locale);
  return {QStringLiteral("Theta-CE = %1 °").arg(edge),
          QStringLiteral("Radius of femoral head = %1 cm").arg(radius),
          QStringLiteral("Theta-R = %1 °").arg(Vse::ResultText(record.results.thetaR, locale))};
}

void TellRefusal(Sila::HipOutcome outcome, const CaseRun& run) {
  QWidget* window = run.window.Widget();
  if (outcome == Sila::HipOutcome::DivisionByZero) {
    run.messages.ShowError(window, QStringLiteral("Division by zero"), QStringLiteral("Error"));
  } else {
    run.messages.ShowError(window, kNoAnswer.toString(), QStringLiteral("Sorry"));
  }
}

void BeginCase(const CaseRun& run) {
  run.window.EnablePanels();
  run.window.MarkCaseToShow();
}

void FillWindow(const CaseEntries& entries, const CaseRun& run) {
  run.window.ClearCharts();
  CopyPatientToPanel(entries, run);
  ComputeAll(run);
}

}  // namespace

void ConfirmCase(Form1& form, const CaseRun& run) {
  const std::optional<CaseData> data = CheckEntries(form);
  if (!data) return;
  static_cast<CaseData&>(run.record) = *data;
  BeginCase(run);
  form.hide();
  run.window.CaseConfirmed();
  FillWindow(form.Entries(), run);
}

void ShowCase(const CaseRun& run) {
  BeginCase(run);
  FillWindow(Vse::EntriesOf(run.record, run.locale, {}), run);
}

void CopyPatientToPanel(const CaseEntries& entries, const CaseRun& run) {
  const PatientTexts& patient = run.record.patient;
  const auto set = [&](QString PatientTexts::*box, bool enabled = true) {
    run.window.SetPatientBox(box, patient.*box, enabled);
  };
  set(&PatientTexts::name, patient.name != Vse::kUnknown);  // one that was typed has a blank
  set(&PatientTexts::sex);
  set(&PatientTexts::dateOfBirth, !entries.dateOfBirth.isEmpty());
  set(&PatientTexts::bodyWeight, !run.record.weightUnknown);
  set(&PatientTexts::hip);
  set(&PatientTexts::comments, !entries.comments.isEmpty());
}

bool ComputeAll(const CaseRun& run) {
  const Sila::HipOutcome outcome = Vse::RunModel(run.record);
  if (outcome == Sila::HipOutcome::Ok) {
    ShowResults(run);
    return true;
  }
  run.window.SetCaptions({kNoResults.toString()});
  run.window.RefuseResults();
  TellRefusal(outcome, run);
  return false;
}

void ShowResults(const CaseRun& run) {
  const CaseRecord& record = run.record;
  run.window.SetResults(Vse::ResultTextsOf(record, run.locale));
  Vizual::DrawCaseDiagram(record, !record.weightUnknown, run.window.Diagram());
  run.window.SetCaptions(Captions(record, run.locale));
}
