// CKivLineweightCtrl: the lineweight control's behaviour step by step. Portable.
#include "CKivLineweightCtrl.h"

#include <algorithm>
#include <climits>
#include <cstdint>

CKivLineweightCtrl::CKivLineweightCtrl(IKivControlSite& site) : KivChildControl(site, kChild) {}

void CKivLineweightCtrl::fireChoice(int event) {
    currentIndex = static_cast<std::int32_t>(list().getCurSel());
    // The event carries the label shown, never the code: hosts ask GetCurrentItemLineWeight for it.
    KivString label;
    list().getText(currentIndex, label);
    site().fireEvent(event, {KivEventArg::ofString(label)});
}

// ---- The list ----

void CKivLineweightCtrl::FillList() {
    list().resetContent();
    for (int i = 0; i < KivLineweightTable::kCount; ++i) {
        list().addString(lineweights.text(i, measurement));
        list().setItemData(i, static_cast<KivItemData>(lineweights.code(i)));
    }
    list().redraw(kiv::kRedrawAll);
}

void CKivLineweightCtrl::select(int index) {
    currentIndex = index;
    list().setCurSel(currentIndex);
    site().setModifiedFlag(true);
}

// ---- _DKivLineweight ----

void CKivLineweightCtrl::SetTooltipText(const KivString& text) {
    tooltipText = text;  // stored only: nothing shows it, and the control is not marked modified
}

void CKivLineweightCtrl::SetMeasurement(short value) {
    measurement = value;
    FillList();
    list().setCurSel(currentIndex);  // the same position, now in the other labels
    site().setModifiedFlag(true);
}

KivString CKivLineweightCtrl::SelectItem(const KivString& index) {
    // The argument is a label, despite its name.
    const int found = lineweights.findByText(index, measurement);
    if (found != -1) select(found);
    return KivString();  // always empty, found or not
}

long CKivLineweightCtrl::GetCurrentItemLineWeight() const {
    if (currentIndex < 0 || currentIndex >= KivLineweightTable::kCount) return kNoSelection;
    return lineweights.code(currentIndex);
}

KivString CKivLineweightCtrl::GetItemText(long index) const {
    KivString text;
    // Past the last item the text is empty (an index beyond int is past every item).
    if (index > -1) list().getText(static_cast<int>(std::min<long long>(index, INT_MAX)), text);
    return text;
}

void CKivLineweightCtrl::SelectItemByLineWeight(long lw) {
    const long long code = lw;
    if (code < INT32_MIN || code > INT32_MAX) return;  // no such code (long is 64-bit off Windows)
    const int found = lineweights.findByCode(static_cast<std::int32_t>(lw));
    if (found != -1) select(found);
}

void CKivLineweightCtrl::replaceSpecialText(int index, const KivString& text) {
    lineweights.replaceSpecialText(index, text);
    FillList();
    list().setCurSel(currentIndex);
    site().setModifiedFlag(true);
}

void CKivLineweightCtrl::SetByLayerText(const KivString& txt) { replaceSpecialText(0, txt); }
void CKivLineweightCtrl::SetByBlockText(const KivString& txt) { replaceSpecialText(1, txt); }
void CKivLineweightCtrl::SetDefinitionText(const KivString& txt) { replaceSpecialText(2, txt); }

void CKivLineweightCtrl::SetAboutDisplay(bool /*display*/) {}  // does nothing, as in every control
