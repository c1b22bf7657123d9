// The face a framed control paints in OnDraw. Portable.
#pragma once

#include "IKivChildList.h"
#include "IKivDC.h"

// Design mode (ambient UserMode false): white fill and `designText` centred on the baseline.
// User mode: fill with the translated ambient back colour, then invalidate (erasing) and update
// the child at once, if it exists (`child` may be null). The DC's background colour is restored.
void KivDrawControlFace(IKivDC& dc, const KivRect& bounds, bool userMode, const KivString& designText,
                        KivColor ambientBackColor, IKivChildList* child);
