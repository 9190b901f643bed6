#include "ombrel/drawing/Port.h"

#include "ombrel/platform/gdi/DC.h"
#include "tests/platform/gdi/Recorded.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
CRect const kMap(100, 50, 500, 350);
CRealRect const kReal(0, 10, 10, 0);

/// A port over a surface that keeps what is drawn.
struct Recorded {
    explicit Recorded(CRect const& window = CRect(0, 0, 600, 400))
        : surface(std::make_shared<RecordingSurface>(CSize(600, 400)))
        , dc(surface)
        , port(&dc, window, kMap, kReal)
    {
    }
    /// The ends of the lines drawn since the last call.
    std::vector<std::pair<CPoint, CPoint>> TakeLines()
    {
        std::vector<std::pair<CPoint, CPoint>> lines;
        for (auto const& p : test::OfKind<primitive::Polyline>(surface->Primitives()))
            lines.emplace_back(p.points.front(), p.points.back());
        EXPECT_EQ(lines.size(), surface->Primitives().size());
        surface->Clear();
        return lines;
    }
    /// The pixels set since the last call.
    std::vector<CPoint> TakePixels()
    {
        std::vector<CPoint> pixels;
        for (auto const& p : test::OfKind<primitive::Fill>(surface->Primitives())) {
            EXPECT_EQ(p.region.Box().Size(), CSize(1, 1));
            pixels.push_back(p.region.Box().TopLeft());
        }
        EXPECT_EQ(pixels.size(), surface->Primitives().size());
        surface->Clear();
        return pixels;
    }
    std::shared_ptr<RecordingSurface> surface;
    CDC dc;
    CPort port;
};

TEST(Port, MapsRealPointsOntoThePixelsOfTheMapRectangle)
{
    CPort const port(nullptr, CRect(0, 0, 600, 400), kMap, kReal);
    struct Case {
        CRealPoint p;
        CPoint device;
    };
    Case const cases[] = {
        { { 0, 0 }, { 100, 350 } },
        { { 10, 10 }, { 500, 50 } },
        { { 5, 5 }, { 300, 200 } },
        { { 0.01249, 10 }, { 100, 50 } },
        { { 0.0125, 10 }, { 101, 50 } },
        { { 1e6, -1e6 }, { 32000, 32000 } },
        { { -1e300, 1e300 }, { -32000, -32000 } },
        { { kInfinity, kInfinity }, { 32000, -32000 } },
        { { kNaN, kNaN }, { 0, 0 } },
    };
    for (Case const& c : cases) {
        CPoint const device = port.UnitsToWindow(c.p);
        EXPECT_EQ(device.x, c.device.x) << c.p.x;
        EXPECT_EQ(device.y, c.device.y) << c.p.y;
        EXPECT_EQ(CPoint(CPort::UnitsToWindow(c.p, CRect(), kMap, kReal)), c.device) << c.p.x;
    }
    EXPECT_EQ(port.UnitsToWindowLength(2.5), 100);
    EXPECT_EQ(port.UnitsToWindowHeight(-1.0), 30);
    EXPECT_EQ(port.UnitsToWindow(CRealSize(2.5, 1.0)), CSize(100, 30));
    EXPECT_DOUBLE_EQ(port.WindowToUnitsLength(-80), 2.0);
    EXPECT_DOUBLE_EQ(port.WindowToUnitsHeight(30), 1.0);
    EXPECT_GT(port.WindowToUnitsHeight(std::numeric_limits<int>::min()), 7e7);
}

TEST(Port, MappingAndItsInverseUndoEachOtherInAnyWindow)
{
    CRealRect const reals[] = { kReal, { -3.7, 1e-5, 12.9, -2e-5 }, { 10, 0, 0, 10 } };
    for (CRect const& window : { CRect(0, 0, 600, 400), CRect(30, 70, 630, 470), CRect(0, -40, 600, 360) }) {
        for (CRealRect const& real : reals) {
            CPort const port(nullptr, window, kMap, real);
            for (int x = 0; x < 700; x += 7) {
                CPoint const device(x, std::max(window.top, 0) + x / 2);
                EXPECT_EQ(CPoint(port.UnitsToWindow(port.WindowToUnits(device))), device) << window.top;
            }
        }
    }
    CPort const port(nullptr, CRect(30, 70, 630, 470), kMap, kReal);
    EXPECT_EQ(CPoint(port.UnitsToWindow(CRealPoint(5, 5))), CPoint(300, 270));
    CRealPoint const back = CPort::WindowToUnits(CPoint(300, 200), CRect(30, 70, 630, 470), kMap, kReal);
    EXPECT_EQ(back, CRealPoint(5, 5));
}

