#include "RecordingDC.h"

#include <cstdio>

RecordingDC::RecordingDC() {
    sysColors[kiv::kColorWindow] = recording_colors::kWindow;
    sysColors[kiv::kColorHighlight] = recording_colors::kHighlight;
    sysColors[kiv::kColorWindowText] = recording_colors::kWindowText;
    sysColors[kiv::kColorGrayText] = recording_colors::kGrayText;
    sysColors[kiv::kColorInactiveCaptionText] = recording_colors::kInactiveCaptionText;
}

std::string RecordingDC::hex(KivColor color) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "0x%08X", static_cast<unsigned>(color));
    return buffer;
}

std::string RecordingDC::rect(const KivRect& r) {
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
           std::to_string(r.bottom);
}

std::string RecordingDC::brush(const KivBrush& b) {
    if (!b.isStock) return "solid " + hex(b.color);
    switch (b.stock) {
    case KivStockObject::BlackBrush: return "BLACK_BRUSH";
    case KivStockObject::WhiteBrush: return "WHITE_BRUSH";
    case KivStockObject::DefaultGuiFont: return "DEFAULT_GUI_FONT";
    }
    return "?";
}

KivColor RecordingDC::getSysColor(int index) {
    calls.push_back("GetSysColor(" + std::to_string(index) + ")");
    const auto it = sysColors.find(index);
    return it != sysColors.end() ? it->second : 0;
}

KivColor RecordingDC::setTextColor(KivColor color) {
    calls.push_back("SetTextColor(" + hex(color) + ")");
    const KivColor previous = textColor;
    textColor = color;
    return previous;
}

KivColor RecordingDC::setBkColor(KivColor color) {
    calls.push_back("SetBkColor(" + hex(color) + ")");
    const KivColor previous = bkColor;
    bkColor = color;
    return previous;
}

KivColor RecordingDC::getBkColor() {
    calls.push_back("GetBkColor");
    return bkColor;
}

int RecordingDC::setBkMode(int mode) {
    calls.push_back("SetBkMode(" + std::to_string(mode) + ")");
    const int previous = bkMode;
    bkMode = mode;
    return previous;
}

unsigned RecordingDC::setTextAlign(unsigned align) {
    calls.push_back("SetTextAlign(" + std::to_string(align) + ")");
    const unsigned previous = textAlign;
    textAlign = align;
    return previous;
}

void RecordingDC::fillRect(const KivRect& r, const KivBrush& b) { calls.push_back("FillRect(" + rect(r) + "," + brush(b) + ")"); }

void RecordingDC::frameRect(const KivRect& r, const KivBrush& b) { calls.push_back("FrameRect(" + rect(r) + "," + brush(b) + ")"); }

void RecordingDC::drawFocusRect(const KivRect& r) { calls.push_back("DrawFocusRect(" + rect(r) + ")"); }

int RecordingDC::drawText(const KivString& text, const KivRect& r, unsigned format) {
    calls.push_back("DrawText(\"" + text.toUtf8() + "\"," + rect(r) + "," + std::to_string(format) + ")");
    return 13;
}

bool RecordingDC::textOut(int x, int y, const KivString& text) {
    calls.push_back("TextOut(" + std::to_string(x) + "," + std::to_string(y) + ",\"" + text.toUtf8() + "\")");
    return true;
}

KivSize RecordingDC::getTextExtent(const KivString& text) {
    calls.push_back("GetTextExtentPoint32(\"" + text.toUtf8() + "\")");
    return KivSize{7L * text.length(), 13};
}

void RecordingDC::selectPen(const KivPen& pen) {
    calls.push_back("SelectPen(" + std::to_string(pen.style) + "," + std::to_string(pen.width) + "," + hex(pen.color) + ")");
}

void RecordingDC::restorePen() { calls.push_back("RestorePen"); }

void RecordingDC::selectBrush(const KivBrush& b) { calls.push_back("SelectBrush(" + brush(b) + ")"); }

void RecordingDC::restoreBrush() { calls.push_back("RestoreBrush"); }

void RecordingDC::selectStockFont(KivStockObject font) {
    calls.push_back("SelectFont(" + brush(KivBrush::stockBrush(font)) + ")");
}

void RecordingDC::restoreFont() { calls.push_back("RestoreFont"); }

void RecordingDC::moveTo(int x, int y) { calls.push_back("MoveTo(" + std::to_string(x) + "," + std::to_string(y) + ")"); }

void RecordingDC::lineTo(int x, int y) { calls.push_back("LineTo(" + std::to_string(x) + "," + std::to_string(y) + ")"); }

void RecordingDC::ellipse(const KivRect& r) { calls.push_back("Ellipse(" + rect(r) + ")"); }

void RecordingDC::bitBltFromCompatibleBitmap(int bitmapWidth, int bitmapHeight, const KivRect& dest, unsigned long rop) {
    calls.push_back("BitBltFromCompatibleBitmap(" + std::to_string(bitmapWidth) + "x" + std::to_string(bitmapHeight) +
                    "," + rect(dest) + "," + hex(static_cast<KivColor>(rop)) + ")");
}

KivDrawItem ownerDrawItem(int id, unsigned state, const KivRect& rect, KivItemData data) {
    KivDrawItem d;
    d.itemID = id;
    d.itemState = state;
    d.rcItem = rect;
    d.itemData = data;
    return d;
}

std::vector<std::string> itemCalls(bool selected, const KivRect& filled, const std::vector<std::string>& rest) {
    namespace rc = recording_colors;
    const KivColor background = selected ? rc::kHighlight : rc::kWindow;
    std::vector<std::string> calls = {
        "GetSysColor(5)",
        "GetSysColor(13)",
        "GetSysColor(8)",
        "SetTextColor(" + RecordingDC::hex(selected ? (~rc::kWindowText & 0x00FFFFFF) : rc::kWindowText) + ")",
        "SetBkColor(" + RecordingDC::hex(background) + ")",
        "FillRect(" + RecordingDC::rect(filled) + ",solid " + RecordingDC::hex(background) + ")",
    };
    calls.insert(calls.end(), rest.begin(), rest.end());
    return calls;
}
