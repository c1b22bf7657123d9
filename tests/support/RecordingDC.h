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

    KivColor getSysColor(int index) override;
    KivColor setTextColor(KivColor color) override;
    KivColor setBkColor(KivColor color) override;
    KivColor getBkColor() override;
    int setBkMode(int mode) override;
    unsigned setTextAlign(unsigned align) override;
    void fillRect(const KivRect& rect, const KivBrush& brush) override;
    void frameRect(const KivRect& rect, const KivBrush& brush) override;
    void drawFocusRect(const KivRect& rect) override;
    int drawText(const KivString& text, const KivRect& rect, unsigned format) override;
    bool textOut(int x, int y, const KivString& text) override;
    KivSize getTextExtent(const KivString& text) override;
    void selectPen(const KivPen& pen) override;
    void restorePen() override;
    void selectBrush(const KivBrush& brush) override;
    void restoreBrush() override;
    void selectStockFont(KivStockObject font) override;
    void restoreFont() override;
    void moveTo(int x, int y) override;
    void lineTo(int x, int y) override;
    void ellipse(const KivRect& rect) override;
    void bitBltFromCompatibleBitmap(int bitmapWidth, int bitmapHeight, const KivRect& dest, unsigned long rop) override;

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

// Default system colours of RecordingDC.
namespace recording_colors {
constexpr KivColor kWindow = 0x00F1F2F3;
constexpr KivColor kHighlight = 0x00D77800;
constexpr KivColor kWindowText = 0x00010203;
constexpr KivColor kGrayText = 0x006D6E6F;
constexpr KivColor kInactiveCaptionText = 0x00131415;
}  // namespace recording_colors
