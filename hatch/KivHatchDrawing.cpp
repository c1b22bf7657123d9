// Drawing the line families of a hatch pattern. Portable.
#include "KivHatchDrawing.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <new>
#include <vector>

#include "KivHatchPattern.h"
#include "KivHatchRepeats.h"

namespace {

int device(double v) {
    if (v > -kHatchDeviceLimit && v < kHatchDeviceLimit) return static_cast<int>(v);  // truncated toward zero
    if (std::isnan(v)) return 0;
    return v > 0.0 ? static_cast<int>(kHatchDeviceLimit) : -static_cast<int>(kHatchDeviceLimit);
}

struct Point {
    double x;
    double y;
};

struct DevicePoint {
    int x;
    int y;
};

DevicePoint devicePoint(double x, double y) { return DevicePoint{device(x), device(y)}; }

// A direction of walking: a step of length d moves (x, y) by (d cos phi, d sin phi), y down.
struct Direction {
    double cosPhi;
    double sinPhi;
};

Direction direction(double phi) { return Direction{std::cos(phi), std::sin(phi)}; }

// A dash entry scaled to pixels, d, makes one step of a walk: a dash (d > 0.05) draws d pixels, a
// gap (d < -0.05) moves -d, anything between is a dot, a one-pixel stroke. The step is kept as one
// number: the length it walks, positive when it draws and negative when it only moves.
double stepOf(double d) { return d > 0.05 || d < -0.05 ? d : 1.0; }

// The next entry of the dash list: forward from the first, backward from the last.
int nextEntry(int entry, int n, bool backward) {
    if (backward) return entry == 0 ? n - 1 : entry - 1;
    return entry + 1 == n ? 0 : entry + 1;
}

// Where the lines of a side stand: line k's base point is the origin moved by a = k x deltaX x S
// along `along` and by p = k x deltaY x S along `across`; the D1 form moves against `along`.
struct LineFrame {
    double alongX, alongY, acrossX, acrossY;
    bool againstAlong;

    Point basePoint(double Xo, double Yo, double a, double p) const {
        if (againstAlong) return Point{Xo - a * alongX + p * acrossX, Yo - a * alongY + p * acrossY};
        return Point{Xo + a * alongX + p * acrossX, Yo + a * alongY + p * acrossY};
    }
};

LineFrame frame(double alongAngle, double acrossAngle, bool againstAlong = false) {
    return LineFrame{std::cos(alongAngle), std::sin(alongAngle), std::cos(acrossAngle), std::sin(acrossAngle), againstAlong};
}

// One step of a walk in one direction: the length it walks, how it moves the point, and whether it
// draws (a dash or a dot) or only moves (a gap). The moves are the products the walk would work out
// at each step, worked out once.
struct Move {
    double length;
    double dx;
    double dy;
    bool draws;
};

// The walks of one paint: the device context, the family's steps, the stroke budget and, on a
// device with stroke rules, what has not been sent to it yet.
class Painter {
public:
    Painter(IKivDC& dc, const KivHatchStyle& style, KivArray<double>& dashes, long long budget)
        : m_dc(dc), m_dashes(dashes), m_scale(style.zoomFactor * 3.0 * style.unitFactor), m_budget(budget) {
        KivStrokeRules rules;
        m_boxed = dc.strokeRules(rules);
        m_box = rules.box;
        m_skipRepeats = m_boxed && rules.repeatsChangeNothing;
        m_skipEmpty = m_boxed && rules.emptyStrokesChangeNothing;
    }

    bool spent() const { return m_paint.strokes >= m_budget; }
    // The drawing stops here because the budget is spent.
    void stop() { m_paint.guardStopped = true; }
    void zeroSpacing() { ++m_paint.zeroSpacingSides; }
    KivHatchPaint result() const { return m_paint; }

    // The family whose dash list has just been decoded into the scratch list: its steps, and
    // whether every one of them has a finite length.
    void startFamily() {
        m_entries = m_dashes.getLogicalLength();
        for (int d = 0; d < 2; ++d) {
            m_walked[d].clear();
            m_moves[d].ready = false;
            m_record[d].forget();
        }
        m_stepsFinite = true;
        m_longestStep = 0.0;
        for (int e = 0; e < m_entries; ++e) {
            const double length = std::fabs(stepAt(e));
            if (!std::isfinite(length)) m_stepsFinite = false;
            m_longestStep = std::max(m_longestStep, length);
        }
    }

