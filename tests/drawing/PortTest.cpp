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

using Lines = std::vector<std::pair<CPoint, CPoint>>;

/// A port over a surface that keeps what is drawn.
struct Recorded {
    explicit Recorded(CRect const& window = CRect(0, 0, 600, 400))
        : surface(std::make_shared<RecordingSurface>(CSize(600, 400)))
        , dc(surface)
        , port(&dc, window, kMap, kReal)
    {
    }
    /// The ends of the lines drawn since the last call.
    Lines TakeLines()
    {
        Lines lines;
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
    using Case = std::tuple<CRealPoint, CPoint>;
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
    for (auto const& [p, device] : cases) {
        EXPECT_EQ(CPoint(port.UnitsToWindow(p)), device) << p.x;
        EXPECT_EQ(CPoint(CPort::UnitsToWindow(p, CRect(), kMap, kReal)), device) << p.x;
    }
    EXPECT_EQ(port.UnitsToWindow(CRealSize(2.5, -1.0)), CSize(100, 30));
    EXPECT_EQ(port.WindowToUnits(CSize(-80, 30)), CRealSize(2.0, 1.0));
    EXPECT_GT(port.WindowToUnitsHeight(std::numeric_limits<int>::min()), 7e7);
}

TEST(Port, MappingAndItsInverseUndoEachOtherInAnyWindow)
{
    for (CRealRect const& real : { kReal, CRealRect(-3.7, 1e-5, 12.9, -2e-5), CRealRect(10, 0, 0, 10) }) {
        CPort const port(nullptr, CRect(0, -40, 600, 360), kMap, real);
        for (int x = 0; x < 700; x += 7)
            EXPECT_EQ(CPoint(port.UnitsToWindow(port.WindowToUnits(CPoint(x, x / 2)))), CPoint(x, x / 2));
    }
    CPort const port(nullptr, CRect(30, 70, 630, 470), kMap, kReal);
    EXPECT_EQ(CPoint(port.UnitsToWindow(CRealPoint(5, 5))), CPoint(300, 270));
    CRealPoint const back = CPort::WindowToUnits(CPoint(300, 200), CRect(30, 70, 630, 470), kMap, kReal);
    EXPECT_EQ(back, CRealPoint(5, 5));
}

TEST(Port, RectanglesWithoutSizeStillGivePixels)
{
    CPort const port(nullptr, CRect(), CRect(), CRealRect());
    for (double const v : { 0.0, 1.0, -1.0, kInfinity, kNaN })
        EXPECT_LE(std::abs(port.UnitsToWindow(CRealPoint(v, v)).x), 32000);
    constexpr int kFar = std::numeric_limits<int>::max();
    CPort const far(nullptr, CRect(0, kFar, 0, kFar), kMap, kReal);
    EXPECT_EQ(far.UnitsToWindow(CRealPoint(5, 5)).y, 32000);
}

TEST(Port, LinesAreClippedAtAllFourEdges)
{
    using Case = std::tuple<CRealPoint, CRealPoint, Lines>;
    Case const cases[] = {
        { { 2, 2 }, { 8, 8 }, { { { 180, 290 }, { 420, 110 } } } },
        { { 5, 5 }, { 15, 5 }, { { { 300, 200 }, { 500, 200 } } } },
        { { 5, 5 }, { 5, -5 }, { { { 300, 200 }, { 300, 350 } } } },
        { { -5, 5 }, { 5, 5 }, { { { 100, 200 }, { 300, 200 } } } },
        { { -5, 5 }, { -5, 8 }, {} },
        { { 5, 20 }, { 20, 5 }, {} },
        // The right and bottom edges belong to the inside.
        { { 10, 2 }, { 10, 8 }, { { { 500, 290 }, { 500, 110 } } } },
        { { 2, 0 }, { 8, 0 }, { { { 180, 350 }, { 420, 350 } } } },
        // Both ends outside: from edge to edge, in the order in which edges are tried.
        { { -5, 5 }, { 15, 5 }, { { { 500, 200 }, { 100, 200 } } } },
    };
    Recorded recorded;
    recorded.port.SetClipRect(&kMap);
    for (auto const& [from, to, drawn] : cases) {
        recorded.port.MoveTo(from);
        recorded.port.LineTo(to);
        EXPECT_EQ(recorded.TakeLines(), drawn) << from.x << ' ' << to.x;
    }
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
    EXPECT_EQ(recorded.TakeLines(),
        (Lines { { { 100, 110 }, { 300, 110 } }, { { 300, 110 }, { 300, 50 } }, { { 380, 50 }, { 380, 110 } } }));
    // The position is known when clipping starts in the middle, and without clipping lines are whole.
    CRect clip;
    recorded.port.SetClipRect(nullptr);
    EXPECT_EQ(recorded.port.GetClipRect(clip), 0);
    recorded.port.MoveToEx(CRealPoint(-2, 5));
    recorded.port.SetClipRect(&kMap);
    EXPECT_EQ(recorded.port.GetClipRect(clip), 1);
    EXPECT_EQ(clip, kMap);
    recorded.port.LineTo(CRealPoint(5, 5));
    recorded.port.SetClipRect(nullptr);
    recorded.port.LineTo(CRealPoint(11, 5));
    EXPECT_EQ(recorded.TakeLines(), (Lines { { { 100, 200 }, { 300, 200 } }, { { 300, 200 }, { 540, 200 } } }));
}

TEST(Port, PixelsOnTheRightAndBottomEdgesAreClipped)
{
    Recorded recorded;
    CPoint const corners[] = { { 100, 50 }, { 500, 200 }, { 300, 350 }, { 499, 349 }, { 99, 60 } };
    recorded.port.SetClipRect(&kMap);
    for (CPoint const p : corners)
        recorded.port.SetPixel(p.x, p.y, 0);
    EXPECT_EQ(recorded.TakePixels(), (std::vector<CPoint> { { 100, 50 }, { 499, 349 } }));
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
    EXPECT_EQ(texts.at(0).text, "Label");
    EXPECT_EQ(texts[0].at, CPoint(300, 200));
}

} // namespace
} // namespace ombrel
