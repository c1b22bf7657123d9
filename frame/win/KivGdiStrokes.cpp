// The MoveTo/LineTo strokes of one drawing as GDI receives them. Win32 side.
#include "KivGdiStrokes.h"

#include <algorithm>
#include <climits>
#include <new>

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

void KivGdiStrokes::moveToNow() {
    MoveToEx(m_dc, m_position.x, m_position.y, nullptr);
    ++m_calls;
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

// False when there is no memory to hold the stroke. (Once only the mask takes short strokes,
// lineTo() puts the commonest ones there itself.)
bool KivGdiStrokes::hold(const POINT& from, const POINT& to) {
    if (m_masking && shortStroke(from, to) && m_mask.line(from.x, from.y, to.x, to.y)) {
        if (m_runsOnly) return true;  // only the mask's runs will be sent
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

void KivGdiStrokes::lineToFrom(LONG fromX, LONG fromY) {
    const LONG x = m_position.x, y = m_position.y;
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
    if (m_positionPending) moveToNow();
    m_positionPending = false;
}

