#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/Polygon.h"
#include "ombrel/graph3d/view/Picture3D.h"

namespace ombrel {

void C3DGraph::AddTransparentPolygon(std::unique_ptr<CPolygon> polygon) { m_polygons.Add(std::move(polygon)); }

void C3DGraph::ClearPolygons()
{
    m_polygons.DeleteAll();
    if (m_picture)
        m_picture->transparent.Clear();
}

void C3DGraph::AddTransparentFaces(FaceBatch const& batch, int texture, int image)
{
    if (m_picture)
        m_picture->transparent.Add(batch, { static_cast<unsigned int>(texture), static_cast<unsigned int>(image) });
}

void C3DGraph::BuildPolygonDistances()
{
    if (m_picture)
        m_picture->transparent.Sort(m_picture->camera, m_polygons);
}

void C3DGraph::RenderTransparentPolygons()
{
    if (!m_picture || (m_polygons.IsEmpty() && m_picture->transparent.IsEmpty()))
        return;
    BuildPolygonDistances();
    m_picture->transparent.Draw(*this);
}

} // namespace ombrel
