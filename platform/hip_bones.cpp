// The outlines are smooth curves through points laid out by hand.
#include "platform/hip_bones.h"

#include <QColor>
#include <QLinearGradient>
#include <QList>
#include <QPen>
#include <QTransform>
#include <QtMath>
#include <algorithm>
#include <cmath>

namespace HipBones {

namespace {

using Points = QList<QPointF>;

// Appends a smooth curve (Catmull and Rom's) through `points`; it begins at the first, to which a
// line starts at the current point of the path.
void AppendCurve(QPainterPath& path, const Points& points) {
  const qsizetype last = points.size() - 1;
  path.lineTo(points[0]);
  for (qsizetype i = 0; i < last; ++i) {
    const QPointF before = points[std::max<qsizetype>(i - 1, 0)];
    const QPointF after = points[std::min(i + 2, last)];
    path.cubicTo(points[i] + (points[i + 1] - before) / 6.0,
                 points[i + 1] - (after - points[i]) / 6.0, points[i + 1]);
  }
}

QPainterPath OpenCurve(const Points& points) {
  QPainterPath path(points[0]);
  AppendCurve(path, points);
  return path;
}

QPainterPath ClosedCurve(const Points& points) {
  const qsizetype n = points.size();
  QPainterPath path(points[0]);
  for (qsizetype i = 0; i < n; ++i) {
    const QPointF& from = points[i];
    const QPointF& to = points[(i + 1) % n];
    path.cubicTo(from + (to - points[(i + n - 1) % n]) / 6.0,
                 to - (points[(i + 2) % n] - from) / 6.0, to);
  }
  path.closeSubpath();
  return path;
}

QRectF Around(double radius) {
  return {-radius, -radius, 2.0 * radius, 2.0 * radius};
}

// Where the socket ends, degrees counter-clockwise from the midline's side.
constexpr double kSocketEdge = 90.0 + kEdgeAngle;
constexpr double kSocketFoot = -70.0;

Points HalfPelvisOutline() {
  return {OnCircle(kSocketRadius, kSocketEdge),
          {-2.05, -3.35},
          {-2.8, -4.55},
          {-2.85, -5.5},
          {-2.7, -6.6},
          {-3.2, -7.9},
          {-4.0, -9.0},
          {-4.35, -9.9},
          kCrestSide,
          {-4.1, -12.0},
          {-3.0, -13.75},
          {-1.0, -15.25},
          kCrestTop,
          {3.2, -15.75},
          {4.9, -14.9},
          {6.2, -13.75},
          {6.75, -12.7},
          {6.55, -11.6},
          {6.15, -10.4},
          {6.1, -9.2},
          {6.45, -8.1},
          {6.5, -7.2},
          {5.9, -6.1},
          {5.0, -4.8},
          {4.25, -3.4},
          {3.8, -1.9},
          {3.75, -0.75},
          {4.15, 0.3},
          {5.2, 1.15},
          {6.9, 1.95},
          {8.6, 2.2},
          {9.6, 2.35},
          {10.1, 3.0},
          {10.15, 4.4},
          {10.0, 5.9},
          {9.4, 6.6},
          {8.5, 7.15},
          {7.4, 7.95},
          {6.2, 8.9},
          {5.0, 9.7},
          {3.8, 9.85},
          {2.75, 9.25},
          {2.1, 8.2},
          {1.95, 7.0},
          {2.2, 5.8},
          {2.15, 4.8},
          {1.65, 3.75},
          OnCircle(kSocketRadius, kSocketFoot)};
}

QPainterPath ObturatorForamen() {
  return ClosedCurve({{4.3, 3.3},
                      {5.6, 2.95},
                      {7.1, 3.35},
                      {8.15, 4.25},
                      {8.2, 5.3},
                      {7.4, 6.2},
                      {6.1, 7.15},
                      {4.9, 7.7},
                      {4.0, 7.0},
                      {3.65, 5.6},
                      {3.75, 4.2}});
}

QTransform Mirrored() {
  return QTransform(-1.0, 0.0, 0.0, 1.0, 2.0 * kMidline, 0.0);
}

// A path given by its half on this side of the midline, `x` being the distance from it.
QPainterPath Symmetric(const Points& half) {
  Points all;
  for (const QPointF& p : half) all.append({kMidline - p.x(), p.y()});
  for (auto p = half.rbegin(); p != half.rend(); ++p) all.append({kMidline + p->x(), p->y()});
  return ClosedCurve(all);
}

QPainterPath Sacrum() {
  return Symmetric({{1.3, -13.05},
                    {2.3, -13.5},
                    {3.4, -13.3},
                    {4.3, -12.3},
                    {4.15, -10.9},
                    {3.95, -9.4},
                    {3.8, -8.0},
                    {3.1, -6.6},
                    {2.2, -5.2},
                    {1.45, -4.0},
                    {1.1, -3.2},
                    {0.85, -2.2},
                    {0.4, -1.2}});
}

QPainterPath LastVertebra() {
  return Symmetric({{1.1, -16.75},
                    {2.2, -16.9},
                    {2.45, -16.4},
                    {3.6, -16.35},
                    {4.1, -15.9},
                    {3.5, -15.45},
                    {2.4, -15.4},
                    {2.3, -14.3},
                    {2.1, -13.9},
                    {1.1, -13.75}});
}

Points SacralForamina() {
  return {{1.75, -11.2}, {1.65, -9.5}, {1.45, -7.9}, {1.15, -6.4}};
}

struct Tone {
  QColor light, dark, line;
};

const Tone kNear = {QColor(0xf8, 0xf2, 0xe4), QColor(0xe3, 0xd6, 0xbd), QColor(0x7d, 0x6c, 0x53)};
const Tone kFar = {QColor(0xfa, 0xf7, 0xf0), QColor(0xf0, 0xe9, 0xdb), QColor(0xc0, 0xb4, 0xa0)};

constexpr double kOutline = 0.085;  // cm
constexpr double kDetail = 0.055;   // cm

void DrawBone(QPainter& painter, const QPainterPath& bone, const Tone& tone) {
  const QRectF box = bone.boundingRect();
  QLinearGradient fill(box.topLeft(), box.bottomRight());
  fill.setColorAt(0.0, tone.light);
  fill.setColorAt(1.0, tone.dark);
  painter.setPen(QPen(tone.line, kOutline, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(fill);
  painter.drawPath(bone);
}

void DrawDetail(QPainter& painter, const QPainterPath& detail, const Tone& tone, double width) {
  QColor colour = tone.line;
  colour.setAlphaF(0.55F);
  painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(detail);
}

void DrawSpine(QPainter& painter) {
  DrawBone(painter, LastVertebra(), kFar);
  DrawBone(painter, Sacrum(), kFar);
  painter.setBrush(QColor(0xff, 0xff, 0xff));
  for (const QPointF& p : SacralForamina()) {
    for (const double side : {-1.0, 1.0}) {
      painter.drawEllipse(QPointF(kMidline + side * p.x(), p.y()), 0.38, 0.27);
    }
  }
}

// The sclerotic roof of the socket, the pelvic brim continued over the wing, the crest's inner lip.
void DrawPelvisDetails(QPainter& painter, const Tone& tone) {
  QPainterPath roof;
  roof.arcMoveTo(Around(kSocketRadius + 0.16), kSocketEdge - 6.0);
  roof.arcTo(Around(kSocketRadius + 0.16), kSocketEdge - 6.0, -75.0);
  DrawDetail(painter, roof, tone, 0.2);
  DrawDetail(painter,
             OpenCurve({{-3.75, -10.7},
                        {-3.5, -11.9},
                        {-2.55, -13.3},
                        {-0.8, -14.6},
                        {1.6, -15.35},
                        {3.1, -15.1},
                        {4.6, -14.3},
                        {5.7, -13.3}}),
             tone, kDetail);
  DrawDetail(painter,
             OpenCurve({{5.6, -7.0}, {4.6, -5.6}, {3.75, -3.9}, {3.3, -2.3}, {3.25, -0.8}}), tone,
             kDetail);
  DrawDetail(painter, OpenCurve({{2.9, 4.6}, {2.75, 6.0}, {2.85, 7.4}, {3.5, 8.6}}), tone, kDetail);
}

void DrawFemurDetails(QPainter& painter, const Tone& tone) {
  DrawDetail(painter, OpenCurve({{-5.25, 0.35}, {-4.6, 1.6}, {-3.5, 3.4}, {-2.5, 4.75}}), tone,
             kDetail);
  DrawDetail(painter, OpenCurve({{-5.35, 5.0}, {-5.0, 7.2}, {-4.85, 9.4}, {-4.8, 11.5}}), tone,
             kDetail);
  DrawDetail(painter, OpenCurve({{-2.75, 5.6}, {-3.2, 7.2}, {-3.25, 9.4}, {-3.2, 11.5}}), tone,
             kDetail);
}

// Fades the drawing out where the body continues: the other side, the spine and the shaft.
void DrawFade(QPainter& painter, const QRectF& area, QPointF from, QPointF to,
              const QColor& ground) {
  QColor clear = ground;
  clear.setAlpha(0);
  QLinearGradient fade(from, to);
  fade.setColorAt(0.0, clear);
  fade.setColorAt(1.0, ground);
  painter.fillRect(area, fade);
}

void DrawMidline(QPainter& painter, const Tone& tone) {
  QPen pen(tone.line, kDetail, Qt::CustomDashLine, Qt::FlatCap);
  pen.setDashPattern({14.0, 5.0, 3.0, 5.0});
  painter.setPen(pen);
  painter.drawLine(QPointF(kMidline, kExtent.top()), QPointF(kMidline, kExtent.bottom()));
}

}  // namespace

QPointF OnCircle(double radius, double degrees) {
  const double angle = qDegreesToRadians(degrees);
  return {radius * std::cos(angle), -radius * std::sin(angle)};
}

QPainterPath HalfPelvis() {
  QPainterPath path(OnCircle(kSocketRadius, kSocketEdge));
  AppendCurve(path, HalfPelvisOutline());
  path.arcTo(Around(kSocketRadius), kSocketFoot, kSocketEdge - kSocketFoot);
  path.closeSubpath();
  path.addPath(ObturatorForamen());
  path.setFillRule(Qt::OddEvenFill);
  return path;
}

QPainterPath Femur() {
  constexpr double kNeckAbove = 148.0;  // degrees, where the neck leaves the head
  constexpr double kNeckBelow = 264.0;
  QPainterPath path(OnCircle(kHeadRadius, kNeckAbove));
  AppendCurve(path, {OnCircle(kHeadRadius, kNeckAbove),
                     {-2.5, -0.72},
                     {-2.85, -0.2},
                     {-3.3, 0.22},
                     {-3.85, 0.33},
                     {-4.35, 0.0},
                     {-4.85, -0.4},
                     {-5.45, -0.3},
                     {-5.95, 0.4},
                     kTrochanter,
                     {-6.3, 2.4},
                     {-6.1, 3.8},
                     {-5.8, 5.6},
                     {-5.6, 8.2},
                     {-5.5, 12.0}});
  AppendCurve(path, {{-2.5, 12.0},
                     {-2.6, 8.6},
                     {-2.45, 7.2},
                     {-1.95, 6.4},
                     {-1.65, 5.75},
                     {-1.8, 5.0},
                     {-2.1, 4.4},
                     {-1.98, 3.75},
                     {-1.6, 3.15},
                     {-1.0, 2.68},
                     OnCircle(kHeadRadius, kNeckBelow)});
  path.arcTo(Around(kHeadRadius), kNeckBelow, 360.0 + kNeckAbove - kNeckBelow);
  path.closeSubpath();
  return path;
}

void Draw(QPainter& painter) {
  const QColor ground(0xff, 0xff, 0xff);
  painter.save();
  painter.setClipRect(kExtent);
  painter.fillRect(kExtent, ground);
  DrawSpine(painter);
  DrawBone(painter, Mirrored().map(HalfPelvis()), kFar);
  DrawBone(painter, HalfPelvis(), kNear);
  DrawPelvisDetails(painter, kNear);
  DrawBone(painter, Femur(), kNear);
  DrawFemurDetails(painter, kNear);
  DrawMidline(painter, kNear);
  DrawFade(painter, {12.4, kExtent.top(), 3.0, kExtent.height()}, {12.4, 0.0},
           {kExtent.right(), 0.0}, ground);
  DrawFade(painter, {6.0, kExtent.top(), 9.4, 1.6}, {0.0, -16.2}, {0.0, kExtent.top()}, ground);
  DrawFade(painter, {-7.0, 9.9, 6.0, 1.4}, {0.0, 9.9}, {0.0, 11.2}, ground);
  painter.restore();
}

}  // namespace HipBones
