// A property page object in this process: the objects it is given are held once each, and those it
// has no memory to store are neither held nor leaked.
#include <gtest/gtest.h>
#include <windows.h>
#include <ocidl.h>

#include "FailingNew.h"
#include "KivCom.h"
#include "KivModule.h"
#include "KivResources.h"

namespace {
// An object that only counts its references (its memory is the test's).
class Counted final : public IUnknown {
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override {
        *out = riid == IID_IUnknown ? this : nullptr;
        if (*out == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++refs; }
    STDMETHODIMP_(ULONG) Release() override { return --refs; }
    ULONG refs = 1;
};


}  // namespace

TEST(KivPropertyPage, ObjectsItHasNoMemoryToStoreAreNeitherHeldNorLeaked) {
    Counted first, second;
    IUnknown* objects[] = {&first, &second};
    failingnew::failEachAllocation(
        [] {
            KivComPtr<IPropertyPage> page;
            EXPECT_EQ(KivCreatePropertyPage(IDD_PROPPAGE_KIVCOLOR, IID_IPropertyPage, page.putVoid()), S_OK);
            return page;
        },
        [&](KivComPtr<IPropertyPage>& page) { return page->SetObjects(2, objects); },
        [&](KivComPtr<IPropertyPage>& page, HRESULT hr, long failing) {
            EXPECT_EQ(hr, failing == 0 ? S_OK : E_OUTOFMEMORY);
            if (failing == 0) {
                EXPECT_EQ(first.refs + second.refs, 4u);  // held once each
            }
            EXPECT_LE(first.refs, 2u);  // those stored before the failure are held once, the others not
            EXPECT_LE(second.refs, 2u);
            page.reset();  // a page lets its objects go with it
            EXPECT_EQ(first.refs, 1u);
            EXPECT_EQ(second.refs, 1u);
        });
}
