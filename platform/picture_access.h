// Pictures of ours on the accessibility bus.
#pragma once

#include <QObject>

// Stands in the class of a widget that is a picture, behind Q_OBJECT: a screen reader then learns
// that it is one. To be announced by TellPictures() in its constructor.
#define TELMARION_PICTURE Q_CLASSINFO("picture", "yes")

void TellPictures();
