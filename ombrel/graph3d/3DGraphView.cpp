#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/view/ViewDirection.h"

namespace ombrel {

void C3DGraph::GetWalls(WallType& x, WallType& y, WallType& z)
{
    ViewDirection const view(m_azimuth, m_elevation);
    m_quadrant = view.quadrant;
    BackWalls(view.quadrant, view.level, x, y, z);
}

} // namespace ombrel
