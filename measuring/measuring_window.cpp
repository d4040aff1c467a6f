// How the measuring window is laid out, and how pictures come into it.
#include "measuring/measuring_window.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QVBoxLayout>
#include <new>
#include <utility>

#include "case/case_entries.h"
#include "measuring/mark_uncertainty.h"
#include "platform/length_units.h"

namespace Measuring {

namespace {

constexpr QStringView kFilter =
    u"Radiographs (*.dcm;*.dicom;*.ima;*.png;*.jpg;*.jpeg;*.tif;*.tiff;*.bmp)|"
    u"*.dcm;*.dicom;*.ima;*.png;*.jpg;*.jpeg;*.tif;*.tiff;*.bmp|All files (*)|*";
constexpr QStringView kTitle = u"Measure on radiograph";
constexpr QStringView kGiveUp =
    u"The marks on this radiograph have not been used. Discard them and open another?";
constexpr QLatin1String kPath("file");
constexpr QLatin1String kHash("sha256");
constexpr QLatin1String kMarksKey("marks");
constexpr int kKeepDelay = 500;  // ms

QLabel* AddStatusLabel(QStatusBar& bar, const char* name) {
  auto* label = new QLabel;
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);
  bar.addPermanentWidget(label);
  return label;
}

// The same keys undo in the whole window, also while a box has the focus.
bool IsUndoKey(const QKeyEvent& key) {
  return key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo);
}

}  // namespace

MeasuringWindow::MeasuringWindow(MeasuringNeeds needs, QWidget* parent)
    : QMainWindow(parent),
      needs_(std::move(needs)),
      points_(kMarkedHipSources),
      loader_(needs_.reader) {
  setObjectName(QStringLiteral("MeasuringWindow"));
  setWindowTitle(kTitle.toString());
  setAttribute(Qt::WA_QuitOnClose, false);  // it goes with the main window
  BuildContent();
  BuildMenus();
  BuildStatusLine();
  ConnectView();
  ConnectControls();
  const ErrorTexts errors = ErrorTextsFrom(needs_.settings.Section(kErrorSection));
  for (std::size_t i = 0; i < kErrorCount; ++i) controls_.errors[i].box->setText(errors[i]);
  keepTimer_.setSingleShot(true);
  keepTimer_.setInterval(kKeepDelay);
  connect(&keepTimer_, &QTimer::timeout, this, [this] { needs_.workChanged(); });
  connect(&loader_, &PictureLoader::Loaded, this, &MeasuringWindow::TakePicture);
  Refresh();
  SetCurrent(MarkKind::Head);  // chosen in a list that has rows
}

// Boxes and tables that go still speak.
MeasuringWindow::~MeasuringWindow() {
  loader_.Cancel();
  KeepErrors();
  hide();
  for (QWidget* part : findChildren<QWidget*>()) part->disconnect(this);
}

void MeasuringWindow::BuildContent() {
  auto* left = new QWidget;
  auto* strip = new QWidget;
  auto* panel = new QWidget;
  controls_ = MakeMeasuringControls(panel, strip);
  view_ = new RadiographView;
  view_->setObjectName(QStringLiteral("picRadiograph"));
  auto* column = new QVBoxLayout(left);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(view_, 1);
  column->addWidget(strip);
  auto* content = new QWidget;
  auto* row = new QHBoxLayout(content);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(left, 1);
  row->addWidget(panel);
  setCentralWidget(content);
  resize(QSize(1320, 960).boundedTo(screen()->availableSize()));
}

void MeasuringWindow::BuildStatusLine() {
  statusBar()->setObjectName(QStringLiteral("statusBar"));
  pointerLabel_ = AddStatusLabel(*statusBar(), "lblPointer");
  viewLabel_ = AddStatusLabel(*statusBar(), "lblView");
  cancelReading_ = new QShortcut(Qt::Key_Escape, this);
  connect(cancelReading_, &QShortcut::activated, this, [this] {
    loader_.Cancel();
    ShowStatus();
  });
}

QAction* MeasuringWindow::Add(QMenu* menu, const char* name, const QString& caption,
                              const QKeySequence& keys, const std::function<void()>& act) {
  auto* action = new QAction(caption, this);
  action->setObjectName(QString::fromLatin1(name));
  action->setShortcut(keys);
  connect(action, &QAction::triggered, this, act);
  menu->addAction(action);
  return action;
}

