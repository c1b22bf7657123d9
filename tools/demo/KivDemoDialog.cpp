// The demo dialog: the six controls in one window, filled as a host fills them. Win32 side.
#include "KivDemoDialog.h"

#include <ocidl.h>
#include <olectl.h>

#include "CKivDpi.h"

const wchar_t* const KivDemoDialog::kLinetypes[8] = {L"DASHED", L"CENTER", L"DOT",     L"BORDER",
                                                     L"HIDDEN", L"PHANTOM", L"DASHDOT", L"DIVIDE"};

// Shows each event of one control in the status line.
class KivDemoDialog::StatusSink final : public IDispatch {
public:
    StatusSink(HWND status, const wchar_t* control) : m_status(status), m_control(control) {}
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override {
        // Any events interface: the controls' events are dispatch calls.
        (void)riid;
        *out = static_cast<IDispatch*>(this);
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }  // owned by the dialog, unadvised before it goes
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT* n) override {
        *n = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* p, VARIANT*, EXCEPINFO*, UINT*) override {
        std::wstring text = m_control + L": " + (id == 1 ? L"SelChange(" : L"SelAndCloseUp(");
        for (UINT i = 0; p != nullptr && i < p->cArgs; ++i) {
            const VARIANT& v = p->rgvarg[p->cArgs - 1 - i];
            if (i > 0) text += L", ";
            if (V_VT(&v) == VT_I4) text += std::to_wstring(V_I4(&v));
            else if (V_VT(&v) == VT_BSTR && V_BSTR(&v) != nullptr) text += std::wstring(L"\"") + V_BSTR(&v) + L"\"";
        }
        SetWindowTextW(m_status, (text + L")").c_str());
        return S_OK;
    }

private:
    HWND m_status;
    std::wstring m_control;
};

namespace {
LRESULT CALLBACK frameProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
    if (msg == WM_DESTROY && GetWindowLongPtrW(hwnd, GWLP_USERDATA) != 0) PostQuitMessage(0);
    return DefWindowProcW(hwnd, msg, w, l);
}
}  // namespace

