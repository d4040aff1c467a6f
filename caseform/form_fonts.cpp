// The fonts of the case form.
#include "caseform/form_fonts.h"

#include <QApplication>

namespace FormFonts {

QFont Label() {
  QFont font = QApplication::font();
  font.setFamilies({"Times New Roman", "Liberation Serif"});
  font.setStyleHint(QFont::Serif);
  return font;
}

}  // namespace FormFonts
