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
void KivGdiDC::moveToLineTo(int x0, int y0, int x1, int y1) {
    m_strokes.moveTo(x0, y0);
    m_strokes.lineTo(x1, y1);
}
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
