// Drawing the line families of a hatch pattern. Portable.
#include "KivHatchDrawing.h"

#include <cmath>

#include "KivHatchPattern.h"

namespace {

int device(double v) {
    if (std::isnan(v)) return 0;
    if (v >= kHatchDeviceLimit) return static_cast<int>(kHatchDeviceLimit);
    if (v <= -kHatchDeviceLimit) return -static_cast<int>(kHatchDeviceLimit);
    return static_cast<int>(v);  // truncated toward zero
}

struct Point {
    double x;
    double y;
};

// One paint: the device context, the style, the scratch dashes and the stroke budget.
class Painter {
public:
    Painter(IKivDC& dc, const KivHatchStyle& style, KivArray<double>& dashes, long long budget)
        : m_dc(dc), m_style(style), m_dashes(dashes), m_budget(budget) {}

    bool spent() const { return m_paint.strokes >= m_budget; }
    // The drawing stops here because the budget is spent.
    void stop() { m_paint.guardStopped = true; }
    void cutLines() { ++m_paint.linesCut; }
    KivHatchPaint result() const { return m_paint; }

    void moveTo(double x, double y) {
        m_dc.moveTo(device(x), device(y));
        ++m_paint.strokes;
    }
    void lineTo(double x, double y) {
        m_dc.lineTo(device(x), device(y));
        ++m_paint.strokes;
    }

    // A half-line from `start` in direction phi until the walked length passes `limit`; the
    // backward walk takes the dash list from its end.
    void walk(Point start, double phi, double limit, bool backward) {
        if (!std::isfinite(limit)) {  // it would never end
            ++m_paint.walksSkipped;
            return;
        }
        const int n = m_dashes.getLogicalLength();
        if (n == 0) return;  // only when the scratch list could not be allocated
        if (spent()) {
            stop();
            return;
        }
        double x = start.x, y = start.y;
        const double cosPhi = std::cos(phi), sinPhi = std::sin(phi);
        moveTo(x, y);
        double walked = 0.0;
        for (long long i = 0;; ++i) {
            if (spent()) {
                stop();
                return;
            }
            const int entry = static_cast<int>(i % n);
            const double d = m_style.zoomFactor * 3.0 * m_style.unitFactor * m_dashes[backward ? n - 1 - entry : entry];
            if (d > 0.05) {  // a dash
                walked += d;
                x += d * cosPhi;
                y += d * sinPhi;
                lineTo(x, y);
            } else if (d < -0.05) {  // a gap
                walked += -d;
                x += -d * cosPhi;
                y += -d * sinPhi;
                moveTo(x, y);
            } else {  // a dot: a one-pixel stroke
                walked += 1.0;
                x += 1.0 * cosPhi;
                y += 1.0 * sinPhi;
                lineTo(x, y);
            }
            if (walked > limit) return;  // the step that passes the limit is drawn in full
        }
    }

private:
    IKivDC& m_dc;
    const KivHatchStyle& m_style;
    KivArray<double>& m_dashes;
    long long m_budget;
    KivHatchPaint m_paint;
};

enum class Form { Axis0, Axis90, L1, R1, D1 };

}  // namespace

double KivHatchNormalisedAngle(double angle) {
    double theta = angle;
    if (!std::isfinite(theta)) return theta;  // no band holds it: nothing is drawn
    // Whole turns are added one at a time, as the earlier module did; an angle beyond a million
    // degrees below zero (never in a real file) gets its turns at once, as the exact remainder of a
    // division by 360 (adding a computed number of turns is rounded at such magnitudes and can land
    // far from the circle).
    if (theta < -1.0e6) theta = std::fmod(theta, 360.0);  // in (-360, 0]
    while (theta < -0.05) theta += 360.0;
    return theta;
}

int KivHatchBand(double t) {
    if (t > -0.05 && t < 0.05) return 1;      // 0
    if (t > 179.95 && t < 180.05) return 2;   // 180
    if (t > 89.95 && t < 90.05) return 3;     // 90
    if (t > 269.95 && t < 270.05) return 4;   // 270
    if (t > 0.05 && t < 89.95) return 5;
    if (t > 180.05 && t < 269.95) return 6;
    if (t > 90.05 && t < 179.95) return 7;
    if (t > 270.05 && t < 359.95) return 8;
    return 0;
}

long long KivHatchStrokeBudget(const KivRect& rect) {
    const double area = std::fabs((static_cast<double>(rect.right) - rect.left) * (static_cast<double>(rect.bottom) - rect.top));
    const double budget = static_cast<double>(kMaxHatchStrokesPerPixel) * area;
    if (!(budget > static_cast<double>(kMinHatchStrokeBudget))) return kMinHatchStrokeBudget;
    return budget > 1e15 ? 1000000000000000LL : static_cast<long long>(budget);
}

