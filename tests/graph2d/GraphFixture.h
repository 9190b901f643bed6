#pragma once
#include "ombrel/Init.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/platform/gdi/RecordingSurface.h"

#include <memory>
#include <utility>
#include <vector>

namespace ombrel::test {

/// Adds a table curve of these points to the graph's first plot (made when there is none) and evaluates it.
inline C2DLine& AddLine(C2DGraph& graph, std::vector<std::pair<double, double>> const& points)
{
    if (graph.GetPlotArray()->GetSize() == 0)
        graph.AddPlot(it2DLinePlot);
    auto& line = static_cast<C2DLine&>(*graph.GetPlotArray()->GetAt(0)->AddCurve("Curve", CPlotComponent::dsTable));
    line.Initialise(static_cast<int>(points.size()));
    for (int i = 0; auto const& [x, y] : points)
        line.SetAt(i++, { x, y });
    graph.UpdatePlots();
    return line;
}

/// Draws the graph directly onto a recording surface of the size and returns what was drawn.
inline std::vector<RecordedPrimitive> Record(C2DGraph& graph, CSize size)
{
    auto const surface = std::make_shared<RecordingSurface>(size);
    CDC dc(surface);
    graph.Draw(&dc, CRect({ 0, 0 }, size), pmDirect);
    return surface->Primitives();
}

/// The recorded primitives of a kind.
inline std::vector<RecordedPrimitive> OfKind(
    std::vector<RecordedPrimitive> const& primitives, RecordedPrimitive::Kind kind)
{
    std::vector<RecordedPrimitive> found;
    for (RecordedPrimitive const& p : primitives) {
        if (p.kind == kind)
            found.push_back(p);
    }
    return found;
}

} // namespace ombrel::test
