// Test double: the strokes a device is sent, in order, on a device that answers the stroke rules it
// is given, or none (then it is sent every stroke, as a metafile records them).
#pragma once

#include <vector>

#include "CountingDC.h"

// One MoveTo ('M') or LineTo ('L') and its point.
struct RecordedStroke {
    char kind;
    int x, y;
    bool operator==(const RecordedStroke& o) const { return kind == o.kind && x == o.x && y == o.y; }
};

class StrokeLog : public CountingDC {
public:
    StrokeLog() = default;
    explicit StrokeLog(const KivStrokeRules& rules) : m_ruled(true), m_rules(rules) {}
    bool strokeRules(KivStrokeRules& rules) override {
        rules = m_rules;
        return m_ruled;
    }
    void moveTo(int x, int y) override {
        CountingDC::moveTo(x, y);
        sent.push_back({'M', x, y});
    }
    void lineTo(int x, int y) override {
        CountingDC::lineTo(x, y);
        sent.push_back({'L', x, y});
    }
    std::vector<RecordedStroke> sent;

private:
    bool m_ruled = false;
    KivStrokeRules m_rules;
};
