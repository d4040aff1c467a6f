// The main window: the commands that act on the whole case, the panels, the diagram.
#pragma once

#include <QDate>
#include <QLabel>
#include <QLocale>
#include <QMainWindow>
#include <functional>
#include <memory>
#include <vector>

#include "app/case_session.h"
#include "app/help_window.h"
#include "app/panels.h"
#include "app/recovery_file.h"
#include "app/uncertainty_window.h"
#include "caseform/case_form.h"
#include "diagram/diagram_view.h"
#include "measuring/measuring_window.h"
#include "platform/file_dialog.h"
#include "platform/message_door.h"
#include "platform/print_dialog.h"
#include "platform/settings_file.h"
#include "view3d/head_window.h"

// What the window needs from the world around it; the seams that tests replace.
struct AppDoors {
  MessageDoor& messages;
  FileDialog& files;
  PrintDialog& printers;
  std::function<QDate()> today;
  QLocale locale;
  QStringList helpFolders;      // where the help file may lie, see HelpFolders
  QString recoveryFolder = {};  // for the work that is not saved yet; empty: it is not kept
  QString settingsFile = {};    // of what the user has set; empty: it is not kept
  Radiography::RadiographReader radiographs = {};
};

class MDIForm1 final : public QMainWindow {
  Q_OBJECT
 public:
  explicit MDIForm1(const AppDoors& doors);

  const CaseSession& Session() const { return session_; }

  // The case form while it is loaded; null before New, Open or Change.
  Form1* CaseForm() { return form_.get(); }

  // The 3D view; null before there is a case to show.
  FormGula* HeadView() { return view3d_.get(); }

  // The window on uncertainty; null before it was asked for.
  UncertaintyWindow* SureView() { return sure_.get(); }

  // The measuring window; null before it was asked for.
  Measuring::MeasuringWindow* Measuring() { return measuring_.get(); }

  // Asks, when an earlier session ended without saving, whether to go on with its work.
  void OfferKeptWork();

  // Keeps an unsaved case, and the entries of an open form, for the next start. Both of them saved
  // or given up, nothing is kept any more.
  void KeepWork();

  // The system ends the program: what is kept now stays, whatever the closing windows still do.
  void EndForSystem();

  // The commands.
  void New();
  void Open();
  void Save();
  void Print();
  void Change();
  void View3D();
  void HowSure();
  void Measure();
  void MeasureOn(const QString& path);  // the radiograph in this file
  void Help();
  void About();
  void Exit();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  // Declined: the stresses are not the case's own, and the user would rather not save them.
  enum class SaveOutcome { Saved, Declined, Cancelled, Failed };

  // Set-up.
  void BuildContent();
  void BuildMenus();
  void BuildToolsMenu();
  void BuildToolBar();
  QAction* AddCommand(const char* name, const char* caption, void (MDIForm1::*command)());

  // The case form.
  void LoadForm();
  void ShowForm();
  void CancelForm();

  // From OK to the results. ComputeAll returns whether stresses were computed and shown; otherwise
  // the reason has been shown, and the results panel keeps what it showed, grey.
  void ConfirmCase();
  void ShowFaults(const std::vector<Vse::Fault>& faults, bool assumeWeight);
  void EnableCase();
  void ShowCase();
  void CopyPatientToPanel();
  bool ComputeAll();
  void ShowResults();
  void ClearCharts();
  void SetCaptions(const QStringList& captions);

  // Kept work.
  KeptWork WorkToKeep() const;
  void GoOnWith(const KeptWork& work);
  void GoOnWithCase(const KeptWork& work);
  void GoOnWithForm(const KeptWork& work);

  // Measuring on a radiograph.
  void LoadMeasuring();
  void UseMeasured(const CaseEntries& measured);
  bool AgreesToUse(const CaseEntries& measured);
  QJsonObject MarksToKeep() const;
  void GoOnWithMarks(const QJsonObject& marks);

  void LoadView3D();
  void ShowHelp(const QString& topic);
  SaveOutcome SaveCase();
  bool AskAboutStresses();
  QString ProposedFileName() const;

  // The status line.
  void BuildStatusLine();
  void ShowStatus();
  QString Notice() const;

  AppDoors doors_;
  CaseSession session_;
  std::unique_ptr<Form1> form_;
  std::unique_ptr<FormGula> view3d_;  // from the first computed case on
  std::unique_ptr<HelpWindow> help_;
  SettingsFile settings_;
  std::unique_ptr<UncertaintyWindow> sure_;
  std::unique_ptr<Measuring::MeasuringWindow> measuring_;
  CaseEntries shownEntries_;     // of the form, before anything was typed
  bool formIsMeasured_ = false;  // it came up with the entries of the measuring window
  bool ending_ = false;          // Exit has asked already
  bool systemEnds_ = false;
  RecoveryFile recovery_;
  bool cannotKeep_ = false;  // the last try to keep work failed

  ResultTexts shownResults_;  // what the results panel shows
  CaseData computed_;         // whose results these are, without the patient

  PatientPanel* patient_ = nullptr;
  ResultsPanel* results_ = nullptr;
  Vizual::DiagramView* diagram_ = nullptr;
  Picture background_;  // of the diagram, restored before each drawing
  QLabel* captions_ = nullptr;
  QLabel* fileLabel_ = nullptr;
  QLabel* unsavedLabel_ = nullptr;
  QLabel* noticeLabel_ = nullptr;
  QList<QAction*> caseCommands_;  // of no use before there is a case
};
