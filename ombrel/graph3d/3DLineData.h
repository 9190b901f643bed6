#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/foundation/Vertex.h"
#include "ombrel/platform/framework/Export.h"

#include <span>
#include <vector>

namespace ombrel {

/// A list of points in space.
///
/// A point of which a coordinate is missing (IsGap) is missing: it is stored, but has no part in ranges.
/// Errors: an index outside throws CInvalidArgException*, Serialize CArchiveException* (both newly allocated); a list
/// that does not fit into memory throws std::bad_alloc.
class OMBREL_EXPORT C3DLineData : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// Empty.
    C3DLineData() = default;
    /// Replaces the points by n points 0, 0, 0; by none when n is below 1.
    void Initialise(int n);
    int GetNumPoints() const { return static_cast<int>(m_points.size()); }
    CVertex& operator[](int i) { return m_points[CheckedIndex(i, m_points.size())]; }
    CVertex const& operator[](int i) const { return m_points[CheckedIndex(i, m_points.size())]; }
    std::span<CVertex> GetPoints() { return m_points; }
    std::span<CVertex const> GetPoints() const { return m_points; }
    static bool IsMissing(CVertex const& point) { return IsGap(point.X()) || IsGap(point.Y()) || IsGap(point.Z()); }

    /// The smallest and the largest coordinate of the points that are not missing; leave both unchanged without any.
    void GetXRange(double& min, double& max) const { GetRange(0, min, max); }
    void GetYRange(double& min, double& max) const { GetRange(1, min, max); }
    void GetZRange(double& min, double& max) const { GetRange(2, min, max); }

    void Serialize(CArchive& ar) override;

private:
    void GetRange(int coordinate, double& min, double& max) const;

    std::vector<CVertex> m_points;
};

} // namespace ombrel
