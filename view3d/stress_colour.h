// The colour that represents a stress.
#pragma once

#include "platform/picture.h"

// `percent` of the legend's top. Stresses are coloured in bands of 10 %; above 100 % all are pure
// red. A value that is not a number is coloured as the lowest band.
Colour StressColour(double percent);
