// The measuring window: a radiograph on the left, what is marked and measured on it on the right.
#pragma once

#include <QDate>
#include <QJsonObject>
#include <QLocale>
#include <QMainWindow>
#include <QShortcut>
#include <QTimer>
#include <QUndoStack>
#include <functional>
#include <memory>
#include <optional>

#include "measuring/findings.h"
#include "measuring/measured_page.h"
#include "measuring/measuring_controls.h"
#include "measuring/picture_loader.h"
#include "measuring/radiograph_view.h"
#include "platform/file_dialog.h"
#include "platform/message_door.h"
#include "platform/print_dialog.h"
#include "platform/settings_file.h"
#include "uncertainty/points.h"

namespace Measuring {

// What the window needs of the rest of the program. All of it outlives the window.
struct MeasuringNeeds {
  MessageDoor& messages;
  FileDialog& files;
  PrintDialog& printers;
  const SettingsFile& settings;
  Radiography::RadiographReader reader;
  std::function<QDate()> today;
  std::function<void()> showHelp;  // at the page on this window
  // Opens the case form with these entries, unless the user thinks better of it.
  std::function<void(const CaseEntries&)> use;
  std::function<void()> workChanged;  // what WorkToKeep gives is another
  QLocale locale;
};

class MeasuringWindow final : public QMainWindow {
  Q_OBJECT
 public:
  explicit MeasuringWindow(MeasuringNeeds needs, QWidget* parent = nullptr);
  MeasuringWindow(const MeasuringWindow&) = delete;
  MeasuringWindow& operator=(const MeasuringWindow&) = delete;
  ~MeasuringWindow() override;

  // Asks for a picture, or takes the one at `path`, and reads it beside the windows. What is shown
  // stays until the new picture is there; when it cannot be read, a message says why.
  void AskPicture();
  void OpenPicture(const QString& path);
  bool IsReading() const { return loader_.IsBusy(); }

  // The marks that were not used yet, with the picture they belong to; empty when there are none.
  // GoOnWith reads the picture again and takes the marks up.
  QJsonObject WorkToKeep() const;
  void GoOnWith(const QJsonObject& work);
  // What was handed over last has become a case.
  void NoteUsed();

  const Draft& Marked() const { return draft_; }
  const Findings& Found() const { return found_; }
  RadiographView& View() { return *view_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Set-up.
  void BuildContent();
  void BuildMenus();
  void BuildEditMenu();
  void BuildViewMenu();
  void BuildStatusLine();
  void ConnectView();
  void ConnectControls();
  QAction* Add(QMenu* menu, const char* name, const QString& caption, const QKeySequence& keys,
               const std::function<void()>& act);

  // Pictures.
  bool GivesMarksUp();
  void Load(const QString& path, bool takesWorkUp);
  void TakePicture(const QString& path, const std::shared_ptr<Radiography::ReadResult>& result);
  void ShowPicture(const QString& path, std::shared_ptr<const Radiography::Radiograph> picture);
  void FillPresets();

  // Marks.
  void Change(const Draft& after, int gesture);
  void TakeDraft(const Draft& draft);
  void AddPoint(MarkKind kind, Landmarks::PixelPlace place);
  void MovePoint(MarkKind kind, std::size_t index, Landmarks::PixelPlace place, bool isDone);
  void RemovePoint(MarkKind kind, std::size_t index);
  void RemoveMark();
  void SnapCircle(MarkKind kind, Landmarks::PixelPlace centre, Landmarks::PixelPlace edge);
  void SnapCurrent();
  void PutSnapped(MarkKind kind, const Landmarks::Circle& rough);
  void SetCurrent(MarkKind kind);
  void GoToNextMark();

  // After every change: find and show.
  void Refresh();
  void ShowDraft();
  void ShowScale();
  void ShowFindings();
  void ShowDiagram();
  void ShowBudget();
  void ShowErrorFaults();
  void ShowStatus();
  void ShowPointer(std::optional<Landmarks::PixelPlace> place);
  void EnableCommands();
  CirclesOnPicture Circles() const;
  ErrorTexts TypedErrors() const;
  void KeepErrors();

  // What becomes of it.
  void UseThese();
  void CopyTable();
  void SavePicture();
  QString WriteMarkedPicture(const QString& path) const;
  void PrintPage();
  CaseEntries EntriesForForm() const;
  MeasuredPage Page() const;

  MeasuringNeeds needs_;
  Uncertainty::Points points_;
  PictureLoader loader_;
  QUndoStack undo_;
  MeasuringControls controls_;
  RadiographView* view_ = nullptr;
  QMenu* presets_ = nullptr;
  QList<QAction*> pictureCommands_;  // of no use before there is a picture
  QAction* inverted_ = nullptr;
  QAction* flipped_ = nullptr;
  QShortcut* cancelReading_ = nullptr;  // of use while a picture is read
  QLabel* pointerLabel_ = nullptr;
  QLabel* viewLabel_ = nullptr;
  QTimer keepTimer_;  // so that a drag does not write a file at every move

  QString path_;  // of the picture that is shown
  std::shared_ptr<const Radiography::Radiograph> picture_;
  PictureFacts facts_;
  Draft draft_;
  Draft handedOver_;          // what the form has been given of this picture
  Draft used_;                // what became a case of it
  Draft toGo_;                // what may go for the picture that is read
  QJsonObject workToTakeUp_;  // while its picture is read, and after that failed
  bool takesWorkUp_ = false;  // the picture that is read is that of this work
  bool isWorkUsed_ = false;   // it became a case meanwhile
  MarkKind current_ = MarkKind::Head;
  int gesture_ = kEntryCount;  // of the next step; the boxes have the numbers below
  CheckedErrors errors_;
  Findings found_;
};

}  // namespace Measuring