    // The device's current position where the strokes left it, once nothing more is drawn with
    // this family's steps: the end of a walk whose last steps were counted and not walked is worked
    // out now, and a position a raster device was not told is sent as a MoveTo.
    void settle() {
        if (m_tail.steps > 0) {
            double x = m_tail.from.x, y = m_tail.from.y;
            int entry = m_tail.entry;
            for (long long i = 0; i < m_tail.steps; ++i) {
                const double length = std::fabs(stepAt(entry));
                entry = nextEntry(entry, m_entries, m_tail.backward);
                x += length * m_tail.way.cosPhi;
                y += length * m_tail.way.sinPhi;
            }
            m_at = devicePoint(x, y);
            m_unsent = true;
        }
        m_tail.steps = 0;
        if (m_unsent) m_dc.moveTo(m_at.x, m_at.y);
        m_unsent = false;
    }

    // The family has steps to walk: without them (only when the scratch list could not be
    // allocated) none of its walks draws anything.
    bool hasSteps() const { return m_entries > 0; }
    void skipWalks(int walks) { m_paint.walksSkipped += walks; }

    // A half-line from `start` in direction `way` until the walked length passes `limit` (a finite
    // number); the backward walk takes the dash list from its end.
    void walk(Point start, Direction way, double limit, bool backward) {
        if (spent()) {
            stop();
            return;
        }
        m_at = devicePoint(start.x, start.y);
        m_dc.moveTo(m_at.x, m_at.y);
        ++m_paint.strokes;
        m_unsent = false;
        m_tail.steps = 0;
        const Moves& moves = movesFor(way, backward);
        if (m_boxed) runBoxed(start, way, moves, limit, backward);
        else runAll(start, way, moves, limit, backward);
    }

private:
    // The steps of one direction, worked out for a walk's direction when its first walk comes.
    struct Moves {
        bool ready = false;
        Direction way{0.0, 0.0};
        std::vector<Move> table;  // in the order the walk takes them; empty without memory
    };

    // The step of entry e: its length, positive when it draws and negative when it only moves.
    double stepAt(int entry) const { return stepOf(m_scale * m_dashes[entry]); }

    Move moveAt(int entry, Direction way) const {
        const double s = stepAt(entry);
        const double length = s > 0.0 ? s : -s;
        return Move{length, length * way.cosPhi, length * way.sinPhi, s > 0.0};
    }

    const Moves& movesFor(Direction way, bool backward) {
        Moves& moves = m_moves[backward ? 1 : 0];
        if (moves.ready && moves.way.cosPhi == way.cosPhi && moves.way.sinPhi == way.sinPhi) return moves;
        moves.ready = true;
        moves.way = way;
        moves.table.clear();
        try {
            moves.table.reserve(static_cast<std::size_t>(m_entries));
            for (int i = 0; i < m_entries; ++i) moves.table.push_back(moveAt(backward ? m_entries - 1 - i : i, way));
        } catch (const std::bad_alloc&) {
            moves.table.clear();  // each step is then worked out as it is taken: the same numbers
        }
        return moves;
    }

    // The walk's steps after its first MoveTo, every one sent: for a device without stroke rules.
    void runAll(Point start, Direction way, const Moves& moves, double limit, bool backward) {
        const int n = m_entries;
        double x = start.x, y = start.y, walked = 0.0;
        for (int i = 0;; i = i + 1 == n ? 0 : i + 1) {
            if (spent()) {
                stop();
                return;
            }
            const Move step = moves.table.empty() ? moveAt(backward ? n - 1 - i : i, way) : moves.table[static_cast<std::size_t>(i)];
            walked += step.length;
            x += step.dx;
            y += step.dy;
            ++m_paint.strokes;
            if (step.draws) m_dc.lineTo(device(x), device(y));
            else m_dc.moveTo(device(x), device(y));
            if (walked > limit) return;  // the step that passes the limit is drawn in full
        }
    }

