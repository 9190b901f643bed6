#include "ombrel/layout/placing/Occupancy.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/layout/LegendPlacement.h"
#include "ombrel/layout/placing/OccupancySurface.h"
#include "ombrel/platform/gdi/DC.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace ombrel {
namespace {

constexpr int kGap = 10;
CSize const kBox(100, 60);
CRect const kEverywhere(-100000, -100000, 100000, 100000);

struct Line {
    double x0, y0, x1, y1;
    CRect within = kEverywhere;
};

TEST(LegendPlaces, AreTheFirstThatCoverNothing)
{
    CRect const area(100, 50, 700, 450);
    CRect const top(100, 50, 700, 120);
    CRect const bottom(100, 380, 700, 450);
    CRect const left(100, 50, 210, 450);
    CRect const right(590, 50, 700, 450);
    struct {
        char const* what;
        std::vector<CRect> rects;
        std::vector<Line> lines;
        std::optional<CPoint> place;
    } const cases[] {
        { "nothing", {}, {}, CPoint(590, 60) },
        { "a rising line", {}, { { 100, 450, 700, 50 } }, CPoint(110, 60) },
        { "both upper corners", { { 150, 100, 151, 101 } }, { { 650, 100, 650, 100 } }, CPoint(590, 380) },
        { "all corners but the lower left", { right, { 100, 50, 210, 120 } }, {}, CPoint(110, 380) },
        { "both sides", { left, right }, {}, CPoint(350, 60) },
        { "top and bottom", { top, bottom }, {}, CPoint(590, 220) },
        { "all but the left", { top, { 400, 50, 700, 450 }, bottom }, {}, CPoint(110, 220) },
        { "all but the bottom's middle", { { 100, 50, 700, 370 }, { 100, 50, 330, 450 }, { 470, 50, 700, 450 } }, {},
            CPoint(350, 380) },
        { "a line with its ends outside, and one through a window", {},
            { { -1e6, 90, 1e6, 90 }, { 650, -1e9, 650, 1e9, { 0, 400, 1000, 500 } } }, CPoint(110, 380) },
        { "everything", { area }, {}, std::nullopt },
        { "what is outside", { { 700, 60, 900, 100 }, { 600, 450, 700, 500 } }, { { 99, 60, 99, 450 } },
            CPoint(590, 60) },
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.what);
        Occupancy occupancy(area);
        for (CRect const& rect : c.rects)
            occupancy.AddRect(rect);
        for (Line const& line : c.lines)
            occupancy.AddSegment(line.x0, line.y0, line.x1, line.y1, line.within);
        auto const place = FindFreePlace(occupancy, kBox, kGap);
        ASSERT_EQ(place.has_value(), c.place.has_value());
        EXPECT_TRUE(!place || *place == *c.place) << place->x << ", " << place->y;
    }
    EXPECT_FALSE(FindFreePlace(Occupancy(area), CSize(341, 20), kGap)) << "wider than 0.6 of the area";
    EXPECT_TRUE(FindFreePlace(Occupancy(area), CSize(340, 260), kGap));
    EXPECT_FALSE(FindFreePlace(Occupancy(area), CSize(20, 261), kGap)) << "higher than 0.7 of it";
    EXPECT_FALSE(FindFreePlace(Occupancy(CRect(5, 5, 5, 5)), kBox, kGap));
}

