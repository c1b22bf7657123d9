// Dispinterfaces of the controls whose behaviour has not arrived yet: the type library describes the
// whole module from the start. No handlers: until a control's table moves beside its behaviour,
// nothing can call these members.
#include "KivGuids.h"
#include "KivLibrary.h"

namespace {

}  // namespace

#define KIV_ITF(var, name, iid, help, source, members) \
    const KivDispInterface var = {L## #name, &iid, help, source, members, static_cast<int>(sizeof members / sizeof members[0])}
#define KIV_EMPTY_ITF(var, name, iid, help, source) const KivDispInterface var = {L## #name, &iid, help, source, nullptr, 0}

KIV_EMPTY_ITF(g_DKivLayer, _DKivLayer, DIID__DKivLayer, L"Dispatch interface for KivLayerControl", false);
KIV_EMPTY_ITF(g_DKivLayerEvents, _DKivLayerEvents, DIID__DKivLayerEvents, L"Event interface for KivLayerControl", true);
