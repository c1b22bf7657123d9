// Hatch patterns as the preview reads them: the Pattern split, reading and parsing lines, decoding
// dash lists, and loading from a file with its quirks.
#include <gtest/gtest.h>

#include "KivHatchPattern.h"
#include "TestFiles.h"

namespace {
KivString patternOf(const TempFile& file, const char16_t* name) {
    return file.path() + KivString(u"(") + KivString(name) + KivString(u")");
}
std::vector<double> decoded(const char16_t* text) {
    KivArray<double> dashes;
    DecodeDashes(KivString(text), dashes);
    std::vector<double> out;
    for (int i = 0; i < dashes.getLogicalLength(); ++i) out.push_back(dashes[i]);
    return out;
}
// One family line, parsed.
HatchLineFamily parsed(const char16_t* line) {
    KivArray<HatchLineFamily> families;
    ParsePatternLine(KivString(line), families);
    EXPECT_EQ(families.getLogicalLength(), 1);
    return families.getLogicalLength() > 0 ? families[0] : HatchLineFamily{};
}
constexpr const char* kTwoPatterns =
    "; test patterns\n"
    "*ANSI31,ANSI Iron\n"
    "45, 0,0, 0,.125\n"
    "*CROSS,two families\n"
    "0,0,0,0,5,3,-2\n"
    "90,0,0,0,5,3,-2\n";
}  // namespace

TEST(KivHatchPattern, PatternSplitsIntoPathAndName) {
    KivPatternName s = KivSplitPattern(KivString(u"C:\\pat\\a.pat(ANSI31)"));
    EXPECT_EQ(s.path, KivString(u"C:\\pat\\a.pat"));
    EXPECT_EQ(s.name, KivString(u"ANSI31"));
    s = KivSplitPattern(KivString(u"a.pat"));  // no parentheses: the whole value is the path
    EXPECT_EQ(s.path, KivString(u"a.pat"));
    EXPECT_EQ(s.name, KivString());
    s = KivSplitPattern(KivString(u"a.pat(ANSI31"));  // no ")": an empty name
    EXPECT_EQ(s.path, KivString(u"a.pat"));
    EXPECT_EQ(s.name, KivString());
    s = KivSplitPattern(KivString(u"a.pat)X"));  // no "(": the first `close` characters
    EXPECT_EQ(s.path, KivString(u"a.pat)X"));
    EXPECT_EQ(s.name, KivString(u"a.pat"));
    s = KivSplitPattern(KivString(u"(ANSI31)"));
    EXPECT_EQ(s.path, KivString());
    EXPECT_EQ(s.name, KivString(u"ANSI31"));
}

TEST(KivHatchPattern, ReadPatternLineTakesOneLineAndTellsDefinitionsApart) {
    KivString buffer(u"45,0,0,0,1\r\n; note\n*NEXT,x\n1\n\nlast,line");
    KivString line;
    EXPECT_TRUE(ReadPatternLine(buffer, line));
    EXPECT_EQ(line, KivString(u"45,0,0,0,1\r"));  // the carriage return stays
    EXPECT_FALSE(ReadPatternLine(buffer, line));    // a comment
    EXPECT_EQ(line, KivString(u"; note"));
    EXPECT_FALSE(ReadPatternLine(buffer, line));  // a header
    EXPECT_FALSE(ReadPatternLine(buffer, line));  // no comma
    EXPECT_EQ(line, KivString(u"1"));
    const KivString before = buffer;
    EXPECT_FALSE(ReadPatternLine(buffer, line));  // an empty line: nothing taken
    EXPECT_EQ(buffer, before);
    buffer = KivString(u"last,line");
    EXPECT_FALSE(ReadPatternLine(buffer, line));  // no line feed: never read
    EXPECT_EQ(buffer, KivString(u"last,line"));
}

TEST(KivHatchPattern, ParsePatternLineFillsTheFieldsInOrder) {
    const HatchLineFamily f = parsed(u"45, 1.5,-2, 0.25,.125, .5,-.25");
    EXPECT_EQ(f.angle, 45.0);
    EXPECT_EQ(f.originX, 1.5);
    EXPECT_EQ(f.originY, -2.0);
    EXPECT_EQ(f.deltaX, 0.25);
    EXPECT_EQ(f.deltaY, 0.125);
    EXPECT_EQ(f.dashes, KivString(u" .5,-.25,"));  // the rest with its commas, the added one too
}

TEST(KivHatchPattern, ExactlyFiveNumbersKeepTheUnbrokenLine) {
    EXPECT_EQ(parsed(u"0,0,0,0,5").dashes, KivString(u"10,"));
    EXPECT_EQ(parsed(u"0,0,0,0,5,").dashes, KivString(u"10,"));  // an empty field after deltaY
}

