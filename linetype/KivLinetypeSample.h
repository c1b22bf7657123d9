// The definition-string grammar and the strokes of a linetype sample. Portable, on IKivDC.
//
// A definition such as "A,12.7,-6.35" is a repeating list of elements: more than 0.0001 is a dash
// of that many pixels (pattern units are pixels: nothing is scaled), less than -0.0001 a gap, anything
// else (0, or text without a number) a one-pixel dot. A leading "A," is dropped, and the first span
// from "[" to "]" (an embedded shape or text) becomes the single element "0", drawn as a dot.
#pragma once

#include "IKivDC.h"
#include "KivString.h"

// The pattern the strokes walk: the definition with "," appended, its "A," dropped and its first
// bracketed span replaced by "0".
KivString KivLinetypePattern(const KivString& definition);

// Strokes one sample along the line `y`, from x = 0 (of the device context, not of any box) to x =
// `width`: MoveTo(0, y), then one LineTo or MoveTo per element, x truncated toward zero, until x
// passes `width`, where the last stroke ends.
//
// Guard: a sample ends after kMaxStrokesPerPixel strokes per pixel of its width (plus a few). Only a
// definition whose every element moves less than 1/kMaxStrokesPerPixel of a pixel reaches it (real
// files use dashes of a tenth of a unit and more); it keeps a row from taking seconds to draw. It
// returns the number of strokes drawn (the first MoveTo not counted).
constexpr int kMaxStrokesPerPixel = 100;
int KivStrokeLinetypeSample(IKivDC& dc, const KivString& definition, int y, double width);
