// Drawing the line families of a hatch pattern. Portable, on IKivDC.
//
// Each family is a set of parallel lines laid out in bands of its angle (degrees, normalised into
// -0.05 .. by adding 360; 360 and more are not reduced). A line is drawn as two dash walks from its
// base point in opposite directions, each until the walked length passes |a| + L (a: the line's
// stagger along itself, L: the band's length term). Pattern units become pixels by S = zoom x 3 x
// unit (unit 1 for millimetres, 25.4 for inches); the origin is the rectangle's lower-left corner
// with y growing upwards; coordinates are truncated toward zero. A theta exactly on a band bound, or
// at 359.95 and above, draws nothing (kept: the earlier module drew nothing there).
//
// The guard: a preview can never hang, and nothing a real pattern draws is changed.
// - A side of a family draws at most kMaxHatchLinesPerPixel lines per pixel of its extent: only a
//   family whose lines lie closer than 1/64 pixel reaches it (a spacing of 0 never ends otherwise).
// - A walk whose limit is not a finite number (an infinite stagger) would never end: it is skipped.
// - Every MoveTo and LineTo counts against a budget per paint, kMaxHatchStrokesPerPixel for each
//   pixel of the rectangle (at least kMinHatchStrokeBudget); when it is spent the drawing stops.
// The real patterns of bench/ need at most about 140 strokes per pixel (at zoom 0.05), so every real
// pattern at any zoom is drawn exactly. Device coordinates are clamped to GDI's range
// (kHatchDeviceLimit) before truncation; a coordinate that is not a number becomes 0.
#pragma once

#include "HatchLineFamily.h"
#include "IKivDC.h"
#include "ORVRoots/Exp/KivArray.h"

constexpr double kMaxHatchLinesPerPixel = 64.0;
constexpr long long kMaxHatchStrokesPerPixel = 1024;
constexpr long long kMinHatchStrokeBudget = 1LL << 24;
constexpr double kHatchDeviceLimit = 134217727.0;  // 2^27 - 1: the coordinate range GDI draws in

struct KivHatchStyle {
    double zoomFactor = 1.0;  // never below 0.05 once set through the control
    double unitFactor = 1.0;  // 1.0 millimetres, 25.4 inches
    KivColor foreColor = 0;   // the pen's colour
};

// What one paint did.
struct KivHatchPaint {
    long long strokes = 0;        // MoveTo and LineTo calls issued
    bool guardStopped = false;    // the stroke budget was spent before the drawing ended
    int linesCut = 0;             // sides whose lines were cut at the line limit
    int walksSkipped = 0;         // walks skipped for a limit that is not a finite number
};

// The band a normalised angle falls in, for reports: 0 for none (a bound, 359.95 and above).
int KivHatchBand(double theta);
// The angle as the drawing normalises it: -90 is 270; -0.04 stays; 360 and 450 stay.
double KivHatchNormalisedAngle(double angle);

// The stroke budget of one paint into `rect`.
long long KivHatchStrokeBudget(const KivRect& rect);

// Draws every family (decoding each one's dashes into `dashes`, the scratch list) into `rect` with
// a solid one-pixel pen of the style's colour, selected for the drawing and put back after it.
// `strokeBudget` below 0 means the budget of the rectangle.
KivHatchPaint DrawHatch(IKivDC& dc, const KivRect& rect, const KivArray<HatchLineFamily>& families,
                        KivArray<double>& dashes, const KivHatchStyle& style, long long strokeBudget = -1);
