// The one case of the running program, the file in use, and whether the case needs saving.
#pragma once

#include <QString>
#include <optional>

#include "case/case_record.h"

class CaseSession {
 public:
  const CaseRecord& Record() const { return record_; }

  // False until the first confirmation whose checks have passed: there is nothing to save or print.
  bool HasCase() const { return hasCase_; }

  // The two flags of the save prompts: the case was saved; a file was read into the form.
  bool saveOK() const { return saveOK_; }
  bool openOK() const { return openOK_; }

  // Of the case in the record. A file that was read counts for it from its confirmation on: when
  // the form is cancelled instead, the record still holds the case before.
  bool NeedsSaving() const { return !saveOK_ && !isAsRead_; }

  // The case file that the case was saved to or read from last; empty for a new case.
  const QString& FileInUse() const { return origin_.file; }

  // A case file has been written from the record.
  void NoteSaved(const QString& path);

  // A case file has been read into the form; `read` is what a confirmation without a change would
  // hold, or nothing when the entries cannot be confirmed as they are. The record is still that
  // of the case before, and so is the file in use, until a confirmation.
  void NoteRead(const QString& path, std::optional<CaseData> read);

  // New has opened the empty form: a confirmation begins a case without a file.
  void NoteNew();

  // Change has opened the form for the present case: a confirmation keeps the file in use.
  void NoteChange();

  // Takes up the unsaved case of an earlier session, which came from `path`, or from nowhere when
  // that is empty.
  void Recover(CaseData data, const QString& path);

  // Takes a confirmed case as a whole. Unless it is the one last read or saved, it needs saving.
  void Confirm(CaseData data);

  // Runs the model on the record.
  Sila::HipOutcome Compute() { return Vse::RunModel(record_); }

 private:
  CaseRecord record_;
  bool hasCase_ = false;
  bool saveOK_ = true;
  bool openOK_ = false;
  bool isAsRead_ = false;  // the record holds what the file that was read holds

  // The file of a case and its contents. A new case has neither.
  struct Origin {
    QString file;
    std::optional<CaseData> data;
  };
  Origin origin_;        // of the case in the record
  Origin originInForm_;  // of the case in the form; a confirmation makes it the record's
  bool formIsRead_ = false;
};
