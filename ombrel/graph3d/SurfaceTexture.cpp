#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/render/SurfaceRenderer.h"

namespace ombrel {

int CSurface::SetTextureMapParams(CTextureMap const& params)
{
    SetModified(1);
    m_textureMap.SetParams(params);
    m_renderer->SetTextureDirty(m_texture.use != 0);
    return m_texture.use ? m_textureMap.Create() : 1;
}

int CSurface::GetTextureCoord(int i, int j, double& s, double& t) const
{
    auto const rows = IsPolar() || IsGeographical() ? CTextureMap::Rows::Down : CTextureMap::Rows::Up;
    return m_textureMap.GetCoordinates(m_surfaceMesh->GetMeshX(i), m_surfaceMesh->GetMeshY(j), rows, s, t);
}

int CSurface::GetTextureFlag(int i, int j) const
{
    double s = 0.0;
    double t = 0.0;
    return GetTextureCoord(i, j, s, t) && GetTextureCoord(i + 1, j, s, t) && GetTextureCoord(i, j + 1, s, t)
            && GetTextureCoord(i + 1, j + 1, s, t)
        ? 1
        : 0;
}

} // namespace ombrel