TEST(KivHatchPattern, OneNumberAndACommaIsAFamilyWithThatAngleAndZeros) {
    const HatchLineFamily f = parsed(u"30,");
    EXPECT_EQ(f.angle, 30.0);
    EXPECT_EQ(f.originX, 0.0);
    EXPECT_EQ(f.deltaY, 0.0);
    EXPECT_EQ(f.dashes, KivString(u"10,"));
    EXPECT_EQ(parsed(u"30,5,,7,8").originY, 0.0);  // an empty field stops the parsing there
    EXPECT_EQ(parsed(u"30,5,,7,8").deltaX, 0.0);
    KivArray<HatchLineFamily> none;
    ParsePatternLine(KivString(u",5,5"), none);  // a line that starts with a comma is ignored
    EXPECT_EQ(none.getLogicalLength(), 0);
}

TEST(KivHatchPattern, DecodeDashesReadsValuesFollowedByCommas) {
    EXPECT_EQ(decoded(u"10,"), (std::vector<double>{10.0}));
    EXPECT_EQ(decoded(u".5,-.25,"), (std::vector<double>{0.5, -0.25}));
    EXPECT_EQ(decoded(u",5,"), (std::vector<double>{100.0}));  // begins with a comma: one long dash
    EXPECT_EQ(decoded(u"5"), (std::vector<double>{100.0}));    // no comma at all
    EXPECT_EQ(decoded(u"5,-3"), (std::vector<double>{5.0}));   // a value without its comma is not taken
    EXPECT_EQ(decoded(u"5,,3,"), (std::vector<double>{5.0}));  // an empty field ends the list
    EXPECT_EQ(decoded(u" 3 , -3 ,"), (std::vector<double>{3.0, -3.0}));
}

TEST(KivHatchPattern, AnEmptyPatternOrAnEmptyPathKeepsTheFamiliesLoadedBefore) {
    TempFile file(kTwoPatterns, "two.pat");
    KivArray<HatchLineFamily> families;
    LoadPattern(patternOf(file, u"CROSS"), families);
    ASSERT_EQ(families.getLogicalLength(), 2);
    LoadPattern(KivString(), families);
    EXPECT_EQ(families.getLogicalLength(), 2);
    LoadPattern(KivString(u"(ANSI31)"), families);
    EXPECT_EQ(families.getLogicalLength(), 2);
    KivPatternLoadReport report;
    LoadPattern(KivString(u"(ANSI31)"), families, &report);
    EXPECT_FALSE(report.pathGiven);
}

TEST(KivHatchPattern, AMissingFileEmptiesTheList) {
    TempFile file(kTwoPatterns, "two.pat");
    KivArray<HatchLineFamily> families;
    LoadPattern(patternOf(file, u"CROSS"), families);
    LoadPattern(file.folder() + KivString(u"\\missing.pat(CROSS)"), families);
    EXPECT_EQ(families.getLogicalLength(), 0);
    LoadPattern(patternOf(file, u"CROSS"), families);
    LoadPattern(file.folder() + KivString(u"(CROSS)"), families);  // a folder is no file
    EXPECT_EQ(families.getLogicalLength(), 0);
}

TEST(KivHatchPattern, APathWithAParenthesisSplitsThereAndLoadsNothing) {
    // The split is at the first "(" and the first ")", wherever they are: a folder such as
    // "Program Files (x86)" gives the path before it and "x86" as the name.
    KivPatternName s = KivSplitPattern(KivString(u"C:\\Program Files (x86)\\cad\\acad.pat(ANSI31)"));
    EXPECT_EQ(s.path, KivString(u"C:\\Program Files "));
    EXPECT_EQ(s.name, KivString(u"x86"));
    // The same file loads under a name without a parenthesis, and nothing under one with "(x86)":
    // the preview is left blank.
    TempFile plain(kTwoPatterns, "two.pat");
    TempFile file(kTwoPatterns, "two (x86).pat");
    KivArray<HatchLineFamily> families;
    LoadPattern(patternOf(plain, u"ANSI31"), families);
    EXPECT_EQ(families.getLogicalLength(), 1);
    LoadPattern(patternOf(file, u"ANSI31"), families);
    EXPECT_EQ(families.getLogicalLength(), 0);
}

TEST(KivHatchPattern, AHeaderAtTheFirstCharacterIsNotFound) {
    TempFile file("*ANSI31,ANSI Iron\n45, 0,0, 0,.125\n", "first.pat");
    KivArray<HatchLineFamily> families;
    KivPatternLoadReport report;
    LoadPattern(patternOf(file, u"ANSI31"), families, &report);
    EXPECT_EQ(families.getLogicalLength(), 0);
    EXPECT_EQ(report.keyPosition, 0);
    EXPECT_EQ(report.end, KivPatternEnd::NotLoaded);
}

