// Marks over a radiograph: thin light strokes on dark ones, so that they are seen on black and on
// white alike, and of the same size at every zoom.
#pragma once

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QString>

#include "measuring/mark_scene.h"

namespace Measuring {

// Of the colours that the colour-blind tell apart (Okabe and Ito 2008).
inline constexpr QColor kMarkColour(0x56, 0xB4, 0xE9);     // sky blue
inline constexpr QColor kScaleColour(0xE6, 0x9F, 0x00);    // orange: ball and line of known size
inline constexpr QColor kCurrentColour(0xF0, 0xE4, 0x42);  // yellow
inline constexpr QColor kPlainColour(0xFF, 0xFF, 0xFF);

enum class Captions { None, OfCurrent, OfAll };

// The painter's unit is a device-independent pixel of the view. The current mark is told from the
// others by its square handles and its thicker lines, the selected point by a ring around it.
void PaintMarks(QPainter& painter, const ViewTransform& transform, const MarkScene& scene,
                Captions captions);

void PaintStroke(QPainter& painter, const QPainterPath& path, QColor colour, double width);
void PaintText(QPainter& painter, QPointF baseline, const QString& text, QColor colour);

// Four arms around a place that stays free: `gap` to `reach` from it.
QPainterPath OpenCross(QPointF at, double gap, double reach);

}  // namespace Measuring
