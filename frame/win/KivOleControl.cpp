// KivOleControl: the control object itself: its identity and one QueryInterface table, the window
// every control lives in (class, flat window procedure over typed hooks) and what the portable
// behaviour asks of the frame (focus). Win32 side. The interfaces containers use are in the files
// named after them: KivOleObject.cpp (object and in-place activation), KivOlePersist.cpp
// (persistence), KivOleView.cpp (drawing), KivOleEvents.cpp (events and connection points),
// KivOleDispatch.cpp (dispatch, stock and ambient properties, property pages).
//
// No exception crosses a COM method; every method answers an HRESULT, and a method the frame does
// not support answers the documented "not implemented" code.
#include "KivOleControl.h"

#include "KivOleControlInternal.h"

const wchar_t kKivControlWindowClass[] = L"KivLorqControlWindow";

// The control window's class belongs to this module image: registered on first use, unregistered
// when the module is freed (KivUnregisterControlWindowClass). A class left over from an earlier image
// of the module (same name, another procedure) is replaced.
bool KivRegisterControlWindowClass(WNDPROC proc) {
    WNDCLASSEXW existing{};
    existing.cbSize = sizeof existing;
    if (GetClassInfoExW(kivmodule::instance(), kKivControlWindowClass, &existing)) {
        if (existing.lpfnWndProc == proc) return true;
        UnregisterClassW(kKivControlWindowClass, kivmodule::instance());
    }
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.style = CS_DBLCLKS;
    wc.lpfnWndProc = proc;
    wc.hInstance = kivmodule::instance();
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wc.lpszClassName = kKivControlWindowClass;
    return RegisterClassExW(&wc) != 0;
}

void KivUnregisterControlWindowClass() { UnregisterClassW(kKivControlWindowClass, kivmodule::instance()); }

// ---------------------------------------------------------------- object

KivOleControl::KivOleControl(const KivControlClass& cls, KivMakeBehaviour make)
    : m_class(cls), m_eventsPoint(*this, *cls.events->iid), m_propertyNotifyPoint(*this, IID_IPropertyNotifySink) {
    m_behaviour = make(*this);  // its core is this frame's control site
}

KivOleControl::~KivOleControl() {
    destroyWindow();  // the behaviour is still alive: its onDestroy runs
    m_eventsPoint.clear();
    m_propertyNotifyPoint.clear();
}

HRESULT KivCreateControl(const KivControlClass& cls, KivMakeBehaviour make, REFIID riid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return KivNoThrow([&] {
        auto* control = new (std::nothrow) KivOleControl(cls, make);  // its behaviour may still throw: caught
        if (control == nullptr) return E_OUTOFMEMORY;
        const HRESULT hr = control->QueryInterface(riid, out);
        control->Release();
        return hr;
    });
}

