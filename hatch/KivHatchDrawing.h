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
// Every pattern that can finish is drawn exactly, however close its lines. The guard stops only
// what could never end:
// - a side whose scaled spacing is 0 would draw its line 0 again for ever: it draws it once;
// - a walk whose limit is not a finite number (an infinite stagger) would never end, nor would any
//   later line's (the stagger grows with the line number): the side ends there;
// - every MoveTo and LineTo counts against a budget per paint, kMaxHatchStrokesPerPixel for each
//   pixel of the rectangle (at least kMinHatchStrokeBudget); when it is spent the drawing stops.
// (A spacing that is not a number needs no guard: the test before line 0 already fails.) The real
// patterns need at most about 150 strokes per pixel (at zoom 0.05), far below the budget. Device
// coordinates are clamped to GDI's range (kHatchDeviceLimit) before truncation; a coordinate that is
// not a number becomes 0.
//
// On a device that draws pixels (IKivDC::strokeRules: a window or a bitmap), the strokes are the
// same but only those that can change a pixel are sent: not a stroke beyond the device's box, not
// one from a point to itself, and not one whose ends are those of a stroke already drawn in this
// paint (found in the previous walk of the family at the same step, or in a table of recent
// strokes, each while it finds some: KivHatchRepeats.h). A walk is stepped only while it can still
// reach the box: once it is beyond an edge it moves away from, the steps left to its end are counted
// from the walked lengths that every walk of the family shares. A metafile, a printer or a recording
// gets every stroke in order.
#pragma once

#include "HatchLineFamily.h"
#include "IKivDC.h"
#include "ORVRoots/Exp/KivArray.h"

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
    long long strokes = 0;       // the drawing's MoveTo and LineTo, those a raster device was spared included
    bool guardStopped = false;   // the stroke budget was spent before the drawing ended
    int zeroSpacingSides = 0;    // sides of a spacing of 0, drawn with their line 0 alone
    int walksSkipped = 0;        // walks skipped for a limit that is not a finite number (two a side)
};

// The bands of a normalised angle (degrees, every bound exclusive), each with its own layout of
// lines: its length term, its sides and their extents, its base points and walk directions.
enum class KivHatchBand {
    None,           // on a bound (0.05, 89.95, 90.05, ...) or 359.95 and above: draws nothing
    Near0,          // -0.05 .. 0.05: one side, cos and sin taken of the degree value itself
    Near180,        // 179.95 .. 180.05: one side
    Near90,         // 89.95 .. 90.05: one side
    Near270,        // 269.95 .. 270.05: one side
    From0To90,      // 0.05 .. 89.95: two sides, left of line 0 then right of it
    From180To270,   // 180.05 .. 269.95: two sides, right of line 0 then left of it
    From90To180,    // 90.05 .. 179.95: one side
    From270To360,   // 270.05 .. 359.95: one side, the backward walk first
};

// The band a normalised angle falls in.
KivHatchBand KivHatchBandOf(double theta);
// The angle as the drawing normalises it: -90 is 270; -0.04 stays; 360 and 450 stay.
double KivHatchNormalisedAngle(double angle);

// The stroke budget of one paint into `rect`.
long long KivHatchStrokeBudget(const KivRect& rect);

// Draws every family (decoding each one's dashes into `dashes`, the scratch list) into `rect` with
// a solid one-pixel pen of the style's colour, selected for the drawing and put back after it.
// `strokeBudget` below 0 means the budget of the rectangle.
KivHatchPaint DrawHatch(IKivDC& dc, const KivRect& rect, const KivArray<HatchLineFamily>& families,
                        KivArray<double>& dashes, const KivHatchStyle& style, long long strokeBudget = -1);
