// The lineweight table: ByLayer, ByBlock, Default and the 24 standard weights, each a display text
// and a code, in millimetre and in inch labels. Portable, plain data.
//
// A code is the weight in hundredths of a millimetre (0 to 211); the three special entries have
// negative codes. Each control holds its own table (both lists by value): only the texts of the three
// special entries can change, and they change in both lists at once.
#pragma once

#include <array>
#include <cstdint>

#include "KivString.h"

struct KivLineweightEntry {
    KivString text;
    std::int32_t code = 0;  // hundredths of a millimetre; ByLayer -1, ByBlock -2, Default -3
};

class KivLineweightTable {
public:
    static constexpr int kCount = 27;
    static constexpr std::int32_t kByLayer = -1;
    static constexpr std::int32_t kByBlock = -2;
    static constexpr std::int32_t kDefault = -3;
    static constexpr std::int32_t kLargestCode = 211;  // 2.11 mm: the bar divisor of the drawing
    using List = std::array<KivLineweightEntry, kCount>;

    // Both lists in table order.
    KivLineweightTable();

    // Measurement != 0 selects the millimetre labels, 0 the inch labels.
    const List& active(std::int16_t measurement) const { return measurement != 0 ? m_metric : m_inch; }
    const List& metric() const { return m_metric; }
    const List& inch() const { return m_inch; }

    // The text of entry `index` (0..26) in the active list.
    const KivString& text(int index, std::int16_t measurement) const;
    // The code of entry `index` (0..26), read from the metric list (both lists carry the same codes).
    std::int32_t code(int index) const;
    // The first index 0..26 whose code equals `code`, or -1.
    int findByCode(std::int32_t code) const;
    // The first index 0..26 whose text in the active list equals `text` exactly (case-sensitive), or -1.
    int findByText(const KivString& text, std::int16_t measurement) const;
    // Replaces the text of special entry `index` (0 ByLayer, 1 ByBlock, 2 Default) in both lists; the
    // code stays. Other indices are ignored.
    void replaceSpecialText(int index, const KivString& text);

private:
    List m_metric;
    List m_inch;
};
