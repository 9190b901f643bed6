#pragma once
#include "ombrel/Init.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/Axes.h"
#include "tests/platform/gdi/Recorded.h"

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

/// What is filled after the background, which comes before everything else.
inline std::vector<primitive::Fill> FillsOver(std::vector<RecordedPrimitive> const& primitives)
{
    auto const isFill = [](RecordedPrimitive const& p) { return p.As<primitive::Fill>() != nullptr; };
    return OfKind<primitive::Fill>(
        { std::find_if_not(primitives.begin(), primitives.end(), isFill), primitives.end() });
}

inline std::string Numbers(CPoint p) { return std::to_string(p.x) + "," + std::to_string(p.y); }

inline std::string Figure(CRect const& box) { return Numbers(box.TopLeft()) + "-" + Numbers(box.BottomRight()); }

/// What was drawn, in few words: "1,2-3,4" is a line, "o1,2-3,4" a curve in that box, "[3,1]" before the lines of a
/// path its dashes, "text 15 1,2" a text with its height and point, "^" before one that is turned; colours but black
/// follow.
inline std::string Figures(std::vector<RecordedPrimitive> const& primitives)
{
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
        if (auto const* const line = p.As<primitive::Polyline>())
            figure(line->points, colour(line->line.colour));
        if (auto const* const text = p.As<primitive::Text>())
            add((text->font.lfEscapement ? "^" : "") + text->text.ToUtf8() + " " + std::to_string(text->font.lfHeight)
                + " " + Numbers(text->at) + colour(text->colour));
        auto const* const stroke = p.As<primitive::Stroke>();
        if (!stroke)
            continue;
        std::vector<double> const& dashes = stroke->pen.dashes;
        if (!dashes.empty())
            add("[" + std::to_string(static_cast<int>(dashes[0])) + "," + std::to_string(static_cast<int>(dashes[1]))
                + "]");
        ombrel::Figures const figures { stroke->points, stroke->starts };
        for (std::size_t i = 0; i < stroke->starts.size(); ++i)
            figure(figures.PointsOf(i), colour(stroke->pen.colour.colour));
    }
    return all;
}

} // namespace ombrel::test
