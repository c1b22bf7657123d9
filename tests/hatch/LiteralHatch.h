// Test support: the hatch drawing written out as plainly as it reads, for the tests to compare the
// control's drawing with. Every family, every line of every side, both walks of every line, every
// stroke sent to the device in order: no guard (only an optional stroke count at which it gives up,
// for inputs that would never end), nothing left out on any device. Pixels per pattern unit S = zoom
// x 3 x unit; the origin is the rectangle's lower-left corner; coordinates are truncated.
#pragma once

#include <cmath>

#include "HatchLineFamily.h"
#include "IKivDC.h"
#include "KivHatchPattern.h"
#include "ORVRoots/Exp/KivArray.h"

namespace literal {

struct Result {
    long long strokes = 0;
    bool gaveUp = false;
};

class Hatch {
public:
    Hatch(IKivDC& dc, double zoom, double unit, long long giveUpAt) : m_dc(dc), m_zoom(zoom), m_unit(unit), m_giveUpAt(giveUpAt) {}

    Result draw(const KivRect& rect, const KivArray<HatchLineFamily>& families, KivColor color) {
        m_dc.selectPen(KivPen{0, 1, color});
        const double W = static_cast<double>(rect.right) - rect.left, H = static_cast<double>(rect.bottom) - rect.top;
        const double S = m_zoom * 3.0 * m_unit;
        // pi as the control takes it, acos(-1); cos and sin are taken where each angle is written, so
        // that a compiler works out those of constant angles (-pi/2, pi) when it builds the program,
        // as it does in the control (some run-time libraries, x87's, round them otherwise).
        const double PI = std::acos(-1.0);
        for (int f = 0; f < families.getLogicalLength() && !m_result.gaveUp; ++f) {
            const HatchLineFamily& family = families[f];
            DecodeDashes(family.dashes, m_dashes);
            double t = family.angle;
            while (t < -0.05) t += 360.0;
            const double r = (360.0 - t) * PI / 180.0;
            const double c = std::cos(r), s = std::sin(r);
            const double Xo = S * family.originX, Yo = H - S * family.originY;
            const double rad = t * PI / 180.0;
            const double Lgeneral = std::fabs(W * c) + std::fabs(H * s);
            // The three base-point forms and the walk directions of the general bands.
            const double alpha = -rad, beta = (-90.0 - t) * PI / 180.0, gamma = (180.0 - t) * PI / 180.0,
                         delta = (90.0 - t) * PI / 180.0, epsilon = (270.0 - t) * PI / 180.0;
            const Form L1{std::cos(alpha), std::sin(alpha), std::cos(beta), std::sin(beta), false};
            const Form R1{std::cos(gamma), std::sin(gamma), std::cos(delta), std::sin(delta), false};
            const Form D1{std::cos(gamma), std::sin(gamma), std::cos(epsilon), std::sin(epsilon), true};
            const double back = (-180.0 - t) * PI / 180.0;
            const Way fw{std::cos(alpha), std::sin(alpha)}, bw{std::cos(back), std::sin(back)};
            const Line line{family, S, Xo, Yo};
            if (t > -0.05 && t < 0.05) {
                side(line, std::fabs(H * std::cos(t)) + 1.0,
                     Form{std::cos(0.0), std::sin(0.0), std::cos(-PI / 2), std::sin(-PI / 2), false},
                     std::fabs(W * std::cos(t)) + std::fabs(H * std::sin(t)), Way{std::cos(0.0), std::sin(0.0)},
                     Way{std::cos(PI), std::sin(PI)}, false);
            } else if (t > 179.95 && t < 180.05) {
                side(line, std::fabs(H * c) + 1.0, Form{std::cos(0.0), std::sin(0.0), std::cos(-PI / 2), std::sin(-PI / 2), false},
                     Lgeneral, Way{std::cos(PI), std::sin(PI)}, Way{std::cos(0.0), std::sin(0.0)}, false);
            } else if ((t > 89.95 && t < 90.05) || (t > 269.95 && t < 270.05)) {
                const double psi = PI * t / 180.0;
                side(line, std::fabs(W * s) + 1.0, Form{std::cos(psi), std::sin(psi), std::cos(0.0), std::sin(0.0), false},
                     Lgeneral, fw, Way{std::cos(psi), std::sin(psi)}, false);
            } else if (t > 0.05 && t < 89.95) {
                side(line, std::fabs(H * c) + 1.0, L1, Lgeneral, fw, bw, false);
                side(line, std::fabs(W * s) + 1.0, R1, Lgeneral, fw, bw, false);
            } else if (t > 180.05 && t < 269.95) {
                side(line, std::fabs(H * c) + 1.0, R1, Lgeneral, fw, bw, false);
                side(line, std::fabs(W * s) + 1.0, L1, Lgeneral, fw, bw, false);
            } else if (t > 90.05 && t < 179.95) {
                const double L = std::fabs(W * s) + std::fabs(H * c);
                side(line, L + 1.0, R1, L, fw, bw, false);
            } else if (t > 270.05 && t < 359.95) {
                const double L = std::fabs(W * s) + std::fabs(H * c);
                side(line, L + 1.0, D1, L, fw, bw, true);
            }
        }
        m_dc.restorePen();
        return m_result;
    }

private:
    struct Form {
        double alongCos, alongSin, acrossCos, acrossSin;
        bool negated;  // the shift along the line taken the other way
    };
    struct Way {
        double cosPhi, sinPhi;
    };
    struct Line {
        const HatchLineFamily& family;
        double S, Xo, Yo;
    };

