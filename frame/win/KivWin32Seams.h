// The seams of the portable behaviour over real Win32 objects, shared by the control families:
// IKivChildList over a combo or list box window, IKivDC over an HDC, and the conversions between
// the portable and the Win32 rectangles and owner-draw records. Win32 side.
#pragma once

#include <windows.h>

#include <vector>

#include "KivCom.h"

#include "IKivChildList.h"
#include "IKivDC.h"
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
// The MoveTo/LineTo strokes of one drawing as GDI receives them, with the same pixels as one call
// per stroke: a stroke whose pixels would all lie outside the DC's clip box is not sent (only where it
// leaves the position matters); every other stroke is sent as it came, after a MoveToEx to where it
// starts when the position moved unseen. GDI's current position is put where the strokes left it
// before any other drawing. A hatch preview at a small zoom issues millions of strokes, most of them
// outside the control. (Batching the visible strokes as PolyPolyline was measured and left out: its
// pixels are not always those of one LineTo per stroke.)
class KivGdiStrokes {
public:
    explicit KivGdiStrokes(HDC dc) : m_dc(dc) {}
    KivGdiStrokes(const KivGdiStrokes&) = delete;
    KivGdiStrokes& operator=(const KivGdiStrokes&) = delete;
    ~KivGdiStrokes() { flush(); }

    void setPenWidth(int width);
    void moveTo(int x, int y);
    void lineTo(int x, int y);
    void flush();  // GDI's current position where the strokes left it

private:
    bool visible(const POINT& from, const POINT& to);
    HDC m_dc;
    int m_penWidth = 1;
    bool m_clipKnown = false, m_clipAll = false;
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

private:
    // One object selected into the DC: on destruction the object it replaced goes back, then the
    // object is deleted if it was created here (stock objects are borrowed).
    struct Selection {
        KivGdiObject<HGDIOBJ> created;  // declared first: deleted after it is deselected
        KivSelectObject selected;
        int penWidth;
    };
    // Records the selection first and then selects: without memory for the record nothing is
    // selected and `created` is deleted.
    void select(std::vector<Selection>& stack, KivGdiObject<HGDIOBJ> created, HGDIOBJ object, int penWidth = 1);
    static void restore(std::vector<Selection>& stack);  // every selection, last first
    HDC m_dc;
    KivGdiStrokes m_strokes;  // MoveTo and LineTo; drawn before anything else is
    std::vector<Selection> m_pens, m_brushes, m_fonts;
};

RECT KivToRECT(const KivRect& r);
KivRect KivFromRECT(const RECT& r);
// The fields of an owner-draw request the drawing code reads.
KivDrawItem KivFromDRAWITEMSTRUCT(const DRAWITEMSTRUCT& item);

