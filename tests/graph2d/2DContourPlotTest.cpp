#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/annotation/ColourKey.h"
#include "ombrel/colour/ColourMap.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/paths/ContourPainter.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/io/ScanTestHeader.h"
#include "ombrel/platform/gdi/PageSurface.h"
#include "ombrel/platform/host/Host.h"
#include "tests/graph2d/GraphFixture.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ombrel::test {
namespace {

using Rows = std::vector<std::vector<double>>;

/// A graph with a contour curve of these heights, whose nodes stand at 0, 1, 2 … along x and y, rows upwards.
struct ContourGraph {
    explicit ContourGraph(Rows const& rows)
        : plot(*static_cast<C2DContourPlot*>(graph.AddPlot(it2DContourPlot)))
        , curve(*static_cast<C2DContourCurve*>(plot.AddCurve("Heights", CPlotComponent::dsTable)))
        , surface(*curve.GetSurface())
    {
        CTableData table(static_cast<int>(rows.size()), static_cast<int>(rows.front().size()));
        for (int r = 0; auto const& row : rows) {
            for (int c = 0; double const height : row)
                table.SetAt(r, c++, height);
            ++r;
        }
        surface.SetTableData(std::move(table));
        surface.AlignMeshes();
        surface.GetWireframeColourmap()->CreateGreyscale();
        graph.GetGrid()->SetOn(0);
        graph.GetPolarGrid()->SetOn(0);
        graph.UpdatePlots();
    }
    void Spaced(double reference, double spacing)
    {
        curve.SetLevelMode(C2DContourCurve::lmSpaced);
        curve.SetRef(reference);
        curve.SetSpacing(spacing);
        graph.UpdatePlots();
    }
    /// Draws onto a bitmap of 200 × 160 pixels.
    CDC& Draw()
    {
        graph.Draw(bitmap.GetDC(), CRect(0, 0, 200, 160), pmDirect);
        return *bitmap.GetDC();
    }
    COLORREF MapColour(double v, double lo, double hi) const
    {
        return surface.GetWireframeColourmap()->GetColour(v, lo, hi);
    }

