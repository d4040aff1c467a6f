// Loading and drawing of the 3D view.
#include "view3d/head_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QShowEvent>
#include <QSignalBlocker>
#include <algorithm>
#include <numbers>
#include <utility>

#include "case/number_text.h"
#include "platform/picture_file.h"
#include "view3d/head_words.h"

namespace {

constexpr float kPi = std::numbers::pi_v<float>;
constexpr Colour kFirstSphereColour = 0xD0D8D8;
const QLatin1String kCaption("3D vizualization TELMARION");
const QLatin1String kExtra("Extra");

// Steps in a half turn. Nothing is chosen at first.
int StepsOf(const QString& resolution) {
  if (resolution == QLatin1String("Medium")) return 50;
  if (resolution == QLatin1String("High")) return 70;
  if (resolution == kExtra) return 300;
  return 10;
}

LineStyle OutlineOf(const QComboBox& list, const QCheckBox& check) {
  return list.currentText() == kExtra || !check.isChecked() ? LineStyle::None : LineStyle::Solid;
}

void FillList(QComboBox& list) {
  const QSignalBlocker quiet(list);
  list.clear();
  list.addItems({QStringLiteral("Low"), QStringLiteral("Medium"), QStringLiteral("High"), kExtra});
  list.setCurrentIndex(-1);
}

void Clear(QCheckBox& check) {
  const QSignalBlocker quiet(check);
  check.setChecked(false);
}

// Centred on the point, but within the picture.
void PlaceLabel(QLabel& label, QPointF centre) {
  label.adjustSize();
  const QSize room = label.parentWidget()->size() - label.size();
  const QPoint corner = (centre - QPointF(label.width(), label.height()) / 2.0).toPoint();
  label.move(std::clamp(corner.x(), 0, std::max(0, room.width())),
             std::clamp(corner.y(), 0, std::max(0, room.height())));
}

}  // namespace

FormGula::FormGula(HeadWindowNeeds needs, QWidget* parent)
    : QMainWindow(parent),
      needs_(std::move(needs)),
      controls_(MakeHeadControls(*this)),
      timer_(new QTimer(this)) {
  setObjectName(QStringLiteral("FormGula"));
  setWindowTitle(kCaption);
  timer_->setObjectName(QStringLiteral("Timer1"));
  timer_->setInterval(kDragInterval);
  controls_.picture->setMouseTracking(true);
  controls_.picture->installEventFilter(this);
  FollowPalette(controls_, palette());
  Connect();
}

void FormGula::Connect() {
  for (const QComboBox* list : {controls_.resolutionOfSphere, controls_.resolutionOfArea}) {
    connect(list, &QComboBox::activated, this, &FormGula::RedrawFully);
  }
  for (const QCheckBox* check :
       {controls_.outlinesOfSphere, controls_.outlinesOfArea, controls_.showPole}) {
    connect(check, &QCheckBox::toggled, this, &FormGula::RedrawFully);
  }
  // The picture is cleared from inside the layout of the window; it is drawn when that is done.
  connect(controls_.picture, &RasterView::Cleared, this, &FormGula::RedrawFully,
          Qt::QueuedConnection);
  connect(timer_, &QTimer::timeout, this, &FormGula::Tick);
  connect(controls_.savePicture, &QPushButton::clicked, this, &FormGula::SavePicture);
}

void FormGula::CaseComputed() {
  ReadCase();
  computed_ = true;
  if (!dragging_) RedrawFully();
}

void FormGula::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (!event->spontaneous() && !loaded_) Load();
}

void FormGula::closeEvent(QCloseEvent* event) {
  loaded_ = false;
  dragging_ = false;
  timer_->stop();
  QMainWindow::closeEvent(event);
}

void FormGula::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) Activate();
  if (event->type() == QEvent::PaletteChange) {
    FollowPalette(controls_, palette());
    RedrawFully();
  }
}

void FormGula::Load() {
  loaded_ = true;
  view_.angles = {0.0F, 0.0F, kPi};  // the loaded area faces the user
  RasterBox& picture = controls_.picture->Box();
  picture.SetScaleMode(ScaleUnit::Pixels);
  picture.SetFillStyle(FillKind::Solid);
  picture.SetFillColor(kFirstSphereColour);
  controls_.picture->setCursor(Qt::OpenHandCursor);
  for (QComboBox* list : {controls_.resolutionOfSphere, controls_.resolutionOfArea})
    FillList(*list);
  for (QCheckBox* check :
       {controls_.outlinesOfSphere, controls_.outlinesOfArea, controls_.showPole})
    Clear(*check);
  controls_.poleLabel->hide();
  if (!computed_) ReadCase();
  RedrawFully();
  DrawAxesAndLabels();
  DrawLegend(controls_.legend->Box());
}

// A window that the click of a drag has brought to the front keeps that drag.
void FormGula::Activate() {
  if (!loaded_) return;
  if (!computed_) ReadCase();
  if (dragging_ && QGuiApplication::mouseButtons() != Qt::NoButton) return;
  view_.exclusionBounds = {};
  if (dragging_) TurnByDrag();  // without what a tick has added
  dragging_ = false;
  timer_->stop();
  controls_.picture->setCursor(Qt::OpenHandCursor);
  RedrawFully();
}

