// Our pictures on the accessibility bus.
#pragma once

#include <QObject>

// Goes into the class of a widget that is a picture, after Q_OBJECT: a screen reader then knows
// that it is one. The constructor must call TellPictures().
#define TELMARION_PICTURE Q_CLASSINFO("picture", "yes")

void TellPictures();
