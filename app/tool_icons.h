// The pictures on buttons and windows, from SVG files. Those on buttons take their colours from the
// application's palette each time they are painted, so they follow a change of theme.
#pragma once

#include <QIcon>
#include <QPixmap>

enum class ToolPicture { New, Open, Save, Back, Forward, Home, Smaller, Larger };

// In the pixels of the screen at every size and scale; greyed where the button is disabled.
QIcon ToolIcon(ToolPicture picture);

// The program's own icon, in the sizes that desktops ask for (16 to 256 pixels).
QIcon ApplicationIcon();

// The same as a picture of `side` pixels, for a window's content. Asked for at its own size it does
// not pass Qt's cache, which a newly made icon would fill with each use.
QPixmap ApplicationPicture(int side, double devicePixelRatio);
