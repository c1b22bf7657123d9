// IKivControlSite: what a control's portable behaviour asks of its frame: events to the
// container, the "modified" flag, and the focus. Portable. The ActiveX frame implements it (events
// go to every advised sink); tests record the calls (tests/support/RecordingSite).
#pragma once

#include <vector>

#include "KivString.h"

// One event argument: a long or a string (the events of this module carry nothing else).
struct KivEventArg {
    enum class Kind { Long, String } kind = Kind::Long;
    long longValue = 0;
    KivString stringValue;
    static KivEventArg ofLong(long v) { return KivEventArg{Kind::Long, v, KivString()}; }
    static KivEventArg ofString(const KivString& s) { return KivEventArg{Kind::String, 0, s}; }
};

class IKivControlSite {
public:
    virtual ~IKivControlSite() = default;
    virtual void fireEvent(int dispid, const std::vector<KivEventArg>& args) = 0;  // COleControl::FireEvent
    virtual void setModifiedFlag(bool modified) = 0;                                // SetModifiedFlag
    virtual void setFocus() = 0;                                                    // COleControl::SetFocus
    // The control's own window repainted at once (RedrawWindow with RDW_INVALIDATE | RDW_ERASE |
    // RDW_UPDATENOW), and a windowless view told of the change.
    virtual void redraw() = 0;
};

// A site for a control that runs without a container (a tool that loads or draws with the controls'
// own code, a benchmark): events, the modified flag, focus and redraws go nowhere.
class KivNullControlSite : public IKivControlSite {
public:
    void fireEvent(int, const std::vector<KivEventArg>&) override {}
    void setModifiedFlag(bool) override {}
    void setFocus() override {}
    void redraw() override {}
};
