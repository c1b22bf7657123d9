// kivdoctor's findings: every linetype and pattern of every real file in the shared data checked
// against what the controls themselves load (the doctor and the controls cannot disagree), each
// reason on a small file made to show it, and the contact sheets' pixels.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CKivHatchCtrl.h"
#include "CKivLinetypeCtrl.h"
#include "FakeComboBox.h"
#include "KivDoctor.h"
#include "KivSheet.h"
#include "RecordingSite.h"
#include "TestFiles.h"

namespace {

std::string withoutLineEnd(std::string s) {
    while (!s.empty() && (s.back() == '\r' || s.back() == '\n')) s.pop_back();
    return s;
}

KivDoctorFile read(const TempFile& file) { return KivDoctorRead(file.nativePath()); }

// The finding for one name, among a report's.
template <class Finding>
const Finding& findingOf(const std::vector<Finding>& all, const std::string& name) {
    for (const Finding& f : all)
        if (f.name == name) return f;
    static Finding none;
    ADD_FAILURE() << "no finding for " << name;
    return none;
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace

// ---- Against the controls, on every real file

TEST(KivDoctor, OnEveryRealLinetypeFileItsFindingsAreWhatTheComboLoads) {
    int entries = 0, loading = 0;
    for (const std::string& name : sharedDataFiles("lin")) {
        const KivDoctorFile file = KivDoctorRead(sharedDataNativePath("lin/" + name));
        ASSERT_TRUE(file.ok) << name << ": " << file.problem;
        for (const KivLinetypeFinding& f : KivDiagnoseLinetypes(file, {})) {
            SCOPED_TRACE(name + ": " + f.name);
            // The combo with its child, as a host has it, loading this one name.
            RecordingSite site;
            FakeComboBox box;
            CKivLinetypeCtrl combo(site);
            combo.OnCreate(box, 21);
            combo.SetSupportPath(file.folder);
            combo.SetLinetypeFile(file.name);
            combo.LoadLinetype(KivString::fromUtf8(f.name));
            EXPECT_EQ(f.loads, box.count() == 4);
            if (box.count() == 4) {
                EXPECT_EQ(f.displayName, box.textAt(3));
                EXPECT_EQ(f.definition, withoutLineEnd(combo.definitionOf(3).toUtf8()));
                ++loading;
            }
            if (f.loadsItself) {
                EXPECT_EQ(f.definition, f.ownDefinition);
            }
            EXPECT_EQ(f.loadsItself, f.reason.empty() && f.loads);
            ++entries;
        }
    }
    EXPECT_EQ(entries, 8 + 8 + 22 + 15 + 2 + 50 + 50);  // every header of the seven files
    EXPECT_EQ(loading, 15 + 50 + 50);                     // the files whose headers are in capitals
}

TEST(KivDoctor, OnEveryRealPatternFileItsFindingsAreWhatThePreviewLoads) {
    int entries = 0;
    for (const std::string& name : sharedDataFiles("pat")) {
        const KivDoctorFile file = KivDoctorRead(sharedDataNativePath("pat/" + name));
        ASSERT_TRUE(file.ok) << name << ": " << file.problem;
        for (const KivPatternFinding& f : KivDiagnosePatterns(file, {}, 1.0, true)) {
            SCOPED_TRACE(name + ": " + f.name);
            RecordingSite site;
            CKivHatchCtrl preview(site);
            preview.SetPattern(sharedDataPath("pat/" + name) + KivString(u"(") + KivString::fromUtf8(f.name) + KivString(u")"));
            EXPECT_EQ(f.familiesLoaded, preview.m_lineFamilies.getLogicalLength());
            EXPECT_EQ(f.loads, preview.m_lineFamilies.getLogicalLength() > 0);
            EXPECT_EQ(f.loadsItself, f.reason.empty() && f.loads);
            if (f.loadsItself) {
                EXPECT_EQ(f.familiesLoaded, f.familiesInFile);
            }
            ++entries;
        }
    }
    EXPECT_EQ(entries, 4 + 8 + 1 + 1 + 1 + 1 + 1 + 1);
}

// ---- Each reason, on a file made to show it

TEST(KivDoctor, ExplainsEachWayALinetypeFailsToLoadAsItself) {
    TempFile lin(
        "*FIRST,at the first byte\n"
        "A,1,-1\n"
        ";; a comment\n"
        "*DASHED,dashed\n"
        "A,12.7,-6.35\n"
        "*DASH,a prefix of an earlier name\n"
        "A,3,-3\n"
        "*lower,lower case\n"
        "A,2,-2\n"
        "*NODEF,no definition line\n"
        ";; not a definition\n"
        "*CONTINUOUS,solid\n"
        "A,1\n"
        "*FINE,loads\n"
        "A,5,-1\n",
        "made.lin");
    const std::vector<KivLinetypeFinding> all = KivDiagnoseLinetypes(read(lin), {});
    ASSERT_EQ(all.size(), 7u);

    const KivLinetypeFinding& first = findingOf(all, "FIRST");
    EXPECT_FALSE(first.loads);
    EXPECT_TRUE(contains(first.reason, "very first byte of the file (line 1)")) << first.reason;

    const KivLinetypeFinding& dash = findingOf(all, "DASH");
    EXPECT_TRUE(dash.loads);
    EXPECT_FALSE(dash.loadsItself);
    EXPECT_EQ(dash.headerLine, 6);
    EXPECT_EQ(dash.matchLine, 4);
    EXPECT_EQ(dash.definition, "A,12.7,-6.35");  // the earlier entry's
    EXPECT_TRUE(contains(dash.reason, "first matches line 4")) << dash.reason;

    const KivLinetypeFinding& lower = findingOf(all, "lower");
    EXPECT_FALSE(lower.loads);
    EXPECT_TRUE(contains(lower.reason, "line 8 is not written in capitals")) << lower.reason;

    const KivLinetypeFinding& noDefinition = findingOf(all, "NODEF");
    EXPECT_TRUE(noDefinition.loads);
    EXPECT_FALSE(noDefinition.loadsItself);
    EXPECT_EQ(noDefinition.definition, "A,1");  // the next definition in the file, line 13
    EXPECT_TRUE(contains(noDefinition.reason, "on line 13")) << noDefinition.reason;

    const KivLinetypeFinding& continuous = findingOf(all, "CONTINUOUS");
    EXPECT_FALSE(continuous.loads);
    EXPECT_TRUE(contains(continuous.reason, "three rows every linetype control already has")) << continuous.reason;

    const KivLinetypeFinding& fine = findingOf(all, "FINE");
    EXPECT_TRUE(fine.loadsItself);
    EXPECT_EQ(fine.displayName, "Fine");
    EXPECT_EQ(fine.definition, "A,5,-1");
    EXPECT_TRUE(fine.reason.empty());

    // A name asked for that the file does not have.
    const std::vector<KivLinetypeFinding> asked = KivDiagnoseLinetypes(read(lin), {"ABSENT"});
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_FALSE(asked[0].loads);
    EXPECT_EQ(asked[0].reason, "The file has no header \"*ABSENT\".");
}

TEST(KivDoctor, ExplainsEachWayAPatternLosesFamiliesAndNamesTheFamiliesThatDrawNothing) {
    TempFile pat(
        ";; patterns\n"
        "*COMMENTED,a comment inside\n"
        "0,0,0,0,1\n"
        "; inside\n"
        "45,0,0,0,1\n"
        "*GAPPED,an empty line inside\n"
        "0,0,0,0,1\n"
        "\n"
        "90,0,0,0,1\n"
        "*NOCOMMA,a line without a comma\n"
        "0,0,0,0,1\n"
        "junk\n"
        "90,0,0,0,1\n"
        "*GUARDED,families that draw nothing or are stopped\n"
        "89.95,0,0,0,1\n"
        "360,0,0,0,1\n"
        "0,0,0,0,0\n"
        "0,0,0,0,0.000001\n"
        "30,0,0,0,2\n"
        "*GUARD,a prefix of an earlier name\n"
        "0,0,0,0,1\n"
        "*LAST,the last line has no line feed\n"
        "0,0,0,0,1\n"
        "90,0,0,0,1",
        "made.pat");
    const std::vector<KivPatternFinding> all = KivDiagnosePatterns(read(pat), {}, 1.0, true);
    ASSERT_EQ(all.size(), 6u);

    const KivPatternFinding& commented = findingOf(all, "COMMENTED");
    EXPECT_EQ(commented.familiesLoaded, 1);
    EXPECT_EQ(commented.familiesInFile, 2);
    EXPECT_TRUE(contains(commented.reason, "on line 4 holds a comment")) << commented.reason;

    const KivPatternFinding& gapped = findingOf(all, "GAPPED");
    EXPECT_EQ(gapped.familiesLoaded, 1);
    EXPECT_TRUE(contains(gapped.reason, "The empty line 8 ends the pattern")) << gapped.reason;

    const KivPatternFinding& noComma = findingOf(all, "NOCOMMA");
    EXPECT_EQ(noComma.familiesLoaded, 1);
    EXPECT_EQ(noComma.familiesInFile, 2);
    EXPECT_TRUE(contains(noComma.reason, "\"junk\" on line 12 has no comma")) << noComma.reason;

    const KivPatternFinding& guarded = findingOf(all, "GUARDED");
    EXPECT_TRUE(guarded.loadsItself);
    EXPECT_EQ(guarded.familiesLoaded, 5);
    ASSERT_EQ(guarded.notes.size(), 4u);
    EXPECT_EQ(guarded.notes[0].line, 15);
    EXPECT_TRUE(contains(guarded.notes[0].text, "on a band bound")) << guarded.notes[0].text;
    EXPECT_EQ(guarded.notes[1].line, 16);
    EXPECT_TRUE(contains(guarded.notes[1].text, "360 or more")) << guarded.notes[1].text;
    EXPECT_EQ(guarded.notes[2].line, 17);
    EXPECT_TRUE(contains(guarded.notes[2].text, "spacing (delta-y) 0")) << guarded.notes[2].text;
    EXPECT_EQ(guarded.notes[3].line, 18);
    EXPECT_TRUE(contains(guarded.notes[3].text, "spends its stroke budget")) << guarded.notes[3].text;
    // At a larger zoom the tiny spacing is drawn within the budget: only three notes are left.
    EXPECT_EQ(findingOf(KivDiagnosePatterns(read(pat), {"GUARDED"}, 10.0, true), "GUARDED").notes.size(), 3u);

    const KivPatternFinding& guard = findingOf(all, "GUARD");
    EXPECT_TRUE(guard.loads);
    EXPECT_FALSE(guard.loadsItself);
    EXPECT_EQ(guard.matchLine, 14);
    EXPECT_EQ(guard.familiesLoaded, 5);  // GUARDED's
    EXPECT_TRUE(contains(guard.reason, "first matches line 14")) << guard.reason;

    const KivPatternFinding& last = findingOf(all, "LAST");
    EXPECT_EQ(last.familiesLoaded, 1);
    EXPECT_EQ(last.familiesInFile, 2);
    EXPECT_TRUE(contains(last.reason, "The last line of the file (line 24) has no line feed")) << last.reason;
}

TEST(KivDoctor, RefusesAMissingEmptyBinaryOrHugeFileInOneSentenceAndReadsUtf16Text) {
    EXPECT_EQ(KivDoctorRead("/no/such/file.lin").problem, "/no/such/file.lin: no such file");
    TempFile empty("", "empty.lin");
    EXPECT_TRUE(contains(KivDoctorRead(empty.nativePath()).problem, "the file is empty"));
    TempFile binary(std::string("*A,b\n\0\x01\x02", 8), "binary.lin");
    EXPECT_TRUE(contains(KivDoctorRead(binary.nativePath()).problem, "binary data (a zero byte at offset 5)"));
    // UTF-16 text with its byte-order mark is text, and read as the controls read it.
    std::string utf16("\xFF\xFE", 2);
    for (char c : std::string(";;\n*WIDE,x\nA,1,-1\n")) {
        utf16 += c;
        utf16 += '\0';
    }
    TempFile wide(utf16, "wide.lin");
    const KivDoctorFile wideFile = KivDoctorRead(wide.nativePath());
    ASSERT_TRUE(wideFile.ok) << wideFile.problem;
    const std::vector<KivLinetypeFinding> wideFindings = KivDiagnoseLinetypes(wideFile, {});
    ASSERT_EQ(wideFindings.size(), 1u);
    EXPECT_TRUE(wideFindings[0].loadsItself);
    EXPECT_EQ(wideFindings[0].definition, "A,1,-1");
    TempFile huge(std::string(static_cast<std::size_t>(kKivDoctorMaxBytes) + 1, ';'), "huge.lin");
    EXPECT_TRUE(contains(KivDoctorRead(huge.nativePath()).problem, "larger than a linetype or pattern library can be"));
    EXPECT_TRUE(contains(KivDoctorRead(empty.nativePath().substr(0, empty.nativePath().rfind('/'))).problem,
                         "not a regular file"));
}

// ---- The contact sheets

TEST(KivDoctor, TheLinetypeSheetDrawsEachRowAsTheComboDoesAndCrossesOutWhatDoesNotLoad) {
    TempFile lin(";;\n*DASHED,x\nA,12.7,-6.35\n*lower,y\nA,1,-1\n", "sheet.lin");
    const KivDoctorFile file = read(lin);
    const std::vector<KivLinetypeFinding> findings = KivDiagnoseLinetypes(file, {});
    ASSERT_EQ(findings.size(), 2u);
    const auto sheet = KivLinetypeSheet(file, findings, nullptr);
    using L = KivSheetLayout;
    // Row 1: the sample runs along the middle of the row's left half: a dash from its start.
    const int row1 = L::kMargin + L::kTitleHeight;
    EXPECT_EQ(sheet->pixel(L::kMargin, row1 + 8), 0x00C8C8C8u);  // the row's grey frame
    EXPECT_EQ(sheet->pixel(L::kMargin + 1, row1 + 8), 0u);
    EXPECT_EQ(sheet->pixel(L::kMargin + 15, row1 + 8), 0x00FFFFFFu);  // the first gap
    // Row 2 does not load: its box is crossed in red, corner to corner.
    const int row2 = row1 + L::kRowPitch;
    EXPECT_EQ(sheet->pixel(L::kMargin, row2), 0x00D00000u);
    EXPECT_EQ(sheet->pixel(L::kMargin + 45, row2 + 2), 0x00D00000u);  // 360 x 16: two pixels down per 45 across
}

TEST(KivDoctor, ThePatternSheetDrawsEachPatternAsThePreviewDoesAndCrossesOutWhatDoesNotLoad) {
    TempFile pat(";;\n*HORIZONTAL,x\n0,0,0,0,2\n*lower,y\n0,0,0,0,1\n", "sheet.pat");
    const KivDoctorFile file = read(pat);
    const std::vector<KivPatternFinding> findings = KivDiagnosePatterns(file, {}, 1.0, true);
    ASSERT_EQ(findings.size(), 2u);
    const auto sheet = KivPatternSheet(file, findings, 1.0, true, nullptr);
    using L = KivSheetLayout;
    const int top = L::kMargin + L::kTitleHeight;
    // The first tile: horizontal lines 6 pixels apart (2 mm at zoom 1) from the bottom edge up; a
    // column through it crosses black every 6 rows.
    int black = 0;
    for (int y = top; y < top + L::kTileHeight; ++y)
        if (sheet->pixel(L::kMargin + 50, y) == 0) ++black;
    EXPECT_GE(black, L::kTileHeight / 6 - 1);
    EXPECT_LE(black, L::kTileHeight / 6 + 1);
    // The second tile: white, crossed in red.
    const int x2 = L::kMargin + L::kTileWidth + L::kMargin;
    EXPECT_EQ(sheet->pixel(x2, top), 0x00D00000u);
    EXPECT_EQ(sheet->pixel(x2 + 30, top + 60), 0x00FFFFFFu);
}
