// The hatch preview control in the ActiveX frame: CKivHatchCtrl (portable) drawn on the control's own
// window through GDI, with the _DKivHatch dispatch table, the stock ForeColor and BackColor, and
// ZoomFactor persisted after the stock properties. Win32 side.
#include <windows.h>

#include <cstring>

#include "CKivHatchCtrl.h"
#include "KivGuids.h"
#include "KivLibrary.h"
#include "KivResources.h"

namespace {

// No child window: creation, sizing and focus are the frame's alone.
class KivHatchBehaviour final : public KivControlBehaviour {
public:
    explicit KivHatchBehaviour(KivOleControl& frame) : m_frame(frame), m_core(frame) {}

    KivControlCore* core() override { return &m_core; }
    void onDraw(IKivDC& dc, const KivRect& bounds, bool userMode) override {
        m_core.OnDraw(dc, bounds, userMode, KivOleControl::translateColor(m_frame.backColor()),
                      KivOleControl::translateColor(m_frame.foreColor()));
    }

    // ZoomFactor, a double, after the stock properties (MFC's PX_Double, default 1.0).
    ULONG customStreamSize() const override { return sizeof(double); }
    void saveCustomToStream(unsigned char* out) const override {
        const double zoom = m_core.GetZoomFactor();
        std::memcpy(out, &zoom, sizeof zoom);
    }
    void loadCustomFromStream(const unsigned char* in) override {
        double zoom = 1.0;
        std::memcpy(&zoom, in, sizeof zoom);
        m_core.LoadZoomFactor(zoom);  // a stored zoom below 0.05 loads as 1.0
    }
    HRESULT saveCustomToBag(IPropertyBag* bag) override {
        VARIANT v;
        V_VT(&v) = VT_R8;
        V_R8(&v) = m_core.GetZoomFactor();
        return bag->Write(L"ZoomFactor", &v);
    }
    void loadCustomFromBag(IPropertyBag* bag, IErrorLog* log) override {
        KivVariant v;
        if (SUCCEEDED(bag->Read(L"ZoomFactor", &v.v, log)) && SUCCEEDED(VariantChangeType(&v.v, &v.v, 0, VT_R8)))
            m_core.LoadZoomFactor(V_R8(&v.v));
        else
            m_core.ResetZoomFactor();  // missing: the default
    }
    void resetCustomProperties() override { m_core.ResetZoomFactor(); }

private:
    KivOleControl& m_frame;
    CKivHatchCtrl m_core;
};

using C = CKivHatchCtrl;
using F = KivOleControl;

// _DKivHatch: the stock properties, the control's, then Refresh.
const KivMember kHatch[] = {
    KIV_STOCK_ENABLED,
    KIV_STOCK_PROPERTY(ForeColor, DISPID_FORECOLOR, OleColor, VT_I4, &F::foreColor, &F::setForeColor),
    KIV_STOCK_PROPERTY(BackColor, DISPID_BACKCOLOR, OleColor, VT_I4, &F::backColor, &F::setBackColor),
    KIV_PROPERTY(Metric, 2, I1, VT_BOOL, &C::GetMetric, &C::SetMetric),
    KIV_PROPERTY(ZoomFactor, 3, R8, VT_R8, &C::GetZoomFactor, &C::SetZoomFactor),
    KIV_PROPERTY(Pattern, 4, Bstr, VT_BSTR, &C::GetPattern, &C::SetPattern),
    KIV_METHOD0(Refresh, 1, Void, VT_EMPTY, &C::Refresh),
};

const KivControlClass kHatchClass = {
    &CLSID_KivHatchCtrl, &g_DKivHatch, &g_DKivHatchEvents, &CLSID_KivHatchPropPage, IDS_KIVHATCH, 0x00020191,
    kivstock::kBackColor | kivstock::kForeColor | kivstock::kEnabled,
};

}  // namespace

const KivDispInterface g_DKivHatch = {L"_DKivHatch", &DIID__DKivHatch, L"Dispatch interface for KivHatchControl", false,
                                      kHatch, static_cast<int>(sizeof kHatch / sizeof kHatch[0])};
// No events: the control fires nothing.
const KivDispInterface g_DKivHatchEvents = {L"_DKivHatchEvents", &DIID__DKivHatchEvents, L"Event interface for KivHatchControl",
                                            true, nullptr, 0};

HRESULT KivCreateHatchControl(REFIID riid, void** out) {
    return KivCreateControl(kHatchClass, [](KivOleControl& frame) -> std::unique_ptr<KivControlBehaviour> {
        return std::make_unique<KivHatchBehaviour>(frame);
    }, riid, out);
}
