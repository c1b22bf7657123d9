// Portable values of the platform's drawing and list vocabulary.
// Portable: the numbers are Win32's own; frame/win/KivWin32Seams.cpp checks each against <windows.h>
// at compile time, so the portable code and the Win32 shell cannot disagree.
#pragma once

#include <cstdint>

#include "CKivDpi.h"  // KivSize

// A colour value 0x00BBGGRR (Win32 COLORREF layout).
using KivColor = std::uint32_t;
// A list message result (Win32 LRESULT: pointer-sized, signed).
using KivLResult = std::intptr_t;
// An item-data word (Win32 LPARAM / ULONG_PTR-sized).
using KivItemData = std::intptr_t;

struct KivRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int width() const { return right - left; }
    int height() const { return bottom - top; }
    bool operator==(const KivRect& o) const {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }
};

namespace kiv {
// List results.
constexpr KivLResult kCbErr = -1;       // CB_ERR, LB_ERR
constexpr KivLResult kCbErrSpace = -2;  // CB_ERRSPACE, LB_ERRSPACE
// Combo-box and list-box notifications (high word of WM_COMMAND's wParam).
constexpr int kCbnSelChange = 1;
constexpr int kCbnDropDown = 7;
constexpr int kCbnCloseUp = 8;
constexpr int kCbnSelEndOk = 9;
constexpr int kLbnSelChange = 1;
// Owner-draw item state.
constexpr unsigned kOdsSelected = 0x0001;
constexpr unsigned kOdsDisabled = 0x0004;
constexpr unsigned kOdsFocus = 0x0010;
constexpr unsigned kOdsComboBoxEdit = 0x1000;
// System colour indices.
constexpr int kColorWindow = 5;
constexpr int kColorWindowText = 8;
constexpr int kColorHighlight = 13;
constexpr int kColorGrayText = 17;
constexpr int kColorInactiveCaptionText = 19;
// Text drawing.
constexpr unsigned kDtVCenter = 0x0004;
constexpr unsigned kDtSingleLine = 0x0020;
constexpr int kBkTransparent = 1;
constexpr int kBkOpaque = 2;
constexpr unsigned kTaCenter = 6;
constexpr unsigned kTaBaseline = 24;
// RedrawWindow flags.
constexpr unsigned kRdwInvalidate = 0x0001;
constexpr unsigned kRdwErase = 0x0004;
constexpr unsigned kRdwUpdateNow = 0x0100;
constexpr unsigned kRedrawAll = kRdwInvalidate | kRdwErase | kRdwUpdateNow;  // 261
// Raster operation and pen style.
constexpr unsigned long kSrcCopy = 0x00CC0020;
constexpr int kPsSolid = 0;
}  // namespace kiv

// Stock GDI objects the drawing code uses.
enum class KivStockObject { BlackBrush, WhiteBrush, DefaultGuiFont };

// A brush as the drawing code asks for it: a stock brush or a solid colour.
struct KivBrush {
    bool isStock = false;
    KivStockObject stock = KivStockObject::BlackBrush;
    KivColor color = 0;
    static KivBrush solid(KivColor c) { return KivBrush{false, KivStockObject::BlackBrush, c}; }
    static KivBrush stockBrush(KivStockObject s) { return KivBrush{true, s, 0}; }
};

// A cosmetic pen: style, width in pixels, colour.
struct KivPen {
    int style = kiv::kPsSolid;
    int width = 1;
    KivColor color = 0;
};

// The owner-draw requests (Win32 DRAWITEMSTRUCT and MEASUREITEMSTRUCT, the fields the controls use).
struct KivDrawItem {
    int itemID = -1;
    unsigned itemState = 0;
    KivRect rcItem;
    KivItemData itemData = 0;
};

struct KivMeasureItem {
    int itemID = 0;
    unsigned itemHeight = 0;
};
