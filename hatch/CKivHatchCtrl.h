// CKivHatchCtrl: the hatch preview control's behaviour. Portable: a rectangle filled with the back
// colour and covered with the lines of the pattern its Pattern property names, in the fore colour,
// at ZoomFactor, in millimetres or inches (Metric). It has no child window, no list and no events.
#pragma once

#include <cstdint>

#include "HatchLineFamily.h"
#include "IKivControlSite.h"
#include "IKivDC.h"
#include "KivControlCore.h"
#include "KivHatchDrawing.h"
#include "KivString.h"
#include "ORVRoots/Exp/KivArray.h"

class CKivHatchCtrl : public KivControlCore {
public:
    static constexpr const char16_t* kDesignText = u"KivHatchCtrl";
    static constexpr double kMinimumZoom = 0.05;  // ZoomFactor takes only values above it
    static constexpr double kInchFactor = 25.4;

    // The defaults, then a load with the empty Pattern (which loads nothing).
    explicit CKivHatchCtrl(IKivControlSite& site);

    // _DKivHatch. Each setter and Refresh marks the control modified and redraws it.
    void Refresh();
    bool GetMetric() const { return m_metric != 0; }
    void SetMetric(bool metric);
    double GetZoomFactor() const { return m_zoomFactor; }
    void SetZoomFactor(double zoom);
    KivString GetPattern() const { return m_pattern; }
    void SetPattern(const KivString& pattern);

    // A ZoomFactor read back from saved state: one below 0.05 (or not a number) becomes 1.0.
    void LoadZoomFactor(double stored);
    // The ZoomFactor a reset state gives.
    void ResetZoomFactor() { m_zoomFactor = 1.0; }

    // OnDraw: design mode (the container's UserMode false) writes the control's name centred on
    // white; user mode fills with the back colour and draws the pattern in the fore colour. The DC's
    // background colour is put back at the end. Returns what the pattern drawing did.
    KivHatchPaint OnDraw(IKivDC& dc, const KivRect& bounds, bool userMode, KivColor backColor, KivColor foreColor);

    // Fields, in order, readable by the frame and the tests.
    std::int32_t m_metric = 1;  // a boolean: millimetres when set, inches when not
    double m_zoomFactor = 1.0;
    double m_unitFactor = 1.0;  // 1.0 millimetres, 25.4 inches; follows m_metric
    KivString m_pattern;
    KivString m_unused;  // constructed empty and never used, as in the earlier module
    KivArray<double> m_dashes;
    KivArray<HatchLineFamily> m_lineFamilies;

private:
    void changed();  // modified, redrawn
    IKivControlSite& m_site;
};
