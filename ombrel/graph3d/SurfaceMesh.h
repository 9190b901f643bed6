#pragma once
#include "ombrel/foundation/Vertex.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/BoxAxis.h"
#include "ombrel/graph3d/Mesh.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Types.h"

#include <array>
#include <cstdint>
#include <vector>

namespace ombrel {

class CSurface;

/// The nodes of a surface, with their ranges, and what is known of each node: whether it lies inside of the boundary, a
/// value of a second variable, its normal and its wireframe colour.
class OMBREL_EXPORT CSurfaceMesh : public CMesh {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// The surface is not owned.
    explicit CSurfaceMesh(CSurface* surface = nullptr)
        : m_surface(surface)
    {
    }
    using CMesh::Init;

    /// Puts a node in its place and widens the ranges; node (0, 0) begins them. The radius that is ranged, too, is the
    /// distance from the z axis for cylindrical surfaces, and from the origin for the others.
    void SetXYZVal(int i, int j, double x, double y, double z);
    /// The ranges of the nodes that are not missing; where the surface uses a boundary, of those inside of it. All 0
    /// without any.
    void ComputeRanges();
    /// Whether some node is not missing, as ComputeRanges found.
    bool HasRange() const { return m_hasRange; }
    /// Whether some node is.
    bool HasMissing() const { return m_hasMissing; }
    double GetxMin() const { return m_ranges[0].min; }
    double GetxMax() const { return m_ranges[0].max; }
    double GetyMin() const { return m_ranges[1].min; }
    double GetyMax() const { return m_ranges[1].max; }
    double GetZMin() const { return m_ranges[2].min; }
    double GetZMax() const { return m_ranges[2].max; }
    double GetRMin() const { return m_ranges[3].min; }
    double GetRMax() const { return m_ranges[3].max; }
    /// The radius of a place, by the surface's coordinate system.
    double GetRadius(double x, double y, double z) const;

    /// Takes over ranges and lengths of the graph's axes; whether any of them has changed.
    bool UpdateGraphParameters();
    BoxAxes const& GetBoxAxes() const { return m_axes; }
    void SetBoxAxes(BoxAxes const& axes) { m_axes = axes; }
    /// One coordinate in box units; 0 for an axis that does not exist.
    double GetViewVal(double v, AxisType type) const;
    /// A node in box units.
    CVertex GetNormalisedVertex(int i, int j) const;

    int GetBoundaryFlag(int i, int j) const;
    void SetBoundaryFlag(int i, int j, int inside);

    /// The second variable at a node, and its range; 0 where there are no values.
    double GetValue(int i, int j) const { return m_values.empty() ? 0.0 : m_values[GetIndex(i, j)]; }
    double GetValMin() const { return m_valMin; }
    double GetValMax() const { return m_valMax; }
    std::vector<double> const& GetValues() const { return m_values; }
    /// One value a node, or none.
    void SetValues(std::vector<double>&& values);

    /// The unit normal of triangle 0 or 1 of cell (i, j) in box units; (0, 0, 0) when a corner of the cell is missing.
    /// Triangle 0 has the nodes (i + 1, j + 1), (i, j + 1), (i, j); triangle 1 has (i + 1, j), (i + 1, j + 1), (i, j).
    CNormal GetFaceNormal(int i, int j, int triangle) const;
    /// The sum of the face normals of the triangles that have the node as a corner, with length 1; (0, 0, 0) when it is
    /// 0.
    CNormal GetNormal(int i, int j) const;
    /// Whether a corner of cell (i, j) is missing, or what lies beyond the last cells.
    bool IsCellMissing(int i, int j) const;

    COLORREF GetWireframeColour(int i, int j) const;
    /// Asks the surface for each node's colour, if it has any.
    void UpdateWireframeColours();

private:
    struct Range {
        double min = 0.0;
        double max = 0.0;
        void Widen(double v)
        {
            min = v < min ? v : min;
            max = v > max ? v : max;
        }
    };
    bool UsesBoundary() const;
    /// A boundary that was set on a grid of another size says nothing about this one.
    bool HasBoundary() const { return !m_boundary.empty() && m_boundary.size() == m_z.size(); }

    CSurface* m_surface;
    std::array<Range, 4> m_ranges;
    bool m_hasRange = false;
    bool m_hasMissing = false;
    BoxAxes m_axes;
    /// Empty while all nodes are inside.
    std::vector<std::uint8_t> m_boundary;
    std::vector<double> m_values;
    double m_valMin = 0.0;
    double m_valMax = 0.0;
    std::vector<COLORREF> m_wireframeColours;
};

} // namespace ombrel
