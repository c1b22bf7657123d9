// The controls at the screen's scale: run at 96, 144 and 192 dpi (Wine reads LogPixels from the
// prefix's registry; the test command sets it for each run and KIV_EXPECT_DPI says which). The
// module's scale values, the colour and linetype combos' selection field and item heights, and the
// linetype samples' pens read back from the screen: the combo's as wide as the scale unit, the
// list's one pixel at every scale.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "CKivDpi.h"
#include "ContainerHost.h"
#include "ControlCases.h"

namespace {

int expectedDpi() {
    const char* text = std::getenv("KIV_EXPECT_DPI");
    return text != nullptr ? std::atoi(text) : 96;
}

const ControlCase& caseNamed(const std::string& name) {
    for (const ControlCase& c : kCases)
        if (name == c.name) return c;
    return kCases[0];
}

// The longest run of black pixels down one column of a window's client area.
int blackRunDown(HWND window, int x) {
    int w = 0, h = 0;
    const std::vector<std::uint8_t> rgb = grab(window, w, h);
    int best = 0, run = 0;
    for (int y = 0; y < h; ++y) {
        run = at(rgb, w, x, y) == RGB(0, 0, 0) ? run + 1 : 0;
        if (run > best) best = run;
    }
    return best;
}

using Scale = ComTest;

}  // namespace

TEST_F(Scale, TheScreenAndTheScaleValuesAreThoseOfTheDpi) {
    const int dpi = expectedDpi();
    EXPECT_EQ(screenLogPixels(LOGPIXELSY), dpi);
    EXPECT_EQ(CKivDpi::getDpi(), dpi);
    EXPECT_EQ(CKivDpi::getUnit(), std::max(1, MulDiv(1, dpi, 96)));
    EXPECT_EQ(CKivDpi::scale(140), MulDiv(140, dpi, 96));
    // The owner-drawn combo's metrics grow with the font.
    if (dpi > 96) {
        EXPECT_GT(CKivDpi::getDefaultGuiFontComboBoxItemHeight(), 13);
    }
}

TEST_F(Scale, TheColourAndLinetypeCombosTakeTheFieldHeightOfTheirWindowAndTheScaledItemHeight) {
    const int height = MulDiv(21, expectedDpi(), 96);  // a dialog's combo row, scaled
    for (const char* name : {"Colour", "Linetype"}) {
        SCOPED_TRACE(name);
        const ControlCase& c = caseNamed(name);
        Hosted h(c.progId, guid(c.events), c.childId, 220, height);
        ASSERT_NE(h.child, nullptr);
        // The field: the control window's height less the owner-drawn combo's own frame, measured at
        // this dpi.
        RECT client{};
        GetClientRect(h.controlWindow, &client);
        EXPECT_EQ(SendMessageW(h.child, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0),
                  comboFieldReadBack(h.frame, client.bottom - CKivDpi::getOwnerDrawComboBoxHeightDiff()));
        if (std::string(name) == "Colour") {
            EXPECT_EQ(SendMessageW(h.child, CB_GETITEMHEIGHT, 0, 0), CKivDpi::getDefaultGuiFontComboBoxItemHeight());
        }
        // The window's own height on screen holds the field and its border.
        RECT r{};
        GetWindowRect(h.child, &r);
        EXPECT_GE(r.bottom - r.top, client.bottom - CKivDpi::getOwnerDrawComboBoxHeightDiff());
        std::printf("%s at %d dpi: window %d, field %d, items %d, combo on screen %ld\n", name, expectedDpi(),
                    static_cast<int>(client.bottom),
                    static_cast<int>(SendMessageW(h.child, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0)),
                    static_cast<int>(SendMessageW(h.child, CB_GETITEMHEIGHT, 0, 0)), r.bottom - r.top);
    }
}

TEST_F(Scale, TheComboSamplePenIsTheScaleUnitWideAndTheListsIsOnePixel) {
    const int height = MulDiv(21, expectedDpi(), 96);
    for (const char* name : {"Linetype", "LinetypeList"}) {
        SCOPED_TRACE(name);
        const ControlCase& c = caseNamed(name);
        const bool list = std::string(name) == "LinetypeList";
        Hosted h(c.progId, guid(c.events), c.childId, 220, list ? 120 : height);
        ASSERT_NE(h.child, nullptr);
        // A long dash: the sample is one black line along the middle of the row's left half.
        KivVariant lineName, definition;
        lineName.v = textArg(L"KIVSCALE");
        definition.v = textArg(L"A,500");
        ASSERT_EQ(call(h.dispatch.get(), L"DefineLinetype", DISPATCH_METHOD, {lineName.v, definition.v}, nullptr), S_OK);
        call(h.dispatch.get(), L"SelectItem", DISPATCH_METHOD, {lineName.v}, nullptr);
        RedrawWindow(h.child, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        pumpMessages(100);
        EXPECT_EQ(blackRunDown(h.child, 40), list ? 1 : CKivDpi::getUnit());
    }
}
