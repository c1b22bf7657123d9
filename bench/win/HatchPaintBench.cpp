// Under Wine: every pattern of the real .pat files (as they are, and opened up: a comment line first,
// the headers in capitals, so that all of them load) painted into a 400 x 300 DIB section at zoom
// 0.05, 0.25, 1 and 4 through the real control (IViewObject::Draw of KivLorqControls8x64.ocx), and
// the same strokes issued one MoveToEx/LineTo call each. Prints for each its stroke count, both
// times and their ratios to one FillRect of the rectangle (the best of several warm batches), and
// whether the two pictures are the same pixel for pixel. The control's time is the best of five
// paints (and so is the earlier module's).
//   hatch_paint_bench [--quick] [--compare OLD.ocx]
//     --quick    zoom 1 only, one paint each (the test command's run)
//     --compare  also paints every case with another build of the module (loaded from that file,
//                not registered), in the same run: its time, its ratio to FillRect and ours to its
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "CountingDC.h"
#include "KivCom.h"
#include "KivHatchDrawing.h"
#include "KivHatchPattern.h"

namespace {

const CLSID kHatchClsid = {0xD15E93F0, 0xB2C2, 0x4728, {0x84, 0x84, 0x4E, 0x56, 0x12, 0x29, 0x77, 0x6F}};
constexpr int kWidth = 400, kHeight = 300;

struct Dib {
    Dib() {
        HDC screen = GetDC(nullptr);
        dc = CreateCompatibleDC(screen);
        BITMAPINFO bi{};
        bi.bmiHeader.biSize = sizeof bi.bmiHeader;
        bi.bmiHeader.biWidth = kWidth;
        bi.bmiHeader.biHeight = -kHeight;
        bi.bmiHeader.biPlanes = 1;
        bi.bmiHeader.biBitCount = 32;
        bitmap = CreateDIBSection(screen, &bi, DIB_RGB_COLORS, reinterpret_cast<void**>(&bits), nullptr, 0);
        ReleaseDC(nullptr, screen);
        old = SelectObject(dc, bitmap);
    }
    ~Dib() {
        SelectObject(dc, old);
        DeleteObject(bitmap);
        DeleteDC(dc);
    }
    std::vector<DWORD> pixels() const {
        GdiFlush();
        return std::vector<DWORD>(bits, bits + kWidth * kHeight);
    }
    HDC dc;
    HBITMAP bitmap;
    HGDIOBJ old;
    DWORD* bits = nullptr;
};

// The strokes one call each, straight to GDI.
class PlainGdiDC : public CountingDC {
public:
    explicit PlainGdiDC(HDC dc) : m_dc(dc) {}
    void selectPen(const KivPen& pen) override {
        m_pen = CreatePen(pen.style, pen.width, pen.color);
        m_old = SelectObject(m_dc, m_pen);
    }
    void restorePen() override {
        SelectObject(m_dc, m_old);
        DeleteObject(m_pen);
    }
    void moveTo(int x, int y) override { MoveToEx(m_dc, x, y, nullptr); }
    void lineTo(int x, int y) override { LineTo(m_dc, x, y); }

private:
    HDC m_dc;
    HPEN m_pen = nullptr;
    HGDIOBJ m_old = nullptr;
};

double millisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// A hatch control from the registered module, or from a module file loaded here.
class HatchSource {
public:
    explicit HatchSource(const wchar_t* file) {
        if (file == nullptr) return;
        m_module = LoadLibraryW(file);
        using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
        const auto get = m_module ? reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(m_module, "DllGetClassObject")))
                                  : nullptr;
        if (get == nullptr || FAILED(get(kHatchClsid, IID_IClassFactory, m_factory.putVoid()))) m_failed = true;
    }
    ~HatchSource() {
        m_factory.reset();
        // The module stays loaded: objects it made may still be released by COM's own caches.
    }
    bool failed() const { return m_failed; }
    KivComPtr<IDispatch> create() const {
        KivComPtr<IDispatch> control;
        if (m_factory) m_factory->CreateInstance(nullptr, IID_IDispatch, control.putVoid());
        else CoCreateInstance(kHatchClsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, control.putVoid());
        return control;
    }

private:
    HMODULE m_module = nullptr;
    KivComPtr<IClassFactory> m_factory;
    bool m_failed = false;
};

