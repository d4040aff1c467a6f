// The help window put together from the engine's lists and our page.
#include "app/help_window.h"

#include <QAction>
#include <QDir>
#include <QHelpContentModel>
#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QKeySequence>
#include <QLineEdit>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QTextCursor>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "app/help_page.h"
#include "app/help_search.h"
#include "app/roomy_rows.h"
#include "app/tool_icons.h"
#include "platform/message_door.h"

namespace {

constexpr QSize kSize(1000, 720);
constexpr int kListWidth = 300;
constexpr int kZoomStep = 20;  // percent
constexpr int kSmallestZoom = 60;
constexpr int kLargestZoom = 300;

QString NotFound(const QStringList& folders) {
  QStringList places;
  for (const QString& folder : folders) places.append(QDir::toNativeSeparators(folder));
  return QStringLiteral("The help file \"%1\" was not found. It was looked for in:\n%2")
      .arg(QString::fromLatin1(kHelpFileName), places.join('\n'));
}

// The entry for a place in a page, at any depth below `parent`; invalid where there is none. The
// list's own indexOf() knows whole pages only.
QModelIndex RowOf(const QUrl& url, const QHelpContentModel& model, const QModelIndex& parent) {
  for (int i = 0; i < model.rowCount(parent); ++i) {
    const QModelIndex row = model.index(i, 0, parent);
    if (model.contentItemAt(row)->url() == url) return row;
    const QModelIndex below = RowOf(url, model, row);
    if (below.isValid()) return below;
  }
  return {};
}

}  // namespace

std::unique_ptr<HelpWindow> HelpWindow::Open(const QStringList& folders, MessageDoor& door,
                                             QWidget* parent) {
  const QString path = FindHelpFile(folders);
  if (path.isEmpty()) {
    door.ShowError(parent, NotFound(folders), QStringLiteral("Error"));
    return nullptr;
  }
  HelpFile::Opened opened = HelpFile::Open(path);
  if (!opened.file) {
    door.ShowError(parent, opened.trouble, QStringLiteral("Error"));
    return nullptr;
  }
  return std::make_unique<HelpWindow>(std::move(opened.file));
}

HelpWindow::HelpWindow(std::unique_ptr<HelpFile> file)
    : file_(std::move(file)),
      page_(new HelpPage(file_->engine())),
      panes_(new QTabWidget),
      contents_(file_->engine().contentWidget()),
      index_(file_->engine().indexWidget()),
      filter_(new QLineEdit),
      search_(new HelpSearch(*file_->engine().searchEngine())) {
  setObjectName("HelpWindow");
  setAttribute(Qt::WA_QuitOnClose, false);
  setWindowTitle(QStringLiteral("TELMARION Help"));

  panes_->setObjectName("helpPanes");
  panes_->setAccessibleName(QStringLiteral("Contents, index and search"));
  panes_->setDocumentMode(true);
  panes_->addTab(ContentsPane(), QStringLiteral("&Contents"));
  panes_->addTab(IndexPane(), QStringLiteral("I&ndex"));
  panes_->addTab(search_, QStringLiteral("&Search"));

  auto* splitter = new QSplitter;
  splitter->setChildrenCollapsible(false);
  splitter->addWidget(panes_);
  splitter->addWidget(page_);
  splitter->setSizes({kListWidth, kSize.width() - kListWidth});
  splitter->setStretchFactor(1, 1);
  setCentralWidget(splitter);

  BuildTools();
  BuildKeys();
  connect(page_, &QTextBrowser::sourceChanged, this, &HelpWindow::FollowInContents);
  connect(search_, &HelpSearch::Chosen, this, [this](const QUrl& url, const QString& word) {
    ShowUrl(url);
    page_->moveCursor(QTextCursor::Start);
    page_->find(word);  // selects the first place
  });
  ShowUrl(file_->Home());
  resize(kSize.boundedTo(screen()->availableSize()));
}

// The lists look at models of the engine's, so they go first.
HelpWindow::~HelpWindow() {
  delete takeCentralWidget();
}

