// CKivColorCtrl: the colour control's behaviour step by step, over the common frame. Portable.
#include "CKivColorCtrl.h"

#include <string>

#include "TevColorTable.h"

namespace {
// The fixed items of FillColorList, in order, with their swatch colours (0 = taken from a field).
struct NamedColor {
    const char16_t* text;
    std::uint32_t color;
};
const NamedColor kNamedColors[] = {
    {u"Red", 0x000000FF},  {u"Yellow", 0x0000FFFF},  {u"Green", 0x0000FF00}, {u"Cyan", 0x00FFFF00},
    {u"Blue", 0x00FF0000}, {u"Magenta", 0x00FF00FF}, {u"White", 0x00FFFFFF},
};
const char16_t* const kSelectText = u"Select..";
const char16_t* const kApprovalStatusText = u"ByApprovalStatus";
}  // namespace

CKivColorCtrl::CKivColorCtrl(IKivControlSite& site, IKivColorDialog& colorDialog)
    : KivChildControl(site, kChild), m_colorDialog(colorDialog) {}

// ---- Frame ----

bool CKivColorCtrl::MeasureItem(KivMeasureItem& item) const {
    comboBox.MeasureItem(item);
    return true;
}

void CKivColorCtrl::onChildDestroyed() {
    // The list went with its window; a window created later is filled again (keeping the flag set
    // would leave a re-created list empty).
    listFilled = 0;
}

void CKivColorCtrl::fireChoice(int event) {
    long comboIdx = static_cast<long>(list().getCurSel());
    // Kept: the colour of the item stored before this change, not the new one; hosts written for the
    // earlier module read the previous colour from SelChange.
    long colorIdx = RGBToTev(itemColor(comboIndex));
    ResolveSelection(comboIdx, colorIdx);
    site().fireEvent(event, {KivEventArg::ofLong(comboIdx), KivEventArg::ofLong(colorIdx)});
}

// ---- Algorithms ----

std::uint32_t CKivColorCtrl::itemColor(int position) const {
    return static_cast<std::uint32_t>(list().getItemData(position));
}

KivString CKivColorCtrl::customText(int idxTev) const {
    // "%s %d" of customPrefix and the index.
    const std::string number = std::to_string(idxTev);
    return customPrefix + KivString(u" ") + KivString(number.c_str());
}

void CKivColorCtrl::insertItem(int position, const KivString& text, std::uint32_t color) {
    list().insertString(position, text);
    // The data goes to the position asked for, not to the one the insertion returns: inserting at
    // -1 appends an item whose data is never set (SetComboText(0, ...) without "ByApprovalStatus").
    list().setItemData(position, static_cast<KivItemData>(color));
}

void CKivColorCtrl::FillColorList() {
    if (listFilled != 0) return;
    auto add = [this](const KivString& text, std::uint32_t color) {
        const KivLResult position = list().addString(text);
        if (position == kiv::kCbErrSpace) return false;
        list().setItemData(static_cast<int>(position), static_cast<KivItemData>(color));
        return true;
    };
    if (!add(KivString(u"ByLayer"), layerColor)) return;
    if (!add(KivString(u"ByBlock"), blockColor)) return;
    if (!add(KivString(u"Default"), defaultColor)) return;
    for (const NamedColor& named : kNamedColors)
        if (!add(KivString(named.text), named.color)) return;
    if (!add(KivString(kSelectText), 0x00FFFFFF)) return;
    listFilled = 1;
}

long CKivColorCtrl::FindColor(short idxTev) const {
    // 1. Kept as it is: 3 is "Default" only in the layout with "ByApprovalStatus".
    if (idxTev == tev::kDefault) return 3;
    if (idxTev == tev::kByApprovalStatus) return 0;
    // 2. Every other value looks for its palette colour (0, 256 and out-of-range look for white).
    const std::uint32_t color = TevToRGB(idxTev);
    // 3. From the first named colour.
    const int start = displayApprovalStatusColor != 0 ? 4 : 3;
    if (start >= list().getCount()) return -1;
    // 4. The count is re-read on every step.
    for (int position = start; position < list().getCount(); ++position)
        if (itemColor(position) == color) return position;
    return -1;
}

short CKivColorCtrl::GetSelColorIndex() const {
    if (displayApprovalStatusColor == 0) {
        switch (comboIndex) {
        case 0: return tev::kByLayer;
        case 1: return tev::kByBlock;
        case 2: return tev::kDefault;
        default: break;
        }
    } else {
        switch (comboIndex) {
        case 0: return tev::kByApprovalStatus;
        case 1: return tev::kByLayer;
        case 2: return tev::kByBlock;
        case 3: return tev::kDefault;
        default: break;
        }
    }
    return RGBToTev(selectedColor);
}

void CKivColorCtrl::SetSelColorIndex(short idxTev) {
    // 1. Position and colour.
    long position;
    std::uint32_t color;
    if (idxTev == tev::kNone || idxTev == tev::kByLayer || idxTev == tev::kByBlock || idxTev == tev::kDefault ||
        idxTev == tev::kByApprovalStatus) {
        position = idxTev == tev::kByBlock ? 2 : idxTev == tev::kDefault ? 3 : idxTev == tev::kByApprovalStatus ? 0 : 1;
        color = itemColor(static_cast<int>(position));  // read now, before the shift of step 3
    } else {
        position = FindColor(idxTev);
        if (position == -1) return;
        color = TevToRGB(idxTev);
    }
    // 2.
    selectedColor = color;
    // 3. Without "ByApprovalStatus" 0, 256 and 257 move up one place; -1 does not (kept on purpose).
    if (displayApprovalStatusColor == 0 && position > 0 &&
        (idxTev == tev::kByBlock || idxTev == tev::kByLayer || idxTev == tev::kDefault))
        --position;
    // 4.
    if (position == -1) return;
    comboIndex = static_cast<std::int32_t>(position);
    list().setCurSel(comboIndex);
    site().setModifiedFlag(true);
}

