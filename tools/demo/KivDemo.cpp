// The demo: the dialog of the six controls (KivDemoDialog), shown until closed, or pictured and closed.
//   kivdemo [--data FOLDER] [--pattern FILE(NAME)] [--zoom Z] [--screenshot FILE.png] [--pictures FOLDER]
//           [--seconds N]
//   --data:       the folder holding lin/ and pat/ (default: the shared data of the source tree)
//   --pattern:    the hatch pattern shown, a file under pat/ and a pattern name in it
//   --zoom:       the hatch preview's zoom factor
//   --screenshot: save the window with the colour and the linetype lists dropped open as one PNG,
//                 then exit
//   --pictures:   save one PNG per control (its list dropped where it has one) in FOLDER, then exit
//   --seconds N:  close after N seconds (default: stay until the window is closed)
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <cstdio>
#include <string>
#include <vector>

#include "KivContainer.h"
#include "KivDemoDialog.h"
#include "PngWriter.h"

namespace {

// An RGB picture being put together from windows on the screen.
struct Picture {
    Picture(int w, int h) : width(w), height(h), rgb(static_cast<std::size_t>(w) * h * 3, 0xF0) {}
    // Copies `window` to (x0, y0) of the picture, as the screen shows it: its client area, or with
    // `whole` the window with its frame and scroll bars.
    void copy(HWND window, int x0, int y0, bool whole = false) {
        RECT r;
        if (whole) {
            GetWindowRect(window, &r);
            OffsetRect(&r, -r.left, -r.top);
        } else {
            GetClientRect(window, &r);
        }
        HDC dc = whole ? GetWindowDC(window) : GetDC(window);
        for (int y = 0; y < r.bottom; ++y)
            for (int x = 0; x < r.right; ++x) {
                if (x0 + x < 0 || y0 + y < 0 || x0 + x >= width || y0 + y >= height) continue;
                const COLORREF c = GetPixel(dc, x, y);
                const std::size_t i = (static_cast<std::size_t>(y0 + y) * width + (x0 + x)) * 3;
                rgb[i] = GetRValue(c);
                rgb[i + 1] = GetGValue(c);
                rgb[i + 2] = GetBValue(c);
            }
        ReleaseDC(window, dc);
    }
    bool save(const std::wstring& path) const {
        std::string narrow;
        for (wchar_t c : path) narrow.push_back(static_cast<char>(c));
        return KivWritePng(narrow, width, height, rgb);
    }
    int width, height;
    std::vector<std::uint8_t> rgb;
};

// Where `window` (its client area, or with `whole` its window rectangle) is in `reference`'s client area.
POINT offsetIn(HWND window, HWND reference, bool whole = false) {
    if (whole) {
        RECT w;
        GetWindowRect(window, &w);
        POINT r{0, 0};
        ClientToScreen(reference, &r);
        return POINT{w.left - r.x, w.top - r.y};
    }
    POINT p{0, 0};
    ClientToScreen(window, &p);
    POINT r{0, 0};
    ClientToScreen(reference, &r);
    return POINT{p.x - r.x, p.y - r.y};
}

// The dropped list of a combo box, open: its window.
HWND dropDown(HWND combo) {
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    KivPumpMessages(300);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(combo, &info);
    return info.hwndList;
}

// The screenshot and the pictures of each control; 0 when every file was saved.
int takePictures(KivDemoDialog& dialog, const std::wstring& screenshot, const std::wstring& pictures) {
    int rc = 0;
    HWND frame = dialog.window();
    KivPumpMessages(500);
    RECT client;
    GetClientRect(frame, &client);
    Picture all(client.right, client.bottom);
    all.copy(frame, 0, 0);
    for (const KivControlHost* host : {&dialog.colour, &dialog.linetype, &dialog.lineweight, &dialog.hatch,
                                       &dialog.linetypeList, &dialog.layer}) {
        const POINT at = offsetIn(host->window(), frame);
        all.copy(host->window(), at.x, at.y);
    }
    // Only one list can be dropped at a time: the colour and the linetype lists are dropped open one
    // after the other and each is put into the one picture as the screen showed it.
    struct Dropped {
        KivControlHost& host;
        int childId;
        const wchar_t* file;
        bool inScreenshot;
    };
    const Dropped dropped[] = {{dialog.colour, KivDemoDialog::kColourCombo, L"colour.png", true},
                               {dialog.linetype, KivDemoDialog::kLinetypeCombo, L"linetype.png", true},
                               {dialog.lineweight, KivDemoDialog::kLineweightCombo, L"lineweight.png", false}};
    for (const Dropped& drop : dropped) {
        HWND combo = KivDemoDialog::child(drop.host, drop.childId);
        HWND list = dropDown(combo);
        if (drop.inScreenshot) {
            const POINT at = offsetIn(list, frame, true);
            all.copy(list, at.x, at.y, true);
        }
        if (!pictures.empty()) {
            // The control and its dropped list.
            RECT listRect, comboRect;
            GetWindowRect(list, &listRect);
            GetWindowRect(combo, &comboRect);
            Picture one(comboRect.right - comboRect.left, listRect.bottom - comboRect.top);
            one.copy(combo, 0, 0);
            one.copy(list, listRect.left - comboRect.left, listRect.top - comboRect.top, true);
            if (!one.save(pictures + L"\\" + drop.file)) rc = 1;
        }
        SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
        KivPumpMessages(200);
    }
    if (!pictures.empty()) {
        const std::pair<KivControlHost*, const wchar_t*> plain[] = {
            {&dialog.hatch, L"hatch.png"}, {&dialog.linetypeList, L"linetype-list.png"}, {&dialog.layer, L"layer.png"}};
        for (const auto& [host, file] : plain) {
            RECT r;
            GetClientRect(host->window(), &r);
            Picture one(r.right, r.bottom);
            one.copy(host->window(), 0, 0);
            if (!one.save(pictures + L"\\" + file)) rc = 1;
        }
    }
    if (!screenshot.empty() && !all.save(screenshot)) rc = 1;
    return rc;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    KivDemoContent content{L"Z:" KIV_SHARED_DATA_W, L"ACadSharp__ALL_4patterns.pat(HVEGE100)", 2.0};
    std::wstring screenshot, pictures;
    int seconds = 0;
    for (int i = 1; i < argc; ++i) {
        const std::wstring a = argv[i];
        if (a == L"--screenshot" && i + 1 < argc) screenshot = argv[++i];
        else if (a == L"--pictures" && i + 1 < argc) pictures = argv[++i];
        else if (a == L"--data" && i + 1 < argc) content.data = argv[++i];
        else if (a == L"--pattern" && i + 1 < argc) content.pattern = argv[++i];
        else if (a == L"--zoom" && i + 1 < argc) content.zoom = _wtof(argv[++i]);
        else if (a == L"--seconds" && i + 1 < argc) seconds = _wtoi(argv[++i]);
    }
    CoInitialize(nullptr);
    int rc = 0;
    {
        KivDemoDialog dialog;
        const std::wstring problems = dialog.open(content);
        if (!problems.empty()) {
            std::fprintf(stderr, "kivdemo:\n%ls", problems.c_str());
            rc = 1;
        } else if (!screenshot.empty() || !pictures.empty()) {
            rc = takePictures(dialog, screenshot, pictures);
        } else {
            if (seconds > 0)
                SetTimer(dialog.window(), 1, static_cast<UINT>(seconds) * 1000,
                         [](HWND h, UINT, UINT_PTR, DWORD) { DestroyWindow(h); });
            MSG msg;
            while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
                TranslateMessage(&msg);
                DispatchMessageW(&msg);
            }
        }
    }
    CoUninitialize();
    return rc;
}
