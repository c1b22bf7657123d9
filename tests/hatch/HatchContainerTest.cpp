// The hatch preview in a real container under Wine: created by its ProgID in ATL's AtlAxWin, a pattern
// from a real file drawn in real pixels (only the fore and back colours; a 45-degree family's pixels
// on 45-degree lines), ForeColor and BackColor (system colours too), ZoomFactor and Metric repainting
// at once, the design face, the colours' defaults from the container's ambients, and persistence in
// MFC's layout: the 33-byte stream saved and loaded, a hand-built one, a property bag.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

#include "ContainerHost.h"
#include "CountingDC.h"
#include "KivHatchDrawing.h"
#include "KivHatchPattern.h"
#include "LiteralHatch.h"
#include "PngWriter.h"
#include "StrokeLog.h"
#include "TestFiles.h"

namespace {

const CLSID kHatchClsid = {0xD15E93F0, 0xB2C2, 0x4728, {0x84, 0x84, 0x4E, 0x56, 0x12, 0x29, 0x77, 0x6F}};
const IID kHatchEvents = {0x31864F54, 0x4ECC, 0x4D0A, {0xA3, 0xC2, 0xA8, 0xBE, 0x66, 0x53, 0x6B, 0x8E}};

class HatchHosted : public Hosted {
public:
    explicit HatchHosted(int width = 160, int height = 120)
        : Hosted(L"KIVLORQCONTROLS.KivHatchCtrl.1", kHatchEvents, 0, width, height) {}
    // The control's window as the screen shows it.
    std::vector<std::uint8_t> pixels(int& w, int& h) {
        RedrawWindow(controlWindow, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        pumpMessages(50);
        return grab(controlWindow, w, h);
    }
};

using HatchContainer = ComTest;

std::wstring realPattern(const char* file, const wchar_t* name) {
    return std::wstring(sharedDataPath(std::string("pat/") + file).getStringW()) + L"(" + name + L")";
}

// A copy of a real file a host could use: a comment line first, the headers in capitals.
std::string openedUp(const std::string& text) {
    std::string out = ";; opened up\n";
    bool header = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i == 0 || text[i - 1] == '\n') header = text[i] == '*';
        out += header && text[i] >= 'a' && text[i] <= 'z' ? static_cast<char>(text[i] - 32) : text[i];
        if (text[i] == '\n') header = false;
    }
    return out;
}

std::set<COLORREF> coloursOf(const std::vector<std::uint8_t>& rgb, int w, int h) {
    std::set<COLORREF> colours;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) colours.insert(at(rgb, w, x, y));
    return colours;
}

}  // namespace

TEST_F(HatchContainer, CreatedByProgIdItDrawsOnlyItsBackgroundUntilAPatternIsNamed) {
    HatchHosted h;
    ASSERT_NE(h.controlWindow, nullptr);
    EXPECT_EQ(GetWindow(h.controlWindow, GW_CHILD), nullptr);  // no child window
    put(h.dispatch.get(), L"BackColor", longArg(0x00E0F0FF));
    int w = 0, hgt = 0;
    const auto rgb = h.pixels(w, hgt);
    ASSERT_GT(w, 0);
    EXPECT_EQ(coloursOf(rgb, w, hgt), (std::set<COLORREF>{RGB(0xFF, 0xF0, 0xE0)}));
}

TEST_F(HatchContainer, ARealPatternIsDrawnInTheForeColourOverTheBackColour) {
    HatchHosted h(200, 150);
    ASSERT_NE(h.controlWindow, nullptr);
    IDispatch* d = h.dispatch.get();
    put(d, L"ForeColor", longArg(0x000000C0));
    put(d, L"BackColor", longArg(0x00FFFFFF));
    put(d, L"Pattern", textArg(realPattern("ACadSharp__ALL_4patterns.pat", L"HSHP21E0").c_str()));
    put(d, L"ZoomFactor", doubleArg(0.5));
    int w = 0, hgt = 0;
    const auto rgb = h.pixels(w, hgt);
    CreateDirectoryW(L"Z:" KIV_ARTIFACT_DIR_W, nullptr);
    EXPECT_TRUE(KivWritePng("Z:" KIV_ARTIFACT_DIR "/hatch-real-pattern.png", w, hgt, rgb));
    std::printf("screenshot: %s/hatch-real-pattern.png\n", KIV_ARTIFACT_DIR);
    const std::set<COLORREF> colours = coloursOf(rgb, w, hgt);
    EXPECT_EQ(colours, (std::set<COLORREF>{RGB(0xC0, 0, 0), RGB(0xFF, 0xFF, 0xFF)}));
    int fore = 0;
    for (int y = 0; y < hgt; ++y)
        for (int x = 0; x < w; ++x) fore += at(rgb, w, x, y) == RGB(0xC0, 0, 0) ? 1 : 0;
    EXPECT_GT(fore, w * hgt / 50);
    EXPECT_LT(fore, w * hgt / 2);
}

