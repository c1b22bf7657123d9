// The layer placeholder in the ActiveX frame: no child window, empty dispatch and event interfaces,
// its picture in both modes. Win32 side.
#include <windows.h>

#include "CKivLayerCtrl.h"
#include "KivGuids.h"
#include "KivLibrary.h"
#include "KivResources.h"

namespace {

// Nothing of its own to call: its one behaviour is its picture, the same in design and in user mode.
class KivLayerBehaviour final : public KivControlBehaviour {
public:
    KivControlCore* core() override { return nullptr; }
    void onDraw(IKivDC& dc, const KivRect& bounds, bool) override { CKivLayerCtrl::OnDraw(dc, bounds); }
};

// No stock property is used: the saved state is the version and the extent.
const KivControlClass kLayerClass = {
    &CLSID_KivLayerCtrl, &g_DKivLayer, &g_DKivLayerEvents, &CLSID_KivLayerPropPage, IDS_KIVLAYER, 0x00020191, 0,
};

}  // namespace

// Both interfaces are empty.
const KivDispInterface g_DKivLayer = {L"_DKivLayer", &DIID__DKivLayer, L"Dispatch interface for KivLayerControl", false,
                                      nullptr, 0};
const KivDispInterface g_DKivLayerEvents = {L"_DKivLayerEvents", &DIID__DKivLayerEvents,
                                            L"Event interface for KivLayerControl", true, nullptr, 0};

HRESULT KivCreateLayerControl(REFIID riid, void** out) {
    return KivCreateControl(kLayerClass, [](KivOleControl&) -> std::unique_ptr<KivControlBehaviour> {
        return std::make_unique<KivLayerBehaviour>();
    }, riid, out);
}
