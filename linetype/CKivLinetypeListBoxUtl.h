// CKivLinetypeListBoxUtl: the linetype list control's owner-drawn list box. Portable.
//
// It draws rows as the combo does, with two differences kept from the earlier module: the selected
// look and the focus rectangle only when the state is not ODS_COMBOBOXEDIT, and a sample pen of 1
// pixel at every dpi (the list's samples are not thickened on high-dpi screens).
#pragma once

#include "KivLinetypeRow.h"

class CKivLinetypeListBoxUtl : public KivLinetypeRowDrawer {
public:
    CKivLinetypeListBoxUtl(const KivChildWindow& window, const KivLinetypeModel& model)
        : KivLinetypeRowDrawer(window, model, false, true) {}
};
