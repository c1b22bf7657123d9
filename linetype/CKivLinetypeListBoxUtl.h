// CKivLinetypeListBoxUtl: the linetype list control's owner-drawn list box. Portable.
//
// It draws rows as the combo does, with two differences kept from the earlier module: the selected
// look and the focus rectangle only when the state is not ODS_COMBOBOXEDIT, and a sample pen of 1
// pixel at every dpi (the list's samples are not thickened on high-dpi screens).
#pragma once

#include "IKivChildList.h"
#include "IKivDC.h"
#include "KivLinetypeModel.h"

class CKivLinetypeListBoxUtl {
public:
    static constexpr unsigned long kStyle = 0x50200051;  // WS_CHILD|WS_VISIBLE|WS_VSCROLL|LBS_NOTIFY|
                                                         // LBS_OWNERDRAWFIXED|LBS_HASSTRINGS (no LBS_SORT)
    static constexpr int kChildId = 105;
    static constexpr int kPenWidth = 1;

    explicit CKivLinetypeListBoxUtl(const KivLinetypeModel& model) : m_model(model) {}

    void attach(IKivChildList* window) { m_window = window; }
    void detach() { m_window = nullptr; }
    bool exists() const { return m_window != nullptr; }
    IKivChildList& list() const { return m_window != nullptr ? *m_window : KivNullChildList::instance(); }

    void DrawItem(IKivDC& dc, const KivDrawItem& item) const;

private:
    const KivLinetypeModel& m_model;
    IKivChildList* m_window = nullptr;
};
