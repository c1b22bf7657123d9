// KivOleControl, the interfaces of persistence: IPersistStreamInit, IPersistStorage, IPersistMemory
// and IPersistPropertyBag over one layout, MFC's property exchange. Win32 side.
#include "KivOleControl.h"

#include <cstring>

// ---- Persistence: MFC's property exchange layout (version, extent, stock mask, stock values).

STDMETHODIMP KivOleControl::GetClassID(CLSID* clsid) {
    if (clsid == nullptr) return E_POINTER;
    *clsid = *m_class.clsid;
    return S_OK;
}

STDMETHODIMP KivOleControl::IsDirty() { return m_dirty ? S_OK : S_FALSE; }

STDMETHODIMP KivOleControl::InitNew() {
    // OnResetState: the stock defaults (the colours the container's ambient ones), then the control's.
    m_enabled = true;
    m_foreColor = ambientColor(DISPID_AMBIENT_FORECOLOR, 0x80000000 | COLOR_WINDOWTEXT);
    m_backColor = ambientColor(DISPID_AMBIENT_BACKCOLOR, 0x80000000 | COLOR_WINDOW);
    m_behaviour->resetCustomProperties();
    m_dirty = false;
    return S_OK;
}

ULONG KivOleControl::persistedSize() const {
    ULONG size = 4 + 8 + 4;
    if ((m_class.stockMask & kivstock::kForeColor) != 0) size += 4;
    if ((m_class.stockMask & kivstock::kBackColor) != 0) size += 4;
    if ((m_class.stockMask & kivstock::kEnabled) != 0) size += 1;
    return size + m_behaviour->customStreamSize();
}

HRESULT KivOleControl::saveToStream(IStream* stream) {
    if (stream == nullptr) return E_POINTER;
    unsigned char buffer[64];
    ULONG n = 0;
    auto put = [&](const void* data, ULONG size) {
        std::memcpy(buffer + n, data, size);
        n += size;
    };
    const DWORD version = 0x00010000;
    const DWORD mask = m_class.stockMask;
    put(&version, 4);
    put(&m_extent.cx, 4);
    put(&m_extent.cy, 4);
    put(&mask, 4);
    if ((mask & kivstock::kForeColor) != 0) put(&m_foreColor, 4);
    if ((mask & kivstock::kBackColor) != 0) put(&m_backColor, 4);
    if ((mask & kivstock::kEnabled) != 0) {
        const unsigned char enabled = m_enabled ? 1 : 0;
        put(&enabled, 1);
    }
    // The control's own properties follow the stock ones.
    const ULONG custom = m_behaviour->customStreamSize();
    if (custom > sizeof buffer - n) return E_UNEXPECTED;
    m_behaviour->saveCustomToStream(buffer + n);
    n += custom;
    ULONG written = 0;
    const HRESULT hr = stream->Write(buffer, n, &written);
    if (FAILED(hr)) return hr;
    return written == n ? S_OK : STG_E_MEDIUMFULL;
}

HRESULT KivOleControl::loadFromStream(IStream* stream) {
    if (stream == nullptr) return E_POINTER;
    auto read = [stream](void* data, ULONG size) {
        ULONG got = 0;
        return SUCCEEDED(stream->Read(data, size, &got)) && got == size;
    };
    DWORD version = 0, mask = 0;
    SIZEL extent{};
    DWORD fore = m_foreColor, back = m_backColor;
    unsigned char enabled = m_enabled ? 1 : 0;
    if (!read(&version, 4) || !read(&extent.cx, 4) || !read(&extent.cy, 4) || !read(&mask, 4)) return STG_E_READFAULT;
    // Values of the stream's mask are read in MFC's order; the control takes those it has.
    if ((mask & kivstock::kForeColor) != 0 && !read(&fore, 4)) return STG_E_READFAULT;
    if ((mask & kivstock::kBackColor) != 0 && !read(&back, 4)) return STG_E_READFAULT;
    if ((mask & kivstock::kEnabled) != 0 && !read(&enabled, 1)) return STG_E_READFAULT;
    // The control's own properties: read whole before anything is taken.
    unsigned char custom[32];
    const ULONG customSize = m_behaviour->customStreamSize();
    if (customSize > sizeof custom || (customSize > 0 && !read(custom, customSize))) return STG_E_READFAULT;
    m_extent = extent;
    if ((m_class.stockMask & kivstock::kForeColor) != 0) m_foreColor = fore;
    if ((m_class.stockMask & kivstock::kBackColor) != 0) m_backColor = back;
    if ((m_class.stockMask & kivstock::kEnabled) != 0) setEnabled(enabled != 0);
    if (customSize > 0) m_behaviour->loadCustomFromStream(custom);
    m_dirty = false;
    return S_OK;
}

STDMETHODIMP KivOleControl::Load(LPSTREAM stream) { return loadFromStream(stream); }

STDMETHODIMP KivOleControl::Save(LPSTREAM stream, BOOL clearDirty) {
    const HRESULT hr = saveToStream(stream);
    if (SUCCEEDED(hr) && clearDirty) m_dirty = false;
    return hr;
}

STDMETHODIMP KivOleControl::GetSizeMax(ULARGE_INTEGER* size) {
    if (size == nullptr) return E_POINTER;
    size->QuadPart = persistedSize();
    return S_OK;
}

STDMETHODIMP KivOleControl::InitNew(IStorage*) { return InitNew(); }

