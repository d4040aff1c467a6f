// The 3D view in words, for those who do not see it.
#pragma once

#include <QLocale>
#include <QString>

#include "view3d/head_case.h"
#include "view3d/turn.h"

// What is coloured on the head, and how strongly.
QString HeadWords(const HeadCase& headCase, const QLocale& locale);

// How far the head is turned from the view at the opening of the window, in whole degrees from
// -179 to 180; positive is to the right and down, as a drag of the mouse.
QString TurnWords(const ViewAngles& angles, const QLocale& locale);

// The stress at the top of the legend, with its unit.
QString LegendTop(const HeadCase& headCase);

// What the colours of the legend mean.
QString LegendWords(const HeadCase& headCase);
