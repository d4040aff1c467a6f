// The cases on which the diagram is tested, and their drawing.
#pragma once

#include <ostream>
#include <string>
#include <variant>
#include <vector>

#include "diagram/hip_diagram.h"

// What the model gives for the default entries and a weight of 70 kg.
inline constexpr double kThetaR = 8.4764903085;     // degrees
inline constexpr double kThetaPol = 16.4157852045;  // degrees
inline constexpr double kRWb = 2.81222677558;
inline constexpr double kPmaxWb = 3006.76110604;   // m^-2
inline constexpr double kPmax = 2066847.58429341;  // Pa
// The same with a centre-edge angle of 5 degrees.
inline constexpr double kThetaPolAt5 = 55.154924345;
inline constexpr double kPmaxWbAt5 = 9438.08352603;

struct DiagramCase {
  std::string name;
  Vizual::Side side = Vizual::Side::D;
  bool onPaper = false;
  bool absolute = true;
  double stressScale = kPmax / 1e6;
  double headSize = 25.0;
  double edgeAngle = 30.0;  // degrees
  double poleAngle = kThetaPol;
  double forceAngle = kThetaR;
  double forceScale = kRWb * 70.0 * 9.82 / 1000.0;
  // Expected: strokes of the fan, from the pole (or the edge) inward and from the pole outward.
  int inward = 19;
  int outward = 3;
};

inline void PrintTo(const DiagramCase& row, std::ostream* out) {
  *out << row.name;
}

inline DiagramCase With(DiagramCase row, Vizual::Side side, bool onPaper) {
  row.side = side;
  row.onPaper = onPaper;
  row.name += side == Vizual::Side::L ? "L" : "D";
  row.name += onPaper ? "Paper" : "Screen";
  return row;
}

// A case drawn: the picture, its labels, the printed page and the angles as the routine left them.
struct Drawn {
  explicit Drawn(const DiagramCase& row)
      : edge(row.edgeAngle), pole(row.poleAngle), force(row.forceAngle) {
    if (row.onPaper) {  // as the report does
      picture.SetBackColor(kWhite);
      labels.leftHip.backColor = labels.rightHip.backColor = kWhite;
    }
    labels.absoluteStress = row.absolute;
    labels.leftHip.visible = row.side == Vizual::Side::D;
    labels.rightHip.visible = !labels.leftHip.visible;
    const auto target = row.onPaper ? Vizual::Target::Printer(picture, labels, texts)
                                    : Vizual::Target::Screen(picture, labels);
    Vizual::DrawHipDiagram(row.side, target, row.stressScale, row.headSize, edge, pole, force,
                           row.forceScale, 1000.0, 2000.0);
  }

  PictureBox picture;
  Vizual::DiagramLabels labels;
  std::vector<Vizual::PrintedText> texts;
  double edge, pole, force;
};

// Every combination of the cases with both forms and both targets.
inline std::vector<DiagramCase> AllForms(const std::vector<DiagramCase>& rows) {
  std::vector<DiagramCase> all;
  for (const DiagramCase& row : rows) {
    for (const auto side : {Vizual::Side::L, Vizual::Side::D}) {
      for (const bool onPaper : {false, true}) all.push_back(With(row, side, onPaper));
    }
  }
  return all;
}

inline std::vector<DiagramCase> DiagramCases() {
  return {
      {.name = "Default"},
      {.name = "UnknownWeight",
       .absolute = false,
       .stressScale = kPmaxWb / 1000.0,
       .forceScale = kRWb},
      {.name = "PoleBeyondTheEdge",
       .absolute = false,
       .stressScale = kPmaxWbAt5 / 1000.0,
       .edgeAngle = 5.0,
       .poleAngle = kThetaPolAt5,
       .forceScale = kRWb,
       .inward = 8,
       .outward = 0},
      {.name = "PoleAtTheEdge", .poleAngle = 30.0, .inward = 19, .outward = 0},
      {.name = "PoleJustInside", .edgeAngle = 30.001, .poleAngle = 30.0, .outward = 1},
      {.name = "LastStepOnTheEdge", .edgeAngle = 35.0000001, .poleAngle = 20.0, .outward = 4},
      {.name = "PoleMedial", .poleAngle = -10.0, .outward = 9},
      {.name = "DeepSocket", .edgeAngle = 120.0, .poleAngle = 0.0, .outward = 19},
      {.name = "PoleFarBeyondTheEdge",
       .edgeAngle = -5.0,
       .poleAngle = 86.0,
       .inward = 0,
       .outward = 0},
      {.name = "NegativeEdgeAngle",
       .edgeAngle = -5.0,
       .poleAngle = 74.5807543292,
       .inward = 3,
       .outward = 0},
      {.name = "NegativeForceAngle", .forceAngle = -4.0},
      {.name = "UprightAngles",
       .edgeAngle = 0.0,
       .poleAngle = 0.0,
       .forceAngle = 0.0,
       .inward = 19,
       .outward = 0},
      {.name = "SmallStress", .stressScale = 0.5},
      {.name = "LargeForce", .forceScale = 3.0},
      {.name = "SmallHead", .headSize = 21.0},
  };
}
