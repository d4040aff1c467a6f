// The hip stress diagram: head, stress fan, force arrow, reference lines, angles and legends in the
// frontal plane.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "case/case_entries.h"
#include "platform/picture_box.h"
#include "platform/picture_label.h"

namespace Vizual {

// The two mirror images. Deliberately crossed with the case's hip: a left hip is drawn as form D,
// any other as form L. FormOf does the crossing.
enum class Side { L, D };
Side FormOf(std::optional<HipSide> hip);

// The texts that accompany the diagram on screen. The drawing routine places and shows them; the
// window paints them over the picture.
struct DiagramLabels {
  // Beside their bars, which are at x 5700; clear of the longest stress stroke.
  PictureLabel stressLegend{.caption = {}, .left = 5800, .top = 220};
  PictureLabel forceLegend{.caption = {}, .left = 5800, .top = 2295};
  // Placed by the drawing.
  PictureLabel edgeAngle{.caption = QStringLiteral("Theta CE")};
  PictureLabel forceAngle{.caption = QStringLiteral("Theta-R")};
  // Which hip it is; the caller shows one of them. Top left, where no stroke comes.
  PictureLabel leftHip{.caption = QStringLiteral("L"), .left = 150, .top = 60, .fontHeight = 420};
  PictureLabel rightHip{.caption = QStringLiteral("D"), .left = 150, .top = 60, .fontHeight = 420};

  // True while the peak stress itself is shown (in MPa, the force in kN), false while it is shown
  // over body weight.
  bool absoluteStress = true;
};

// A text for the printed page: its top left corner in twips, its size in points.
struct PrintedText {
  QString text;
  double x = 0.0;
  double y = 0.0;
  int fontSize = 0;
};

// Where a diagram goes. For the printer the strokes go to the picture as well and only the texts to
// `texts`, in the order of printing.
class Target {
 public:
  static Target Screen(PictureBox& picture, DiagramLabels& labels) {
    return {picture, labels, nullptr};
  }
  static Target Printer(PictureBox& picture, DiagramLabels& labels,
                        std::vector<PrintedText>& texts) {
    return {picture, labels, &texts};
  }

  PictureBox& Picture() const { return picture_; }
  DiagramLabels& Labels() const { return labels_; }
  bool IsPrinter() const { return texts_ != nullptr; }
  std::vector<PrintedText>& Texts() const { return *texts_; }  // of the printer target only

 private:
  Target(PictureBox& picture, DiagramLabels& labels, std::vector<PrintedText>* texts)
      : picture_(picture), labels_(labels), texts_(texts) {}

  PictureBox& picture_;
  DiagramLabels& labels_;
  std::vector<PrintedText>* texts_;
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
// caller's: set DrawStyle to solid first.
void DrawHipDiagram(Side side, const Target& target, double stressScale, double headSize,
                    double& edgeAngle, double& poleAngle, double& forceAngle, double forceScale,
                    double printOffsetX = 0.0, double printOffsetY = 0.0);

}  // namespace Vizual
