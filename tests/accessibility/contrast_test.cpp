// Every text of every window against its ground, under light and dark desktops.
#include <QColor>
#include <QImage>
#include <QMap>
#include <QPalette>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTextTable>
#include <QToolTip>
#include <array>
#include <cmath>
#include <tuple>

#include "caseform/dimension_marks.h"
#include "caseform/hip_picture.h"
#include "diagram/diagram_view.h"
#include "tests/accessibility/every_window.h"
#include "tests/support/palettes.h"

namespace {

// By the guidelines' own words, apart from the program's.
double ContrastBetween(const QColor& one, const QColor& other) {
  const auto luminance = [](const QColor& colour) {
    const auto part = [](int channel) {
      const double c = channel / 255.0;
      return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.red()) + 0.7152 * part(colour.green()) +
           0.0722 * part(colour.blue());
  };
  const double a = luminance(one) + 0.05;
  const double b = luminance(other) + 0.05;
  return a > b ? a / b : b / a;
}

// Translucent ink.
QColor Laid(const QColor& ink, const QColor& ground) {
  const auto part = [&](int i, int g) {
    return int(std::lround(g + (i - g) * double(ink.alphaF())));
  };
  return {part(ink.red(), ground.red()), part(ink.green(), ground.green()),
          part(ink.blue(), ground.blue())};
}

void ExpectReadable(const QColor& ink, const QColor& ground, const std::string& where) {
  const double contrast = ContrastBetween(Laid(ink, ground), ground);
  EXPECT_GE(contrast, 4.5) << where << ": " << ink.name(QColor::HexArgb).toStdString() << " on "
                           << ground.name().toStdString();
}

struct Roles {
  QPalette::ColorRole ink;
  QPalette::ColorRole ground;
};

// The colours that a widget's kind writes in; nothing for one without text of its own.
QList<Roles> RolesOf(const QWidget& widget) {
  const Roles onWindow = {QPalette::WindowText, QPalette::Window};
  const Roles onBase = {QPalette::Text, QPalette::Base};
  const Roles onButton = {QPalette::ButtonText, QPalette::Button};
  const Roles selected = {QPalette::HighlightedText, QPalette::Highlight};
  const Roles placeholder = {QPalette::PlaceholderText, QPalette::Base};
  if (widget.inherits("QLineEdit")) return {onBase, selected, placeholder};
  if (widget.inherits("QPlainTextEdit") || widget.inherits("QTextEdit") ||
      widget.inherits("QAbstractItemView")) {
    return {onBase, selected};
  }
  if (widget.inherits("QLabel") || widget.inherits("QGroupBox") || widget.inherits("QTabBar") ||
      widget.inherits("QCheckBox") || widget.inherits("QRadioButton")) {
    return {onWindow};
  }
  if (widget.inherits("QMenuBar")) return {onWindow, selected};
  if (widget.inherits("QToolButton")) return {{QPalette::ButtonText, QPalette::Window}};
  if (widget.inherits("QPushButton") || widget.inherits("QComboBox")) return {onButton};
  return {};
}

enum class Theme { Light, Dark };

QPalette PaletteOf(Theme theme) {
  return theme == Theme::Light ? LightPalette() : DarkPalette();
}

// Tests under a theme; the palette before comes back.
class Themed {
 public:
  explicit Themed(Theme theme) : before_(QApplication::palette()) { UseTheme(PaletteOf(theme)); }
  Themed(const Themed&) = delete;
  Themed& operator=(const Themed&) = delete;
  ~Themed() { QApplication::setPalette(before_); }

 private:
  QPalette before_;
};

class WindowContrast : public testing::TestWithParam<std::tuple<WindowState, Theme>> {};

TEST_P(WindowContrast, OfEveryTextIsEnough) {
  const Themed themed(std::get<1>(GetParam()));
  std::get<0>(GetParam()).visit(QLocale::c(), [](QWidget& window) {
    int texts = 0;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
      if (!widget->isVisible() || !widget->isEnabled()) continue;
      const std::string name =
          widget->objectName().toStdString() + " " + widget->metaObject()->className();
      for (const Roles& roles : RolesOf(*widget)) {
        ++texts;
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
          ExpectReadable(widget->palette().color(group, roles.ink),
                         widget->palette().color(group, roles.ground), name);
        }
      }
    }
    EXPECT_GT(texts, 1);
    ExpectReadable(QToolTip::palette().color(QPalette::ToolTipText),
                   QToolTip::palette().color(QPalette::ToolTipBase), "tool tip");
  });
}

INSTANTIATE_TEST_SUITE_P(Windows, WindowContrast,
                         testing::Combine(testing::ValuesIn(OurWindows()),
                                          testing::Values(Theme::Light, Theme::Dark)),
                         [](const auto& row) {
                           const bool light = std::get<1>(row.param) == Theme::Light;
                           return std::get<0>(row.param).name + (light ? "Light" : "Dark");
                         });

class Contrast : public testing::TestWithParam<Theme> {
 protected:
  const Themed themed_{GetParam()};
};