void MeasuringWindow::BuildMenus() {
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  Add(file, "mnuOpenPicture", QStringLiteral("&Open radiograph…"), QKeySequence::Open,
      [this] { AskPicture(); });
  pictureCommands_ << Add(file, "mnuSavePicture", QStringLiteral("&Save picture…"),
                          QKeySequence::Save, [this] { SavePicture(); });
  pictureCommands_ << Add(file, "mnuPrintPage", QStringLiteral("&Print…"), QKeySequence::Print,
                          [this] { PrintPage(); });
  Add(file, "mnuClose", QStringLiteral("&Close"), Qt::CTRL | Qt::Key_W, [this] { close(); });
  BuildEditMenu();
  BuildViewMenu();
  QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
  Add(help, "mnuMeasuringHelp", QStringLiteral("&Measuring on a radiograph"), Qt::Key_F1,
      [this] { needs_.showHelp(); });
}

void MeasuringWindow::BuildEditMenu() {
  QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
  QAction* undo = undo_.createUndoAction(this, QStringLiteral("&Undo"));
  QAction* redo = undo_.createRedoAction(this, QStringLiteral("&Redo"));
  undo->setObjectName(QStringLiteral("mnuUndo"));
  redo->setObjectName(QStringLiteral("mnuRedo"));
  undo->setShortcuts(QKeySequence::Undo);
  redo->setShortcuts(QKeySequence::Redo);
  edit->addActions({undo, redo});
  edit->addSeparator();
  pictureCommands_ << Add(edit, "mnuNextMark", QStringLiteral("&Next mark"), Qt::CTRL | Qt::Key_M,
                          [this] { GoToNextMark(); });
  pictureCommands_ << Add(edit, "mnuSnap", QStringLiteral("Sna&p circle to the edge"),
                          Qt::CTRL | Qt::Key_E, [this] { SnapCurrent(); });
  pictureCommands_ << Add(edit, "mnuRemoveMark", QStringLiteral("R&emove mark"),
                          Qt::CTRL | Qt::Key_Delete, [this] { RemoveMark(); });
  edit->addSeparator();
  pictureCommands_ << Add(edit, "mnuCopyTable", QStringLiteral("&Copy table"),
                          Qt::CTRL | Qt::SHIFT | Qt::Key_C, [this] { CopyTable(); });
  pictureCommands_ << Add(edit, "mnuUse", QStringLiteral("Use t&hese"), Qt::CTRL | Qt::Key_Return,
                          [this] { UseThese(); });
}

void MeasuringWindow::BuildViewMenu() {
  QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
  pictureCommands_ << Add(view, "mnuFit", QStringLiteral("&Fit"), Qt::CTRL | Qt::Key_0,
                          [this] { view_->Fit(); });
  pictureCommands_ << Add(view, "mnuOneToOne", QStringLiteral("&1:1"), Qt::CTRL | Qt::Key_1,
                          [this] { view_->OneToOne(); });
  pictureCommands_ << Add(view, "mnuZoomIn", QStringLiteral("Zoom &in"), QKeySequence::ZoomIn,
                          [this] { view_->ZoomIn(); });
  pictureCommands_ << Add(view, "mnuZoomOut", QStringLiteral("Zoom &out"), QKeySequence::ZoomOut,
                          [this] { view_->ZoomOut(); });
  view->addSeparator();
  presets_ = view->addMenu(QStringLiteral("&Window"));
  presets_->setObjectName(QStringLiteral("mnuPresets"));
  inverted_ = Add(view, "mnuInvert", QStringLiteral("In&vert"), Qt::CTRL | Qt::Key_I,
                  [this] { view_->SetInverted(inverted_->isChecked()); });
  flipped_ = Add(view, "mnuFlip", QStringLiteral("Fli&p left and right"), Qt::CTRL | Qt::Key_F,
                 [this] { view_->SetFlipped(flipped_->isChecked()); });
  for (QAction* action : {inverted_, flipped_}) action->setCheckable(true);
  pictureCommands_ << inverted_ << flipped_;
}

void MeasuringWindow::FillPresets() {
  presets_->clear();
  const std::vector<GreyPreset>& presets = view_->Presets();
  for (std::size_t i = 0; i < presets.size(); ++i) {
    connect(presets_->addAction(QString(presets[i].name).replace(u'&', QStringLiteral("&&"))),
            &QAction::triggered, this, [this, i] { view_->UsePreset(i); });
  }
}

