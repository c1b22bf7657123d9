// IKivDC: the device-context seam of every drawing algorithm.
// Portable. The calls are the GDI calls the drawing code makes, with integer coordinates; the Win32 shell
// implements them on a real HDC (owning the pens and brushes it creates), tests record them
// (tests/support/RecordingDC) and assert the exact sequence.
#pragma once

#include "KivString.h"
#include "KivTypes.h"

// What a raster device tells a drawing about its strokes (IKivDC::strokeRules).
struct KivStrokeRules {
    // A MoveTo or LineTo whose two ends both lie beyond one edge of the box (both x < left, both x
    // >= right, both y < top or both y >= bottom), in the device's coordinates, changes no pixel.
    KivRect box;
    // A LineTo whose two ends equal those of a LineTo already drawn since the pen was selected
    // changes no pixel (a solid pen in the copy mix mode).
    bool repeatsChangeNothing = false;
    // A LineTo to the point it starts from changes no pixel (a pen one pixel wide: a line is drawn
    // up to, not including, its end).
    bool emptyStrokesChangeNothing = false;
    // Either may be left out as long as the next stroke that is sent starts with a MoveTo to where
    // the strokes left out ended.
};

class IKivDC {
public:
    virtual ~IKivDC() = default;

    virtual KivColor getSysColor(int index) = 0;  // GetSysColor (the system's, seen from this DC's side)

    virtual KivColor setTextColor(KivColor color) = 0;  // returns the previous colour
    virtual KivColor setBkColor(KivColor color) = 0;    // returns the previous colour
    virtual KivColor getBkColor() = 0;
    virtual int setBkMode(int mode) = 0;                  // returns the previous mode
    virtual unsigned setTextAlign(unsigned align) = 0;    // returns the previous alignment

    virtual void fillRect(const KivRect& rect, const KivBrush& brush) = 0;
    virtual void frameRect(const KivRect& rect, const KivBrush& brush) = 0;
    virtual void drawFocusRect(const KivRect& rect) = 0;
    virtual int drawText(const KivString& text, const KivRect& rect, unsigned format) = 0;
    virtual bool textOut(int x, int y, const KivString& text) = 0;
    virtual KivSize getTextExtent(const KivString& text) = 0;  // GetTextExtentPoint32W

    // Selection: the DC keeps what it creates until the matching restore puts the previous back.
    virtual void selectPen(const KivPen& pen) = 0;
    virtual void restorePen() = 0;
    virtual void selectBrush(const KivBrush& brush) = 0;
    virtual void restoreBrush() = 0;
    virtual void selectStockFont(KivStockObject font) = 0;
    virtual void restoreFont() = 0;

    virtual void moveTo(int x, int y) = 0;
    virtual void lineTo(int x, int y) = 0;
    // A MoveTo and a LineTo in one call, for a drawing of many strokes; this default makes the two.
    virtual void moveToLineTo(int x0, int y0, int x1, int y1) {
        moveTo(x0, y0);
        lineTo(x1, y1);
    }
    virtual void ellipse(const KivRect& rect) = 0;

    // CreateCompatibleDC + CreateCompatibleBitmap(bitmapWidth, bitmapHeight) selected into it, then
    // BitBlt of dest's size from the memory DC's origin to dest's top-left with `rop`, then release.
    virtual void bitBltFromCompatibleBitmap(int bitmapWidth, int bitmapHeight, const KivRect& dest,
                                            unsigned long rop) = 0;

    // What a drawing of many strokes may leave out on this device. A device that draws pixels
    // answers true and fills `rules`; one that keeps every stroke in order (a metafile, a printer, a
    // recording) answers false, as this default does, and gets every stroke.
    virtual bool strokeRules(KivStrokeRules& rules) {
        static_cast<void>(rules);
        return false;
    }
};

// The declarations of every member above, for a class that implements the whole seam (the Win32
// DC, the recording DC of the tests, the raster DC of the tools).
#define KIV_DC_MEMBERS                                                                                  \
    KivColor getSysColor(int index) override;                                                          \
    KivColor setTextColor(KivColor color) override;                                                    \
    KivColor setBkColor(KivColor color) override;                                                      \
    KivColor getBkColor() override;                                                                    \
    int setBkMode(int mode) override;                                                                  \
    unsigned setTextAlign(unsigned align) override;                                                    \
    void fillRect(const KivRect& rect, const KivBrush& brush) override;                                \
    void frameRect(const KivRect& rect, const KivBrush& brush) override;                               \
    void drawFocusRect(const KivRect& rect) override;                                                  \
    int drawText(const KivString& text, const KivRect& rect, unsigned format) override;                \
    bool textOut(int x, int y, const KivString& text) override;                                        \
    KivSize getTextExtent(const KivString& text) override;                                             \
    void selectPen(const KivPen& pen) override;                                                        \
    void restorePen() override;                                                                        \
    void selectBrush(const KivBrush& brush) override;                                                  \
    void restoreBrush() override;                                                                      \
    void selectStockFont(KivStockObject font) override;                                                \
    void restoreFont() override;                                                                       \
    void moveTo(int x, int y) override;                                                                \
    void lineTo(int x, int y) override;                                                                \
    void ellipse(const KivRect& rect) override;                                                        \
    void bitBltFromCompatibleBitmap(int bitmapWidth, int bitmapHeight, const KivRect& dest, unsigned long rop) override;
