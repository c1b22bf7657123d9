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


KivComPtr<IPropertyPage> newPage() {
    KivComPtr<IPropertyPage> page;
    EXPECT_EQ(KivCreatePropertyPage(IDD_PROPPAGE_KIVCOLOR, IID_IPropertyPage, page.putVoid()), S_OK);
    return page;
}
}  // namespace

TEST(KivPropertyPage, ObjectsItHasNoMemoryToStoreAreNeitherHeldNorLeaked) {
    Counted first, second;
    IUnknown* objects[] = {&first, &second};
    KivComPtr<IPropertyPage> counted = newPage();
    const long made = failingnew::allocationsOf([&] { EXPECT_EQ(counted->SetObjects(2, objects), S_OK); });
    EXPECT_EQ(first.refs, 2u);  // held once each
    EXPECT_EQ(second.refs, 2u);
    counted.reset();  // a page lets its objects go with it
    EXPECT_EQ(first.refs, 1u);
    ASSERT_GE(made, 1);
    for (long n = 1; n <= made; ++n) {
        SCOPED_TRACE("allocation " + std::to_string(n) + " of " + std::to_string(made) + " fails");
        KivComPtr<IPropertyPage> page = newPage();
        HRESULT stored;
        {
            failingnew::FailingAllocation failing(n);
            stored = page->SetObjects(2, objects);
        }
        EXPECT_EQ(stored, E_OUTOFMEMORY);
        page.reset();
        EXPECT_EQ(first.refs, 1u);
        EXPECT_EQ(second.refs, 1u);
    }
}
