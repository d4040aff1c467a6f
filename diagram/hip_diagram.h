// The hip stress diagram: head, stress fan, force arrow, reference lines, angles and legends in the
// frontal plane.
#pragma once

#include <optional>

#include "case/case_entries.h"
#include "diagram/diagram_labels.h"
#include "diagram/page_text.h"
#include "platform/picture_box.h"

namespace Vizual {

// The two mirror images. Deliberately crossed with the case's hip: a left hip is drawn as form D,
// any other as form L. FormOf does the crossing.
enum class Side { L, D };
Side FormOf(std::optional<HipSide> hip);

// Where a diagram goes. For the printer the strokes go to the picture as well and only the texts to
// the page.
class Target {
 public:
  static Target Screen(PictureBox& picture, DiagramLabels& labels) {
    return {picture, labels, nullptr};
  }
  static Target Printer(PictureBox& picture, DiagramLabels& labels, PageText& page) {
    return {picture, labels, &page};
  }

  PictureBox& Picture() const { return picture_; }
  DiagramLabels& Labels() const { return labels_; }
  bool IsPrinter() const { return page_ != nullptr; }
  PageText& Page() const { return *page_; }  // of the printer target only

 private:
  Target(PictureBox& picture, DiagramLabels& labels, PageText* page)
      : picture_(picture), labels_(labels), page_(page) {}

  PictureBox& picture_;
  DiagramLabels& labels_;
  PageText* page_;
};

// A value in degrees turned to radians, and back, with the diagram's own π of 3.14.
double ToDiagramRadians(double degrees);
double ToDiagramDegrees(double radians);

// Draws the diagram.
//  stressScale   peak stress in legend units: 1000 m^-2, or MPa when labels.absoluteStress is set
//  headSize      radius of the head in mm
//  edgeAngle     centre-edge angle, degrees in, radians out
//  poleAngle     stress pole, degrees in, radians out
//  forceAngle    inclination of the resultant force, degrees in, radians out
//  forceScale    resultant force in legend units: body weights, or kN when absolute
//  printOffset…  added to every place at which text is printed, twips; without meaning on screen
// The angles are converted with a π of 3.14 and overwritten: hand in copies, once. Nothing is
// checked: with a stressScale of zero the legend bar is missing. The picture is left with its user
// scale of 7500 by 5000 and a dotted pen of width 1. The pen of head outline and fan is the
// caller's: set DrawStyle to solid first. The page is left at font size 15.
void DrawHipDiagram(Side side, const Target& target, double stressScale, double headSize,
                    double& edgeAngle, double& poleAngle, double& forceAngle, double forceScale,
                    double printOffsetX = 0.0, double printOffsetY = 0.0);

}  // namespace Vizual
