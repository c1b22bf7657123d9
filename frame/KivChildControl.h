// KivChildControl: the common frame of a control that owns one owner-drawn child window (a combo box
// or a list box) over its whole rectangle. Portable. A control built on it gives only its
// differences: the child's kind, style, identifier and design-mode text and the few departures of
// its creation and size (KivChildTraits), how it fills the child and which row it selects, its drawer,
// and its events. The ActiveX frame (frame/win/KivChildShell) creates the real child window those
// traits describe and forwards the window's messages here.
#pragma once

#include "IKivChildList.h"
#include "IKivControlSite.h"
#include "IKivDC.h"
#include "KivControlCore.h"
#include "KivDropDownChoice.h"

enum class KivChildKind { ComboBox, ListBox };

// What a control's child is and how the frame treats it.
struct KivChildTraits {
    // The style of every drop-down combo child: WS_CHILD | WS_VISIBLE | WS_VSCROLL |
    // CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | CBS_NOINTEGRALHEIGHT | CBS_DISABLENOSCROLL.
    static constexpr unsigned long kDropDownList = 0x50200E13;

    KivChildKind kind;
    unsigned long style;         // window styles of the child
    int id;                      // its child identifier
    const char16_t* designText;  // the design-mode face
    bool setsFont;               // WM_SETFONT with the stock GUI font at creation
    bool setsFieldHeight;        // the selection field as high as the control less the combo's frame
    bool scalesDroppedHeight;    // the dropped list CKivDpi::scale(140) pixels high, else a literal 140
};

// The child's window seam: attached when the window is created, detached when it is destroyed.
// Before that, and after, its list is KivNullChildList (messages to no window).
class KivChildWindow {
public:
    void attach(IKivChildList* window) { m_window = window; }
    void detach() { m_window = nullptr; }
    bool exists() const { return m_window != nullptr; }
    IKivChildList& list() const { return m_window != nullptr ? *m_window : KivNullChildList::instance(); }

private:
    IKivChildList* m_window = nullptr;
};

class KivChildControl : public KivControlCore {
public:
    KivChildControl(IKivControlSite& site, const KivChildTraits& traits) : m_site(site), m_traits(traits) {}

    const KivChildTraits& traits() const { return m_traits; }
    // The child's window, as the drawers reach it.
    const KivChildWindow& child() const { return m_child; }

    // The child window has been created (the traits' style and identifier) over a client rectangle
    // `clientHeight` pixels high: font and selection-field height as the traits say, the rows, the
    // stored selection.
    void OnCreate(IKivChildList& child, int clientHeight = 0);
    // The child window is gone (the control's window is being destroyed).
    void OnDestroyChild();
    // The child moves to (0, 0), the control's width and the dropped list's height.
    void OnSize(int width);
    void OnSetFocus();
    void OnEnabledChanged(bool enabled);
    // The child's notification codes (WM_COMMAND); the frame passes each on to its base afterwards.
    // A drop-down combo applies KivDropDownChoice.
    virtual void OnCommand(int notification);
    // The face: the design text centred on white in design mode; in user mode the ambient colour and
    // the child repainted at once.
    void OnDraw(IKivDC& dc, const KivRect& bounds, bool userMode, KivColor ambientBackColor);

    // Owner draw, reflected to the child's drawer.
    virtual void DrawItem(IKivDC& dc, const KivDrawItem& item) const = 0;
    // The height of an item; false leaves the child the item height of its font.
    virtual bool MeasureItem(KivMeasureItem& item) const;

    // Set while a change made with the dropped list waits for the close-up (drop-down combos).
    bool droppedDuringChange() const { return m_choice.droppedDuringChange(); }

protected:
    IKivChildList& list() const { return m_child.list(); }
    IKivControlSite& site() const { return m_site; }

    // Fills the new child with the control's rows.
    virtual void fillChild() = 0;
    // The row the child selects once filled.
    virtual int storedSelection() const = 0;
    // The child went with its window; a control forgets what it knew of the child's rows.
    virtual void onChildDestroyed() {}
    // A drop-down combo's choice: fire `event` (KivDropDownChoice::Event) for the child's selection.
    virtual void fireChoice(int event) { (void)event; }

private:
    IKivControlSite& m_site;
    const KivChildTraits m_traits;
    KivChildWindow m_child;
    KivDropDownChoice m_choice;
};