    // The walk's steps after its first MoveTo on a raster device: a stroke is sent only when it can
    // show and is not a repeat, and the stepping ends once the walk is beyond an edge of the box it
    // moves away from (when its steps and its start are finite, each coordinate moves one way only,
    // so it never comes back); the steps left are counted. Which edges of the box a point lies
    // beyond is its code (left 1, right 2, top 4, bottom 8): a stroke whose two ends share an edge
    // cannot show. Everything the loop reads is held in locals, which no call to the device can
    // change.
    void runBoxed(Point start, Direction way, const Moves& moves, double limit, bool backward) {
        const bool finite = m_stepsFinite && std::isfinite(start.x) && std::isfinite(start.y);
        // A walk that cannot leave GDI's range needs no clamping: it ends within its limit plus one
        // step of its start (and each step moves no further than its length, give or take a rounding).
        const double reach = std::max(std::fabs(start.x), std::fabs(start.y)) + 2.0 * (limit + m_longestStep) + 16.0;
        const bool inRange = finite && reach < kHatchDeviceLimit;
        if (m_entries == 1 && !moves.table.empty()) {  // a plain line, or dots: every step alike
            if (inRange) walkBoxedKept<true, true>(start, way, moves, limit, backward, finite);
            else walkBoxedKept<false, true>(start, way, moves, limit, backward, finite);
        } else if (inRange) {
            walkBoxedKept<true, false>(start, way, moves, limit, backward, finite);
        } else {
            walkBoxedKept<false, false>(start, way, moves, limit, backward, finite);
        }
    }

    // The walk with its record's work left out of every step while the record rests.
    template <bool kInRange, bool kOneEntry>
    void walkBoxedKept(Point start, Direction way, const Moves& moves, double limit, bool backward, bool finite) {
        if (m_record[backward ? 1 : 0].keeping()) walkBoxed<kInRange, kOneEntry, true>(start, way, moves, limit, backward, finite);
        else walkBoxed<kInRange, kOneEntry, false>(start, way, moves, limit, backward, finite);
    }

