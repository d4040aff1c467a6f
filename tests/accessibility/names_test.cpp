// What a screen reader finds in every window: names, roles, pictures in words.
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSet>

#include "platform/file_dialog.h"
#include "platform/print_dialog.h"
#include "tests/accessibility/accessible_tree.h"
#include "tests/accessibility/every_window.h"

namespace {

class WindowNames : public EveryWindow {};

using accessible_tree::NameOf;
using accessible_tree::PathOf;
using accessible_tree::Walk;

bool IsInteractive(const QAccessibleInterface& thing) {
  static const QSet<QAccessible::Role> roles = {
      QAccessible::Button,      QAccessible::PushButton,   QAccessible::CheckBox,
      QAccessible::RadioButton, QAccessible::EditableText, QAccessible::ComboBox,
      QAccessible::List,        QAccessible::ListItem,     QAccessible::Tree,
      QAccessible::TreeItem,    QAccessible::Table,        QAccessible::Cell,
      QAccessible::PageTab,     QAccessible::MenuItem,     QAccessible::Link,
      QAccessible::ProgressBar, QAccessible::Slider,       QAccessible::SpinBox};
  return roles.contains(thing.role()) || thing.state().focusable;
}

bool IsPicture(const QAccessibleInterface& thing) {
  return thing.role() == QAccessible::Graphic;
}

// Qt's own helpers around a widget of ours, and whatever passes the focus on to another widget.
bool IsHelper(const QAccessibleInterface& thing) {
  const auto* widget = qobject_cast<const QWidget*>(thing.object());
  return widget != nullptr &&
         (widget->objectName().startsWith("qt_") || widget->focusProxy() != nullptr);
}

TEST_P(WindowNames, EveryControlAndPictureHasAName) {
  Visit([](QWidget& window) {
    int controls = 0;
    Walk(window, [&](QAccessibleInterface& thing) {
      if ((!IsInteractive(thing) && !IsPicture(thing)) || IsHelper(thing)) return;
      ++controls;
      EXPECT_FALSE(NameOf(thing).trimmed().isEmpty()) << "nameless: " << PathOf(&thing);
    });
    EXPECT_GT(controls, 0);
  });
}

TEST_P(WindowNames, IsAWindowNamedByItsTitle) {
  Visit([](QWidget& window) {
    const QAccessibleInterface* thing = QAccessible::queryAccessibleInterface(&window);
    const QSet<QAccessible::Role> windows = {QAccessible::Window, QAccessible::Dialog,
                                             QAccessible::AlertMessage};
    EXPECT_TRUE(windows.contains(thing->role())) << thing->role();
    EXPECT_FALSE(NameOf(*thing).isEmpty());
    EXPECT_EQ(NameOf(*thing), window.windowTitle());
  });
}

// The role that a widget's kind asks for; NoRole where any will do.
QAccessible::Role RoleFor(const QObject* object) {
  if (object == nullptr) return QAccessible::NoRole;
  if (object->inherits("QLineEdit") || object->inherits("QPlainTextEdit")) {
    return QAccessible::EditableText;
  }
  if (object->inherits("QComboBox")) return QAccessible::ComboBox;
  if (object->inherits("QCheckBox")) return QAccessible::CheckBox;
  if (object->inherits("QRadioButton")) return QAccessible::RadioButton;
  if (object->inherits("QPushButton")) return QAccessible::PushButton;
  if (object->inherits("QGroupBox")) return QAccessible::Grouping;
  if (object->inherits("QProgressBar")) return QAccessible::ProgressBar;
  for (const char* picture : {"PictureView", "RasterView", "HipPicture", "ShareBars",
                              "Measuring::RadiographView", "Measuring::PelvisDrawing"}) {
    if (object->inherits(picture)) return QAccessible::Graphic;
  }
  return QAccessible::NoRole;
}

TEST_P(WindowNames, EveryRoleIsThatOfItsControl) {
  Visit([](QWidget& window) {
    Walk(window, [&](QAccessibleInterface& thing) {
      const QAccessible::Role wanted = RoleFor(thing.object());
      if (wanted != QAccessible::NoRole) {
        EXPECT_EQ(thing.role(), wanted) << PathOf(&thing);
      }
      const bool vague = thing.role() == QAccessible::NoRole || thing.role() == QAccessible::Client;
      EXPECT_FALSE(vague && thing.state().focusable && !IsHelper(thing)) << PathOf(&thing);
    });
  });
}

// Parts of a window that is closed or put away have no business in the tree.
TEST_P(WindowNames, EveryPictureIsDescribedInWords) {
  Visit([](QWidget& window) {
    Walk(window, [&](QAccessibleInterface& thing) {
      if (!IsPicture(thing) || thing.object()->inherits("QLabel")) return;
      EXPECT_FALSE(thing.text(QAccessible::Description).isEmpty()) << PathOf(&thing);
    });
  });
}

INSTANTIATE_TEST_SUITE_P(Windows, WindowNames, testing::ValuesIn(OurWindows()), RowName());

// Qt's dialogs are named by their titles; what is in them is Qt's.
TEST(QtDialogs, AreNamed) {
  const auto look = [](QWidget& dialog) {
    const QAccessibleInterface* thing = QAccessible::queryAccessibleInterface(&dialog);
    EXPECT_EQ(thing->role(), QAccessible::Dialog);
    EXPECT_FALSE(NameOf(*thing).isEmpty());
  };
  const QString filter = "Text (*.txt)|*.txt";
  SystemFileDialog files;
  SystemPrintDialog printers;
  every_window::LookAtDialog([&] { files.AskOpenFileName(nullptr, filter); }, look);
  every_window::LookAtDialog([&] { files.AskSaveFileName(nullptr, filter, "txt", "a.txt"); }, look);
  every_window::LookAtDialog([&] { printers.AskPrinter(nullptr, "TELMARION", QLocale::c()); },
                             look);
}

QString NameIn(RunningProgram& program, const char* object) {
  return NameOf(*QAccessible::queryAccessibleInterface(program.InWindow<QWidget>(object)));
}

TEST(MainWindowNames, HaveTheUnitOfTheNumber) {
  RunningProgram program;
  for (const auto& [box, name] :
       {std::pair("txtRWb", "R/Wb"), std::pair("txtThetaR", "Theta-R in degrees"),
        std::pair("txtThetaPol", "Theta-pol in degrees"), std::pair("txtPmaxWb", "Pmax/Wb in m^-2"),
        std::pair("txtPmax", "Pmax in Pa"), std::pair("txtBodyWeight", "Weight in kg")}) {
    EXPECT_EQ(NameIn(program, box), name);
  }
}

// A label's accessible name hides its text from a screen reader: it has to hold it.
TEST(MainWindowNames, HoldTheTextOfTheLabels) {
  RunningProgram program;
  EXPECT_EQ(NameIn(program, "lblFile"), "File in use: none");
  program.ConfirmDefaultCase();
  EXPECT_EQ(NameIn(program, "Picture2"),
            "Captions of the diagram: Theta-CE = 30 °, Radius of femoral head = 2.5 cm, "
            "Theta-R = 8.47 °");
  const QString path = program.Path("case.txt");
  program.files.Answers(path);
  program.window.Save();
  EXPECT_EQ(NameIn(program, "lblFile"), "File in use: " + path);
}

TEST(MainWindowNames, SayThatChangesAreUnsavedAndThatAWeightCountsAsUnknown) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  EXPECT_EQ(NameIn(program, "lblUnsaved"), "Unsaved changes");
  program.window.Change();
  program.Type("Text10", "");
  program.Type("Text1", "abc");
  program.PressOk();
  program.messages.Take();
  const QString notice = program.InWindow<QLabel>("lblNotice")->text();
  EXPECT_FALSE(notice.isEmpty());
  EXPECT_EQ(NameIn(program, "lblNotice"), notice);
  // In the form, which is in front of it, the box itself says so.
  const auto* weight = QAccessible::queryAccessibleInterface(program.InForm<QLineEdit>("Text10"));
  EXPECT_EQ(weight->text(QAccessible::Description), notice);
  program.PressCancel();
  EXPECT_EQ(weight->text(QAccessible::Description), "body weight");
}

