// A contact sheet of a library: every linetype row drawn as the combo draws it, or every pattern as
// the hatch preview draws it, each labelled with its name and marked when it cannot load (or loads
// another entry). Portable: it draws through the controls' own drawing code onto a KivRasterDC.
#pragma once

#include <memory>
#include <vector>

#include "KivDoctor.h"
#include "KivRasterDC.h"

struct KivSheetLayout {
    static constexpr int kMargin = 12;
    static constexpr int kTitleHeight = 26;
    // Linetype rows: a combo row of this size, then the mark.
    static constexpr int kRowWidth = 360;
    static constexpr int kRowHeight = 16;
    static constexpr int kRowPitch = 20;
    static constexpr int kLinetypeSheetWidth = 760;
    // Pattern tiles: a preview of this size and its label under it, in columns.
    static constexpr int kTileWidth = 176;
    static constexpr int kTileHeight = 132;
    static constexpr int kTileColumns = 4;
    static constexpr int kLabelHeight = 32;
};

std::unique_ptr<KivRasterDC> KivLinetypeSheet(const KivDoctorFile& file, const std::vector<KivLinetypeFinding>& findings,
                                              IKivTextRenderer* text);
std::unique_ptr<KivRasterDC> KivPatternSheet(const KivDoctorFile& file, const std::vector<KivPatternFinding>& findings,
                                             double zoom, bool metric, IKivTextRenderer* text);
