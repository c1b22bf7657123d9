// The lineweight table: all 27 entries in both label sets, the lookups by code and by text, and the
// special texts replaced in both lists.
#include <gtest/gtest.h>

#include "KivLineweightTable.h"

namespace {
struct Expected {
    int code;
    const char* metric;
    const char* inch;
};
// The table as hosts see it; the inch labels are written out, not derived from the codes.
const Expected kExpected[27] = {
    {-1, "ByLayer", "ByLayer"}, {-2, "ByBlock", "ByBlock"}, {-3, "Default", "Default"},
    {0, "0.00 mm", "0.000 \""}, {5, "0.05 mm", "0.002 \""}, {9, "0.09 mm", "0.004 \""},
    {13, "0.13 mm", "0.005 \""}, {15, "0.15 mm", "0.006 \""}, {18, "0.18 mm", "0.007 \""},
    {20, "0.20 mm", "0.008 \""}, {25, "0.25 mm", "0.010 \""}, {30, "0.30 mm", "0.012 \""},
    {35, "0.35 mm", "0.014 \""}, {40, "0.40 mm", "0.016 \""}, {50, "0.50 mm", "0.020 \""},
    {53, "0.53 mm", "0.021 \""}, {60, "0.60 mm", "0.024 \""}, {70, "0.70 mm", "0.028 \""},
    {80, "0.80 mm", "0.031 \""}, {90, "0.90 mm", "0.035 \""}, {100, "1.00 mm", "0.039 \""},
    {106, "1.06 mm", "0.042 \""}, {120, "1.20 mm", "0.047 \""}, {140, "1.40 mm", "0.055 \""},
    {158, "1.58 mm", "0.062 \""}, {200, "2.00 mm", "0.079 \""}, {211, "2.11 mm", "0.083 \""},
};
}  // namespace

TEST(KivLineweightTable, EveryEntryInBothListsWithItsCode) {
    const KivLineweightTable table;
    for (int i = 0; i < 27; ++i) {
        SCOPED_TRACE(i);
        const auto at = static_cast<std::size_t>(i);
        EXPECT_EQ(table.metric()[at].code, kExpected[i].code);
        EXPECT_EQ(table.inch()[at].code, kExpected[i].code);
        EXPECT_EQ(table.metric()[at].text.toUtf8(), kExpected[i].metric);
        EXPECT_EQ(table.inch()[at].text.toUtf8(), kExpected[i].inch);
        EXPECT_EQ(table.code(i), kExpected[i].code);
    }
}

TEST(KivLineweightTable, InchLabelsEndInABlankAndAnInchSign) {
    const KivLineweightTable table;
    const KivString& label = table.inch()[3].text;
    ASSERT_EQ(label.length(), 7);  // 0.000, blank, inch sign
    EXPECT_EQ(label.at(5), u' ');
    EXPECT_EQ(label.at(6), u'"');
    for (int i = 3; i < 27; ++i) EXPECT_EQ(table.inch()[static_cast<std::size_t>(i)].text.right(2), KivString(u" \"")) << i;
    // Written as given, not computed: 0.13 mm is 0.005" and 0.15 mm 0.006".
    EXPECT_EQ(table.text(6, 0), KivString(u"0.005 \""));
    EXPECT_EQ(table.text(7, 0), KivString(u"0.006 \""));
}

TEST(KivLineweightTable, MeasurementPicksTheList) {
    const KivLineweightTable table;
    EXPECT_EQ(table.text(10, 0), KivString(u"0.010 \""));
    EXPECT_EQ(table.text(10, 1), KivString(u"0.25 mm"));
    EXPECT_EQ(table.text(10, -7), KivString(u"0.25 mm"));  // any non-zero value is metric
    EXPECT_EQ(table.text(27, 1), KivString());             // outside the table: nothing
    EXPECT_EQ(table.text(-1, 1), KivString());
}

TEST(KivLineweightTable, FindByCodeOfSpecialsZeroAndTheLargest) {
    const KivLineweightTable table;
    EXPECT_EQ(table.findByCode(-1), 0);
    EXPECT_EQ(table.findByCode(-2), 1);
    EXPECT_EQ(table.findByCode(-3), 2);
    EXPECT_EQ(table.findByCode(0), 3);
    EXPECT_EQ(table.findByCode(211), 26);
    for (int absent : {10, 212, -4, 26, 1}) EXPECT_EQ(table.findByCode(absent), -1) << absent;
}

TEST(KivLineweightTable, FindByTextOnlyInTheActiveList) {
    const KivLineweightTable table;
    EXPECT_EQ(table.findByText(KivString(u"0.25 mm"), 1), 10);
    EXPECT_EQ(table.findByText(KivString(u"0.25 mm"), 0), -1);
    EXPECT_EQ(table.findByText(KivString(u"0.010 \""), 0), 10);
    EXPECT_EQ(table.findByText(KivString(u"0.010 \""), 1), -1);
    EXPECT_EQ(table.findByText(KivString(u"0.25 MM"), 1), -1);  // exact, case-sensitive
    EXPECT_EQ(table.findByText(KivString(u"0.25"), 1), -1);     // whole texts only
    EXPECT_EQ(table.findByText(KivString(), 1), -1);
}

TEST(KivLineweightTable, ReplacedByLayerTextIsFoundInBothModesAndTheOldOneIsGone) {
    KivLineweightTable table;
    table.replaceSpecialText(0, KivString(u"VonLayer"));
    EXPECT_EQ(table.findByText(KivString(u"VonLayer"), 0), 0);
    EXPECT_EQ(table.findByText(KivString(u"VonLayer"), 1), 0);
    EXPECT_EQ(table.findByText(KivString(u"ByLayer"), 0), -1);
    EXPECT_EQ(table.findByText(KivString(u"ByLayer"), 1), -1);
    EXPECT_EQ(table.code(0), -1);  // the code stays
    table.replaceSpecialText(3, KivString(u"x"));  // not a special entry: ignored
    EXPECT_EQ(table.text(3, 1), KivString(u"0.00 mm"));
}

TEST(KivLineweightTable, CodesAreUniqueAndASpecialTextEqualToALabelIsFoundFirst) {
    const KivLineweightTable table;
    for (int i = 0; i < 27; ++i)
        for (int j = i + 1; j < 27; ++j) EXPECT_NE(table.code(i), table.code(j)) << i << " " << j;
    KivLineweightTable replaced;
    replaced.replaceSpecialText(1, KivString(u"0.25 mm"));
    EXPECT_EQ(replaced.findByText(KivString(u"0.25 mm"), 1), 1);
}

TEST(KivLineweightTable, EachControlHoldsItsOwnLists) {
    KivLineweightTable a;
    const KivLineweightTable b;
    a.replaceSpecialText(2, KivString(u"Standard"));
    EXPECT_EQ(a.text(2, 1), KivString(u"Standard"));
    EXPECT_EQ(b.text(2, 1), KivString(u"Default"));
}