TEST_F(HatchContainer, AFortyFiveDegreeFamilysPixelsLieOnFortyFiveDegreeLines) {
    std::ifstream in(sharedDataNativePath("pat/FreeCAD__FCPAT.pat"), std::ios::binary);
    TempFile copy(openedUp(std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>())), "fcpat.pat");
    HatchHosted h(160, 120);
    ASSERT_NE(h.controlWindow, nullptr);
    IDispatch* d = h.dispatch.get();
    put(d, L"ForeColor", longArg(0x00000000));
    put(d, L"BackColor", longArg(0x00FFFFFF));
    put(d, L"Pattern", textArg((std::wstring(copy.path().getStringW()) + L"(Diagonal4)").c_str()));
    int w = 0, hgt = 0;
    const auto rgb = h.pixels(w, hgt);
    EXPECT_TRUE(KivWritePng("Z:" KIV_ARTIFACT_DIR "/hatch-diagonal.png", w, hgt, rgb));
    // Lines up to the right on the screen (y down): x + y is the same along a line, but for the one
    // pixel a truncated step end may shift it; the lines are 4 mm x 3 pixels apart across, 12 x
    // sqrt(2) = 16.97 along x + y: 16 or 17.
    std::map<int, int> sums;  // x + y -> pixels
    for (int y = 0; y < hgt; ++y)
        for (int x = 0; x < w; ++x)
            if (at(rgb, w, x, y) == RGB(0, 0, 0)) ++sums[x + y];
    struct Line {
        int first, last, main, pixels;  // the x + y values of a line, the one most of it lies on
    };
    std::vector<Line> lines;
    for (const auto& [sum, count] : sums) {
        if (!lines.empty() && sum - lines.back().last <= 1) {
            lines.back().last = sum;
            if (count > lines.back().pixels) {
                lines.back().main = sum;
                lines.back().pixels = count;
            }
        } else {
            lines.push_back({sum, sum, sum, count});
        }
    }
    ASSERT_GE(lines.size(), 10u);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_LE(lines[i].last - lines[i].first, 1) << "line " << i << " is not a 45-degree line";
        if (i > 0) {
            const int apart = lines[i].main - lines[i - 1].main;
            EXPECT_TRUE(apart == 16 || apart == 17) << "lines " << i - 1 << " and " << i << " are " << apart << " apart";
        }
    }
}

TEST_F(HatchContainer, ZoomFactorAndMetricRepaintAtOnceAndATooSmallZoomChangesNothing) {
    std::ifstream in(sharedDataNativePath("pat/FreeCAD__FCPAT.pat"), std::ios::binary);
    TempFile copy(openedUp(std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>())), "fcpat.pat");
    HatchHosted h(160, 120);
    ASSERT_NE(h.controlWindow, nullptr);
    IDispatch* d = h.dispatch.get();
    put(d, L"Pattern", textArg((std::wstring(copy.path().getStringW()) + L"(Square)").c_str()));
    pumpMessages(30);
    int w = 0, hgt = 0;
    const auto before = grab(h.controlWindow, w, hgt);
    put(d, L"ZoomFactor", doubleArg(2.0));  // repainted at once, no message pumped
    const auto zoomed = grab(h.controlWindow, w, hgt);
    EXPECT_NE(zoomed, before);
    EXPECT_EQ(put(d, L"ZoomFactor", doubleArg(0.05)), S_OK);  // silently ignored
    KivVariant zoom;
    call(d, L"ZoomFactor", DISPATCH_PROPERTYGET, {}, &zoom.v);
    EXPECT_EQ(V_R8(&zoom.v), 2.0);
    put(d, L"Metric", boolArg(false));
    const auto inches = grab(h.controlWindow, w, hgt);
    EXPECT_NE(inches, zoomed);
    EXPECT_EQ(longResult(d, L"Metric"), 0);
}