    void side(const Line& line, double extent, const Form& form, double L, const Way& forward, const Way& backward,
              bool backwardFirst) {
        for (long long k = 0; std::fabs(static_cast<double>(k) * line.family.deltaY * line.S) < extent; ++k) {
            if (m_result.gaveUp) return;
            const double a = static_cast<double>(k) * line.family.deltaX * line.S;
            const double p = static_cast<double>(k) * line.family.deltaY * line.S;
            const double along = form.negated ? -a : a;
            const double x = line.Xo + along * form.alongCos + p * form.acrossCos;
            const double y = line.Yo + along * form.alongSin + p * form.acrossSin;
            const double limit = std::fabs(a) + L;
            if (backwardFirst) {
                walk(x, y, backward, limit, true);
                walk(x, y, forward, limit, false);
            } else {
                walk(x, y, forward, limit, false);
                walk(x, y, backward, limit, true);
            }
        }
    }

    void walk(double x, double y, const Way& way, double limit, bool backward) {
        send(false, x, y);
        const int n = m_dashes.getLogicalLength();
        double walked = 0.0;
        for (long long i = 0; !m_result.gaveUp; ++i) {
            const int entry = static_cast<int>(i % n);
            const double d = m_zoom * 3.0 * m_unit * m_dashes[backward ? n - 1 - entry : entry];
            const double step = d > 0.05 ? d : d < -0.05 ? -d : 1.0;
            walked += step;
            x += step * way.cosPhi;
            y += step * way.sinPhi;
            send(!(d < -0.05), x, y);  // a dash or a dot draws; a gap moves
            if (walked > limit) return;
        }
    }

    void send(bool line, double x, double y) {
        if (m_giveUpAt >= 0 && m_result.strokes >= m_giveUpAt) {
            m_result.gaveUp = true;
            return;
        }
        ++m_result.strokes;
        const int ix = static_cast<int>(x), iy = static_cast<int>(y);
        if (line) m_dc.lineTo(ix, iy);
        else m_dc.moveTo(ix, iy);
    }

    IKivDC& m_dc;
    double m_zoom, m_unit;
    long long m_giveUpAt;
    KivArray<double> m_dashes;
    Result m_result;
};

}  // namespace literal