// The best time of `paints` paints of the pattern at the zoom by a control of `source` (each onto
// the white DIB), or a negative time when the control cannot be made or loaded.
double paintThroughControl(const HatchSource& source, const KivString& pattern, double zoom, HDC dc, const RECT& all,
                           int paints) {
    KivComPtr<IDispatch> control = source.create();
    if (!control) return -1.0;
    auto putProperty = [&](const wchar_t* member, VARIANT value) {
        DISPID id = 0;
        LPOLESTR n = const_cast<LPOLESTR>(member);
        control->GetIDsOfNames(IID_NULL, &n, 1, 0, &id);
        DISPID putId = DISPID_PROPERTYPUT;
        DISPPARAMS params{&value, &putId, 1, 1};
        control->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &params, nullptr, nullptr, nullptr);
        VariantClear(&value);
    };
    VARIANT v;
    V_VT(&v) = VT_BSTR;
    V_BSTR(&v) = SysAllocString(pattern.getStringW());
    putProperty(L"Pattern", v);
    // The zoom and the colours as saved state (the property takes only zooms above 0.05; a stored
    // 0.05 is kept): version, extent, stock mask, fore, back, Enabled, ZoomFactor.
    unsigned char saved[33] = {0x00, 0x00, 0x01, 0x00, 0, 0, 0, 0, 0, 0, 0, 0, 0x49, 0, 0, 0,
                               0x00, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0x00, 0x01};
    std::memcpy(saved + 25, &zoom, sizeof zoom);
    KivComPtr<IPersistMemory> memory;
    control->QueryInterface(IID_IPersistMemory, memory.putVoid());
    if (!memory || FAILED(memory->Load(saved, sizeof saved))) return -1.0;
    KivComPtr<IViewObject> view;
    control->QueryInterface(IID_IViewObject, view.putVoid());
    const RECTL bounds{all.left, all.top, all.right, all.bottom};
    double best = -1.0;
    for (int i = 0; i < paints; ++i) {
        const auto start = std::chrono::steady_clock::now();
        view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
        GdiFlush();
        const double ms = millisecondsSince(start);
        best = best < 0.0 ? ms : std::min(best, ms);
    }
    return best;
}