void FormGula::ReadCase() {
  view_.headCase = needs_.headCase();
  ShowLegendCaptions();
  TellCase();
}

// What the pictures show, for a screen reader.
void FormGula::TellCase() {
  controls_.picture->setAccessibleDescription(HeadWords(view_.headCase, needs_.locale));
  controls_.legend->setAccessibleDescription(LegendWords(view_.headCase));
}

void FormGula::TellTurn() {
  controls_.axes->setAccessibleDescription(TurnWords(view_.angles, needs_.locale));
}

void FormGula::ShowLegendCaptions() {
  const bool perWeight = view_.headCase.perBodyWeight;
  const auto set = [](QLabel* label, const QString& text) {
    label->setText(text);
    label->setAccessibleName(text);
  };
  set(controls_.scaleTitle, perWeight ? "Scale Pmax/Wb" : "Scale Pmax");
  set(controls_.scaleTop, LegendTop(view_.headCase));
  set(controls_.scaleMiddle, perWeight ? "3500 m^-2" : "2 MPa");
  set(controls_.scaleBottom, perWeight ? "0 m^-2" : "0 MPa");
}

void FormGula::ReadResolutions() {
  view_.sphereSteps = StepsOf(controls_.resolutionOfSphere->currentText());
  view_.areaSteps = StepsOf(controls_.resolutionOfArea->currentText());
}

// The bar counts two for each row but is raised by one. Deliberate: it ends half full.
void FormGula::RedrawFully() {
  if (!loaded_) return;
  ReadResolutions();
  controls_.progress->setRange(0, 2 * (view_.sphereSteps + view_.areaSteps));
  controls_.progress->setValue(0);
  setWindowTitle(kCaption + QStringLiteral(" - computing"));
  DrawSurfaces(OutlineOf(*controls_.resolutionOfSphere, *controls_.outlinesOfSphere),
               OutlineOf(*controls_.resolutionOfArea, *controls_.outlinesOfArea));
  DrawPoleAndLabel();
  controls_.picture->ShowDrawing();
  controls_.progress->setValue(0);
  setWindowTitle(kCaption);
}

// The bar paints itself at once when it has risen enough to be seen. During a drag it rests.
void FormGula::DrawSurfaces(LineStyle outlinesOfSphere, LineStyle outlinesOfArea) {
  RasterBox& picture = controls_.picture->Box();
  const RowCall beforeRow = [this] {
    if (!dragging_) controls_.progress->setValue(controls_.progress->value() + 1);
  };
  picture.SetDrawStyle(outlinesOfSphere);
  DrawSphere(picture, polygon_, view_, beforeRow);
  picture.SetDrawStyle(outlinesOfArea);
  DrawArea(picture, polygon_, view_, beforeRow);
}

// Behind the head the pole is not drawn, and its label stays as it was.
void FormGula::DrawPoleAndLabel() {
  constexpr double kBehind = -0.01;
  RasterBox& picture = controls_.picture->Box();
  const PoleMark mark = FindPole(picture, view_);
  if (mark.depth <= kBehind) return;
  const bool wanted = controls_.showPole->isChecked();
  if (wanted) {
    PlaceLabel(*controls_.poleLabel, mark.outer / picture.PixelRatio());
    DrawPole(picture, mark);
  }
  controls_.poleLabel->setVisible(wanted);
}

void FormGula::DrawAxesAndLabels() {
  PlaceAxisLabels(DrawAxes(controls_.axes->Box(), view_.angles));
  TellTurn();
}

// Beside the ends of the axes. Where two ends coincide, the later label goes beside the earlier
// one.
void FormGula::PlaceAxisLabels(const std::array<QPointF, 3>& ends) {
  constexpr double kOffset = 0.1 * kAxisLength;
  const std::array<QLabel*, 3> labels = {controls_.axisX, controls_.axisY, controls_.axisZ};
  const QRect picture = controls_.axes->geometry();
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const QPointF place = (ends[i] + QPointF(-kOffset, kOffset)) * picture.width();
    QRect area(picture.topLeft() + place.toPoint(), labels[i]->sizeHint());
    for (std::size_t j = 0; j < 2 * i; ++j) {
      const QRect other = labels[j % i]->geometry();
      if (area.intersects(other)) area.moveLeft(other.right() + 2);
    }
    labels[i]->setGeometry(area);
  }
}

void FormGula::SavePicture() {
  WriteBitmap(QStringLiteral("TEST.BMP"));
  const QString name = Vse::NumberText(WholeDegrees(view_.headCase.edgeAngle), needs_.locale) +
                       QLatin1String(".bmp");
  const QString path = needs_.files.AskSaveFileName(this, QStringLiteral("Picture (*.bmp)|*.bmp"),
                                                    QStringLiteral("bmp"), name);
  if (!path.isEmpty()) WriteBitmap(path);
}

// With the label of the pole, as it is seen.
void FormGula::WriteBitmap(const QString& path) {
  const QString failure = WritePictureFile(controls_.picture->grab().toImage(), path, "bmp");
  if (!failure.isEmpty()) needs_.messages.ShowError(this, failure, QStringLiteral("Error"));
}
