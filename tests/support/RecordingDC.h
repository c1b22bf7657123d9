// Test double: a device context that records every call as one line of text, e.g.
// "FillRect(0,0,100,16,solid 0x00FFFFFF)", so tests assert exact call sequences. System colours
// are distinct, recognisable values (settable), and text extents are 7 pixels per character by
// 13 pixels high.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "IKivDC.h"

class RecordingDC : public IKivDC {
public:
    RecordingDC();

    KIV_DC_MEMBERS

    static std::string hex(KivColor color);
    static std::string rect(const KivRect& r);
    static std::string brush(const KivBrush& b);

    std::map<int, KivColor> sysColors;
    std::vector<std::string> calls;
    KivColor textColor = 0;
    KivColor bkColor = 0x00FFFFFF;
    int bkMode = kiv::kBkOpaque;
    unsigned textAlign = 0;
};

// An owner-draw request: item `id` in `state` over `rect`, with `data` as its item data.
KivDrawItem ownerDrawItem(int id, unsigned state, const KivRect& rect, KivItemData data = 0);

// The calls every item drawer of the module begins with on a RecordingDC: the window, highlight and
// window-text system colours, the text and background colours of a plain or a selected item, and
// `filled` filled with that background; then `rest`.
std::vector<std::string> itemCalls(bool selected, const KivRect& filled, const std::vector<std::string>& rest);

// Default system colours of RecordingDC.
namespace recording_colors {
constexpr KivColor kWindow = 0x00F1F2F3;
constexpr KivColor kHighlight = 0x00D77800;
constexpr KivColor kWindowText = 0x00010203;
constexpr KivColor kGrayText = 0x006D6E6F;
constexpr KivColor kInactiveCaptionText = 0x00131415;
}  // namespace recording_colors
