// COM and Win32 helpers of the frame: module state, a small ComPtr, RAII for BSTR, VARIANT and GDI
// objects, and the one QueryInterface mechanism (an interface table). Win32 side.
#pragma once

#include <ole2.h>
#include <olectl.h>
#include <windows.h>

#include <atomic>
#include <new>
#include <utility>

// ---- Module state: the module handle, live objects and server locks. ----
namespace kivmodule {
HINSTANCE instance();
void setInstance(HINSTANCE instance);
void objectCreated();
void objectDestroyed();
void lock(bool lock);
bool canUnload();  // no object and no lock alive
}  // namespace kivmodule

// ---- No exception leaves the module. ----
// Runs `body` (returning an HRESULT) and turns a C++ exception into a failure code: nothing may
// unwind into a container's or the system's frames, where it would end the host's process. The only
// exception the module's code can raise is an allocation failure of a standard container.
template <class Body>
HRESULT KivNoThrow(Body&& body) noexcept {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

// ---- ComPtr: owns one reference. ----
template <class T>
class KivComPtr {
public:
    KivComPtr() = default;
    explicit KivComPtr(T* p, bool addRef = true) : m_p(p) {
        if (m_p != nullptr && addRef) m_p->AddRef();
    }
    KivComPtr(const KivComPtr& o) : KivComPtr(o.m_p) {}
    KivComPtr(KivComPtr&& o) noexcept : m_p(std::exchange(o.m_p, nullptr)) {}
    KivComPtr& operator=(KivComPtr o) noexcept {
        std::swap(m_p, o.m_p);
        return *this;
    }
    ~KivComPtr() { reset(); }
    void reset() {
        if (m_p != nullptr) std::exchange(m_p, nullptr)->Release();
    }
    T* get() const { return m_p; }
    T* operator->() const { return m_p; }
    explicit operator bool() const { return m_p != nullptr; }
    // For out-parameters: releases what is held and returns the slot.
    T** put() {
        reset();
        return &m_p;
    }
    void** putVoid() { return reinterpret_cast<void**>(put()); }
    T* detach() { return std::exchange(m_p, nullptr); }

private:
    T* m_p = nullptr;
};

// ---- BSTR and VARIANT ownership. ----
class KivBstr {
public:
    KivBstr() = default;
    explicit KivBstr(const wchar_t* text) : m_b(SysAllocString(text)) {}
    KivBstr(const KivBstr&) = delete;
    KivBstr& operator=(const KivBstr&) = delete;
    KivBstr(KivBstr&& o) noexcept : m_b(std::exchange(o.m_b, nullptr)) {}
    ~KivBstr() { SysFreeString(m_b); }
    BSTR get() const { return m_b; }
    BSTR* put() {
        SysFreeString(std::exchange(m_b, nullptr));
        return &m_b;
    }
    BSTR detach() { return std::exchange(m_b, nullptr); }  // ownership passes to the caller

private:
    BSTR m_b = nullptr;
};

class KivVariant {
public:
    KivVariant() { VariantInit(&v); }
    KivVariant(const KivVariant&) = delete;
    KivVariant& operator=(const KivVariant&) = delete;
    ~KivVariant() { VariantClear(&v); }
    VARIANT v;
};

// ---- GDI objects: one owner type, deleting on destruction. ----
template <class Handle>
class KivGdiObject {
public:
    KivGdiObject() = default;
    explicit KivGdiObject(Handle h) : m_h(h) {}
    KivGdiObject(const KivGdiObject&) = delete;
    KivGdiObject& operator=(const KivGdiObject&) = delete;
    KivGdiObject(KivGdiObject&& o) noexcept : m_h(std::exchange(o.m_h, nullptr)) {}
    KivGdiObject& operator=(KivGdiObject&& o) noexcept {
        reset(std::exchange(o.m_h, nullptr));
        return *this;
    }
    ~KivGdiObject() { reset(); }
    void reset(Handle h = nullptr) {
        if (m_h != nullptr) DeleteObject(m_h);
        m_h = h;
    }
    Handle get() const { return m_h; }

private:
    Handle m_h = nullptr;
};

// A memory DC, deleted on destruction.
class KivMemoryDC {
public:
    explicit KivMemoryDC(HDC compatibleWith) : m_dc(CreateCompatibleDC(compatibleWith)) {}
    KivMemoryDC(const KivMemoryDC&) = delete;
    KivMemoryDC& operator=(const KivMemoryDC&) = delete;
    ~KivMemoryDC() {
        if (m_dc != nullptr) DeleteDC(m_dc);
    }
    HDC get() const { return m_dc; }

private:
    HDC m_dc;
};

// Selects an object into a DC and puts the previous one back on destruction (borrows both).
class KivSelectObject {
public:
    KivSelectObject(HDC dc, HGDIOBJ object) : m_dc(dc), m_previous(SelectObject(dc, object)) {}
    KivSelectObject(const KivSelectObject&) = delete;
    KivSelectObject& operator=(const KivSelectObject&) = delete;
    KivSelectObject(KivSelectObject&& o) noexcept : m_dc(o.m_dc), m_previous(std::exchange(o.m_previous, nullptr)) {}
    ~KivSelectObject() {
        if (m_previous != nullptr && m_previous != HGDI_ERROR) SelectObject(m_dc, m_previous);
    }

private:
    HDC m_dc;
    HGDIOBJ m_previous;
};

// ---- The one QueryInterface mechanism: a table of (IID, cast to that interface). ----
struct KivInterfaceEntry {
    const IID* iid;
    void* (*cast)(void* object);
};

// The cast of one table entry: the object to one of its interface bases.
template <class Interface, class Object>
void* kivCast(void* object) {
    return static_cast<Interface*>(static_cast<Object*>(object));
}

// Finds `riid` in `table` (terminated by a null iid); IUnknown maps to the first entry.
HRESULT KivQueryInterface(void* object, const KivInterfaceEntry* table, REFIID riid, void** out);

// Reference counting shared by the frame's COM objects; counts the object in the module.
class KivRefCount {
public:
    KivRefCount() { kivmodule::objectCreated(); }
    ~KivRefCount() { kivmodule::objectDestroyed(); }
    ULONG addRef() { return ++m_count; }
    ULONG release() { return --m_count; }

private:
    std::atomic<ULONG> m_count{1};
};

// The reference counting of a COM object that implements `Interfaces` and is deleted with its last
// reference; the object answers QueryInterface itself.
template <class... Interfaces>
class KivRefCounted : public Interfaces... {
public:
    STDMETHODIMP_(ULONG) AddRef() override { return m_refs.addRef(); }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG n = m_refs.release();
        if (n == 0) delete this;
        return n;
    }

protected:
    KivRefCounted() = default;
    virtual ~KivRefCounted() = default;

private:
    KivRefCount m_refs;
};

// A COM object of one interface (`Iid`), deleted with its last reference (the frame's enumerators,
// the property pages).
template <class Interface, const IID* Iid>
class KivComObject : public KivRefCounted<Interface> {
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override {
        static const KivInterfaceEntry table[] = {{Iid, &kivCast<Interface, KivComObject>}, {nullptr, nullptr}};
        return KivQueryInterface(this, table, riid, out);
    }
};

// IDispatch for an object without type information (a container's ambient properties, an event
// sink): it is called by DISPID alone.
class KivDispatchWithoutTypes : public IDispatch {
public:
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        if (info != nullptr) *info = nullptr;
        return E_NOTIMPL;  // it has none
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }  // no names
};

// An export of a loaded module as the function type the caller names, or nullptr. GetProcAddress's
// FARPROC is a placeholder type: the cast goes through a generic function pointer.
template <class Function>
Function KivProcAddress(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

// Copies a wide string into a new CoTaskMem block (ownership passes to the caller).
LPOLESTR KivCoTaskString(const wchar_t* text);