TEST(MainWindowNames, TheDiagramIsDescribedInWords) {
  RunningProgram program;
  const auto words = [&] { return program.InWindow<QWidget>("Picture1")->accessibleDescription(); };
  EXPECT_EQ(words(), "Empty.");
  program.ConfirmDefaultCase();
  EXPECT_TRUE(words().startsWith("Right hip. The resultant force of ")) << words().toStdString();
  EXPECT_TRUE(words().contains("2066847.58 Pa")) << words().toStdString();
  program.window.Change();
  program.Type("Text9", "-25");
  program.PressOk();
  EXPECT_EQ(program.messages.Take().size(), 1);
  EXPECT_EQ(words(), "Empty.") << "as the picture of a refused case";
}

// What the red lines say.
TEST(CaseFormNames, ThePictureNamesTheMarkedDimension) {
  RunningProgram program;
  program.window.New();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&program.Form()));
  const auto words = [&] { return program.InForm<QWidget>("Picture1")->accessibleDescription(); };
  program.InForm<QLineEdit>("Text1")->setFocus();
  EXPECT_EQ(words(), "Marked in red: l/2, half of the interhip distance");
  program.InForm<QLineEdit>("Text9")->setFocus();
  EXPECT_EQ(words(), "Marked in red: CE, centre-edge angle");
  program.InForm<QLineEdit>("Text8")->setFocus();
  EXPECT_EQ(words(), "No dimension is marked.");
  program.PressCancel();
}

}  // namespace
