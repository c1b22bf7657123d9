// A colour control over the in-memory seams, with helpers that play the notification sequences a
// real combo box sends for a mouse choice (dropped) and a keyboard choice (closed).
#pragma once

#include <gtest/gtest.h>

#include "CKivColorCtrl.h"
#include "CKivDpi.h"
#include "FakeComboBox.h"
#include "RecordingSite.h"

class ColourFixture : public ::testing::Test {
protected:
    void SetUp() override {
        CKivDpi::setDpiForTesting(96);
        CKivDpi::setComboBoxMetricsForTesting(4, 13);
    }
    void TearDown() override { CKivDpi::resetForTesting(); }

    void create(int height = 21) { ctrl.OnCreate(box, height); }

    // Dropped list: open, move to `index`, click (SELCHANGE, SELENDOK while dropped), close.
    void mousePick(int index) {
        box.dropped = true;
        ctrl.OnCommand(kiv::kCbnDropDown);
        box.selection = index;
        ctrl.OnCommand(kiv::kCbnSelChange);
        ctrl.OnCommand(kiv::kCbnSelEndOk);
        box.dropped = false;
        ctrl.OnCommand(kiv::kCbnCloseUp);
    }
    // Closed list: an arrow key changes the selection and confirms it at once.
    void keyPick(int index) {
        box.selection = index;
        ctrl.OnCommand(kiv::kCbnSelChange);
        ctrl.OnCommand(kiv::kCbnSelEndOk);
    }
    std::vector<std::string> events() const { return site.eventSummaries(); }

    FakeComboBox box;
    RecordingSite site;
    ScriptedColorDialog dialog;
    CKivColorCtrl ctrl{site, dialog};
};

using Texts = std::vector<std::string>;
