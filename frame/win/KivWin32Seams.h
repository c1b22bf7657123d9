// The seams of the portable behaviour over real Win32 objects, shared by the control families:
// IKivChildList over a combo or list box window, IKivDC over an HDC, and the conversions between
// the portable and the Win32 rectangles and owner-draw records. Win32 side.
#pragma once

#include <windows.h>

#include <vector>

#include "KivCom.h"

#include "IKivChildList.h"
#include "IKivDC.h"
#include "KivGdiLine.h"
#include "KivChildControl.h"

// IKivChildList over a combo box (CB_*) or list box (LB_*) window.
class KivWin32ChildList final : public IKivChildList {
public:
    KivWin32ChildList(HWND window, KivChildKind kind) : m_hwnd(window), m_kind(kind) {}
    HWND hwnd() const { return m_hwnd; }

    KIV_CHILD_LIST_MEMBERS

private:
    LRESULT send(UINT comboMsg, UINT listMsg, WPARAM w, LPARAM l) const;
    HWND m_hwnd;
    KivChildKind m_kind;
};

// IKivDC over a real HDC. Pens and brushes it creates are owned here and deleted after they are
// deselected; GetSysColor is the system's.
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
    void moveTo(int x, int y);
    void lineTo(int x, int y);
    void flush();  // GDI's current position where the strokes left it
    // The GDI calls the strokes have cost so far (MoveToEx, LineTo, PolyPolyline), for tests and
    // benchmarks.
    long long calls() const { return m_calls; }

private:
    void learn();  // once: whether GDI draws this DC's strokes into pixels, and its clip box
    struct Reach {
        long long left, top, right, bottom;
    };
    Reach reach() const;  // the clip box widened by the pen: no stroke beyond one of its edges shows
    bool solidPen() const;
    bool visible(const POINT& from, const POINT& to) const;
    bool batching() const;
    static bool append(std::vector<POINT>& strokes, const POINT& from, const POINT& to);
    static bool shortStroke(const POINT& from, const POINT& to);  // kShortStroke pixels or fewer each way
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

class KivGdiDC final : public IKivDC {
public:
    explicit KivGdiDC(HDC dc) : m_dc(dc), m_strokes(dc) {}
    ~KivGdiDC();
    KivGdiDC(const KivGdiDC&) = delete;
    KivGdiDC& operator=(const KivGdiDC&) = delete;

    KIV_DC_MEMBERS
    bool strokeRules(KivStrokeRules& rules) override;
    long long strokeCalls() const { return m_strokes.calls(); }  // the GDI calls its strokes have cost

private:
    // One object selected into the DC: on destruction the object it replaced goes back, then the
    // object is deleted if it was created here (stock objects are borrowed).
    struct Selection {
        KivGdiObject<HGDIOBJ> created;  // declared first: deleted after it is deselected
        KivSelectObject selected;
        int penStyle;
        int penWidth;
    };
    // Records the selection first and then selects: without memory for the record nothing is
    // selected and `created` is deleted.
    void select(std::vector<Selection>& stack, KivGdiObject<HGDIOBJ> created, HGDIOBJ object, int penStyle = 0,
                int penWidth = 1);
    static void restore(std::vector<Selection>& stack);  // every selection, last first
    HDC m_dc;
    KivGdiStrokes m_strokes;  // MoveTo and LineTo; drawn before anything else is
    std::vector<Selection> m_pens, m_brushes, m_fonts;
};

RECT KivToRECT(const KivRect& r);
KivRect KivFromRECT(const RECT& r);
// The fields of an owner-draw request the drawing code reads.
KivDrawItem KivFromDRAWITEMSTRUCT(const DRAWITEMSTRUCT& item);

