// Finding the strokes of a hatch drawing that repeat one already drawn in the same paint, so that
// a raster device is not sent them: the previous walk's points (KivWalkRecord) and a table of recent
// strokes (KivRecentStrokes). Each is used only while it finds something. Portable.
#pragma once

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

// Work that pays only while it finds something, done by rounds: after a round of at least kRound
// items in which fewer than one in kWorthIt was found, the next kRestingRounds x kRound items are
// taken without it; then it is done again.
template <std::size_t kRound, std::size_t kWorthIt, std::size_t kRestingRounds>
class KivWorkThatPays {
public:
    bool working() const { return m_working; }
    // `items` more were taken, `found` of them found by the work (none while it rests).
    void took(std::size_t items, std::size_t found) {
        if (m_working) {
            m_items += items;
            m_found += found;
            if (m_items < kRound) return;
            m_working = m_found * kWorthIt >= m_items;
            m_items = m_found = 0;
            m_restLeft = kRound * kRestingRounds;
        } else if (items < m_restLeft) {
            m_restLeft -= items;
        } else {
            m_working = true;
        }
    }

private:
    bool m_working = true;
    std::size_t m_items = 0, m_found = 0;  // of the round under way, while working
    std::size_t m_restLeft = 0;            // items, while resting
};

// The strokes drawn lately in one paint, by their end points, so that one drawn again can be left
// out: 2^11 pairs of places, a stroke hashed to a pair and put in place of the older of the two. A
// stroke pushed out by others is drawn again when it comes back, which costs a call and changes
// nothing.
//
// A lookup that finds nothing costs time and saves none, and in most families nearly every lookup
// is such (a repeat is usually the previous walk's stroke at the same step, found without the
// table). So the table is looked in by rounds of kRound strokes: after a round in which fewer than
// one stroke in kWorthIt was found, the strokes of the next kRestingRounds rounds are taken as new
// without looking, then a round is looked up again.
class KivRecentStrokes {
public:
    static constexpr std::size_t kRound = 4096;
    static constexpr std::size_t kWorthIt = 4;
    static constexpr std::size_t kRestingRounds = 8;

    // True when the stroke from a to b was found in the table; otherwise, when the table is being
    // looked in, it is put there. Without memory for the table every stroke is new.
    bool drawnBefore(int ax, int ay, int bx, int by) {
        if (!m_looking.working()) {  // resting: only counted
            m_looking.took(1, 0);
            return false;
        }
        const bool found = lookUp(ax, ay, bx, by);
        m_looking.took(1, found ? 1 : 0);
        return found;
    }

private:
    struct Slot {
        int ax, ay, bx, by;
        bool operator==(const Slot& o) const { return ax == o.ax && ay == o.ay && bx == o.bx && by == o.by; }
    };
    bool lookUp(int ax, int ay, int bx, int by) {
        if (m_slots.empty() && !allocate()) return false;
        const std::uint32_t h = (static_cast<std::uint32_t>(ax) * 0x9E3779B1u) ^ (static_cast<std::uint32_t>(ay) * 0x85EBCA77u) ^
                                (static_cast<std::uint32_t>(bx) * 0xC2B2AE3Du) ^ (static_cast<std::uint32_t>(by) * 0x27D4EB2Fu);
        Slot* pair = &m_slots[2 * ((h ^ (h >> 15)) & (kPairs - 1))];
        const Slot stroke{ax, ay, bx, by};
        if (pair[0] == stroke || pair[1] == stroke) return true;
        pair[1] = pair[0];  // the older one goes
        pair[0] = stroke;
        return false;
    }
    bool allocate() {
        if (m_failed) return false;
        try {
            // INT_MIN never reaches a device (coordinates are clamped to GDI's range): an empty place.
            m_slots.assign(2 * kPairs, Slot{INT_MIN, INT_MIN, INT_MIN, INT_MIN});
        } catch (const std::bad_alloc&) {
            m_failed = true;
        }
        return !m_failed;
    }
    static constexpr std::size_t kPairs = std::size_t{1} << 11;
    std::vector<Slot> m_slots;
    bool m_failed = false;
    KivWorkThatPays<kRound, kWorthIt, kRestingRounds> m_looking;
};

// The device points of the walks in one direction, step by step: those of the walk under way and
// those of the one before it. In a dense family a line lies a fraction of a pixel from the one before,
// so a stroke very often has the very ends of the previous walk's stroke at the same step (the same
// dash entry, drawn or not shown alike): a repeat found without looking in the table of strokes.
//
// Where the lines lie a pixel or more apart, or their dashes fall at other places on each, hardly a
// point is the previous walk's, and keeping them costs a good part of each step. So the record is
// kept by rounds of at least kRound steps: after a round in which fewer than one point in kWorthIt
// was the previous walk's, the walks of the next kRestingRounds rounds' steps keep none (their
// repeats are sent, or found in the table), then the record is kept again.
class KivWalkRecord {
public:
    static constexpr std::size_t kRound = 4096;
    static constexpr std::size_t kWorthIt = 8;
    static constexpr std::size_t kRestingRounds = 8;

    // A new walk: the one under way becomes the previous one.
    void startWalk() {
        std::swap(m_previous, m_current);
        m_previousLength = m_currentLength;
        m_currentLength = 0;
    }
    void forget() { m_previousLength = m_currentLength = 0; }

    bool keeping() const { return m_keeping.working(); }  // the next walk keeps its points

    // A device point as one number, for a comparison in one step.
    static std::uint64_t pack(int x, int y) {
        return static_cast<std::uint64_t>(static_cast<std::uint32_t>(x)) | (static_cast<std::uint64_t>(static_cast<std::uint32_t>(y)) << 32);
    }

    // The places for the walk under way: at least `steps` + 1 when there is memory (up to a limit),
    // none while the record rests.
    std::uint64_t* places(std::size_t steps, std::size_t& count) {
        if (!m_keeping.working()) {
            count = 0;
            return m_current.data();
        }
        if (steps >= m_current.size() && steps < kMostSteps) {
            try {
                m_current.resize(std::min(kMostSteps, std::max<std::size_t>(256, (steps + 1) * 2)));
            } catch (const std::bad_alloc&) {
                // The walk is recorded as far as there are places; the rest goes to the table.
            }
        }
        count = m_current.size();
        return m_current.data();
    }
    const std::uint64_t* previous(std::size_t& length) const {
        length = m_previousLength;
        return m_previous.data();
    }
    // The walk under way ended after `steps` steps, its first `length` points kept, `matches` of
    // them the previous walk's after as many steps.
    void recorded(std::size_t length, std::size_t steps, std::size_t matches) {
        m_currentLength = length;
        m_keeping.took(steps, matches);
    }

private:
    static constexpr std::size_t kMostSteps = std::size_t{1} << 16;
    std::vector<std::uint64_t> m_previous, m_current;
    std::size_t m_previousLength = 0, m_currentLength = 0;
    KivWorkThatPays<kRound, kWorthIt, kRestingRounds> m_keeping;
};
