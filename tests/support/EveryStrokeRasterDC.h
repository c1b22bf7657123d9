// Test double: a raster device that answers no stroke rules, so that a drawing sends it every
// stroke, as it would a metafile; beside a KivRasterDC that answers them, it shows what leaving
// strokes out changed.
#pragma once

#include "KivRasterDC.h"

class EveryStrokeRasterDC : public KivRasterDC {
public:
    using KivRasterDC::KivRasterDC;
    bool strokeRules(KivStrokeRules&) override { return false; }
};
