// The case form: what a person types about one hip. It checks single entries and points out on its
// picture what a box means; what OK does with the entries is up to its listener.
#pragma once

#include <QDialog>
#include <QList>
#include <QLocale>
#include <QString>
#include <QTimer>
#include <optional>

#include "case/case_entries.h"
#include "case/entry_check.h"
#include "caseform/case_form_controls.h"

class EntryFocus;
class MessageDoor;

// Modal. Cancel, Escape and the close box hide it (signal `rejected`); it keeps its entries until
// it is destroyed, and a new one has the proposed entries. Control characters never enter a box of
// one line.
class Form1 : public QDialog {
  Q_OBJECT

 public:
  // `messages` must outlive the form. `locale` says which dates are valid; numbers are read the
  // same way in every locale.
  Form1(MessageDoor& messages, const QLocale& locale, QWidget* parent = nullptr);
  Form1(const Form1&) = delete;
  Form1& operator=(const Form1&) = delete;
  ~Form1() override;

  // The entries as typed. A patient's box that holds nothing but blanks counts as empty, and so
  // does the weight box while it holds the assumed weight.
  CaseEntries Entries() const;

  // Another case: the weight is not counted as unknown any more. Units must be of the box's list.
  // Checks nothing, and drops the check of a box just left.
  void SetEntries(const CaseEntries& entries);

  // A confirmation found the weight box empty: writes the assumed weight into it, and counts the
  // weight as unknown, also one that is typed later. Cancel takes both back.
  void AssumeBodyWeight();

  bool weightUnknown() const { return weightUnknown_; }
  void SetWeightUnknown(bool unknown);

  // What the user has to know of the weight while the form is open; mostly empty.
  QString WeightNotice() const;

  // A typed number. A refused one gives nothing, sets `inputError` and shows "numeric value
  // expected"; a number clears `inputError`. The boxes are left as they are.
  std::optional<double> ParseNumber(const QString& text);

  // The last number was refused.
  bool inputError() const { return inputError_; }

  // A check failed since the last BeginConfirmation().
  bool entryError() const { return entryError_; }

  // Clears `entryError` and the checks that are still to come from leaving a box.
  void BeginConfirmation();

  // Shows what the check of the entries found: "numeric value expected", "wrong angle", "wrong
  // date". Sets `entryError`.
  void ShowFault(const Vse::Fault& fault);

  void reject() override;

 signals:
  // OK, Enter, or Control and Enter in the comments. The form stays open.
  void OkPressed();

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void ConnectControls();
  void WatchEntries();
  void PressOk();
  void ShowPicture(bool shown);
  void SetHighlighted(const QWidget* box, bool highlighted);
  void ScheduleCheck(QWidget* box);
  void RunScheduledChecks();
  void CheckLeftBox(const QWidget* box);
  void DropScheduledChecks();
  void CheckDateOfBirth();
  void ShowError(const QString& text);

  MessageDoor& messages_;
  QLocale locale_;
  CaseFormControls controls_;
  EntryFocus* focus_;
  QList<QWidget*> leftBoxes_;  // to be checked once the focus has moved
  QTimer checkTimer_;
  bool checking_ = false;
  bool weightUnknown_ = false;  // what the record takes over when a confirmation succeeds
  bool weightAssumed_ = false;  // the number in the weight box is the program's
  bool inputError_ = false;
  bool entryError_ = false;
};
