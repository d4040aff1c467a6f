// What the view shows. Mouse and touch are in radiograph_view_mouse.cpp, keys in
// radiograph_view_keys.cpp.
#include "measuring/radiograph_view.h"

#include <QEvent>
#include <QGestureEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QResizeEvent>
#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

#include "measuring/magnifier.h"
#include "measuring/mark_painter.h"
#include "radiograph/windowing.h"

namespace Measuring {

namespace {

// Dark under every theme, so that the eye stays used to the picture; not black, so that its edges
// are seen.
constexpr QRgb kGround = 0xFF1C1E21U;
constexpr double kMargin = 12.0;         // device-independent pixels
constexpr double kLongestSide = 1200.0;  // device-independent pixels of a saved picture

void PaintFlipped(QPainter& painter, double height) {
  PaintText(painter, QPointF(kMargin, height - kMargin), QStringLiteral("Flipped"), kPlainColour);
}

}  // namespace

RadiographView::RadiographView(QWidget* parent) : QWidget(parent) {
  TellPictures();
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_AcceptTouchEvents);
  grabGesture(Qt::PinchGesture);
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setContextMenuPolicy(Qt::PreventContextMenu);  // the right button sets the window
  setMinimumSize(240, 240);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAccessibleName(QStringLiteral("Radiograph"));
  Tell();
}

void RadiographView::SetRadiograph(std::shared_ptr<const Radiography::Radiograph> radiograph,
                                   double pixelAspect) {
  // First what needs much memory: without it everything stays as it is.
  GreyPyramid pyramid = radiograph ? MakePyramid(std::move(radiograph)) : GreyPyramid{};
  CancelPress();
  Select({});
  crossHair_.reset();
  isInverted_ = false;
  transform_ = {QSizeF(size()), 1.0, pixelAspect, false, {}};
  pyramid_ = std::move(pyramid);
  presets_ = HasPicture() ? PresetsOf(*pyramid_.radiograph) : std::vector<GreyPreset>{};
  if (HasPicture()) {
    full_ = Radiography::FullWindow(*pyramid_.radiograph);
    UsePreset(0);
  }
  Fit();
  Tell();
}

void RadiographView::ShowMarks(const MarkPoints& points, const CirclesOnPicture& circles) {
  scene_.points = points;
  scene_.circles = circles;
  if (scene_.selected && !Exists(scene_, *scene_.selected)) Select({});
  Tell();
  RefreshUnderPointer();
  update();
}

void RadiographView::SetCurrent(MarkKind kind) {
  scene_.current = kind;
  update();
}

void RadiographView::Select(std::optional<MarkPoint> point) {
  if (scene_.selected == point) return;
  scene_.selected = point;
  Tell();
  update();
}

void RadiographView::UsePreset(std::size_t index) {
  if (index < presets_.size()) ShowLook(presets_[index].look);
}

void RadiographView::ShowLook(const GreyLook& look) {
  look_ = look;
  brightness_ = BrightnessOf(*pyramid_.radiograph, look_, isInverted_);
  isSeenFresh_ = false;
  update();
  emit ViewChanged();
}

void RadiographView::SetInverted(bool inverted) {
  if (inverted == isInverted_ || !HasPicture()) return;
  isInverted_ = inverted;
  ShowLook(look_);
}

void RadiographView::SetFlipped(bool flipped) {
  if (flipped == transform_.flipped || !HasPicture()) return;
  ViewTransform transform = transform_;
  transform.flipped = flipped;
  Show(transform);
}

void RadiographView::Show(const ViewTransform& transform) {
  transform_ = transform;
  isSeenFresh_ = false;
  RefreshUnderPointer();
  update();
  emit ViewChanged();
}

void RadiographView::Fit() {
  isFitted_ = true;
  Show(HasPicture() ? Fitted(transform_, PictureSize()) : transform_);
}

void RadiographView::OneToOne() {
  if (!HasPicture()) return;
  isFitted_ = false;
  const QPointF middle(transform_.view.width() / 2.0, transform_.view.height() / 2.0);
  const double zoom = 1.0 / devicePixelRatioF();
  Show(OnWholePixels(ZoomedAbout(transform_, middle, zoom), devicePixelRatioF()));
}

void RadiographView::ZoomBy(double factor, QPointF about) {
  if (!HasPicture()) return;
  const ZoomLimits limits = LimitsOf(transform_, PictureSize(), devicePixelRatioF());
  const double zoom = std::clamp(transform_.zoom * factor, limits.least, limits.most);
  isFitted_ = false;
  Show(KeptInView(ZoomedAbout(transform_, about, zoom), PictureSize()));
}

QSize RadiographView::PictureSize() const {
  return {pyramid_.radiograph->width, pyramid_.radiograph->height};
}

double RadiographView::Zoom() const {
  return transform_.zoom * devicePixelRatioF();
}