bool CKivColorCtrl::AddColorIndex(short idxTev) {
    if (FindColor(idxTev) == -1) {
        const int position = static_cast<int>(list().getCount()) - 1;  // just before "Select.."
        const std::uint32_t color = idxTev == tev::kDefault            ? defaultColor
                                    : idxTev == tev::kByApprovalStatus ? approvalStatusColor
                                                                       : TevToRGB(idxTev);
        insertItem(position, customText(idxTev), color);
        site().setModifiedFlag(true);
    }
    return true;
}

void CKivColorCtrl::SetComboText(long color, const KivString& colorText) {
    if (color == kCustomColor) {
        customPrefix = colorText;
        if (list().getCount() < 13) return;
        // Kept as it is: the walk starts at 11 in both layouts.
        for (int position = 11; position < list().getCount() - 1; ++position) {
            const std::uint32_t itemColorValue = itemColor(position);
            const short index = NearestTev(itemColorValue);
            list().deleteString(position);
            insertItem(position, customText(index), itemColorValue);
        }
        return;
    }
    const int position = color == kSelectColor ? static_cast<int>(list().getCount()) - 1
                         : displayApprovalStatusColor != 0 ? static_cast<int>(color)
                                                           : static_cast<int>(color) - 1;
    const std::uint32_t itemColorValue = itemColor(position);
    list().deleteString(position);
    insertItem(position, colorText, itemColorValue);
}

void CKivColorCtrl::ResolveSelection(long& comboIdx, long& colorIdx) {
    // 1. Any item but "Select..": store the list's current selection.
    if (comboIdx + 1 != list().getCount()) {
        comboIndex = static_cast<std::int32_t>(list().getCurSel());
        selectedColor = itemColor(comboIndex);
        return;
    }
    // 2. "Select..": the colour dialog, initial colour 0.
    KivColor chosen = 0;
    if (!m_colorDialog.choose(0, chosen)) {
        // 3. Cancelled: back to the stored selection.
        comboIdx = comboIndex;
        colorIdx = RGBToTev(selectedColor);
        list().setCurSel(comboIndex);
        return;
    }
    // 4. Confirmed: snap to the palette.
    const short nearest = NearestTev(chosen);
    selectedColor = TevToRGB(nearest);
    const short exact = RGBToTev(selectedColor);
    const long found = FindColor(exact);
    if (found == -1) {
        comboIndex = static_cast<std::int32_t>(comboIdx);
        insertItem(comboIndex, customText(exact), selectedColor);
        list().setCurSel(comboIndex);
    } else {
        comboIndex = static_cast<std::int32_t>(found);
        selectedColor = itemColor(comboIndex);
        list().setCurSel(comboIndex);
    }
    // comboIdx and colorIdx are left as they were: the event reports the position of "Select..".
}

// ---- Properties ----

void CKivColorCtrl::SetComboIndex(long index) {
    comboIndex = static_cast<std::int32_t>(index);
    list().setCurSel(comboIndex);
    selectedColor = itemColor(comboIndex);
    site().setModifiedFlag(true);
}

void CKivColorCtrl::setItemColorAndRedraw(int position, std::uint32_t color) {
    list().setItemData(position, static_cast<KivItemData>(color));
    list().redraw(kiv::kRedrawAll);
    site().setModifiedFlag(true);
}

// Kept on purpose: Block, Layer and ApprovalStatus always write positions 2, 1 and 0 (the layout with
// "ByApprovalStatus"), only Default follows the layout.
void CKivColorCtrl::SetBlockColorIndex(unsigned long color) {
    blockColor = static_cast<std::uint32_t>(color);
    setItemColorAndRedraw(2, blockColor);
}

void CKivColorCtrl::SetLayerColorIndex(unsigned long color) {
    layerColor = static_cast<std::uint32_t>(color);
    setItemColorAndRedraw(1, layerColor);
}

void CKivColorCtrl::SetDefaultColorIndex(unsigned long color) {
    defaultColor = static_cast<std::uint32_t>(color);
    setItemColorAndRedraw(displayApprovalStatusColor != 0 ? 3 : 2, defaultColor);
}

void CKivColorCtrl::SetApprovalStatusColorIndex(unsigned long color) {
    approvalStatusColor = static_cast<std::uint32_t>(color);
    setItemColorAndRedraw(0, approvalStatusColor);
}

void CKivColorCtrl::SetDisplayApprovalStatusColor(long display) {
    const std::int32_t value = display != 0 ? 1 : 0;  // a boolean: TRUE and VARIANT_TRUE are the same
    if (value == displayApprovalStatusColor) return;
    displayApprovalStatusColor = value;
    if (value != 0) {
        // Clearing the flag later removes nothing: the item stays.
        insertItem(0, KivString(kApprovalStatusText), approvalStatusColor);
    }
    // Does not mark the control modified.
}

// ---- Methods ----

unsigned long CKivColorCtrl::RGB_Equivalent(short idxTev) const {
    if (idxTev == tev::kDefault) return defaultColor;
    if (idxTev == tev::kByApprovalStatus) return approvalStatusColor;
    return TevToRGB(idxTev);  // 0 and 256 give white: no layer or block colour is looked up
}

short CKivColorCtrl::Tev_Equivalent(unsigned long idxRGB) const { return RGBToTev(static_cast<KivColor>(idxRGB)); }

void CKivColorCtrl::SetTooltipText(const KivString& /*txt*/) {}  // does nothing

void CKivColorCtrl::AboutDisplay(bool /*display*/) {}  // does nothing
