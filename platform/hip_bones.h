// The bones of drawings that explain what is measured: the right hip with pelvis, sacrum and the
// beginning of the other side, as on an anteroposterior radiograph.
#pragma once

#include <QPainter>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>

// Picture coordinates are centimetres with the origin at the centre of the femoral head, x to the
// body's midline, y down. The bones fit the measurements that the form proposes for a new case, so
// that the dimension lines meet them.
namespace HipBones {

inline constexpr double kMidline = 10.4;           // cm, x of the body's midline
inline constexpr double kHeadRadius = 2.5;         // cm
inline constexpr double kSocketRadius = 2.95;      // cm, of the acetabulum
inline constexpr double kEdgeAngle = 30.0;         // degrees from the vertical to the socket's edge
inline constexpr QPointF kCrestTop{1.6, -16.0};    // top of the iliac crest
inline constexpr QPointF kCrestSide{-4.4, -10.6};  // most lateral point of the crest
inline constexpr QPointF kTrochanter{-6.2, 1.3};   // where the abductors attach

// What the picture shows.
inline constexpr QRectF kExtent{-9.7, -17.6, 24.8, 28.8};

// The point at this distance from the head centre, angle in degrees counter-clockwise from the
// midline's side.
QPointF OnCircle(double radius, double degrees);

// Outline of the right half of the pelvis with its foramen (odd-even fill).
QPainterPath HalfPelvis();

// Outline of the upper femur.
QPainterPath Femur();

// Draws ground and bones within kExtent. The painter's coordinates are the picture's.
void Draw(QPainter& painter);

}  // namespace HipBones
