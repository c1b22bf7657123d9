// KivChildShell: the Win32 shell of every control with one owner-drawn child window. Win32 side.
// It creates the real combo box or list box the core's KivChildTraits describes over the control's
// window, and forwards the window's messages to the core: size, focus, Enabled, the child's
// notifications, owner draw and measure, and OnDraw. A control family gives only its core.
#pragma once

#include <memory>
#include <utility>

#include "KivChildControl.h"
#include "KivOleControl.h"

class KivChildShell final : public KivControlBehaviour {
public:
    KivChildShell(KivOleControl& frame, std::unique_ptr<KivChildControl> core)
        : m_frame(frame), m_core(std::move(core)) {}

    KivControlCore* core() override { return m_core.get(); }
    void onCreate(HWND window, const RECT& client) override;
    void onDestroy() override;
    void onSize(int width, int) override { m_core->OnSize(width); }
    void onSetFocus() override { m_core->OnSetFocus(); }
    void onEnabledChanged(bool enabled) override { m_core->OnEnabledChanged(enabled); }
    void onCommand(WPARAM wParam, LPARAM lParam) override;
    bool onDrawItem(const DRAWITEMSTRUCT& item) override;
    bool onMeasureItem(MEASUREITEMSTRUCT& item) override;
    void onDraw(IKivDC& dc, const KivRect& bounds, bool userMode) override {
        m_core->OnDraw(dc, bounds, userMode, m_frame.ambientBackColor());
    }
    IKivChildList* childList() override { return m_child.get(); }

private:
    KivOleControl& m_frame;
    std::unique_ptr<KivChildControl> m_core;
    std::unique_ptr<KivWin32ChildList> m_child;  // the real child, while its window exists
};

// The shell of a `Core` made with the frame as its control site and `args` after it.
template <class Core, class... Args>
std::unique_ptr<KivControlBehaviour> KivMakeChildShell(KivOleControl& frame, Args&&... args) {
    return std::make_unique<KivChildShell>(frame, std::make_unique<Core>(frame, std::forward<Args>(args)...));
}

// Creates a control of class `cls` whose core, a `Core` made with its frame alone, is in the shell.
template <class Core>
HRESULT KivCreateChildControl(const KivControlClass& cls, REFIID riid, void** out) {
    return KivCreateControl(cls, [](KivOleControl& frame) { return KivMakeChildShell<Core>(frame); }, riid, out);
}
