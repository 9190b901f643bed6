#include "ombrel/graph3d/Polygon.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ombrel {
namespace {

CPolygon Flat(std::initializer_list<CRealPoint> points)
{
    CPolygon polygon;
    for (auto const& p : points)
        polygon.AddVertex({ p.x, p.y, 0.0 }, 0, 0, -1.0);
    return polygon;
}

/// Twice the area of a triangle, positive when it turns to the left.
double Turn(CVertex const& a, CVertex const& b, CVertex const& c)
{
    return (b.X() - a.X()) * (c.Y() - a.Y()) - (c.X() - a.X()) * (b.Y() - a.Y());
}

TEST(Polygon, RefusesAVertexThatStandsBeforeTheLastOne)
{
    CPolygon polygon;
    CVertex const a(0.0, 0.0, 0.0);
    CVertex const b(1.0, 0.0, 0.0);
    polygon.AddVertex(a, 1, RGB(1, 2, 3), 0.25);
    // The last one may come again at once.
    polygon.AddVertex(a, 1, RGB(4, 5, 6), 0.5);
    polygon.AddVertex(b, 0, RGB(7, 8, 9), -1.0);
    polygon.AddVertex(a, 1, RGB(7, 8, 9), 0.75);
    ASSERT_EQ(polygon.GetSize(), 3);
    EXPECT_EQ(*polygon[2], b);
    EXPECT_EQ(polygon.GetColours(), (CDWordArray { RGB(1, 2, 3), RGB(4, 5, 6) }));
    EXPECT_EQ(polygon.GetTransparencies(), (CDoubleArray { 0.25, 0.5 }));
    EXPECT_EQ(polygon.GetUniqueVertices(), (std::vector { a, b }));

    // A copy keeps what the first one loses, but has no colours.
    polygon.AddTextureCoord({ 0.5, 0.25 });
    polygon.AddNormal({ 0.0, 0.0, 1.0 });
    polygon.SetTexture(3);
    CDWordArray indices;
    polygon.SetIndexArray(&indices);
    CPolygon const copy(polygon);
    polygon.Clear();
    EXPECT_EQ(polygon.GetSize(), 0);
    EXPECT_TRUE(polygon.GetColours().IsEmpty() && polygon.GetNormals().empty() && polygon.GetTextureCoords().empty());
    ASSERT_EQ(copy.GetSize(), 3);
    EXPECT_EQ(*copy[0], a);
    EXPECT_EQ(copy.GetTextureCoords().size(), 1U);
    EXPECT_EQ(copy.GetNormals().size(), 1U);
    EXPECT_EQ(copy.GetTexture(), 3U);
    EXPECT_TRUE(copy.GetColours().IsEmpty());
    EXPECT_EQ(copy.GetTransparencies().GetSize(), 0);
    EXPECT_EQ(copy.GetIndexArray(), nullptr);
    polygon = copy;
    EXPECT_EQ(polygon.GetSize(), 3);
    EXPECT_EQ(polygon.GetIndexArray(), nullptr);
}

TEST(Polygon, HasTheNormalOfItsFirstCorner)
{
    CPolygon polygon;
    EXPECT_EQ(polygon.GetNormal().Z(), 0.0);
    // In the plane x = 2, turning to the left as seen from above in x; the first vertices repeat or lie on one line.
    for (CVertex const& v :
        { CVertex(2, 0, 0), CVertex(2, 0, 0), CVertex(2, 1, 0), CVertex(2, 3, 0), CVertex(2, 3, 4) })
        polygon.AddVertex(v, 0, 0, -1.0);
    CNormal const normal = polygon.GetNormal();
    EXPECT_DOUBLE_EQ(normal.X(), 1.0);
    EXPECT_DOUBLE_EQ(normal.Y(), 0.0);
    EXPECT_DOUBLE_EQ(normal.Z(), 0.0);
}

TEST(Polygon, FindsItsCentreAndArea)
{
    double x = -7.0;
    double y = -7.0;
    double area = -7.0;
    EXPECT_EQ(Flat({ { 0, 0 }, { 1, 1 } }).Centroid(&x, &y, &area), 1);
    EXPECT_EQ(area, -7.0);
    EXPECT_EQ(Flat({ { 0, 0 }, { 1, 1 }, { 3, 3 } }).Centroid(&x, &y, &area), 2);
    EXPECT_EQ(area, 0.0);
    EXPECT_EQ(x, -7.0);

    // An L of a square (0, 0)–(2, 2) and one (2, 0)–(4, 1): areas 4 and 2, centres (1, 1) and (3, 0.5).
    auto const left = Flat({ { 0, 0 }, { 4, 0 }, { 4, 1 }, { 2, 1 }, { 2, 2 }, { 0, 2 } });
    EXPECT_EQ(left.Centroid(&x, &y, &area), 0);
    EXPECT_DOUBLE_EQ(area, 6.0);
    EXPECT_DOUBLE_EQ(x, 10.0 / 6.0);
    EXPECT_DOUBLE_EQ(y, 5.0 / 6.0);
    auto const right = Flat({ { 0, 2 }, { 2, 2 }, { 2, 1 }, { 4, 1 }, { 4, 0 }, { 0, 0 } });
    EXPECT_EQ(right.Centroid(&x, &y, &area), 0);
    EXPECT_DOUBLE_EQ(area, -6.0);
    EXPECT_DOUBLE_EQ(x, 10.0 / 6.0);
}

TEST(Polygon, IsCoveredByTrianglesOnce)
{
    struct Case {
        char const* name;
        CPolygon polygon;
        double area;
    };
    Case cases[] = {
        { "triangle", Flat({ { 0, 0 }, { 1, 0 }, { 0, 1 } }), 0.5 },
        { "a notch in a square", Flat({ { 0, 0 }, { 4, 0 }, { 4, 4 }, { 2, 1 }, { 0, 4 } }), 10.0 },
        { "the same the other way round", Flat({ { 0, 4 }, { 2, 1 }, { 4, 4 }, { 4, 0 }, { 0, 0 } }), 10.0 },
    };
    for (auto& each : cases) {
        SCOPED_TRACE(each.name);
        CDWordArray indices { 99 };
        each.polygon.SetIndexArray(&indices);
        each.polygon.Tessellate();
        ASSERT_EQ(indices.GetSize(), (each.polygon.GetSize() - 2) * 3);
        double area = 0.0;
        for (int i = 0; i < indices.GetSize(); i += 3) {
            auto const corner = [&](int k) { return *each.polygon[static_cast<int>(indices[i + k])]; };
            double const turn = Turn(corner(0), corner(1), corner(2));
            EXPECT_NE(turn, 0.0);
            // None lies outside: in the notch's triangle no two of them could add up to the area otherwise.
            area += std::abs(turn) / 2.0;
        }
        EXPECT_DOUBLE_EQ(area, each.area);
    }
}

TEST(Polygon, HasNoTrianglesWhereThereAreNone)
{
    CDWordArray indices { 99 };
    CPolygon const polygons[] = {
        Flat({ { 0, 0 }, { 1, 0 } }),
        // Edges that cross, where only a new vertex could help.
        Flat({ { 0, 0 }, { 2, 2 }, { 2, 0 }, { 0, 2 } }),
        Flat({ { 0, 0 }, { 1, 0 }, { 0, std::nan("") } }),
    };
    for (CPolygon const& each : polygons) {
        CPolygon polygon(each);
        polygon.SetIndexArray(&indices);
        polygon.Tessellate();
        EXPECT_TRUE(indices.IsEmpty());
    }
    // Nowhere to put them.
    Flat({ { 0, 0 }, { 1, 0 }, { 0, 1 } }).Tessellate();
}

} // namespace
} // namespace ombrel
