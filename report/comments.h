// The comments on paper: words wrapped at the right margin, tabs, line breaks and full pages.
#pragma once

#include <QString>

#include "report/sheet.h"

namespace Print {

// Prints from the cursor on and leaves it after the last word. A word that does not fit begins a
// new line, even if it is too wide for any line: it runs past the margin. A line feed breaks the
// line, a tab goes to the next stop (every ten widths of "0"), other control characters are
// dropped. A line that would begin below the bottom margin begins on a fresh page, which continues
// in 13 points.
void PrintComments(const Sheet& sheet, const QString& text);

}  // namespace Print