    template <bool kInRange, bool kOneEntry, bool kKeep>
    void walkBoxed(Point start, Direction way, const Moves& moves, double limit, bool backward, bool finite) {
        const int n = m_entries;
        const Move* table = moves.table.empty() ? nullptr : moves.table.data();
        const Move only = kOneEntry ? table[0] : Move{};
        const bool skipRepeats = m_skipRepeats, skipEmpty = m_skipEmpty;
        const int left = m_box.left, right = m_box.right, top = m_box.top, bottom = m_box.bottom;
        const unsigned width = right > left ? static_cast<unsigned>(right) - static_cast<unsigned>(left) : 0u;
        const unsigned height = bottom > top ? static_cast<unsigned>(bottom) - static_cast<unsigned>(top) : 0u;
        // Which edges of the box a point lies beyond (left 1, right 2, top 4, bottom 8); a point
        // inside the box has none.
        const auto codeOf = [=](int px, int py) {
            if (static_cast<unsigned>(px) - static_cast<unsigned>(left) < width &&
                static_cast<unsigned>(py) - static_cast<unsigned>(top) < height)
                return 0u;
            return static_cast<unsigned>(px < left) | (static_cast<unsigned>(px >= right) << 1) |
                   (static_cast<unsigned>(py < top) << 2) | (static_cast<unsigned>(py >= bottom) << 3);
        };
        const auto toDevice = [](double v) { return kInRange ? static_cast<int>(v) : device(v); };
        unsigned awayFrom = 0;  // the edges the walk moves away from
        if (finite) {
            awayFrom = static_cast<unsigned>(way.cosPhi <= 0.0) | (static_cast<unsigned>(way.cosPhi >= 0.0) << 1) |
                       (static_cast<unsigned>(way.sinPhi <= 0.0) << 2) | (static_cast<unsigned>(way.sinPhi >= 0.0) << 3);
        }
        KivWalkRecord& record = m_record[backward ? 1 : 0];
        record.startWalk();
        std::size_t places = 0, previousLength = 0;
        std::uint64_t* current = record.places(0, places);
        const std::uint64_t* previous = record.previous(previousLength);

        double x = start.x, y = start.y, walked = 0.0;
        int ax = m_at.x, ay = m_at.y;
        unsigned codeA = codeOf(ax, ay);
        bool unsent = false;
        bool sameA = false;  // the walk's point is the previous walk's after as many steps
        if (places > 0) {
            current[0] = KivWalkRecord::pack(ax, ay);
            sameA = previousLength > 0 && previous[0] == current[0];
        }
        const long long before = m_paint.strokes;
        const std::size_t allowed = static_cast<std::size_t>(m_budget - before);  // the steps the budget leaves
        int i = 0;  // the position of the next step in the walk's order of entries
        std::size_t done = 0, matches = 0;
        // While the walk comes towards the box from beyond one of its edges, none of its strokes
        // can show: both ends of each lie beyond that edge. Those steps are taken by a loop that
        // looks at one coordinate only, an edge at a time (a walk may come from beyond two). While
        // the record is kept, only the walks of a plain line or of dots take that loop, keeping their
        // points as far as there are places: in dashed families the full loop measured faster then.
        bool ended = false;  // the walk passed its limit there
        for (unsigned towards = codeA & ~awayFrom;
             kInRange && (!kKeep || kOneEntry) && table != nullptr && (codeA & awayFrom) == 0 && towards != 0;
             towards = codeA & ~awayFrom) {
            const std::size_t was = done;
            const std::size_t most = kKeep ? std::min(allowed, places > 0 ? places - 1 : 0) : allowed;
            Kept<kKeep> kept{current, previous, previousLength, matches, sameA};
            if ((towards & 1u) != 0) ended = approach<true, true>(table, n, left, limit, most, x, y, walked, i, done, kept);
            else if ((towards & 2u) != 0) ended = approach<true, false>(table, n, right, limit, most, x, y, walked, i, done, kept);
            else if ((towards & 4u) != 0) ended = approach<false, true>(table, n, top, limit, most, x, y, walked, i, done, kept);
            else ended = approach<false, false>(table, n, bottom, limit, most, x, y, walked, i, done, kept);
            if (done == was) break;
            ax = toDevice(x);
            ay = toDevice(y);
            codeA = codeOf(ax, ay);
            unsent = true;
            if (ended) break;
        }
        for (; !ended; ++done) {
            if ((codeA & awayFrom) != 0) {  // it never comes back: the rest is counted
                record.recorded(std::min(done + 1, places), done, matches);
                m_paint.strokes = before + static_cast<long long>(done);
                m_at = DevicePoint{ax, ay};
                m_unsent = unsent;
                countTheRest(Point{x, y}, way, backward ? n - 1 - i : i, static_cast<long long>(done), walked, limit, backward);
                return;
            }
            if (done >= allowed) {
                stop();
                break;
            }
            Move step = only;
            if (!kOneEntry) {
                step = table != nullptr ? table[i] : moveAt(backward ? n - 1 - i : i, way);
                i = i + 1 == n ? 0 : i + 1;
            }
            walked += step.length;
            x += step.dx;
            y += step.dy;
            const int bx = toDevice(x), by = toDevice(y);
            const unsigned codeB = codeOf(bx, by);
            const std::size_t k = done + 1;
            if (kKeep && k == places) current = record.places(k, places);
            bool sameB = false;
            if (kKeep && k < places) {
                const std::uint64_t point = KivWalkRecord::pack(bx, by);
                current[k] = point;
                sameB = k < previousLength && previous[k] == point;
                matches += sameB ? 1 : 0;
            }
            if (step.draws && (codeA & codeB) == 0 && !(skipEmpty && ax == bx && ay == by) &&
                !(skipRepeats && ((sameA && sameB) || m_recent.drawnBefore(ax, ay, bx, by)))) {
                if (unsent) m_dc.moveToLineTo(ax, ay, bx, by);
                else m_dc.lineTo(bx, by);
                unsent = false;
            } else {
                unsent = true;  // a gap, a stroke beyond the box, an empty one or a repeat: only where it ends matters
            }
            ax = bx;
            ay = by;
            codeA = codeB;
            sameA = sameB;
            if (walked > limit) {  // the step that passes the limit is drawn in full
                ++done;
                break;
            }
        }
        record.recorded(std::min(done + 1, places), done, matches);
        m_paint.strokes = before + static_cast<long long>(done);
        m_at = DevicePoint{ax, ay};
        m_unsent = unsent;
    }

    // Where a walk keeps its points, when kKeep: its places, the previous walk's points, the
    // matches so far, and whether the last point is the previous walk's.
    template <bool kKeep>
    struct Kept {
        std::uint64_t* current;
        const std::uint64_t* previous;
        std::size_t previousLength;
        std::size_t& matches;
        bool& same;
    };

