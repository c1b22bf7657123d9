// Every allocation of the module's arrays made to fail in turn (the 1st, the 2nd, ... the last one a
// task makes) while linetypes are loaded from a real file, defined, selected, unloaded and their rows
// drawn, in the combo and in the list, and while real hatch patterns are loaded and drawn. Each
// failure is reported, the arrays go on, and no row is corrupted: the child's rows stay the
// control's rows, no row is drawn with another row's definition, every drawing puts its pen back,
// and with memory back the control takes new rows again. Under AddressSanitizer the same run shows
// that nothing is leaked or touched out of bounds.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "AssertCapture.h"
#include "CKivDpi.h"
#include "CKivHatchCtrl.h"
#include "CKivLinetypeCtrl.h"
#include "CKivLinetypeListCtrl.h"
#include "CountingDC.h"
#include "FakeComboBox.h"
#include "KivMemoryControllerController.h"
#include "RecordingSite.h"
#include "TestFiles.h"

namespace {

using Memory = KivMemoryControllerController;

std::string readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// The names of a file's headers ("*NAME,description"), in file order.
std::vector<std::string> headerNames(const std::string& bytes) {
    std::vector<std::string> names;
    std::size_t start = 0;
    while (start < bytes.size()) {
        std::size_t end = bytes.find('\n', start);
        if (end == std::string::npos) end = bytes.size();
        if (bytes[start] == '*') {
            const std::size_t comma = bytes.find(',', start);
            if (comma != std::string::npos && comma < end) names.push_back(bytes.substr(start + 1, comma - start - 1));
        }
        start = end + 1;
    }
    return names;
}

// The folder and the name of a shared data file, as the linetype controls take them.
struct DataFile {
    KivString folder, name;
};
DataFile dataFile(const std::string& relative, const std::string& name) {
    const KivString path = sharedDataPath(relative);
    const int cut = path.length() - static_cast<int>(name.size());
    return DataFile{KivString(path).left(cut), KivString(name.c_str())};
}

// A task, given what it calls once memory is back (from there on nothing fails).
using Task = std::function<void(const std::function<void()>& memoryBack)>;

// The outcome of a task with the n-th allocation failing: the reports it made, and how many
// allocations it asked for before memory was back.
struct Run {
    std::vector<AssertReport> reports;
    long calls = 0;
};
Run runFailing(long nth, const Task& task) {
    AssertCapture capture;
    const long before = Memory::allocationCalls();
    long failable = -1;
    Memory::failAllocationNumber(nth);
    task([&] {
        if (failable < 0) failable = Memory::allocationCalls() - before;
        Memory::failAllocationNumber(0);
    });
    Memory::failAllocationNumber(0);
    if (failable < 0) failable = Memory::allocationCalls() - before;
    return Run{capture.reports(), failable};
}

// Runs `task` once as it is, then once for each allocation it makes with that one failing: the task
// checks its own state; here, every failure that happened was reported.
void failEachAllocationInTurn(const Task& task, long minimumCalls) {
    const Run clean = runFailing(0, task);
    EXPECT_TRUE(clean.reports.empty());
    ASSERT_GE(clean.calls, minimumCalls);  // the task does reach the arrays
    ::testing::Test::RecordProperty("allocations", static_cast<int>(clean.calls));
    for (long n = 1; n <= clean.calls; ++n) {
        SCOPED_TRACE("allocation " + std::to_string(n) + " of " + std::to_string(clean.calls) + " fails");
        const Run run = runFailing(n, task);
        if (run.calls >= n) {
            EXPECT_FALSE(run.reports.empty()) << "a failed allocation went unreported";
        }
        if (::testing::Test::HasFatalFailure()) return;
    }
}

// The rows of a linetype control against its model: the same rows, in the same order, each drawn
// with its own definition or none, never another row's; every row drawn with its pen put back.
template <class Control, class Utl>
void expectRowsInStep(const Control& ctrl, const Utl& utl, const FakeComboBox& box) {
    ASSERT_EQ(static_cast<int>(box.count()), ctrl.items().getLogicalLength());
    for (int row = 0; row < ctrl.items().getLogicalLength(); ++row) {
        EXPECT_EQ(box.textAt(row), ctrl.items()[row].name.toUtf8()) << "row " << row;
        if (row >= 3) {
            const KivString drawnWith = ctrl.definitionOf(row);
            EXPECT_TRUE(drawnWith.isEmpty() || drawnWith == ctrl.items()[row].definition) << "row " << row;
        }
        CountingDC dc;
        KivDrawItem item;
        item.itemID = row;
        item.rcItem = KivRect{0, 0, 180, 16};
        utl.DrawItem(dc, item);
        EXPECT_EQ(dc.pens, 0) << "row " << row;
    }
}

// Loads a real file's linetypes, defines one, renames a fixed row, selects, unloads, draws; then,
// with memory back, defines one more, which must arrive as a row in step with the rest.
template <class Control, class Utl>
void linetypeTask(Control& ctrl, const Utl& utl, FakeComboBox& box, const std::vector<std::string>& names,
                  const DataFile& file, const std::function<void()>& memoryBack) {
    ctrl.SetSupportPath(file.folder);
    ctrl.SetLinetypeFile(file.name);
    // In reverse: the file's names come sorted, so that each one is inserted before the others.
    for (auto name = names.rbegin(); name != names.rend(); ++name) ctrl.LoadLinetype(KivString(name->c_str()));
    ctrl.DefineLinetype(KivString(u"KIVFAULT"), KivString(u"A,1.5,-0.5"));
    ctrl.DefineLinetypeByBlock(KivString(u"Block"), KivString(u"A,2,-2"));
    ctrl.SelectItem(KivString(names[names.size() / 2].c_str()));
    ctrl.UnloadLinetype(KivString(names[1].c_str()));
    expectRowsInStep(ctrl, utl, box);

    memoryBack();
    const int before = ctrl.items().getLogicalLength();
    ctrl.DefineLinetype(KivString(u"AFTERWARDS"), KivString(u"A,3,-1"));
    EXPECT_EQ(ctrl.items().getLogicalLength(), before + 1);
    expectRowsInStep(ctrl, utl, box);
}

// The combo and the list differ in how their child is created and named.
void create(CKivLinetypeCtrl& ctrl, FakeComboBox& box) { ctrl.OnCreate(box, 21); }
void create(CKivLinetypeListCtrl& ctrl, FakeComboBox& box) { ctrl.OnCreate(box); }
const CKivLinetypeComboBoxUtl& childOf(const CKivLinetypeCtrl& ctrl) { return ctrl.comboBox; }
const CKivLinetypeListBoxUtl& childOf(const CKivLinetypeListCtrl& ctrl) { return ctrl.listBox; }

class AllocationFaults : public ::testing::Test {
protected:
    void SetUp() override {
        CKivDpi::setDpiForTesting(96);
        CKivDpi::setComboBoxMetricsForTesting(4, 13);
    }
    void TearDown() override {
        Memory::failAllocationNumber(0);
        CKivDpi::resetForTesting();
    }
    std::vector<std::string> linetypeNames() const {
        std::vector<std::string> names = headerNames(readBytes(sharedDataNativePath("lin/qcad__qcadiso.lin")));
        names.resize(12);
        return names;
    }
    // The linetype task in a control whose child exists, failing each allocation in turn.
    template <class Control>
    void failEachAllocationOfAnActiveControl(long minimumCalls) {
        const std::vector<std::string> names = linetypeNames();
        failEachAllocationInTurn(
            [&](const std::function<void()>& memoryBack) {
                RecordingSite site;
                FakeComboBox box;
                Control ctrl(site);
                create(ctrl, box);
                linetypeTask(ctrl, childOf(ctrl), box, names, lin, memoryBack);
            },
            minimumCalls);
    }
    const DataFile lin = dataFile("lin/qcad__qcadiso.lin", "qcad__qcadiso.lin");
};

}  // namespace

