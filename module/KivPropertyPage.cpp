// The six property pages: placeholders showing their dialog template (one static text),
// titled with their caption string ("General"), with no data exchange. Win32 side.
#include <ocidl.h>
#include <olectl.h>

#include <vector>

#include "KivCom.h"
#include "KivModule.h"

namespace {

INT_PTR CALLBACK pageDialogProc(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG ? TRUE : FALSE; }

class KivPropertyPage final : public KivComObject<IPropertyPage, &IID_IPropertyPage> {
public:
    explicit KivPropertyPage(UINT dialogId) : m_dialogId(dialogId) {}
    ~KivPropertyPage() override {
        Deactivate();
        SetObjects(0, nullptr);
    }

    STDMETHODIMP SetPageSite(IPropertyPageSite* site) override {
        m_site = KivComPtr<IPropertyPageSite>(site);
        return S_OK;
    }
    STDMETHODIMP Activate(HWND parent, LPCRECT rect, BOOL) override {
        if (rect == nullptr) return E_POINTER;
        Deactivate();
        m_dialog = CreateDialogParamW(kivmodule::instance(), MAKEINTRESOURCEW(m_dialogId), parent, pageDialogProc, 0);
        if (m_dialog == nullptr) return E_FAIL;
        MoveWindow(m_dialog, rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, TRUE);
        return S_OK;
    }
    STDMETHODIMP Deactivate() override {
        if (m_dialog != nullptr) DestroyWindow(m_dialog);
        m_dialog = nullptr;
        return S_OK;
    }
    STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) override {
        if (info == nullptr) return E_POINTER;
        wchar_t title[64];
        if (LoadStringW(kivmodule::instance(), m_dialogId, title, 64) <= 0) title[0] = 0;
        // The template's size in pixels: measured on a hidden instance of the dialog.
        SIZE size{0, 0};
        HWND probe = CreateDialogParamW(kivmodule::instance(), MAKEINTRESOURCEW(m_dialogId), GetDesktopWindow(),
                                        pageDialogProc, 0);
        if (probe != nullptr) {
            RECT r;
            GetWindowRect(probe, &r);
            size = SIZE{r.right - r.left, r.bottom - r.top};
            DestroyWindow(probe);
        }
        info->cb = sizeof *info;
        info->pszTitle = KivCoTaskString(title);  // ownership passes to the caller
        info->size = size;
        info->pszDocString = nullptr;
        info->pszHelpFile = nullptr;
        info->dwHelpContext = 0;
        return S_OK;
    }
    STDMETHODIMP SetObjects(ULONG count, IUnknown** objects) override {
        for (IUnknown* o : m_objects) o->Release();
        m_objects.clear();
        // Each object is held once it is stored: without memory for it, it is neither held nor leaked.
        return KivNoThrow([&] {
            for (ULONG i = 0; i < count && objects != nullptr; ++i) {
                if (objects[i] == nullptr) continue;
                m_objects.push_back(objects[i]);
                objects[i]->AddRef();
            }
            return S_OK;
        });
    }
    STDMETHODIMP Show(UINT cmd) override {
        if (m_dialog != nullptr) ShowWindow(m_dialog, static_cast<int>(cmd));
        return S_OK;
    }
    STDMETHODIMP Move(LPCRECT rect) override {
        if (rect == nullptr) return E_POINTER;
        if (m_dialog != nullptr)
            MoveWindow(m_dialog, rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, TRUE);
        return S_OK;
    }
    STDMETHODIMP IsPageDirty() override { return S_FALSE; }  // nothing to edit
    STDMETHODIMP Apply() override { return S_OK; }           // DDP_PostProcessing only: nothing is written
    // Not implemented: the module has no help file.
    STDMETHODIMP Help(LPCOLESTR) override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(MSG* msg) override {
        return m_dialog != nullptr && msg != nullptr && IsDialogMessageW(m_dialog, msg) ? S_OK : S_FALSE;
    }

private:
    UINT m_dialogId;
    KivComPtr<IPropertyPageSite> m_site;
    std::vector<IUnknown*> m_objects;
    HWND m_dialog = nullptr;
};

}  // namespace

HRESULT KivCreatePropertyPage(UINT dialogId, REFIID riid, void** out) {
    auto* page = new (std::nothrow) KivPropertyPage(dialogId);
    if (page == nullptr) return E_OUTOFMEMORY;
    const HRESULT hr = page->QueryInterface(riid, out);
    page->Release();
    return hr;
}