TEST(KivHatchPattern, TheNameInLowerCaseFindsTheUpperCaseHeader) {
    TempFile file(kTwoPatterns, "two.pat");
    KivArray<HatchLineFamily> families;
    LoadPattern(patternOf(file, u"ansi31"), families);
    ASSERT_EQ(families.getLogicalLength(), 1);
    EXPECT_EQ(families[0].angle, 45.0);
    EXPECT_EQ(families[0].deltaY, 0.125);
    // The file is searched as it stands: a header written in lower case is never found.
    TempFile lower(";\n*ansi31,x\n45,0,0,0,1\n", "lower.pat");
    LoadPattern(patternOf(lower, u"ansi31"), families);
    EXPECT_EQ(families.getLogicalLength(), 0);
}

TEST(KivHatchPattern, ADefinitionLineWithATrailingCommentEndsThePatternBeforeIt) {
    TempFile file(";\n*P,x\n0,0,0,0,5\n90,0,0,0,5 ; vertical\n45,0,0,0,5\n", "comment.pat");
    KivArray<HatchLineFamily> families;
    KivPatternLoadReport report;
    LoadPattern(patternOf(file, u"P"), families, &report);
    EXPECT_EQ(families.getLogicalLength(), 1);
    EXPECT_EQ(report.end, KivPatternEnd::CommentLine);
    EXPECT_EQ(report.endLine, 3);
}

TEST(KivHatchPattern, ALineOfOneNumberWithoutACommaEndsThePattern) {
    TempFile file(";\n*P,x\n0,0,0,0,5\n7\n45,0,0,0,5\n", "nocomma.pat");
    KivArray<HatchLineFamily> families;
    KivPatternLoadReport report;
    LoadPattern(patternOf(file, u"P"), families, &report);
    EXPECT_EQ(families.getLogicalLength(), 1);
    EXPECT_EQ(report.end, KivPatternEnd::NoCommaLine);
}

TEST(KivHatchPattern, TheLastLineWithoutALineFeedIsNotLoaded) {
    TempFile file(";\n*P,x\n0,0,0,0,5\n90,0,0,0,5", "nofeed.pat");
    KivArray<HatchLineFamily> families;
    KivPatternLoadReport report;
    LoadPattern(patternOf(file, u"P"), families, &report);
    EXPECT_EQ(families.getLogicalLength(), 1);
    EXPECT_EQ(report.end, KivPatternEnd::LastLineNoFeed);
    EXPECT_EQ(report.endText, KivString(u"90,0,0,0,5"));
}

TEST(KivHatchPattern, AnEmptyLineAndTheNextHeaderEndThePattern) {
    TempFile file(kTwoPatterns, "two.pat");
    KivArray<HatchLineFamily> families;
    KivPatternLoadReport report;
    LoadPattern(patternOf(file, u"ANSI31"), families, &report);
    EXPECT_EQ(report.end, KivPatternEnd::HeaderLine);
    TempFile blank(";\n*P,x\n0,0,0,0,5\n\n90,0,0,0,5\n", "blank.pat");
    LoadPattern(patternOf(blank, u"P"), families, &report);
    EXPECT_EQ(families.getLogicalLength(), 1);
    EXPECT_EQ(report.end, KivPatternEnd::EmptyLine);
}

TEST(KivHatchPattern, ANameThatBeginsAnEarlierHeaderFindsThatHeader) {
    TempFile file(";\n*ABC,first\n0,0,0,0,1\n*AB,second\n90,0,0,0,1\n", "prefix.pat");
    KivArray<HatchLineFamily> families;
    LoadPattern(patternOf(file, u"AB"), families);
    ASSERT_EQ(families.getLogicalLength(), 1);
    EXPECT_EQ(families[0].angle, 0.0);  // ABC's family, not AB's
}

TEST(KivHatchPattern, EveryFamilyHoldsItsOwnNumbersAndDashes) {
    TempFile file(kTwoPatterns, "two.pat");
    KivArray<HatchLineFamily> families;
    LoadPattern(patternOf(file, u"CROSS"), families);
    ASSERT_EQ(families.getLogicalLength(), 2);
    EXPECT_EQ(families[1].angle, 90.0);
    EXPECT_EQ(families[1].deltaY, 5.0);
    EXPECT_EQ(families[1].dashes, KivString(u"3,-2,"));
    // Fresh elements the array holds ahead of use are made the same way.
    families.setLogicalLength(5);
    EXPECT_EQ(families[4].dashes, KivString(u"10,"));
    EXPECT_EQ(families[4].deltaY, 0.0);
}
