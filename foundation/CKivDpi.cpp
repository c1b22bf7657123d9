// CKivDpi. Portable: values come from the platform probe once, then stay cached.
#include "CKivDpi.h"

namespace {

// Where the platform cannot measure (natively), the values a real combo box with DEFAULT_GUI_FONT
// has at 96 dpi (measured under Wine by tests/foundation/CKivDpiTest.cpp), scaled to the dpi.
constexpr int kHeightDiffAt96 = 4;
constexpr int kItemHeightAt96 = 13;

struct DpiState {
    bool known = false;
    int dpi = 96;
    bool metricsKnown = false;
    int heightDiff = kHeightDiffAt96;
    int itemHeight = kItemHeightAt96;
};

DpiState& state() {
    static DpiState s;
    return s;
}

int mulDiv96(int n, int dpi) {
    const long long product = static_cast<long long>(n) * dpi;
    const long long rounded = product >= 0 ? (product + 48) / 96 : -((-product + 48) / 96);
    return static_cast<int>(rounded);
}

void ensureMetrics() {
    DpiState& s = state();
    if (s.metricsKnown) return;
    int diff = 0;
    int item = 0;
    const int dpi = CKivDpi::getDpi();
    if (kivdpi_platform::measureComboBox(dpi, diff, item) && diff >= 0 && item > 0) {
        s.heightDiff = diff;
        s.itemHeight = item;
    } else {
        s.heightDiff = mulDiv96(kHeightDiffAt96, dpi);
        s.itemHeight = mulDiv96(kItemHeightAt96, dpi);
    }
    s.metricsKnown = true;
}

}  // namespace

int CKivDpi::getDpi() {
    DpiState& s = state();
    if (!s.known) {
        const int dpi = kivdpi_platform::queryDpi();
        s.dpi = dpi > 0 ? dpi : 96;
        s.known = true;
    }
    return s.dpi;
}

int CKivDpi::scale(int n) { return mulDiv96(n, getDpi()); }

int CKivDpi::getUnit() {
    const int unit = scale(1);
    return unit < 1 ? 1 : unit;
}

int CKivDpi::getOwnerDrawComboBoxHeightDiff() {
    ensureMetrics();
    return state().heightDiff;
}

int CKivDpi::getDefaultGuiFontComboBoxItemHeight() {
    ensureMetrics();
    return state().itemHeight;
}

void CKivDpi::setDpiForTesting(int dpi) {
    DpiState& s = state();
    s.dpi = dpi > 0 ? dpi : 96;
    s.known = true;
    s.metricsKnown = false;  // the platform's metrics follow the dpi unless set explicitly
}

void CKivDpi::setComboBoxMetricsForTesting(int heightDiff, int itemHeight) {
    DpiState& s = state();
    s.heightDiff = heightDiff;
    s.itemHeight = itemHeight;
    s.metricsKnown = true;
}

void CKivDpi::resetForTesting() { state() = DpiState(); }
