// OnDraw's face of every framed control. Portable.
#include "KivControlFace.h"

void KivDrawControlFace(IKivDC& dc, const KivRect& bounds, bool userMode, const KivString& designText,
                        KivColor ambientBackColor, IKivChildList* child) {
    const KivColor savedBackground = dc.getBkColor();
    if (!userMode) {
        dc.fillRect(bounds, KivBrush::solid(0x00FFFFFF));
        dc.setTextAlign(kiv::kTaCenter | kiv::kTaBaseline);  // 30
        const KivSize extent = dc.getTextExtent(designText);
        dc.textOut((bounds.left + bounds.right) / 2,
                   (bounds.top + bounds.bottom) / 2 + static_cast<int>(extent.cy) / 2, designText);
        dc.setBkColor(savedBackground);
        return;
    }
    dc.fillRect(bounds, KivBrush::solid(ambientBackColor));
    dc.setBkColor(savedBackground);
    if (child != nullptr) {
        child->invalidate(true);
        child->update();
    }
}
