// What the frame does alike for every control with an owner-drawn child, run once per control: the
// design-mode face with the control's own name, size (the dropped height scaled for the dpi or,
// the lineweight's, a literal 140), focus and Enabled passed to the child, and the drop-down rule as
// each combo's events show it (the rule itself: DropDownChoice).
#include <functional>
#include <memory>

#include "CKivColorCtrl.h"
#include "CKivLineweightCtrl.h"
#include "CKivLinetypeCtrl.h"
#include "CKivLinetypeListCtrl.h"
#include "ControlFixture.h"
#include "RecordingDC.h"

namespace {

struct ChildCase {
    const char* name;
    std::function<std::unique_ptr<KivChildControl>(RecordingSite&, ScriptedColorDialog&)> make;
    const char* designText;  // what its design-mode face writes
    int row;                 // a row of its filled child
    const char* rowEvent;    // the arguments of an event for that row, chosen in a new control
    int droppedAt144;        // the dropped list's height at 144 dpi: 210, or a literal 140
};

// Test names and failure messages show the control's name.
void PrintTo(const ChildCase& c, std::ostream* os) { *os << c.name; }

template <class Control>
std::unique_ptr<KivChildControl> make(RecordingSite& site, ScriptedColorDialog&) {
    return std::make_unique<Control>(site);
}

const ChildCase kCombos[] = {
    {"Colour", [](RecordingSite& s, ScriptedColorDialog& d) { return std::make_unique<CKivColorCtrl>(s, d); },
     "KivColorComboBox", 5, "(5,7)", 210},  // the colour of the stored item: none yet, CB_ERR read as white
    {"Lineweight", &make<CKivLineweightCtrl>, "KivLineweightComboBox", 4, "(\"0.002 \"\")", 140},
    {"Linetype", &make<CKivLinetypeCtrl>, "KivLinetypeComboBox", 2, "(\"Continuous\")", 210},
};
const ChildCase kList = {"LinetypeList", &make<CKivLinetypeListCtrl>, "KivLinetypeListBox", 0, "(\"ByLayer\")", 210};

class ChildFrame : public ControlFixture, public ::testing::WithParamInterface<ChildCase> {
protected:
    void SetUp() override {
        ControlFixture::SetUp();
        ctrl = GetParam().make(site, dialog);
        ctrl->OnCreate(box, 21);
        box.log.clear();
    }
    ScriptedColorDialog dialog;
    std::unique_ptr<KivChildControl> ctrl;
};

class ComboChoice : public ChildFrame {};

std::string nameOf(const ::testing::TestParamInfo<ChildCase>& info) { return info.param.name; }

}  // namespace

TEST_P(ChildFrame, DesignModeWritesTheControlsOwnNameOnWhite) {
    RecordingDC dc;
    ctrl->OnDraw(dc, KivRect{0, 0, 121, 21}, false, 0x00ABCDEF);
    const std::string text = GetParam().designText;
    EXPECT_EQ(dc.calls, (Texts{"GetBkColor", "FillRect(0,0,121,21,solid 0x00FFFFFF)", "SetTextAlign(30)",
                               "GetTextExtentPoint32(\"" + text + "\")", "TextOut(60,16,\"" + text + "\")",
                               "SetBkColor(" + RecordingDC::hex(dc.bkColor) + ")"}));
    EXPECT_TRUE(box.log.empty());  // the child is not touched in design mode
}

TEST_P(ChildFrame, SizeMovesTheChildToItsDroppedHeightScaledOrNot) {
    GetParam().make(site, dialog)->OnSize(200);  // a control without its child yet: nothing to move
    ctrl->OnSize(200);
    EXPECT_EQ(box.log, (Texts{"Invalidate(erase)", "MoveWindow(0,0,200,140,TRUE)"}));
    CKivDpi::setDpiForTesting(144);
    box.log.clear();
    ctrl->OnSize(300);
    EXPECT_EQ(box.log, (Texts{"Invalidate(erase)", "MoveWindow(0,0,300," + std::to_string(GetParam().droppedAt144) + ",TRUE)"}));
}

TEST_P(ChildFrame, FocusAndEnabledGoToTheChild) {
    ctrl->OnSetFocus();
    ctrl->OnEnabledChanged(false);
    EXPECT_FALSE(box.enabled);
    ctrl->OnEnabledChanged(true);
    EXPECT_EQ(box.log, (Texts{"SetFocus", "EnableWindow(FALSE)", "EnableWindow(TRUE)"}));
}

TEST_P(ComboChoice, OpeningAndClosingWithoutAChangeFiresNothingAndDropDownTakesTheFocus) {
    box.dropped = true;
    ctrl->OnCommand(kiv::kCbnDropDown);
    box.dropped = false;
    ctrl->OnCommand(kiv::kCbnCloseUp);
    EXPECT_TRUE(site.events.empty());
    EXPECT_EQ(site.focusRequests, 1);
}

TEST_P(ComboChoice, SelEndOkWhileDroppedWaitsForTheCloseUp) {
    box.dropped = true;
    box.selection = GetParam().row;
    ctrl->OnCommand(kiv::kCbnSelEndOk);
    EXPECT_TRUE(site.events.empty());
    EXPECT_TRUE(ctrl->droppedDuringChange());
    box.dropped = false;
    ctrl->OnCommand(kiv::kCbnCloseUp);
    EXPECT_EQ(events(), (Texts{std::string("SelAndCloseUp") + GetParam().rowEvent}));
    EXPECT_FALSE(ctrl->droppedDuringChange());
}

INSTANTIATE_TEST_SUITE_P(EveryCombo, ComboChoice, ::testing::ValuesIn(kCombos), nameOf);
INSTANTIATE_TEST_SUITE_P(EveryCombo, ChildFrame, ::testing::ValuesIn(kCombos), nameOf);
INSTANTIATE_TEST_SUITE_P(TheList, ChildFrame, ::testing::Values(kList), nameOf);
