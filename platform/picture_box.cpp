// The drawing state of a picture and the shapes drawn on it.
#include "platform/picture_box.h"

#include <cmath>
#include <numbers>
#include <utility>
#include <variant>

namespace {

constexpr double kWholeTurn = 2.0 * std::numbers::pi;

bool IsFinite(QPointF p) {
  return std::isfinite(p.x()) && std::isfinite(p.y());
}

bool IsFinite(const LineShape& line) {
  return IsFinite(line.from) && IsFinite(line.to);
}
bool IsFinite(const BoxShape& box) {
  return IsFinite(box.from) && IsFinite(box.to);
}
bool IsFinite(const ArcShape& arc) {
  return IsFinite(arc.centre) && std::isfinite(arc.radius) && std::isfinite(arc.start) &&
         std::isfinite(arc.sweep);
}

bool IsUsable(const QRectF& scale) {
  return IsFinite(scale.topLeft()) && std::isfinite(scale.width()) &&
         std::isfinite(scale.height()) && scale.width() != 0.0 && scale.height() != 0.0;
}

// Counter-clockwise from `start` to `end`.
double Sweep(double start, double end) {
  if (std::abs(end - start) >= kWholeTurn) return kWholeTurn;
  return end < start ? end - start + kWholeTurn : end - start;
}

}  // namespace

PictureBox::PictureBox(QSizeF size, double pixelRatio) : size_(size), pixelRatio_(pixelRatio) {
  scale_.Follow(size_, PixelSize());
}

QSize PictureBox::PixelSize() const {
  return (size_ * pixelRatio_).toSize();
}

void PictureBox::SetSize(QSizeF size, double pixelRatio) {
  if (size == size_ && pixelRatio == pixelRatio_) return;
  size_ = size;
  pixelRatio_ = pixelRatio;
  scale_.Follow(size_, PixelSize());
  ++generation_;
  Changed();
}

void PictureBox::Line(QPointF from, QPointF to, Colour colour) {
  Draw(LineShape{from, to}, PenOf(colour), {});
}

void PictureBox::LineFilledBox(QPointF from, QPointF to, Colour colour) {
  Draw(BoxShape{from, to}, PenOf(colour), {colour, FillKind::Solid});
}

void PictureBox::Circle(QPointF centre, double radius, Colour colour) {
  Draw(ArcShape{centre, radius, 0.0, kWholeTurn}, PenOf(colour), Filling());
}

void PictureBox::Circle(QPointF centre, double radius, Colour colour, double start, double end) {
  Draw(ArcShape{centre, radius, start, Sweep(start, end)}, PenOf(colour), {});
}

void PictureBox::Draw(const Shape& shape, Pen pen, Fill fill) {
  const QRectF& scale = scale_.Area();
  const bool drawable = std::visit([](const auto& s) { return IsFinite(s); }, shape);
  if (!drawable || !IsUsable(scale)) return;
  (autoRedraw_ ? drawings_ : drawingsOver_).push_back({shape, pen, fill, scale});
  Changed();
}

void PictureBox::Cls() {
  drawingsOver_.clear();
  if (autoRedraw_) drawings_.clear();
  ++generation_;
  Changed();
}

void PictureBox::SetBackColor(Colour colour) {
  backColor_ = colour;
  drawings_.clear();
  drawingsOver_.clear();
  ++generation_;
  Changed();
}

void PictureBox::SetPicture(Picture picture) {
  background_ = std::move(picture);
  ++generation_;
  Changed();
}

Picture PictureBox::Image() const {
  Picture image = background_;
  if (!image.ground) image.ground = backColor_;
  image.drawings.insert(image.drawings.end(), drawings_.begin(), drawings_.end());
  return image;
}

void PictureBox::Changed() {
  if (onChange_) onChange_();
}

QPointF PictureBox::PartPoint(QPointF user) const {
  const QRectF& area = scale_.Area();
  return {(user.x() - area.left()) / area.width(), (user.y() - area.top()) / area.height()};
}
