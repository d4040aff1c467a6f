// Qt's table, quiet and as large as its contents.
#include "platform/text_table.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <algorithm>

#include "platform/length_units.h"

namespace {

constexpr int kRowHeight = 3 * kGrid;
constexpr int kPadding = 2 * kGrid;  // of a cell, both sides together

Qt::Alignment AlignmentOf(const TextColumn& column) {
  return (column.number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

}  // namespace

TextTable::TextTable(const QString& accessibleName, const std::vector<TextColumn>& columns,
                     QWidget* parent)
    : QTableWidget(0, static_cast<int>(columns.size()), parent), columns_(columns) {
  setAccessibleName(accessibleName);
  setEditTriggers(NoEditTriggers);
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setShowGrid(false);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(std::max(kRowHeight, fontMetrics().height() + kGrid));
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setStretchLastSection(true);
  for (int i = 0; i < columnCount(); ++i) {
    auto* title = new QTableWidgetItem(columns[static_cast<std::size_t>(i)].title);
    title->setTextAlignment(AlignmentOf(columns[static_cast<std::size_t>(i)]));
    setHorizontalHeaderItem(i, title);
  }
  FitColumns();
  connect(this, &QTableWidget::currentCellChanged, this, &TextTable::RowChosen);
}

void TextTable::SetTitle(int column, const QString& title) {
  columns_[static_cast<std::size_t>(column)].title = title;
  horizontalHeaderItem(column)->setText(title);
  FitColumns();
}

// A screen reader has something to say in an empty cell, too.
void TextTable::SetCell(int row, int column, const QString& text) {
  if (item(row, column) == nullptr) setItem(row, column, new QTableWidgetItem);
  QTableWidgetItem& cell = *item(row, column);
  cell.setText(text);
  cell.setTextAlignment(AlignmentOf(columns_[static_cast<std::size_t>(column)]));
  cell.setData(Qt::AccessibleTextRole, text.isEmpty() ? QStringLiteral("none") : QVariant());
}

void TextTable::Show(const std::vector<QStringList>& rows) {
  const QSize before = sizeHint();
  const int chosen = currentRow();
  {
    const QSignalBlocker quiet(this);  // Qt chooses the last row where the chosen one is gone
    setRowCount(static_cast<int>(rows.size()));
    for (int row = 0; row < rowCount(); ++row) {
      const QStringList& texts = rows[static_cast<std::size_t>(row)];
      for (int column = 0; column < columnCount(); ++column) {
        SetCell(row, column, texts.value(column));
      }
    }
  }
  FitColumns();
  if (sizeHint() != before) updateGeometry();
  if (currentRow() != chosen) emit RowChosen(currentRow());
}

void TextTable::FitColumns() {
  for (int i = 0; i < columnCount(); ++i) {
    const TextColumn& column = columns_[static_cast<std::size_t>(i)];
    int width = std::max(fontMetrics().horizontalAdvance(column.sample) + kPadding,
                         horizontalHeader()->sectionSizeHint(i));
    for (int row = 0; row < rowCount(); ++row) {
      width = std::max(width, fontMetrics().horizontalAdvance(item(row, i)->text()) + kPadding);
    }
    setColumnWidth(i, width);
  }
}

QSize TextTable::sizeHint() const {
  int width = 2 * frameWidth();
  for (int i = 0; i < columnCount(); ++i) {
    const TextColumn& column = columns_[static_cast<std::size_t>(i)];
    width += std::max(fontMetrics().horizontalAdvance(column.sample) + kPadding,
                      horizontalHeader()->sectionSizeHint(i));
  }
  const int height =
      horizontalHeader()->sizeHint().height() + rowCount() * verticalHeader()->defaultSectionSize();
  return {width, height + 2 * frameWidth()};
}
