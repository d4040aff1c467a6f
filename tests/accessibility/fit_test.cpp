// Whether every text of every window has room: nothing clipped, nothing over something else. Run at
// several scales of the display.
#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QStyle>
#include <QStyleOptionFrame>
#include <tuple>
#include <vector>

#include "tests/accessibility/every_window.h"

namespace {

class WindowFit : public testing::TestWithParam<std::tuple<WindowState, const char*>> {
 protected:
  static void Visit(const LookAt& look) {
    std::get<0>(GetParam()).visit(QLocale(std::get<1>(GetParam())), look);
  }
};

std::string Name(const QWidget& widget) {
  return widget.objectName().toStdString() + " (" + widget.metaObject()->className() + ")";
}

bool IsText(const QWidget& widget) {
  return widget.inherits("QLabel") || widget.inherits("QLineEdit") ||
         widget.inherits("QAbstractButton") || widget.inherits("QComboBox") ||
         widget.inherits("QPlainTextEdit") || widget.inherits("QAbstractItemView") ||
         widget.inherits("QTextBrowser");
}

// What a user reads and the window lays out: not what is on a picture or inside another
// control.
std::vector<const QWidget*> TextsOf(const QWidget& window) {
  std::vector<const QWidget*> texts;
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    const QWidget& parent = *widget->parentWidget();
    const bool inside = IsText(parent) || parent.inherits("RasterView") ||
                        parent.inherits("QTabBar") || widget->objectName().startsWith("qt_");
    if (widget->isVisible() && widget->window() == &window && !inside && IsText(*widget)) {
      texts.push_back(widget);
    }
  }
  return texts;
}

// The room that the text takes; a list or a page can be scrolled.
QSize NeededBy(const QWidget& widget) {
  if (const auto* label = qobject_cast<const QLabel*>(&widget); label && label->wordWrap()) {
    return {0, label->heightForWidth(label->width())};
  }
  if (const auto* box = qobject_cast<const QLineEdit*>(&widget)) {
    QStyleOptionFrame option;
    option.initFrom(box);
    option.lineWidth = box->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, box);
    const QRect inner = box->style()->subElementRect(QStyle::SE_LineEditContents, &option, box);
    const int margin = 4 + box->width() - inner.width();  // Qt's own, two on either side
    return {margin + box->fontMetrics().horizontalAdvance(box->text()),
            box->minimumSizeHint().height()};
  }
  if (widget.inherits("QAbstractScrollArea")) return {};
  return widget.sizeHint();
}

// What lies above or below the visible part of a scrolled column can be brought there.
bool IsScrolled(const QWidget& part) {
  const auto* area = qobject_cast<const QScrollArea*>(part.parentWidget()->parentWidget());
  return area != nullptr && area->widget() == &part;
}

bool IsCut(const QWidget& widget) {
  for (const QWidget* part = &widget; !part->isWindow(); part = part->parentWidget()) {
    const QWidget& above = *part->parentWidget();
    const QRect area(widget.mapTo(&above, QPoint(0, 0)), widget.size());
    if (IsScrolled(*part)) {
      const QRect whole(part->pos(), part->size());
      if (!whole.contains(area) || area.left() < 0 || area.right() >= above.width()) return true;
      return IsCut(above);
    }
    if (!above.rect().contains(area)) return true;
  }
  return false;
}

TEST_P(WindowFit, EveryTextHasRoom) {
  Visit([](QWidget& window) {
    for (const QWidget* widget : TextsOf(window)) {
      const QSize needed = NeededBy(*widget);
      EXPECT_LE(needed.width(), widget->width()) << Name(*widget);
      EXPECT_LE(needed.height(), widget->height()) << Name(*widget);
      EXPECT_FALSE(IsCut(*widget)) << Name(*widget);
    }
  });
}

// Where in the window it is seen.
QRect SeenOf(const QWidget& widget, const QWidget& window) {
  QRect seen(widget.mapTo(&window, QPoint(0, 0)), widget.size());
  for (const QWidget* above = widget.parentWidget(); above != &window;
       above = above->parentWidget()) {
    seen &= QRect(above->mapTo(&window, QPoint(0, 0)), above->size());
  }
  return seen;
}

TEST_P(WindowFit, NothingOverlaps) {
  Visit([](QWidget& window) {
    const std::vector<const QWidget*> texts = TextsOf(window);
    const auto area = [&](const QWidget* widget) { return SeenOf(*widget, window); };
    for (std::size_t i = 0; i < texts.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        EXPECT_FALSE(area(texts[i]).intersects(area(texts[j])))
            << Name(*texts[i]) << " over " << Name(*texts[j]);
      }
    }
  });
}

// Buttons are as high as the desktop makes them; rows of lists are ours.
TEST_P(WindowFit, EveryRowCanBeHit) {
  Visit([](QWidget& window) {
    constexpr int kHeight = 24;  // device-independent pixels, as guidelines ask for
    for (const QWidget* widget : TextsOf(window)) {
      const auto* list = qobject_cast<const QAbstractItemView*>(widget);
      if (list == nullptr || list->model()->rowCount() == 0) continue;
      EXPECT_GE(list->visualRect(list->model()->index(0, 0)).height(), kHeight) << Name(*widget);
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Windows, WindowFit,
                         testing::Combine(testing::ValuesIn(OurWindows()),
                                          testing::Values("en_US", "de_DE")),
                         [](const auto& row) {
                           return std::get<0>(row.param).name +
                                  QString(std::get<1>(row.param)).remove('_').toStdString();
                         });

}  // namespace