STDMETHODIMP KivOleControl::QueryInterface(REFIID riid, void** out) {
    using T = KivOleControl;
    static const KivInterfaceEntry table[] = {
        {&IID_IDispatch, &kivCast<IDispatch, T>},
        {&IID_IOleObject, &kivCast<IOleObject, T>},
        {&IID_IOleWindow, &kivCast<IOleInPlaceObject, T>},
        {&IID_IOleInPlaceObject, &kivCast<IOleInPlaceObject, T>},
        {&IID_IOleInPlaceActiveObject, &kivCast<IOleInPlaceActiveObject, T>},
        {&IID_IOleControl, &kivCast<IOleControl, T>},
        {&IID_IProvideClassInfo, &kivCast<IProvideClassInfo2, T>},
        {&IID_IProvideClassInfo2, &kivCast<IProvideClassInfo2, T>},
        {&IID_IConnectionPointContainer, &kivCast<IConnectionPointContainer, T>},
        {&IID_IPersist, &kivCast<IPersistStreamInit, T>},
        {&IID_IPersistStreamInit, &kivCast<IPersistStreamInit, T>},
        {&IID_IPersistStorage, &kivCast<IPersistStorage, T>},
        {&IID_IPersistMemory, &kivCast<IPersistMemory, T>},
        {&IID_IPersistPropertyBag, &kivCast<IPersistPropertyBag, T>},
        {&IID_ISpecifyPropertyPages, &kivCast<ISpecifyPropertyPages, T>},
        {&IID_IViewObject, &kivCast<IViewObjectEx, T>},
        {&IID_IViewObject2, &kivCast<IViewObjectEx, T>},
        {&IID_IViewObjectEx, &kivCast<IViewObjectEx, T>},
        {nullptr, nullptr},
    };
    if (out != nullptr && IsEqualIID(riid, *m_class.dispatch->iid)) {  // the control's own dispinterface
        *out = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    return KivQueryInterface(this, table, riid, out);
}

STDMETHODIMP_(ULONG) KivOleControl::AddRef() { return m_refs.addRef(); }

STDMETHODIMP_(ULONG) KivOleControl::Release() {
    const ULONG n = m_refs.release();
    if (n == 0) delete this;
    return n;
}

void KivOleControl::redraw() {
    if (m_hwnd != nullptr) RedrawWindow(m_hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);  // 261
    viewChanged();
}

void KivOleControl::setFocus() {
    // COleControl::SetFocus: the control's window takes the focus (its OnSetFocus passes it on).
    if (m_hwnd != nullptr) ::SetFocus(m_hwnd);
}

// ---- The control window: a flat window procedure over typed hooks.

LRESULT CALLBACK KivOleControl::windowProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_NCCREATE) {
        auto* self = static_cast<KivOleControl*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->m_hwnd = hwnd;
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<KivOleControl*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (self == nullptr) return DefWindowProcW(hwnd, msg, wParam, lParam);
    if (msg == WM_NCDESTROY) {
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
        self->m_hwnd = nullptr;
        return DefWindowProcW(hwnd, msg, wParam, lParam);
    }
    // A message whose handling fails (only an allocation can) is handled as the system would: a
    // window whose creation fails is not created, any other message gets the default handling.
    LRESULT result = 0;
    const HRESULT hr = KivNoThrow([&] {
        result = self->onMessage(msg, wParam, lParam);
        return S_OK;
    });
    if (SUCCEEDED(hr)) return result;
    return msg == WM_CREATE ? -1 : DefWindowProcW(hwnd, msg, wParam, lParam);
}

LRESULT KivOleControl::onMessage(UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case WM_CREATE: {
        RECT client;
        GetClientRect(m_hwnd, &client);
        m_behaviour->onCreate(m_hwnd, client);
        return 0;
    }
    case WM_DESTROY:
        m_behaviour->onDestroy();
        return 0;
    case WM_SIZE:
        m_behaviour->onSize(LOWORD(lParam), HIWORD(lParam));
        // A control that paints itself (no child) is painted whole again: its picture follows its
        // bounds (the layer's ellipse, the hatch's origin at the lower-left corner).
        if (m_behaviour->childList() == nullptr) InvalidateRect(m_hwnd, nullptr, FALSE);
        return 0;
    case WM_ERASEBKGND:
        return 1;  // OnDraw fills the whole face
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(m_hwnd, &ps);
        paint(dc, clientRect());
        EndPaint(m_hwnd, &ps);
        return 0;
    }
    case WM_PRINTCLIENT:
        paint(reinterpret_cast<HDC>(wParam), clientRect());
        return 0;
    case WM_MOUSEACTIVATE:
        if (!m_uiActive) inPlaceActivate(OLEIVERB_UIACTIVATE);
        return MA_ACTIVATE;
    case WM_SETFOCUS:
        if (!m_uiActive && m_inPlaceSite) inPlaceActivate(OLEIVERB_UIACTIVATE);
        m_behaviour->onSetFocus();
        return 0;
    case WM_COMMAND:
        if (lParam != 0) m_behaviour->onCommand(wParam, lParam);
        return DefWindowProcW(m_hwnd, msg, wParam, lParam);
    case WM_DRAWITEM:
        if (m_behaviour->onDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam))) return TRUE;
        break;
    case WM_MEASUREITEM:
        if (m_behaviour->onMeasureItem(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam))) return TRUE;
        break;
    default:
        break;
    }
    return DefWindowProcW(m_hwnd, msg, wParam, lParam);
}