TEST_F(HatchContainer, SystemColoursAreTranslated) {
    HatchHosted h;
    ASSERT_NE(h.controlWindow, nullptr);
    put(h.dispatch.get(), L"BackColor", longArg(static_cast<long>(0x80000000 | COLOR_HIGHLIGHT)));
    EXPECT_EQ(static_cast<unsigned long>(longResult(h.dispatch.get(), L"BackColor")), 0x80000000ul | COLOR_HIGHLIGHT);
    int w = 0, hgt = 0;
    const auto rgb = h.pixels(w, hgt);
    EXPECT_EQ(at(rgb, w, 5, 5), GetSysColor(COLOR_HIGHLIGHT));
}

TEST_F(HatchContainer, DesignModeDrawsItsNameAndTheColoursDefaultToTheAmbientOnes) {
    KivComPtr<IOleObject> object;
    ASSERT_EQ(CoCreateInstance(kHatchClsid, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject, object.putVoid()), S_OK);
    auto* site = new AmbientSite();
    site->userMode = false;
    site->backColor = 0x0000FF00;
    site->foreColor = 0x00800000;
    ASSERT_EQ(object->SetClientSite(site), S_OK);
    KivComPtr<IPersistStreamInit> persist;
    ASSERT_EQ(object->QueryInterface(IID_IPersistStreamInit, persist.putVoid()), S_OK);
    ASSERT_EQ(persist->InitNew(), S_OK);
    KivComPtr<IDispatch> d;
    object->QueryInterface(IID_IDispatch, d.putVoid());
    EXPECT_EQ(longResult(d.get(), L"BackColor"), 0x0000FF00);
    EXPECT_EQ(longResult(d.get(), L"ForeColor"), 0x00800000);
    KivComPtr<IViewObject> view;
    ASSERT_EQ(object->QueryInterface(IID_IViewObject, view.putVoid()), S_OK);
    Canvas canvas(160, 40), expected(160, 40);
    const RECTL bounds{0, 0, 160, 40};
    ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0), S_OK);
    drawExpectedDesignFace(expected, L"KivHatchCtrl");
    EXPECT_EQ(differingPixels(canvas, expected), 0);
    // User mode: the back colour fills the bounds.
    site->userMode = true;
    ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0), S_OK);
    EXPECT_EQ(canvas.pixel(80, 20), RGB(0, 0xFF, 0));
    object->SetClientSite(nullptr);
    site->Release();
}

TEST_F(HatchContainer, ItSavesThirtyThreeBytesInMfcLayoutAndLoadsThem) {
    KivComPtr<IDispatch> control = newControl(kHatchClsid);
    ASSERT_TRUE(control);
    KivComPtr<IOleObject> object;
    control->QueryInterface(IID_IOleObject, object.putVoid());
    SIZEL extent{5292, 2646};
    object->SetExtent(DVASPECT_CONTENT, &extent);
    put(control.get(), L"ForeColor", longArg(0x00112233));
    put(control.get(), L"BackColor", longArg(static_cast<long>(0x80000005)));
    put(control.get(), L"Enabled", boolArg(false));
    put(control.get(), L"ZoomFactor", doubleArg(2.5));
    put(control.get(), L"Metric", boolArg(false));               // not saved
    put(control.get(), L"Pattern", textArg(L"C:\\x.pat(ANSI31)"));  // not saved
    const std::vector<BYTE> bytes = saveStream(control.get());
    std::vector<BYTE> expected = {0x00, 0x00, 0x01, 0x00,   // version 1.0
                                  0xAC, 0x14, 0x00, 0x00,   // extent x 5292
                                  0x56, 0x0A, 0x00, 0x00,   // extent y 2646
                                  0x49, 0x00, 0x00, 0x00,   // stock mask: BackColor, ForeColor, Enabled
                                  0x33, 0x22, 0x11, 0x00,   // ForeColor
                                  0x05, 0x00, 0x00, 0x80,   // BackColor: the system window colour
                                  0x00};                    // Enabled false
    const double zoom = 2.5;
    expected.resize(expected.size() + 8);
    std::memcpy(expected.data() + 25, &zoom, 8);  // ZoomFactor
    EXPECT_EQ(bytes, expected);
    EXPECT_EQ(bytes.size(), 33u);
    KivComPtr<IDispatch> other = newControl(kHatchClsid);
    ASSERT_EQ(loadStream(other.get(), bytes), S_OK);
    EXPECT_EQ(longResult(other.get(), L"ForeColor"), 0x00112233);
    EXPECT_EQ(static_cast<unsigned long>(longResult(other.get(), L"BackColor")), 0x80000005ul);
    EXPECT_FALSE(enabledOf(other.get()));
    KivVariant loadedZoom;
    call(other.get(), L"ZoomFactor", DISPATCH_PROPERTYGET, {}, &loadedZoom.v);
    EXPECT_EQ(V_R8(&loadedZoom.v), 2.5);
    EXPECT_EQ(longResult(other.get(), L"Metric"), -1);  // true: the default, not the saved control's
    EXPECT_EQ(textResult(other.get(), L"Pattern"), "");
}

