#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

void C3DGraph::Serialize(CArchive& ar)
{
    CGraph::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(6);
    f.Double(m_azimuth, m_elevation, m_perspective, m_zoom).String(m_fontFaceName);
    f.Int(m_lights[0].on, m_lights[1].on).Float(m_shininess);
    f.Float(m_lights[0].azimuth, m_lights[1].azimuth, m_lights[0].polarAngle, m_lights[1].polarAngle);
    f.Double(m_ambientLight, m_specularLight, m_textScaleFac, m_baseTextScale, m_xPos, m_yPos);
    f.Int(m_lightingOn).Double(m_attenuation);
    if (version >= 2)
        f.Short(m_background[0], m_background[1], m_background[2]);
    else
        m_background = {};
    if (version >= 3)
        f.Int(m_autoscaleMode);
    if (version >= 4)
        f.Int(m_gridLineAntialiasMode);
    if (version >= 5)
        f.Int(m_axisLineAntialiasMode);
    if (version >= 6)
        f.Double(m_lightDistance);
    if (ar.IsLoading())
        CreateComponents();
}

void C3DGraph::ReplaceAxes(C3DAxis** axes)
{
    for (std::size_t i = 0; axes && i < m_axes.size(); ++i) {
        if (!axes[i] || !m_axes[i] || axes[i] == m_axes[i])
            continue;
        unsigned long const tag = m_axes[i]->GetTag();
        CMemFile file;
        CArchive storing(&file, CArchive::store);
        axes[i]->Serialize(storing);
        storing.Close();
        CArchive loading(file.GetBytes());
        m_axes[i]->Serialize(loading);
        m_axes[i]->SetTag(tag);
        m_axes[i]->SetZValPropertyModified(1);
    }
    SetModifiedFlag(1);
}

} // namespace ombrel
