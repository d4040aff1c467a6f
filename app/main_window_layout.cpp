// How the main window is laid out: panels on the left, diagram and captions on the right, menus,
// tool bar, status line.
#include <QAction>
#include <QMenuBar>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include "app/main_window.h"
#include "app/tool_icons.h"
#include "platform/length_units.h"

namespace {

// The type of the tool buttons and of everything that belongs to the diagram.
QFont WithTimes(QFont font) {
  font.setFamilies({QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif")});
  font.setPointSizeF(font.pointSizeF() * 1.1);  // its letters are smaller than the desktop's
  return font;
}

QWidget* MakeLeftColumn(PatientPanel* patient, ResultsPanel* results) {
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(kGrid, kGrid, 0, kGrid);
  layout->setSpacing(kGrid);
  layout->addWidget(patient, 1);
  layout->addWidget(results);
  return column;
}

// A panel that is too high for the screen can be scrolled.
QScrollArea* MakeScrollable(QWidget* content) {
  auto* area = new QScrollArea;
  area->setWidget(content);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setMinimumWidth(content->minimumSizeHint().width() + 2 * kGrid);
  area->setFocusPolicy(Qt::NoFocus);
  return area;
}

QLabel* AddStatusLabel(QStatusBar& bar, const char* name, int stretch) {
  auto* label = new QLabel;
  label->setObjectName(QString::fromUtf8(name));
  label->setTextFormat(Qt::PlainText);  // a file name may hold what looks like markup
  bar.addWidget(label, stretch);
  return label;
}

}  // namespace

void MDIForm1::BuildContent() {
  patient_ = new PatientPanel;
  results_ = new ResultsPanel;
  patient_->setEnabled(false);
  results_->setEnabled(false);

  diagram_ = new Vizual::DiagramView;
  diagram_->setObjectName(QStringLiteral("Picture1"));
  diagram_->setAccessibleName(QStringLiteral("Hip stress diagram"));
  diagram_->setMinimumSize(300, 200);
  captions_ = new QLabel;
  captions_->setObjectName(QStringLiteral("Picture2"));
  captions_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  captions_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  captions_->setFont(WithTimes(captions_->font()));
  captions_->setMargin(kGrid);
  captions_->setWordWrap(true);  // why there are no results takes more than a line
  captions_->setMinimumHeight(4 * captions_->fontMetrics().lineSpacing() + 2 * kGrid);

  auto* charts = new QSplitter(Qt::Vertical);
  charts->addWidget(diagram_);
  charts->addWidget(captions_);
  charts->setStretchFactor(0, 1);
  charts->setChildrenCollapsible(false);
  auto* columns = new QSplitter(Qt::Horizontal);
  columns->addWidget(MakeScrollable(MakeLeftColumn(patient_, results_)));
  columns->addWidget(charts);
  columns->setStretchFactor(1, 1);
  columns->setChildrenCollapsible(false);
  columns->setSizes({320, 640});
  setCentralWidget(columns);
  ClearCharts();
  resize(960, 640);
}

void MDIForm1::BuildStatusLine() {
  fileLabel_ = AddStatusLabel(*statusBar(), "lblFile", 0);
  unsavedLabel_ = AddStatusLabel(*statusBar(), "lblUnsaved", 0);
  unsavedLabel_->setText(QStringLiteral("Unsaved changes"));
  noticeLabel_ = AddStatusLabel(*statusBar(), "lblNotice", 1);
  noticeLabel_->setMinimumWidth(1);  // a text that is longer than the line is cut off
}

QAction* MDIForm1::AddCommand(const char* name, const char* caption, void (MDIForm1::*command)()) {
  auto* action = new QAction(QString::fromUtf8(caption), this);
  action->setObjectName(QString::fromUtf8(name));
  connect(action, &QAction::triggered, this, command);
  return action;
}

void MDIForm1::BuildMenus() {
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  file->setObjectName(QStringLiteral("mnuFile"));
  const auto add = [this](QMenu* menu, const char* name, const char* caption,
                          const QKeySequence& keys, void (MDIForm1::*command)()) {
    QAction* action = AddCommand(name, caption, command);
    action->setShortcut(keys);
    menu->addAction(action);
    return action;
  };
  add(file, "mnuNew", "&New", QKeySequence(Qt::CTRL | Qt::Key_N), &MDIForm1::New);
  add(file, "mnuOpen", "&Open", QKeySequence(Qt::CTRL | Qt::Key_O), &MDIForm1::Open);
  caseCommands_ << add(file, "mnuSave", "&Save", QKeySequence(Qt::CTRL | Qt::Key_S),
                       &MDIForm1::Save);
  caseCommands_ << add(file, "mnuPrint", "&Print", QKeySequence(Qt::CTRL | Qt::Key_P),
                       &MDIForm1::Print);
  file->addSeparator();
  add(file, "mnuExit", "E&xit", QKeySequence(Qt::CTRL | Qt::Key_Q), &MDIForm1::Exit);

  QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
  edit->setObjectName(QStringLiteral("mnuEdit"));
  add(edit, "mnuChange", "&Change", {}, &MDIForm1::Change);

  BuildToolsMenu();
  QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
  help->setObjectName(QStringLiteral("mnuHelp"));
  add(help, "mnuHelpT", "&Help", QKeySequence(Qt::Key_F1), &MDIForm1::Help);
  add(help, "mnuAbout", "&About", {}, &MDIForm1::About);
  for (QAction* command : std::as_const(caseCommands_)) command->setEnabled(false);
}

void MDIForm1::BuildToolsMenu() {
  QMenu* tools = menuBar()->addMenu(QStringLiteral("&Tools"));
  tools->setObjectName(QStringLiteral("mnuTools"));
  caseCommands_ << AddCommand("mnuHowSure", "How &sure is this case…", &MDIForm1::HowSure);
  tools->addAction(caseCommands_.last());
  tools->addAction(AddCommand("mnuMeasure", "&Measure on radiograph…", &MDIForm1::Measure));
}

void MDIForm1::BuildToolBar() {
  auto* bar = new QToolBar(QStringLiteral("Tools"));
  bar->setObjectName(QStringLiteral("Toolbar"));
  bar->setFont(WithTimes(bar->font()));
  bar->setMovable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  addToolBar(bar);
  const auto add = [this, bar](const char* name, const char* caption, const char* hint,
                               const QIcon& icon, void (MDIForm1::*command)()) {
    QAction* action = AddCommand("", caption, command);
    action->setToolTip(QString::fromUtf8(hint));
    action->setIcon(icon);
    bar->addAction(action);
    QWidget* button = bar->widgetForAction(action);
    button->setObjectName(QString::fromUtf8(name));
    button->setAccessibleName(QString::fromUtf8(caption));
    button->setFocusPolicy(Qt::TabFocus);
    return action;
  };
  add("CmdNew", "New", "New case", ToolIcon(ToolPicture::New), &MDIForm1::New);
  add("CmdOpen", "Open", "Open a case file", ToolIcon(ToolPicture::Open), &MDIForm1::Open);
  QList<QAction*> needCase;
  needCase << add("CmdSave", "Save", "Save the case", ToolIcon(ToolPicture::Save), &MDIForm1::Save);
  bar->addSeparator();
  needCase << add("CmdPrint", "Print", "Print the report", {}, &MDIForm1::Print);
  add("CmdChange", "Change", "Change the entries of the case", {}, &MDIForm1::Change);
  needCase << add("Cmd3D", "3D vizualization", "Show the femoral head in 3D", {},
                  &MDIForm1::View3D);
  for (QAction* command : std::as_const(needCase)) command->setEnabled(false);
  caseCommands_ += needCase;
}