TEST_F(HatchContainer, AHandBuiltStreamLoadsAndAStoredZoomBelowTheFloorBecomesOne) {
    auto stream = [](double zoom) {
        std::vector<BYTE> b = {0x00, 0x00, 0x01, 0x00, 0x10, 0x27, 0, 0, 0x20, 0x03, 0, 0, 0x49, 0, 0, 0,
                               0xFF, 0x00, 0x00, 0x00,  // ForeColor red
                               0x00, 0xFF, 0x00, 0x00,  // BackColor green
                               0x01};                   // Enabled
        b.resize(33);
        std::memcpy(b.data() + 25, &zoom, 8);
        return b;
    };
    KivComPtr<IDispatch> control = newControl(kHatchClsid);
    ASSERT_EQ(loadStream(control.get(), stream(0.75)), S_OK);
    EXPECT_EQ(longResult(control.get(), L"ForeColor"), 0x000000FF);
    EXPECT_EQ(longResult(control.get(), L"BackColor"), 0x0000FF00);
    EXPECT_TRUE(enabledOf(control.get()));
    KivVariant zoom;
    call(control.get(), L"ZoomFactor", DISPATCH_PROPERTYGET, {}, &zoom.v);
    EXPECT_EQ(V_R8(&zoom.v), 0.75);
    ASSERT_EQ(loadStream(control.get(), stream(0.01)), S_OK);
    call(control.get(), L"ZoomFactor", DISPATCH_PROPERTYGET, {}, &zoom.v);
    EXPECT_EQ(V_R8(&zoom.v), 1.0);
    ASSERT_EQ(loadStream(control.get(), stream(0.05)), S_OK);
    call(control.get(), L"ZoomFactor", DISPATCH_PROPERTYGET, {}, &zoom.v);
    EXPECT_EQ(V_R8(&zoom.v), 0.05);  // kept as it is
    // A stream without its ZoomFactor is refused and changes nothing.
    std::vector<BYTE> shortStream = stream(3.0);
    shortStream.resize(25);
    EXPECT_NE(loadStream(control.get(), shortStream), S_OK);
    call(control.get(), L"ZoomFactor", DISPATCH_PROPERTYGET, {}, &zoom.v);
    EXPECT_EQ(V_R8(&zoom.v), 0.05);
}

