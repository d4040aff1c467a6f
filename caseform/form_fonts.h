// The fonts of the case form.
#pragma once

#include <QFont>

namespace FormFonts {

// Times New Roman, or the metric-compatible family that stands in for it, as large to the
// eye as the desktop's own font. Its Greek letters serve as the angle symbols: they are the letters
// that the Symbol font has, under their own code points.
QFont Label();

}  // namespace FormFonts
