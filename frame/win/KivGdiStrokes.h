// KivGdiStrokes, the strokes of KivGdiDC. Win32 side. lineTo()'s common case, a short stroke that
// only goes into the mask, is written here so that it is worked out where it is called; the rest is
// in its own file, so that the common case does not pay for the rest's registers.
#pragma once

#include <windows.h>

#include <vector>

#include "IKivDC.h"
#include "KivGdiLine.h"

// The MoveTo/LineTo strokes of one drawing as GDI receives them. On a DC that GDI draws into
// pixels as they come (a window's or a bitmap's, in the text mapping mode and without a world
// transform), a stroke whose pixels would all lie outside the clip box is not sent (only where it
// leaves the position matters). With a one-pixel solid pen in the copy mode, where the order of the
// strokes changes nothing, the others go as two-point polylines (PolyPolyline), many in one call;
// a drawing of many strokes gathers the pixels of its short ones in a mask over the clip box
// (KivPixelMask, GDI's own walk of a line) and, when the mask's horizontal runs are fewer than those
// strokes, sends the runs instead, each a two-point polyline of the same pen. Otherwise each stroke
// is one call after a MoveToEx to where it starts. GDI's current position is put where the strokes
// left it before any other drawing. The pixels are those of one call per stroke. The same DC tells
// a drawing what it may leave out (rules()). A metafile, a printer or a transformed DC gets every
// stroke in order, each when it comes: a metafile is a record of the drawing, which its reader may
// replay at another scale.
class KivGdiStrokes {
public:
    explicit KivGdiStrokes(HDC dc) : m_dc(dc) {}
    KivGdiStrokes(const KivGdiStrokes&) = delete;
    KivGdiStrokes& operator=(const KivGdiStrokes&) = delete;
    ~KivGdiStrokes() { flush(); }

    // The pen selected through the device context, told after the strokes drawn with the one
    // before were flushed; without one (the DC's own pen, unknown here) every stroke is sent as it
    // comes.
    void setPen(int style, int width);
    void forgetPen();
    // What a drawing may leave out on this DC with the pen selected now (IKivDC::strokeRules).
    bool rules(KivStrokeRules& rules);
    void moveTo(int x, int y) {
        if (!m_known) learn();
        m_position = POINT{x, y};
        if (m_pixels) m_positionPending = true;
        else moveToNow();
    }
    void lineTo(int x, int y) {
        const LONG fromX = m_position.x, fromY = m_position.y;
        m_position = POINT{x, y};
        // Once a drawing's short strokes go only into the mask, most of its strokes end here, steps
        // of up to two pixels each way inside the box: what hold() would do with them, without the
        // checks that led there (a drawing's rules and pen stay as they are until it is flushed).
        if (m_runsOnly && m_mask.step(fromX, fromY, x, y)) {
            m_positionPending = true;
            return;
        }
        lineToFrom(fromX, fromY);
    }
    void flush();  // GDI's current position where the strokes left it
    // The GDI calls the strokes have cost so far (MoveToEx, LineTo, PolyPolyline), for tests and
    // benchmarks.
    long long calls() const { return m_calls; }

private:
    void learn();  // once: whether GDI draws this DC's strokes into pixels, and its clip box
    void moveToNow();  // GDI's position where the strokes left it, now
    struct Reach {
        long long left, top, right, bottom;
    };
    Reach reach() const;  // the clip box widened by the pen: no stroke beyond one of its edges shows
    bool solidPen() const;
    bool visible(const POINT& from, const POINT& to) const;
    bool batching() const;
    static bool append(std::vector<POINT>& strokes, const POINT& from, const POINT& to);
    static bool shortStroke(const POINT& from, const POINT& to) {  // kShortStroke pixels or fewer each way
        const long long dx = static_cast<long long>(to.x) - from.x, dy = static_cast<long long>(to.y) - from.y;
        return dx <= kShortStroke && -dx <= kShortStroke && dy <= kShortStroke && -dy <= kShortStroke;
    }
    void lineToFrom(LONG fromX, LONG fromY);  // the rest of lineTo(), out of line
    bool hold(const POINT& from, const POINT& to);
    void startMask();
    void sendHeld(bool drawingEnds);
    void sendPolylines(const POINT* points, std::size_t strokes);
    static constexpr std::size_t kBatchStrokes = 512;  // strokes in one PolyPolyline call
    static constexpr std::size_t kFirstStrokes = 512;  // sent before a mask is started
    static constexpr int kShortStroke = 4;             // pixels each way for a stroke to go into the mask
    static constexpr std::size_t kHeldStrokes = std::size_t{1} << 13;  // held before the runs are counted
    HDC m_dc;
    std::vector<POINT> m_batch;  // two points a stroke, to be sent as they are
    std::vector<POINT> m_held;   // two points a stroke, in the mask and not sent yet
    std::size_t m_batchesSent = 0;  // in this drawing
    KivPixelMask m_mask;        // the pixels of the short strokes since the mask was started
    bool m_masking = false;     // short strokes go into the mask
    bool m_runsOnly = false;    // and only there: the runs will be sent instead of the strokes
    bool m_maskTried = false;   // in this drawing
    long long m_calls = 0;
    bool m_penKnown = false;
    int m_penStyle = PS_SOLID;
    int m_penWidth = 1;
    bool m_known = false, m_pixels = false, m_copyMode = false, m_mirrored = false;
    RECT m_clip{};
    POINT m_position{0, 0};
    bool m_positionPending = false;  // GDI's position is not yet where the strokes left it
};