TEST(OccupancySurfaces, TakeInAllThatIsDrawn)
{
    // Cells of 3 pixels: what is 4 pixels away from all that is drawn is free.
    CRect const area(0, 0, 300, 150);
    std::vector<CPoint> const corner { { 60, 30 }, { 90, 60 }, { 60, 90 } };
    std::size_t const starts[] { 0, 2 };
    struct {
        char const* what;
        std::function<void(CDC&, Surface&)> draw;
        std::vector<CPoint> covered;
        std::vector<CPoint> free;
    } const cases[] {
        { "a polyline", [&](CDC&, Surface& s) { s.Polyline(corner, {}, {}); }, { { 75, 45 }, { 75, 75 } },
            { { 60, 60 }, { 80, 42 }, { 60, 97 } } },
        { "a line 30 pixels wide",
            [&](CDC&, Surface& s) {
                s.Polyline(std::vector<CPoint> { { 50, 75 }, { 200, 75 } }, { PS_SOLID, 30, 0, {} }, {});
            },
            { { 100, 61 }, { 101, 66 }, { 100, 75 }, { 100, 89 } }, { { 100, 55 }, { 100, 95 }, { 40, 75 } } },
        { "one stroke of two figures",
            [&](CDC&, Surface& s) {
                std::vector<CPoint> const points { { 10, 10 }, { 10, 50 }, { 100, 10 }, { 100, 50 } };
                s.Stroke({ points, starts }, { { 0, 255 }, 1.0, {} }, true, {});
            },
            { { 10, 30 }, { 100, 30 } }, { { 55, 30 } } },
        { "the inside of a shape",
            [&](CDC&, Surface& s) { s.Fill(Region::FromPolygon(corner, ALTERNATE), VectorBrush::Solid(0xFFFFFF), {}); },
            { { 70, 60 }, { 64, 40 } }, { { 85, 40 }, { 85, 80 } } },
        { "a hatched box, clipped",
            [](CDC&, Surface& s) {
                Clip clip;
                clip.box = CRect(0, 0, 50, 150);
                s.Fill(Region::FromRect({ 20, 20, 80, 80 }), VectorBrush::Hatch(3, { 0, 255 }, { 0, 0 }), clip);
            },
            { { 21, 21 }, { 48, 78 } }, { { 16, 30 }, { 55, 30 }, { 30, 85 } } },
        { "a text that runs upwards",
            [](CDC& dc, Surface&) {
                LOGFONT font;
                font.lfHeight = 16;
                font.lfEscapement = font.lfOrientation = 900;
                CFont turned;
                turned.CreateFontIndirect(font);
                dc.SelectObject(&turned);
                dc.TextOut(100, 120, "MMMMMMMM");
            },
            { { 104, 115 }, { 110, 80 } }, { { 95, 100 }, { 130, 110 }, { 110, 126 } } },
        { "a picture",
            [](CDC&, Surface& s) {
                s.Image({ nullptr, {}, { 10, 20, 40, 50 } }, {});
            },
            { { 11, 21 }, { 38, 48 } }, { { 45, 30 } } },
        { "marks",
            [](CDC& dc, Surface&) {
                std::vector<CPoint> const points { { 50, 50 }, { 200, 100 } };
                dc.Repeat([](CDC& mark) { mark.FillSolidRect({ -5, -8, 6, 9 }, 0); }, points);
            },
            { { 46, 43 }, { 54, 57 }, { 196, 93 } }, { { 40, 50 }, { 50, 63 }, { 125, 75 } } },
    };
    for (auto const& c : cases) {
        auto const surface = std::make_shared<OccupancySurface>(area);
        CDC dc(surface);
        c.draw(dc, *surface);
        for (auto const* const points : { &c.covered, &c.free }) {
            for (CPoint const& p : *points)
                EXPECT_EQ(surface->GetOccupancy().IsFree({ p.x, p.y, p.x + 1, p.y + 1 }), points == &c.free)
                    << c.what << " at " << p.x << ", " << p.y;
        }
    }
}

