// A small OLE control container of our own: the site of one control in a parent window, as a host
// application's dialog provides it. It creates a control by class id or ProgID, gives it its client
// site first (the controls ask for it), initialises it new or from saved bytes, activates it in place
// in a rectangle of the parent, answers the ambient properties (UserMode, BackColor, ForeColor), moves
// it, saves it, and closes it, and records what the control asked its site for. Win32 side. The demo
// and the container tests use it.
#pragma once

#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <string>
#include <vector>

#include "KivCom.h"

class KivControlSite;

class KivControlHost {
public:
    KivControlHost(HWND parent, const RECT& rect);
    ~KivControlHost();
    KivControlHost(const KivControlHost&) = delete;
    KivControlHost& operator=(const KivControlHost&) = delete;

    // Creates the control and activates it; `saved` (a stream's bytes) instead of a new state.
    HRESULT create(const CLSID& clsid, const std::vector<BYTE>* saved = nullptr);
    HRESULT create(const wchar_t* progId, const std::vector<BYTE>* saved = nullptr);
    // Moves the control within the parent.
    void move(const RECT& rect);
    // The container's design mode (UserMode false) or run mode, and its colours (by default the
    // dialog's, as system colours): before `create` they are what the control finds when it starts;
    // after it, the control is told they changed.
    void setUserMode(bool userMode);
    void setAmbientColors(OLE_COLOR back, OLE_COLOR fore);
    // The control's saved state (IPersistStreamInit).
    std::vector<BYTE> save();
    // Deactivates, closes and releases the control.
    void close();

    // Every interface the control has asked its site for since `create`, in order: QueryInterface on
    // the client site (which is also the in-place frame it is given), and GetContainer as
    // IID_IOleContainer. Kept after `close`.
    const std::vector<IID>& askedOfItsSite() const { return m_asked; }

    IDispatch* dispatch() const { return m_dispatch.get(); }
    IUnknown* control() const { return m_object.get(); }
    HWND window() const;  // the control's own window, once active
    const RECT& rect() const { return m_rect; }

private:
    HWND m_parent;
    RECT m_rect;
    KivControlSite* m_site = nullptr;
    std::vector<IID> m_asked;
    bool m_userMode = true;
    OLE_COLOR m_backColor = 0x80000000 | COLOR_BTNFACE;
    OLE_COLOR m_foreColor = 0x80000000 | COLOR_BTNTEXT;
    KivComPtr<IOleObject> m_object;
    KivComPtr<IDispatch> m_dispatch;
};

// A control's saved state (IPersistStreamInit::Save, clearing its modified flag) as bytes; empty when
// it cannot be saved. And bytes as a stream at its start, to load from.
std::vector<BYTE> KivSaveToBytes(IUnknown* control);
KivComPtr<IStream> KivStreamOfBytes(const std::vector<BYTE>& bytes);

// Calls a member of a control by name (arguments in declaration order); the result, if any, in
// `result`. Property puts pass DISPATCH_PROPERTYPUT. KivCallByName frees the arguments afterwards;
// KivInvokeByName leaves them to the caller.
HRESULT KivCallByName(IDispatch* d, const wchar_t* name, WORD flags, std::vector<VARIANT> args, VARIANT* result = nullptr);
HRESULT KivInvokeByName(IDispatch* d, const wchar_t* name, WORD flags, const std::vector<VARIANT>& args,
                        VARIANT* result = nullptr);
// Processes this thread's pending messages for about `ms` milliseconds (a modal-free wait in which
// the controls paint and answer their windows).
void KivPumpMessages(DWORD ms);

VARIANT KivShort(short v);
VARIANT KivLong(long v);
VARIANT KivBool(bool v);
VARIANT KivDouble(double v);
VARIANT KivText(const std::wstring& text);  // a new BSTR: KivCallByName frees the arguments it is given
