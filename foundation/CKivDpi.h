// CKivDpi: scaling of 96-dpi pixel lengths and the owner-drawn combo-box metrics.
// Portable. The platform's values come from CKivDpi_win.cpp (measured from the system) or
// CKivDpi_posix.cpp (96 dpi and the 96-dpi combo metrics scaled); tests may override both.
#pragma once

// A width and height in pixels, laid out as Win32's SIZE.
struct KivSize {
    long cx;
    long cy;
};

class CKivDpi {
public:
    // n at 96 dpi converted to the current dpi, rounded half away from zero (as MulDiv does).
    static int scale(int n);
    // Scales both members in place and returns the same pointer. Works for KivSize and, on
    // Windows, for SIZE (any struct with cx and cy).
    template <class Size>
    static Size* scale(Size* size) {
        if (size != nullptr) {
            size->cx = scale(static_cast<int>(size->cx));
            size->cy = scale(static_cast<int>(size->cy));
        }
        return size;
    }
    // The scale unit in whole pixels, at least 1: scale(1).
    static int getUnit();
    static int getOwnerDrawComboBoxHeightDiff();
    static int getDefaultGuiFontComboBoxItemHeight();
    static int getDpi();

    // Overrides for tests (natively; the Windows tests use the system's real values).
    static void setDpiForTesting(int dpi);
    static void setComboBoxMetricsForTesting(int heightDiff, int itemHeight);
    // Drops every override and cached value: the next query asks the platform again.
    static void resetForTesting();

    CKivDpi() = delete;
};

// Platform probes, one definition per platform.
namespace kivdpi_platform {
int queryDpi();
// Measures the combo-box metrics at the given dpi; returns false when they cannot be measured.
bool measureComboBox(int dpi, int& heightDiff, int& itemHeight);
}  // namespace kivdpi_platform
