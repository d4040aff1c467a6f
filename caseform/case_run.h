// From OK on the case form to the results in the window: checks and conversion, patient panel,
// model, results and diagram.
#pragma once

#include <QLocale>

#include "case/case_entries.h"
#include "case/case_record.h"
#include "caseform/case_form.h"
#include "caseform/case_window.h"
#include "platform/message_door.h"

// What a run works on. All of it belongs to the caller.
struct CaseRun {
  CaseRecord& record;
  CaseWindow& window;
  MessageDoor& messages;
  QLocale locale;
};

// Checks and converts every entry. When a check fails, its message has been shown, the form stays
// open with its entries and the record is as it was. Otherwise fills the record, hides the form,
// tells the window by CaseConfirmed, fills the panels and runs the model.
void ConfirmCase(Form1& form, const CaseRun& run);

// Takes up a record that was confirmed in an earlier session, as the end of its confirmation did:
// panels, model, results and diagram.
void ShowCase(const CaseRun& run);

// Shows the record's patient in the panel. Name, date of birth, body weight and comments are
// disabled where `entries`, which the record was made of, has nothing and a placeholder stands in.
// "Unknown" or "No" that was typed is no placeholder.
void CopyPatientToPanel(const CaseEntries& entries, const CaseRun& run);

// Runs the model on the record. Gives true when stresses were computed and shown; otherwise the
// results panel keeps what it showed, grey, the captions say that there are no results, and the
// reason has been shown.
bool ComputeAll(const CaseRun& run);

// Shows results and diagram of the record.
void ShowResults(const CaseRun& run);