    // The steps of a walk in range, from step `done` up to step `most`, while each ends beyond
    // `edge` (left or top when kLess, else right or bottom; of x when kX, else of y); the step after
    // them is not taken. True when the walk passed its limit there, its last step counted.
    template <bool kX, bool kLess, bool kKeep>
    static bool approach(const Move* table, int n, int edge, double limit, std::size_t most, double& x, double& y,
                         double& walked, int& i, std::size_t& done, Kept<kKeep>& kept) {
        while (done < most) {
            const Move& step = table[i];
            const double nx = x + step.dx, ny = y + step.dy;
            const int v = static_cast<int>(kX ? nx : ny);
            if (kLess ? v >= edge : v < edge) return false;
            x = nx;
            y = ny;
            walked += step.length;
            i = i + 1 == n ? 0 : i + 1;
            ++done;
            if (kKeep) {
                const std::uint64_t point = KivWalkRecord::pack(static_cast<int>(nx), static_cast<int>(ny));
                kept.current[done] = point;
                kept.same = done < kept.previousLength && kept.previous[done] == point;
                kept.matches += kept.same ? 1 : 0;
            }
            if (walked > limit) return true;  // the step that passes the limit is taken in full
        }
        return false;
    }

    // The steps of a walk that can no longer show, from `from` after `done` steps: counted (the
    // budget as if each were sent), the position where they end left for settle().
    void countTheRest(Point from, Direction way, int entry, long long done, double walked, double limit, bool backward) {
        const long long most = m_budget - m_paint.strokes;
        const long long left = stepsToTheEnd(backward, done, walked, limit, most);
        const long long taken = std::min(left, most);
        m_paint.strokes += taken;
        m_tail = Tail{from, way, entry, taken, backward};
        if (left > most) stop();
    }

    // The number of steps from step `done` (walked so far: `walked`) to the end of a walk with this
    // limit, the first step whose walked length passes it; `most` + 1 when that is more than `most`.
    // Every walk of the family in one direction walks the same lengths from 0, so they are kept once
    // (up to kKeptLengths of them) and looked up; beyond them they are added up here.
    long long stepsToTheEnd(bool backward, long long done, double walked, double limit, long long most) {
        std::vector<double>& kept = m_walked[backward ? 1 : 0];
        try {
            if (kept.empty()) kept.push_back(0.0);
            while (kept.back() <= limit && kept.size() < kKeptLengths) {
                const long long m = static_cast<long long>(kept.size()) - 1;  // the steps behind the last kept length
                kept.push_back(kept.back() + std::fabs(stepAt(entryAfter(m, backward))));
            }
        } catch (const std::bad_alloc&) {
            // The lengths kept so far serve; the rest are added up below.
        }
        const long long keptSteps = static_cast<long long>(kept.size()) - 1;
        if (done < keptSteps && kept.back() > limit) {
            // The first kept length above the limit: very often the previous walk's or the one after
            // it (the limits of neighbouring lines differ little), else searched for.
            std::size_t& end = m_firstAbove[backward ? 1 : 0];
            const bool atEnd = end < kept.size() && kept[end] > limit && (end == 0 || kept[end - 1] <= limit);
            if (!atEnd) {
                if (end + 1 < kept.size() && kept[end] <= limit && kept[end + 1] > limit) ++end;
                else end = static_cast<std::size_t>(std::upper_bound(kept.begin(), kept.end(), limit) - kept.begin());
            }
            const long long m = std::max(static_cast<long long>(end), done + 1);  // the lengths only grow
            return std::min(m - done, most + 1);
        }
        long long m = done;
        double sum = walked;
        if (done < keptSteps) {
            m = keptSteps;
            sum = kept.back();
        }
        int entry = entryAfter(m, backward);
        while (m - done <= most) {
            sum += std::fabs(stepAt(entry));
            entry = nextEntry(entry, m_entries, backward);
            ++m;
            if (sum > limit) return m - done;
        }
        return most + 1;
    }

    // The entry a walk takes after `steps` steps.
    int entryAfter(long long steps, bool backward) const {
        const int i = static_cast<int>(steps % m_entries);
        return backward ? m_entries - 1 - i : i;
    }

    // The last steps of a walk, counted and not walked: from `from`, taking `entry` first.
    struct Tail {
        Point from{0.0, 0.0};
        Direction way{1.0, 0.0};
        int entry = 0;
        long long steps = 0;
        bool backward = false;
    };

