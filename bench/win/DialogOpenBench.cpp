// Under Wine: opening the demo's six-control dialog (create the window, create, site and activate
// the six controls through our container, fill them as the demo does, first paint of everything)
// against the same dialog built from bare Win32 windows: owner-drawn combo boxes and a list box
// holding the same item texts (taken from the controls), each item drawn as a colour swatch, a line
// sample or a bar with its text, a window hatched with 45-degree lines and a window with the
// inscribed ellipse. The two are opened in turn; prints each run's median and the ratio.
//   dialog_open_bench [--quick]   --quick: three openings of each (the test command's run)
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "KivDemoDialog.h"

namespace {

double millisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v.empty() ? 0.0 : v[v.size() / 2];
}

// Paints every window of `frame` now, children included, and waits for GDI to finish.
void firstPaint(HWND frame) {
    RedrawWindow(frame, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    GdiFlush();
}

// ---- The bare dialog

// Which picture an owner-drawn child shows for its items.
enum class Kind { Swatch, Line, Bar };

struct BareItems {
    std::vector<std::wstring> colours, linetypes, lineweights;
};

const COLORREF kSwatches[] = {RGB(255, 0, 0),   RGB(255, 255, 0), RGB(0, 255, 0),   RGB(0, 255, 255),
                              RGB(0, 0, 255),   RGB(255, 0, 255), RGB(255, 255, 255), RGB(128, 128, 0)};

void drawItem(const DRAWITEMSTRUCT& item, Kind kind, const std::wstring& text) {
    HDC dc = item.hDC;
    RECT r = item.rcItem;
    const bool selected = (item.itemState & ODS_SELECTED) != 0;
    FillRect(dc, &r, GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    const int middle = (r.top + r.bottom) / 2;
    if (kind == Kind::Swatch) {
        RECT swatch{r.left + 2, r.top + 2, r.left + 14, r.bottom - 2};
        HBRUSH brush = CreateSolidBrush(kSwatches[item.itemID % (sizeof kSwatches / sizeof kSwatches[0])]);
        FillRect(dc, &swatch, brush);
        DeleteObject(brush);
        FrameRect(dc, &swatch, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        r.left += 18;
    } else {
        const int width = kind == Kind::Line ? 1 : 1 + static_cast<int>(item.itemID % 6);
        HPEN pen = CreatePen(kind == Kind::Line && item.itemID % 2 ? PS_DASH : PS_SOLID, width, GetSysColor(COLOR_WINDOWTEXT));
        HGDIOBJ old = SelectObject(dc, pen);
        MoveToEx(dc, r.left + 2, middle, nullptr);
        LineTo(dc, r.left + 100, middle);
        SelectObject(dc, old);
        DeleteObject(pen);
        r.left += 106;
    }
    DrawTextW(dc, text.c_str(), -1, &r, DT_SINGLELINE | DT_VCENTER | DT_LEFT);
    if (item.itemState & ODS_FOCUS) DrawFocusRect(dc, &item.rcItem);
}

std::wstring itemText(HWND child, bool list, UINT index) {
    const UINT getLength = list ? LB_GETTEXTLEN : CB_GETLBTEXTLEN, getText = list ? LB_GETTEXT : CB_GETLBTEXT;
    const LRESULT n = SendMessageW(child, getLength, index, 0);
    if (n < 0) return {};
    std::wstring text(static_cast<std::size_t>(n) + 1, L'\0');
    SendMessageW(child, getText, index, reinterpret_cast<LPARAM>(&text[0]));
    text.resize(static_cast<std::size_t>(n));
    return text;
}

LRESULT CALLBACK bareProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
    if (msg == WM_DRAWITEM) {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(l);
        if (item.itemID == static_cast<UINT>(-1)) return TRUE;
        const bool list = item.CtlType == ODT_LISTBOX;
        const Kind kind = item.CtlID == 1 ? Kind::Swatch : item.CtlID == 3 ? Kind::Bar : Kind::Line;
        drawItem(item, kind, itemText(item.hwndItem, list, item.itemID));
        return TRUE;
    }
    if (msg == WM_MEASUREITEM) {
        reinterpret_cast<MEASUREITEMSTRUCT*>(l)->itemHeight = 16;
        return TRUE;
    }
    return DefWindowProcW(hwnd, msg, w, l);
}

// The hatch and the layer stand-ins: windows that paint themselves.
LRESULT CALLBACK pictureProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
    if (msg == WM_PAINT) {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(hwnd, &ps);
        RECT r;
        GetClientRect(hwnd, &r);
        FillRect(dc, &r, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        if (GetWindowLongPtrW(hwnd, GWLP_ID) == 6) {
            Ellipse(dc, 0, 0, r.right, r.bottom);
        } else {
            for (int x = -r.bottom; x < r.right; x += 6) {
                MoveToEx(dc, x, r.bottom, nullptr);
                LineTo(dc, x + r.bottom, 0);
            }
        }
        EndPaint(hwnd, &ps);
        return 0;
    }
    return DefWindowProcW(hwnd, msg, w, l);
}

void registerBareClasses() {
    WNDCLASSW wc{};
    wc.lpfnWndProc = bareProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.lpszClassName = L"BareDialog";
    RegisterClassW(&wc);
    wc.lpfnWndProc = pictureProc;
    wc.hbrBackground = nullptr;
    wc.lpszClassName = L"BarePicture";
    RegisterClassW(&wc);
}

HWND child(HWND parent, const wchar_t* cls, DWORD style, int id, const RECT& r) {
    HWND h = CreateWindowExW(0, cls, L"", style, r.left, r.top, r.right - r.left, r.bottom - r.top, parent,
                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(h, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    return h;
}

void label(HWND parent, const wchar_t* text, int x, int y, int width = 200) {
    HWND l = CreateWindowExW(0, L"STATIC", text, WS_CHILD | WS_VISIBLE, x, y, width, 16, parent, nullptr,
                             GetModuleHandleW(nullptr), nullptr);
    SendMessageW(l, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
}

// Opens the bare dialog with `items` and paints it; returns its window.
HWND openBare(const BareItems& items) {
    RECT frameRect{0, 0, kKivDemoWidth, kKivDemoHeight};
    AdjustWindowRect(&frameRect, WS_OVERLAPPEDWINDOW, FALSE);
    HWND frame = CreateWindowExW(0, L"BareDialog", L"bare", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40,
                                 frameRect.right - frameRect.left, frameRect.bottom - frameRect.top, nullptr, nullptr,
                                 GetModuleHandleW(nullptr), nullptr);
    label(frame, L"Colour", 12, 8);
    label(frame, L"Linetype", 236, 8);
    label(frame, L"Lineweight", 484, 8);
    label(frame, L"Hatch pattern", 12, 186);
    label(frame, L"Linetype list", 236, 186);
    label(frame, L"Layer", 484, 186);
    label(frame, L"Pick a colour, a linetype or a lineweight.", 12, 350, 680);
    // The styles of the controls' own children: owner-drawn with strings, a drop-down list.
    const DWORD comboStyle = WS_CHILD | WS_VISIBLE | WS_VSCROLL | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS |
                             CBS_NOINTEGRALHEIGHT | CBS_DISABLENOSCROLL;
    const DWORD listStyle = WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS;
    HWND colour = child(frame, L"COMBOBOX", comboStyle, 1, RECT{12, 24, 220, 164});
    HWND linetype = child(frame, L"COMBOBOX", comboStyle, 2, RECT{236, 24, 468, 164});
    HWND lineweight = child(frame, L"COMBOBOX", comboStyle, 3, RECT{484, 24, 692, 164});
    HWND list = child(frame, L"LISTBOX", listStyle, 4, RECT{236, 202, 468, 342});
    child(frame, L"BarePicture", WS_CHILD | WS_VISIBLE, 5, RECT{12, 202, 220, 332});
    child(frame, L"BarePicture", WS_CHILD | WS_VISIBLE, 6, RECT{484, 202, 692, 332});
    for (const std::wstring& t : items.colours) SendMessageW(colour, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(t.c_str()));
    for (const std::wstring& t : items.linetypes) {
        SendMessageW(linetype, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(t.c_str()));
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(t.c_str()));
    }
    for (const std::wstring& t : items.lineweights) SendMessageW(lineweight, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(t.c_str()));
    SendMessageW(colour, CB_SETCURSEL, 0, 0);
    SendMessageW(linetype, CB_SETCURSEL, 3, 0);
    SendMessageW(list, LB_SETCURSEL, 3, 0);
    SendMessageW(lineweight, CB_SETCURSEL, 9, 0);
    firstPaint(frame);
    return frame;
}

BareItems itemsOf(const KivDemoDialog& dialog) {
    BareItems items;
    HWND colour = KivDemoDialog::child(dialog.colour, KivDemoDialog::kColourCombo);
    HWND linetype = KivDemoDialog::child(dialog.linetype, KivDemoDialog::kLinetypeCombo);
    HWND lineweight = KivDemoDialog::child(dialog.lineweight, KivDemoDialog::kLineweightCombo);
    for (UINT i = 0; i < static_cast<UINT>(SendMessageW(colour, CB_GETCOUNT, 0, 0)); ++i) items.colours.push_back(itemText(colour, false, i));
    for (UINT i = 0; i < static_cast<UINT>(SendMessageW(linetype, CB_GETCOUNT, 0, 0)); ++i)
        items.linetypes.push_back(itemText(linetype, false, i));
    for (UINT i = 0; i < static_cast<UINT>(SendMessageW(lineweight, CB_GETCOUNT, 0, 0)); ++i)
        items.lineweights.push_back(itemText(lineweight, false, i));
    return items;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const bool quick = argc > 1 && std::wstring(argv[1]) == L"--quick";
    const int runs = quick ? 3 : 25;
    CoInitialize(nullptr);
    registerBareClasses();
    const KivDemoContent content{L"Z:" KIV_SHARED_DATA_W, L"ACadSharp__ALL_4patterns.pat(HVEGE100)", 2.0};

    // One opening first, not counted: it loads the module and the system's classes, and gives the
    // item texts of the bare dialog.
    BareItems items;
    {
        KivDemoDialog dialog;
        const std::wstring problems = dialog.open(content);
        if (!problems.empty()) {
            std::printf("the dialog did not open:\n%ls", problems.c_str());
            CoUninitialize();
            return 1;
        }
        items = itemsOf(dialog);
    }
    DestroyWindow(openBare(items));

    std::vector<double> controls, bare;
    for (int i = 0; i < runs; ++i) {
        {
            auto start = std::chrono::steady_clock::now();
            KivDemoDialog dialog;
            dialog.open(content);
            firstPaint(dialog.window());
            controls.push_back(millisecondsSince(start));
        }
        auto start = std::chrono::steady_clock::now();
        HWND frame = openBare(items);
        bare.push_back(millisecondsSince(start));
        DestroyWindow(frame);
    }
    const double c = median(controls), b = median(bare);
    std::printf("items: %zu colours, %zu linetypes (combo and list), %zu lineweights\n", items.colours.size(),
                items.linetypes.size(), items.lineweights.size());
    std::printf("six controls (create, site, activate, fill, first paint): median %.2f ms of %d\n", c, runs);
    std::printf("bare owner-drawn windows with the same items:             median %.2f ms of %d\n", b, runs);
    std::printf("ratio: %.2f\n", b > 0 ? c / b : 0.0);
    CoUninitialize();
    return 0;
}
