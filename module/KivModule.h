// The module's class table. Win32 side.
#pragma once

#include <ole2.h>

#include <vector>

struct KivFactoryEntry {
    const CLSID* clsid;
    const wchar_t* progId;
    UINT nameId;      // user type name (control) or registration name (page)
    UINT bitmapId;    // toolbox bitmap (controls)
    DWORD miscStatus; // controls
    bool isControl;
    HRESULT (*create)(REFIID riid, void** out);
};

// The twelve factories in the table's order.
const std::vector<KivFactoryEntry>& KivFactories();
const KivFactoryEntry* KivFindFactory(const CLSID& clsid);

HRESULT KivCreateColorControl(REFIID riid, void** out);
HRESULT KivCreateLineweightControl(REFIID riid, void** out);
HRESULT KivCreateLinetypeControl(REFIID riid, void** out);
HRESULT KivCreateLinetypeListControl(REFIID riid, void** out);
HRESULT KivCreateHatchControl(REFIID riid, void** out);
HRESULT KivCreateLayerControl(REFIID riid, void** out);
HRESULT KivCreatePropertyPage(UINT dialogId, REFIID riid, void** out);
