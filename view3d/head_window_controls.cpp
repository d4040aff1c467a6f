// The column on the right of the 3D view.
#include "view3d/head_window_controls.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "platform/choice_list.h"
#include "platform/length_units.h"

namespace {

constexpr int kColumnWidth = 25 * kGrid;
constexpr int kAxesSize = 14 * kGrid;
constexpr int kLegendWidth = 5 * kGrid;
constexpr int kLegendHeight = 15 * kGrid;
constexpr int kSmallestPicture = 40 * kGrid;

template <class Widget>
Widget* Named(Widget* widget, const char* name, const QString& accessibleName) {
  widget->setObjectName(QLatin1String(name));
  widget->setAccessibleName(accessibleName);
  return widget;
}

QLabel* Heading(const char* text, QWidget* window) {
  auto* label = new QLabel(QLatin1String(text), window);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}

QCheckBox* MakeCheck(const char* name, const char* caption, QWidget* window) {
  const QString text = QLatin1String(caption);
  return Named(new QCheckBox(text, window), name, text);
}

// A list with its label above.
QComboBox* AddList(QVBoxLayout* column, const char* name, const char* caption, QWidget* window) {
  auto* label = new QLabel(QLatin1String(caption), window);
  auto* list = Named(new ChoiceList(label->text(), window), name, label->text());
  label->setBuddy(list);
  column->addWidget(label);
  column->addWidget(list);
  return list;
}

void AddResolution(QVBoxLayout* column, HeadControls& c, QWidget* window) {
  column->addWidget(Heading("Resolution", window));
  c.resolutionOfSphere = AddList(column, "Combo1", "Articular sphere", window);
  c.resolutionOfArea = AddList(column, "Combo2", "Weight-bearing area", window);
  column->addSpacing(kGrid);
  c.outlinesOfSphere = MakeCheck("Check1", "Outlines of the sphere", window);
  c.outlinesOfArea = MakeCheck("Check2", "Outlines of the area", window);
  c.showPole = MakeCheck("Check3", "Pole of the stress", window);
  for (QCheckBox* check : {c.outlinesOfSphere, c.outlinesOfArea, c.showPole})
    column->addWidget(check);
}

// With a ground of its own: it is on the end of its axis.
QLabel* MakeAxisLabel(const char* name, const char* text, QWidget* parent) {
  auto* label = Named(new QLabel(QLatin1String(text), parent), name, QLatin1String(text));
  label->setAutoFillBackground(true);
  return label;
}

// An axis that points down has its label below the picture's edge: there is room for it there.
void AddAxes(QVBoxLayout* column, HeadControls& c, QWidget* window) {
  auto* heading = Heading("Coordinate system", window);
  column->addWidget(heading);
  auto* room = c.axesGround = new QWidget(window);
  room->setAutoFillBackground(true);
  c.axes = Named(new PictureView(room), "CoorPic", heading->text());
  c.axes->setGeometry(kColumnWidth / 2 - kAxesSize / 2, 0, kAxesSize, kAxesSize);
  c.axisX = MakeAxisLabel("Labelx", "x", room);
  c.axisY = MakeAxisLabel("Labely", "y", room);
  c.axisZ = MakeAxisLabel("Labelz", "z", room);
  room->setFixedSize(kColumnWidth, kAxesSize + c.axisX->sizeHint().height());
  column->addWidget(room);
}

QLabel* MakeScaleLabel(const char* name, Qt::Alignment alignment, QWidget* window) {
  auto* label = new QLabel(window);
  label->setObjectName(QLatin1String(name));
  label->setAlignment(alignment | Qt::AlignLeft);
  return label;
}

void AddLegend(QVBoxLayout* column, HeadControls& c, QWidget* window) {
  c.scaleTitle = Heading("", window);
  c.scaleTitle->setObjectName(QStringLiteral("LabelScale"));
  column->addWidget(c.scaleTitle);
  c.legend = Named(new PictureView(window), "Mierka", QStringLiteral("Legend"));
  c.legend->setFixedWidth(kLegendWidth);
  c.legend->setMinimumHeight(kLegendHeight);
  c.scaleTop = MakeScaleLabel("LabelTop", Qt::AlignTop, window);
  c.scaleMiddle = MakeScaleLabel("LabelMiddle", Qt::AlignVCenter, window);
  c.scaleBottom = MakeScaleLabel("LabelBottom", Qt::AlignBottom, window);
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(kGrid);
  grid->setVerticalSpacing(0);
  grid->addWidget(c.legend, 0, 0, 3, 1);
  grid->addWidget(c.scaleTop, 0, 1);
  grid->addWidget(c.scaleMiddle, 1, 1);
  grid->addWidget(c.scaleBottom, 2, 1);
  grid->setColumnStretch(1, 1);
  for (const int row : {0, 1, 2}) grid->setRowStretch(row, 1);
  column->addLayout(grid, 1);
}

void AddProgress(QVBoxLayout* column, HeadControls& c, QWidget* window) {
  auto* label = new QLabel(QStringLiteral("Progress"), window);
  c.progress = Named(new QProgressBar(window), "ProgressBar", label->text());
  c.progress->setTextVisible(false);
  column->addWidget(label);
  column->addWidget(c.progress);
  column->addSpacing(kGrid);
  const QString caption = QStringLiteral("Save picture");
  c.savePicture = Named(new QPushButton(caption, window), "Command1", caption);
  column->addWidget(c.savePicture);
}

QVBoxLayout* MakeColumn(HeadControls& c, QWidget* window) {
  auto* column = new QVBoxLayout;
  column->setSpacing(kGrid / 2);
  AddResolution(column, c, window);
  column->addSpacing(kGrid);
  AddAxes(column, c, window);
  column->addSpacing(kGrid);
  AddLegend(column, c, window);
  column->addSpacing(kGrid);
  AddProgress(column, c, window);
  return column;
}

QLabel* MakePoleLabel(RasterView* picture) {
  const QString caption = QStringLiteral("Pole of the stress");
  auto* label = Named(new QLabel(caption, picture), "LabelP", caption);
  label->setAutoFillBackground(true);
  label->setMargin(2);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  label->hide();
  return label;
}

}  // namespace

HeadControls MakeHeadControls(QMainWindow& mainWindow) {
  HeadControls c;
  auto* window = new QWidget;
  mainWindow.setCentralWidget(window);
  c.picture = Named(new RasterView(window), "picTest", QStringLiteral("Femoral head"));
  c.picture->setMinimumSize(kSmallestPicture, kSmallestPicture);
  c.picture->setFocusPolicy(Qt::StrongFocus);
  c.poleLabel = MakePoleLabel(c.picture);
  auto* column = new QWidget(window);
  column->setFixedWidth(kColumnWidth);
  auto* layout = new QHBoxLayout(window);
  layout->setContentsMargins(kGrid, kGrid, kGrid, kGrid);
  layout->setSpacing(2 * kGrid);
  QVBoxLayout* controls = MakeColumn(c, column);
  controls->setContentsMargins(0, 0, 0, 0);
  column->setLayout(controls);
  layout->addWidget(c.picture, 1);
  layout->addWidget(column);
  return c;
}

void FollowPalette(const HeadControls& controls, const QPalette& palette) {
  QPalette ground = palette;
  ground.setColor(QPalette::Window, PaintColour(kButtonFace, palette));
  ground.setColor(QPalette::WindowText, Qt::black);
  controls.poleLabel->setPalette(ground);
  controls.axesGround->setPalette(ground);
}