std::string readBytes(const std::wstring& path) {
    std::ifstream in(path.c_str(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string openedUp(const std::string& text) {
    std::string out = ";; opened up\n";
    bool header = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i == 0 || text[i - 1] == '\n') header = text[i] == '*';
        out += header && text[i] >= 'a' && text[i] <= 'z' ? static_cast<char>(text[i] - 32) : text[i];
        if (text[i] == '\n') header = false;
    }
    return out;
}

std::vector<std::string> headerNames(const std::string& text) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '*' || (i > 0 && text[i - 1] != '\n')) continue;
        const std::size_t end = text.find_first_of(",\r\n", i);
        names.push_back(text.substr(i + 1, end == std::string::npos ? std::string::npos : end - i - 1));
    }
    return names;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    bool quick = false;
    const wchar_t* earlier = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (wcscmp(argv[i], L"--quick") == 0) quick = true;
        else if (wcscmp(argv[i], L"--compare") == 0 && i + 1 < argc) earlier = argv[++i];
    }
    const int paints = quick ? 1 : 5;
    CoInitialize(nullptr);
    const HatchSource ours(nullptr), theirs(earlier);
    if (earlier != nullptr && theirs.failed()) {
        std::printf("the module to compare with does not load\n");
        return 2;
    }
    const std::wstring folder = std::wstring(L"Z:") + KIV_SHARED_DATA_PAT_W;
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);

    // One FillRect of the rectangle, the unit of the ratios: the best of ten warm batches.
    Dib dib;
    const RECT all{0, 0, kWidth, kHeight};
    HBRUSH white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    double fillMs = -1.0;
    for (int batch = 0; batch < 11; ++batch) {
        const int fills = 1000;
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < fills; ++i) FillRect(dib.dc, &all, white);
        GdiFlush();
        const double ms = millisecondsSince(start) / fills;
        if (batch > 0) fillMs = fillMs < 0.0 ? ms : std::min(fillMs, ms);  // the first batch warms up
    }
    std::printf("FillRect of %d x %d: %.4f ms\n", kWidth, kHeight, fillMs);
    std::printf("%-44s %-16s %5s %10s %11s %8s %11s %8s %s", "file", "pattern", "zoom", "strokes", "control ms",
                "x fill", "per-call ms", "x fill", "pixels");
    if (earlier != nullptr) std::printf(" %10s %8s %7s", "before ms", "x fill", "ratio");
    std::printf("\n");

    int mismatches = 0, patterns = 0;
    double worstFill = 0.0, worstRatio = 0.0;
    WIN32_FIND_DATAW found{};
    HANDLE search = FindFirstFileW((folder + L"\\*.pat").c_str(), &found);
    while (search != INVALID_HANDLE_VALUE) {
        const std::wstring file = found.cFileName;
        const std::string original = readBytes(folder + L"\\" + file);
        const std::wstring openedPath = std::wstring(temp) + L"kiv-bench-" + file;
        {
            std::ofstream(openedPath.c_str(), std::ios::binary) << openedUp(original);
        }
        for (int variant = 0; variant < 2; ++variant) {
            const std::wstring path = variant == 0 ? folder + L"\\" + file : openedPath;
            for (const std::string& name : headerNames(variant == 0 ? original : openedUp(original))) {
                const std::wstring wname(name.begin(), name.end());
                const KivString pattern = KivString(path.c_str()) + KivString(L"(") + KivString(wname.c_str()) + KivString(L")");
                KivArray<HatchLineFamily> families;
                LoadPattern(pattern, families);
                for (double zoom : {0.05, 0.25, 1.0, 4.0}) {
                    if (quick && zoom != 1.0) continue;
                    // The strokes, counted by the portable drawing itself.
                    CountingDC counter;
                    KivArray<double> dashes;
                    KivHatchStyle style;
                    style.zoomFactor = zoom;
                    DrawHatch(counter, KivRect{0, 0, kWidth, kHeight}, families, dashes, style);
                    // Through the real control, and through the earlier one.
                    const double controlMs = paintThroughControl(ours, pattern, zoom, dib.dc, all, paints);
                    if (controlMs < 0.0) {
                        std::printf("the hatch control is not registered\n");
                        return 2;
                    }
                    const std::vector<DWORD> viaControl = dib.pixels();
                    const double beforeMs = earlier != nullptr ? paintThroughControl(theirs, pattern, zoom, dib.dc, all, paints) : 0.0;
                    // The same strokes, one call each.
                    FillRect(dib.dc, &all, white);
                    PlainGdiDC plain(dib.dc);
                    const auto start = std::chrono::steady_clock::now();
                    style.foreColor = 0;
                    DrawHatch(plain, KivRect{0, 0, kWidth, kHeight}, families, dashes, style);
                    GdiFlush();
                    const double plainMs = millisecondsSince(start);
                    const bool same = dib.pixels() == viaControl;
                    mismatches += same ? 0 : 1;
                    ++patterns;
                    std::printf("%-44ls %-16s %5.2f %10lld %11.2f %8.1f %11.2f %8.1f %s",
                                (file + (variant == 0 ? L"" : L" (opened)")).c_str(), name.c_str(), zoom, counter.strokes,
                                controlMs, controlMs / fillMs, plainMs, plainMs / fillMs, same ? "same     " : "DIFFERENT");
                    if (earlier != nullptr) std::printf(" %10.2f %8.1f %7.3f", beforeMs, beforeMs / fillMs, controlMs / beforeMs);
                    std::printf("\n");
                    if (counter.strokes >= 1000000) {
                        worstFill = std::max(worstFill, controlMs / fillMs);
                        if (earlier != nullptr) worstRatio = std::max(worstRatio, controlMs / beforeMs);
                    }
                }
            }
        }
        DeleteFileW(openedPath.c_str());
        if (!FindNextFileW(search, &found)) break;
    }
    if (search != INVALID_HANDLE_VALUE) FindClose(search);
    std::printf("%d paints, %d with different pixels\n", patterns, mismatches);
    if (worstFill > 0.0) std::printf("of the paints of 1 000 000 strokes or more: the slowest %.1f x fill", worstFill);
    if (worstRatio > 0.0) std::printf(", the closest to the earlier module %.3f of its time", worstRatio);
    if (worstFill > 0.0) std::printf("\n");
    CoFreeUnusedLibraries();
    CoUninitialize();
    return mismatches == 0 && patterns > 0 ? 0 : 1;
}
