// Positions of the dimension lines and labels, and the drawing of the whole picture.
#include "caseform/hip_picture.h"

#include <QPainter>
#include <QPainterPath>
#include <QtMath>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/hip_bones.h"

namespace {

using HipBones::kExtent;
using HipBones::OnCircle;

constexpr double kPixelsPerCm = 17.2;      // proposed size
constexpr double kLabelHeight = 1.25;      // cm of the picture
constexpr double kSubscriptHeight = 0.85;  // cm

QPainterPath Stroke(QPointF from, QPointF to) {
  QPainterPath path(from);
  path.lineTo(to);
  return path;
}

// A stretch between two arrow heads.
DimensionLine::Shape Span(QPointF from, QPointF to, const QPainterPath& leaders = {}) {
  return {Stroke(from, to), {{from, from - to}, {to, to - from}}, leaders};
}

// An arc about the head centre, angles in degrees counter-clockwise from the midline's side, with
// an arrow head where it ends.
DimensionLine::Shape ArcTo(double radius, double from, double to) {
  const QRectF circle(-radius, -radius, 2.0 * radius, 2.0 * radius);
  QPainterPath arc;
  arc.arcMoveTo(circle, from);
  arc.arcTo(circle, from, to - from);
  // The head is straight and the arc is not: it points from where the arc enters it.
  const double headAngle = qRadiansToDegrees(0.25 / radius);
  const QPointF heading =
      OnCircle(1.0, (to > from ? to - headAngle : to + headAngle) + (to > from ? 90.0 : -90.0));
  return {arc, {{OnCircle(radius, to), heading}}, {}};
}

// Head centre and trochanter point, from which the measurements start.
void DrawPoints(QPainter& painter) {
  constexpr double kDot = 0.16;  // cm
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::black);
  painter.drawEllipse(QPointF(0.0, 0.0), kDot, kDot);
  painter.drawEllipse(HipBones::kTrochanter, kDot, kDot);
}

}  // namespace

HipPicture::HipPicture(QWidget* parent) : QWidget(parent) {
  TellPictures();
  setObjectName("Picture1");
  setAccessibleName("Pelvis and femur with the dimensions to measure");
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setMinimumSize(sizeHint() * 0.6);
  AddLengths();
  AddAngles();
  AddLabels();
}

void HipPicture::AddLine(Sila::Measurement measurement, const char* name,
                         DimensionLine::Shape shape) {
  MarksOf(measurement).lines.append(new DimensionLine(name, std::move(shape), this));
}

void HipPicture::AddLabel(Sila::Measurement measurement, const char* name, const QString& text,
                          QPointF centre, double height) {
  MarksOf(measurement).labels.append(new DimensionLabel(name, text, centre, height, this));
}

void HipPicture::AddLengths() {
  const QPointF trochanter = HipBones::kTrochanter;
  constexpr double kXLine = -7.9;  // cm, beside the trochanter
  constexpr double kZLine = 9.3;   // cm, below it
  constexpr double kBeyond = 0.4;  // cm, by which a leader passes the line that it leads to

  QPainterPath toX = Stroke({0.0, 0.0}, {kXLine - kBeyond, 0.0});
  toX.addPath(Stroke(trochanter, {kXLine - kBeyond, trochanter.y()}));
  QPainterPath toZ = Stroke({0.0, 0.0}, {0.0, kZLine + kBeyond});
  toZ.addPath(Stroke(trochanter, {trochanter.x(), kZLine + kBeyond}));
  const QPointF side = HipBones::kCrestSide;
  const QPointF top = HipBones::kCrestTop;

  AddLine(Sila::Measurement::Lizm, "Line1", Span({0.0, 0.0}, {HipBones::kMidline, 0.0}));
  AddLine(Sila::Measurement::Xizm, "Line2", Span({kXLine, 0.0}, {kXLine, trochanter.y()}, toX));
  AddLine(Sila::Measurement::Zizm, "Line3", Span({trochanter.x(), kZLine}, {0.0, kZLine}, toZ));
  AddLine(Sila::Measurement::Cizm, "Line4",
          Span(side, {0.0, side.y()}, Stroke({0.0, 0.0}, {0.0, side.y() - kBeyond})));
  AddLine(Sila::Measurement::Hizm, "Line5",
          Span({top.x(), 0.0}, top, Stroke({top.x() - 1.2, top.y()}, {top.x() + 1.2, top.y()})));
}

