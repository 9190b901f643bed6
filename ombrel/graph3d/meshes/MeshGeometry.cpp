#include "ombrel/graph3d/meshes/MeshGeometry.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph3d/MeshNodeSet.h"
#include "ombrel/graph3d/MeshPatch.h"
#include "ombrel/graph3d/Polygon.h"
#include "ombrel/graph3d/render/ColourTexture.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ombrel {
namespace {

/// A batch as large as this goes to the driver, so that never all of a mesh is held twice: two bytes are enough for an
/// index, and the last face has its corners yet.
constexpr std::size_t kMostVertices = (std::size_t { 1 } << 16) - 64;

using Place = std::array<double, 3>;

Place Difference(Place const& a, Place const& b) { return { a[0] - b[0], a[1] - b[1], a[2] - b[2] }; }
double Dot(Place const& a, Place const& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
bool IsZero(Place const& v) { return v[0] == 0.0 && v[1] == 0.0 && v[2] == 0.0; }

std::array<float, 3> Floats(Place const& p)
{
    return { static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2]) };
}

double const* RowOf(CTableData const& table, int row, std::size_t least)
{
    bool const isThere = row >= 0 && row < table.GetNumRows() && static_cast<std::size_t>(table.GetNumCols()) >= least;
    return isThere ? table.GetRow(row) : nullptr;
}

} // namespace

MeshGeometry::MeshGeometry(CMeshPatch const& patch, NodePlaces const& world, BoxAxes const& axes, MeshLook const& look,
    MeshColouring::ColourOf const& colourOf, Take const& take)
    : m_patch(patch)
    , m_elements(patch.Elements())
    , m_world(world)
    , m_look(look)
    , m_colourOf(colourOf)
    , m_take(take)
    , m_colour(FaceVertex::Bytes(look.colour, look.transparency))
{
    for (std::size_t k = 0; k < 3; ++k) {
        double const extent = axes[k].max - axes[k].min;
        m_toBox[0][k] = axes[k].min;
        m_toBox[1][k] = extent != 0.0 ? -0.5 * axes[k].scale : 0.0;
        m_boxScale[k] = extent != 0.0 ? axes[k].scale / extent : 0.0;
    }
    CMeshNodeSet const* const nodes = patch.GetNodeSet();
    if (look.source == MeshColourSource::Nodes && nodes) {
        m_nodeValues = look.variable < 0 ? RowOf(*nodes->GetPoints(), 2, world.GetSize())
                                         : RowOf(*nodes->GetNodeData(), look.variable, world.GetSize());
    }
    if (look.source == MeshColourSource::ElementVariable)
        m_elementValues = RowOf(*patch.GetElementData(), look.variable, m_elements.count);
}

void MeshGeometry::Make()
{
    if (m_look.hasOutlines && !m_look.isSolid) {
        MakeLines();
        TakeBatch();
        return;
    }
    ElementShape const* const shape = m_elements.shape;
    if (shape && !shape->IsSolid() && m_patch.GetAverageNormals())
        AverageNormals();
    std::span<BYTE const> const flags { m_patch.GetFaceFlags()->GetData(),
        static_cast<std::size_t>(m_patch.GetFaceFlags()->GetSize()) };
    std::array<std::uint32_t, 4> face {};
    for (std::size_t e = 0; e < m_elements.count; ++e) {
        std::span<std::uint32_t const> const nodes = m_elements.NodesOf(e);
        if (nodes.empty())
            continue;
        if (!shape) {
            SetColour(e);
            MakePolygon(nodes);
            continue;
        }
        if (!shape->IsSolid()) {
            SetColour(e);
            MakeFace(nodes);
            continue;
        }
        bool hasColour = false;
        for (std::size_t f = 0; f < shape->numFaces; ++f) {
            std::size_t const flag = e * shape->numFaces + f;
            if (flag >= flags.size() || flags[flag] == 0)
                continue;
            if (!std::exchange(hasColour, true))
                SetColour(e);
            for (std::size_t c = 0; c < shape->cornersOfFace; ++c)
                face[c] = nodes[shape->faces[f][c]];
            MakeFace(std::span(face).first(shape->cornersOfFace));
        }
    }
    TakeBatch();
}

// --- Outlines alone

void MeshGeometry::MakeLines()
{
    m_colour = FaceVertex::Bytes(m_look.outlineColour, 0.0);
    m_vertexOf.assign(m_world.GetSize(), kNoVertex);
    ForEachEdge(m_elements, m_patch.FindClipped(), [this](std::uint32_t a, std::uint32_t b) {
        m_batch.AddLine(AddSharedVertex(a), AddSharedVertex(b));
        if (m_batch.GetVertices().size() >= kMostVertices)
            TakeBatch();
    });
}

// --- Faces

