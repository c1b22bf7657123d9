// The twelve classes of the module in their registration order: each control, then its page.
#include "KivGuids.h"
#include "KivModule.h"
#include "KivResources.h"

namespace {
// A property page, shown on its own dialog template.
template <UINT dialog>
HRESULT createPage(REFIID riid, void** out) {
    return KivCreatePropertyPage(dialog, riid, out);
}
}  // namespace

const std::vector<KivFactoryEntry>& KivFactories() {
    // One class a line: a control (its bitmap, misc status, true) or a page (no bitmap, 0, false).
    // clang-format off
    static const std::vector<KivFactoryEntry> factories = {
        {&CLSID_KivColorCtrl, L"KIVLORQCONTROLS.KivColorCtrl.1", IDS_KIVCOLOR, IDB_KIVCOLOR, 0x00021191, true, &KivCreateColorControl},
        {&CLSID_KivColorPropPage, L"KIVLORQCONTROLS.KivColorPropPage.1", IDS_KIVCOLOR_PPG, 0, 0, false, &createPage<IDD_PROPPAGE_KIVCOLOR>},
        {&CLSID_KivHatchCtrl, L"KIVLORQCONTROLS.KivHatchCtrl.1", IDS_KIVHATCH, IDB_KIVHATCH, 0x00020191, true, &KivCreateHatchControl},
        {&CLSID_KivHatchPropPage, L"KIVLORQCONTROLS.KivHatchPropPage.1", IDS_KIVHATCH_PPG, 0, 0, false, &createPage<IDD_PROPPAGE_KIVHATCH>},
        {&CLSID_KivLayerCtrl, L"KIVLORQCONTROLS.KivLayerCtrl.1", IDS_KIVLAYER, IDB_KIVLAYER, 0x00020191, true, &KivCreateLayerControl},
        {&CLSID_KivLayerPropPage, L"KIVLORQCONTROLS.KivLayerPropPage.1", IDS_KIVLAYER_PPG, 0, 0, false, &createPage<IDD_PROPPAGE_KIVLAYER>},
        {&CLSID_KivLinetypeCtrl, L"KIVLORQCONTROLS.KivLinetypeCtrl.1", IDS_KIVLINETYPE, IDB_KIVLINETYPE, 0x00020191, true, &KivCreateLinetypeControl},
        {&CLSID_KivLinetypeListCtrl, L"KIVLORQCONTROLS.KivLinetypeListCtrl.1", IDS_KIVLINETYPELIST, IDB_KIVLINETYPELIST, 0x00020191, true, &KivCreateLinetypeListControl},
        {&CLSID_KivLinetypePropPage, L"KIVLORQCONTROLS.KivLinetypePropPage.1", IDS_KIVLINETYPE_PPG, 0, 0, false, &createPage<IDD_PROPPAGE_KIVLINETYPE>},
        {&CLSID_KivLineweightCtrl, L"KIVLORQCONTROLS.KivLineweightCtrl.1", IDS_KIVLINEWEIGHT, IDB_KIVLINEWEIGHT, 0x00021191, true, &KivCreateLineweightControl},
        {&CLSID_KivLineweightPropPage, L"KIVLORQCONTROLS.KivLineweightPropPage.1", IDS_KIVLINEWEIGHT_PPG, 0, 0, false, &createPage<IDD_PROPPAGE_KIVLINEWEIGHT>},
        {&CLSID_KivLTypeListPropPage, L"KIVLORQCONTROLS.KivLTypeListPropPage.1", IDS_KIVLTYPELIST_PPG, 0, 0, false, &createPage<IDD_PROPPAGE_KIVLTYPELIST>},
    };
    // clang-format on
    return factories;
}
