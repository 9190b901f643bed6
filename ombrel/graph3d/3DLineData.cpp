#include "ombrel/graph3d/3DLineData.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>

namespace ombrel {

constinit CRuntimeClass const C3DLineData::kClass = PersistentClass<C3DLineData, CObject>("C3DLineData");

void C3DLineData::Initialise(int n)
{
    m_points = {};
    m_points.resize(static_cast<std::size_t>(std::max(n, 0)));
}

void C3DLineData::GetRange(int coordinate, double& min, double& max) const
{
    bool isFirst = true;
    for (CVertex const& point : m_points) {
        if (IsMissing(point))
            continue;
        double const v = point[coordinate];
        min = isFirst ? v : std::min(min, v);
        max = isFirst ? v : std::max(max, v);
        isFirst = false;
    }
}

void C3DLineData::Serialize(CArchive& ar)
{
    ArchiveFields f(ar);
    f.Version(1);
    int count = GetNumPoints();
    f.Int(count);
    if (!ar.IsStoring()) {
        // As stored: a version and three coordinates.
        constexpr std::size_t kBytesOfPoint = sizeof(LONG) + 3 * sizeof(double);
        count = std::max(count, 0);
        ar.RequireRemaining(static_cast<std::uint64_t>(count), kBytesOfPoint, "points of a line");
        Initialise(count);
    }
    for (CVertex& point : m_points)
        f.Nested(point);
}

} // namespace ombrel