void MeshGeometry::MakeFace(std::span<std::uint32_t const> columns)
{
    if (!m_normals.empty()) {
        m_outline.clear();
        bool const isShared = m_look.source == MeshColourSource::Plain || m_look.source == MeshColourSource::Nodes;
        for (std::uint32_t const column : columns) {
            if (!isShared)
                m_vertexOf[column] = kNoVertex;
            m_outline.push_back(AddSharedVertex(column));
        }
        m_batch.AddTriangle(m_outline[0], m_outline[1], m_outline[2]);
        if (m_outline.size() == 4)
            m_batch.AddTriangle(m_outline[0], m_outline[2], m_outline[3]);
        EndFace(m_outline);
        return;
    }
    SetCorners(columns);
    m_outline.clear();
    Place const first = Normal(m_corners[0].place, m_corners[1].place, m_corners[2].place);
    if (m_corners.size() == 3) {
        for (Corner const& corner : m_corners)
            m_outline.push_back(AddCorner(corner, first));
        m_batch.AddTriangle(m_outline[0], m_outline[1], m_outline[2]);
        EndFace(m_outline);
        return;
    }
    Place const second = Normal(m_corners[0].place, m_corners[2].place, m_corners[3].place);
    constexpr double kFlat = 1.0 - 1e-10;
    bool const isFlat = IsZero(first) || IsZero(second) || Dot(first, second) > kFlat;
    Place const& shared = IsZero(first) ? second : first;
    for (Corner const& corner : m_corners)
        m_outline.push_back(AddCorner(corner, &corner == &m_corners[3] && !isFlat ? second : shared));
    m_batch.AddTriangle(m_outline[0], m_outline[1], m_outline[2]);
    if (isFlat) {
        m_batch.AddTriangle(m_outline[0], m_outline[2], m_outline[3]);
    } else {
        std::uint32_t const vertex = AddCorner(m_corners[0], second);
        m_batch.AddTriangle(vertex, AddCorner(m_corners[2], second), m_outline[3]);
    }
    EndFace(m_outline);
}

void MeshGeometry::MakePolygon(std::span<std::uint32_t const> columns)
{
    SetCorners(columns);
    // The same node twice in a row closes a polygon explicitly, or is nothing.
    auto const isSame = [](Corner const& a, Corner const& b) { return a.place == b.place; };
    m_corners.erase(std::unique(m_corners.begin(), m_corners.end(), isSame), m_corners.end());
    while (m_corners.size() > 1 && isSame(m_corners.front(), m_corners.back()))
        m_corners.pop_back();
    // The normal of all corners together: that of flat polygons, whichever of their corners point inwards.
    Place sum {};
    for (std::size_t i = 2; i < m_corners.size(); ++i) {
        Place const a = Difference(m_corners[i - 1].place, m_corners[0].place);
        Place const b = Difference(m_corners[i].place, m_corners[0].place);
        for (std::size_t k = 0; k < 3; ++k)
            sum[k] += a[(k + 1) % 3] * b[(k + 2) % 3] - a[(k + 2) % 3] * b[(k + 1) % 3];
    }
    double const length = std::sqrt(Dot(sum, sum));
    Place const normal = length > 0.0 ? Place { sum[0] / length, sum[1] / length, sum[2] / length } : Place {};
    m_outline.clear();
    for (Corner const& corner : m_corners)
        m_outline.push_back(AddCorner(corner, normal));
    if (m_corners.size() >= 3)
        MakeFan(normal);
    EndFace(m_outline);
}

/// Triangles from the first corner that all turn the polygon's way, where the polygon is convex; else those of the
/// tessellator.
void MeshGeometry::MakeFan(Place const& normal)
{
    std::size_t const n = m_corners.size();
    auto const turn = [&](std::size_t i, std::size_t j, std::size_t k) {
        return Dot(Normal(m_corners[i].place, m_corners[j].place, m_corners[k].place), normal);
    };
    bool isConvex = true;
    for (std::size_t i = 0; i < n && isConvex && n > 3; ++i) {
        constexpr double kStraight = -1e-9;
        isConvex = turn(i, (i + 1) % n, (i + 2) % n) >= kStraight && (i < 2 || turn(0, i - 1, i) >= kStraight);
    }
    if (!isConvex) {
        Tessellate(normal);
        return;
    }
    for (std::size_t i = 2; i < n; ++i)
        m_batch.AddTriangle(m_outline[0], m_outline[i - 1], m_outline[i]);
}

void MeshGeometry::Tessellate(Place const& normal)
{
    // The time of the tessellator's corners grows with their square; nobody draws such a polygon but by mistake, and
    // its outline is there all the same.
    constexpr std::size_t kMostCorners = 5000;
    if (m_corners.size() > kMostCorners || IsZero(normal))
        return;
    CPolygon polygon;
    CDWordArray indices;
    polygon.SetIndexArray(&indices);
    std::vector<std::uint32_t> vertices;
    for (std::size_t i = 0; i < m_corners.size(); ++i) {
        Place const& p = m_corners[i].place;
        polygon.AddVertex({ p[0], p[1], p[2] }, 0, 0, -1.0);
        if (polygon.GetSize() > static_cast<int>(vertices.size()))
            vertices.push_back(m_outline[i]);
    }
    polygon.Tessellate();
    for (int i = 0; i + 2 < indices.GetSize(); i += 3) {
        auto const vertex = [&](int k) { return vertices[indices[i + k]]; };
        m_batch.AddTriangle(vertex(0), vertex(1), vertex(2));
    }
}

