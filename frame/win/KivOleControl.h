// KivOleControl: the frame's ActiveX control object, our COleControl. Win32 side.
// It implements the COM interfaces containers need, windowed in-place activation with one control
// window, events through connection points, persistence compatible with MFC's layout, and the stock
// properties. A control family gives it its identity (KivControlClass) and its behaviour
// (KivControlBehaviour), which the frame owns as a member: the frame destroys its window while the
// behaviour still exists, so the behaviour's onDestroy always runs, however the container lets go.
//
// One class, one file per group of interfaces a container sees:
//   KivOleControl.cpp   the object: identity, QueryInterface table, the control window
//   KivOleObject.cpp    IOleObject, IOleInPlaceObject, IOleInPlaceActiveObject, IOleControl
//   KivOlePersist.cpp   IPersistStreamInit, IPersistStorage ("Contents"), IPersistMemory,
//                       IPersistPropertyBag
//   KivOleView.cpp      IViewObject, IViewObject2, IViewObjectEx and the one paint path
//   KivOleEvents.cpp    IConnectionPointContainer (events, IPropertyNotifySink), IProvideClassInfo2
//   KivOleDispatch.cpp  IDispatch, stock and ambient properties, ISpecifyPropertyPages
// The seams over Win32 objects are in KivWin32Seams.h. IQuickActivate is left out (containers fall
// back to the interfaces above).
#pragma once

#include <ocidl.h>
#include <olectl.h>

#include <memory>
#include <new>
#include <vector>

#include "IKivChildList.h"
#include "IKivControlSite.h"
#include "IKivDC.h"
#include "KivCom.h"
#include "KivControlCore.h"
#include "KivDispatch.h"
#include "KivWin32Seams.h"

// What a control gives the frame.
struct KivControlClass {
    const CLSID* clsid;
    const KivDispInterface* dispatch;
    const KivDispInterface* events;
    const CLSID* propertyPage;
    UINT userTypeNameId;
    DWORD miscStatus;
    DWORD stockMask;  // stock properties the control has: BackColor 0x01, ForeColor 0x08, Enabled 0x40
};

namespace kivstock {
constexpr DWORD kBackColor = 0x01;
constexpr DWORD kForeColor = 0x08;
constexpr DWORD kEnabled = 0x40;
}  // namespace kivstock

class KivOleControl;

// What a control family gives the frame besides its identity: the core its dispatch table acts on,
// and the hooks of its window, its painting and its own persisted properties.
class KivControlBehaviour {
public:
    virtual ~KivControlBehaviour() = default;

    // What the dispatch table's members act on (null: the control has no member of its own).
    virtual KivControlCore* core() = 0;

    virtual void onCreate(HWND window, const RECT& client) { (void)window, (void)client; }  // the child
    virtual void onDestroy() {}  // the child goes with the window
    virtual void onSize(int width, int height) { (void)width, (void)height; }
    virtual void onSetFocus() {}
    virtual void onEnabledChanged(bool enabled) { (void)enabled; }
    virtual void onCommand(WPARAM wParam, LPARAM lParam) { (void)wParam, (void)lParam; }
    virtual bool onDrawItem(const DRAWITEMSTRUCT& item) { (void)item; return false; }
    virtual bool onMeasureItem(MEASUREITEMSTRUCT& item) { (void)item; return false; }
    // OnDraw: the design face or the user-mode picture.
    virtual void onDraw(IKivDC& dc, const KivRect& bounds, bool userMode) = 0;
    // The child window's seam, or null for a control that paints itself whole.
    virtual IKivChildList* childList() { return nullptr; }

    // The control's own persisted properties, exchanged after the stock ones (MFC's order): a fixed
    // number of bytes in a stream, named values in a property bag, defaults on a reset.
    virtual ULONG customStreamSize() const { return 0; }
    virtual void saveCustomToStream(unsigned char* out) const { (void)out; }
    virtual void loadCustomFromStream(const unsigned char* in) { (void)in; }
    virtual HRESULT saveCustomToBag(IPropertyBag* bag) { (void)bag; return S_OK; }
    virtual void loadCustomFromBag(IPropertyBag* bag, IErrorLog* log) { (void)bag, (void)log; }
    virtual void resetCustomProperties() {}
};

// Makes a family's behaviour for its frame (the frame is its control site).
using KivMakeBehaviour = std::unique_ptr<KivControlBehaviour> (*)(KivOleControl& frame);

// One connection point of a control (events, or IPropertyNotifySink). Lives inside the control.
class KivConnectionPoint final : public IConnectionPoint {
public:
    KivConnectionPoint(KivOleControl& owner, const IID& iid) : m_owner(owner), m_iid(iid) {}
    ~KivConnectionPoint();

    STDMETHODIMP QueryInterface(REFIID riid, void** out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetConnectionInterface(IID* iid) override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections** e) override;

    // Calls `call` with each advised sink, in advise order, on a snapshot that holds a reference to
    // each: a sink unadvised (even released) by another sink's handler is still alive when its turn
    // comes. Without memory for the snapshot nobody is called. No exception leaves it.
    template <class Call>
    void forEachSink(Call&& call) const noexcept;
    void clear();

private:
    struct Connection {
        DWORD cookie;
        IUnknown* sink;
    };
    KivOleControl& m_owner;
    IID m_iid;
    std::vector<Connection> m_connections;
    DWORD m_nextCookie = 1;
};