TEST(OccupancySurfaces, SeeTheCurvesOfAGraphAndNothingElse)
{
    C2DGraph graph(1);
    auto& line = static_cast<C2DLine&>(*graph.AddPlot(it2DLinePlot)->AddCurve("ring", CPlotComponent::dsTable));
    line.Initialise(5);
    for (int i = 0; i < 5; ++i)
        line.SetAt(i, { i == 1 || i == 2 ? 8.0 : 2.0, i == 2 || i == 3 ? 8.0 : 2.0 });
    graph.GetAxes()->SetXAxisRangeMode(CAxes::rmFixed);
    graph.GetAxes()->SetYAxisRangeMode(CAxes::rmFixed);
    graph.GetAxes()->SetXAxisRange(0.0, 10.0);
    graph.GetAxes()->SetYAxisRange(0.0, 10.0);
    for (bool const shaded : { false, true }) {
        line.SetFillOn(shaded);
        line.SetFillPattern(kSolidFillPattern);
        line.SetShadeMode(C2DLine::shClosed);
        graph.UpdatePlots();
        CDC dc;
        graph.LayOut(&dc, CRect(0, 0, 600, 400));
        Occupancy const occupancy = OccupancyOf(graph);
        auto const isFree = [&](double x, double y) {
            CPoint const p = graph.UnitsToWindow({ x, y });
            return occupancy.IsFree({ p.x - 2, p.y - 2, p.x + 3, p.y + 3 });
        };
        EXPECT_TRUE(isFree(1.0, 1.0) && isFree(9.0, 9.0) && isFree(0.1, 5.0) && isFree(5.0, 9.9)) << "axes and grid";
        EXPECT_FALSE(isFree(2.0, 5.0) || isFree(5.0, 2.0) || isFree(8.0, 5.0) || isFree(5.0, 8.0));
        EXPECT_EQ(isFree(5.0, 5.0), !shaded);
    }
}

TEST(Legends, StandInACornerWhereThereIsRoomOrBesideTheCurves)
{
    struct {
        LegendPlace place;
        bool polar;
        CSize window;
        /// t, b, l, r: sides of the plotting area that it is next to; > beside the area, v below it, 0 off.
        char const* where;
    } const cases[] {
        { LegendPlace::Off, false, { 600, 400 }, "0" },
        { LegendPlace::TopLeft, false, { 600, 400 }, "tl" },
        { LegendPlace::TopRight, false, { 600, 400 }, "tr" },
        { LegendPlace::BottomLeft, false, { 600, 400 }, "bl" },
        { LegendPlace::BottomRight, true, { 600, 400 }, "br" },
        // The line runs from the lower left to the upper right.
        { LegendPlace::Auto, false, { 600, 400 }, "tl" },
        { LegendPlace::Auto, true, { 600, 400 }, ">" },
        { LegendPlace::Auto, true, { 300, 400 }, "v" },
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.where);
        C2DGraph graph(1);
        auto& line = static_cast<C2DLine&>(*graph.AddPlot(it2DLinePlot)->AddCurve("a", CPlotComponent::dsTable));
        line.Initialise(2);
        line.SetAt(1, { 1.0, 1.0 });
        graph.GetPolarGrid()->SetOn(c.polar);
        CDC dc;
        CRect const window({ 0, 0 }, c.window);
        CRect laidOut;
        auto const layOut = [&](CRect const& rect) {
            laidOut = rect;
            graph.SetGraphAndWindowRect(rect, window);
            graph.LayOut(&dc, window);
        };
        graph.UpdatePlots();
        layOut(window);
        PlaceLegend(graph, c.place, window, dc, layOut);
        CLegend const& legend = *graph.GetLegend();
        std::string const where = c.where;
        ASSERT_EQ(legend.IsOn() != 0, where != "0");
        CSize const size = graph.GetLegend()->Measure(&dc);
        CPoint const at = legend.GetRect().TopLeft();
        CRect const area = graph.GetAxesRect();
        int const gap = graph.GetAxes()->GetFontHeight() / 2;
        EXPECT_EQ(where.find('t') != std::string::npos, at.y == area.top + gap);
        EXPECT_EQ(where.find('b') != std::string::npos, at.y + size.cy == area.bottom - gap);
        EXPECT_EQ(where.find('l') != std::string::npos, at.x == area.left + gap);
        EXPECT_EQ(where.find('r') != std::string::npos, at.x + size.cx == area.right - gap);
        if (where == ">")
            EXPECT_TRUE(at == CPoint(600 - size.cx, area.top) && laidOut == CRect(0, 0, 600 - size.cx - gap, 400));
        else if (where == "v")
            EXPECT_TRUE(at.y == 400 - size.cy && laidOut == CRect(0, 0, 300, 400 - size.cy - gap)
                && std::abs(2 * at.x + size.cx - area.left - area.right) <= 1);
        else
            EXPECT_EQ(laidOut, window);
    }
}

} // namespace
} // namespace ombrel
