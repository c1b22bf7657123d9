// A control over the in-memory seams: the child (FakeComboBox), the site (RecordingSite), the screen
// at 96 dpi with a real combo box's metrics, and the notification sequences a real combo box sends
// for a mouse choice in its dropped list and for a keyboard choice with the list closed.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CKivDpi.h"
#include "FakeComboBox.h"
#include "KivChildControl.h"
#include "RecordingSite.h"

class ControlFixture : public ::testing::Test {
protected:
    void SetUp() override {
        CKivDpi::setDpiForTesting(96);
        CKivDpi::setComboBoxMetricsForTesting(4, 13);
    }
    void TearDown() override { CKivDpi::resetForTesting(); }

    // Dropped list: open, move to `index`, click (SELCHANGE, SELENDOK while dropped), close.
    void mousePick(KivChildControl& control, int index) {
        box.dropped = true;
        control.OnCommand(kiv::kCbnDropDown);
        box.selection = index;
        control.OnCommand(kiv::kCbnSelChange);
        control.OnCommand(kiv::kCbnSelEndOk);
        box.dropped = false;
        control.OnCommand(kiv::kCbnCloseUp);
    }
    // Closed list: an arrow key changes the selection and confirms it at once.
    void keyPick(KivChildControl& control, int index) {
        box.selection = index;
        control.OnCommand(kiv::kCbnSelChange);
        control.OnCommand(kiv::kCbnSelEndOk);
    }
    std::vector<std::string> events() const { return site.eventSummaries(); }

    FakeComboBox box;
    RecordingSite site;
};

using Texts = std::vector<std::string>;