    static constexpr std::size_t kKeptLengths = 1 << 16;

    IKivDC& m_dc;
    KivArray<double>& m_dashes;
    const double m_scale;  // pixels per pattern unit: zoom x 3 x unit
    long long m_budget;
    KivHatchPaint m_paint;
    int m_entries = 0;
    bool m_stepsFinite = true;
    double m_longestStep = 0.0;
    Moves m_moves[2];                      // forward and backward
    KivWalkRecord m_record[2];             // forward and backward
    std::vector<double> m_walked[2];       // forward and backward: the walked length after each number of steps
    std::size_t m_firstAbove[2] = {0, 0};  // in m_walked: where the last walk's limit was passed
    bool m_boxed = false;  // the device answered stroke rules
    KivRect m_box;
    bool m_skipRepeats = false;
    bool m_skipEmpty = false;
    KivRecentStrokes m_recent;
    DevicePoint m_at{0, 0};  // where the last stroke left the position
    bool m_unsent = false;   // and the device has not been told
    Tail m_tail;
};

}  // namespace

double KivHatchNormalisedAngle(double angle) {
    double theta = angle;
    if (!std::isfinite(theta)) return theta;  // no band holds it: nothing is drawn
    // Whole turns are added one at a time, as the earlier module did; an angle beyond a million
    // degrees below zero (never in a real file) gets its turns at once, as the exact remainder of a
    // division by 360 (adding a computed number of turns is rounded at such magnitudes and can land
    // far from the circle).
    if (theta < -1.0e6) theta = std::fmod(theta, 360.0);  // in (-360, 0]
    while (theta < -0.05) theta += 360.0;
    return theta;
}

KivHatchBand KivHatchBandOf(double t) {
    if (t > -0.05 && t < 0.05) return KivHatchBand::Near0;
    if (t > 179.95 && t < 180.05) return KivHatchBand::Near180;
    if (t > 89.95 && t < 90.05) return KivHatchBand::Near90;
    if (t > 269.95 && t < 270.05) return KivHatchBand::Near270;
    if (t > 0.05 && t < 89.95) return KivHatchBand::From0To90;
    if (t > 180.05 && t < 269.95) return KivHatchBand::From180To270;
    if (t > 90.05 && t < 179.95) return KivHatchBand::From90To180;
    if (t > 270.05 && t < 359.95) return KivHatchBand::From270To360;
    return KivHatchBand::None;
}

long long KivHatchStrokeBudget(const KivRect& rect) {
    const double area = std::fabs((static_cast<double>(rect.right) - rect.left) * (static_cast<double>(rect.bottom) - rect.top));
    const double budget = static_cast<double>(kMaxHatchStrokesPerPixel) * area;
    if (!(budget > static_cast<double>(kMinHatchStrokeBudget))) return kMinHatchStrokeBudget;
    return budget > 1e15 ? 1000000000000000LL : static_cast<long long>(budget);
}

