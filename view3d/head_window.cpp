// Loading and drawing of the 3D view.
#include "view3d/head_window.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPointer>
#include <QShowEvent>
#include <QSignalBlocker>
#include <algorithm>
#include <numbers>
#include <utility>

#include "case/number_text.h"
#include "view3d/bitmap_file.h"
#include "view3d/head_words.h"

namespace {

constexpr float kPi = std::numbers::pi_v<float>;
constexpr float kTickTurn = kPi / 30.0F;
constexpr int kUnansweredTime = 20;  // ms that a drawing may go on without events being handled
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
  controls_.picTest->setMouseTracking(true);
  controls_.picTest->installEventFilter(this);
  FollowPalette(controls_, palette());
  Connect();
}

void FormGula::Connect() {
  for (const QComboBox* list : {controls_.Combo1, controls_.Combo2}) {
    connect(list, &QComboBox::activated, this, &FormGula::RedrawFully);
  }
  for (const QCheckBox* check : {controls_.Check1, controls_.Check2, controls_.Check3}) {
    connect(check, &QCheckBox::toggled, this, &FormGula::RedrawFully);
  }
  connect(controls_.picTest, &RasterView::Cleared, this, &FormGula::RedrawLater);
  connect(timer_, &QTimer::timeout, this, &FormGula::Tick);
  connect(controls_.Command1, &QPushButton::clicked, this, &FormGula::SavePicture);
}

void FormGula::CaseComputed() {
  computed_ = HeadCaseOf(needs_.record, needs_.thetaPolText());
  if (!loaded_) return;
  ReadCase();
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
  RasterBox& picture = controls_.picTest->Box();
  picture.SetScaleMode(ScaleUnit::Pixels);
  picture.SetFillStyle(FillKind::Solid);
  picture.SetFillColor(kFirstSphereColour);
  controls_.picTest->setCursor(Qt::OpenHandCursor);
  for (QComboBox* list : {controls_.Combo1, controls_.Combo2}) FillList(*list);
  for (QCheckBox* check : {controls_.Check1, controls_.Check2, controls_.Check3}) Clear(*check);
  controls_.LabelP->hide();
  ReadCase();
  RedrawFully();
  DrawAxesAndLabels();
  DrawLegend(controls_.Mierka->Box());
}

// A window that the click of a drag has brought to the front keeps that drag.
void FormGula::Activate() {
  if (!loaded_) return;
  ReadCase();
  if (dragging_ && QGuiApplication::mouseButtons() != Qt::NoButton) return;
  view_.exclusionBounds = {};
  if (dragging_) TurnByDrag();  // without what a tick has added
  dragging_ = false;
  timer_->stop();
  controls_.picTest->setCursor(Qt::OpenHandCursor);
  RedrawFully();
}

// Without CaseComputed the record is all there is to know.
void FormGula::ReadCase() {
  view_.headCase = computed_ ? *computed_ : HeadCaseOf(needs_.record, needs_.thetaPolText());
  ShowLegendCaptions();
  TellCase();
}

// What the pictures show, for a screen reader.
void FormGula::TellCase() {
  controls_.picTest->setAccessibleDescription(HeadWords(view_.headCase, needs_.locale));
  controls_.Mierka->setAccessibleDescription(LegendWords(view_.headCase));
}

void FormGula::TellTurn() {
  controls_.CoorPic->setAccessibleDescription(TurnWords(view_.angles, needs_.locale));
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
  view_.sphereSteps = StepsOf(controls_.Combo1->currentText());
  view_.areaSteps = StepsOf(controls_.Combo2->currentText());
}

void FormGula::RedrawFully() {
  if (!loaded_) return;
  ReadResolutions();
  showsProgress_ = true;
  Draw(Work::FullDrawing);
}

// The picture is cleared from inside the layout of the window, which does not bear that a long
// drawing handles events there. A drawing that is being made only notes that it has to give way.
void FormGula::RedrawLater() {
  if (drawing_) return RedrawFully();
  QMetaObject::invokeMethod(this, &FormGula::RedrawFully, Qt::QueuedConnection);
}