bool MeasuringWindow::GivesMarksUp() {
  if (WorkToKeep().isEmpty()) return true;
  return needs_.messages.WarnYesNo(this, kGiveUp.toString(), kTitle.toString()) ==
         MessageDoor::Answer::Yes;
}

void MeasuringWindow::AskPicture() {
  const QString path = needs_.files.AskOpenFileName(this, kFilter.toString());
  if (!path.isEmpty()) OpenPicture(path);
}

void MeasuringWindow::OpenPicture(const QString& path) {
  if (GivesMarksUp()) Load(path, false);
}

// The path is kept with the marks, for a start in another folder.
void MeasuringWindow::Load(const QString& path, bool takesWorkUp) {
  takesWorkUp_ = takesWorkUp;
  toGo_ = draft_;
  loader_.Load(QFileInfo(path).absoluteFilePath());
  ShowStatus();
}

void MeasuringWindow::GoOnWith(const QJsonObject& work) {
  workToTakeUp_ = work;
  isWorkUsed_ = false;
  Load(work[kPath].toString(), true);
}

QJsonObject MeasuringWindow::WorkToKeep() const {
  if (!workToTakeUp_.isEmpty() && !isWorkUsed_) return workToTakeUp_;
  if (!picture_ || draft_ == used_ || draft_ == Draft()) return {};
  return {{kPath, path_},
          {kHash, QString::fromStdString(picture_->sha256)},
          {kMarksKey, ToJson(draft_)}};
}

// Marks whose picture is not read again yet, or could not be, are no less used.
void MeasuringWindow::NoteUsed() {
  isWorkUsed_ = true;
  used_ = handedOver_;
}

void MeasuringWindow::TakePicture(const QString& path,
                                  const std::shared_ptr<Radiography::ReadResult>& result) {
  ShowStatus();
  const QString name = QFileInfo(path).fileName();
  const auto refuse = [&](const QString& why) {
    needs_.messages.ShowError(this, name + QStringLiteral(": ") + why, QStringLiteral("Error"));
  };
  if (const auto* failure = std::get_if<Radiography::ReadFailure>(result.get())) {
    return refuse(QString::fromStdString(FailureText(*failure)));
  }
  auto* read = &std::get<Radiography::Radiograph>(*result);
  const QJsonObject work = takesWorkUp_ ? workToTakeUp_ : QJsonObject();
  if (!work.isEmpty() && work[kHash].toString() != QString::fromStdString(read->sha256)) {
    return refuse(QStringLiteral("The file has changed since it was marked. Its marks are kept."));
  }
  if (draft_ != toGo_ && !GivesMarksUp()) return;  // marked while this picture was read
  try {
    ShowPicture(path, std::shared_ptr<const Radiography::Radiograph>(result, read));
  } catch (const std::bad_alloc&) {
    return refuse(QString::fromStdString(
        Radiography::FailureText({Radiography::ReadTrouble::TooMuchMemory, {}})));
  }
  workToTakeUp_ = {};
  if (!work.isEmpty()) {
    TakeDraft(DraftFrom(work[kMarksKey].toObject()));
    handedOver_ = draft_;  // to the form that was open then, if any
    if (isWorkUsed_) used_ = draft_;
  }
  needs_.workChanged();
}

void MeasuringWindow::ShowPicture(const QString& path,
                                  std::shared_ptr<const Radiography::Radiograph> picture) {
  const PictureFacts facts = FactsOf(*picture);
  const Landmarks::PixelSpacing spacing = facts.Spacing();
  view_->SetRadiograph(picture, spacing.row / spacing.column);
  path_ = path;
  picture_ = std::move(picture);
  facts_ = facts;
  undo_.clear();
  handedOver_ = used_ = {};
  for (QAction* action : {inverted_, flipped_}) action->setChecked(false);
  FillPresets();
  setWindowTitle(Vse::OneLine(QFileInfo(path).fileName()) + QStringLiteral(" – ") +
                 kTitle.toString());
  TakeDraft({});
  SetCurrent(MarkKind::Head);
  view_->setFocus();
}

void MeasuringWindow::closeEvent(QCloseEvent* event) {
  loader_.Cancel();
  KeepErrors();
  if (keepTimer_.isActive()) needs_.workChanged();
  keepTimer_.stop();
  ShowStatus();
  QMainWindow::closeEvent(event);
}

bool MeasuringWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && IsUndoKey(*static_cast<QKeyEvent*>(event))) {
    event->ignore();
    return true;
  }
  return QMainWindow::eventFilter(watched, event);
}

}  // namespace Measuring
