// CKivDpi platform probe on Windows.
// - dpi: LOGPIXELSY of the screen DC (Wine takes it from the registry value LogPixels).
// - The combo-box metrics are measured from a hidden, never shown drop-down-list combo box with
//   the stock DEFAULT_GUI_FONT: the item height is CB_GETITEMHEIGHT of item 0 (a list item), the
//   height difference is the window's height minus CB_GETITEMHEIGHT of item -1 (the selection
//   field), i.e. what the combo's frame adds to its selection field.
#include <windows.h>

#include "CKivDpi.h"

namespace kivdpi_platform {

int queryDpi() {
    HDC screen = GetDC(nullptr);
    if (screen == nullptr) return 96;
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : 96;
}

bool measureComboBox(int /*dpi*/, int& heightDiff, int& itemHeight) {
    HWND combo = CreateWindowExW(0, L"COMBOBOX", L"", WS_POPUP | CBS_DROPDOWNLIST | CBS_HASSTRINGS, 0, 0, 100, 200,
                                 nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (combo == nullptr) return false;
    SendMessageW(combo, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    const LRESULT field = SendMessageW(combo, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0);
    const LRESULT item = SendMessageW(combo, CB_GETITEMHEIGHT, 0, 0);
    RECT rect{};
    GetWindowRect(combo, &rect);
    DestroyWindow(combo);
    if (field == CB_ERR || item == CB_ERR || field <= 0 || item <= 0) return false;
    heightDiff = static_cast<int>((rect.bottom - rect.top) - field);
    itemHeight = static_cast<int>(item);
    return true;
}

}  // namespace kivdpi_platform
