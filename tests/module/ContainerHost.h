// Windows test support shared by the container tests of every control: calling members by name,
// argument helpers, a control hosted in ATL's AtlAxWin with its child list and event sink, a 32-bit
// memory canvas for IViewObject::Draw and screen grabs, stream persistence helpers and a
// property-notify sink.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <cstdint>
#include <string>
#include <vector>

#include "ContainerSupport.h"
#include "KivCom.h"

// Calls a member by name through IDispatch (KivInvokeByName); `args` in declaration order, kept by the caller.
HRESULT call(IDispatch* d, const wchar_t* name, WORD flags, std::vector<VARIANT> args, VARIANT* result);
VARIANT shortArg(short v);
VARIANT longArg(long v);
VARIANT boolArg(bool v);
VARIANT doubleArg(double v);
// A BSTR argument; the caller frees it with VariantClear (or keeps it in a KivVariant).
VARIANT textArg(const wchar_t* text);
// The result of a member as a long (-99999 when the call fails) or as text ("<error>").
long longResult(IDispatch* d, const wchar_t* name, std::vector<VARIANT> args = {});
std::string textResult(IDispatch* d, const wchar_t* name, std::vector<VARIANT> args = {});
// Sets a property by name.
HRESULT put(IDispatch* d, const wchar_t* name, VARIANT value);

// The page among `window`'s descendants that holds a placeholder ("TODO: Place controls ..."): each
// of its child windows as "Class: text", so that a test sees the placeholder and anything else the
// page holds (an input control would show up beside it).
std::vector<std::string> placeholderPage(HWND window);
// What a placeholder page of `control` ("KivColorControl", ...) holds: one static text, nothing else.
std::vector<std::string> expectedPlaceholderPage(const std::string& control);

// What a property frame showed: its tab count, its first tab's title and the page's windows.
struct PropertyFrameSeen {
    HRESULT result = E_FAIL;  // OleCreatePropertyFrame's
    bool answered = false;    // the frame appeared and was closed with the button
    int tabs = 0;
    std::wstring tab;
    std::vector<std::string> page;
};
// A property page object on its own, activated in `parent`: it is titled "General", wider than high,
// holds the placeholder naming `control` ("KivColorControl", ...) and nothing else, is never dirty,
// and applies and deactivates.
void expectPlaceholderPageObject(IPropertyPage* page, HWND parent, const std::string& control);

// Opens the property frame a container opens for `object` with `pages` (ISpecifyPropertyPages),
// reads it, and closes it with `button` (IDOK or IDCANCEL).
PropertyFrameSeen showPropertyFrame(HWND owner, IUnknown* object, const CAUUID& pages, int button);

// An active control's owned child window (a combo box or a list box), whose messages the helpers
// pick, and what a user does with it: the same in any container.
class ControlChild {
public:
    // The child `childId` of the control's own window (none when either is missing or `childId` is 0).
    void find(HWND controlWindow, int childId);
    bool isListBox() const { return m_listBox; }
    int selection() const;
    int count() const;
    std::string text(int i) const;
    LRESULT itemData(int i) const;
    // A key press on the focused child.
    void key(UINT vk);
    // A mouse choice: for a combo box open the list with a click and click item `index` in it; for a
    // list box click item `index`.
    void mousePick(int index);

    HWND child = nullptr;

private:
    bool m_listBox = false;
};

// A control's events (its source interface `events`) advised to a sink that records them, as a
// container connects them; unadvised on destruction.
class EventConnection {
public:
    EventConnection() = default;
    ~EventConnection() { disconnect(); }
    EventConnection(const EventConnection&) = delete;
    EventConnection& operator=(const EventConnection&) = delete;

    // Advises a new sink on the control's connection point; false when it cannot.
    bool connect(IUnknown* control, const IID& events);
    void disconnect();
    std::vector<std::string>& events() { return sink->events; }

    KivComPtr<IConnectionPoint> point;
    EventSink* sink = nullptr;
    DWORD cookie = 0;
};

