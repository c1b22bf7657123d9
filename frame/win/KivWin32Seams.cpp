// The seams over real Win32 objects: IKivChildList over a combo or list box window, IKivDC over an
// HDC. Win32 side. The portable constants of frame/KivTypes.h are checked against <windows.h> here.
#include <algorithm>
#include <climits>
#include <string>

#include "KivCom.h"
#include "KivWin32Seams.h"

static_assert(kiv::kCbErr == CB_ERR && kiv::kCbErrSpace == CB_ERRSPACE, "list results");
static_assert(kiv::kCbErr == LB_ERR && kiv::kCbErrSpace == LB_ERRSPACE, "list results");
static_assert(kiv::kCbnSelChange == CBN_SELCHANGE && kiv::kCbnDropDown == CBN_DROPDOWN &&
                  kiv::kCbnCloseUp == CBN_CLOSEUP && kiv::kCbnSelEndOk == CBN_SELENDOK && kiv::kLbnSelChange == LBN_SELCHANGE,
              "notifications");
static_assert(kiv::kOdsSelected == ODS_SELECTED && kiv::kOdsDisabled == ODS_DISABLED && kiv::kOdsFocus == ODS_FOCUS &&
                  kiv::kOdsComboBoxEdit == ODS_COMBOBOXEDIT,
              "owner-draw states");
static_assert(kiv::kColorWindow == COLOR_WINDOW && kiv::kColorWindowText == COLOR_WINDOWTEXT &&
                  kiv::kColorHighlight == COLOR_HIGHLIGHT && kiv::kColorGrayText == COLOR_GRAYTEXT &&
                  kiv::kColorInactiveCaptionText == COLOR_INACTIVECAPTIONTEXT,
              "system colours");
static_assert(kiv::kDtVCenter == DT_VCENTER && kiv::kDtSingleLine == DT_SINGLELINE && kiv::kBkTransparent == TRANSPARENT &&
                  kiv::kBkOpaque == OPAQUE && kiv::kTaCenter == TA_CENTER && kiv::kTaBaseline == TA_BASELINE,
              "text drawing");
static_assert(kiv::kRdwInvalidate == RDW_INVALIDATE && kiv::kRdwErase == RDW_ERASE && kiv::kRdwUpdateNow == RDW_UPDATENOW &&
                  kiv::kRedrawAll == 261,
              "redraw flags");
static_assert(kiv::kSrcCopy == SRCCOPY && kiv::kPsSolid == PS_SOLID, "raster operation and pen style");
static_assert(sizeof(KivItemData) == sizeof(LPARAM) && sizeof(KivLResult) == sizeof(LRESULT), "pointer-sized results");

// ---------------------------------------------------------------- conversions

RECT KivToRECT(const KivRect& r) { return RECT{r.left, r.top, r.right, r.bottom}; }
KivRect KivFromRECT(const RECT& r) { return KivRect{r.left, r.top, r.right, r.bottom}; }

KivDrawItem KivFromDRAWITEMSTRUCT(const DRAWITEMSTRUCT& item) {
    KivDrawItem draw;
    draw.itemID = static_cast<int>(item.itemID);  // (UINT)-1 for the empty selection field
    draw.itemState = item.itemState;
    draw.rcItem = KivFromRECT(item.rcItem);
    draw.itemData = static_cast<KivItemData>(item.itemData);
    return draw;
}

// ---------------------------------------------------------------- IKivChildList

LRESULT KivWin32ChildList::send(UINT comboMsg, UINT listMsg, WPARAM w, LPARAM l) const {
    return SendMessageW(m_hwnd, m_kind == KivChildKind::ComboBox ? comboMsg : listMsg, w, l);
}