TEST(Port, RectanglesWithoutSizeStillGivePixels)
{
    CPort const port(nullptr, CRect(), CRect(), CRealRect());
    for (double const v : { 0.0, 1.0, -1.0, kInfinity, kNaN }) {
        CPoint const p = port.UnitsToWindow(CRealPoint(v, v));
        EXPECT_LE(std::abs(p.x), 32000);
        EXPECT_LE(std::abs(p.y), 32000);
    }
    constexpr int kFar = std::numeric_limits<int>::max();
    CPort const far(nullptr, CRect(0, kFar, 0, kFar), kMap, kReal);
    EXPECT_EQ(far.UnitsToWindow(CRealPoint(5, 5)).y, 32000);
    CPort const high(nullptr, CRect(0, -kFar, 0, -kFar), kMap, kReal);
    EXPECT_EQ(high.UnitsToWindow(CRealPoint(5, 5)).y, -32000);
}

TEST(Port, PointsAreLimitedTo32000)
{
    for (int const v : { 32000, 32001, 2147483647, -32000, -32001, 5 }) {
        POINT p { v, -std::max(v, -2147483647) };
        CPort::LimitToWindow(p);
        EXPECT_EQ(p.x, std::clamp(v, -32000, 32000));
        EXPECT_EQ(p.y, -std::clamp(v, -32000, 32000));
    }
}

TEST(Port, LinesAreClippedAtAllFourEdges)
{
    struct Case {
        CRealPoint from, to;
        bool drawn;
        CPoint begin, end;
    };
    Case const cases[] = {
        { { 2, 2 }, { 8, 8 }, true, { 180, 290 }, { 420, 110 } },
        { { 5, 5 }, { 15, 5 }, true, { 300, 200 }, { 500, 200 } },
        { { 5, 5 }, { 5, -5 }, true, { 300, 200 }, { 300, 350 } },
        { { -5, 5 }, { 5, 5 }, true, { 100, 200 }, { 300, 200 } },
        { { -5, 5 }, { -5, 8 }, false, {}, {} },
        { { 5, 20 }, { 20, 5 }, false, {}, {} },
        // The right and bottom edges belong to the inside.
        { { 10, 2 }, { 10, 8 }, true, { 500, 290 }, { 500, 110 } },
        { { 2, 0 }, { 8, 0 }, true, { 180, 350 }, { 420, 350 } },
    };
    Recorded recorded;
    recorded.port.SetClipRect(&kMap);
    for (Case const& c : cases) {
        recorded.port.MoveTo(c.from);
        recorded.port.LineTo(c.to);
        auto const lines = recorded.TakeLines();
        ASSERT_EQ(lines.size(), c.drawn ? 1U : 0U) << c.from.x << ' ' << c.to.x;
        if (c.drawn) {
            EXPECT_EQ(lines[0].first, c.begin);
            EXPECT_EQ(lines[0].second, c.end);
        }
    }
    // Both ends outside: from edge to edge, in the order in which edges are tried.
    recorded.port.MoveTo(CRealPoint(-5, 5));
    recorded.port.LineTo(CRealPoint(15, 5));
    auto const lines = recorded.TakeLines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(std::min(lines[0].first.x, lines[0].second.x), 100);
    EXPECT_EQ(std::max(lines[0].first.x, lines[0].second.x), 500);
}