KivHatchPaint DrawHatch(IKivDC& dc, const KivRect& rect, const KivArray<HatchLineFamily>& families,
                        KivArray<double>& dashes, const KivHatchStyle& style, long long strokeBudget) {
    // 1. The pen.
    dc.selectPen(KivPen{kiv::kPsSolid, 1, style.foreColor});
    Painter painter(dc, style, dashes, strokeBudget < 0 ? KivHatchStrokeBudget(rect) : strokeBudget);
    const double W = static_cast<double>(rect.right) - static_cast<double>(rect.left);
    const double H = static_cast<double>(rect.bottom) - static_cast<double>(rect.top);
    const double S = style.zoomFactor * 3.0 * style.unitFactor;
    const double PI = families.getLogicalLength() > 0 ? std::acos(-1.0) : 0.0;

    // 2. Each family in list order.
    for (int index = 0; index < families.getLogicalLength(); ++index) {
        if (painter.spent()) {
            painter.stop();
            break;
        }
        const HatchLineFamily family = families[index];
        DecodeDashes(family.dashes, dashes);
        const double theta = KivHatchNormalisedAngle(family.angle);
        const double r = (360.0 - theta) * PI / 180.0;
        const double c = std::cos(r), s = std::sin(r);
        const double Xo = S * family.originX;
        const double Yo = H - S * family.originY;

        // One side of lines: line k while |k x deltaY x S| is below the extent.
        auto side = [&](double extent, Form form, double L, double forward, double backward, bool backwardFirst) {
            const double maxLines = kMaxHatchLinesPerPixel * (std::fabs(extent) + 1.0);
            for (long long k = 0; std::fabs(static_cast<double>(k) * family.deltaY * S) < extent; ++k) {
                if (painter.spent()) {
                    painter.stop();
                    return;
                }
                if (static_cast<double>(k) >= maxLines) {
                    painter.cutLines();
                    return;
                }
                const double a = static_cast<double>(k) * family.deltaX * S;
                const double p = static_cast<double>(k) * family.deltaY * S;
                Point P{0.0, 0.0};
                switch (form) {
                case Form::Axis0:
                    P = {Xo + a * std::cos(0.0) + p * std::cos(-PI / 2), Yo + a * std::sin(0.0) + p * std::sin(-PI / 2)};
                    break;
                case Form::Axis90: {
                    const double psi = PI * theta / 180.0;
                    P = {Xo + a * std::cos(psi) + p * std::cos(0.0), Yo + a * std::sin(psi) + p * std::sin(0.0)};
                    break;
                }
                case Form::L1: {
                    const double alpha = -theta * PI / 180.0, beta = (-90.0 - theta) * PI / 180.0;
                    P = {Xo + a * std::cos(alpha) + p * std::cos(beta), Yo + a * std::sin(alpha) + p * std::sin(beta)};
                    break;
                }
                case Form::R1: {
                    const double gamma = (180.0 - theta) * PI / 180.0, delta = (90.0 - theta) * PI / 180.0;
                    P = {Xo + a * std::cos(gamma) + p * std::cos(delta), Yo + a * std::sin(gamma) + p * std::sin(delta)};
                    break;
                }
                case Form::D1: {
                    const double gamma = (180.0 - theta) * PI / 180.0, epsilon = (270.0 - theta) * PI / 180.0;
                    P = {Xo - a * std::cos(gamma) + p * std::cos(epsilon), Yo - a * std::sin(gamma) + p * std::sin(epsilon)};
                    break;
                }
                }
                const double limit = std::fabs(a) + L;
                if (backwardFirst) {
                    painter.walk(P, backward, limit, true);
                    painter.walk(P, forward, limit, false);
                } else {
                    painter.walk(P, forward, limit, false);
                    painter.walk(P, backward, limit, true);
                }
            }
        };

        const double generalForward = -theta * PI / 180.0;
        const double generalBackward = (-180.0 - theta) * PI / 180.0;
        switch (KivHatchBand(theta)) {
        case 1: {  // the 0 band: cos and sin of the degree value itself, as the earlier module had it
            const double L = std::fabs(W * std::cos(theta)) + std::fabs(H * std::sin(theta));
            side(std::fabs(H * std::cos(theta)) + 1.0, Form::Axis0, L, 0.0, PI, false);
            break;
        }
        case 2: {
            const double L = std::fabs(W * c) + std::fabs(H * s);
            side(std::fabs(H * c) + 1.0, Form::Axis0, L, PI, 0.0, false);
            break;
        }
        case 3:
        case 4: {
            const double L = std::fabs(W * c) + std::fabs(H * s);
            side(std::fabs(W * s) + 1.0, Form::Axis90, L, -theta * PI / 180.0, PI * theta / 180.0, false);
            break;
        }
        case 5: {
            const double L = std::fabs(W * c) + std::fabs(H * s);
            side(std::fabs(H * c) + 1.0, Form::L1, L, generalForward, generalBackward, false);
            side(std::fabs(W * s) + 1.0, Form::R1, L, generalForward, generalBackward, false);  // line 0 again
            break;
        }
        case 6: {
            const double L = std::fabs(W * c) + std::fabs(H * s);
            side(std::fabs(H * c) + 1.0, Form::R1, L, generalForward, generalBackward, false);
            side(std::fabs(W * s) + 1.0, Form::L1, L, generalForward, generalBackward, false);
            break;
        }
        case 7: {
            const double L = std::fabs(W * s) + std::fabs(H * c);
            side(L + 1.0, Form::R1, L, generalForward, generalBackward, false);
            break;
        }
        case 8: {  // the backward walk first
            const double L = std::fabs(W * s) + std::fabs(H * c);
            side(L + 1.0, Form::D1, L, generalForward, generalBackward, true);
            break;
        }
        default:  // on a band bound, or 359.95 and above: nothing
            break;
        }
    }
    // 3. The previous pen back.
    dc.restorePen();
    return painter.result();
}