TEST_P(Contrast, OfTheDiagramsLabelsIsEnough) {
  RunningProgram program;
  program.ConfirmDefaultCase();
  auto* view = program.InWindow<Vizual::DiagramView>("Picture1");
  const Vizual::DiagramLabels& labels = view->Labels();
  for (const PictureLabel* label : {&labels.stressLegend, &labels.forceLegend, &labels.edgeAngle,
                                    &labels.forceAngle, &labels.leftHip, &labels.rightHip}) {
    ExpectReadable(PaintColour(label->foreColor, view->palette()),
                   PaintColour(label->backColor, view->palette()), label->caption.toStdString());
  }
}

// A light frame would dazzle whoever looks for faint edges.
TEST_P(Contrast, TheRadiographsSurroundStaysDark) {
  RunningProgram program;
  program.window.Measure();
  const QImage view = program.window.Measuring()->View().grab().toImage();
  EXPECT_LT(view.pixelColor(view.width() / 2, view.height() / 2).lightness(), 50);
}

// Red on white falls a little short of 4.5. The marked dimension is recognisable by its width as
// well, and in words to a screen reader.
TEST_P(Contrast, OfTheHipPicturesLabelsIsEnoughExceptForTheMarkedOne) {
  const HipPicture picture;
  for (const DimensionLabel* label : picture.findChildren<DimensionLabel*>()) {
    ExpectReadable(label->foreColor(), Qt::white, label->text().toStdString());
  }
  EXPECT_GE(ContrastBetween(Qt::red, Qt::white), 3.9);
}

// The text's own ground: that of its table cell, its frame, or the page.
QColor GroundOf(const QTextBlock& block, const QColor& page) {
  const QTextCursor cursor(block);
  if (const QTextTable* table = cursor.currentTable()) {
    const QTextTableCell cell = table->cellAt(cursor);
    if (cell.format().hasProperty(QTextFormat::BackgroundBrush)) {
      return cell.format().background().color();
    }
    if (table->format().hasProperty(QTextFormat::BackgroundBrush)) {
      return table->format().background().color();
    }
  }
  return page;
}

constexpr std::array kTopics = {"index",    "first-case", "measurements", "entering", "results",
                                "diagram",  "view3d",     "printing",     "files",    "model",
                                "messages", "keyboard",   "uncertainty",  "measuring"};

TEST_P(Contrast, OfTheHelpPagesIsEnoughAndLinksAreUnderlined) {
  RecordingMessageDoor messages;
  const auto window = HelpWindow::Open({TELMARION_HELP_DIR}, messages, nullptr);
  auto* page = window->findChild<QTextBrowser*>("helpPage");
  int links = 0;
  for (const char* topic : kTopics) {
    window->ShowTopic(topic);
    QTextDocument* text = page->document();
    for (QTextBlock block = text->begin(); block.isValid(); block = block.next()) {
      const QColor ground = GroundOf(block, page->palette().color(QPalette::Base));
      for (auto part = block.begin(); !part.atEnd(); ++part) {
        const QTextCharFormat format = part.fragment().charFormat();
        const bool own = format.hasProperty(QTextFormat::ForegroundBrush);
        const QColor ink =
            own ? format.foreground().color() : page->palette().color(QPalette::Text);
        ExpectReadable(ink, ground, topic + (": " + part.fragment().text().toStdString()));
        if (!format.isAnchor() || format.anchorHref().isEmpty()) continue;
        ++links;
        EXPECT_TRUE(format.fontUnderline()) << part.fragment().text().toStdString();
      }
    }
  }
  EXPECT_GT(links, 20);
}

// Colours of which a drawing has more than smoothing leaves behind.
QList<QColor> MainColours(const QImage& drawing) {
  constexpr int kMany = 12;  // pixels
  QMap<QRgb, int> counts;
  for (int y = 0; y < drawing.height(); ++y) {
    for (int x = 0; x < drawing.width(); ++x) {
      if (qAlpha(drawing.pixel(x, y)) == 255) ++counts[drawing.pixel(x, y)];
    }
  }
  QList<QColor> colours;
  for (auto i = counts.begin(); i != counts.end(); ++i) {
    if (i.value() >= kMany) colours << QColor(i.key());
  }
  return colours;
}

TEST_P(Contrast, OfTheHelpsDrawingsIsEnough) {
  RecordingMessageDoor messages;
  const auto window = HelpWindow::Open({TELMARION_HELP_DIR}, messages, nullptr);
  window->show();
  auto* page = window->findChild<QTextBrowser*>("helpPage");
  for (const auto& [topic, file] :
       {std::pair("measurements", "measurements.svg"), std::pair("diagram", "diagram.svg"),
        std::pair("ce", "centre-edge.svg")}) {
    window->ShowTopic(topic);
    const QUrl url = page->source().resolved(QUrl(file));
    const auto drawing = page->loadResource(QTextDocument::ImageResource, url).value<QImage>();
    const QList<QColor> colours = MainColours(drawing);
    EXPECT_GE(colours.size(), 3) << file;
    for (const QColor& colour : colours) {
      ExpectReadable(colour, page->palette().color(QPalette::Base), file);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Themes, Contrast, testing::Values(Theme::Light, Theme::Dark),
                         [](const auto& row) {
                           return row.param == Theme::Light ? "Light" : "Dark";
                         });

}  // namespace
