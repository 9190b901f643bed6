#pragma once
#include "ombrel/Init.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/platform/gdi/RecordingSurface.h"

#include <algorithm>
#include <memory>
#include <span>
#include <string>
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

inline std::string Numbers(CPoint p) { return std::to_string(p.x) + "," + std::to_string(p.y); }

inline std::string Figure(CRect const& box) { return Numbers(box.TopLeft()) + "-" + Numbers(box.BottomRight()); }

/// What was drawn, in few words: "1,2-3,4" is a line, "o1,2-3,4" a curve in that box, "[3,1]" before the lines of a
/// path its dashes, "text 15 1,2" a text with its height and point, "^" before one that is turned; colours but black
/// follow.
inline std::string Figures(std::vector<RecordedPrimitive> const& primitives)
{
    using Kind = RecordedPrimitive::Kind;
    std::string all;
    auto const add = [&all](std::string const& item) { all += all.empty() ? item : "  " + item; };
    auto const colour = [](COLORREF value) { return value ? "#" + std::to_string(value) : std::string(); };
    auto const figure = [&](std::span<CPoint const> points, std::string const& suffix) {
        if (points.size() <= 2) {
            add(Numbers(points.front()) + "-" + Numbers(points.back()) + suffix);
            return;
        }
        CRect box(points[0], CSize());
        for (CPoint const& p : points)
            box = CRect(
                std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x), std::max(box.bottom, p.y));
        add("o" + Figure(box) + suffix);
    };
    for (RecordedPrimitive const& p : primitives) {
        if (p.kind == Kind::Polyline)
            figure(p.points, colour(p.line.colour));
        if (p.kind == Kind::Text)
            add((p.font.lfEscapement ? "^" : "") + p.text.ToUtf8() + " " + std::to_string(p.font.lfHeight) + " "
                + Numbers(p.points[0]) + colour(p.colour));
        if (p.kind != Kind::Stroke)
            continue;
        if (!p.pen.dashes.empty())
            add("[" + std::to_string(static_cast<int>(p.pen.dashes[0])) + ","
                + std::to_string(static_cast<int>(p.pen.dashes[1])) + "]");
        for (std::size_t i = 0; i < p.starts.size(); ++i) {
            std::size_t const end = i + 1 < p.starts.size() ? p.starts[i + 1] : p.points.size();
            figure(std::span(p.points).subspan(p.starts[i], end - p.starts[i]), colour(p.pen.colour.colour));
        }
    }
    return all;
}

} // namespace ombrel::test
