// Test doubles: a control site that records events, the modified flag and focus requests, and a
// colour dialog whose answers the test scripts.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "KivPrinters.h"
#include "IKivColorDialog.h"
#include "IKivControlSite.h"

class RecordingSite : public IKivControlSite {
public:
    struct Event {
        int dispid;
        std::vector<KivEventArg> args;
        long longArg(std::size_t i) const { return args.at(i).longValue; }
        std::string stringArg(std::size_t i) const { return args.at(i).stringValue.toUtf8(); }
    };

    void fireEvent(int dispid, const std::vector<KivEventArg>& args) override { events.push_back(Event{dispid, args}); }
    void setModifiedFlag(bool modified) override {
        if (modified) ++modifiedCount;
        this->modified = modified;
    }
    void setFocus() override { ++focusRequests; }
    void redraw() override { ++redraws; }

    // "SelChange(3,7)"-style summaries of the events so far.
    std::vector<std::string> eventSummaries() const;

    std::vector<Event> events;
    int modifiedCount = 0;
    bool modified = false;
    int focusRequests = 0;
    int redraws = 0;
};

class ScriptedColorDialog : public IKivColorDialog {
public:
    struct Answer {
        bool confirm;
        KivColor color;
    };
    bool choose(KivColor initial, KivColor& chosen) override;
    void willConfirm(KivColor color) { answers.push_back(Answer{true, color}); }
    void willCancel() { answers.push_back(Answer{false, 0}); }

    std::deque<Answer> answers;  // an unscripted call cancels
    int shown = 0;
    std::vector<KivColor> initialColors;
};
