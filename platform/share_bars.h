// Parts of a whole as horizontal bars, one below the other.
#pragma once

#include <QString>
#include <QWidget>
#include <optional>
#include <vector>

#include "platform/picture_access.h"

struct ShareBar {
  QString label;
  std::optional<double> share;  // 0 to 1; without one there is the label alone
};

// A share in whole per cent; "< 1 %" for what is less but not nothing.
QString ShareText(double share);

class ShareBars : public QWidget {
  Q_OBJECT
  TELMARION_PICTURE
 public:
  explicit ShareBars(QWidget* parent = nullptr);

  // Also says them in words, as the accessible description.
  void Show(std::vector<ShareBar> bars);
  const std::vector<ShareBar>& Bars() const { return bars_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int RowHeight() const;
  int LabelWidth() const;
  void PaintBar(QPainter& painter, const ShareBar& bar, const QRect& row) const;

  std::vector<ShareBar> bars_;
};
