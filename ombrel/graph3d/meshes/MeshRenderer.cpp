#include "ombrel/graph3d/meshes/MeshRenderer.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/MeshPatch.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>
#include <utility>

namespace ombrel {

bool MeshRenderer::HasGeometry() const
{
    // Transparent faces are sorted at each draw, from where they lie; others are the driver's alone.
    return m_isMade && (m_key.look.transparency != 0.0 || std::ranges::all_of(m_batches, &FaceBatch::IsInDriver));
}

void MeshRenderer::Render(C3DGraph& graph, MeshScene const& scene, MeshLook look)
{
    look.source = scene.colouring.GetSource(scene.colourDescription, scene.gradation);
    look.variable = scene.colouring.GetVariableRow(look.source);
    scene.colouring.GetDataRange(look.lo, look.hi);
    unsigned int texture = 0;
    if (look.source == MeshColourSource::Nodes) {
        texture = m_colours.Update(MakeTexels(look.lo, look.hi, scene.colourOf));
    } else if (look.source == MeshColourSource::ElementVariable) {
        if (scene.colouring.settings.contoursOn) {
            auto const levels = scene.colouring.contours.GetLevels();
            look.elementLevels.assign(levels.begin(), levels.end());
            look.elementBands = scene.colouring.contours.GetColours();
        } else {
            look.elementMap = ColourMapKey(scene.map);
            look.mapEnds = scene.mapEnds;
        }
    }
    if (look.variable < 0) {
        look.lo = scene.colouring.height[0];
        look.hi = scene.colouring.height[1];
    }
    Key key { scene.revision, scene.axes, std::move(look) };
    if (!HasGeometry() || !(key == m_key)) {
        m_key = std::move(key);
        m_batches.clear();
        scene.forEachPart([this, &scene](MeshPart const& part) {
            MeshGeometry(*part.patch, part.world, m_key.axes, m_key.look, scene.colourOf, [this](FaceBatch&& batch) {
                m_batches.push_back(std::move(batch));
                if (m_key.look.transparency == 0.0)
                    m_batches.back().MoveToDriver();
            }).Make();
        });
        m_isMade = true;
    }
    double const width = graph.GetLineWidth(3);
    for (FaceBatch& batch : m_batches) {
        if (m_key.look.hasOutlines && !m_key.look.isSolid)
            batch.DrawLines(graph, width, 0);
        else if (m_key.look.transparency != 0.0)
            batch.AddTransparent(graph, texture);
        else if (m_key.look.hasOutlines)
            batch.DrawOutlined(graph, m_key.look.outlineColour, width, texture);
        else
            batch.DrawFaces(graph, texture);
        // A software renderer keeps what it has not drawn yet, several times as much as the buffers hold, also of
        // what is only flushed.
        if (m_batches.size() > 1)
            gl::Finish();
    }
}

void MeshRenderer::InvalidateDeviceObjects()
{
    m_isMade = false;
    m_batches.clear();
    m_colours.Reset();
}

} // namespace ombrel
