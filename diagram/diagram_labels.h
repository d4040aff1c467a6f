// The texts that accompany the hip stress diagram. The drawing routine places and shows them; the
// window paints them over the picture.
#pragma once

#include <QString>

#include "platform/picture_label.h"

namespace Vizual {

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

}  // namespace Vizual
