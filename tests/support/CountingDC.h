// Test double: a device context that only counts strokes and keeps the extreme coordinates it was
// given, for drawings too large to record call by call.
#pragma once

#include <climits>

#include "IKivDC.h"

class CountingDC : public IKivDC {
public:
    KivColor getSysColor(int) override { return 0; }
    KivColor setTextColor(KivColor) override { return 0; }
    KivColor setBkColor(KivColor c) override { return c; }
    KivColor getBkColor() override { return 0x00FFFFFF; }
    int setBkMode(int) override { return 0; }
    unsigned setTextAlign(unsigned) override { return 0; }
    void fillRect(const KivRect&, const KivBrush&) override { ++fills; }
    void frameRect(const KivRect&, const KivBrush&) override {}
    void drawFocusRect(const KivRect&) override {}
    int drawText(const KivString&, const KivRect&, unsigned) override { return 0; }
    bool textOut(int, int, const KivString&) override { return true; }
    KivSize getTextExtent(const KivString& text) override { return KivSize{7L * text.length(), 13}; }
    void selectPen(const KivPen&) override { ++pens; }
    void restorePen() override { --pens; }
    void selectBrush(const KivBrush&) override {}
    void restoreBrush() override {}
    void selectStockFont(KivStockObject) override {}
    void restoreFont() override {}
    void moveTo(int x, int y) override { point(x, y); }
    void lineTo(int x, int y) override {
        point(x, y);
        ++lines;
    }
    void ellipse(const KivRect&) override {}
    void bitBltFromCompatibleBitmap(int, int, const KivRect&, unsigned long) override {}

    long long strokes = 0;  // MoveTo and LineTo
    long long lines = 0;    // LineTo
    int pens = 0;           // selected and not yet restored
    int fills = 0;
    long long minCoordinate = LLONG_MAX, maxCoordinate = LLONG_MIN;

private:
    void point(int x, int y) {
        ++strokes;
        for (long long v : {static_cast<long long>(x), static_cast<long long>(y)}) {
            if (v < minCoordinate) minCoordinate = v;
            if (v > maxCoordinate) maxCoordinate = v;
        }
    }
};
