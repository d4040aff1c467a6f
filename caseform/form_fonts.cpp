// The fonts of the case form.
#include "caseform/form_fonts.h"

#include <QApplication>

namespace FormFonts {

namespace {
constexpr double kSerif = 1.2;  // small letters of Times are lower than those of a desktop's font
}  // namespace

QFont Label() {
  QFont font = QApplication::font();
  font.setFamilies({"Times New Roman", "Liberation Serif"});
  font.setStyleHint(QFont::Serif);
  font.setPointSizeF(font.pointSizeF() * kSerif);
  return font;
}

QFont Symbol() {
  QFont font = Label();
  font.setFamilies(QStringList{"Symbol"} + font.families());
  return font;
}

}  // namespace FormFonts
