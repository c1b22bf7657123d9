// Every linetype of every real .lin file in the shared data folder (read in place), and each file
// again with Windows line ends: a header the lookup can find loads exactly its own definition line;
// the headers it cannot find (not written in capitals, at the very first byte, or shadowed by an
// earlier header that begins with the same key) are the predicted ones. The expectations are worked
// out here from the file's lines, independently of the lookup.
#include <algorithm>
#include <fstream>
#include <iterator>

#include "LinetypeFixture.h"

namespace {
struct Header {
    std::string name;        // as written after the asterisk
    std::size_t position;    // of the asterisk
    std::string nextLine;    // the line after the header (with its carriage return, if any)
};

std::string readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::vector<Header> headersOf(const std::string& bytes) {
    std::vector<Header> headers;
    std::size_t start = 0;
    while (start < bytes.size()) {
        std::size_t end = bytes.find('\n', start);
        if (end == std::string::npos) end = bytes.size();
        if (bytes[start] == '*') {
            std::string line = bytes.substr(start, end - start);
            if (!line.empty() && line.back() == '\r') line.pop_back();
            Header h{line.substr(1, line.find(',') == std::string::npos ? std::string::npos : line.find(',') - 1), start, ""};
            if (end < bytes.size()) {
                const std::size_t nextEnd = bytes.find('\n', end + 1);
                h.nextLine = bytes.substr(end + 1, (nextEnd == std::string::npos ? bytes.size() : nextEnd) - end - 1);
            }
            headers.push_back(h);
        }
        start = end + 1;
    }
    return headers;
}

std::string upperAscii(std::string s) {
    for (char& c : s)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    return s;
}

// Whether the lookup can find this header as the match for its own name.
bool loadsItself(const std::string& bytes, const Header& h) {
    if (upperAscii(h.name) != h.name) return false;  // the key is upper case, the file is searched as read
    const std::size_t first = bytes.find("*" + h.name);
    return first != 0 && first == h.position;
}

std::string withWindowsLineEnds(const std::string& bytes) {
    std::string out;
    for (char c : bytes) {
        if (c == '\n') out += '\r';
        out += c;
    }
    return out;
}

class RealLinetypeFiles : public LinetypeFixture {
protected:
    // Loads every header of `bytes` (in a file of that content) one at a time into a fresh control.
    void checkEveryHeader(const std::string& file, const std::string& bytes, int& loaded, int& refused) {
        TempFile copy(bytes, "real.lin");
        for (const Header& h : headersOf(bytes)) {
            SCOPED_TRACE(file + ": " + h.name);
            FakeComboBox rows;
            RecordingSite events;
            CKivLinetypeCtrl control(events);
            control.OnCreate(rows, 21);
            control.SetSupportPath(copy.folder());
            control.SetLinetypeFile(KivString(u"real.lin"));
            control.LoadLinetype(KivString(h.name.c_str()));
            if (loadsItself(bytes, h)) {
                ASSERT_EQ(rows.count(), 4);
                EXPECT_EQ(control.definitionOf(3).toUtf8(), h.nextLine);
                EXPECT_EQ(control.items()[3].definition.toUtf8(), h.nextLine);
                ++loaded;
            } else {
                const std::size_t first = bytes.find("*" + upperAscii(h.name));
                if (first == std::string::npos || first == 0) EXPECT_EQ(rows.count(), 3);
                else EXPECT_EQ(rows.count(), 4);  // shadowed: another header's definition under this name
                ++refused;
            }
        }
    }
};
}  // namespace

TEST_F(RealLinetypeFiles, EveryHeaderLoadsItsOwnDefinitionOrIsOneThatCannotBeFound) {
    const std::vector<std::string> files = sharedDataFiles("lin");
    ASSERT_GE(files.size(), 7u);
    int loaded = 0, refused = 0;
    for (const std::string& file : files) {
        const std::string bytes = readBytes(sharedDataNativePath("lin/" + file));
        ASSERT_FALSE(bytes.empty()) << file;
        checkEveryHeader(file, bytes, loaded, refused);
    }
    // The capital headers of the AT&T and QCAD files load; the mixed-case ones of the others do not.
    EXPECT_EQ(loaded, 115);
    EXPECT_EQ(refused, 40);
}

TEST_F(RealLinetypeFiles, WithWindowsLineEndsEveryDefinitionKeepsItsCarriageReturn) {
    int loaded = 0, refused = 0;
    for (const std::string& file : sharedDataFiles("lin")) {
        const std::string bytes = withWindowsLineEnds(readBytes(sharedDataNativePath("lin/" + file)));
        checkEveryHeader(file + " (CR-LF)", bytes, loaded, refused);
    }
    EXPECT_EQ(loaded, 115);
    EXPECT_EQ(refused, 40);
}

TEST_F(RealLinetypeFiles, AWholeFileLoadedIntoOneComboIsSortedAndInStep) {
    TempFile copy(readBytes(sharedDataNativePath("lin/qcad__qcadiso.lin")), "qcadiso.lin");
    CKivLinetypeCtrl control(site);
    control.OnCreate(box, 21);
    useFile(control, copy, u"qcadiso.lin");
    std::vector<Header> headers = headersOf(readBytes(sharedDataNativePath("lin/qcad__qcadiso.lin")));
    std::reverse(headers.begin(), headers.end());  // load in reverse: the rows still come out sorted
    for (const Header& h : headers) control.LoadLinetype(KivString(h.name.c_str()));
    ASSERT_EQ(box.count(), 3 + 50);
    std::vector<Header> sorted = headers;
    std::sort(sorted.begin(), sorted.end(), [](const Header& a, const Header& b) { return a.name < b.name; });
    for (int i = 0; i < 50; ++i) {
        const Header& h = sorted[static_cast<std::size_t>(i)];
        EXPECT_EQ(control.definitionOf(i + 3).toUtf8(), h.nextLine) << h.name;
        EXPECT_EQ(box.textAt(i + 3), KivLinetypeModel::displayName(KivString(h.name.c_str())).toUtf8());
    }
    // And the names the events carry are the display names.
    box.selection = 3;
    control.OnCommand(kiv::kCbnSelEndOk);
    EXPECT_EQ(events(), (Texts{"SelAndCloseUp(\"Acad_iso02w100\")"}));
}
