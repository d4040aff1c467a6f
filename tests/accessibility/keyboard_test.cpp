// Every window by the keyboard alone.
#include <QComboBox>
#include <QGroupBox>
#include <QImage>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTextBrowser>
#include <algorithm>
#include <vector>

#include "tests/accessibility/every_window.h"

namespace {

class WindowKeyboard : public EveryWindow {};

std::string Name(const QWidget* widget) {
  if (widget == nullptr) return "nothing";
  return widget->objectName().toStdString() + " (" + widget->metaObject()->className() + ")";
}

// What a user acts on; Qt's parts of such a widget are not counted.
bool IsControl(const QWidget& widget) {
  if (widget.objectName().startsWith("qt_") || widget.parentWidget()->inherits("QLineEdit")) {
    return false;
  }
  // The head of a table only shows titles.
  const bool bar = widget.inherits("QScrollBar") || widget.inherits("QToolBarExtension") ||
                   widget.inherits("QHeaderView");
  const bool control = widget.inherits("QAbstractButton") || widget.inherits("QLineEdit") ||
                       widget.inherits("QPlainTextEdit") || widget.inherits("QComboBox") ||
                       widget.inherits("QAbstractItemView") || widget.inherits("QTextBrowser") ||
                       widget.inherits("QTabBar") || widget.inherits("RasterView") ||
                       widget.inherits("Measuring::RadiographView");
  // The arrows of a row of tabs appear only where there is no room for the tabs.
  return control && !bar && !widget.parentWidget()->inherits("QTabBar");
}

QList<QWidget*> ControlsOf(const QWidget& window) {
  QList<QWidget*> controls;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    const bool usable = widget->window() == &window && widget->isVisible() && widget->isEnabled();
    if (usable && IsControl(*widget)) controls << widget;
  }
  return controls;
}

QImage Seen(QWidget& window) {
  QApplication::processEvents();
  return window.grab().toImage();
}

// As Tab does, where a column can be scrolled.
void BringIntoSight(QWidget* control) {
  for (QWidget* above = control->parentWidget(); above != nullptr; above = above->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(above)) area->ensureWidgetVisible(control);
  }
}

QRect AreaOf(const QWidget& control, const QWidget& window) {
  constexpr int kFrame = 4;  // a frame may surround it
  return QRect(control.mapTo(&window, QPoint(0, 0)), control.size())
      .adjusted(-kFrame, -kFrame, kFrame, kFrame);
}

// One round of the key from where the focus is: the widgets that had it, in their order. A page's
// links take the key several times.
std::vector<QWidget*> Round(Qt::Key key) {
  constexpr int kMost = 300;
  std::vector<QWidget*> order;
  for (int i = 0; i < kMost; ++i) {
    QWidget* now = QApplication::focusWidget();
    if (now == nullptr) ADD_FAILURE() << "the focus is lost after " << order.size();
    if (now == nullptr || (order.size() > 1 && now == order.front())) return order;
    if (order.empty() || order.back() != now) order.push_back(now);
    QTest::keyClick(now, key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
  }
  return order;
}

void FocusFirst(QWidget& window) {
  if (QApplication::focusWidget() == nullptr) QTest::keyClick(&window, Qt::Key_Tab);
  ASSERT_NE(QApplication::focusWidget(), nullptr);
}

// Of a group of options Tab reaches one; the arrows go to the others.
bool IsReachedByArrows(QWidget* control, const std::vector<QWidget*>& round) {
  if (qobject_cast<QRadioButton*>(control) == nullptr) return false;
  return std::any_of(round.begin(), round.end(), [&](QWidget* other) {
    return qobject_cast<QRadioButton*>(other) != nullptr &&
           other->parentWidget() == control->parentWidget();
  });
}

TEST_P(WindowKeyboard, TabReachesEveryControlBothWays) {
  Visit([](QWidget& window) {
    FocusFirst(window);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
      const std::vector<QWidget*> round = Round(key);
      const QList<QWidget*> controls = ControlsOf(window);
      EXPECT_FALSE(controls.isEmpty());
      for (QWidget* control : controls) {
        const bool reached = std::find(round.begin(), round.end(), control) != round.end();
        EXPECT_TRUE(reached || IsReachedByArrows(control, round))
            << Name(control) << " is passed over by key " << key;
      }
    }
  });
}

