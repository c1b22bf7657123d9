// KivControlCore: the behaviour of one control, written once against the seams; what its dispatch
// table's members act on. Portable. The ActiveX frame owns one core per control object and hands it
// to the table's handlers, which reach their own class through it.
#pragma once

class KivControlCore {
public:
    KivControlCore() = default;
    virtual ~KivControlCore() = default;
    KivControlCore(const KivControlCore&) = delete;
    KivControlCore& operator=(const KivControlCore&) = delete;
};
