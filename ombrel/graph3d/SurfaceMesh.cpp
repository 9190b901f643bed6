#include "ombrel/graph3d/SurfaceMesh.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/geometry/ValueLanes.h"

#include <cmath>
#include <limits>

namespace ombrel {

constinit CRuntimeClass const CSurfaceMesh::kClass = DynamicClass<CMesh>("CSurfaceMesh");

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

} // namespace

double CSurfaceMesh::GetRadius(double x, double y, double z) const
{
    return m_surface && m_surface->IsCylindrical() ? std::sqrt(x * x + y * y) : std::sqrt(x * x + y * y + z * z);
}

bool CSurfaceMesh::UsesBoundary() const { return m_surface && m_surface->GetUseBoundary() != 0 && HasBoundary(); }

void CSurfaceMesh::SetXYZVal(int i, int j, double x, double y, double z)
{
    MakePlaces();
    std::size_t const n = GetIndex(i, j);
    m_x[n] = x;
    m_y[n] = y;
    m_z[n] = z;
    std::array<double, 4> const values { x, y, z, GetRadius(x, y, z) };
    for (std::size_t k = 0; k < values.size(); ++k) {
        if (n == 0)
            m_ranges[k] = { values[k], values[k] };
        else
            m_ranges[k].Widen(values[k]);
    }
}

void CSurfaceMesh::ComputeRanges()
{
    std::array<Range, 4> ranges;
    ranges.fill({ kInfinity, -kInfinity });
    bool const usesBoundary = UsesBoundary();
    bool const hasRadius = m_surface && m_surface->HasRadius();
    m_hasRange = false;
    m_hasMissing = false;
    for (int j = 0; HasNodes() && j <= GetNumRows(); ++j) {
        double const* const zs = GetZRow(j);
        if (IsOverParameters() && !usesBoundary && !hasRadius) {
            ValueLanes lanes;
            lanes.Take(zs, zs + GetNumCols() + 1);
            if (lanes.ArePlain()) {
                m_hasRange = true;
                for (int const i : { 0, GetNumCols() })
                    ranges[0].Widen(GetMeshX(i));
                ranges[1].Widen(GetMeshY(j));
                ranges[2].Widen(lanes.Min());
                ranges[2].Widen(lanes.Max());
                continue;
            }
        }
        for (int i = 0; i <= GetNumCols(); ++i) {
            bool const isMissing = IsGridGap(zs[i]);
            m_hasMissing = m_hasMissing || isMissing;
            if (isMissing || (usesBoundary && m_boundary[GetIndex(i, j)] == 0))
                continue;
            m_hasRange = true;
            double const x = GetX(i, j);
            double const y = GetY(i, j);
            ranges[0].Widen(x);
            ranges[1].Widen(y);
            ranges[2].Widen(zs[i]);
            if (hasRadius)
                ranges[3].Widen(GetRadius(x, y, zs[i]));
        }
    }
    if (!m_hasRange)
        ranges.fill({});
    else if (!hasRadius)
        ranges[3] = {};
    m_ranges = ranges;
}

bool CSurfaceMesh::UpdateGraphParameters()
{
    auto axes = m_axes;
    if (m_surface)
        m_surface->GetBoxAxes(axes);
    bool const changed = !(axes == m_axes);
    m_axes = axes;
    return changed;
}

double CSurfaceMesh::GetViewVal(double v, AxisType type) const
{
    return type >= atXAxis && type <= atZAxis ? m_axes[static_cast<std::size_t>(type - atXAxis)].GetViewVal(v) : 0.0;
}

CVertex CSurfaceMesh::GetNormalisedVertex(int i, int j) const
{
    return GetBoxPlace(m_axes, { GetX(i, j), GetY(i, j), GetZ(i, j) });
}

int CSurfaceMesh::GetBoundaryFlag(int i, int j) const
{
    std::size_t const n = GetIndex(i, j);
    return HasBoundary() ? m_boundary[n] : 1;
}

void CSurfaceMesh::SetBoundaryFlag(int i, int j, int inside)
{
    std::size_t const n = GetIndex(i, j);
    if (!HasBoundary())
        m_boundary.assign(m_z.size(), 1);
    m_boundary[n] = inside ? 1 : 0;
}

void CSurfaceMesh::SetValues(std::vector<double>&& values)
{
    m_values = std::move(values);
    Range range { kInfinity, -kInfinity };
    for (double const v : m_values) {
        if (!IsGridGap(v))
            range.Widen(v);
    }
    if (range.min > range.max)
        range = {};
    m_valMin = range.min;
    m_valMax = range.max;
}

bool CSurfaceMesh::IsCellMissing(int i, int j) const
{
    if (i < 0 || j < 0 || i >= GetNumCols() || j >= GetNumRows())
        return true;
    return IsMissing(i, j) || IsMissing(i + 1, j) || IsMissing(i + 1, j + 1) || IsMissing(i, j + 1);
}

CNormal CSurfaceMesh::GetFaceNormal(int i, int j, int triangle) const
{
    CNormal normal;
    if (IsCellMissing(i, j))
        return normal;
    CVertex const far = GetNormalisedVertex(i + 1, j + 1);
    CVertex const near = GetNormalisedVertex(i, j);
    if (triangle == 0)
        CVUtils::NormalVector(far, GetNormalisedVertex(i, j + 1), near, normal);
    else
        CVUtils::NormalVector(GetNormalisedVertex(i + 1, j), far, near, normal);
    return normal;
}

CNormal CSurfaceMesh::GetNormal(int i, int j) const
{
    // Of the cells that have the node as a corner, and of these the triangles that have.
    struct Face {
        int di;
        int dj;
        int triangle;
    };
    constexpr Face kFaces[] = { { -1, -1, 0 }, { -1, -1, 1 }, { 0, -1, 0 }, { -1, 0, 1 }, { 0, 0, 0 }, { 0, 0, 1 } };
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    for (Face const& face : kFaces) {
        CNormal const normal = GetFaceNormal(i + face.di, j + face.dj, face.triangle);
        x += normal.X();
        y += normal.Y();
        z += normal.Z();
    }
    double const length = std::sqrt(x * x + y * y + z * z);
    return length > 0.0 ? CNormal(x / length, y / length, z / length) : CNormal();
}

COLORREF CSurfaceMesh::GetWireframeColour(int i, int j) const
{
    std::size_t const n = GetIndex(i, j);
    return m_wireframeColours.empty() ? 0 : m_wireframeColours[n];
}

void CSurfaceMesh::UpdateWireframeColours()
{
    m_wireframeColours.clear();
    if (!m_surface || !m_surface->HasWireframeColours())
        return;
    m_wireframeColours.resize(m_z.size());
    for (int j = 0; j <= GetNumRows(); ++j) {
        for (int i = 0; i <= GetNumCols(); ++i)
            m_wireframeColours[GetIndex(i, j)] = m_surface->GetWireframeLUTColour(i, j);
    }
}

} // namespace ombrel