TEST(Port, APolylineGoesOnBehindTheClipRectangle)
{
    Recorded recorded;
    recorded.port.SetClipRect(&kMap);
    recorded.port.MoveTo(CRealPoint(-5, 5));
    // Nothing is drawn, but this is where the next line starts.
    recorded.port.LineTo(CRealPoint(-5, 8));
    recorded.port.LineTo(CRealPoint(5, 8));
    // Leaves and comes back at another place.
    recorded.port.LineTo(CRealPoint(5, 12));
    recorded.port.LineTo(CRealPoint(7, 12));
    recorded.port.LineTo(CRealPoint(7, 8));
    auto const lines = recorded.TakeLines();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], std::make_pair(CPoint(100, 110), CPoint(300, 110)));
    EXPECT_EQ(lines[1], std::make_pair(CPoint(300, 110), CPoint(300, 50)));
    EXPECT_EQ(lines[2], std::make_pair(CPoint(380, 50), CPoint(380, 110)));

    // The position is known when clipping starts in the middle, and without clipping lines are whole.
    recorded.port.SetClipRect(nullptr);
    recorded.port.MoveToEx(CRealPoint(-2, 5));
    recorded.port.SetClipRect(&kMap);
    recorded.port.LineTo(CRealPoint(5, 5));
    recorded.port.SetClipRect(nullptr);
    recorded.port.LineTo(CRealPoint(11, 5));
    auto const more = recorded.TakeLines();
    ASSERT_EQ(more.size(), 2U);
    EXPECT_EQ(more[0], std::make_pair(CPoint(100, 200), CPoint(300, 200)));
    EXPECT_EQ(more[1], std::make_pair(CPoint(300, 200), CPoint(540, 200)));
}

TEST(Port, TheClipRectangleOutlivesItsUse)
{
    Recorded recorded;
    CRect rect;
    EXPECT_EQ(recorded.port.GetClipRect(rect), 0);
    recorded.port.SetClipRect(&kMap);
    EXPECT_EQ(recorded.port.GetClipRect(rect), 1);
    EXPECT_EQ(rect, kMap);
    recorded.port.SetClipRect(nullptr);
    EXPECT_EQ(recorded.port.GetClipRect(rect), 0);
}

TEST(Port, PixelsOnTheRightAndBottomEdgesAreClipped)
{
    Recorded recorded;
    CPoint const corners[] = { { 100, 50 }, { 500, 200 }, { 300, 350 }, { 499, 349 }, { 99, 60 } };
    recorded.port.SetClipRect(&kMap);
    for (CPoint const p : corners)
        recorded.port.SetPixel(p.x, p.y, 0);
    EXPECT_EQ(recorded.TakePixels(), (std::vector<CPoint> { { 100, 50 }, { 499, 349 } }));
    recorded.port.SetClipRect(nullptr);
    for (CPoint const p : corners)
        recorded.port.SetPixel(p.x, p.y, 0);
    EXPECT_EQ(recorded.TakePixels().size(), 5U);
}

TEST(Port, DottedLinesSetEverySecondOrThirdPixelAndAreNotClipped)
{
    Recorded recorded;
    CRect const small(0, 0, 1, 1);
    recorded.port.SetClipRect(&small);
    CRealPoint const from(0, 5);
    CRealPoint const to(0.175, 5);
    recorded.port.LineDDA(from, to, 9, 0, 1);
    EXPECT_EQ(recorded.TakePixels(), (std::vector<CPoint> { { 101, 200 }, { 103, 200 }, { 105, 200 } }));
    recorded.port.LineDDA(from, to, 9, 0, 0);
    EXPECT_EQ(recorded.TakePixels(), (std::vector<CPoint> { { 102, 200 }, { 105, 200 } }));
}

TEST(Port, TextExtentsAreRealAndTurnWithTheText)
{
    Recorded recorded;
    CSize const pixels = recorded.dc.GetTextExtent("Label");
    ASSERT_GT(pixels.cx, pixels.cy);
    CRealSize const flat = recorded.port.GetTextExtent("Label", 0);
    CRealSize const upright = recorded.port.GetTextExtent("Label", 1);
    EXPECT_DOUBLE_EQ(flat.cx, pixels.cx / 40.0);
    EXPECT_DOUBLE_EQ(flat.cy, pixels.cy / 30.0);
    EXPECT_DOUBLE_EQ(upright.cx, pixels.cy / 40.0);
    EXPECT_DOUBLE_EQ(upright.cy, pixels.cx / 30.0);
    recorded.port.TextOutW("Label", CRealPoint(5, 5));
    auto const texts = test::OfKind<primitive::Text>(recorded.surface->Primitives());
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(texts[0].text, "Label");
    EXPECT_EQ(texts[0].at, CPoint(300, 200));
}

} // namespace
} // namespace ombrel
