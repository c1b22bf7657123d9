// Every pattern of every real .pat file in the shared data folder (read in place), and each file
// again opened up (a comment line first, its headers in capitals): a pattern loads exactly the
// families its lines predict, worked out here from the file's lines; the ones that cannot load are
// those the lookup cannot find (a header at the first byte or not in capitals). Each paints at zoom
// 0.05, 1 and 4 in millimetres and inches, 200 x 150 pixels, without the guard ever stepping in
// (bench/ paints them at 400 x 300).
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "CountingDC.h"
#include "EveryStrokeRasterDC.h"
#include "KivHatchDrawing.h"
#include "KivHatchPattern.h"
#include "KivRasterDC.h"
#include "TestFiles.h"

namespace {
std::string readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string upper(std::string s) {
    for (char& c : s)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    return s;
}

struct Expected {
    std::string name;
    int families;  // -1: not found
};

// The patterns of a file and the families each should load.
std::vector<Expected> expectations(const std::string& text) {
    std::vector<Expected> out;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (text[start] == '*') {
            std::string header = text.substr(start, (end == std::string::npos ? text.size() : end) - start);
            const std::size_t cut = header.find_first_of(",\r");
            const std::string name = header.substr(1, cut == std::string::npos ? std::string::npos : cut - 1);
            const std::size_t match = text.find("*" + upper(name));
            int families = -1;
            if (match != std::string::npos && match >= 1) {
                families = 0;
                std::size_t line = text.find('\n', match);
                while (line != std::string::npos) {
                    const std::size_t next = text.find('\n', line + 1);
                    if (next == std::string::npos || next == line + 1) break;  // no line feed, or empty
                    const std::string definition = text.substr(line + 1, next - line - 1);
                    if (definition.find('*') != std::string::npos || definition.find(';') != std::string::npos ||
                        definition.find(',') == std::string::npos)
                        break;
                    if (definition[0] != ',') ++families;  // a line that starts with a comma adds nothing
                    line = next;
                }
            }
            out.push_back(Expected{name, families});
        }
        if (end == std::string::npos) break;
        start = end + 1;
    }
    return out;
}

// A copy a host could use: a comment line first, every header in capitals.
std::string openedUp(const std::string& text) {
    std::string out = ";; opened up\n";
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        std::string line = text.substr(start, (end == std::string::npos ? text.size() : end) - start);
        if (!line.empty() && line[0] == '*') line = upper(line);
        out += line;
        if (end == std::string::npos) break;
        out += '\n';
        start = end + 1;
    }
    return out;
}

void checkFile(const std::string& label, const std::string& text, int& loaded, int& notFound) {
    TempFile copy(text, "real.pat");
    for (const Expected& e : expectations(text)) {
        SCOPED_TRACE(label + ": " + e.name);
        KivArray<HatchLineFamily> families;
        LoadPattern(copy.path() + KivString(u"(") + KivString::fromUtf8(e.name) + KivString(u")"), families);
        if (e.families < 0) {
            EXPECT_EQ(families.getLogicalLength(), 0);
            ++notFound;
            continue;
        }
        EXPECT_EQ(families.getLogicalLength(), e.families);
        ++loaded;
        for (double zoom : {0.05, 1.0, 4.0}) {
            for (double unit : {1.0, 25.4}) {
                CountingDC dc;
                KivArray<double> dashes;
                KivHatchStyle style;
                style.zoomFactor = zoom;
                style.unitFactor = unit;
                const KivHatchPaint paint = DrawHatch(dc, KivRect{0, 0, 200, 150}, families, dashes, style);
                EXPECT_FALSE(paint.guardStopped) << zoom << " " << unit;
                EXPECT_EQ(paint.zeroSpacingSides, 0);
                EXPECT_EQ(paint.walksSkipped, 0);
                EXPECT_EQ(dc.pens, 0);
            }
        }
    }
}
}  // namespace

TEST(RealPatternFiles, EveryPatternLoadsThePredictedFamiliesAndPaintsWithinTheGuard) {
    const std::vector<std::string> files = sharedDataFiles("pat");
    ASSERT_GE(files.size(), 8u);
    int loaded = 0, notFound = 0;
    for (const std::string& file : files) checkFile(file, readBytes(sharedDataNativePath("pat/" + file)), loaded, notFound);
    // Three patterns of the four-pattern file load (its first header is at byte 0); every other file
    // starts with its header or writes its names in mixed case.
    EXPECT_EQ(loaded, 3);
    EXPECT_EQ(notFound, 15);
}

TEST(RealPatternFiles, OpenedUpEveryPatternIsFoundAndLoadsWhatItsLinesHold) {
    int loaded = 0, notFound = 0;
    for (const std::string& file : sharedDataFiles("pat"))
        checkFile(file + " (opened up)", openedUp(readBytes(sharedDataNativePath("pat/" + file))), loaded, notFound);
    EXPECT_EQ(loaded, 18);
    EXPECT_EQ(notFound, 0);
}

// On a raster device the drawing leaves out the strokes that cannot change a pixel: every real
// pattern, opened up, at each zoom the benchmark paints, in millimetres and inches, gives the pixels,
// the stroke count and the guard's verdict of the same drawing with every stroke sent.
TEST(RealPatternFiles, OnARasterDeviceTheStrokesLeftOutChangeNoPixel) {
    int compared = 0;
    long long strokes = 0;
    for (const std::string& file : sharedDataFiles("pat")) {
        const std::string text = openedUp(readBytes(sharedDataNativePath("pat/" + file)));
        TempFile copy(text, "real.pat");
        for (const Expected& e : expectations(text)) {
            KivArray<HatchLineFamily> families;
            LoadPattern(copy.path() + KivString(u"(") + KivString::fromUtf8(e.name) + KivString(u")"), families);
            for (double zoom : {0.05, 0.25, 1.0, 4.0}) {
                for (double unit : {1.0, 25.4}) {
                    SCOPED_TRACE(file + ": " + e.name + " at " + std::to_string(zoom) + " x " + std::to_string(unit));
                    KivArray<double> dashes;
                    KivHatchStyle style;
                    style.zoomFactor = zoom;
                    style.unitFactor = unit;
                    style.foreColor = 0x00000080;
                    EveryStrokeRasterDC every(150, 100);
                    KivRasterDC raster(150, 100);
                    const KivHatchPaint a = DrawHatch(every, KivRect{0, 0, 150, 100}, families, dashes, style);
                    const KivHatchPaint b = DrawHatch(raster, KivRect{0, 0, 150, 100}, families, dashes, style);
                    EXPECT_EQ(a.strokes, b.strokes);
                    EXPECT_EQ(a.guardStopped, b.guardStopped);
                    EXPECT_TRUE(every.pixels() == raster.pixels());
                    strokes += a.strokes;
                    ++compared;
                }
            }
        }
    }
    EXPECT_EQ(compared, 18 * 8);
    EXPECT_GT(strokes, 5000000);  // the dense zooms are among them
}
