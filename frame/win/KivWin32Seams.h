// The seams of the portable behaviour over real Win32 objects, shared by the control families:
// IKivChildList over a combo or list box window, IKivDC over an HDC, and the conversions between
// the portable and the Win32 rectangles and owner-draw records. Win32 side.
#pragma once

#include <windows.h>

#include <vector>

#include "KivCom.h"

#include "IKivChildList.h"
#include "IKivDC.h"
#include "KivGdiStrokes.h"
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
class KivGdiDC final : public IKivDC {
public:
    explicit KivGdiDC(HDC dc) : m_dc(dc), m_strokes(dc) {}
    ~KivGdiDC();
    KivGdiDC(const KivGdiDC&) = delete;
    KivGdiDC& operator=(const KivGdiDC&) = delete;

    KIV_DC_MEMBERS
    void moveToLineTo(int x0, int y0, int x1, int y1) override;
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