class KivOleControl final : public IDispatch,
                      public IOleObject,
                      public IOleInPlaceObject,
                      public IOleInPlaceActiveObject,
                      public IOleControl,
                      public IProvideClassInfo2,
                      public IConnectionPointContainer,
                      public IPersistStreamInit,
                      public IPersistStorage,
                      public IPersistMemory,
                      public IPersistPropertyBag,
                      public ISpecifyPropertyPages,
                      public IViewObjectEx,
                      public IKivControlSite {
public:
    // The control of class `cls` with the behaviour `make` gives it.
    KivOleControl(const KivControlClass& cls, KivMakeBehaviour make);
    ~KivOleControl();
    KivOleControl(const KivOleControl&) = delete;
    KivOleControl& operator=(const KivOleControl&) = delete;

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    // IDispatch
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID lcid, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID riid, LPOLESTR* names, UINT count, LCID lcid, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID dispid, REFIID riid, LCID lcid, WORD flags, DISPPARAMS* params, VARIANT* result,
                        EXCEPINFO* excep, UINT* argErr) override;
    // IOleObject
    STDMETHODIMP SetClientSite(IOleClientSite* site) override;
    STDMETHODIMP GetClientSite(IOleClientSite** site) override;
    STDMETHODIMP SetHostNames(LPCOLESTR app, LPCOLESTR obj) override;
    STDMETHODIMP Close(DWORD saveOption) override;
    STDMETHODIMP SetMoniker(DWORD which, IMoniker* mk) override;
    STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** mk) override;
    STDMETHODIMP InitFromData(IDataObject* data, BOOL creation, DWORD reserved) override;
    STDMETHODIMP GetClipboardData(DWORD reserved, IDataObject** data) override;
    STDMETHODIMP DoVerb(LONG verb, LPMSG msg, IOleClientSite* site, LONG index, HWND parent, LPCRECT rect) override;
    STDMETHODIMP EnumVerbs(IEnumOLEVERB** e) override;
    STDMETHODIMP Update() override;
    STDMETHODIMP IsUpToDate() override;
    STDMETHODIMP GetUserClassID(CLSID* clsid) override;
    STDMETHODIMP GetUserType(DWORD form, LPOLESTR* name) override;
    STDMETHODIMP SetExtent(DWORD aspect, SIZEL* size) override;
    STDMETHODIMP GetExtent(DWORD aspect, SIZEL* size) override;
    STDMETHODIMP Advise(IAdviseSink* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumAdvise(IEnumSTATDATA** e) override;
    STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) override;
    STDMETHODIMP SetColorScheme(LOGPALETTE* pal) override;
    // IOleWindow, IOleInPlaceObject, IOleInPlaceActiveObject
    STDMETHODIMP GetWindow(HWND* hwnd) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
    STDMETHODIMP InPlaceDeactivate() override;
    STDMETHODIMP UIDeactivate() override;
    STDMETHODIMP SetObjectRects(LPCRECT pos, LPCRECT clip) override;
    STDMETHODIMP ReactivateAndUndo() override;
    STDMETHODIMP TranslateAccelerator(LPMSG msg) override;
    STDMETHODIMP OnFrameWindowActivate(BOOL activate) override;
    STDMETHODIMP OnDocWindowActivate(BOOL activate) override;
    STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) override;
    STDMETHODIMP EnableModeless(BOOL enable) override;
    // IOleControl
    STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
    STDMETHODIMP OnMnemonic(MSG* msg) override;
    STDMETHODIMP OnAmbientPropertyChange(DISPID dispid) override;
    STDMETHODIMP FreezeEvents(BOOL freeze) override;
    // IProvideClassInfo2
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override;
    // IConnectionPointContainer
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** e) override;
    STDMETHODIMP FindConnectionPoint(REFIID riid, IConnectionPoint** cp) override;
    // IPersist and its four kinds
    STDMETHODIMP GetClassID(CLSID* clsid) override;
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP Load(LPSTREAM stream) override;
    STDMETHODIMP Save(LPSTREAM stream, BOOL clearDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;
    STDMETHODIMP InitNew() override;
    STDMETHODIMP InitNew(IStorage* storage) override;
    STDMETHODIMP Load(IStorage* storage) override;
    STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoad) override;
    STDMETHODIMP SaveCompleted(IStorage* storage) override;
    STDMETHODIMP HandsOffStorage() override;
    STDMETHODIMP Load(LPVOID memory, ULONG size) override;
    STDMETHODIMP Save(LPVOID memory, BOOL clearDirty, ULONG size) override;
    STDMETHODIMP GetSizeMax(ULONG* size) override;
    STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
    STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;
    // ISpecifyPropertyPages
    STDMETHODIMP GetPages(CAUUID* pages) override;
    // IViewObject, IViewObject2, IViewObjectEx
    STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device, HDC targetDev, HDC draw,
                      LPCRECTL bounds, LPCRECTL wBounds, BOOL(STDMETHODCALLTYPE* cont)(ULONG_PTR), ULONG_PTR arg) override;
    STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device, HDC targetDev,
                             LOGPALETTE** colors) override;
    STDMETHODIMP Freeze(DWORD aspect, LONG index, void* aspectInfo, DWORD* freeze) override;
    STDMETHODIMP Unfreeze(DWORD freeze) override;
    STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL size) override;
    STDMETHODIMP GetRect(DWORD aspect, LPRECTL rect) override;
    STDMETHODIMP GetViewStatus(DWORD* status) override;
    STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT loc, LONG closeHint, DWORD* hit) override;
    STDMETHODIMP QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT loc, LONG closeHint, DWORD* hit) override;
    STDMETHODIMP GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, HDC targetDev,
                                  DVEXTENTINFO* info, LPSIZEL size) override;

    // IKivControlSite: what the control's behaviour asks of the frame.
    void fireEvent(int dispid, const std::vector<KivEventArg>& args) override;
    void setModifiedFlag(bool modified) override { m_dirty = modified; }
    void setFocus() override;
    void redraw() override;

    // Stock properties and ambients.
    bool enabled() const { return m_enabled; }
    void setEnabled(bool enabled);
    OLE_COLOR foreColor() const { return m_foreColor; }
    OLE_COLOR backColor() const { return m_backColor; }
    void setForeColor(OLE_COLOR color);
    void setBackColor(OLE_COLOR color);
    // COleControl::TranslateColor: an OLE_COLOR (a system colour included) as a colour value;
    // black when it names none.
    static KivColor translateColor(OLE_COLOR color);
    // An ambient colour of the container as an OLE_COLOR, or `fallback` when it has none.
    OLE_COLOR ambientColor(DISPID dispid, OLE_COLOR fallback);
    bool ambientUserMode();
    KivColor ambientBackColor();
    HWND hwnd() const { return m_hwnd; }
    const KivControlClass& controlClass() const { return m_class; }

