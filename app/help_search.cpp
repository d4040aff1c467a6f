// Searches the whole text of the help.
#include "app/help_search.h"

#include <QHBoxLayout>
#include <QHelpSearchEngine>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

#include "app/roomy_rows.h"

namespace {

QStringList Words(const QString& text) {
  static const QRegularExpression blanks(QStringLiteral("[\\s\"]+"));
  return text.split(blanks, Qt::SkipEmptyParts);
}

// Each word between quotation marks, so that the engine takes "R/Wb" for text and not for a command
// of its own. All words must occur.
QString Query(const QString& text) {
  QStringList quoted;
  for (const QString& word : Words(text)) quoted.append('"' + word + '"');
  return quoted.join(' ');
}

}  // namespace

HelpSearch::HelpSearch(QHelpSearchEngine& engine, QWidget* parent)
    : QWidget(parent),
      engine_(engine),
      box_(new QLineEdit),
      status_(new QLabel),
      results_(new QListWidget) {
  box_->setObjectName("helpSearchText");
  box_->setAccessibleName(QStringLiteral("Search terms"));
  box_->setPlaceholderText(QStringLiteral("Search terms"));
  box_->setClearButtonEnabled(true);
  status_->setObjectName("helpSearchStatus");
  status_->setWordWrap(true);
  results_->setObjectName("helpSearchResults");
  results_->setAccessibleName(QStringLiteral("Pages found"));
  results_->setItemDelegate(new RoomyRows(results_));
  results_->setEnabled(false);
  auto* button = new QPushButton(QStringLiteral("Find"));
  button->setObjectName("helpSearchButton");

  auto* row = new QHBoxLayout;
  row->addWidget(box_);
  row->addWidget(button);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(8, 8, 8, 8);
  column->addLayout(row);
  column->addWidget(status_);
  column->addWidget(results_, 1);
  setFocusProxy(box_);

  connect(button, &QPushButton::clicked, this, &HelpSearch::Search);
  connect(box_, &QLineEdit::returnPressed, this, &HelpSearch::Search);
  connect(results_, &QListWidget::itemClicked, this, &HelpSearch::Choose);
  connect(results_, &QListWidget::itemActivated, this, &HelpSearch::Choose);
  connect(&engine_, &QHelpSearchEngine::searchingFinished, this, &HelpSearch::ShowResults);
  connect(&engine_, &QHelpSearchEngine::indexingStarted, this, [this] { indexed_ = false; });
  connect(&engine_, &QHelpSearchEngine::indexingFinished, this, [this] {
    indexed_ = true;
    if (wanted_) Search();
  });
}

void HelpSearch::Begin() {
  box_->setFocus();
  box_->selectAll();
}

void HelpSearch::Search() {
  wanted_ = !indexed_;
  results_->clear();
  results_->setEnabled(false);  // an empty list would take the focus without a sign
  if (Words(box_->text()).isEmpty()) return status_->clear();
  status_->setText(QStringLiteral("Searching …"));
  if (indexed_) engine_.search(Query(box_->text()));
}

void HelpSearch::ShowResults() {
  results_->clear();
  for (const QHelpSearchResult& found : engine_.searchResults(0, engine_.searchResultCount())) {
    auto* item = new QListWidgetItem(found.title(), results_);
    item->setData(Qt::UserRole, found.url());
  }
  const int count = results_->count();
  results_->setEnabled(count > 0);
  status_->setText(count == 0   ? QStringLiteral("Nothing found.")
                   : count == 1 ? QStringLiteral("1 page")
                                : QStringLiteral("%1 pages").arg(count));
}

void HelpSearch::Choose(const QListWidgetItem* item) {
  const QStringList words = Words(box_->text());
  emit Chosen(item->data(Qt::UserRole).toUrl(), words.isEmpty() ? QString() : words.first());
}