STDMETHODIMP KivOleControl::Load(IStorage* storage) {
    if (storage == nullptr) return E_POINTER;
    KivComPtr<IStream> stream;
    const HRESULT hr = storage->OpenStream(L"Contents", nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.put());
    if (FAILED(hr)) return hr;
    return loadFromStream(stream.get());
}

STDMETHODIMP KivOleControl::Save(IStorage* storage, BOOL) {
    if (storage == nullptr) return E_POINTER;
    KivComPtr<IStream> stream;
    const HRESULT hr = storage->CreateStream(L"Contents", STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0, stream.put());
    if (FAILED(hr)) return hr;
    return saveToStream(stream.get());
}

STDMETHODIMP KivOleControl::SaveCompleted(IStorage*) { return S_OK; }
STDMETHODIMP KivOleControl::HandsOffStorage() { return S_OK; }

STDMETHODIMP KivOleControl::Load(LPVOID memory, ULONG size) {
    if (memory == nullptr) return E_POINTER;
    KivComPtr<IStream> stream;
    HRESULT hr = CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
    if (FAILED(hr)) return hr;
    ULONG written = 0;
    hr = stream->Write(memory, size, &written);
    if (FAILED(hr)) return hr;
    const LARGE_INTEGER zero{};
    stream->Seek(zero, STREAM_SEEK_SET, nullptr);
    return loadFromStream(stream.get());
}

STDMETHODIMP KivOleControl::Save(LPVOID memory, BOOL clearDirty, ULONG size) {
    if (memory == nullptr) return E_POINTER;
    if (size < persistedSize()) return STG_E_MEDIUMFULL;
    KivComPtr<IStream> stream;
    HRESULT hr = CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
    if (FAILED(hr)) return hr;
    hr = Save(stream.get(), clearDirty);
    if (FAILED(hr)) return hr;
    const LARGE_INTEGER zero{};
    stream->Seek(zero, STREAM_SEEK_SET, nullptr);
    ULONG got = 0;
    return stream->Read(memory, persistedSize(), &got);
}

STDMETHODIMP KivOleControl::GetSizeMax(ULONG* size) {
    if (size == nullptr) return E_POINTER;
    *size = persistedSize();
    return S_OK;
}

STDMETHODIMP KivOleControl::Load(IPropertyBag* bag, IErrorLog* log) {
    if (bag == nullptr) return E_POINTER;
    auto readLong = [&](const wchar_t* name, LONG& value) {
        KivVariant v;
        if (FAILED(bag->Read(name, &v.v, log)) || FAILED(VariantChangeType(&v.v, &v.v, 0, VT_I4))) return false;
        value = V_I4(&v.v);
        return true;
    };
    LONG cx = m_extent.cx, cy = m_extent.cy, fore = static_cast<LONG>(m_foreColor), back = static_cast<LONG>(m_backColor);
    readLong(L"_ExtentX", cx);
    readLong(L"_ExtentY", cy);
    m_extent = SIZEL{cx, cy};
    if ((m_class.stockMask & kivstock::kForeColor) != 0 && readLong(L"ForeColor", fore)) m_foreColor = static_cast<KivColor>(fore);
    if ((m_class.stockMask & kivstock::kBackColor) != 0 && readLong(L"BackColor", back)) m_backColor = static_cast<KivColor>(back);
    if ((m_class.stockMask & kivstock::kEnabled) != 0) {
        KivVariant v;
        if (SUCCEEDED(bag->Read(L"Enabled", &v.v, log)) && SUCCEEDED(VariantChangeType(&v.v, &v.v, 0, VT_BOOL)))
            setEnabled(V_BOOL(&v.v) != VARIANT_FALSE);
    }
    m_behaviour->loadCustomFromBag(bag, log);
    m_dirty = false;
    return S_OK;
}

STDMETHODIMP KivOleControl::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) {
    if (bag == nullptr) return E_POINTER;
    auto writeLong = [&](const wchar_t* name, LONG value) {
        VARIANT v;
        V_VT(&v) = VT_I4;
        V_I4(&v) = value;
        return bag->Write(name, &v);
    };
    HRESULT hr = writeLong(L"_Version", 0x00010000);
    if (SUCCEEDED(hr)) hr = writeLong(L"_ExtentX", m_extent.cx);
    if (SUCCEEDED(hr)) hr = writeLong(L"_ExtentY", m_extent.cy);
    if (SUCCEEDED(hr)) hr = writeLong(L"_StockProps", static_cast<LONG>(m_class.stockMask));
    if (SUCCEEDED(hr) && (m_class.stockMask & kivstock::kForeColor) != 0) hr = writeLong(L"ForeColor", static_cast<LONG>(m_foreColor));
    if (SUCCEEDED(hr) && (m_class.stockMask & kivstock::kBackColor) != 0) hr = writeLong(L"BackColor", static_cast<LONG>(m_backColor));
    if (SUCCEEDED(hr) && (m_class.stockMask & kivstock::kEnabled) != 0) {
        VARIANT v;
        V_VT(&v) = VT_BOOL;
        V_BOOL(&v) = m_enabled ? VARIANT_TRUE : VARIANT_FALSE;
        hr = bag->Write(L"Enabled", &v);
    }
    if (SUCCEEDED(hr)) hr = m_behaviour->saveCustomToBag(bag);
    if (SUCCEEDED(hr) && clearDirty) m_dirty = false;
    return hr;
}
