// Colours in which every text can be read, whatever theme the desktop has.
#pragma once

#include <QColor>
#include <QObject>
#include <QPalette>

// The least contrast of a text with its ground, as web accessibility guidelines count it.
inline constexpr double kLeastContrast = 4.5;

// A share of `ink`, 0 to 1, in `ground`; opaque.
QColor Mixed(const QColor& ink, const QColor& ground, double share);

// Contrast of two opaque colours, from 1 (equal) to 21 (black and white).
double ContrastOf(const QColor& one, const QColor& other);

// `colour` itself where its contrast with `other` is enough; else moved towards black or white as
// far as it takes. A colour that lets `other` shine through becomes an opaque one.
QColor ReadableOn(const QColor& other, const QColor& colour);

// The colours that `desktop` has to have otherwise, and no more: the rest goes on following the
// desktop. Disabled texts stay as they are.
QPalette ReadableColours(const QPalette& desktop);

// Keeps the application's texts readable as long as it lives, also when the desktop's theme
// changes. The application's palette is its alone to set.
class PaletteKeeper final : public QObject {
 public:
  PaletteKeeper();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Keep();
  bool keeping_ = false;
};