// A top-level window hosting a control through AtlAxWin, by ProgID, with its events advised to a
// sink. `child` is the control's owned child window (`childId`; 0 for a control without one).
class Hosted : public ControlChild {
public:
    Hosted(const wchar_t* progId, const IID& events, int childId, int width = 200, int height = 21);
    ~Hosted();
    Hosted(const Hosted&) = delete;
    Hosted& operator=(const Hosted&) = delete;

    // The control was created and its window is in place.
    bool active() const { return control && controlWindow != nullptr; }
    std::vector<std::string>& events() { return connection.events(); }

    HMODULE atl = nullptr;
    HWND frame = nullptr, host = nullptr, controlWindow = nullptr;
    KivComPtr<IUnknown> control;
    KivComPtr<IDispatch> dispatch;
    EventConnection connection;
};

// A 32-bit top-down DIB selected into a memory DC.
struct Canvas {
    Canvas(int w, int h);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    COLORREF pixel(int x, int y) const;
    void fill(COLORREF color);
    int width, height;
    HDC dc;
    HBITMAP bitmap;
    HGDIOBJ old;
    DWORD* bits = nullptr;
};

// The design-mode face drawn directly with GDI on a fresh canvas: white, and `text` centred on the
// baseline in the DC's own font. A control's IViewObject::Draw in design mode must match it.
void drawExpectedDesignFace(Canvas& canvas, const wchar_t* text);
// The layer's picture drawn directly with GDI: the stock white brush over the canvas, then the
// inscribed ellipse with a fresh DC's pen and brush (black, white).
void drawExpectedEllipse(Canvas& canvas);
// A control's face in design mode drawn directly with GDI: its name (`designText`) on white, or, for
// the layer (nullptr), its picture.
void drawExpectedDesignModeFace(Canvas& canvas, const wchar_t* designText);
// A control's face in user mode drawn directly with GDI: the list-based controls and the hatch
// preview without a pattern fill it with their back colour `back`; the layer (nullptr) draws its
// picture.
void drawExpectedUserModeFace(Canvas& canvas, const wchar_t* designText, COLORREF back);
// The control drawn on the whole canvas through its IViewObject::Draw; the call's result.
HRESULT drawThroughViewObject(IUnknown* control, Canvas& canvas);
// The number of pixels in which two canvases of one size differ.
int differingPixels(const Canvas& a, const Canvas& b);
// The number of pixels in which the control, drawn through its view object on a canvas of
// `expected`'s size first filled with another colour, differs from `expected`; -1 when it cannot be
// drawn.
int viewDiffersFrom(IUnknown* control, const Canvas& expected);

// IPersistStreamInit of `control`: its saved bytes, and loading bytes.
std::vector<BYTE> saveStream(IUnknown* control);
HRESULT loadStream(IUnknown* control, const std::vector<BYTE>& bytes);
// The stock Enabled property of a control.
bool enabledOf(IDispatch* d);
// A new control of `clsid` (no site, no window).
KivComPtr<IDispatch> newControl(const CLSID& clsid);

// The module as this process has loaded it: whether it is loaded, and its DllCanUnloadNow (S_OK when
// it is not loaded at all; E_FAIL when the export is missing).
bool moduleLoaded();
HRESULT canUnloadNow();

// The screen's dots per inch along one axis (LOGPIXELSX or LOGPIXELSY).
int screenLogPixels(int index);
// What a combo box of the controls' style reads back for a selection-field height set on it (the
// platform may add its own padding: Wine adds 2).
LRESULT comboFieldReadBack(HWND parent, int field);

// The client area of a window on screen, as RGB bytes.
std::vector<std::uint8_t> grab(HWND window, int& w, int& h);
COLORREF at(const std::vector<std::uint8_t>& rgb, int w, int x, int y);

// Records IPropertyNotifySink::OnChanged calls.
class NotifySink final : public IPropertyNotifySink {
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override;
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }  // lives on the test's stack
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP OnChanged(DISPID id) override {
        changed.push_back(id);
        return S_OK;
    }
    STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }
    std::vector<DISPID> changed;
};

// COM for one test, and the module released at the end of it.
class ComTest : public ::testing::Test {
protected:
    void SetUp() override { CoInitialize(nullptr); }
    void TearDown() override {
        CoFreeUnusedLibraries();
        CoUninitialize();
    }
};
