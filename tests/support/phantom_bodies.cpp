// The bones as chains of spheres.
#include "tests/support/phantom_bodies.h"

#include <cmath>
#include <numbers>

namespace Phantom {

namespace {

// Per mm, at about 70 kV.
constexpr double kTissue = 0.018;
constexpr double kCancellous = 0.016;
constexpr double kCortical = 0.030;
constexpr double kSteel = 0.4;

Space Along(Space from, Space to, double part) {
  return {from.x + part * (to.x - from.x), from.y + part * (to.y - from.y),
          from.z + part * (to.z - from.z)};
}

double Distance(Space a, Space b) {
  return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

Ellipsoid Sphere(Space centre, double radius) {
  return {centre, {radius, radius, radius}};
}

void AddChain(Body& body, Space from, Space to, double fromRadius, double toRadius) {
  constexpr double kStep = 3.0;  // mm
  const int count = 1 + static_cast<int>(Distance(from, to) / kStep);
  for (int i = 0; i <= count; ++i) {
    const double part = static_cast<double>(i) / count;
    body.parts.push_back(
        Sphere(Along(from, to, part), fromRadius + part * (toRadius - fromRadius)));
  }
}

// Head, neck, greater trochanter and shaft.
Body Femur(const Anatomy& anatomy, double side) {
  const Landmarks3 at = LandmarksOf(anatomy, side);
  constexpr double kTrochanterRadius = 15.0;
  const Space trochanter = {at.trochanter.x - side * kTrochanterRadius * 0.8,
                            at.trochanter.y + kTrochanterRadius * 0.6, 0.0};
  const Space neckEnd = {trochanter.x, trochanter.y + 12.0, 0.0};
  const Space shaftEnd = {trochanter.x - side * 6.0, trochanter.y + 170.0, 0.0};
  const double begin = anatomy.hasHeads ? 0.0 : anatomy.headRadius / Distance(at.head, neckEnd);
  Body femur{{}, kCancellous};
  if (anatomy.hasHeads) femur.parts.push_back(Sphere(at.head, anatomy.headRadius));
  AddChain(femur, Along(at.head, neckEnd, begin), neckEnd, anatomy.neckRadius,
           anatomy.neckRadius + 2.0);
  AddChain(femur, trochanter, neckEnd, kTrochanterRadius, kTrochanterRadius + 2.0);
  AddChain(femur, neckEnd, shaftEnd, 17.0, 14.0);
  return femur;
}

// Turns from the vertical, positive laterally, in the frontal plane about the head's centre.
Space AboutHead(const Landmarks3& at, double side, double angle, double distance, double depth) {
  return {at.head.x + side * distance * std::sin(angle), at.head.y - distance * std::cos(angle),
          depth};
}

// The roof, from the lateral edge to the medial wall, at the joint space's distance.
Body SocketRoof(const Anatomy& anatomy, double side) {
  constexpr double kThickness = 3.5;
  constexpr double kMedial = -1.9;  // rad
  constexpr double kStep = 0.06;    // rad
  const Landmarks3 at = LandmarksOf(anatomy, side);
  const double distance = anatomy.headRadius + anatomy.jointSpace + kThickness;
  Body roof{{}, kCortical};
  const double lateral = anatomy.centreEdge - kThickness / distance;
  const int count = static_cast<int>((lateral - kMedial) / kStep);
  for (int i = 0; i <= count; ++i) {
    const double angle = lateral - i * kStep;
    roof.parts.push_back(Sphere(AboutHead(at, side, angle, distance, 0.0), kThickness));
  }
  return roof;
}

// The rim around the opening, which looks forward: it crosses the head's shadow as two lines.
Body SocketRim(const Anatomy& anatomy, double side) {
  constexpr double kThickness = 2.0;
  constexpr double kForward = 0.35;  // rad
  const Landmarks3 at = LandmarksOf(anatomy, side);
  const double distance = anatomy.headRadius + anatomy.jointSpace + kThickness;
  Body rim{{}, kCortical};
  constexpr int kSpheres = 105;
  for (int i = 0; i < kSpheres; ++i) {
    const double turn = 2.0 * std::numbers::pi * i / kSpheres;
    const double up = distance * std::cos(turn);
    const double back = distance * std::sin(turn);
    Space place = AboutHead(at, side, anatomy.centreEdge, up, back * std::cos(kForward));
    const double across = back * std::sin(kForward);
    place.x += side * across * std::cos(anatomy.centreEdge);
    place.y += across * std::sin(anatomy.centreEdge);
    rim.parts.push_back(Sphere(place, kThickness));
  }
  return rim;
}

// The wing with its crest, and the column that bears the socket.
Body Ilium(const Anatomy& anatomy, double side) {
  constexpr double kCrest = 5.0;
  const Landmarks3 at = LandmarksOf(anatomy, side);
  const Space top = {at.crestTop.x, at.crestTop.y + kCrest, 0.0};
  const Space lateral = {at.crestLateral.x - side * kCrest, at.crestLateral.y, 0.0};
  const Space sacral = {side * 38.0, top.y + 25.0, 0.0};
  const double roof = anatomy.headRadius + anatomy.jointSpace + 16.0;
  const Space column = AboutHead(at, side, -0.25, roof + 6.0, 0.0);
  Body ilium{{}, kCancellous};
  AddChain(ilium, lateral, top, kCrest, kCrest);
  AddChain(ilium, top, sacral, kCrest, kCrest);
  AddChain(ilium, AboutHead(at, side, 0.25, roof, 0.0), lateral, 9.0, kCrest);
  AddChain(ilium, column, sacral, 14.0, 8.0);
  ilium.parts.push_back({Along(column, top, 0.55), {34.0, 42.0, 5.0}});
  return ilium;
}

// Pubis and ischium, around the obturator foramen.
Body Pubis(const Anatomy& anatomy, double side) {
  const Landmarks3 at = LandmarksOf(anatomy, side);
  const double wall = anatomy.headRadius + anatomy.jointSpace + 8.0;
  const Space medial = AboutHead(at, side, -1.8, wall, 0.0);
  const Space symphysis = {side * 12.0, at.head.y + 38.0, 0.0};
  const Space tuber = {at.head.x - side * 30.0, at.head.y + 70.0, 0.0};
  Body pubis{{}, kCancellous};
  AddChain(pubis, medial, symphysis, 8.0, 9.0);
  AddChain(pubis, symphysis, tuber, 8.0, 10.0);
  AddChain(pubis, medial, tuber, 9.0, 12.0);
  return pubis;
}

}  // namespace

Landmarks3 LandmarksOf(const Anatomy& anatomy, double side) {
  Landmarks3 at;
  at.head = {side * anatomy.halfInterhip, 0.0, 0.0};
  const double edge = anatomy.headRadius + anatomy.jointSpace;
  at.socketEdge = AboutHead(at, side, anatomy.centreEdge, edge, 0.0);
  at.crestTop = {at.head.x - side * 8.0, -anatomy.crestHeight, 0.0};
  at.crestLateral = {at.head.x + side * anatomy.crestWidth, 30.0 - anatomy.crestHeight, 0.0};
  at.trochanter = {at.head.x + side * anatomy.trochanterZ, anatomy.trochanterX, 0.0};
  return at;
}

std::vector<Body> BodiesOf(const Anatomy& anatomy, const Setup& setup) {
  std::vector<Body> bodies = {{{{{0.0, -20.0, 0.0}, {210.0, 330.0, 110.0}}}, kTissue}};
  if (setup.ball) {
    const Ball& ball = *setup.ball;
    bodies.push_back({{Sphere({ball.x, ball.y, 0.0}, ball.diameter / 2.0)}, kSteel});
  }
  if (!anatomy.hasBones) return bodies;
  bodies.push_back({{{{0.0, -95.0, 30.0}, {36.0, 55.0, 18.0}}}, kCancellous});
  for (const double side : {1.0, -1.0}) {
    bodies.push_back(Femur(anatomy, side));
    bodies.push_back(SocketRoof(anatomy, side));
    bodies.push_back(SocketRim(anatomy, side));
    bodies.push_back(Ilium(anatomy, side));
    bodies.push_back(Pubis(anatomy, side));
  }
  return bodies;
}

}  // namespace Phantom