TEST_F(HatchContainer, APropertyBagHoldsZoomFactorBesideTheStockProperties) {
    KivComPtr<IDispatch> control = newControl(kHatchClsid);
    KivComPtr<IPersistPropertyBag> persist;
    ASSERT_EQ(control->QueryInterface(IID_IPersistPropertyBag, persist.putVoid()), S_OK);
    ASSERT_EQ(persist->InitNew(), S_OK);
    put(control.get(), L"ZoomFactor", doubleArg(3.5));
    put(control.get(), L"ForeColor", longArg(0x00123456));
    auto* bag = new MemoryPropertyBag();
    ASSERT_EQ(persist->Save(bag, TRUE, TRUE), S_OK);
    std::vector<std::wstring> names;
    for (const auto& [name, value] : bag->values) names.push_back(name);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"BackColor", L"Enabled", L"ForeColor", L"ZoomFactor", L"_ExtentX",
                                                L"_ExtentY", L"_StockProps", L"_Version"}));
    EXPECT_EQ(V_VT(&bag->values[L"ZoomFactor"]), VT_R8);
    EXPECT_EQ(V_R8(&bag->values[L"ZoomFactor"]), 3.5);
    EXPECT_EQ(V_I4(&bag->values[L"_StockProps"]), 0x49);
    KivComPtr<IDispatch> other = newControl(kHatchClsid);
    KivComPtr<IPersistPropertyBag> loader;
    other->QueryInterface(IID_IPersistPropertyBag, loader.putVoid());
    ASSERT_EQ(loader->Load(bag, nullptr), S_OK);
    KivVariant zoom;
    call(other.get(), L"ZoomFactor", DISPATCH_PROPERTYGET, {}, &zoom.v);
    EXPECT_EQ(V_R8(&zoom.v), 3.5);
    EXPECT_EQ(longResult(other.get(), L"ForeColor"), 0x00123456);
    bag->Release();
}

TEST_F(HatchContainer, NoEventsAndTheDispatchErrorCodes) {
    KivComPtr<IDispatch> d = newControl(kHatchClsid);
    KivComPtr<IConnectionPointContainer> cpc;
    ASSERT_EQ(d->QueryInterface(IID_IConnectionPointContainer, cpc.putVoid()), S_OK);
    KivComPtr<IConnectionPoint> point;
    EXPECT_EQ(cpc->FindConnectionPoint(kHatchEvents, point.put()), S_OK);  // there, and silent
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    KivVariant r;
    UINT argErr = 0;
    EXPECT_EQ(d->Invoke(5, IID_NULL, 0, DISPATCH_METHOD, &none, &r.v, nullptr, &argErr), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(put(d.get(), L"ZoomFactor", textArg(L"big")), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(call(d.get(), L"Refresh", DISPATCH_METHOD, {}, nullptr), S_OK);
    EXPECT_EQ(put(d.get(), L"Pattern", textArg(L"(ANSI31)")), S_OK);  // an empty path: nothing loaded
}

// The control sends GDI only the strokes that can show (KivGdiStrokes); its pixels must be those of
// the same drawing with one MoveToEx or LineTo call per stroke, at every zoom.
namespace {
class OneCallPerStrokeDC : public CountingDC {
public:
    explicit OneCallPerStrokeDC(HDC dc) : m_dc(dc) {}
    void selectPen(const KivPen& pen) override {
        m_pen = CreatePen(pen.style, pen.width, pen.color);
        m_old = SelectObject(m_dc, m_pen);
    }
    void restorePen() override {
        SelectObject(m_dc, m_old);
        DeleteObject(m_pen);
    }
    void moveTo(int x, int y) override { MoveToEx(m_dc, x, y, nullptr); }
    void lineTo(int x, int y) override { LineTo(m_dc, x, y); }

private:
    HDC m_dc;
    HPEN m_pen = nullptr;
    HGDIOBJ m_old = nullptr;
};
}  // namespace

TEST_F(HatchContainer, TheControlsPixelsAreThoseOfOneGdiCallPerStroke) {
    std::ifstream in(sharedDataNativePath("pat/FreeCAD__FCPAT.pat"), std::ios::binary);
    TempFile copy(openedUp(std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>())), "fcpat.pat");
    const std::wstring files[] = {std::wstring(copy.path().getStringW()),
                                  std::wstring(sharedDataPath("pat/ACadSharp__ALL_4patterns.pat").getStringW())};
    const wchar_t* names[2][3] = {{L"DIAMOND", L"SQUARE", L"DIAGONAL5"}, {L"HSHP21E0", L"HVEGE100", L"HSHP31E0"}};
    int compared = 0;
    for (int f = 0; f < 2; ++f) {
        for (const wchar_t* name : names[f]) {
            for (double zoom : {0.1, 0.25, 1.0, 4.0}) {
                SCOPED_TRACE(narrow(name) + " at " + std::to_string(zoom));
                KivComPtr<IDispatch> control = newControl(kHatchClsid);
                put(control.get(), L"Pattern", textArg((files[f] + L"(" + name + L")").c_str()));
                put(control.get(), L"ZoomFactor", doubleArg(zoom));
                put(control.get(), L"ForeColor", longArg(0));
                put(control.get(), L"BackColor", longArg(0x00FFFFFF));
                KivComPtr<IViewObject> view;
                control->QueryInterface(IID_IViewObject, view.putVoid());
                Canvas viaControl(150, 100), oneByOne(150, 100);
                const RECTL bounds{0, 0, 150, 100};
                ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, viaControl.dc, &bounds, nullptr, nullptr, 0), S_OK);
                // The same families drawn by the portable code, straight to GDI.
                oneByOne.fill(RGB(255, 255, 255));
                KivArray<HatchLineFamily> families;
                LoadPattern(KivString((files[f] + L"(" + name + L")").c_str()), families);
                ASSERT_GT(families.getLogicalLength(), 0);
                KivArray<double> dashes;
                KivHatchStyle style;
                style.zoomFactor = zoom;
                OneCallPerStrokeDC plain(oneByOne.dc);
                DrawHatch(plain, KivRect{0, 0, 150, 100}, families, dashes, style);
                EXPECT_EQ(differingPixels(viaControl, oneByOne), 0);
                ++compared;
            }
        }
    }
    EXPECT_EQ(compared, 24);
}

