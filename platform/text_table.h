// A small table of texts that shows and lets a row be chosen. Tab reaches it once; the arrows move
// within.
#pragma once

#include <QStringList>
#include <QTableWidget>
#include <vector>

struct TextColumn {
  QString title;
  QString sample;  // of the longest text that is usual: the column is as wide from the start
  bool number = true;
};

class TextTable : public QTableWidget {
  Q_OBJECT
 public:
  TextTable(const QString& accessibleName, const std::vector<TextColumn>& columns,
            QWidget* parent = nullptr);

  void SetTitle(int column, const QString& title);

  // One text a column and row. The chosen row stays, as far as there is one.
  void Show(const std::vector<QStringList>& rows);

  int ChosenRow() const { return currentRow(); }
  void Choose(int row) { setCurrentCell(row, 0); }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  void RowChosen(int row);

 private:
  void SetCell(int row, int column, const QString& text);
  void FitColumns();

  std::vector<TextColumn> columns_;
};
