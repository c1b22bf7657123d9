// The six controls of the module as the Windows tests name them: ProgID, class id, event
// interface, property page (class id and ProgID), owner-drawn child and design-mode face.
#pragma once

#include <windows.h>

#include <ostream>

struct ControlCase {
    const char* name;
    const wchar_t *progId, *clsid, *events, *page;  // ProgID, class id, event interface, property page
    const wchar_t* pageProgId;   // its property page's ProgID (the assembly manifest gives it one)
    const char* pageControl;     // the control named in its page's placeholder text
    int childId;                 // its owner-drawn child, 0 when it has none
    const wchar_t* childClass;   // "ComboBox" or "ListBox"
    const wchar_t* designText;   // its design-mode name; nullptr: the layer's picture in both modes
    bool hasEnabled;             // the stock Enabled property
    bool isHatch() const { return childId == 0 && designText != nullptr; }
};

// One control a line.
// clang-format off
inline const ControlCase kCases[] = {
    {"Colour", L"KIVLORQCONTROLS.KivColorCtrl.1", L"{134FFBAD-0ECF-4346-BA9D-1EDC507A8A56}", L"{E2A8D3CB-CEDE-42DA-8883-1554CD8030DD}", L"{13C03DB5-8843-4B08-BCA1-F4032586C767}", L"KIVLORQCONTROLS.KivColorPropPage.1", "KivColorControl", 100, L"ComboBox", L"KivColorComboBox", true},
    {"Lineweight", L"KIVLORQCONTROLS.KivLineweightCtrl.1", L"{FB47E4A7-11D0-4FFE-9EC1-EEF7C8047D13}", L"{B67DDBB9-C50E-4CE2-A70C-F5A5D59A92AF}", L"{6646D52E-EC7D-403B-874A-3AE343EE9A1C}", L"KIVLORQCONTROLS.KivLineweightPropPage.1", "KivLineweightControl", 103, L"ComboBox", L"KivLineweightComboBox", true},
    {"Linetype", L"KIVLORQCONTROLS.KivLinetypeCtrl.1", L"{2EEDA6B2-2037-4824-8629-9EAA7758E9BF}", L"{B38FC9AE-123A-4217-9E92-7F2B3E58EA52}", L"{FC9C7841-BFED-489D-9DB9-49551B27B6EC}", L"KIVLORQCONTROLS.KivLinetypePropPage.1", "KivLinetypeControl", 102, L"ComboBox", L"KivLinetypeComboBox", true},
    {"LinetypeList", L"KIVLORQCONTROLS.KivLinetypeListCtrl.1", L"{DABAFA9E-2B6F-40B0-95BB-373AB4B2FC18}", L"{57D2AB1D-50F4-48D9-A9FD-62702A5527D6}", L"{4ED48E07-66E0-493E-A53B-1B8D8C6B80A3}", L"KIVLORQCONTROLS.KivLTypeListPropPage.1", "KivLinetypeListControl", 105, L"ListBox", L"KivLinetypeListBox", true},
    {"Hatch", L"KIVLORQCONTROLS.KivHatchCtrl.1", L"{D15E93F0-B2C2-4728-8484-4E561229776F}", L"{31864F54-4ECC-4D0A-A3C2-A8BE66536B8E}", L"{632E700B-7FB5-4682-B2F2-BF1D5111058D}", L"KIVLORQCONTROLS.KivHatchPropPage.1", "KivHatchControl", 0, nullptr, L"KivHatchCtrl", true},
    {"Layer", L"KIVLORQCONTROLS.KivLayerCtrl.1", L"{A7D6D7BA-DF9F-4E65-84F6-1239BE58B84A}", L"{41FF97A2-4D74-4374-8D7C-E458F28AEA0F}", L"{6DA7E9FD-46EE-4123-8CBB-9ADCACFB1ED4}", L"KIVLORQCONTROLS.KivLayerPropPage.1", "KivLayerControl", 0, nullptr, nullptr, false},
};
// clang-format on

// Test names and failure messages show the control's name.
inline void PrintTo(const ControlCase& c, std::ostream* os) { *os << c.name; }

inline GUID guid(const wchar_t* text) {
    GUID g{};
    CLSIDFromString(text, &g);
    return g;
}
