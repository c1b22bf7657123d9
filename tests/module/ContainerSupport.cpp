#include "ContainerSupport.h"

#include "KivContainer.h"
#include <cstdio>

void pumpMessages(DWORD ms) { KivPumpMessages(ms); }

STDMETHODIMP EventSink::QueryInterface(REFIID riid, void** out) {
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDispatch) || IsEqualIID(riid, m_events)) {
        *out = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP EventSink::Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*, UINT*) {
    std::string s = dispid == 1 ? "SelChange(" : dispid == 2 ? "SelAndCloseUp(" : "Event" + std::to_string(dispid) + "(";
    for (UINT i = 0; params != nullptr && i < params->cArgs; ++i) {
        const VARIANT& v = params->rgvarg[params->cArgs - 1 - i];
        if (i > 0) s += ",";
        if (V_VT(&v) == VT_I4) s += std::to_string(V_I4(&v));
        else if (V_VT(&v) == VT_BSTR) s += "\"" + narrow(V_BSTR(&v)) + "\"";
        else s += "vt" + std::to_string(V_VT(&v));
    }
    events.push_back(s + ")");
    return S_OK;
}

STDMETHODIMP AmbientSite::QueryInterface(REFIID riid, void** out) {
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IOleClientSite)) *out = static_cast<IOleClientSite*>(this);
    else if (IsEqualIID(riid, IID_IDispatch)) *out = static_cast<IDispatch*>(this);
    else {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

STDMETHODIMP AmbientSite::Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) {
    if (result == nullptr) return E_POINTER;
    VariantInit(result);
    if (dispid == DISPID_AMBIENT_USERMODE) {
        V_VT(result) = VT_BOOL;
        V_BOOL(result) = userMode ? VARIANT_TRUE : VARIANT_FALSE;
        return S_OK;
    }
    if (dispid == DISPID_AMBIENT_BACKCOLOR || dispid == DISPID_AMBIENT_FORECOLOR) {
        V_VT(result) = VT_I4;
        V_I4(result) = static_cast<LONG>(dispid == DISPID_AMBIENT_BACKCOLOR ? backColor : foreColor);
        return S_OK;
    }
    return DISP_E_MEMBERNOTFOUND;
}

STDMETHODIMP MemoryPropertyBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog*) {
    const auto it = values.find(name);
    if (it == values.end()) return E_INVALIDARG;
    return VariantCopy(value, &it->second);
}

STDMETHODIMP MemoryPropertyBag::Write(LPCOLESTR name, VARIANT* value) {
    VARIANT copy;
    VariantInit(&copy);
    VariantCopy(&copy, value);
    auto it = values.find(name);
    if (it != values.end()) VariantClear(&it->second);
    values[name] = copy;
    return S_OK;
}

MemoryPropertyBag::~MemoryPropertyBag() {
    for (auto& [name, v] : values) VariantClear(&v);
}

std::vector<HWND> ownVisibleWindows(const wchar_t* className, const wchar_t* title) {
    std::vector<HWND> windows;
    for (HWND found = nullptr; (found = FindWindowExW(nullptr, found, className, title)) != nullptr;) {
        DWORD process = 0;
        GetWindowThreadProcessId(found, &process);
        if (process == GetCurrentProcessId() && IsWindowVisible(found)) windows.push_back(found);
    }
    return windows;
}

DialogAnswerer::DialogAnswerer(const wchar_t* className, const wchar_t* title, std::function<void(HWND)> answer,
                               DWORD timeoutMs)
    : m_thread([this, className, title, answer, timeoutMs] {
          const DWORD until = GetTickCount() + timeoutMs;
          while (!m_stop && static_cast<LONG>(until - GetTickCount()) > 0) {
              // The first visible one of this process: a hidden window of the same class (one being
              // destroyed, or kept by the system) may come first in the z-order.
              const std::vector<HWND> windows = ownVisibleWindows(className, title);
              if (!windows.empty()) {
                  HWND found = windows.front();
                  Sleep(200);  // let the dialog finish its initialisation
                  answer(found);
                  m_answered = true;
                  return;
              }
              Sleep(20);
          }
          if (!m_stop) std::fprintf(stderr, "no window of the awaited class appeared in %lu ms\n", timeoutMs);
      }) {}

DialogAnswerer::~DialogAnswerer() {
    m_stop = true;
    if (m_thread.joinable()) m_thread.join();
}

std::vector<RecordedStroke> metafileStrokes(HENHMETAFILE metafile) {
    std::vector<RecordedStroke> strokes;
    EnumEnhMetaFile(
        nullptr, metafile,
        [](HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM data) -> int {
            auto& out = *reinterpret_cast<std::vector<RecordedStroke>*>(data);
            if (record->iType == EMR_MOVETOEX) {
                const auto* move = reinterpret_cast<const EMRMOVETOEX*>(record);
                out.push_back(RecordedStroke{'M', static_cast<int>(move->ptl.x), static_cast<int>(move->ptl.y)});
            } else if (record->iType == EMR_LINETO) {
                const auto* line = reinterpret_cast<const EMRLINETO*>(record);
                out.push_back(RecordedStroke{'L', static_cast<int>(line->ptl.x), static_cast<int>(line->ptl.y)});
            }
            return 1;
        },
        &strokes, nullptr);
    return strokes;
}

long gdiObjects() {
    const DWORD reported = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    if (reported != 0) return static_cast<long>(reported);
    long n = 0;
    for (ULONG_PTR index = 1; index < 0x10000; ++index)
        if (GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0) ++n;
    return n;
}

std::wstring windowText(HWND hwnd) {
    wchar_t text[512];
    const int n = GetWindowTextW(hwnd, text, 512);
    return std::wstring(text, n > 0 ? static_cast<std::size_t>(n) : 0);
}

std::string narrow(const std::wstring& w) {
    std::string s;
    for (wchar_t c : w) s.push_back(c < 128 ? static_cast<char>(c) : '?');
    return s;
}
