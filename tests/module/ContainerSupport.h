// Windows test support for the container tests: an event sink, a client site with ambient
// properties, an in-memory property bag, message pumping, and a helper thread that answers a modal
// dialog (the colour dialog, the property frame) while the test's thread is inside it.
#pragma once

#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <atomic>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "KivCom.h"
#include "StrokeLog.h"

// Processes the thread's pending messages for about `ms` milliseconds.
void pumpMessages(DWORD ms = 50);

// Records the events it receives as "SelChange(3,7)".
class EventSink final : public KivRefCounted<KivDispatchWithoutTypes> {
public:
    explicit EventSink(const IID& events) : m_events(events) {}
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override;
    STDMETHODIMP Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*, UINT*) override;

    std::vector<std::string> events;

private:
    IID m_events;
};

// A client site whose ambient properties the test chooses (UserMode, BackColor, ForeColor).
class AmbientSite final : public KivRefCounted<IOleClientSite, KivDispatchWithoutTypes> {
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override;
    STDMETHODIMP SaveObject() override { return S_OK; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    STDMETHODIMP GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override;

    bool userMode = true;
    OLE_COLOR backColor = 0x00FFEEDD;
    OLE_COLOR foreColor = 0x00112233;
};

// A property bag in memory.
class MemoryPropertyBag final : public KivComObject<IPropertyBag, &IID_IPropertyBag> {
public:
    STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override;
    STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override;
    ~MemoryPropertyBag() override;

    std::map<std::wstring, VARIANT> values;
};

// The visible top-level windows of this process of `className` titled `title` (nullptr: any), in
// z-order.
std::vector<HWND> ownVisibleWindows(const wchar_t* className, const wchar_t* title);

// Waits on its own thread for a top-level window of `className` (nullptr: any) titled `title`
// (nullptr: any), then runs `answer` with it. Joined on destruction.
class DialogAnswerer {
public:
    DialogAnswerer(const wchar_t* className, const wchar_t* title, std::function<void(HWND)> answer, DWORD timeoutMs = 20000);
    ~DialogAnswerer();
    bool answered() const { return m_answered; }

private:
    // The flags before the thread: members are initialised in this order, and the thread reads them
    // from its first instruction.
    std::atomic<bool> m_answered{false};
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};

// The GDI objects alive in this process. Wine answers 0 to GetGuiResources: there a GDI handle is an
// index into the handle table in its low word, and the table answers GetObjectType for an index with
// a zero high word, so probing every index counts the live objects.
long gdiObjects();

// The MoveToEx and LineTo records of an enhanced metafile, in order: 'M' or 'L' and the point.
std::vector<RecordedStroke> metafileStrokes(HENHMETAFILE metafile);

// Text of a window.
std::wstring windowText(HWND hwnd);
std::string narrow(const std::wstring& w);
