// KivChildControl: the common frame of a control with one owner-drawn child. Portable.
#include "KivChildControl.h"

#include "CKivDpi.h"
#include "KivControlFace.h"

namespace {
constexpr int kDroppedHeight = 140;  // the dropped list, pixels at 96 dpi
}  // namespace

void KivChildControl::OnCreate(IKivChildList& child, int clientHeight) {
    m_child.attach(&child);
    if (m_traits.setsFont) list().setDefaultGuiFont();
    if (m_traits.setsFieldHeight) list().setItemHeight(-1, clientHeight - CKivDpi::getOwnerDrawComboBoxHeightDiff());
    fillChild();
    list().setCurSel(storedSelection());
}

void KivChildControl::OnDestroyChild() {
    m_child.detach();
    onChildDestroyed();
}

void KivChildControl::OnSize(int width) {
    if (!m_child.exists()) return;
    list().invalidate(true);
    list().move(0, 0, width, m_traits.scalesDroppedHeight ? CKivDpi::scale(kDroppedHeight) : kDroppedHeight, true);
}

void KivChildControl::OnSetFocus() {
    if (m_child.exists()) list().setFocus();
}

void KivChildControl::OnEnabledChanged(bool enabled) { list().enable(enabled); }

void KivChildControl::OnCommand(int notification) {
    m_choice.notify(notification, list(), m_site, [this](int event) { fireChoice(event); });
}

void KivChildControl::OnDraw(IKivDC& dc, const KivRect& bounds, bool userMode, KivColor ambientBackColor) {
    KivDrawControlFace(dc, bounds, userMode, KivString(m_traits.designText), ambientBackColor,
                       m_child.exists() ? &list() : nullptr);
}

bool KivChildControl::MeasureItem(KivMeasureItem&) const { return false; }
