// CKivColorCtrl: the colour combo control's behaviour.
// Portable: written once against the seams (its child list, the device context, the colour dialog,
// the control site). The ActiveX frame forwards window messages and dispatch calls to it.
#pragma once

#include <cstdint>

#include "CKivColorComboBoxUtl.h"
#include "IKivColorDialog.h"
#include "IKivControlSite.h"
#include "KivString.h"

class CKivColorCtrl {
public:
    // DISPIDs of _DKivColor and _DKivColorEvents.
    enum DispId : int {
        dispidComboIndex = 1,
        dispidBlockColorIndex = 2,
        dispidLayerColorIndex = 3,
        dispidGetSelColorIndex = 5,
        dispidSetSelColorIndex = 6,
        dispidAddColorIndex = 7,
        dispidSetComboText = 8,
        dispidRGB_Equivalent = 9,
        dispidTev_Equivalent = 10,
        dispidFindColor = 11,
        dispidSetTooltipText = 12,
        dispidAboutDisplay = 13,
        dispidDefaultColorIndex = 14,
        dispidApprovalStatusColorIndex = 15,
        dispidDisplayApprovalStatusColor = 16,
    };
    enum EventId : int { eventSelChange = 1, eventSelAndCloseUp = 2 };

    // Positions of the layout with "ByApprovalStatus" (the type library's Colors).
    enum eColors : int {
        kByApprovalStatus = 0,
        kByLayer = 1,
        kByBlock = 2,
        kByDefault = 3,
        kRed = 4,
        kYellow = 5,
        kGreen = 6,
        kCyan = 7,
        kBlue = 8,
        kMagenta = 9,
        kWhite = 10,
        kSelectColor = 11,
        kCustomColor = 12,
        kLast = 13,
    };

    static constexpr const char16_t* kDesignText = u"KivColorComboBox";

    CKivColorCtrl(IKivControlSite& site, IKivColorDialog& colorDialog);
    CKivColorCtrl(const CKivColorCtrl&) = delete;
    CKivColorCtrl& operator=(const CKivColorCtrl&) = delete;

    // Frame with the colour control's values.
    // The child window has been created (styles CKivColorComboBoxUtl::kStyle, id 100) over a client
    // rectangle `clientHeight` pixels high: font, selection-field height, fill, stored selection.
    void OnCreate(IKivChildList& child, int clientHeight);
    // The child window is gone (the control's window is being destroyed).
    void OnDestroyChild();
    void OnSize(int width);
    void OnSetFocus();
    void OnEnabledChanged(bool enabled);
    // The child's notification codes (WM_COMMAND); the frame passes each on to its base afterwards.
    void OnCommand(int notification);

    // _DKivColor.
    long GetComboIndex() const { return comboIndex; }
    void SetComboIndex(long index);
    unsigned long GetBlockColorIndex() const { return blockColor; }
    void SetBlockColorIndex(unsigned long color);
    unsigned long GetLayerColorIndex() const { return layerColor; }
    void SetLayerColorIndex(unsigned long color);
    short GetSelColorIndex() const;
    void SetSelColorIndex(short idxTev);
    bool AddColorIndex(short idxTev);
    void SetComboText(long color, const KivString& colorText);
    unsigned long RGB_Equivalent(short idxTev) const;
    short Tev_Equivalent(unsigned long idxRGB) const;
    long FindColor(short idxTev) const;
    void SetTooltipText(const KivString& txt);
    void AboutDisplay(bool display);
    unsigned long GetDefaultColorIndex() const { return defaultColor; }
    void SetDefaultColorIndex(unsigned long color);
    unsigned long GetApprovalStatusColorIndex() const { return approvalStatusColor; }
    void SetApprovalStatusColorIndex(unsigned long color);
    long GetDisplayApprovalStatusColor() const { return displayApprovalStatusColor; }
    void SetDisplayApprovalStatusColor(long display);

    // The list algorithms, public for the frame and the tests.
    void FillColorList();
    void ResolveSelection(long& comboIdx, long& colorIdx);

    // Fields, in order, readable by the frame and the tests.
    CKivColorComboBoxUtl comboBox;
    std::int32_t listFilled = 0;
    std::int32_t comboIndex = -1;
    std::uint32_t selectedColor = 0;
    std::uint32_t blockColor = 0x00FFFFFF;
    std::uint32_t layerColor = 0x00FFFFFF;
    std::uint32_t defaultColor = 0x00FFFFFF;
    KivString customPrefix{u"Color"};
    std::uint8_t droppedDuringChange = 0;
    std::uint32_t approvalStatusColor = 0x00FFFFFF;
    std::int32_t displayApprovalStatusColor = 0;

private:
    IKivChildList& list() const { return comboBox.list(); }
    std::uint32_t itemColor(int position) const;
    // CB_INSERTSTRING at `position`, then CB_SETITEMDATA at that same position.
    void insertItem(int position, const KivString& text, std::uint32_t color);
    KivString customText(int idxTev) const;
    void setItemColorAndRedraw(int position, std::uint32_t color);
    // comboIdx := current selection, colorIdx := Tev of the stored item, resolve, fire.
    void fireChoice(int eventId);

    IKivControlSite& m_site;
    IKivColorDialog& m_colorDialog;
};
