// The one rule of every drop-down combo's notifications, in the order Win32 sends them and in the
// order Wine's combo box sends them; the events each control fires with it are tested with the
// control.
#include <gtest/gtest.h>

#include "FakeComboBox.h"
#include "KivDropDownChoice.h"
#include "RecordingSite.h"

namespace {
using Events = std::vector<std::string>;

// One notification as the combo sends it: its code and whether the list is dropped at that moment.
struct Sent {
    int code;
    bool dropped;
};

class DropDownChoice : public ::testing::Test {
protected:
    // Plays the notifications and returns the events fired, by name, with "Focus" for each time the
    // control was given the focus.
    Events play(const std::vector<Sent>& sequence) {
        Events out;
        for (const Sent& sent : sequence) {
            box.dropped = sent.dropped;
            const int focusBefore = site.focusRequests;
            choice.notify(sent.code, box, site, [&](int event) {
                out.push_back(event == KivDropDownChoice::SelChange ? "SelChange" : "SelAndCloseUp");
            });
            if (site.focusRequests != focusBefore) out.push_back("Focus");
        }
        return out;
    }

    FakeComboBox box;
    RecordingSite site;
    KivDropDownChoice choice;
};

constexpr int kSelChange = kiv::kCbnSelChange, kDropDown = kiv::kCbnDropDown, kCloseUp = kiv::kCbnCloseUp,
              kSelEndOk = kiv::kCbnSelEndOk;
constexpr int kSelEndCancel = 10;  // CBN_SELENDCANCEL: no rule of its own
}  // namespace

TEST_F(DropDownChoice, Win32MouseChoiceInTheDroppedList) {
    EXPECT_EQ(play({{kDropDown, true}, {kSelChange, true}, {kSelEndOk, true}, {kCloseUp, false}}),
              (Events{"Focus", "SelChange", "SelAndCloseUp"}));
    EXPECT_FALSE(choice.droppedDuringChange());
}

TEST_F(DropDownChoice, Win32KeyboardChoicesWhileClosedFireBothEachTime) {
    EXPECT_EQ(play({{kSelChange, false}, {kSelEndOk, false}, {kSelChange, false}, {kSelEndOk, false}}),
              (Events{"SelChange", "SelAndCloseUp", "SelChange", "SelAndCloseUp"}));
}

TEST_F(DropDownChoice, Win32KeyboardChoiceInsideTheDroppedListReportsAtTheCloseUp) {
    EXPECT_EQ(play({{kDropDown, true}, {kSelChange, true}, {kSelChange, true}, {kSelEndOk, true}}),
              (Events{"Focus", "SelChange", "SelChange"}));
    EXPECT_TRUE(choice.droppedDuringChange());  // waiting for the close-up
    EXPECT_EQ(play({{kCloseUp, false}}), (Events{"SelAndCloseUp"}));
    EXPECT_FALSE(choice.droppedDuringChange());
}

TEST_F(DropDownChoice, OpeningAndClosingWithoutAChangeFiresNothing) {
    EXPECT_EQ(play({{kDropDown, true}, {kSelEndCancel, true}, {kCloseUp, false}}), (Events{"Focus"}));
    EXPECT_EQ(play({{kCloseUp, false}}), Events{});  // a close-up after a reported choice: nothing again
}

TEST_F(DropDownChoice, WineMouseClickSendsTheCloseUpBeforeTheChange) {
    // Wine: SELENDOK while dropped, CLOSEUP, then SELCHANGE with the list closed.
    EXPECT_EQ(play({{kDropDown, true}, {kSelEndOk, true}, {kCloseUp, false}, {kSelChange, false}}),
              (Events{"Focus", "SelAndCloseUp", "SelChange"}));
    EXPECT_FALSE(choice.droppedDuringChange());
}

TEST_F(DropDownChoice, WineKeyboardChoiceWhileClosedConfirmsBeforeTheChange) {
    // Wine: SELENDOK and CLOSEUP with the list closed, then SELCHANGE.
    EXPECT_EQ(play({{kSelEndOk, false}, {kCloseUp, false}, {kSelChange, false}}), (Events{"SelAndCloseUp", "SelChange"}));
}

TEST_F(DropDownChoice, AChangeWhileDroppedIsReportedOnceAtTheCloseUpEvenWithoutAConfirmation) {
    // A change made in the dropped list, then the list closed by a click elsewhere (no SELENDOK): the
    // close-up reports it, and only once.
    EXPECT_EQ(play({{kDropDown, true}, {kSelChange, true}, {kCloseUp, false}, {kCloseUp, false}}),
              (Events{"Focus", "SelChange", "SelAndCloseUp"}));
}