void HelpWindow::BuildTools() {
  auto* tools = addToolBar(QStringLiteral("Tools"));
  tools->setObjectName("helpTools");
  tools->setMovable(false);
  tools->setContextMenuPolicy(Qt::PreventContextMenu);
  tools->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  const auto add = [&](const char* name, ToolPicture picture, const QString& text,
                       const QKeySequence& keys) {
    QAction* action = tools->addAction(ToolIcon(picture), text);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(keys);
    action->setToolTip(text + " (" + keys.toString(QKeySequence::NativeText) + ")");
    tools->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    return action;
  };
  QAction* back = add("helpBack", ToolPicture::Back, "Back", Qt::ALT | Qt::Key_Left);
  QAction* forward = add("helpForward", ToolPicture::Forward, "Forward", Qt::ALT | Qt::Key_Right);
  QAction* home = add("helpHome", ToolPicture::Home, "Home", Qt::ALT | Qt::Key_Home);
  tools->addSeparator();
  smaller_ = add("helpSmaller", ToolPicture::Smaller, "Smaller text", QKeySequence::ZoomOut);
  larger_ = add("helpLarger", ToolPicture::Larger, "Larger text", Qt::CTRL | Qt::Key_Plus);
  larger_->setShortcuts({Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal});

  back->setEnabled(false);
  forward->setEnabled(false);
  connect(back, &QAction::triggered, page_, &QTextBrowser::backward);
  connect(forward, &QAction::triggered, page_, &QTextBrowser::forward);
  connect(page_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(page_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
  connect(home, &QAction::triggered, this, [this] { ShowUrl(file_->Home()); });
  connect(smaller_, &QAction::triggered, this, [this] { SetZoom(zoom_ - kZoomStep); });
  connect(larger_, &QAction::triggered, this, [this] { SetZoom(zoom_ + kZoomStep); });
}

void HelpWindow::BuildKeys() {
  const auto on = [this](const QKeySequence& keys, auto&& act) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
  };
  on(Qt::CTRL | Qt::Key_0, [this] { SetZoom(100); });
  on(Qt::CTRL | Qt::Key_F, [this] { ShowSearch(); });
  on(Qt::Key_F6, [this] { SwapFocus(); });
  on(Qt::CTRL | Qt::Key_W, [this] { close(); });
  on(Qt::Key_Escape, [this] { close(); });
}

QWidget* HelpWindow::ContentsPane() {
  contents_->setObjectName("helpContents");
  contents_->setAccessibleName(QStringLiteral("Contents"));
  contents_->setFrameShape(QFrame::NoFrame);
  contents_->setItemDelegate(new RoomyRows(contents_));
  connect(contents_, &QHelpContentWidget::linkActivated, this, &HelpWindow::ShowUrl);
  connect(contents_, &QAbstractItemView::clicked, this, [this](const QModelIndex& row) {
    const auto* model = qobject_cast<const QHelpContentModel*>(contents_->model());
    ShowUrl(model->contentItemAt(row)->url());
  });
  connect(qobject_cast<QHelpContentModel*>(contents_->model()), &QHelpContentModel::contentsCreated,
          this, [this] { FollowInContents(page_->source()); });
  return contents_;
}

QWidget* HelpWindow::IndexPane() {
  filter_->setObjectName("helpIndexFilter");
  filter_->setAccessibleName(QStringLiteral("Filter the index"));
  filter_->setPlaceholderText(QStringLiteral("Filter"));
  filter_->setClearButtonEnabled(true);
  index_->setObjectName("helpIndex");
  index_->setAccessibleName(QStringLiteral("Index"));
  index_->setItemDelegate(new RoomyRows(index_));
  connect(filter_, &QLineEdit::textChanged, index_,
          [this](const QString& text) { index_->filterIndices(text); });
  connect(filter_, &QLineEdit::returnPressed, index_, &QHelpIndexWidget::activateCurrentItem);
  connect(index_, &QAbstractItemView::clicked, index_, &QHelpIndexWidget::activateCurrentItem);
  connect(index_, &QHelpIndexWidget::documentActivated, this,
          [this](const QHelpLink& link) { ShowUrl(link.url); });

  auto* pane = new QWidget;
  auto* column = new QVBoxLayout(pane);
  column->setContentsMargins(8, 8, 8, 8);
  column->addWidget(filter_);
  column->addWidget(index_, 1);
  pane->setFocusProxy(filter_);
  return pane;
}

void HelpWindow::ShowTopic(const QString& id) {
  ShowUrl(file_->Topic(id));
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void HelpWindow::ShowUrl(const QUrl& url) {
  page_->setSource(url);
}

void HelpWindow::FollowInContents(const QUrl& url) {
  const auto* model = qobject_cast<const QHelpContentModel*>(contents_->model());
  QModelIndex row = RowOf(url, *model, {});
  if (!row.isValid()) row = RowOf(url.adjusted(QUrl::RemoveFragment), *model, {});
  if (row.isValid()) contents_->setCurrentIndex(row);
}

void HelpWindow::SetZoom(int percent) {
  zoom_ = std::clamp(percent, kSmallestZoom, kLargestZoom);
  smaller_->setEnabled(zoom_ > kSmallestZoom);
  larger_->setEnabled(zoom_ < kLargestZoom);
  page_->SetZoom(zoom_);
}

void HelpWindow::ShowSearch() {
  panes_->setCurrentWidget(search_);
  search_->Begin();
}

void HelpWindow::SwapFocus() {
  if (page_->hasFocus()) {
    panes_->currentWidget()->setFocus();
  } else {
    page_->setFocus();
  }
}
