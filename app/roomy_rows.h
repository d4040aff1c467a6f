// Rows of a list that are high enough to be hit.
#pragma once

#include <QSize>
#include <QStyledItemDelegate>
#include <algorithm>

class RoomyRows final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& row) const override {
    constexpr int kLeastHeight = 24;  // device-independent pixels
    const QSize text = QStyledItemDelegate::sizeHint(option, row);
    return {text.width(), std::max(text.height(), kLeastHeight)};
  }
};
