// The hatch preview control in the ActiveX frame: CKivHatchCtrl (portable) drawn on the control's own
// window through GDI, with the _DKivHatch dispatch table, the stock ForeColor and BackColor, and
// ZoomFactor persisted after the stock properties. Win32 side.
#include <windows.h>

#include <cstring>

#include "CKivHatchCtrl.h"
#include "KivGuids.h"
#include "KivLibrary.h"
#include "KivOleControl.h"
#include "KivResources.h"

namespace {

const KivControlClass& hatchClass();

class KivHatchControl final : public KivOleControl {
public:
    KivHatchControl() : KivOleControl(hatchClass()), core(*this) {}
    ~KivHatchControl() override { destroyWindow(); }

    CKivHatchCtrl core;

protected:
    // No child window: creation, sizing and focus are the frame's alone.
    void onCreate(HWND, const RECT&) override {}
    void onDraw(IKivDC& dc, const KivRect& bounds, bool userMode) override {
        core.OnDraw(dc, bounds, userMode, translateColor(backColor()), translateColor(foreColor()));
    }

    // ZoomFactor, a double, after the stock properties (MFC's PX_Double, default 1.0).
    ULONG customStreamSize() const override { return sizeof(double); }
    void saveCustomToStream(unsigned char* out) const override {
        const double zoom = core.GetZoomFactor();
        std::memcpy(out, &zoom, sizeof zoom);
    }
    void loadCustomFromStream(const unsigned char* in) override {
        double zoom = 1.0;
        std::memcpy(&zoom, in, sizeof zoom);
        core.LoadZoomFactor(zoom);  // a stored zoom below 0.05 loads as 1.0
    }
    HRESULT saveCustomToBag(IPropertyBag* bag) override {
        VARIANT v;
        V_VT(&v) = VT_R8;
        V_R8(&v) = core.GetZoomFactor();
        return bag->Write(L"ZoomFactor", &v);
    }
    void loadCustomFromBag(IPropertyBag* bag, IErrorLog* log) override {
        KivVariant v;
        if (SUCCEEDED(bag->Read(L"ZoomFactor", &v.v, log)) && SUCCEEDED(VariantChangeType(&v.v, &v.v, 0, VT_R8)))
            core.LoadZoomFactor(V_R8(&v.v));
        else
            core.ResetZoomFactor();  // missing: the default
    }
    void resetCustomProperties() override { core.ResetZoomFactor(); }
};

CKivHatchCtrl& core(void* self) { return static_cast<KivHatchControl*>(static_cast<KivOleControl*>(self))->core; }

HRESULT refresh(void* s, VARIANT*, VARIANT*) { core(s).Refresh(); return S_OK; }
HRESULT getMetric(void* s, VARIANT*, VARIANT* r) { return KivReturnBool(r, core(s).GetMetric()); }
HRESULT putMetric(void* s, VARIANT* a, VARIANT*) { core(s).SetMetric(V_BOOL(&a[0]) != VARIANT_FALSE); return S_OK; }
HRESULT getZoom(void* s, VARIANT*, VARIANT* r) { return KivReturnDouble(r, core(s).GetZoomFactor()); }
HRESULT putZoom(void* s, VARIANT* a, VARIANT*) { core(s).SetZoomFactor(V_R8(&a[0])); return S_OK; }
HRESULT getPattern(void* s, VARIANT*, VARIANT* r) { return KivReturnText(r, core(s).GetPattern()); }
HRESULT putPattern(void* s, VARIANT* a, VARIANT*) { core(s).SetPattern(KivTextArg(a[0])); return S_OK; }

// _DKivHatch: the stock properties, the control's, then Refresh.
const KivMember kHatch[] = {
    KIV_STOCK_PROPERTY(Enabled, DISPID_ENABLED, I1, VT_BOOL, KivStockEnabledGet, KivStockEnabledPut),
    KIV_STOCK_PROPERTY(ForeColor, DISPID_FORECOLOR, OleColor, VT_I4, KivStockForeColorGet, KivStockForeColorPut),
    KIV_STOCK_PROPERTY(BackColor, DISPID_BACKCOLOR, OleColor, VT_I4, KivStockBackColorGet, KivStockBackColorPut),
    KIV_PROPERTY(Metric, 2, I1, VT_BOOL, getMetric, putMetric),
    KIV_PROPERTY(ZoomFactor, 3, R8, VT_R8, getZoom, putZoom),
    KIV_PROPERTY(Pattern, 4, Bstr, VT_BSTR, getPattern, putPattern),
    KIV_METHOD0(Refresh, 1, Void, VT_EMPTY, refresh),
};

const KivControlClass& hatchClass() {
    static const KivControlClass cls = {
        &CLSID_KivHatchCtrl, &g_DKivHatch, &g_DKivHatchEvents, &CLSID_KivHatchPropPage, IDS_KIVHATCH, 0x00020191,
        kivstock::kBackColor | kivstock::kForeColor | kivstock::kEnabled, L"KivHatchCtrl",
    };
    return cls;
}

}  // namespace

const KivDispInterface g_DKivHatch = {L"_DKivHatch", &DIID__DKivHatch, L"Dispatch interface for KivHatchControl", false,
                                      kHatch, static_cast<int>(sizeof kHatch / sizeof kHatch[0])};
// No events: the control fires nothing.
const KivDispInterface g_DKivHatchEvents = {L"_DKivHatchEvents", &DIID__DKivHatchEvents, L"Event interface for KivHatchControl",
                                            true, nullptr, 0};

HRESULT KivCreateHatchControl(REFIID riid, void** out) { return KivCreateControl<KivHatchControl>(riid, out); }