namespace {
KivComPtr<IDispatch> previewOf(const std::wstring& pattern, double zoom) {
    KivComPtr<IDispatch> control = newControl(kHatchClsid);
    put(control.get(), L"Pattern", textArg(pattern.c_str()));
    put(control.get(), L"ZoomFactor", doubleArg(zoom));
    put(control.get(), L"ForeColor", longArg(0));
    put(control.get(), L"BackColor", longArg(0x00FFFFFF));
    return control;
}

HRESULT drawInto(IDispatch* control, HDC dc, int width, int height) {
    KivComPtr<IViewObject> view;
    control->QueryInterface(IID_IViewObject, view.putVoid());
    const RECTL bounds{0, 0, width, height};
    return view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
}
}  // namespace

// Spacings far below a pixel that still finish (a 200 x 150 metric preview, one family): the real
// control hatches the preview whole, with the pixels of the literal drawing sent one GDI call per
// stroke, and leaves GDI's position where that drawing's last stroke ends.
TEST_F(HatchContainer, TinySpacingsHatchTheWholePreviewWithTheLiteralDrawingsPixels) {
    TempFile file(";; tiny spacings\n*FLAT,0.05\n0,0,0,0,0.05\n*FLATTER,0.001\n0,0,0,0,0.001\n*SLANTED,30 degrees\n30,0,0,0,0.05\n",
                  "tiny.pat");
    const struct {
        const wchar_t* name;
        double zoom;
    } cases[] = {{L"FLAT", 0.0501}, {L"FLATTER", 1.0}, {L"SLANTED", 0.0501}};
    for (const auto& c : cases) {
        SCOPED_TRACE(narrow(c.name));
        const std::wstring pattern = std::wstring(file.path().getStringW()) + L"(" + c.name + L")";
        KivComPtr<IDispatch> control = previewOf(pattern, c.zoom);
        Canvas viaControl(200, 150), literal(200, 150);
        ASSERT_EQ(drawInto(control.get(), viaControl.dc, 200, 150), S_OK);
        KivArray<HatchLineFamily> families;
        LoadPattern(KivString(pattern.c_str()), families);
        ASSERT_EQ(families.getLogicalLength(), 1);
        literal.fill(RGB(255, 255, 255));
        {
            OneCallPerStrokeDC plain(literal.dc);
            EXPECT_FALSE(literal::Hatch(plain, c.zoom, 1.0, -1).draw(KivRect{0, 0, 200, 150}, families, 0).gaveUp);
        }
        EXPECT_EQ(differingPixels(viaControl, literal), 0);
        int hatched = 0;
        for (int y = 0; y < 150; ++y)
            for (int x = 0; x < 200; ++x) hatched += viaControl.pixel(x, y) == RGB(0, 0, 0) ? 1 : 0;
        EXPECT_EQ(hatched, 200 * 150);
        POINT a{}, b{};
        GetCurrentPositionEx(viaControl.dc, &a);
        GetCurrentPositionEx(literal.dc, &b);
        EXPECT_EQ(a.x, b.x);
        EXPECT_EQ(a.y, b.y);
    }
}

