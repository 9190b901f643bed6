#include "ombrel/graph3d/geometry/SurfaceGeometry.h"

#include <array>
#include <cmath>

namespace ombrel {
namespace {

std::size_t Size(int n) { return static_cast<std::size_t>(n); }

// Box units that lie beyond anything that is seen, and that graphics drivers can still compute with.
constexpr double kFarthest = 1e12;

// Vectors along a row, a component at a time: loops over them become vector instructions.
struct VectorRow {
    std::array<std::vector<double>, 3> c;
    void Resize(std::size_t n)
    {
        for (auto& component : c)
            component.assign(n, 0.0);
    }
};

// One row of nodes in box units.
struct NodeRow {
    VectorRow places;
    std::vector<std::uint8_t> missing;
    bool hasMissing = false;
};

// Normals of one row of cells. Entry i + 1 is cell i; the cells beyond the ends have none.
struct FaceRow {
    VectorRow upper;
    VectorRow lower;
    void Resize(std::size_t cells)
    {
        upper.Resize(cells + 2);
        lower.Resize(cells + 2);
    }
    void Clear()
    {
        for (auto* row : { &upper, &lower }) {
            for (auto& component : row->c)
                std::ranges::fill(component, 0.0);
        }
    }
};

void TakeNodes(CSurfaceMesh const& mesh, int j, NodeRow& row)
{
    std::size_t const first = mesh.GetIndex(0, j);
    std::size_t const count = Size(mesh.GetNumCols()) + 1;
    for (std::size_t k = 0; k < 3; ++k) {
        BoxAxis const& axis = mesh.GetBoxAxes()[k];
        double* const values = row.places.c[k].data();
        mesh.ReadRow(static_cast<int>(k), j, values);
        double const min = axis.min;
        double const width = axis.max - axis.min;
        double const scale = axis.scale;
        if (width != 0.0) {
            for (std::size_t i = 0; i < count; ++i)
                values[i] = std::min(std::max(((values[i] - min) / width - 0.5) * scale, -kFarthest), kFarthest);
        } else {
            std::fill_n(values, count, 0.0);
        }
    }
    row.hasMissing = false;
    for (std::size_t i = 0; i < count; ++i) {
        row.missing[i] = IsGridGap(mesh.GetZVals()[first + i]) ? 1 : 0;
        if (row.missing[i] == 0)
            continue;
        row.hasMissing = true;
        for (auto& component : row.places.c)
            component[i] = 0.0;
    }
}

// The unit vectors along (c − b) × (a − b) of n triples of points; 0 where that is 0.
struct Corner {
    double const* x;
    double const* y;
    double const* z;
    Corner(NodeRow const& row, std::size_t column)
        : x(row.places.c[0].data() + column)
        , y(row.places.c[1].data() + column)
        , z(row.places.c[2].data() + column)
    {
    }
};

void MakeNormals(Corner const& a, Corner const& b, Corner const& c, std::size_t n, VectorRow& normals)
{
    double* __restrict const nx = normals.c[0].data() + 1;
    double* __restrict const ny = normals.c[1].data() + 1;
    double* __restrict const nz = normals.c[2].data() + 1;
    for (std::size_t i = 0; i < n; ++i) {
        double const ux = c.x[i] - b.x[i];
        double const uy = c.y[i] - b.y[i];
        double const uz = c.z[i] - b.z[i];
        double const vx = a.x[i] - b.x[i];
        double const vy = a.y[i] - b.y[i];
        double const vz = a.z[i] - b.z[i];
        double const x = uy * vz - uz * vy;
        double const y = uz * vx - ux * vz;
        double const z = ux * vy - uy * vx;
        double const length = std::sqrt(x * x + y * y + z * z);
        double const factor = 1.0 / (length > 0.0 ? length : 1.0);
        nx[i] = x * factor;
        ny[i] = y * factor;
        nz[i] = z * factor;
    }
}

void MakeFaces(NodeRow const& low, NodeRow const& high, std::size_t cells, FaceRow& faces)
{
    MakeNormals(Corner(high, 1), Corner(high, 0), Corner(low, 0), cells, faces.upper);
    MakeNormals(Corner(low, 1), Corner(high, 1), Corner(low, 0), cells, faces.lower);
    if (!low.hasMissing && !high.hasMissing)
        return;
    for (std::size_t i = 0; i < cells; ++i) {
        if ((low.missing[i] | low.missing[i + 1] | high.missing[i] | high.missing[i + 1]) == 0)
            continue;
        for (std::size_t k = 0; k < 3; ++k)
            faces.upper.c[k][i + 1] = faces.lower.c[k][i + 1] = 0.0;
    }
}

// The unit normals of a row of nodes from the faces below and above it.
void AverageNormals(FaceRow const& below, FaceRow const& above, std::size_t nodes, VectorRow& normals)
{
    auto const sum = [&](std::size_t k, std::size_t i) {
        return below.upper.c[k][i] + below.lower.c[k][i] + below.upper.c[k][i + 1] + above.lower.c[k][i]
            + above.upper.c[k][i + 1] + above.lower.c[k][i + 1];
    };
    double* __restrict const nx = normals.c[0].data();
    double* __restrict const ny = normals.c[1].data();
    double* __restrict const nz = normals.c[2].data();
    for (std::size_t i = 0; i < nodes; ++i) {
        double const x = sum(0, i);
        double const y = sum(1, i);
        double const z = sum(2, i);
        double const length = std::sqrt(x * x + y * y + z * z);
        double const factor = 1.0 / (length > 0.0 ? length : 1.0);
        nx[i] = x * factor;
        ny[i] = y * factor;
        nz[i] = z * factor;
    }
}

// Places on the colours' texture: 0 where all values are equal in single precision.
class ColourScale1D {
public:
    explicit ColourScale1D(SurfaceValues const& values)
        : m_values(values)
        , m_isFlat(values.values.empty() || static_cast<float>(values.min) == static_cast<float>(values.max))
    {
    }
    float At(std::size_t node) const
    {
        // A second variable may be missing where the node is not.
        if (m_isFlat || IsGridGap(m_values.values[node]))
            return 0.0F;
        return static_cast<float>((m_values.values[node] - m_values.min) / (m_values.max - m_values.min));
    }

private:
    SurfaceValues m_values;
    bool m_isFlat;
};

} // namespace

std::size_t StripLayout::GetNumVertices() const { return (Size(m_rows) + 1) * (Size(m_cols) + Size(GetNumStrips())); }

void MakeNodeVertices(CSurfaceMesh const& mesh, SurfaceValues const& values, StripLayout const& layout,
    std::vector<SurfaceVertex>& vertices)
{
    int const rows = mesh.GetNumRows();
    std::size_t const cells = Size(mesh.GetNumCols());
    vertices.resize(layout.GetNumVertices());
    std::array<NodeRow, 2> nodes;
    std::array<FaceRow, 2> faces;
    for (std::size_t k = 0; k < 2; ++k) {
        nodes[k].places.Resize(cells + 1);
        nodes[k].missing.resize(cells + 1);
        faces[k].Resize(cells);
    }
    VectorRow normals;
    normals.Resize(cells + 1);
    ColourScale1D const scale(values);
    TakeNodes(mesh, 0, nodes[0]);
    for (int j = 0; j <= rows; ++j) {
        NodeRow const& row = nodes[Size(j) % 2];
        NodeRow& next = nodes[Size(j + 1) % 2];
        FaceRow const& below = faces[Size(j) % 2];
        FaceRow& above = faces[Size(j + 1) % 2];
        if (j < rows) {
            TakeNodes(mesh, j + 1, next);
            MakeFaces(row, next, cells, above);
        } else {
            above.Clear();
        }
        AverageNormals(below, above, cells + 1, normals);
        std::size_t const firstNode = mesh.GetIndex(0, j);
        for (int s = 0; s < layout.GetNumStrips(); ++s) {
            SurfaceVertex* vertex = vertices.data() + layout.GetIndex(s, 0, j);
            for (std::size_t i = Size(layout.GetFirstCol(s)); i <= Size(layout.GetLastCol(s)); ++i, ++vertex) {
                for (std::size_t k = 0; k < 3; ++k) {
                    vertex->place[k] = static_cast<float>(row.places.c[k][i]);
                    vertex->normal[k] = static_cast<float>(normals.c[k][i]);
                }
                vertex->colour = scale.At(firstNode + i);
            }
        }
    }
}

void AppendStrip(
    StripLayout const& layout, CellRange const& cells, CellFilter const& isDrawn, std::vector<std::uint32_t>& indices)
{
    bool isFirst = true;
    for (int s = 0; s < layout.GetNumStrips(); ++s) {
        int const firstCol = std::max(cells.firstCol, layout.GetFirstCol(s));
        int const lastCol = std::min(cells.lastCol, layout.GetLastCol(s));
        for (int j = cells.firstRow; firstCol < lastCol && j < cells.lastRow; ++j) {
            bool isOpen = false;
            for (int i = firstCol; i < lastCol; ++i) {
                if (isDrawn && !isDrawn(i, j)) {
                    isOpen = false;
                    continue;
                }
                std::uint32_t const low = layout.GetIndex(s, i - layout.GetFirstCol(s), j);
                std::uint32_t const high = layout.GetIndex(s, i - layout.GetFirstCol(s), j + 1);
                if (!isOpen) {
                    // Runs have an even number of vertices, so that every triangle keeps its front.
                    if (!isFirst)
                        indices.insert(indices.end(), { indices.back(), high });
                    indices.insert(indices.end(), { high, low });
                }
                indices.insert(indices.end(), { high + 1, low + 1 });
                isOpen = true;
                isFirst = false;
            }
        }
    }
}

void AppendFlatTriangles(CSurfaceMesh const& mesh, SurfaceValues const& values, CellRange const& cells,
    CellFilter const& isDrawn, std::vector<SurfaceVertex>& vertices)
{
    // Corners 0 = (i, j), 1 = (i + 1, j), 2 = (i + 1, j + 1), 3 = (i, j + 1) in the order of the two triangles.
    constexpr std::array<std::array<std::size_t, 3>, 2> kTriangles { { { 2, 3, 0 }, { 1, 2, 0 } } };
    ColourScale1D const scale(values);
    for (int j = cells.firstRow; j < cells.lastRow; ++j) {
        for (int i = cells.firstCol; i < cells.lastCol; ++i) {
            if (isDrawn && !isDrawn(i, j))
                continue;
            std::array<CVertex, 4> const places { mesh.GetNormalisedVertex(i, j), mesh.GetNormalisedVertex(i + 1, j),
                mesh.GetNormalisedVertex(i + 1, j + 1), mesh.GetNormalisedVertex(i, j + 1) };
            std::array<float, 4> const colours { scale.At(mesh.GetIndex(i, j)), scale.At(mesh.GetIndex(i + 1, j)),
                scale.At(mesh.GetIndex(i + 1, j + 1)), scale.At(mesh.GetIndex(i, j + 1)) };
            for (auto const& corners : kTriangles) {
                CNormal normal;
                CVUtils::NormalVector(places[corners[0]], places[corners[1]], places[corners[2]], normal);
                for (std::size_t const corner : corners) {
                    SurfaceVertex vertex { {}, {}, colours[corner] };
                    for (std::size_t k = 0; k < 3; ++k) {
                        vertex.place[k]
                            = static_cast<float>(std::clamp(places[corner].GetData()[k], -kFarthest, kFarthest));
                        vertex.normal[k] = static_cast<float>(normal.GetData()[k]);
                    }
                    vertices.push_back(vertex);
                }
            }
        }
    }
}

} // namespace ombrel
