// The window "How sure is this case": the case on screen with the user's own reading errors, and
// what they make of its results.
#pragma once

#include <QDate>
#include <QLocale>
#include <QMainWindow>
#include <functional>
#include <optional>

#include "app/uncertainty_controls.h"
#include "case/case_record.h"
#include "platform/message_door.h"
#include "platform/print_dialog.h"
#include "platform/settings_file.h"
#include "uncertainty/points.h"

// What the window needs of the rest of the program. All of it outlives the window.
struct UncertaintyNeeds {
  MessageDoor& messages;
  PrintDialog& printers;
  const SettingsFile& settings;
  std::function<QDate()> today;
  std::function<void()> showHelp;  // at the page on this window
  QLocale locale;
};

class UncertaintyWindow final : public QMainWindow {
  Q_OBJECT
 public:
  explicit UncertaintyWindow(UncertaintyNeeds needs, QWidget* parent = nullptr);
  UncertaintyWindow(const UncertaintyWindow&) = delete;
  UncertaintyWindow& operator=(const UncertaintyWindow&) = delete;
  ~UncertaintyWindow() override;

  // Takes a case up, and goes with the one before. A magnification that was typed stays only with
  // its picture.
  void ShowCase(const CaseData& shown);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void Connect();
  void ConnectKeys();

  // After every change: check, propagate, show.
  void Recompute();
  void ShowResults();
  void ShowBudget();
  Sila::Result ChosenResult() const;
  bool WeightKnown() const { return data_.inputs.bodyWeight.has_value(); }

  void KeepEntries();
  void CopyTable();
  void PrintPage();

  UncertaintyNeeds needs_;
  Uncertainty::Points points_;
  UncertaintyControls controls_;
  CaseData data_;
  CheckedErrors checked_;
  std::optional<Uncertainty::HipUncertainty> hip_;  // none while an entry is wrong
};
