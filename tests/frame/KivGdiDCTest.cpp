// The Win32 device context's selections in this process: a pen or a brush that cannot be recorded
// (no memory) is neither left selected nor left alive, and what was recorded is put back.
#include <gtest/gtest.h>
#include <windows.h>

#include <new>

#include "ContainerSupport.h"
#include "FailingNew.h"
#include "KivWin32Seams.h"

TEST(KivGdiDC, APenOrBrushThatCannotBeRecordedIsNeitherSelectedNorLeftAlive) {
    HDC screen = GetDC(nullptr);
    KivMemoryDC memory(screen);
    ReleaseDC(nullptr, screen);
    HDC hdc = memory.get();
    const HGDIOBJ pen = GetCurrentObject(hdc, OBJ_PEN), brush = GetCurrentObject(hdc, OBJ_BRUSH);
    const long objects = gdiObjects();
    {
        KivGdiDC dc(hdc);
        {
            failingnew::FailingAllocation failing(1);
            EXPECT_THROW(dc.selectPen(KivPen{kiv::kPsSolid, 3, 0x000000FF}), std::bad_alloc);
        }
        {
            failingnew::FailingAllocation failing(1);
            EXPECT_THROW(dc.selectBrush(KivBrush::solid(0x0000FF00)), std::bad_alloc);
        }
        EXPECT_EQ(GetCurrentObject(hdc, OBJ_PEN), pen);
        EXPECT_EQ(GetCurrentObject(hdc, OBJ_BRUSH), brush);
        EXPECT_EQ(gdiObjects(), objects);
        // With memory, each selection is made and put back, last first.
        dc.selectPen(KivPen{kiv::kPsSolid, 3, 0x000000FF});
        dc.selectBrush(KivBrush::solid(0x0000FF00));
        EXPECT_NE(GetCurrentObject(hdc, OBJ_PEN), pen);
        EXPECT_NE(GetCurrentObject(hdc, OBJ_BRUSH), brush);
        dc.restoreBrush();
        EXPECT_EQ(GetCurrentObject(hdc, OBJ_BRUSH), brush);
        dc.restorePen();
        EXPECT_EQ(GetCurrentObject(hdc, OBJ_PEN), pen);
        dc.selectPen(KivPen{kiv::kPsSolid, 1, 0});  // left for the destructor
    }
    EXPECT_EQ(GetCurrentObject(hdc, OBJ_PEN), pen);
    EXPECT_EQ(gdiObjects(), objects);
}
