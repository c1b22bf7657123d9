// CKivLinetypeComboBoxUtl: the linetype combo's owner-drawn child. Portable: it draws each row
// (sample and name) with the control's definition for that row, its sample pen CKivDpi::getUnit()
// pixels wide (thicker on high-dpi screens).
#pragma once

#include "KivLinetypeRow.h"

class CKivLinetypeComboBoxUtl : public KivLinetypeRowDrawer {
public:
    CKivLinetypeComboBoxUtl(const KivChildWindow& window, const KivLinetypeModel& model)
        : KivLinetypeRowDrawer(window, model, true, false) {}
};