    C2DGraph graph { 1 };
    C2DContourPlot& plot;
    C2DContourCurve& curve;
    CSurface& surface;
    CDIB bitmap { 200, 160, 24 };
};

std::vector<double> ValuesOf(CDoubleArray const& array)
{
    return { array.GetData(), array.GetData() + array.GetSize() };
}

TEST(Contours2D, LevelsAndColoursFollowTheirMode)
{
    ContourGraph c({ { 0, 100 }, { 0, 100 } });
    struct {
        int mode;
        int count;
        double reference;
        double spacing;
        std::vector<double> levels;
    } const cases[] {
        { C2DContourCurve::lmEven, 4, 0, 0, { 20, 40, 60, 80 } },
        { C2DContourCurve::lmEven, 0, 0, 0, {} },
        // A level at the lower end stays.
        { C2DContourCurve::lmSpaced, 4, 50, 25, { 0, 25, 50, 75 } },
        { C2DContourCurve::lmSpaced, 4, -150, 60, { 30, 90 } },
        { C2DContourCurve::lmSpaced, 4, 0, 0, {} },
        { C2DContourCurve::lmArbitrary, 4, 0, 0, { 70, 10, 100 } },
    };
    CDoubleArray arbitrary;
    for (double const level : { 70.0, 10.0, 100.0 })
        arbitrary.Add(level);
    c.surface.SetArbContourLevels(arbitrary);
    for (auto const& one : cases) {
        SCOPED_TRACE(one.mode * 1000 + one.reference);
        c.curve.SetLevelMode(one.mode);
        c.curve.SetNumContours(one.count);
        c.curve.SetRef(one.reference);
        c.curve.SetSpacing(one.spacing);
        CDWordArray colours;
        CDoubleArray values;
        // Of lines: each its level, the first the colour of the lowest value and the last that of the highest.
        c.curve.SetDisplayMode(C2DContourCurve::dmLines);
        c.curve.GetContourColourKeyEntries(colours, values);
        EXPECT_EQ(ValuesOf(values), one.levels);
        std::size_t const n = one.levels.size();
        ASSERT_EQ(colours.GetSize(), static_cast<int>(n));
        for (std::size_t k = 0; k < n; ++k)
            EXPECT_EQ(colours[static_cast<int>(k)],
                c.MapColour(n < 2 ? 0 : static_cast<double>(k) * (100.0 / static_cast<double>(n - 1)), 0, 100))
                << k;
        // Of bands: one more, and the lowest value before the levels.
        c.curve.SetDisplayMode(C2DContourCurve::dmShading);
        c.curve.GetContourColourKeyEntries(colours, values);
        ASSERT_EQ(values.GetSize(), static_cast<int>(n) + 1);
        EXPECT_EQ(values[0], 0.0);
        ASSERT_EQ(colours.GetSize(), static_cast<int>(n) + 1);
        EXPECT_EQ(colours[static_cast<int>(n)], c.MapColour(n > 0 ? 100 : 0, 0, 100));
    }
    auto const style = [&](int display, int mode, int count) {
        c.curve.SetDisplayMode(display);
        c.curve.SetLevelMode(mode);
        c.curve.SetNumContours(count);
        return c.curve.GetColourKeySource().style;
    };
    using Style = ColourKeySource::Style;
    EXPECT_EQ(style(C2DContourCurve::dmLines, C2DContourCurve::lmEven, 0), Style::Bands);
    EXPECT_EQ(style(C2DContourCurve::dmShading, C2DContourCurve::lmEven, 0), Style::Range);
    EXPECT_EQ(style(C2DContourCurve::dmShading, C2DContourCurve::lmEven, 1), Style::Bands);
    EXPECT_EQ(style(C2DContourCurve::dmShading, C2DContourCurve::lmArbitrary, 1), Style::Bands);
    c.surface.SetArbContourLevels({});
    EXPECT_EQ(style(C2DContourCurve::dmShadingAndLines, C2DContourCurve::lmArbitrary, 1), Style::Range);
}

TEST(Contours2D, NeedAKeyForWhatIsColoured)
{
    ContourGraph c({ { 0, 1 }, { 0, 1 } });
    for (auto const& [display, colours, needs] :
        { std::tuple(0, 0, 0), std::tuple(0, 1, 1), std::tuple(1, 0, 1), std::tuple(2, 0, 1) }) {
        c.curve.SetDisplayMode(display);
        c.curve.SetContourColourMode(colours);
        EXPECT_EQ(c.curve.NeedsColourKey(), needs) << display << colours;
        EXPECT_EQ(c.curve.GetContourColourMode(), colours);
    }
}

TEST(Contours2D, AReferenceFarOutsideIsToldAndNotDrawn)
{
    ContourGraph c({ { 0, 10 }, { 0, 10 } });
    std::vector<CString> told;
    SetMessageBoxFunction([&told](CString const& text, CString const&, UINT) { told.push_back(text); });
    for (auto const& [reference, valid] :
        { std::pair(30.0, 1), std::pair(-20.0, 1), std::pair(30.5, 0), std::pair(-20.5, 0) }) {
        told.clear();
        c.curve.SetLevelMode(C2DContourCurve::lmSpaced);
        c.curve.SetRef(reference);
        c.curve.SetSpacing(1.0);
        EXPECT_EQ(c.curve.Evaluate(), valid) << reference;
        EXPECT_EQ(c.curve.IsValid(), valid);
        ASSERT_EQ(told.size(), valid ? 0U : 1U);
        if (!valid) {
            EXPECT_NE(told[0].ToUtf8().find("Contour reference value lies too far outside z value range.\n"
                                            "This curve will not be drawn"),
                std::string::npos);
        }
    }
    SetMessageBoxFunction(nullptr);
}

/// The height between the nodes by the plain rule; nothing outside of the grid or in a cell with a gap.
std::optional<double> HeightAt(Rows const& rows, CRealPoint const& p)
{
    double const last = static_cast<double>(rows.front().size()) - 1;
    if (p.x < 0 || p.x > last || p.y < 0 || p.y > static_cast<double>(rows.size()) - 1)
        return std::nullopt;
    auto const i = static_cast<std::size_t>(std::min(std::floor(p.x), last - 1));
    auto const j = static_cast<std::size_t>(std::min(std::floor(p.y), static_cast<double>(rows.size()) - 2));
    double const fx = p.x - static_cast<double>(i);
    double const fy = p.y - static_cast<double>(j);
    double const z[] { rows[j][i], rows[j][i + 1], rows[j + 1][i + 1], rows[j + 1][i] };
    if (std::any_of(z, z + 4, [](double v) { return IsGap(v); }))
        return std::nullopt;
    return (1 - fx) * (1 - fy) * z[0] + fx * (1 - fy) * z[1] + fx * fy * z[2] + (1 - fx) * fy * z[3];
}

TEST(Contours2D, EveryPixelHasTheColourOfItsHeight)
{
    Rows const rows { { 0, 3, 1, 2 }, { 4, 10, kGap, 6 }, { 5, 7, 8, 9 }, { 3, 1, 2, 2 } };
    for (int const mode : { C2DContourCurve::lmSpaced, C2DContourCurve::lmEven }) {
        ContourGraph c(rows);
        c.curve.SetDisplayMode(C2DContourCurve::dmShading);
        c.curve.SetNumContours(0);
        if (mode == C2DContourCurve::lmSpaced)
            c.Spaced(0, 2.5);
        CDC& dc = c.Draw();
        CDWordArray colours;
        CDoubleArray values;
        c.curve.GetContourColourKeyEntries(colours, values);
        CRect const clip = c.graph.GetClipRect();
        CRect const area(clip.left + 1, clip.top, clip.right, clip.bottom);
        int shaded = 0;
        for (int y = area.top; y < area.bottom; ++y) {
            for (int x = area.left; x < area.right; ++x) {
                auto const height = HeightAt(rows, c.graph.WindowToUnits({ x, y }));
                COLORREF const found = dc.GetPixel(x, y);
                if (!height) {
                    EXPECT_EQ(found, 0xFFFFFFU) << x << "," << y;
                    continue;
                }
                int band = 0;
                while (mode == C2DContourCurve::lmSpaced && band + 1 < values.GetSize() && *height > values[band + 1])
                    ++band;
                COLORREF const expected
                    = mode == C2DContourCurve::lmSpaced ? colours[band] : c.MapColour(*height, 0, 10);
                ASSERT_EQ(found, expected) << x << "," << y << " height " << *height;
                ++shaded;
            }
        }
        EXPECT_GT(shaded, area.Width() * area.Height() / 2);
        double z = -1;
        EXPECT_EQ(c.plot.GetZVal({ 0.5, 0.5 }, z), 1);
        EXPECT_DOUBLE_EQ(z, 4.25);
        EXPECT_EQ(c.plot.GetZVal({ 1.5, 1.5 }, z), 0) << "in a hole";
        EXPECT_EQ(c.plot.GetZVal({ 5, 1 }, z), 0) << "outside";
        EXPECT_DOUBLE_EQ(z, 4.25);
    }
}

TEST(Contours2D, LinesRunThroughTheCellsUpToTheirLastPixel)
{
    // One cell, crossed from (0, 0.4) to (1, 0.4).
    ContourGraph c({ { 0, 0 }, { 10, 10 } });
    c.surface.SetColour(RGB(200, 0, 0));
    c.Spaced(4, 100);
    auto const drawn = Record(c.graph, { 200, 160 });
    CPoint const from = c.graph.UnitsToWindow({ 0, 0.4 });
    CPoint const to = c.graph.UnitsToWindow({ 1, 0.4 });
    int lines = 0;
    for (auto const& line : OfKind<primitive::Polyline>(drawn)) {
        if (line.line.colour != RGB(200, 0, 0))
            continue;
        ++lines;
        EXPECT_EQ(line.points.front(), from);
        EXPECT_EQ(line.points.back(), to);
    }
    EXPECT_EQ(lines, 1);
    CDC& dc = c.Draw();
    int red = 0;
    for (int x = 0; x < 200; ++x)
        red += dc.GetPixel(x, from.y) == RGB(200, 0, 0);
    // The plotting area's left edge is left out, and its right edge of single pixels.
    EXPECT_EQ(red, to.x - from.x - 1);
    // Level colours, and a level that is the only one takes the lowest value's.
    c.curve.SetContourColourMode(C2DContourCurve::ccLevelColours);
    EXPECT_EQ(c.Draw().GetPixel(from.x + 20, from.y), c.MapColour(0, 0, 10));
    // Shading alone draws no line over itself.
    c.surface.SetColour(RGB(0, 200, 0));
    c.curve.SetDisplayMode(C2DContourCurve::dmShading);
    COLORREF const shaded = c.Draw().GetPixel(from.x + 20, from.y);
    EXPECT_EQ(shaded, c.curve.GetBandColours()[0]);
}

TEST(ContourPainter, FineGridsAreDrawnAsTheirPiecesOneByOne)
{
    // A cone whose cells are smaller than pixels.
    constexpr int kCols = 500;
    constexpr int kRows = 400;
    std::vector<double> heights;
    for (int j = 0; j <= kRows; ++j) {
        for (int i = 0; i <= kCols; ++i)
            heights.push_back(std::hypot(i - 250.0, j - 190.0));
    }
    ContourFinder const finder({ heights, kCols, kRows, 0, 0, 1, 1, {} });
    CDIB fast(200, 160, 24);
    CDIB plain(200, 160, 24);
    CRect const window(0, 0, 200, 160);
    CRect const clip(20, 20, 180, 140);
    CPort port(fast.GetDC(), window, window, CRealRect({ 0.0, 400.0 }, { 500.0, 0.0 }));
    port.SetClipRect(&clip);
    CPen pen(PS_SOLID, 1, RGB(1, 2, 3));
    plain.GetDC()->SelectObject(&pen);
    for (double const level : { 7.0, 60.0, 150.0, 222.0 }) {
        ContourPainter(port, finder, 1).DrawLevel(level, RGB(1, 2, 3));
        std::vector<ContourSegment> segments;
        finder.FindSegments(level, segments);
        for (auto const& s : segments) {
            CPoint const to = port.UnitsToWindow(CRealPoint(s.to[0], s.to[1]));
            plain.GetDC()->MoveTo(port.UnitsToWindow(CRealPoint(s.from[0], s.from[1])));
            plain.GetDC()->LineTo(to);
            plain.GetDC()->SetPixel(to.x, to.y, RGB(1, 2, 3));
        }
    }
    int drawn = 0;
    for (int y = 0; y < 160; ++y) {
        for (int x = 0; x < 200; ++x) {
            bool const isInside = clip.PtInRect({ x, y });
            // On the edges to the right and below, lines are drawn and single pixels are not.
            if (x == clip.right || y == clip.bottom)
                continue;
            COLORREF const expected = isInside ? plain.GetDC()->GetPixel(x, y) : 0;
            ASSERT_EQ(fast.GetDC()->GetPixel(x, y), expected) << x << "," << y;
            drawn += expected != 0;
        }
    }
    EXPECT_GT(drawn, 400);
}

TEST(Contours2D, PagesHaveAPictureAndLongLines)
{
    Rows rows(30, std::vector<double>(30));
    for (std::size_t j = 0; j < 30; ++j)
        for (std::size_t i = 0; i < 30; ++i)
            rows[j][i] = std::hypot(static_cast<double>(i) - 14.5, static_cast<double>(j) - 14.5);
    ContourGraph c(rows);
    c.curve.SetDisplayMode(C2DContourCurve::dmShadingAndLines);
    c.Spaced(5, 100);
    PageSetup setup;
    setup.format = PageFormat::Svg;
    std::shared_ptr<PageSurface> surface = MakePageSurface(setup);
    PageSurface* const page = surface.get();
    CRect const bounds = surface->Bounds();
    CDC dc(std::move(surface));
    c.graph.Draw(&dc, bounds, pmDirect);
    std::string const svg = page->Finish();
    std::size_t pictures = 0;
    for (std::size_t at = svg.find("<image"); at != std::string::npos; at = svg.find("<image", at + 1))
        ++pictures;
    EXPECT_EQ(pictures, 1U);
}

TEST(Contours2D, ArchiveFollowsTheCurveWithItsSurface)
{
    C2DContourCurve curve;
    curve.SetDisplayMode(1);
    curve.SetContourColourMode(1);
    curve.SetLevelMode(2);
    curve.SetNumContours(9);
    curve.SetRef(1.5);
    curve.SetSpacing(2.5);
    curve.SetLineThickness(3);
    curve.GetSurface()->SetTransparency(0.25);
    EXPECT_EQ(curve.GetItemType(), it2DContourCurve);
    EXPECT_EQ(curve.GetTitle(), "Contour Curve");
    std::vector<std::byte> const stored = Stored(curve).Get();
    Bytes settings;
    settings.Int(1, 1, 2, 9).Double(1.5, 2.5).Add(Stored(*curve.GetSurface()));
    Bytes newest;
    newest.Int(3).Add(settings).Int(3, 0);
    ASSERT_GT(stored.size(), newest.Get().size());
    std::size_t const base = stored.size() - newest.Get().size();
    EXPECT_EQ(Bytes::Of(std::span(stored).subspan(base)), newest);
    // Older layouts have neither the lines' width nor, before that, a header.
    for (int version = 1; version <= 2; ++version) {
        Bytes older = Bytes::Of(std::span(stored).first(base));
        older.Int(version).Add(settings);
        if (version == 2)
            older.Int(7);
        C2DContourCurve loaded;
        ASSERT_TRUE(Load(loaded, older));
        EXPECT_EQ(loaded.GetLineThickness(), version == 2 ? 7 : 1);
        EXPECT_EQ(loaded.GetSpacing(), 2.5);
        EXPECT_EQ(loaded.GetSurface()->GetTransparency(), 0.25);
    }
    // A header is the curve's own copy, and follows.
    CScanTestHeader header;
    curve.SetScanTestHeader(&header);
    newest = Bytes();
    newest.Int(3).Add(settings).Int(3, 1).Add(Stored(header));
    Bytes const all = Stored(curve);
    EXPECT_EQ(Bytes::Of(std::span(all.Get()).subspan(base)), newest);
    C2DContourCurve loaded;
    ASSERT_TRUE(Load(loaded, all));
    EXPECT_EQ(Stored(loaded), all);
}

TEST(Contours2D, AreDrawnWhateverTheSettings)
{
    constexpr double kHuge = std::numeric_limits<double>::max();
    constexpr int kCounts[] = { std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), 0 };
    SetMessageBoxFunction([](CString const&, CString const&, UINT) {});
    for (double const value : { 0.0, 1e-300, 1e-5, -1.0, std::nan(""), HUGE_VAL, kHuge }) {
        ContourGraph c({ { 0, value, -value, 1 }, { 1, 2 * value, 3, 4 } });
        c.surface.SetArbContourLevels({ value, -value });
        for (int const count : kCounts) {
            for (int mode = -1; mode <= 3; ++mode) {
                c.curve.SetDisplayMode(mode);
                c.curve.SetLevelMode((mode + 2) % 4);
                c.curve.SetNumContours(count);
                c.curve.SetLineThickness(count);
                c.curve.SetContourColourMode(mode == 0 ? 0 : 1);
                c.Spaced(value == 0.0 ? 1e9 : value, value);
                c.curve.SetLevelMode((mode + 2) % 4);
                // A key goes when its curve needs none.
                CColourKeyArray& keys = *c.graph.GetColourKeyArray();
                CColourKey& key
                    = keys.GetSize() > 0 ? *keys.GetAt(0) : *c.graph.AddColourKey({ 5, 5 }, c.curve.GetTag());
                key.SetNumTicks(count);
                key.SetLabelMode(count);
                key.SetMinAndDel(value, value);
                c.Draw();
                c.surface.SetXMax(value);
            }
        }
    }
    SetMessageBoxFunction({});
}

} // namespace
} // namespace ombrel::test
