// CKivLayerCtrl: the layer placeholder's picture. Portable.
#include "CKivLayerCtrl.h"

void CKivLayerCtrl::OnDraw(IKivDC& dc, const KivRect& bounds) {
    dc.fillRect(bounds, KivBrush::stockBrush(KivStockObject::WhiteBrush));
    dc.ellipse(bounds);
}
