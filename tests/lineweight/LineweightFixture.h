// A lineweight control over the in-memory seams, with helpers that play the notification sequences a
// real combo box sends for a mouse choice (dropped) and a keyboard choice (closed).
#pragma once

#include <gtest/gtest.h>

#include "CKivDpi.h"
#include "CKivLineweightCtrl.h"
#include "FakeComboBox.h"
#include "RecordingSite.h"

class LineweightFixture : public ::testing::Test {
protected:
    void SetUp() override { CKivDpi::setDpiForTesting(96); }
    void TearDown() override { CKivDpi::resetForTesting(); }

    void create() { ctrl.OnCreate(box); }

    void mousePick(int index) {
        box.dropped = true;
        ctrl.OnCommand(kiv::kCbnDropDown);
        box.selection = index;
        ctrl.OnCommand(kiv::kCbnSelChange);
        ctrl.OnCommand(kiv::kCbnSelEndOk);
        box.dropped = false;
        ctrl.OnCommand(kiv::kCbnCloseUp);
    }
    void keyPick(int index) {
        box.selection = index;
        ctrl.OnCommand(kiv::kCbnSelChange);
        ctrl.OnCommand(kiv::kCbnSelEndOk);
    }
    std::vector<std::string> events() const { return site.eventSummaries(); }

    FakeComboBox box;
    RecordingSite site;
    CKivLineweightCtrl ctrl{site};
};

using Texts = std::vector<std::string>;