std::optional<double> RadiographView::ValueAt(PixelPlace place) const {
  if (!HasPicture() || !IsOnPicture(place, PictureSize())) return {};
  const Radiography::Radiograph& picture = *pyramid_.radiograph;
  const QPoint pixel = PixelAt(place, PictureSize());
  const long at = long{pixel.y()} * picture.width + pixel.x();
  return picture.ValueOf(picture.levels[static_cast<std::size_t>(at)]);
}

void RadiographView::Tell() {
  QString words = HasPicture() ? WordsOf(scene_) : QStringLiteral("No picture.");
  if (scene_.selected) {
    words = QStringLiteral("Selected: %1. ").arg(WordsOf(scene_, *scene_.selected)) + words;
  }
  setAccessibleDescription(words);
}

void RadiographView::RefreshSeen() {
  const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
  if (isSeenFresh_ && seen_.size() == pixels) return;
  if (seen_.size() != pixels) seen_ = QImage(pixels, QImage::Format_RGB32);
  if (HasPicture()) {
    PaintSeen(pyramid_, transform_, devicePixelRatioF(), brightness_, kGround, seen_);
  } else {
    seen_.fill(kGround);
  }
  isSeenFresh_ = true;
}

void RadiographView::paintEvent(QPaintEvent*) {
  RefreshSeen();
  QPainter painter(this);
  painter.drawImage(QRectF({0.0, 0.0}, QSizeF(seen_.size()) / devicePixelRatioF()), seen_);
  painter.setRenderHint(QPainter::Antialiasing);
  if (HasPicture()) PaintOver(painter);
  if (hasFocus()) PaintFocus(painter);
}

void RadiographView::PaintOver(QPainter& painter) const {
  PaintMarks(painter, transform_, scene_, Captions::OfCurrent);
  if (DrawsRoughCircle()) PaintRoughCircle(painter);
  if (transform_.flipped) PaintFlipped(painter, transform_.view.height());
  if (crossHair_ && !scene_.selected && isKeyed_) {
    PaintStroke(painter, OpenCross(PositionOf(transform_, *crossHair_), 4.0, 24.0), kPlainColour,
                1.25);
  }
  if (const auto area = Magnifier()) {
    const Magnified magnified{pyramid_, brightness_, scene_, *PlacedNow()};
    PaintMagnifier(painter, *area, transform_, magnified, devicePixelRatioF());
  }
}

void RadiographView::PaintRoughCircle(QPainter& painter) const {
  const QPointF way = press_.now - press_.from;
  const double radius = std::hypot(way.x(), way.y());
  QPainterPath path;
  path.addEllipse(press_.from, radius, radius);
  path.addPath(OpenCross(press_.from, 0.0, 4.0));
  PaintStroke(painter, path, kCurrentColour, 1.25);
}

void RadiographView::PaintFocus(QPainter& painter) const {
  QPainterPath frame;
  frame.addRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5));
  PaintStroke(painter, frame, kMarkColour, 1.5);
}

std::optional<QRectF> RadiographView::Magnifier() const {
  const auto place = PlacedNow();
  if (!place) return {};
  magnifier_ = MagnifierArea(transform_.view, PositionOf(transform_, *place), magnifier_);
  return magnifier_;
}

void RadiographView::resizeEvent(QResizeEvent*) {
  ViewTransform transform = transform_;
  transform.view = QSizeF(size());
  if (HasPicture() && !transform.view.isEmpty()) {
    transform = isFitted_ ? Fitted(transform, PictureSize()) : KeptInView(transform, PictureSize());
  }
  Show(transform);
}

// Painted as on a display that has `ratio` of its pixels in each device-independent one, so that
// the marks have the size that they have on a screen.
QImage RadiographView::PictureWithMarks() const {
  if (!HasPicture()) return {};
  ViewTransform transform = transform_;
  const QSizeF whole(PictureSize().width(), std::round(PictureSize().height() * Aspect()));
  const double ratio = std::max(1.0, std::max(whole.width(), whole.height()) / kLongestSide);
  transform.view = whole / ratio;
  transform.zoom = 1.0 / ratio;
  transform.middle = {(PictureSize().width() - 1) / 2.0, (PictureSize().height() - 1) / 2.0};
  QImage image(whole.toSize(), QImage::Format_RGB32);
  if (image.isNull()) return {};
  PaintSeen(pyramid_, transform, ratio, brightness_, kGround, image);
  MarkScene scene{scene_.points, scene_.circles, {}, {}};
  QPainter painter(&image);
  painter.setFont(font());
  painter.scale(ratio, ratio);
  PaintMarks(painter, transform, scene, Captions::OfAll);
  if (transform.flipped) PaintFlipped(painter, transform.view.height());
  return image;
}

}  // namespace Measuring
