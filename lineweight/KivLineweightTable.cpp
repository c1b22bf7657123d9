// The lineweight table. Portable.
#include "KivLineweightTable.h"

namespace {
struct Row {
    std::int32_t code;
    const char16_t* metric;
    const char16_t* inch;
};
// The inch labels are stored as written, not computed from the codes (0.13 mm is labelled 0.005",
// 0.15 mm 0.006"): hosts compare the texts the earlier module showed. Each ends in a blank and an
// inch sign.
const Row kRows[KivLineweightTable::kCount] = {
    {-1, u"ByLayer", u"ByLayer"},     {-2, u"ByBlock", u"ByBlock"},     {-3, u"Default", u"Default"},
    {0, u"0.00 mm", u"0.000 \""},     {5, u"0.05 mm", u"0.002 \""},     {9, u"0.09 mm", u"0.004 \""},
    {13, u"0.13 mm", u"0.005 \""},    {15, u"0.15 mm", u"0.006 \""},    {18, u"0.18 mm", u"0.007 \""},
    {20, u"0.20 mm", u"0.008 \""},    {25, u"0.25 mm", u"0.010 \""},    {30, u"0.30 mm", u"0.012 \""},
    {35, u"0.35 mm", u"0.014 \""},    {40, u"0.40 mm", u"0.016 \""},    {50, u"0.50 mm", u"0.020 \""},
    {53, u"0.53 mm", u"0.021 \""},    {60, u"0.60 mm", u"0.024 \""},    {70, u"0.70 mm", u"0.028 \""},
    {80, u"0.80 mm", u"0.031 \""},    {90, u"0.90 mm", u"0.035 \""},    {100, u"1.00 mm", u"0.039 \""},
    {106, u"1.06 mm", u"0.042 \""},   {120, u"1.20 mm", u"0.047 \""},   {140, u"1.40 mm", u"0.055 \""},
    {158, u"1.58 mm", u"0.062 \""},   {200, u"2.00 mm", u"0.079 \""},   {211, u"2.11 mm", u"0.083 \""},
};

bool validIndex(int index) { return index >= 0 && index < KivLineweightTable::kCount; }
}  // namespace

KivLineweightTable::KivLineweightTable() {
    for (int i = 0; i < kCount; ++i) {
        const auto at = static_cast<std::size_t>(i);
        m_metric[at] = KivLineweightEntry{KivString(kRows[i].metric), kRows[i].code};
        m_inch[at] = KivLineweightEntry{KivString(kRows[i].inch), kRows[i].code};
    }
}

const KivString& KivLineweightTable::text(int index, std::int16_t measurement) const {
    static const KivString none;
    return validIndex(index) ? active(measurement)[static_cast<std::size_t>(index)].text : none;
}

std::int32_t KivLineweightTable::code(int index) const {
    return validIndex(index) ? m_metric[static_cast<std::size_t>(index)].code : kByLayer;
}

int KivLineweightTable::findByCode(std::int32_t code) const {
    for (int i = 0; i < kCount; ++i)
        if (m_metric[static_cast<std::size_t>(i)].code == code) return i;
    return -1;
}

int KivLineweightTable::findByText(const KivString& text, std::int16_t measurement) const {
    const List& list = active(measurement);
    for (int i = 0; i < kCount; ++i)
        if (list[static_cast<std::size_t>(i)].text == text) return i;
    return -1;
}

void KivLineweightTable::replaceSpecialText(int index, const KivString& text) {
    if (index < 0 || index > 2) return;
    m_metric[static_cast<std::size_t>(index)].text = text;
    m_inch[static_cast<std::size_t>(index)].text = text;
}