// --- Vertices

void MeshGeometry::AverageNormals()
{
    std::vector<Place> sums(m_world.GetSize());
    for (std::size_t e = 0; e < m_elements.count; ++e) {
        std::span<std::uint32_t const> const nodes = m_elements.NodesOf(e);
        for (std::size_t i = 2; i < nodes.size(); ++i) {
            Place const normal = Normal(PlaceOf(nodes[0]), PlaceOf(nodes[i - 1]), PlaceOf(nodes[i]));
            // A node counts both triangles of its quad, also the one that it is no corner of.
            for (std::uint32_t const node : nodes) {
                for (std::size_t k = 0; k < 3; ++k)
                    sums[node][k] += normal[k];
            }
        }
    }
    m_normals.reserve(sums.size());
    for (Place const& sum : sums) {
        double const length = std::sqrt(Dot(sum, sum));
        m_normals.push_back(
            length > 0.0 ? Floats({ sum[0] / length, sum[1] / length, sum[2] / length }) : std::array<float, 3> {});
    }
    m_vertexOf.assign(m_world.GetSize(), kNoVertex);
}

std::uint32_t MeshGeometry::AddSharedVertex(std::uint32_t column)
{
    std::uint32_t& vertex = m_vertexOf[column];
    if (vertex == kNoVertex) {
        FaceVertex v;
        v.place = Floats(PlaceOf(column));
        if (!m_normals.empty())
            v.normal = m_normals[column];
        v.value = TexturePlace(column);
        v.colour = m_colour;
        vertex = m_batch.AddVertex(v);
    }
    return vertex;
}

std::uint32_t MeshGeometry::AddCorner(Corner const& corner, Place const& normal)
{
    return m_batch.AddVertex({ Floats(corner.place), Floats(normal), TexturePlace(corner.column), m_colour });
}

void MeshGeometry::SetCorners(std::span<std::uint32_t const> columns)
{
    m_corners.clear();
    for (std::uint32_t const column : columns)
        m_corners.push_back({ column, PlaceOf(column) });
}

void MeshGeometry::SetColour(std::size_t element)
{
    COLORREF colour = m_look.colour;
    switch (m_look.source) {
    case MeshColourSource::Plain:
        return;
    case MeshColourSource::Nodes:
        // The texture colours white; without values there is no texture to be seen.
        colour = m_nodeValues ? RGB(255, 255, 255) : colour;
        break;
    case MeshColourSource::ElementColours:
        if (element < static_cast<std::size_t>(m_patch.GetColours()->GetSize()))
            colour = m_patch.GetColours()->GetData()[element];
        break;
    case MeshColourSource::ElementVariable:
        if (m_elementValues && !IsGap(m_elementValues[element]))
            colour = m_colourOf(m_elementValues[element]);
        break;
    }
    m_colour = FaceVertex::Bytes(colour, m_look.transparency);
}

void MeshGeometry::EndFace(std::span<std::uint32_t const> outline)
{
    if (m_look.hasOutlines) {
        for (std::size_t i = 0; i < outline.size(); ++i)
            m_batch.AddLine(outline[i], outline[(i + 1) % outline.size()]);
        m_batch.EndElement();
    }
    if (m_batch.GetVertices().size() >= kMostVertices && m_look.transparency == 0.0)
        TakeBatch();
}

void MeshGeometry::TakeBatch()
{
    if (!m_batch.IsEmpty())
        m_take(std::move(m_batch));
    m_batch = {};
    std::fill(m_vertexOf.begin(), m_vertexOf.end(), kNoVertex);
}

float MeshGeometry::TexturePlace(std::uint32_t column) const
{
    if (!m_nodeValues || IsGap(m_nodeValues[column]))
        return 0.0F;
    return static_cast<float>(GetTexelPlace(m_nodeValues[column], m_look.lo, m_look.hi));
}

MeshGeometry::Place MeshGeometry::PlaceOf(std::uint32_t column) const
{
    Place const world { m_world.x[column], m_world.y[column], m_world.z[column] };
    Place box {};
    for (std::size_t k = 0; k < 3; ++k)
        box[k] = (world[k] - m_toBox[0][k]) * m_boxScale[k] + m_toBox[1][k];
    return box;
}

MeshGeometry::Place MeshGeometry::Normal(Place const& p1, Place const& p2, Place const& p3)
{
    Place const a = Difference(p3, p2);
    Place const b = Difference(p1, p2);
    Place const n { a[1] * b[2] - b[1] * a[2], a[2] * b[0] - b[2] * a[0], a[0] * b[1] - b[0] * a[1] };
    double const length = std::sqrt(Dot(n, n));
    return length > 0.0 ? Place { n[0] / length, n[1] / length, n[2] / length } : Place {};
}

} // namespace ombrel
