#include "tests/graph2d/GraphFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace ombrel {
namespace {

using test::OfKind;
using Spans = std::vector<std::tuple<int, int, int>>;

Spans SpansOf(Region const& region)
{
    Spans spans;
    for (Region::Span const& s : region.Spans(-1000, 1000))
        spans.emplace_back(s.y, s.left, s.right);
    return spans;
}

TEST(LineShading, CoversThePixelsOfThePolygonOfAllPoints)
{
    std::mt19937 random(3);
    std::normal_distribution<double> height;
    std::uniform_real_distribution<double> anywhere(0.0, 10.0);
    for (bool const ascending : { true, false }) {
        std::vector<std::pair<double, double>> points(5000);
        for (auto& p : points)
            p = { anywhere(random), 1.0 + height(random) };
        if (ascending) {
            std::vector<double> xs;
            for (auto const& p : points)
                xs.push_back(p.first);
            std::sort(xs.begin(), xs.end());
            for (std::size_t i = 0; auto& p : points)
                p.first = xs[i++];
        } else {
            // The shading runs from the smallest x, which must come first, to the largest.
            points.front().first = 0.0;
            points.back().first = 10.0;
        }
        C2DGraph graph(1);
        C2DLine& line = test::AddLine(graph, points);
        line.SetFillOn(1);
        line.SetAutoBaseline(0);
        line.SetBaseline(1.0);
        for (auto const mode : { C2DLine::bsBoth, C2DLine::bsAbove, C2DLine::bsBelow }) {
            for (auto const shade : { C2DLine::shBaseline, C2DLine::shClosed }) {
                line.SetBaselineShadeMode(mode);
                line.SetShadeMode(shade);
                auto const fills = OfKind(test::Record(graph, { 200, 150 }), RecordedPrimitive::Kind::Fill);
                ASSERT_EQ(fills.size(), 1u);
                std::vector<CPoint> polygon;
                if (shade == C2DLine::shBaseline) {
                    polygon.push_back(graph.UnitsToWindow({ points.front().first, 1.0 }));
                    polygon.push_back(graph.UnitsToWindow({ points.back().first, 1.0 }));
                }
                for (auto p = points.rbegin(); p != points.rend(); ++p) {
                    bool const limited = shade == C2DLine::shBaseline;
                    double y = p->second;
                    y = limited && mode == C2DLine::bsAbove ? std::max(y, 1.0) : y;
                    y = limited && mode == C2DLine::bsBelow ? std::min(y, 1.0) : y;
                    polygon.push_back(graph.UnitsToWindow({ p->first, y }));
                }
                EXPECT_LT(fills[0].points.size(), points.size() + 4);
                EXPECT_EQ(SpansOf(fills[0].region), SpansOf(Region::FromPolygon(polygon, ALTERNATE)))
                    << ascending << mode << shade;
            }
        }
    }
}

} // namespace
} // namespace ombrel