// In the XOR mix mode a stroke drawn again changes its pixels back: the control leaves out no
// repeat there, and its pixels are those of one call per stroke in that mode, not those of the copy
// mode.
TEST_F(HatchContainer, InTheXorModeNoRepeatIsLeftOut) {
    std::ifstream in(sharedDataNativePath("pat/FreeCAD__FCPAT.pat"), std::ios::binary);
    TempFile copy(openedUp(std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>())), "fcpat.pat");
    const std::wstring pattern = std::wstring(copy.path().getStringW()) + L"(DIAMOND)";
    KivComPtr<IDispatch> control = previewOf(pattern, 0.1);
    put(control.get(), L"ForeColor", longArg(0x000000FF));  // red: XOR with black would change nothing
    Canvas xorControl(150, 100), xorByCalls(150, 100), copyControl(150, 100);
    SetROP2(xorControl.dc, R2_XORPEN);
    ASSERT_EQ(drawInto(control.get(), xorControl.dc, 150, 100), S_OK);
    ASSERT_EQ(drawInto(control.get(), copyControl.dc, 150, 100), S_OK);
    KivArray<HatchLineFamily> families;
    LoadPattern(KivString(pattern.c_str()), families);
    xorByCalls.fill(RGB(255, 255, 255));
    SetROP2(xorByCalls.dc, R2_XORPEN);
    {
        OneCallPerStrokeDC plain(xorByCalls.dc);
        KivArray<double> dashes;
        KivHatchStyle style;
        style.zoomFactor = 0.1;
        style.foreColor = 0x000000FF;
        DrawHatch(plain, KivRect{0, 0, 150, 100}, families, dashes, style);
    }
    int changed = 0;
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 150; ++x) changed += xorControl.pixel(x, y) != RGB(255, 255, 255) ? 1 : 0;
    EXPECT_GT(changed, 1000);
    EXPECT_EQ(differingPixels(xorControl, xorByCalls), 0);
    EXPECT_GT(differingPixels(xorControl, copyControl), 1000) << "the repeats changed nothing: no test of them";
}

// A metafile is a record of the drawing, which its reader may replay at another scale: the preview
// drawn into one records every MoveTo and LineTo of the drawing, in order, those far outside its
// bounds and the repeated ones included.
TEST_F(HatchContainer, AMetafileOfThePreviewRecordsEveryStrokeInOrder) {
    std::ifstream in(sharedDataNativePath("pat/FreeCAD__FCPAT.pat"), std::ios::binary);
    TempFile copy(openedUp(std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>())), "fcpat.pat");
    for (const wchar_t* name : {L"DIAMOND", L"SQUARE"}) {
        SCOPED_TRACE(narrow(name));
        const std::wstring pattern = std::wstring(copy.path().getStringW()) + L"(" + name + L")";
        KivComPtr<IDispatch> control = previewOf(pattern, 0.1);
        HDC screen = GetDC(nullptr);
        HDC recording = CreateEnhMetaFileW(screen, nullptr, nullptr, nullptr);
        ReleaseDC(nullptr, screen);
        ASSERT_EQ(drawInto(control.get(), recording, 150, 100), S_OK);
        HENHMETAFILE metafile = CloseEnhMetaFile(recording);
        const std::vector<RecordedStroke> recorded = metafileStrokes(metafile);
        DeleteEnhMetaFile(metafile);
        KivArray<HatchLineFamily> families;
        LoadPattern(KivString(pattern.c_str()), families);
        StrokeLog drawing;
        KivArray<double> dashes;
        KivHatchStyle style;
        style.zoomFactor = 0.1;
        DrawHatch(drawing, KivRect{0, 0, 150, 100}, families, dashes, style);
        EXPECT_GT(drawing.sent.size(), 10000u);
        EXPECT_EQ(recorded.size(), drawing.sent.size());
        EXPECT_TRUE(recorded == drawing.sent);
    }
}