void FormGula::Draw(Work work) {
  pending_ = work;
  if (drawing_) return;
  drawing_ = true;
  const QPointer<FormGula> self(this);
  while (self && pending_ != Work::None) {
    if (std::exchange(pending_, Work::None) == Work::FullDrawing) {
      DrawFully();
    } else {
      DrawDragStep();
    }
  }
  if (!self) return;
  drawing_ = false;
  // A full drawing that gave way to a drag step has left these as they were.
  controls_.progress->setValue(0);
  setWindowTitle(kCaption);
}

// The bar counts two for each row but is raised by one. Deliberate: it ends half full.
bool FormGula::DrawFully() {
  controls_.progress->setRange(0, 2 * (view_.sphereSteps + view_.areaSteps));
  controls_.progress->setValue(0);
  setWindowTitle(kCaption + QStringLiteral(" - computing"));
  if (!DrawSurfaces()) return false;
  DrawPoleAndLabel();
  controls_.picTest->ShowDrawing();
  controls_.progress->setValue(0);
  setWindowTitle(kCaption);
  return true;
}

bool FormGula::DrawSurfaces() {
  RasterBox& picture = controls_.picTest->Box();
  RowCalls calls;
  calls.mayGoOn = [this] { return MayGoOn(); };
  if (showsProgress_) {
    calls.beforeSampledRow = [bar = controls_.progress] { bar->setValue(bar->value() + 1); };
  }
  sinceEvents_.start();
  picture.SetDrawStyle(OutlineOf(*controls_.Combo1, *controls_.Check1));
  if (!DrawSphere(picture, polygon_, view_, calls)) return false;
  picture.SetDrawStyle(OutlineOf(*controls_.Combo2, *controls_.Check2));
  return DrawArea(picture, polygon_, view_, calls);
}

// The window answers during a long drawing. Mouse and keys wait until it has ended, so that no
// command runs inside another; what else asks for a drawing meanwhile makes this one give way.
bool FormGula::MayGoOn() {
  if (sinceEvents_.elapsed() < kUnansweredTime) return true;
  const QPointer<FormGula> self(this);
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  if (!self) return false;
  sinceEvents_.restart();
  return pending_ == Work::None;
}

// The third angle goes on a little after the drawing, until the next step sets it. Deliberate.
void FormGula::DrawDragStep() {
  RasterBox& picture = controls_.picTest->Box();
  TurnByDrag();
  picture.SetDrawStyle(LineStyle::Solid);
  DrawSphere(picture, polygon_, view_, {});
  DrawArea(picture, polygon_, view_, {});
  controls_.picTest->ShowDrawing();
  DrawAxesAndLabels();
  view_.angles.third += kTickTurn;
}

// Behind the head the pole is not drawn, and its label stays as it was.
void FormGula::DrawPoleAndLabel() {
  constexpr double kBehind = -0.01;
  RasterBox& picture = controls_.picTest->Box();
  const PoleMark mark = FindPole(picture, view_);
  if (mark.depth <= kBehind) return;
  const bool wanted = controls_.Check3->isChecked();
  if (wanted) {
    PlaceLabel(*controls_.LabelP, mark.outer / picture.PixelRatio());
    DrawPole(picture, mark);
  }
  controls_.LabelP->setVisible(wanted);
}

void FormGula::DrawAxesAndLabels() {
  PlaceAxisLabels(DrawAxes(controls_.CoorPic->Box(), view_.angles));
  TellTurn();
}

// Beside the ends of the axes. Where two ends coincide, the later label stands beside the earlier.
void FormGula::PlaceAxisLabels(const std::array<QPointF, 3>& ends) {
  constexpr double kOffset = 0.1 * kAxisLength;
  const std::array<QLabel*, 3> labels = {controls_.Labelx, controls_.Labely, controls_.Labelz};
  const QRect picture = controls_.CoorPic->geometry();
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
  const QString failure = WriteBitmapFile(controls_.picTest->grab().toImage(), path);
  if (!failure.isEmpty()) needs_.messages.ShowError(this, failure, QStringLiteral("Error"));
}
