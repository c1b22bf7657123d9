// The type library: identity, the Colors enumeration and the six coclasses in order.
#include "KivLibrary.h"

#include "KivGuids.h"

namespace {
const KivEnumConstant kColors[] = {
    {L"kByApprovalStatus", 0}, {L"kByLayer", 1}, {L"kByBlock", 2},  {L"kByDefault", 3},    {L"kRed", 4},
    {L"kYellow", 5},           {L"kGreen", 6},   {L"kCyan", 7},     {L"kBlue", 8},         {L"kMagenta", 9},
    {L"kWhite", 10},           {L"kSelectColor", 11}, {L"kCustomColor", 12}, {L"kLast", 13},
};

const KivCoclass kCoclasses[] = {
    {L"KivColor", &CLSID_KivColorCtrl, L"KivColorControl", &g_DKivColor, &g_DKivColorEvents},
    {L"KivLayer", &CLSID_KivLayerCtrl, L"KivLayerControl", &g_DKivLayer, &g_DKivLayerEvents},
    {L"KivLinetype", &CLSID_KivLinetypeCtrl, L"KivLinetypeControl", &g_DKivLinetype, &g_DKivLinetypeEvents},
    {L"KivLineweight", &CLSID_KivLineweightCtrl, L"KivLineweightControl", &g_DKivLineweight, &g_DKivLineweightEvents},
    {L"KivHatch", &CLSID_KivHatchCtrl, L"KivHatchControl", &g_DKivHatch, &g_DKivHatchEvents},
    {L"KivLTypeList", &CLSID_KivLinetypeListCtrl, L"KivLinetypeListControl", &g_DKivLTypeList, &g_DKivLTypeListEvents},
};

const KivTypeLibDesc kLibrary = {
    L"KIVLORQCONTROLSLib", &LIBID_KIVLORQCONTROLSLib, 1, 0, 0x409,
    L"KivLorqControls ActiveX Control module", L"KivLorqControls.hlp",
    L"eColors", L"Colors", kColors, static_cast<int>(sizeof kColors / sizeof kColors[0]),
    kCoclasses, static_cast<int>(sizeof kCoclasses / sizeof kCoclasses[0]),
};
}  // namespace

const KivTypeLibDesc& KivLibraryDesc() { return kLibrary; }
