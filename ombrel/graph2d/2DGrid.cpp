#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/axes/GridPen.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <limits>

namespace ombrel {

constinit CRuntimeClass const C2DGrid::kClass = PersistentClass<C2DGrid, CGraphComponent>("C2DGrid");

C2DGrid::C2DGrid(CGraph* graph)
    : CGraphComponent(graph)
    , m_major(PreferredMajorGridLine())
    , m_minor(PreferredMinorGridLine())
{
}

void C2DGrid::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_on, m_x.majorDivisions, m_y.majorDivisions, m_x.minorDivisions, m_y.minorDivisions);
    f.Dword(m_major.colour, m_minor.colour).Int(m_major.style, m_minor.style, m_x.lineMode, m_y.lineMode);
    f.Int(m_x.freeLinesOn, m_y.freeLinesOn, m_x.alignFreeLines, m_y.alignFreeLines);
    f.Double(m_x.lineMin, m_x.lineDel, m_y.lineMin, m_y.lineDel).Int(m_y.linesOn, m_x.linesOn, m_synch);
    f.Date(m_dates.tickMin).Int(m_dates.del, m_dates.delUnit, m_dates.delMinor, m_dates.delUnitMinor);
}

void C2DGrid::UpdateGraphParameters()
{
    // A damaged document may have put the grid into a graph of another kind.
    auto const* const graph = DynamicDowncast<C2DGraph>(GetGraph());
    if (m_synch && graph && graph->GetAxes())
        FollowAxes(*graph->GetAxes());
}

void C2DGrid::FollowAxes(CAxes const& axes)
{
    AxisSettings const& x = axes.GetAxis(CAxes::atX);
    AxisSettings const& y = axes.GetAxis(CAxes::atY);
    FollowTickMode(m_x, x);
    FollowTickMode(m_y, y);
    DateSteps const& dates = axes.GetDateTicks();
    if (x.timeUnitsOn)
        m_dates = dates;
    else
        FollowSpacing(m_x, x);
    FollowSpacing(m_y, y);
}

void C2DGrid::FollowTickMode(GridDirection& direction, AxisSettings const& axis)
{
    // Without ticks, or with free ones only, there is nothing to follow.
    if (axis.HasDivisions())
        direction.lineMode = lmDivisions;
    else if (axis.HasSteps())
        direction.lineMode = lmStep;
}

void C2DGrid::FollowSpacing(GridDirection& direction, AxisSettings const& axis)
{
    if (direction.lineMode == lmDivisions) {
        direction.majorDivisions = std::max(axis.numMajorTicks, std::numeric_limits<int>::min() + 1) - 1;
    } else if (direction.lineMode == lmStep) {
        direction.lineMin = axis.tickMin;
        direction.lineDel = axis.tickDel;
    } else {
        return;
    }
    direction.minorDivisions = std::min(axis.numMinorTicks, std::numeric_limits<int>::max() - 1) + 1;
}

void C2DGrid::SetFreePositions(GridDirection& direction, CDoubleArray const& positions)
{
    direction.freePositions.Copy(positions);
    SetModified(1);
}

} // namespace ombrel
