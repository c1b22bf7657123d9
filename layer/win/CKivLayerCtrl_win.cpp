// The layer placeholder in the ActiveX frame: no child window, empty dispatch and event interfaces,
// its picture in both modes. Win32 side.
#include <windows.h>

#include "CKivLayerCtrl.h"
#include "KivGuids.h"
#include "KivLibrary.h"
#include "KivOleControl.h"
#include "KivResources.h"

namespace {

const KivControlClass& layerClass();

class KivLayerControl final : public KivOleControl {
public:
    KivLayerControl() : KivOleControl(layerClass()) {}
    ~KivLayerControl() override { destroyWindow(); }

protected:
    void onCreate(HWND, const RECT&) override {}
    // The same picture in design and in user mode.
    void onDraw(IKivDC& dc, const KivRect& bounds, bool) override { CKivLayerCtrl::OnDraw(dc, bounds); }
};

const KivControlClass& layerClass() {
    // No stock property is used: the saved state is the version and the extent.
    static const KivControlClass cls = {
        &CLSID_KivLayerCtrl, &g_DKivLayer, &g_DKivLayerEvents, &CLSID_KivLayerPropPage, IDS_KIVLAYER, 0x00020191, 0,
        L"KivLayerCtrl",
    };
    return cls;
}

}  // namespace

// Both interfaces are empty.
const KivDispInterface g_DKivLayer = {L"_DKivLayer", &DIID__DKivLayer, L"Dispatch interface for KivLayerControl", false,
                                      nullptr, 0};
const KivDispInterface g_DKivLayerEvents = {L"_DKivLayerEvents", &DIID__DKivLayerEvents,
                                            L"Event interface for KivLayerControl", true, nullptr, 0};

HRESULT KivCreateLayerControl(REFIID riid, void** out) { return KivCreateControl<KivLayerControl>(riid, out); }