TEST_F(AllocationFaults, InTheLinetypeComboEachFailureIsReportedAndNoRowIsCorrupted) {
    failEachAllocationOfAnActiveControl<CKivLinetypeCtrl>(10);
}

TEST_F(AllocationFaults, InTheLinetypeListEachFailureIsReportedAndNoRowIsCorrupted) {
    // The list box keeps no sorted names: its rows' arrays are all it allocates.
    failEachAllocationOfAnActiveControl<CKivLinetypeListCtrl>(4);
}

TEST_F(AllocationFaults, LinetypesLoadedBeforeTheWindowExistsKeepTheirRowsInStepWhateverFails) {
    const std::vector<std::string> names = linetypeNames();
    failEachAllocationInTurn(
        [&](const std::function<void()>& memoryBack) {
            RecordingSite site;
            FakeComboBox box;
            CKivLinetypeCtrl ctrl(site);
            ctrl.SetSupportPath(lin.folder);
            ctrl.SetLinetypeFile(lin.name);
            for (const std::string& name : names) ctrl.LoadLinetype(KivString(name.c_str()));
            ctrl.OnCreate(box, 21);  // the rows are built here
            expectRowsInStep(ctrl, ctrl.comboBox, box);
            memoryBack();
            ctrl.Initialize();  // and rebuilt, all of them, with memory back
            EXPECT_EQ(ctrl.definitions().getLogicalLength(), ctrl.items().getLogicalLength());
            expectRowsInStep(ctrl, ctrl.comboBox, box);
        },
        10);
}

TEST_F(AllocationFaults, LoadingAndDrawingRealHatchPatternsReportsEachFailureAndDrawsWhatWasLoaded) {
    const std::string file = "pat/ACadSharp__ALL_4patterns.pat";
    std::vector<std::string> names = headerNames(readBytes(sharedDataNativePath(file)));
    ASSERT_GE(names.size(), 4u);
    names.resize(4);
    const KivString path = sharedDataPath(file);
    failEachAllocationInTurn(
        [&](const std::function<void()>& memoryBack) {
            RecordingSite site;
            CKivHatchCtrl ctrl(site);
            ctrl.SetZoomFactor(0.5);
            for (const std::string& name : names) {
                ctrl.SetPattern(path + KivString(u"(") + KivString(name.c_str()) + KivString(u")"));
                CountingDC dc;
                const KivHatchPaint done = ctrl.OnDraw(dc, KivRect{0, 0, 200, 150}, true, 0x00FFFFFF, 0x00000000);
                EXPECT_EQ(dc.pens, 0) << name;
                EXPECT_EQ(dc.strokes, done.strokes) << name;
            }
            // With memory back, a pattern loads whole: the same families as on a clean load.
            memoryBack();
            ctrl.SetPattern(path + KivString(u"(") + KivString(names[0].c_str()) + KivString(u")"));
            RecordingSite cleanSite;
            CKivHatchCtrl clean(cleanSite);
            clean.SetPattern(ctrl.GetPattern());
            EXPECT_EQ(ctrl.m_lineFamilies.getLogicalLength(), clean.m_lineFamilies.getLogicalLength());
        },
        4);
}
