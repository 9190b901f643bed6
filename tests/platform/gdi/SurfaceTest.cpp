#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/RecordingSurface.h"
#include "tests/platform/gdi/Picture.h"
#include "tests/platform/gdi/Recorded.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace ombrel {
namespace {

/// Answers only what a surface must: keeps the points of lines and fills.
class PointSurface : public Surface {
public:
    CRect Bounds() const override { return { 0, 0, 100, 100 }; }
    void Polyline(std::span<CPoint const> points, LineStyle const&, Clip const&) override { Keep(lines, points); }
    void Stroke(Figures const& figures, VectorPen const&, bool, Clip const&) override { Keep(lines, figures.points); }
    void Fill(Region const& region, VectorBrush const&, Clip const&) override { Keep(fills, region.Outline()); }
    void Text(TextRun const&, Clip const&) override { }
    void Image(ImageCopy const&, Clip const&) override { }

    std::vector<std::vector<CPoint>> lines;
    std::vector<std::vector<CPoint>> fills;

private:
    static void Keep(std::vector<std::vector<CPoint>>& to, std::span<CPoint const> points)
    {
        to.emplace_back(points.begin(), points.end());
    }
};

TEST(Surface, RoundShapesComeAsLinesAndFills)
{
    auto const surface = std::make_shared<PointSurface>();
    CDC dc(surface);
    dc.Ellipse({ 20, 30, 61, 51 });
    ASSERT_EQ(surface->lines.size(), 1u);
    ASSERT_EQ(surface->fills.size(), 1u);
    std::vector<CPoint> const& curve = surface->lines[0];
    EXPECT_EQ(curve, surface->fills[0]);
    EXPECT_EQ(curve.front(), CPoint(60, 40)) << "the outermost pixels are 20 ... 60 and 30 ... 50";
    for (CPoint const at : { CPoint(40, 50), CPoint(20, 40), CPoint(40, 30) })
        EXPECT_EQ(std::count(curve.begin(), curve.end(), at), 1) << at.x << ',' << at.y;
    for (CPoint const p : curve)
        EXPECT_NEAR(std::hypot((p.x - 40) / 20.0, (p.y - 40) / 10.0), 1.0, 0.05) << p.x << ',' << p.y;
}

TEST(Surface, ArcsRunCounterClockwiseBetweenTheirRadials)
{
    struct {
        /// Ends with a point that the arc passes, and one that it does not.
        CPoint start, end, first, last, on, off;
    } const cases[] = {
        { { 99, 40 }, { 40, 0 }, { 60, 40 }, { 40, 20 }, { 54, 26 }, { 54, 54 } },
        { { 40, 0 }, { 99, 40 }, { 40, 20 }, { 60, 40 }, { 26, 26 }, { 54, 26 } },
        { { 30, 50 }, { 50, 30 }, { 26, 54 }, { 54, 26 }, { 54, 54 }, { 26, 26 } },
    };
    for (auto const& c : cases) {
        auto const surface = std::make_shared<PointSurface>();
        CDC(surface).Arc({ 20, 20, 61, 61 }, c.start, c.end);
        ASSERT_EQ(surface->lines.size(), 1u);
        std::vector<CPoint> const& curve = surface->lines[0];
        auto const nearest = [&curve](CPoint at) {
            double least = 1e9;
            for (CPoint const p : curve)
                least = std::min(least, std::hypot(p.x - at.x, p.y - at.y));
            return least;
        };
        EXPECT_EQ(curve.front(), c.first);
        EXPECT_EQ(curve.back(), c.last);
        EXPECT_LT(nearest(c.on), 4.0);
        EXPECT_GT(nearest(c.off), 10.0);
    }
}

TEST(RecordingSurface, HoldsByValueWhatIsDrawn)
{
    RecordingSurface surface({ 100, 100 });
    CPoint const points[] = { { 1, 2 }, { 3, 4 }, { 9, 2 } };
    CRect const all(0, 0, 4, 4);
    // Of every three the outer ones are equal.
    for (std::uint32_t const pixel : { 0U, 1U, 0U }) {
        Raster raster(4, 4, 24);
        raster.Row(1)[2] = pixel;
        surface.Image({ &raster, all, all, SRCCOPY, 0, 0xFFFFFF, 0xFFFFFF }, {});
    }
    for (int const width : { 9, 8, 9 }) {
        Clip clip;
        clip.region = std::make_shared<Region>(Region::FromRect({ 0, 0, width, 9 }));
        surface.Polyline(points, {}, clip);
    }
    for (int const y : { 9, 8, 9 }) {
        CPoint const corners[] = { { 1, 2 }, { 3, y }, { 9, 2 } };
        surface.Fill(Region::FromPolygon(corners, WINDING), VectorBrush::Solid(0), {});
    }
    auto const primitives = surface.Primitives();
    surface.Clear();
    for (std::size_t i = 0; i < primitives.size(); i += 3) {
        EXPECT_TRUE(primitives[i] == primitives[i + 2]) << i;
        EXPECT_FALSE(primitives[i] == primitives[i + 1]) << i;
    }
}

using Draw = std::function<void(CDC&)>;

/// Marks as symbols have them, filled and open, small and wide, and some that cannot be drawn ahead.
std::vector<Draw> Marks()
{
    auto const circle = [](int half) {
        return [half](CDC& dc) {
            CRect const box(1 - half, 1 - half, half, half);
            dc.Ellipse(box);
            dc.Arc(box, box.TopLeft(), box.BottomRight());
            dc.Arc(box, box.BottomRight(), box.TopLeft());
        };
    };
    auto const polygon = [](std::vector<CPoint> corners) {
        return [corners](CDC& dc) {
            CRgn region;
            region.CreatePolygonRgn(corners, ALTERNATE);
            dc.PaintRgn(&region);
            dc.Polyline(corners);
        };
    };
    return { circle(2), circle(5), circle(31), circle(33), circle(70),
        polygon({ { -9, -9 }, { 0, 9 }, { 9, -9 }, { -9, -9 } }),
        polygon({ { 40, 20 }, { 60, 40 }, { 47, 30 }, { 40, 20 } }), [](CDC& dc) { dc.SetPixel(0, 0, kPenColour); },
        [](CDC& dc) { dc.LineTo(-6, 3); },
        [](CDC& dc) {
            dc.FillSolidRect({ -3, -2, 2, 5 }, kPenColour);
            dc.FillSolidRect({ 0, 0, 9, 1 }, kBrushColour);
        },
        [](CDC& dc) { dc.TextOut(0, 0, "m"); }, [](CDC&) {} };
}

/// Crowded, some twice and some beyond the edges.
std::vector<CPoint> Points(unsigned count)
{
    std::mt19937 random(count);
    std::vector<CPoint> points;
    while (points.size() < count) {
        CPoint const p(static_cast<int>(random() % 260) - 30, static_cast<int>(random() % 190) - 30);
        points.insert(points.end(), 1 + random() % 2, p);
    }
    points.push_back({ 1 << 30, -(1 << 30) });
    return points;
}

TEST(Repeat, DrawsThePixelsOfMarksDrawnOneAfterTheOther)
{
    struct {
        int bitsPerPixel, penWidth, penStyle;
        unsigned points;
        std::vector<CPoint> clip;
    } const settings[] = {
        { 32, 1, PS_SOLID, 400, {} },
        { 24, 3, PS_SOLID, 150, {} },
        { 1, 1, PS_SOLID, 100, {} },
        { 24, 1, PS_DOT, 3000, {} },
        { 24, 1, PS_NULL, 5, {} },
        { 24, 1, PS_SOLID, 300, { { 20, 30 }, { 130, 30 }, { 130, 90 }, { 20, 90 } } },
        { 24, 1, PS_SOLID, 300, { { 100, 4 }, { 190, 60 }, { 100, 120 }, { 4, 60 } } },
    };
    for (auto const& s : settings) {
        std::vector<CPoint> const points = Points(s.points);
        std::size_t index = 0;
        for (Draw const& draw : Marks()) {
            Picture fast(200, 130, s.bitsPerPixel);
            Picture plain(200, 130, s.bitsPerPixel);
            CRgn region;
            region.CreatePolygonRgn(s.clip, WINDING);
            for (Picture* const picture : { &fast, &plain }) {
                picture->UsePen(s.penStyle, s.penWidth);
                picture->DC().SelectClipRgn(s.clip.empty() ? nullptr : &region);
                picture->DC().SetViewportOrg(2, -1);
            }
            fast.DC().Repeat(draw, points);
            for (CPoint const& p : points) {
                plain.DC().SetViewportOrg(2 + p.x, p.y - 1);
                plain.DC().MoveTo(0, 0);
                draw(plain.DC());
            }
            EXPECT_TRUE(fast.Pixels() == plain.Pixels())
                << "mark " << index << ", " << s.bitsPerPixel << " bits, pen " << s.penStyle << '/' << s.penWidth
                << ", clip " << s.clip.size();
            ++index;
        }
    }
}

TEST(Repeat, LaysTranslucentMarksOverEachOtherAsAWhole)
{
    // The outline lies over the filling, and the second mark over a quarter of the first.
    auto const mark = [](CDC& dc) {
        dc.FillSolidRect({ 0, 0, 10, 10 }, RGB(0, 0, 0));
        dc.Polyline(std::array { CPoint(0, 0), CPoint(10, 0) });
    };
    std::vector<CPoint> const points { { 20, 20 }, { 25, 25 }, { 95, 20 } };
    Picture picture(100, 100, 24);
    CPen pen(PS_SOLID, 1, RGB(0, 0, 0));
    picture.DC().SelectObject(&pen);
    picture.DC().FillSolidRect({ 0, 0, 100, 100 }, RGB(255, 255, 255));
    picture.DC().IntersectClipRect({ 0, 0, 97, 100 });
    picture.DC().Repeat(mark, points, 51);
    auto const at = [&](int x, int y) { return picture.DC().GetPixel(x, y); };
    // A fifth of black leaves 204 of 255, and of that 163.
    for (CPoint const p : { CPoint(20, 20), { 24, 20 }, { 29, 24 }, { 30, 30 }, { 34, 34 }, { 95, 20 }, { 96, 29 } })
        EXPECT_EQ(at(p.x, p.y), RGB(204, 204, 204)) << p.x << ',' << p.y;
    for (CPoint const p : { CPoint(25, 25), { 29, 29 } })
        EXPECT_EQ(at(p.x, p.y), RGB(163, 163, 163));
    for (CPoint const p : { CPoint(19, 20), { 30, 20 }, { 35, 34 }, { 97, 20 } })
        EXPECT_EQ(at(p.x, p.y), RGB(255, 255, 255));
}

TEST(Repeat, RecordsEveryPrimitiveAtEveryPoint)
{
    auto const surface = std::make_shared<RecordingSurface>(CSize(100, 100));
    auto const mark = [](CDC& dc) {
        dc.Ellipse({ -2, -2, 2, 2 });
        dc.TextOut(1, 1, "a");
    };
    CDC(surface).Repeat(mark, std::vector<CPoint> { { 10, 20 }, { 30, 40 } });
    EXPECT_EQ(test::Dump(surface->Primitives()),
        "ellipse [8,18 12,22] pen=#000000/1/solid fill=#ffffff\n"
        "text 11,21 \"a\" #000000 font=System/16/w700 cell=#ffffff\n"
        "ellipse [28,38 32,42] pen=#000000/1/solid fill=#ffffff\n"
        "text 31,41 \"a\" #000000 font=System/16/w700 cell=#ffffff\n");
}

} // namespace
} // namespace ombrel
