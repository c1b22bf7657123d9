// Under Wine: every pattern of the real .pat files (as they are, and opened up: a comment line first,
// the headers in capitals, so that all of them load) painted into a 400 x 300 DIB section at zoom
// 0.05, 0.25, 1 and 4 through the real control (IViewObject::Draw of KivLorqControls8x64.ocx), and
// the same strokes issued one MoveToEx/LineTo call each. Prints for each its stroke count, both
// times and their ratios to one FillRect of the rectangle, and whether the two pictures are the same
// pixel for pixel.
//   hatch_paint_bench [--quick]   --quick: zoom 1 only, one repetition (the test command's run)
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

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
    const bool quick = argc > 1 && wcscmp(argv[1], L"--quick") == 0;
    CoInitialize(nullptr);
    const std::wstring folder = std::wstring(L"Z:") + KIV_SHARED_DATA_PAT_W;
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);

    // One FillRect of the rectangle, the unit of the ratios.
    Dib dib;
    const RECT all{0, 0, kWidth, kHeight};
    HBRUSH white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    const int fills = 2000;
    auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < fills; ++i) FillRect(dib.dc, &all, white);
    GdiFlush();
    const double fillMs = millisecondsSince(start) / fills;
    std::printf("FillRect of %d x %d: %.4f ms\n", kWidth, kHeight, fillMs);
    std::printf("%-44s %-16s %5s %10s %11s %8s %11s %8s %s\n", "file", "pattern", "zoom", "strokes", "control ms",
                "x fill", "per-call ms", "x fill", "pixels");

    int mismatches = 0, patterns = 0;
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
                    // Through the real control.
                    KivComPtr<IDispatch> control;
                    if (FAILED(CoCreateInstance(kHatchClsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, control.putVoid()))) {
                        std::printf("the hatch control is not registered\n");
                        return 2;
                    }
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
                    // The zoom and the colours as saved state (the property takes only zooms above
                    // 0.05; a stored 0.05 is kept): version, extent, stock mask, fore, back,
                    // Enabled, ZoomFactor.
                    unsigned char saved[33] = {0x00, 0x00, 0x01, 0x00, 0, 0, 0, 0, 0, 0, 0, 0, 0x49, 0, 0, 0,
                                               0x00, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0x00, 0x01};
                    std::memcpy(saved + 25, &zoom, sizeof zoom);
                    KivComPtr<IPersistMemory> memory;
                    control->QueryInterface(IID_IPersistMemory, memory.putVoid());
                    if (!memory || FAILED(memory->Load(saved, sizeof saved))) {
                        std::printf("the saved state did not load\n");
                        return 2;
                    }
                    KivComPtr<IViewObject> view;
                    control->QueryInterface(IID_IViewObject, view.putVoid());
                    const RECTL bounds{0, 0, kWidth, kHeight};
                    start = std::chrono::steady_clock::now();
                    view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dib.dc, &bounds, nullptr, nullptr, 0);
                    GdiFlush();
                    const double controlMs = millisecondsSince(start);
                    const std::vector<DWORD> viaControl = dib.pixels();
                    // The same strokes, one call each.
                    FillRect(dib.dc, &all, white);
                    PlainGdiDC plain(dib.dc);
                    start = std::chrono::steady_clock::now();
                    style.foreColor = 0;
                    DrawHatch(plain, KivRect{0, 0, kWidth, kHeight}, families, dashes, style);
                    GdiFlush();
                    const double plainMs = millisecondsSince(start);
                    const bool same = dib.pixels() == viaControl;
                    mismatches += same ? 0 : 1;
                    ++patterns;
                    std::printf("%-44ls %-16s %5.2f %10lld %11.2f %8.1f %11.2f %8.1f %s\n",
                                (file + (variant == 0 ? L"" : L" (opened)")).c_str(), name.c_str(), zoom, counter.strokes,
                                controlMs, controlMs / fillMs, plainMs, plainMs / fillMs, same ? "same" : "DIFFERENT");
                }
            }
        }
        DeleteFileW(openedPath.c_str());
        if (!FindNextFileW(search, &found)) break;
    }
    if (search != INVALID_HANDLE_VALUE) FindClose(search);
    std::printf("%d paints, %d with different pixels\n", patterns, mismatches);
    CoFreeUnusedLibraries();
    CoUninitialize();
    return mismatches == 0 && patterns > 0 ? 0 : 1;
}
