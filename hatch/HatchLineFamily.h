// One line family of a hatch pattern: parallel lines through a point, a spacing, a stagger and a
// dash list. Portable, plain data. Lengths are pattern units (millimetres or inches, as the
// control's Metric says), angles degrees counter-clockwise from +x with y pointing up.
#pragma once

#include "KivString.h"

struct HatchLineFamily {
    double angle = 0.0;    // degrees
    double originX = 0.0;  // a point line 0 passes through, pattern units
    double originY = 0.0;
    double deltaX = 0.0;   // shift along the lines from one line to the next (the stagger)
    double deltaY = 0.0;   // distance between neighbouring lines, across them
    // The dash list as it stood in the file, decoded when the family is drawn. "10," is one dash of
    // 10: an unbroken line.
    KivString dashes{u"10,"};
};
