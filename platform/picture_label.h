// A text on a picture, placed in the picture's user units.
#pragma once

#include <QPalette>
#include <QRectF>
#include <QString>

#include "platform/picture_box.h"

class QPainter;

// Runs of blanks in the caption break it into lines.
struct PictureLabel {
  QString caption;
  double left = 0.0;  // user units
  double top = 0.0;
  double fontHeight = 190.0;  // em, user units
  bool visible = false;
  Colour foreColor = kBlack;
  Colour backColor = kButtonFace;
};

// Where the label lies when the picture is painted on `target`. A label that would leave the
// picture is moved in from the edge, so that it can be read.
QRectF LabelArea(const QPainter& painter, const QRectF& target, const PictureBox& box,
                 const PictureLabel& label);

// Paints the label on its own ground if it is visible. `target` is where the picture lies.
void PaintLabel(QPainter& painter, const QRectF& target, const PictureBox& box,
                const PictureLabel& label, const QPalette& palette);
