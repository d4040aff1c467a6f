// Which grey levels are dark and which are bright: what the file proposes, what fits every picture,
// and what a drag of the mouse makes of it.
#pragma once

#include <QPointF>
#include <QString>
#include <variant>
#include <vector>

#include "radiograph/radiograph.h"

namespace Measuring {

using GreyLook = std::variant<Radiography::Window, Radiography::BrightnessTable>;

struct GreyPreset {
  QString name;  // for the user
  GreyLook look;
};

// A high level is shown brighter than a low one.
bool BrightIsHigh(const Radiography::Radiograph& radiograph);

// The file's windows, its tables, the full range and bone; the picture comes up in the first. Needs
// a picture with pixels.
std::vector<GreyPreset> PresetsOf(const Radiography::Radiograph& radiograph);

// From the level that three tenths of the pixels lie below, mostly air and the edges of the body,
// to the one that a hundredth lies above: metal and markers, which must not take the range.
Radiography::Window BoneWindow(const Radiography::Radiograph& radiograph);

// A table as the window that spans it.
Radiography::Window WindowOf(const GreyLook& look);

// A drag to the right widens the window (double every 200 pixels), one upward moves it down the
// levels (by its width every 400) or, where low levels are bright, up: what is seen gets brighter.
// `full` is the picture's full window; the result stays within reason of it.
Radiography::Window Dragged(const Radiography::Window& window, QPointF way,
                            const Radiography::Window& full, bool lowIsBright);

// The brightness of each level; `isInverted` turns what is bright dark.
std::vector<std::uint8_t> BrightnessOf(const Radiography::Radiograph& radiograph,
                                       const GreyLook& look, bool isInverted);

}  // namespace Measuring
