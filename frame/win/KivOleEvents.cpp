// KivOleControl, the interfaces of its events: the connection points (the control's events and
// IPropertyNotifySink), IConnectionPointContainer, IProvideClassInfo2, and firing. Win32 side.
#include "KivOleControl.h"

#include <algorithm>

#include "KivOleControlInternal.h"

namespace {

// A fixed list of connection points, enumerated.
class KivEnumConnectionPoints final : public KivComObject<IEnumConnectionPoints, &IID_IEnumConnectionPoints> {
public:
    KivEnumConnectionPoints(IUnknown* owner, std::vector<IConnectionPoint*> points, ULONG position = 0)
        : m_owner(owner), m_points(std::move(points)), m_position(position) {}
    STDMETHODIMP Next(ULONG count, IConnectionPoint** out, ULONG* fetched) override {
        if (out == nullptr) return E_POINTER;
        ULONG n = 0;
        while (n < count && m_position < m_points.size()) {
            out[n] = m_points[m_position++];
            out[n]->AddRef();
            ++n;
        }
        if (fetched != nullptr) *fetched = n;
        return n == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) override {
        m_position = std::min<ULONG>(static_cast<ULONG>(m_points.size()), m_position + count);
        return m_position < m_points.size() ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override {
        m_position = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(IEnumConnectionPoints** out) override {
        if (out == nullptr) return E_POINTER;
        return create(m_owner.get(), m_points.data(), m_points.size(), m_position, out);
    }

    // A new enumerator of `count` points in `out`, or E_OUTOFMEMORY (the list is copied: no exception
    // leaves).
    static HRESULT create(IUnknown* owner, IConnectionPoint* const* points, std::size_t count, ULONG position,
                          IEnumConnectionPoints** out) {
        *out = nullptr;
        return KivNoThrow([&] {
            *out = new KivEnumConnectionPoints(owner, std::vector<IConnectionPoint*>(points, points + count), position);
            return S_OK;
        });
    }

private:
    KivComPtr<IUnknown> m_owner;  // keeps the control, and so its points, alive
    std::vector<IConnectionPoint*> m_points;
    ULONG m_position;
};

}  // namespace

// ---------------------------------------------------------------- connection points

KivConnectionPoint::~KivConnectionPoint() { clear(); }

STDMETHODIMP KivConnectionPoint::QueryInterface(REFIID riid, void** out) {
    static const KivInterfaceEntry table[] = {{&IID_IConnectionPoint, &kivCast<IConnectionPoint, KivConnectionPoint>},
                                              {nullptr, nullptr}};
    return KivQueryInterface(this, table, riid, out);
}
STDMETHODIMP_(ULONG) KivConnectionPoint::AddRef() { return m_owner.AddRef(); }
STDMETHODIMP_(ULONG) KivConnectionPoint::Release() { return m_owner.Release(); }

STDMETHODIMP KivConnectionPoint::GetConnectionInterface(IID* iid) {
    if (iid == nullptr) return E_POINTER;
    *iid = m_iid;
    return S_OK;
}

STDMETHODIMP KivConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr) return E_POINTER;
    *container = &m_owner;
    m_owner.AddRef();
    return S_OK;
}

STDMETHODIMP KivConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    *cookie = 0;
    IUnknown* itf = nullptr;
    if (FAILED(sink->QueryInterface(m_iid, reinterpret_cast<void**>(&itf))) || itf == nullptr) {
        // An event sink that only answers IDispatch still receives the events.
        if (IsEqualIID(m_iid, IID_IPropertyNotifySink) ||
            FAILED(sink->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&itf))) || itf == nullptr)
            return CONNECT_E_CANNOTCONNECT;
    }
    const HRESULT hr = KivNoThrow([&] {
        m_connections.push_back(Connection{m_nextCookie, itf});  // holds the reference QueryInterface gave
        return S_OK;
    });
    if (FAILED(hr)) {
        itf->Release();
        return hr;
    }
    *cookie = m_nextCookie++;
    return S_OK;
}

STDMETHODIMP KivConnectionPoint::Unadvise(DWORD cookie) {
    for (auto it = m_connections.begin(); it != m_connections.end(); ++it) {
        if (it->cookie == cookie) {
            IUnknown* sink = it->sink;
            m_connections.erase(it);
            sink->Release();
            return S_OK;
        }
    }
    return CONNECT_E_NOCONNECTION;
}

// Not implemented: no container this module serves enumerates connections.
STDMETHODIMP KivConnectionPoint::EnumConnections(IEnumConnections** e) {
    if (e != nullptr) *e = nullptr;
    return E_NOTIMPL;
}

void KivConnectionPoint::clear() {
    std::vector<Connection> connections;
    connections.swap(m_connections);
    for (const Connection& c : connections) c.sink->Release();
}

// ---------------------------------------------------------------- the control's side

void KivOleControl::fireEvent(int dispid, const std::vector<KivEventArg>& args) {
    if (m_freezeEvents > 0) return;  // the container froze events: they are dropped, as MFC does
    KivComPtr<IDispatch> keepAlive(this);
    std::vector<VARIANT> rgvarg(args.size());
    for (std::size_t i = 0; i < args.size(); ++i) {
        VARIANT& v = rgvarg[args.size() - 1 - i];  // last argument first
        VariantInit(&v);
        if (args[i].kind == KivEventArg::Kind::Long) {
            V_VT(&v) = VT_I4;
            V_I4(&v) = args[i].longValue;
        } else {
            V_VT(&v) = VT_BSTR;
            V_BSTR(&v) = SysAllocString(args[i].stringValue.getStringW());
        }
    }
    DISPPARAMS params{rgvarg.empty() ? nullptr : rgvarg.data(), nullptr, static_cast<UINT>(rgvarg.size()), 0};
    m_eventsPoint.forEachSink([&](IUnknown* sink) {
        static_cast<IDispatch*>(sink)->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr,
                                              nullptr, nullptr);
    });
    for (VARIANT& v : rgvarg) VariantClear(&v);
}

void KivOleControl::notifyPropertyChanged(DISPID dispid) {
    m_propertyNotifyPoint.forEachSink([&](IUnknown* sink) { static_cast<IPropertyNotifySink*>(sink)->OnChanged(dispid); });
}

// ---- IProvideClassInfo2

STDMETHODIMP KivOleControl::GetClassInfo(ITypeInfo** info) { return KivModuleTypeInfo(*m_class.clsid, info); }

STDMETHODIMP KivOleControl::GetGUID(DWORD kind, GUID* guid) {
    if (guid == nullptr) return E_POINTER;
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
    *guid = *m_class.events->iid;
    return S_OK;
}

// ---- IConnectionPointContainer

STDMETHODIMP KivOleControl::EnumConnectionPoints(IEnumConnectionPoints** e) {
    if (e == nullptr) return E_POINTER;
    IConnectionPoint* const points[] = {&m_eventsPoint, &m_propertyNotifyPoint};
    return KivEnumConnectionPoints::create(static_cast<IDispatch*>(this), points, 2, 0, e);
}

STDMETHODIMP KivOleControl::FindConnectionPoint(REFIID riid, IConnectionPoint** cp) {
    if (cp == nullptr) return E_POINTER;
    *cp = nullptr;
    if (IsEqualIID(riid, *m_class.events->iid)) *cp = &m_eventsPoint;
    else if (IsEqualIID(riid, IID_IPropertyNotifySink)) *cp = &m_propertyNotifyPoint;
    else return CONNECT_E_NOCONNECTION;
    (*cp)->AddRef();
    return S_OK;
}
