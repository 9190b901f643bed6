#include "ombrel/graph3d/meshes/MeshRenderer.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/MeshPatch.h"

#include <algorithm>
#include <utility>

namespace ombrel {

bool MeshRenderer::HasGeometry() const
{
    // Transparent faces are sorted at each draw, from where they lie; others are the driver's alone.
    return m_isMade && (m_key.look.transparency != 0.0 || std::ranges::all_of(m_batches, &FaceBatch::IsInDriver));
}

void MeshRenderer::Render(C3DGraph& graph, std::uint64_t revision, BoxAxes const& axes, MeshLook look,
    std::vector<BYTE>&& texels, MeshColouring::ColourOf const& colourOf, MakeParts const& makeParts)
{
    bool const isTextured = look.source == MeshColourSource::Nodes;
    if (isTextured)
        m_colours.Bind(graph, std::move(texels));
    else if (look.source == MeshColourSource::ElementVariable)
        look.elementTexels = std::move(texels);
    Key key { revision, axes, std::move(look) };
    if (!HasGeometry() || !(key == m_key)) {
        m_key = std::move(key);
        m_batches.clear();
        std::vector<MeshPart> const parts = makeParts();
        for (MeshPart const& part : parts) {
            MeshGeometry(*part.patch, part.world, axes, m_key.look, colourOf, [this](FaceBatch&& batch) {
                m_batches.push_back(std::move(batch));
                if (m_key.look.transparency == 0.0)
                    m_batches.back().MoveToDriver();
            }).Make();
        }
        m_isMade = true;
    }
    unsigned int const texture = isTextured ? m_colours.Name() : 0;
    auto const width = static_cast<float>(graph.GetLineWidth(3));
    for (FaceBatch& batch : m_batches) {
        if (m_key.look.hasOutlines && !m_key.look.isSolid)
            batch.DrawLines(graph, width, 0);
        else if (m_key.look.transparency != 0.0)
            batch.AddTransparent(graph, texture);
        else if (m_key.look.hasOutlines)
            batch.DrawOutlined(graph, m_key.look.outlineColour, width, texture);
        else
            batch.DrawFaces(graph, texture);
    }
    if (isTextured)
        ColourTexture::Unbind(graph);
}

void MeshRenderer::InvalidateDeviceObjects()
{
    m_isMade = false;
    m_batches.clear();
    m_colours.Reset();
}

} // namespace ombrel