HWND KivDemoDialog::createFrame(bool visible) {
    static const ATOM atom = [] {
        WNDCLASSW wc{};
        wc.lpfnWndProc = frameProc;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        wc.lpszClassName = L"KivDemoFrame";
        return RegisterClassW(&wc);
    }();
    (void)atom;
    RECT r{0, 0, KivDemoScale(kKivDemoWidth), KivDemoScale(kKivDemoHeight)};
    const DWORD style = WS_OVERLAPPEDWINDOW | (visible ? WS_VISIBLE : 0);
    AdjustWindowRect(&r, style, FALSE);
    HWND frame = CreateWindowExW(0, L"KivDemoFrame", L"KivLorqControls - the six controls", style, 40, 40,
                                 r.right - r.left, r.bottom - r.top, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    // Closing the visible dialog ends the demo's message loop.
    SetWindowLongPtrW(frame, GWLP_USERDATA, visible ? 1 : 0);
    return frame;
}

int KivDemoScale(int length) { return CKivDpi::scale(length); }  // the module's own rule, at the screen's dpi

RECT KivDemoScale(const RECT& r) {
    return RECT{KivDemoScale(r.left), KivDemoScale(r.top), KivDemoScale(r.right), KivDemoScale(r.bottom)};
}

KivDemoDialog::KivDemoDialog(bool visible) : m_frame(createFrame(visible)) {
    // Three combo boxes in the top row, with room below them for the colour and linetype lists to
    // drop open; the hatch preview, the linetype list and the layer placeholder in the second row.
    label(L"Colour", 12, 8);
    label(L"Linetype", 236, 8);
    label(L"Lineweight", 484, 8);
    label(L"Hatch pattern", 12, 186);
    label(L"Linetype list", 236, 186);
    label(L"Layer", 484, 186);
    m_status = label(L"Pick a colour, a linetype or a lineweight.", 12, 350, 680);
}

KivDemoDialog::~KivDemoDialog() {
    for (auto& [point, cookie] : m_connections) point->Unadvise(cookie);
    m_connections.clear();
    for (KivControlHost* host : {&colour, &linetype, &lineweight, &hatch, &linetypeList, &layer}) host->close();
    if (IsWindow(m_frame)) {
        SetWindowLongPtrW(m_frame, GWLP_USERDATA, 0);
        DestroyWindow(m_frame);
    }
}

HWND KivDemoDialog::label(const wchar_t* text, int x, int y, int width) {
    HWND l = CreateWindowExW(0, L"STATIC", text, WS_CHILD | WS_VISIBLE, KivDemoScale(x), KivDemoScale(y),
                             KivDemoScale(width), KivDemoScale(16), m_frame, nullptr,
                             GetModuleHandleW(nullptr), nullptr);
    SendMessageW(l, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    return l;
}

HWND KivDemoDialog::child(const KivControlHost& host, int childId) {
    HWND window = host.window();
    return window != nullptr ? GetDlgItem(window, childId) : nullptr;
}

std::wstring KivDemoDialog::open(const KivDemoContent& content) {
    struct Named {
        KivControlHost& host;
        const wchar_t* progId;
        const wchar_t* name;
    };
    const Named controls[] = {{colour, L"KIVLORQCONTROLS.KivColorCtrl.1", L"Colour"},
                              {linetype, L"KIVLORQCONTROLS.KivLinetypeCtrl.1", L"Linetype"},
                              {lineweight, L"KIVLORQCONTROLS.KivLineweightCtrl.1", L"Lineweight"},
                              {hatch, L"KIVLORQCONTROLS.KivHatchCtrl.1", L"Hatch"},
                              {linetypeList, L"KIVLORQCONTROLS.KivLinetypeListCtrl.1", L"Linetype list"},
                              {layer, L"KIVLORQCONTROLS.KivLayerCtrl.1", L"Layer"}};
    std::wstring problems;
    for (const Named& c : controls) {
        if (FAILED(c.host.create(c.progId))) {
            problems += std::wstring(c.progId) + L" could not be created (is the module registered?)\n";
            continue;
        }
        // Listen to its events, whatever they are.
        KivComPtr<IProvideClassInfo2> info;
        KivComPtr<IConnectionPointContainer> cpc;
        KivComPtr<IConnectionPoint> point;
        GUID events{};
        DWORD cookie = 0;
        auto sink = std::make_unique<StatusSink>(m_status, c.name);
        if (SUCCEEDED(c.host.control()->QueryInterface(IID_IProvideClassInfo2, info.putVoid())) &&
            SUCCEEDED(info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events)) &&
            SUCCEEDED(c.host.control()->QueryInterface(IID_IConnectionPointContainer, cpc.putVoid())) &&
            SUCCEEDED(cpc->FindConnectionPoint(events, point.put())) && SUCCEEDED(point->Advise(sink.get(), &cookie))) {
            m_sinks.push_back(std::move(sink));
            m_connections.push_back({point, cookie});
        } else {
            problems += std::wstring(c.name) + L": its events could not be connected\n";
        }
    }
    return problems.empty() ? fill(content) : problems;
}

std::wstring KivDemoDialog::fill(const KivDemoContent& content) {
    std::wstring problems;
    auto call = [&](KivControlHost& host, const wchar_t* name, WORD flags, std::vector<VARIANT> args) {
        VARIANT result;
        VariantInit(&result);
        const HRESULT hr = KivCallByName(host.dispatch(), name, flags, std::move(args), &result);
        if (FAILED(hr)) problems += std::wstring(name) + L" failed\n";
        // A method that answers whether it did what it was asked (AddColorIndex) must say yes.
        if (V_VT(&result) == VT_BOOL && V_BOOL(&result) != VARIANT_TRUE) problems += std::wstring(name) + L" refused\n";
        VariantClear(&result);
    };
    call(colour, L"AddColorIndex", DISPATCH_METHOD, {KivShort(42)});
    call(colour, L"AddColorIndex", DISPATCH_METHOD, {KivShort(150)});
    call(colour, L"SetSelColorIndex", DISPATCH_METHOD, {KivShort(1)});
    for (KivControlHost* l : {&linetype, &linetypeList}) {
        call(*l, L"SupportPath", DISPATCH_PROPERTYPUT, {KivText(content.data + L"\\lin")});
        call(*l, L"LinetypeFile", DISPATCH_PROPERTYPUT, {KivText(L"qcad__qcadiso.lin")});
        for (const wchar_t* name : kLinetypes) call(*l, L"LoadLinetype", DISPATCH_METHOD, {KivText(name)});
        call(*l, L"SelectItem", DISPATCH_METHOD, {KivText(L"Dashed")});
    }
    call(lineweight, L"Measurement", DISPATCH_PROPERTYPUT, {KivShort(1)});
    call(lineweight, L"SelectItemByLineWeight", DISPATCH_METHOD, {KivLong(35)});
    call(hatch, L"ForeColor", DISPATCH_PROPERTYPUT, {KivLong(0x00800000)});
    call(hatch, L"BackColor", DISPATCH_PROPERTYPUT, {KivLong(0x00FFFFFF)});
    call(hatch, L"ZoomFactor", DISPATCH_PROPERTYPUT, {KivDouble(content.zoom)});
    call(hatch, L"Pattern", DISPATCH_PROPERTYPUT, {KivText(content.data + L"\\pat\\" + content.pattern)});

    // Loading fails silently at the interface: the lists themselves say whether the file was read.
    const int linetypes = 3 + static_cast<int>(sizeof kLinetypes / sizeof kLinetypes[0]);
    if (SendMessageW(child(linetype, kLinetypeCombo), CB_GETCOUNT, 0, 0) != linetypes ||
        SendMessageW(child(linetypeList, kLinetypeList), LB_GETCOUNT, 0, 0) != linetypes)
        problems += L"the linetypes were not loaded from " + content.data + L"\\lin\\qcad__qcadiso.lin\n";
    return problems;
}