// In reading order: the next control is never above unless it is to the right.
TEST_P(WindowKeyboard, TabGoesDownOrToTheRight) {
  Visit([](QWidget& window) {
    const QList<QWidget*> controls = ControlsOf(window);
    if (controls.size() < 2) return;
    // Top left first; where the window itself begins does not matter.
    QWidget* first = *std::min_element(controls.begin(), controls.end(), [&](auto* a, auto* b) {
      const QPoint one = a->mapTo(&window, QPoint(0, 0));
      const QPoint other = b->mapTo(&window, QPoint(0, 0));
      return std::pair(one.y(), one.x()) < std::pair(other.y(), other.x());
    });
    first->setFocus();
    const std::vector<QWidget*> round = Round(Qt::Key_Tab);
    for (std::size_t i = 1; i < round.size(); ++i) {
      const QRect before = AreaOf(*round[i - 1], window);
      const QRect next = AreaOf(*round[i], window);
      EXPECT_TRUE(next.bottom() > before.top() || next.left() > before.left())
          << Name(round[i]) << " after " << Name(round[i - 1]);
    }
  });
}

TEST_P(WindowKeyboard, TheFocusIsSeen) {
  Visit([](QWidget& window) {
    FocusFirst(window);
    for (QWidget* control : Round(Qt::Key_Tab)) {
      control->setFocus(Qt::TabFocusReason);
      BringIntoSight(control);
      const QImage with = Seen(window).copy(AreaOf(*control, window));
      QTest::keyClick(control, Qt::Key_Tab);
      if (QApplication::focusWidget() == control) continue;  // the only one, or a page with links
      EXPECT_NE(Seen(window).copy(AreaOf(*control, window)), with) << Name(control);
    }
  });
}

// The letters after Alt; those of a menu's entries are up to the menu.
QStringList AccessKeysOf(const QWidget& window) {
  QStringList texts;
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    if (!widget->isVisible() || widget->window() != &window) continue;
    if (const auto* label = qobject_cast<const QLabel*>(widget); label && label->buddy()) {
      texts << label->text();
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
      texts << button->text();
    } else if (const auto* group = qobject_cast<const QGroupBox*>(widget)) {
      texts << group->title();
    } else if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
      for (int i = 0; i < tabs->count(); ++i) texts << tabs->tabText(i);
    } else if (const auto* bar = qobject_cast<const QMenuBar*>(widget)) {
      for (const QAction* menu : bar->actions()) texts << menu->text();
    }
  }
  QStringList keys;
  for (const QString& text : texts) {
    const QKeySequence key = QKeySequence::mnemonic(text);
    if (!key.isEmpty()) keys << key.toString();
  }
  return keys;
}

TEST_P(WindowKeyboard, EveryAccessKeyIsUsedOnce) {
  Visit([](QWidget& window) {
    QStringList keys = AccessKeysOf(window);
    const qsizetype all = keys.size();
    keys.sort();
    const QString seen = keys.join(' ');
    EXPECT_EQ(keys.removeDuplicates(), 0) << seen.toStdString();
    EXPECT_EQ(keys.size(), all);
    for (const QMenuBar* bar : window.findChildren<QMenuBar*>()) {
      for (const QAction* menu : bar->actions()) {
        QStringList entries;
        for (const QAction* entry : menu->menu()->actions()) {
          if (!entry->isSeparator()) entries << QKeySequence::mnemonic(entry->text()).toString();
        }
        EXPECT_EQ(entries.removeDuplicates(), 0) << menu->text().toStdString();
        EXPECT_FALSE(entries.contains(QString())) << menu->text().toStdString();
      }
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Windows, WindowKeyboard, testing::ValuesIn(OurWindows()), RowName());

TEST(CaseFormKeyboard, ArrowsChooseAmongOptions) {
  RunningProgram program;
  program.window.New();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&program.Form()));
  program.InForm<QRadioButton>("Option1")->setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
  EXPECT_TRUE(program.InForm<QRadioButton>("Option2")->isChecked());
  EXPECT_TRUE(program.InForm<QRadioButton>("Option2")->hasFocus());
  program.PressCancel();
}

}  // namespace
