// KivOleControl, the interfaces of drawing: IViewObject, IViewObject2, IViewObjectEx, and the one
// paint path that WM_PAINT, WM_PRINTCLIENT and IViewObject::Draw share. Win32 side.
#include "KivOleControl.h"

// The one paint path: WM_PAINT, WM_PRINTCLIENT and IViewObject::Draw all come here.
void KivOleControl::paint(HDC dc, const KivRect& bounds) {
    KivGdiDC kdc(dc);  // restores what it selected before the caller ends the paint
    m_behaviour->onDraw(kdc, bounds, ambientUserMode());
}

KivRect KivOleControl::clientRect() const {
    RECT client{};
    if (m_hwnd != nullptr) GetClientRect(m_hwnd, &client);
    return KivFromRECT(client);
}

void KivOleControl::viewChanged() {
    if (m_viewSink) m_viewSink->OnViewChange(DVASPECT_CONTENT, -1);
}

// ---- IViewObject, IViewObject2, IViewObjectEx

STDMETHODIMP KivOleControl::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC draw, LPCRECTL bounds, LPCRECTL,
                                 BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (draw == nullptr) return E_INVALIDARG;
    if (bounds == nullptr && m_hwnd == nullptr) return E_INVALIDARG;
    return KivNoThrow([&] {
        paint(draw, bounds != nullptr ? KivRect{bounds->left, bounds->top, bounds->right, bounds->bottom} : clientRect());
        return S_OK;
    });
}

// Not implemented: no palette.
STDMETHODIMP KivOleControl::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** colors) {
    if (colors != nullptr) *colors = nullptr;
    return E_NOTIMPL;
}
// Not implemented: the drawing cannot be frozen.
STDMETHODIMP KivOleControl::Freeze(DWORD, LONG, void*, DWORD*) { return E_NOTIMPL; }
STDMETHODIMP KivOleControl::Unfreeze(DWORD) { return E_NOTIMPL; }

STDMETHODIMP KivOleControl::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    m_viewAspects = aspects;
    m_viewFlags = flags;
    m_viewSink = KivComPtr<IAdviseSink>(sink);
    return S_OK;
}

STDMETHODIMP KivOleControl::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    if (aspects != nullptr) *aspects = m_viewAspects;
    if (flags != nullptr) *flags = m_viewFlags;
    if (sink != nullptr) {
        *sink = m_viewSink.get();
        if (*sink != nullptr) (*sink)->AddRef();
    }
    return S_OK;
}

STDMETHODIMP KivOleControl::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size) { return GetExtent(aspect, size); }

STDMETHODIMP KivOleControl::GetRect(DWORD aspect, LPRECTL rect) {
    if (rect == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *rect = RECTL{0, 0, m_extent.cx, m_extent.cy};
    return S_OK;
}

STDMETHODIMP KivOleControl::GetViewStatus(DWORD* status) {
    if (status == nullptr) return E_POINTER;
    *status = VIEWSTATUS_OPAQUE | VIEWSTATUS_SOLIDBKGND;
    return S_OK;
}

STDMETHODIMP KivOleControl::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT loc, LONG, DWORD* hit) {
    if (bounds == nullptr || hit == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *hit = PtInRect(bounds, loc) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

STDMETHODIMP KivOleControl::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT loc, LONG, DWORD* hit) {
    if (bounds == nullptr || loc == nullptr || hit == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    RECT overlap;
    *hit = IntersectRect(&overlap, bounds, loc) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

// Not implemented: the natural extent is the container's.
STDMETHODIMP KivOleControl::GetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*, LPSIZEL) { return E_NOTIMPL; }
