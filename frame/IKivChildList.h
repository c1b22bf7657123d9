// IKivChildList: the seam between a list-based control and its owner-drawn child window.
// Portable. One interface serves combo boxes (CB_*) and list boxes (LB_*): each call is one message
// with the platform's exact results (kiv::kCbErr, kiv::kCbErrSpace, insertion at -1 appends, an
// out-of-range selection clears it). The Win32 shell implements it with SendMessageW on the real
// window; tests use an in-memory combo box (tests/support/FakeComboBox). Before the child window
// exists a control talks to KivNullChildList, which answers 0 to everything as SendMessage to no
// window does: list messages then have no effect.
#pragma once

#include "KivString.h"
#include "KivTypes.h"

class IKivChildList {
public:
    virtual ~IKivChildList() = default;

    virtual KivLResult addString(const KivString& text) = 0;              // CB_ADDSTRING
    virtual KivLResult insertString(int index, const KivString& text) = 0;  // CB_INSERTSTRING
    virtual KivLResult deleteString(int index) = 0;                         // CB_DELETESTRING
    virtual void resetContent() = 0;                                        // CB_RESETCONTENT
    virtual KivLResult setItemData(int index, KivItemData data) = 0;        // CB_SETITEMDATA
    virtual KivLResult getItemData(int index) = 0;                          // CB_GETITEMDATA
    virtual KivLResult getText(int index, KivString& text) = 0;             // CB_GETLBTEXT
    virtual KivLResult getCount() = 0;                                      // CB_GETCOUNT
    virtual KivLResult getCurSel() = 0;                                     // CB_GETCURSEL
    virtual KivLResult setCurSel(int index) = 0;                            // CB_SETCURSEL
    virtual bool getDroppedState() = 0;                                     // CB_GETDROPPEDSTATE
    virtual KivLResult setItemHeight(int index, int height) = 0;            // CB_SETITEMHEIGHT
    virtual KivLResult getItemHeight(int index) = 0;                        // CB_GETITEMHEIGHT

    // Window operations on the child.
    virtual void setDefaultGuiFont() = 0;                            // WM_SETFONT, DEFAULT_GUI_FONT, no redraw
    virtual void redraw(unsigned flags) = 0;                         // RedrawWindow(nullptr, nullptr, flags)
    virtual void invalidate(bool erase) = 0;                         // InvalidateRect(nullptr, erase)
    virtual void update() = 0;                                       // UpdateWindow
    virtual void move(int x, int y, int width, int height, bool repaint) = 0;  // MoveWindow
    virtual void enable(bool enabled) = 0;                           // EnableWindow
    virtual void setFocus() = 0;                                     // SetFocus
};

// The declarations of every member above, for a class that implements the whole seam (the Win32
// child, the in-memory combo box of the tests).
#define KIV_CHILD_LIST_MEMBERS                                                \
    KivLResult addString(const KivString& text) override;                    \
    KivLResult insertString(int index, const KivString& text) override;      \
    KivLResult deleteString(int index) override;                             \
    void resetContent() override;                                            \
    KivLResult setItemData(int index, KivItemData data) override;            \
    KivLResult getItemData(int index) override;                              \
    KivLResult getText(int index, KivString& text) override;                 \
    KivLResult getCount() override;                                          \
    KivLResult getCurSel() override;                                         \
    KivLResult setCurSel(int index) override;                                \
    bool getDroppedState() override;                                         \
    KivLResult setItemHeight(int index, int height) override;                \
    KivLResult getItemHeight(int index) override;                            \
    void setDefaultGuiFont() override;                                       \
    void redraw(unsigned flags) override;                                    \
    void invalidate(bool erase) override;                                    \
    void update() override;                                                  \
    void move(int x, int y, int width, int height, bool repaint) override;   \
    void enable(bool enabled) override;                                      \
    void setFocus() override;

// The child before its window exists: every message is sent to no window and yields 0.
class KivNullChildList final : public IKivChildList {
public:
    static KivNullChildList& instance();

    KivLResult addString(const KivString&) override { return 0; }
    KivLResult insertString(int, const KivString&) override { return 0; }
    KivLResult deleteString(int) override { return 0; }
    void resetContent() override {}
    KivLResult setItemData(int, KivItemData) override { return 0; }
    KivLResult getItemData(int) override { return 0; }
    KivLResult getText(int, KivString& text) override {
        text = KivString();
        return 0;
    }
    KivLResult getCount() override { return 0; }
    KivLResult getCurSel() override { return 0; }
    KivLResult setCurSel(int) override { return 0; }
    bool getDroppedState() override { return false; }
    KivLResult setItemHeight(int, int) override { return 0; }
    KivLResult getItemHeight(int) override { return 0; }
    void setDefaultGuiFont() override {}
    void redraw(unsigned) override {}
    void invalidate(bool) override {}
    void update() override {}
    void move(int, int, int, int, bool) override {}
    void enable(bool) override {}
    void setFocus() override {}
};
