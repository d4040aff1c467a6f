// The fonts of the case form.
#pragma once

#include <QFont>

namespace FormFonts {

// Times New Roman, or the metric-compatible family that stands in for it, at the size that the
// desktop uses. Its Greek letters serve as the angle symbols: they are the letters that the Symbol
// font has, under their own code points.
QFont Label();

}  // namespace FormFonts