private:
    static LRESULT CALLBACK windowProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
    // Destroys the control window now (its behaviour's onDestroy runs).
    void destroyWindow();
    LRESULT onMessage(UINT msg, WPARAM wParam, LPARAM lParam);
    void paint(HDC dc, const KivRect& bounds);
    KivRect clientRect() const;
    HRESULT inPlaceActivate(LONG verb);
    // The in-place site's frame and document windows (and the control's position).
    HRESULT windowContext(KivComPtr<IOleInPlaceFrame>& frame, KivComPtr<IOleInPlaceUIWindow>& document, RECT* pos = nullptr);
    void notifyPropertyChanged(DISPID dispid);
    // A stock colour stored, the control repainted and marked modified, the sinks told.
    void setStockColor(KivColor& stored, OLE_COLOR color, DISPID dispid);
    void viewChanged();
    HRESULT ambient(DISPID dispid, VARIANT& value);

    // Persistence in MFC's layout.
    HRESULT loadFromStream(IStream* stream);
    HRESULT saveToStream(IStream* stream);
    ULONG persistedSize() const;

    KivRefCount m_refs;
    const KivControlClass& m_class;
    KivConnectionPoint m_eventsPoint;
    KivConnectionPoint m_propertyNotifyPoint;
    KivComPtr<IOleClientSite> m_clientSite;
    KivComPtr<IOleInPlaceSite> m_inPlaceSite;
    KivComPtr<IOleAdviseHolder> m_adviseHolder;
    KivComPtr<IAdviseSink> m_viewSink;
    DWORD m_viewAspects = 0;
    DWORD m_viewFlags = 0;
    HWND m_hwnd = nullptr;
    bool m_uiActive = false;
    bool m_dirty = false;
    bool m_enabled = true;
    KivColor m_foreColor = 0x80000000 | COLOR_WINDOWTEXT;  // OLE_COLOR of a system colour
    KivColor m_backColor = 0x80000000 | COLOR_WINDOW;
    SIZEL m_extent{2646, 1323};  // HIMETRIC, 100 x 50 pixels at 96 dpi
    int m_freezeEvents = 0;
    std::unique_ptr<KivControlBehaviour> m_behaviour;  // last: made once the frame is whole
};

template <class Call>
void KivConnectionPoint::forEachSink(Call&& call) const noexcept {
    std::vector<KivComPtr<IUnknown>> snapshot;
    if (FAILED(KivNoThrow([&] {
            snapshot.reserve(m_connections.size());
            return S_OK;
        })))
        return;
    for (const Connection& c : m_connections) snapshot.emplace_back(c.sink);  // reserved: cannot throw
    for (const KivComPtr<IUnknown>& sink : snapshot) call(sink.get());
}

// Called when the module is freed: its window procedure goes with it.
void KivUnregisterControlWindowClass();

// Creates a control of class `cls` with the behaviour `make` gives it and hands out the interface
// asked for (the creation reference is released: a failed QueryInterface deletes the object again).
HRESULT KivCreateControl(const KivControlClass& cls, KivMakeBehaviour make, REFIID riid, void** out);
