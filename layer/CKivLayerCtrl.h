// CKivLayerCtrl: the layer control, a placeholder. Portable. It has no properties, methods or events
// of its own and no child window: it only paints white bounds with the ellipse inscribed in them,
// the same picture in design and in user mode. It stays in the module so that its class, ProgID,
// interfaces and property page stay registered for the hosts that name them.
#pragma once

#include "IKivDC.h"

class CKivLayerCtrl {
public:
    // The stock white brush over the bounds, then the ellipse inscribed in them with the DC's current
    // pen and brush.
    static void OnDraw(IKivDC& dc, const KivRect& bounds);
};
