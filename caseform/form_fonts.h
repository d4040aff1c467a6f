// The fonts of the case form.
#pragma once

#include <QFont>

namespace FormFonts {

// Times New Roman, or the metric-compatible family that replaces it, as large to the
// eye as the desktop's own font. Its Greek letters serve as the angle symbols: they are the letters
// that the Symbol font has, under their own code points.
QFont Label();

// The Symbol font for an angle's letter on its own, or where there is none, that of the
// labels. Letters of words are never set in it: some Symbol fonts have Greek in their places.
QFont Symbol();

}  // namespace FormFonts
