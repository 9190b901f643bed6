#include "ombrel/graph3d/bars/SeriesDrawing.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/RowColours.h"
#include "ombrel/graph3d/render/TowardsViewer.h"
#include "ombrel/platform/opengl/OpenGL.h"

namespace ombrel {
namespace {

// White where the texture colours.
COLORREF ColourOf(int description, COLORREF oneColour, int row)
{
    switch (description) {
    case SeriesSettings::cbValue:
        return 0xFFFFFF;
    case SeriesSettings::cbRow:
        return GetRowColour(row);
    default:
        return oneColour;
    }
}

} // namespace

void SeriesDrawing::Render(C3DGraph& graph, Source const& source)
{
    SeriesSettings const& settings = source.settings;
    Key key { source.revision, {}, settings };
    source.curve.GetBoxAxes(key.axes);
    ValueRange range;
    source.curve.GetZRange(range.min, range.max);
    double const baseline = settings.baseline.Get(key.axes[2]);
    auto const lineColour = [&](int k) { return ColourOf(settings.lineColourDescription, settings.lineColour, k); };

    unsigned int texture = 0;
    if (settings.UsesColourMap())
        texture = m_colours.Update(
            MakeTexels(range.min, range.max, [&](double v) { return source.curve.GetLUTColour(v); }));
    unsigned int const lineTexture = settings.lineColourDescription == SeriesSettings::cbValue ? texture : 0;
    unsigned int const stackTexture = settings.stackColourDescription == SeriesSettings::cbValue ? texture : 0;
    double const width = settings.thicknessScaleFac * graph.GetLineWidth(4);

    graph.EnableLighting(0);
    // Along the other axis whole lines are shown or left out: none is cut where it stands on the side of the box.
    if (source.hasFixedPlaces) {
        GLenum const plane = GL_CLIP_PLANE0 + (settings.rowMode == 0 ? 0 : 2);
        gl::Disable(plane);
        gl::Disable(plane + 1);
    }
    if (settings.drawStacks) {
        FaceBatch& stacks = m_stacks.Get(key, [&](FaceBatch& batch) {
            StackBuilder builder(batch, key.axes, baseline, range);
            source.forEachLine([&](int k, std::span<CVertex const> points) {
                builder.AddStack(points, ColourOf(settings.stackColourDescription, settings.stackColour, k));
                if (settings.drawLines)
                    builder.AddOutline(points, lineColour(k));
            });
        });
        stacks.DrawFaces(graph, stackTexture);
        stacks.DrawLines(graph, width, lineTexture);
    }
    if (settings.drawLines) {
        FaceBatch& lines = m_lines.Get(key, [&](FaceBatch& batch) {
            StackBuilder builder(batch, key.axes, baseline, range);
            source.forEachLine([&](int k, std::span<CVertex const> points) { builder.AddLine(points, lineColour(k)); });
        });
        TowardsViewer const moved(graph);
        lines.DrawLines(graph, width, lineTexture);
    }
    graph.EnableLighting(1);
    graph.EnableClip(1);
}

void SeriesDrawing::InvalidateDeviceObjects()
{
    m_stacks.InvalidateDeviceObjects();
    m_lines.InvalidateDeviceObjects();
    m_colours.Reset();
}

} // namespace ombrel
