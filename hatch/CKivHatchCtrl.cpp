// CKivHatchCtrl: the hatch preview control's behaviour. Portable.
#include "CKivHatchCtrl.h"

#include <cmath>

#include "KivControlFace.h"
#include "KivHatchPattern.h"

CKivHatchCtrl::CKivHatchCtrl(IKivControlSite& site) : m_site(site) { LoadPattern(m_pattern, m_lineFamilies); }

void CKivHatchCtrl::changed() {
    m_site.setModifiedFlag(true);
    m_site.redraw();
}

void CKivHatchCtrl::Refresh() {
    // A changed pattern file is picked up only here and by a Pattern assignment.
    LoadPattern(m_pattern, m_lineFamilies);
    changed();
}

void CKivHatchCtrl::SetMetric(bool metric) {
    m_metric = metric ? 1 : 0;
    m_unitFactor = metric ? 1.0 : kInchFactor;  // the file is not read again
    changed();
}

void CKivHatchCtrl::SetZoomFactor(double zoom) {
    if (!(zoom > kMinimumZoom)) return;  // 0.05 and below (and not a number) are dropped, silently
    m_zoomFactor = zoom;
    changed();
}

void CKivHatchCtrl::SetPattern(const KivString& pattern) {
    m_pattern = pattern;
    LoadPattern(m_pattern, m_lineFamilies);
    changed();
}

void CKivHatchCtrl::LoadZoomFactor(double stored) { m_zoomFactor = stored < kMinimumZoom || std::isnan(stored) ? 1.0 : stored; }

KivHatchPaint CKivHatchCtrl::OnDraw(IKivDC& dc, const KivRect& bounds, bool userMode, KivColor backColor, KivColor foreColor) {
    if (!userMode) {
        // The same face as every control, with this control's name and no child to repaint.
        KivDrawControlFace(dc, bounds, false, KivString(kDesignText), 0, nullptr);
        return KivHatchPaint{};
    }
    const KivColor savedBackground = dc.getBkColor();
    dc.fillRect(bounds, KivBrush::solid(backColor));
    KivHatchStyle style;
    style.zoomFactor = m_zoomFactor;
    style.unitFactor = m_unitFactor;
    style.foreColor = foreColor;
    const KivHatchPaint paint = DrawHatch(dc, bounds, m_lineFamilies, m_dashes, style);
    dc.setBkColor(savedBackground);
    return paint;
}
