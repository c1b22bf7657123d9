// CKivColorCtrl: the colour combo control's behaviour.
// Portable: written once against the seams (its child list, the device context, the colour dialog,
// the control site). The ActiveX frame forwards window messages and dispatch calls to it.
#pragma once

#include <cstdint>

#include "CKivColorComboBoxUtl.h"
#include "IKivColorDialog.h"
#include "IKivControlSite.h"
#include "KivChildControl.h"
#include "KivString.h"

class CKivColorCtrl : public KivChildControl {
public:
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

    // The child: an owner-drawn drop-down list, identifier 100, with the frame's font, selection-field
    // height and scaled dropped height.
    static constexpr KivChildTraits kChild{KivChildKind::ComboBox, KivChildTraits::kDropDownList, 100,
                                           u"KivColorComboBox", true, true, true};

    CKivColorCtrl(IKivControlSite& site, IKivColorDialog& colorDialog);

    void DrawItem(IKivDC& dc, const KivDrawItem& item) const override { comboBox.DrawItem(dc, item); }
    bool MeasureItem(KivMeasureItem& item) const override;

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
    CKivColorComboBoxUtl comboBox{child()};
    std::int32_t listFilled = 0;
    std::int32_t comboIndex = -1;
    std::uint32_t selectedColor = 0;
    std::uint32_t blockColor = 0x00FFFFFF;
    std::uint32_t layerColor = 0x00FFFFFF;
    std::uint32_t defaultColor = 0x00FFFFFF;
    KivString customPrefix{u"Color"};
    std::uint32_t approvalStatusColor = 0x00FFFFFF;
    std::int32_t displayApprovalStatusColor = 0;

private:
    // The frame's hooks: FillColorList, the stored comboIndex, and the list forgotten with its window.
    void fillChild() override { FillColorList(); }
    int storedSelection() const override { return comboIndex; }
    void onChildDestroyed() override;
    std::uint32_t itemColor(int position) const;
    // CB_INSERTSTRING at `position`, then CB_SETITEMDATA at that same position.
    void insertItem(int position, const KivString& text, std::uint32_t color);
    KivString customText(int idxTev) const;
    void setItemColorAndRedraw(int position, std::uint32_t color);
    // comboIdx := current selection, colorIdx := Tev of the stored item, resolve, fire.
    void fireChoice(int event) override;

    IKivColorDialog& m_colorDialog;
};