void HipPicture::AddAngles() {
  const QPointF trochanter = HipBones::kTrochanter;
  const double distance = std::hypot(trochanter.x(), trochanter.y());
  const double trochanterAngle =
      180.0 + qRadiansToDegrees(std::atan2(trochanter.y(), -trochanter.x()));
  constexpr double kVertical = 90.0;
  constexpr double kEdge = kVertical + HipBones::kEdgeAngle;
  constexpr double kLineLength = 6.2;  // cm
  constexpr double kArcRadius = 5.2;   // cm

  // A positive rotation turns the trochanter point downwards.
  AddLine(Sila::Measurement::Zasuk, "Line6",
          ArcTo(distance, trochanterAngle - 38.0, trochanterAngle));
  AddLine(Sila::Measurement::ThetaCE, "Line7",
          {Stroke({0.0, 0.0}, OnCircle(kLineLength, kVertical)), {}, {}});
  AddLine(Sila::Measurement::ThetaCE, "Line8",
          {Stroke({0.0, 0.0}, OnCircle(kLineLength, kEdge)), {}, {}});
  AddLine(Sila::Measurement::ThetaCE, "Line9", ArcTo(kArcRadius, kVertical, kEdge));
  AddLine(Sila::Measurement::HeadRadius, "Line10",
          {Stroke({0.0, 0.0}, OnCircle(HipBones::kHeadRadius, -50.0)),
           {{OnCircle(HipBones::kHeadRadius, -50.0), OnCircle(1.0, -50.0)}},
           {}});
}

void HipPicture::AddLabels() {
  AddLabel(Sila::Measurement::Lizm, "Label20", "l/2", {7.4, -0.95}, kLabelHeight);
  AddLabel(Sila::Measurement::Xizm, "Label21", "x", {-8.8, 0.65}, kLabelHeight);
  AddLabel(Sila::Measurement::Zizm, "Label22", "z", {-1.2, 8.7}, kLabelHeight);
  AddLabel(Sila::Measurement::Cizm, "Label23", "C", {-2.2, -11.4}, kLabelHeight);
  AddLabel(Sila::Measurement::Hizm, "Label24", "H", {2.4, -8.6}, kLabelHeight);
  AddLabel(Sila::Measurement::Zasuk, "Label25", QStringLiteral(u"φ"), {-7.2, -2.0}, kLabelHeight);
  AddLabel(Sila::Measurement::ThetaCE, "Label26", QStringLiteral(u"ϑ"), {-1.9, -6.6}, kLabelHeight);
  AddLabel(Sila::Measurement::ThetaCE, "Label27", "CE", {-1.0, -6.3}, kSubscriptHeight);
  AddLabel(Sila::Measurement::HeadRadius, "Label28", "r", {1.4, 0.75}, kLabelHeight);
}

QList<DimensionLine*> HipPicture::LinesOf(Sila::Measurement measurement) const {
  return MarksOf(measurement).lines;
}

QList<DimensionLabel*> HipPicture::LabelsOf(Sila::Measurement measurement) const {
  return MarksOf(measurement).labels;
}

void HipPicture::SetHighlighted(Sila::Measurement measurement, bool highlighted) {
  for (DimensionLine* line : MarksOf(measurement).lines) line->SetHighlighted(highlighted);
  for (DimensionLabel* label : MarksOf(measurement).labels) label->SetHighlighted(highlighted);
  update();
}

QSize HipPicture::sizeHint() const {
  return (kExtent.size() * kPixelsPerCm).toSize();
}

void HipPicture::DrawMarks(QPainter& painter, double pixel, bool highlighted) const {
  const auto isThick = [](const DimensionLine* line) { return line->borderWidth() > 1; };
  const auto wanted = [&](const Marks& marks) {
    return std::any_of(marks.lines.begin(), marks.lines.end(), isThick) == highlighted;
  };
  for (const Marks& marks : marks_) {
    if (!wanted(marks)) continue;
    for (const DimensionLine* line : marks.lines) line->Draw(painter, pixel);
  }
  for (const Marks& marks : marks_) {
    if (!wanted(marks)) continue;
    for (const DimensionLabel* label : marks.labels) label->Draw(painter);
  }
}

void HipPicture::paintEvent(QPaintEvent*) {
  const double scale = std::min(width() / kExtent.width(), height() / kExtent.height());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), Qt::white);
  painter.translate(rect().width() / 2.0, rect().height() / 2.0);
  painter.scale(scale, scale);
  painter.translate(-kExtent.center());
  HipBones::Draw(painter);
  DrawPoints(painter);
  DrawMarks(painter, 1.0 / scale, false);
  DrawMarks(painter, 1.0 / scale, true);
}