KivHatchPaint DrawHatch(IKivDC& dc, const KivRect& rect, const KivArray<HatchLineFamily>& families,
                        KivArray<double>& dashes, const KivHatchStyle& style, long long strokeBudget) {
    // 1. The pen.
    dc.selectPen(KivPen{kiv::kPsSolid, 1, style.foreColor});
    Painter painter(dc, style, dashes, strokeBudget < 0 ? KivHatchStrokeBudget(rect) : strokeBudget);
    const double W = static_cast<double>(rect.right) - static_cast<double>(rect.left);
    const double H = static_cast<double>(rect.bottom) - static_cast<double>(rect.top);
    const double S = style.zoomFactor * 3.0 * style.unitFactor;
    const double PI = families.getLogicalLength() > 0 ? std::acos(-1.0) : 0.0;

    // 2. Each family in list order.
    for (int index = 0; index < families.getLogicalLength(); ++index) {
        if (painter.spent()) {
            painter.stop();
            break;
        }
        const HatchLineFamily family = families[index];
        DecodeDashes(family.dashes, dashes);
        painter.startFamily();
        if (!painter.hasSteps()) continue;
        const double theta = KivHatchNormalisedAngle(family.angle);
        const double r = (360.0 - theta) * PI / 180.0;
        const double c = std::cos(r), s = std::sin(r);
        const double Xo = S * family.originX;
        const double Yo = H - S * family.originY;

        // One side of lines: line k while |k x deltaY x S| is below the extent, each drawn by its
        // two walks. A spacing of 0 would stand every further line on line 0 for ever: the side
        // ends after line 0.
        auto side = [&](double extent, const LineFrame& lines, double L, Direction forward, Direction backward,
                        bool backwardFirst) {
            for (long long k = 0; std::fabs(static_cast<double>(k) * family.deltaY * S) < extent; ++k) {
                if (painter.spent()) {
                    painter.stop();
                    return;
                }
                const double a = static_cast<double>(k) * family.deltaX * S;
                const double p = static_cast<double>(k) * family.deltaY * S;
                const Point P = lines.basePoint(Xo, Yo, a, p);
                const double limit = std::fabs(a) + L;
                if (!std::isfinite(limit)) {
                    // Neither walk would ever end, nor would any later line's: |k x deltaX x S|
                    // only grows with k. The side ends here.
                    painter.skipWalks(2);
                    return;
                }
                if (backwardFirst) {
                    painter.walk(P, backward, limit, true);
                    painter.walk(P, forward, limit, false);
                } else {
                    painter.walk(P, forward, limit, false);
                    painter.walk(P, backward, limit, true);
                }
                if (family.deltaY * S == 0.0) {
                    painter.zeroSpacing();
                    return;
                }
            }
        };

        // The base-point forms: L1 left of line 0, R1 right of it, D1 with the shift negated; the
        // axis bands lay their lines out in a fixed frame.
        const LineFrame L1 = frame(-theta * PI / 180.0, (-90.0 - theta) * PI / 180.0);
        const LineFrame R1 = frame((180.0 - theta) * PI / 180.0, (90.0 - theta) * PI / 180.0);
        const Direction generalForward = direction(-theta * PI / 180.0);
        const Direction generalBackward = direction((-180.0 - theta) * PI / 180.0);
        switch (KivHatchBandOf(theta)) {
        case KivHatchBand::Near0: {  // cos and sin of the degree value itself, as the earlier module had it
            const double L = std::fabs(W * std::cos(theta)) + std::fabs(H * std::sin(theta));
            side(std::fabs(H * std::cos(theta)) + 1.0, frame(0.0, -PI / 2), L, direction(0.0), direction(PI), false);
            break;
        }
        case KivHatchBand::Near180: {
            const double L = std::fabs(W * c) + std::fabs(H * s);
            side(std::fabs(H * c) + 1.0, frame(0.0, -PI / 2), L, direction(PI), direction(0.0), false);
            break;
        }
        case KivHatchBand::Near90:
        case KivHatchBand::Near270: {
            const double L = std::fabs(W * c) + std::fabs(H * s);
            side(std::fabs(W * s) + 1.0, frame(PI * theta / 180.0, 0.0), L, direction(-theta * PI / 180.0),
                 direction(PI * theta / 180.0), false);
            break;
        }
        case KivHatchBand::From0To90: {
            const double L = std::fabs(W * c) + std::fabs(H * s);
            side(std::fabs(H * c) + 1.0, L1, L, generalForward, generalBackward, false);
            side(std::fabs(W * s) + 1.0, R1, L, generalForward, generalBackward, false);  // line 0 again
            break;
        }
        case KivHatchBand::From180To270: {
            const double L = std::fabs(W * c) + std::fabs(H * s);
            side(std::fabs(H * c) + 1.0, R1, L, generalForward, generalBackward, false);
            side(std::fabs(W * s) + 1.0, L1, L, generalForward, generalBackward, false);
            break;
        }
        case KivHatchBand::From90To180: {
            const double L = std::fabs(W * s) + std::fabs(H * c);
            side(L + 1.0, R1, L, generalForward, generalBackward, false);
            break;
        }
        case KivHatchBand::From270To360: {  // the backward walk first
            const double L = std::fabs(W * s) + std::fabs(H * c);
            const LineFrame D1 = frame((180.0 - theta) * PI / 180.0, (270.0 - theta) * PI / 180.0, true);
            side(L + 1.0, D1, L, generalForward, generalBackward, true);
            break;
        }
        case KivHatchBand::None:  // on a band bound, or 359.95 and above: nothing
            break;
        }
        painter.settle();
    }
    // 3. The previous pen back.
    dc.restorePen();
    return painter.result();
}
