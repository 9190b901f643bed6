#include "ombrel/graph3d/geometry/SurfaceGeometry.h"
#include "tests/graph3d/SurfaceData.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace ombrel {
namespace {

using Triangle = std::array<std::pair<int, int>, 3>;

// Nodes of the strip's triangles that have an area, each beginning with its smallest node and all turning the same way.
std::multiset<Triangle> TrianglesOf(StripLayout const& layout, std::vector<std::uint32_t> const& indices)
{
    std::vector<std::pair<int, int>> nodes(layout.GetNumVertices());
    for (int s = 0; s < layout.GetNumStrips(); ++s) {
        for (int j = 0; j <= layout.GetRows(); ++j) {
            for (int i = layout.GetFirstCol(s); i <= layout.GetLastCol(s); ++i)
                nodes[layout.GetIndex(s, i - layout.GetFirstCol(s), j)] = { i, j };
        }
    }
    std::multiset<Triangle> triangles;
    for (std::size_t k = 2; k < indices.size(); ++k) {
        Triangle t { nodes[indices[k - 2]], nodes[indices[k - 1]], nodes[indices[k]] };
        if (t[0] == t[1] || t[1] == t[2] || t[0] == t[2])
            continue;
        if (k % 2 == 1)
            std::swap(t[1], t[2]);
        std::rotate(t.begin(), std::min_element(t.begin(), t.end()), t.end());
        triangles.insert(t);
    }
    return triangles;
}

std::multiset<Triangle> Expected(CellRange const& cells, std::function<bool(int, int)> const& isDrawn)
{
    std::multiset<Triangle> triangles;
    for (int i = cells.firstCol; i < cells.lastCol; ++i) {
        for (int j = cells.firstRow; j < cells.lastRow; ++j) {
            if (!isDrawn(i, j))
                continue;
            triangles.insert({ { { i, j }, { i + 1, j + 1 }, { i, j + 1 } } });
            triangles.insert({ { { i, j }, { i + 1, j }, { i + 1, j + 1 } } });
        }
    }
    return triangles;
}

TEST(SurfaceGeometry, StripsDrawEachCellOnceWithItsFrontUp)
{
    for (auto const& [rows, cols] : std::vector<std::pair<int, int>> { { 1, 1 }, { 3, 24 }, { 4, 25 }, { 5, 60 } }) {
        StripLayout const layout(rows, cols);
        CellRange const inner { cols / 3, cols, 0, (rows + 1) / 2 };
        for (CellRange const& cells : { CellRange { 0, cols, 0, rows }, inner }) {
            auto const all = [](int, int) { return true; };
            auto const some = [](int i, int j) { return (i * 7 + j * 3) % 5 != 0; };
            std::vector<std::uint32_t> indices;
            AppendStrip(layout, cells, {}, indices);
            EXPECT_EQ(TrianglesOf(layout, indices), Expected(cells, all)) << rows << " x " << cols;
            indices.clear();
            AppendStrip(layout, cells, some, indices);
            EXPECT_EQ(TrianglesOf(layout, indices), Expected(cells, some)) << rows << " x " << cols;
        }
    }
}

TEST(SurfaceGeometry, RowsOfNormalsAreThoseOfSingleNodes)
{
    CSurface surface;
    test::Fill(surface, 12, 53, [](int c, int r) {
        return (c == 20 && r == 5) || (c == 0 && r == 11) ? kGap : std::sin(c * 0.3) + std::cos(r * 0.5);
    });
    ASSERT_EQ(surface.Evaluate(), 1);
    CSurfaceMesh& mesh = *surface.GetSurfaceMesh();
    mesh.SetBoxAxes({ BoxAxis { 0, 52, 1 }, { 0, 11, 0.5 }, { -2, 2, 0.8 } });
    StripLayout const layout(11, 52);
    std::vector<SurfaceVertex> vertices;
    MakeNodeVertices(mesh, { mesh.GetZVals(), -2, 2 }, layout, vertices);
    ASSERT_EQ(vertices.size(), layout.GetNumVertices());
    for (int j = 0; j <= 11; ++j) {
        for (int i = 0; i <= 52; ++i) {
            if (mesh.IsMissing(i, j))
                continue;
            SurfaceVertex const& vertex = vertices[layout.GetIndex(i, j)];
            CVertex const place = mesh.GetNormalisedVertex(i, j);
            CNormal const normal = mesh.GetNormal(i, j);
            for (int k = 0; k < 3; ++k) {
                EXPECT_FLOAT_EQ(vertex.place[k], static_cast<float>(place[k]));
                EXPECT_NEAR(vertex.normal[k], normal[k], 1e-6);
            }
            EXPECT_NEAR(vertex.colour, (surface.GetFVal(i, j) + 2) / 4, 1e-6);
        }
    }
}

TEST(SurfaceGeometry, FlatTrianglesHaveTheirOwnNormals)
{
    CSurface surface;
    test::Fill(surface, 3, 3, [](int c, int r) { return c * r; });
    ASSERT_EQ(surface.Evaluate(), 1);
    CSurfaceMesh const& mesh = *surface.GetSurfaceMesh();
    std::vector<SurfaceVertex> vertices;
    AppendFlatTriangles(
        mesh, {}, { 1, 2, 0, 2 }, [](int, int) { return true; }, vertices);
    ASSERT_EQ(vertices.size(), 12U);
    CNormal const normal = mesh.GetFaceNormal(1, 1, 1);
    EXPECT_FLOAT_EQ(vertices[9].normal[0], static_cast<float>(normal.X()));
    EXPECT_FLOAT_EQ(vertices[9].place[0], static_cast<float>(mesh.GetNormalisedVertex(2, 1).X()));
    EXPECT_FLOAT_EQ(vertices[9].place[2], static_cast<float>(mesh.GetNormalisedVertex(2, 1).Z()));
}

} // namespace
} // namespace ombrel
