// The demo dialog: one top-level window laid out as a host's property dialog, hosting the six
// controls through our own container, each filled as a host fills it, with a status line that shows
// the last event of any control. Win32 side. The demo program shows it; the dialog-open benchmark
// times it.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "KivCom.h"
#include "KivContainer.h"

struct KivDemoContent {
    std::wstring data;     // the folder holding lin\ and pat\ (Windows path)
    std::wstring pattern;  // a file under pat\ and the pattern's name in it: "FILE.pat(NAME)"
    double zoom = 2.0;     // the hatch preview's zoom factor
};

// A length or a rectangle laid out at 96 dpi, at the screen's dpi (CKivDpi::scale).
int KivDemoScale(int length);
RECT KivDemoScale(const RECT& rect);

class KivDemoDialog {
public:
    // The child ids of the owner-drawn lists inside the controls.
    static constexpr int kColourCombo = 100, kLinetypeCombo = 102, kLineweightCombo = 103, kLinetypeList = 105;
    // The linetypes loaded from the .lin file, after the three every list starts with.
    static const wchar_t* const kLinetypes[8];

    explicit KivDemoDialog(bool visible = true);
    ~KivDemoDialog();
    KivDemoDialog(const KivDemoDialog&) = delete;
    KivDemoDialog& operator=(const KivDemoDialog&) = delete;

    // Creates the six controls (by ProgID), listens to their events and fills them. Returns what went
    // wrong, one line each; empty when every control was created and filled as asked.
    std::wstring open(const KivDemoContent& content);
    HWND window() const { return m_frame; }
    // The owner-drawn list with `childId` inside `host`.
    static HWND child(const KivControlHost& host, int childId);

private:
    static HWND createFrame(bool visible);
    HWND label(const wchar_t* text, int x, int y, int width = 200);
    std::wstring fill(const KivDemoContent& content);

    HWND m_frame;
    HWND m_status = nullptr;

public:
    // Laid out in pixels at 96 dpi, scaled to the screen's dpi.
    KivControlHost colour{m_frame, KivDemoScale(RECT{12, 24, 220, 45})};
    KivControlHost linetype{m_frame, KivDemoScale(RECT{236, 24, 468, 45})};
    KivControlHost lineweight{m_frame, KivDemoScale(RECT{484, 24, 692, 45})};
    // The linetype list is as high as its list box, which the control moves to the scaled 140 pixels
    // whatever the control's own height: a shorter control would cut its last rows off.
    KivControlHost hatch{m_frame, KivDemoScale(RECT{12, 202, 220, 332})};
    KivControlHost linetypeList{m_frame, KivDemoScale(RECT{236, 202, 468, 342})};
    KivControlHost layer{m_frame, KivDemoScale(RECT{484, 202, 692, 332})};

private:
    class StatusSink;
    std::vector<std::unique_ptr<StatusSink>> m_sinks;
    std::vector<std::pair<KivComPtr<IConnectionPoint>, DWORD>> m_connections;
};

// The client size of the demo dialog at 96 dpi (scaled like everything in it).
constexpr int kKivDemoWidth = 704, kKivDemoHeight = 372;
