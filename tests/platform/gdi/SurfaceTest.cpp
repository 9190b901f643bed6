#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/Primitive.h"

#include <cmath>
#include <gtest/gtest.h>

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
    EXPECT_EQ(curve.back(), curve.front());
    for (CPoint const at : { CPoint(40, 50), CPoint(20, 40), CPoint(40, 30) })
        EXPECT_EQ(std::count(curve.begin(), curve.end(), at), 1) << at.x << ',' << at.y;
    for (CPoint const p : curve)
        EXPECT_NEAR(std::hypot((p.x - 40) / 20.0, (p.y - 40) / 10.0), 1.0, 0.05) << p.x << ',' << p.y;
    dc.Ellipse({ 5, 5, 5, 9 });
    EXPECT_EQ(surface->lines.size(), 1u) << "nothing of an empty box";
}

TEST(Surface, ArcsRunCounterClockwiseBetweenTheirRadials)
{
    struct {
        CPoint start;
        CPoint end;
        CPoint first;
        CPoint last;
        /// One that the arc passes, and one that it does not.
        CPoint on;
        CPoint off;
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
        // Each step goes on in the sense of the arc.
        for (std::size_t i = 1; i < curve.size(); ++i) {
            CPoint const a = curve[i - 1] - CPoint(40, 40);
            CPoint const b = curve[i] - CPoint(40, 40);
            EXPECT_GE(a.y * b.x - a.x * b.y, -20) << i;
        }
    }
}

} // namespace
} // namespace ombrel