KivLResult KivWin32ChildList::addString(const KivString& text) {
    return send(CB_ADDSTRING, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.getStringW()));
}
KivLResult KivWin32ChildList::insertString(int index, const KivString& text) {
    return send(CB_INSERTSTRING, LB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.getStringW()));
}
KivLResult KivWin32ChildList::deleteString(int index) {
    return send(CB_DELETESTRING, LB_DELETESTRING, static_cast<WPARAM>(index), 0);
}
void KivWin32ChildList::resetContent() { send(CB_RESETCONTENT, LB_RESETCONTENT, 0, 0); }
KivLResult KivWin32ChildList::setItemData(int index, KivItemData data) {
    return send(CB_SETITEMDATA, LB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data));
}
KivLResult KivWin32ChildList::getItemData(int index) {
    return send(CB_GETITEMDATA, LB_GETITEMDATA, static_cast<WPARAM>(index), 0);
}
KivLResult KivWin32ChildList::getText(int index, KivString& text) {
    text = KivString();
    const LRESULT length = send(CB_GETLBTEXTLEN, LB_GETTEXTLEN, static_cast<WPARAM>(index), 0);
    if (length == CB_ERR || length < 0) return length;
    std::wstring buffer(static_cast<std::size_t>(length) + 1, L'\0');
    const LRESULT got = send(CB_GETLBTEXT, LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&buffer[0]));
    if (got == CB_ERR) return got;
    text = KivString(buffer.c_str());
    return got;
}
KivLResult KivWin32ChildList::getCount() { return send(CB_GETCOUNT, LB_GETCOUNT, 0, 0); }
KivLResult KivWin32ChildList::getCurSel() { return send(CB_GETCURSEL, LB_GETCURSEL, 0, 0); }
KivLResult KivWin32ChildList::setCurSel(int index) {
    return send(CB_SETCURSEL, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
}
bool KivWin32ChildList::getDroppedState() {
    return m_kind == KivChildKind::ComboBox && SendMessageW(m_hwnd, CB_GETDROPPEDSTATE, 0, 0) != 0;
}
KivLResult KivWin32ChildList::setItemHeight(int index, int height) {
    return send(CB_SETITEMHEIGHT, LB_SETITEMHEIGHT, static_cast<WPARAM>(index), height);
}
KivLResult KivWin32ChildList::getItemHeight(int index) {
    return send(CB_GETITEMHEIGHT, LB_GETITEMHEIGHT, static_cast<WPARAM>(index), 0);
}
void KivWin32ChildList::setDefaultGuiFont() {
    SendMessageW(m_hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
}
void KivWin32ChildList::redraw(unsigned flags) { RedrawWindow(m_hwnd, nullptr, nullptr, flags); }
void KivWin32ChildList::invalidate(bool erase) { InvalidateRect(m_hwnd, nullptr, erase ? TRUE : FALSE); }
void KivWin32ChildList::update() { UpdateWindow(m_hwnd); }
void KivWin32ChildList::move(int x, int y, int width, int height, bool repaint) {
    MoveWindow(m_hwnd, x, y, width, height, repaint ? TRUE : FALSE);
}
void KivWin32ChildList::enable(bool enabled) { EnableWindow(m_hwnd, enabled ? TRUE : FALSE); }
void KivWin32ChildList::setFocus() { SetFocus(m_hwnd); }

// ---------------------------------------------------------------- strokes

void KivGdiStrokes::setPen(int style, int width) {
    m_penKnown = true;
    m_penStyle = style;
    m_penWidth = width < 1 ? 1 : width;
}

void KivGdiStrokes::forgetPen() { m_penKnown = false; }

void KivGdiStrokes::learn() {
    if (m_known) return;
    m_known = true;
    const DWORD type = GetObjectType(m_dc);
    XFORM transform{};
    const bool untransformed = GetGraphicsMode(m_dc) != GM_ADVANCED ||
                               (GetWorldTransform(m_dc, &transform) && transform.eM11 == 1.0f && transform.eM22 == 1.0f &&
                                transform.eM12 == 0.0f && transform.eM21 == 0.0f);
    m_pixels = (type == OBJ_DC || type == OBJ_MEMDC) && GetDeviceCaps(m_dc, TECHNOLOGY) == DT_RASDISPLAY &&
               GetMapMode(m_dc) == MM_TEXT && untransformed;
    if (!m_pixels) return;
    m_copyMode = GetROP2(m_dc) == R2_COPYPEN;  // the strokes of one drawing come with no other change to the DC
    m_mirrored = (GetLayout(m_dc) & LAYOUT_RTL) != 0;
    const int kind = GetClipBox(m_dc, &m_clip);
    if (kind == ERROR) m_pixels = false;  // unknown: everything is sent
    if (kind == NULLREGION) m_clip = RECT{0, 0, 0, 0};
}

// A stroke's pixels lie within the box of its ends, widened by the pen (and a pixel for the rounding
// of a window origin): a stroke whose two ends lie beyond one edge of the clip box widened so much
// changes no pixel.
KivGdiStrokes::Reach KivGdiStrokes::reach() const {
    const long long margin = m_penWidth + 1;
    return Reach{m_clip.left - margin, m_clip.top - margin, m_clip.right + margin, m_clip.bottom + margin};
}

// A pen that sets every pixel of its line to its colour: the same line drawn again, or the lines in
// another order, set the same pixels (a styled pen carries its dashes on from line to line).
bool KivGdiStrokes::solidPen() const { return m_penStyle == PS_SOLID || m_penStyle == PS_INSIDEFRAME; }

bool KivGdiStrokes::rules(KivStrokeRules& rules) {
    learn();
    if (!m_pixels || !m_penKnown) return false;
    const auto clamped = [](long long v) { return static_cast<int>(std::max<long long>(INT_MIN, std::min<long long>(INT_MAX, v))); };
    const Reach r = reach();
    rules.box = KivRect{clamped(r.left), clamped(r.top), clamped(r.right), clamped(r.bottom)};
    // XOR and the other mixes change the pixels of a repeat again.
    rules.repeatsChangeNothing = m_copyMode && solidPen();
    // A one-pixel line is drawn up to, not including, its end: from a point to itself, nothing.
    rules.emptyStrokesChangeNothing = m_penWidth <= 1;
    return true;
}

bool KivGdiStrokes::visible(const POINT& from, const POINT& to) const {
    if (!m_pixels || !m_penKnown) return true;
    const Reach r = reach();
    return !((from.x < r.left && to.x < r.left) || (from.x >= r.right && to.x >= r.right) || (from.y < r.top && to.y < r.top) ||
             (from.y >= r.bottom && to.y >= r.bottom));
}

void KivGdiStrokes::moveTo(int x, int y) {
    learn();
    m_position = POINT{x, y};
    if (!m_pixels) {  // a record of the drawing: every stroke, in order
        MoveToEx(m_dc, x, y, nullptr);
        ++m_calls;
        return;
    }
    m_positionPending = true;
}

// Strokes that can show are held and go to GDI many in one call, each as a polyline of its two
// points (PolyPolyline), when the order they are drawn in changes nothing: a one-pixel solid pen in
// the copy mode on a DC drawn into pixels. A two-point polyline is drawn as MoveToEx and LineTo draw
// it, its end left out (a Windows test compares the two on random strokes).
bool KivGdiStrokes::batching() const {
    return m_pixels && m_penKnown && m_copyMode && m_penWidth <= 1 && solidPen();
}

void KivGdiStrokes::sendPolylines(const POINT* points, std::size_t strokes) {
    static const struct Twos {
        DWORD points[kBatchStrokes];
        Twos() {
            for (DWORD& p : points) p = 2;
        }
    } twos;
    for (std::size_t done = 0; done < strokes; done += kBatchStrokes) {
        const std::size_t count = std::min(kBatchStrokes, strokes - done);
        PolyPolyline(m_dc, points + 2 * done, twos.points, static_cast<DWORD>(count));
        ++m_calls;
    }
}

// Once a drawing has sent kFirstStrokes strokes, its short ones (kShortStroke pixels or fewer each
// way) are gathered in a mask over the clip box instead (not on a mirrored DC: the mask walks a line
// as GDI does in device coordinates, and a mirrored DC's x runs the other way), and held until the
// mask's runs are known. A long stroke costs GDI little
// for its pixels and the mask much, and a stroke the mask cannot take (a coordinate GDI scales down
// first) must go as it is: both go in the batches.
void KivGdiStrokes::startMask() {
    m_maskTried = true;
    m_masking = !m_mirrored && m_mask.reset(KivRect{m_clip.left, m_clip.top, m_clip.right, m_clip.bottom});
}

// A stroke at the end of a list of two points a stroke; false when there is no memory for it.
bool KivGdiStrokes::append(std::vector<POINT>& strokes, const POINT& from, const POINT& to) {
    try {
        if (strokes.capacity() == 0) strokes.reserve(2 * kBatchStrokes);
        strokes.push_back(from);
        strokes.push_back(to);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

bool KivGdiStrokes::shortStroke(const POINT& from, const POINT& to) {
    const long long dx = static_cast<long long>(to.x) - from.x, dy = static_cast<long long>(to.y) - from.y;
    return dx <= kShortStroke && -dx <= kShortStroke && dy <= kShortStroke && -dy <= kShortStroke;
}

// False when there is no memory to hold the stroke.
bool KivGdiStrokes::hold(const POINT& from, const POINT& to) {
    if (m_masking && shortStroke(from, to) && m_mask.line(from.x, from.y, to.x, to.y)) {
        if (m_runsOnly) return true;  // its pixels are in the mask
        if (!append(m_held, from, to)) return false;
        if (m_held.size() / 2 >= kHeldStrokes) sendHeld(false);
        return true;
    }
    if (!append(m_batch, from, to)) return false;
    if (m_batch.size() / 2 == kBatchStrokes) {
        sendPolylines(m_batch.data(), kBatchStrokes);
        m_batch.clear();
        m_batchesSent += 1;
        if (!m_maskTried && m_batchesSent * kBatchStrokes >= kFirstStrokes) startMask();
    }
    return true;
}

// The held strokes go to GDI: when the mask's runs are fewer, not at all, and from then on the
// drawing's short strokes only go into the mask; otherwise as they are, and the mask, which did not
// pay for itself, is given up for the rest of the drawing. When the drawing ends the mask's runs are
// sent: each run a two-point horizontal polyline of the same pen, up to, not including, its end.
void KivGdiStrokes::sendHeld(bool drawingEnds) {
    const std::size_t strokes = m_held.size() / 2;
    if (m_masking && !m_runsOnly && strokes > 0) {
        if (m_mask.runCount() < static_cast<long long>(strokes)) m_runsOnly = true;
        else m_masking = false;
    }
    if (!m_runsOnly) sendPolylines(m_held.data(), strokes);
    m_held.clear();
    if (!drawingEnds) return;
    sendPolylines(m_batch.data(), m_batch.size() / 2);
    m_batch.clear();
    if (m_runsOnly) {
        POINT runs[2 * kBatchStrokes];
        std::size_t count = 0;
        m_mask.forEachRun([&](int y, int from, int to) {
            runs[2 * count] = POINT{from, y};
            runs[2 * count + 1] = POINT{to, y};
            if (++count == kBatchStrokes) {
                sendPolylines(runs, count);
                count = 0;
            }
        });
        sendPolylines(runs, count);
    }
    m_masking = m_runsOnly = m_maskTried = false;
    m_batchesSent = 0;
}

void KivGdiStrokes::lineTo(int x, int y) {
    const LONG fromX = m_position.x, fromY = m_position.y;
    m_position = POINT{x, y};
    // Once a drawing's short strokes go only into the mask, most of its strokes end here: what
    // hold() would do with them, without the checks that led there (a drawing's rules and pen stay
    // as they are until it is flushed).
    if (m_runsOnly && shortStroke(POINT{fromX, fromY}, m_position) && m_mask.line(fromX, fromY, x, y)) {
        m_positionPending = true;
        return;
    }
    learn();
    if (!visible(POINT{fromX, fromY}, m_position)) {  // nothing of it would show: only its end matters
        m_positionPending = true;
        return;
    }
    if (batching()) {
        if (hold(POINT{fromX, fromY}, m_position)) {
            m_positionPending = true;
            return;
        }
        sendHeld(false);  // no memory to hold it: it goes alone
    }
    if (m_positionPending) {
        MoveToEx(m_dc, fromX, fromY, nullptr);
        ++m_calls;
    }
    LineTo(m_dc, x, y);
    ++m_calls;
    m_positionPending = false;
}

void KivGdiStrokes::flush() {
    sendHeld(true);
    if (m_positionPending) {
        MoveToEx(m_dc, m_position.x, m_position.y, nullptr);
        ++m_calls;
    }
    m_positionPending = false;
}

// ---------------------------------------------------------------- IKivDC

namespace {
HGDIOBJ stockObject(KivStockObject s) {
    switch (s) {
    case KivStockObject::BlackBrush: return GetStockObject(BLACK_BRUSH);
    case KivStockObject::WhiteBrush: return GetStockObject(WHITE_BRUSH);
    case KivStockObject::DefaultGuiFont: return GetStockObject(DEFAULT_GUI_FONT);
    }
    return nullptr;
}

// A brush for one call: a stock brush is borrowed, a solid one owned.
class CallBrush {
public:
    explicit CallBrush(const KivBrush& b)
        : m_owned(b.isStock ? nullptr : CreateSolidBrush(b.color)),
          m_brush(b.isStock ? static_cast<HBRUSH>(stockObject(b.stock)) : m_owned.get()) {}
    HBRUSH get() const { return m_brush; }

private:
    KivGdiObject<HBRUSH> m_owned;
    HBRUSH m_brush;
};
}  // namespace

KivGdiDC::~KivGdiDC() {
    m_strokes.flush();
    restore(m_pens);
    restore(m_brushes);
    restore(m_fonts);
}

void KivGdiDC::select(std::vector<Selection>& stack, KivGdiObject<HGDIOBJ> created, HGDIOBJ object, int penStyle,
                      int penWidth) {
    stack.reserve(stack.size() + 1);  // may throw: nothing is selected yet, and `created` deletes itself
    stack.push_back(Selection{std::move(created), KivSelectObject(m_dc, object), penStyle, penWidth});  // reserved: no throw
}

void KivGdiDC::restore(std::vector<Selection>& stack) {
    while (!stack.empty()) stack.pop_back();
}

KivColor KivGdiDC::getSysColor(int index) { return GetSysColor(index); }
KivColor KivGdiDC::setTextColor(KivColor color) { return SetTextColor(m_dc, color); }
KivColor KivGdiDC::setBkColor(KivColor color) { return SetBkColor(m_dc, color); }
KivColor KivGdiDC::getBkColor() { return GetBkColor(m_dc); }
int KivGdiDC::setBkMode(int mode) { return SetBkMode(m_dc, mode); }
unsigned KivGdiDC::setTextAlign(unsigned align) { return SetTextAlign(m_dc, align); }

void KivGdiDC::fillRect(const KivRect& rect, const KivBrush& brush) {
    m_strokes.flush();
    const RECT r = KivToRECT(rect);
    CallBrush b(brush);
    FillRect(m_dc, &r, b.get());
}

void KivGdiDC::frameRect(const KivRect& rect, const KivBrush& brush) {
    m_strokes.flush();
    const RECT r = KivToRECT(rect);
    CallBrush b(brush);
    FrameRect(m_dc, &r, b.get());
}

void KivGdiDC::drawFocusRect(const KivRect& rect) {
    m_strokes.flush();
    const RECT r = KivToRECT(rect);
    DrawFocusRect(m_dc, &r);
}

int KivGdiDC::drawText(const KivString& text, const KivRect& rect, unsigned format) {
    m_strokes.flush();
    RECT r = KivToRECT(rect);
    return DrawTextW(m_dc, text.getStringW(), -1, &r, format);
}

bool KivGdiDC::textOut(int x, int y, const KivString& text) {
    m_strokes.flush();
    return TextOutW(m_dc, x, y, text.getStringW(), text.length()) != FALSE;
}

KivSize KivGdiDC::getTextExtent(const KivString& text) {
    SIZE size{};
    GetTextExtentPoint32W(m_dc, text.getStringW(), text.length(), &size);
    return KivSize{size.cx, size.cy};
}

void KivGdiDC::selectPen(const KivPen& pen) {
    m_strokes.flush();
    KivGdiObject<HGDIOBJ> created(CreatePen(pen.style, pen.width, pen.color));  // owned until restorePen
    const HGDIOBJ object = created.get();
    select(m_pens, std::move(created), object, pen.style, pen.width);
    m_strokes.setPen(pen.style, pen.width);
}
void KivGdiDC::restorePen() {
    m_strokes.flush();
    if (!m_pens.empty()) m_pens.pop_back();
    if (m_pens.empty()) m_strokes.forgetPen();
    else m_strokes.setPen(m_pens.back().penStyle, m_pens.back().penWidth);
}
void KivGdiDC::selectBrush(const KivBrush& brush) {
    KivGdiObject<HGDIOBJ> created(brush.isStock ? nullptr : CreateSolidBrush(brush.color));  // owned until restoreBrush
    const HGDIOBJ object = brush.isStock ? stockObject(brush.stock) : created.get();
    select(m_brushes, std::move(created), object);
}
void KivGdiDC::restoreBrush() {
    if (!m_brushes.empty()) m_brushes.pop_back();
}
void KivGdiDC::selectStockFont(KivStockObject font) { select(m_fonts, KivGdiObject<HGDIOBJ>(), stockObject(font)); }
void KivGdiDC::restoreFont() {
    if (!m_fonts.empty()) m_fonts.pop_back();
}
bool KivGdiDC::strokeRules(KivStrokeRules& rules) { return m_strokes.rules(rules); }
void KivGdiDC::moveTo(int x, int y) { m_strokes.moveTo(x, y); }
void KivGdiDC::lineTo(int x, int y) { m_strokes.lineTo(x, y); }
void KivGdiDC::ellipse(const KivRect& r) {
    m_strokes.flush();
    Ellipse(m_dc, r.left, r.top, r.right, r.bottom);
}

void KivGdiDC::bitBltFromCompatibleBitmap(int bitmapWidth, int bitmapHeight, const KivRect& dest, unsigned long rop) {
    m_strokes.flush();
    KivMemoryDC memory(m_dc);
    KivGdiObject<HBITMAP> bitmap(CreateCompatibleBitmap(m_dc, bitmapWidth, bitmapHeight));
    KivSelectObject selected(memory.get(), bitmap.get());
    BitBlt(m_dc, dest.left, dest.top, dest.width(), dest.height(), memory.get(), 0, 0, rop);
}
