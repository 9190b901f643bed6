#pragma once
#include "ombrel/Init.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DSeriesPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "tests/platform/gdi/Recorded.h"

#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace ombrel::test {

using Values = std::vector<double>;
using Points = std::vector<std::pair<double, double>>;

/// Makes a table curve of these points.
inline void SetTable(C2DCurve& curve, Points const& points)
{
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.Initialise(static_cast<int>(points.size()));
    for (int i = 0; auto const& [x, y] : points)
        curve.SetAt(i++, { x, y });
}

/// Adds a table curve of these points to the graph's first plot (made when there is none) and evaluates it.
inline C2DLine& AddLine(C2DGraph& graph, Points const& points)
{
    if (graph.GetPlotArray()->GetSize() == 0)
        graph.AddPlot(it2DLinePlot);
    auto& line = static_cast<C2DLine&>(*graph.GetPlotArray()->GetAt(0)->AddCurve("Curve", CPlotComponent::dsTable));
    SetTable(line, points);
    graph.UpdatePlots();
    return line;
}

/// A plot whose curves, if they share their x values, have those of the first one.
template <typename Plot> Plot& AddPlot(C2DGraph& graph, ItemType type)
{
    auto& plot = static_cast<Plot&>(*graph.AddPlot(type));
    if (auto* const series = DynamicDowncast<C2DSeriesPlot>(&plot))
        series->SetXValueMode(1);
    return plot;
}

/// A table curve of the plot's kind in black, evaluated; values beyond the places given stand at 1, 2, …
template <typename Curve = C2DCurve> Curve& AddCurve(CPlot& plot, Values const& xs, Values const& ys)
{
    auto& curve = static_cast<Curve&>(*plot.CreateCurve());
    curve.SetColour(0);
    Points points;
    for (std::size_t i = 0; i < ys.size(); ++i)
        points.emplace_back(i < xs.size() ? xs[i] : static_cast<double>(i + 1), ys[i]);
    SetTable(curve, points);
    if (auto* const series = DynamicDowncast<C2DSeriesPlot>(&plot); series && series->GetNumComponents() == 1) {
        CDoubleArray shared;
        for (auto const& [x, y] : points)
            shared.Add(x);
        series->SetPoints(&shared, shared.GetSize());
    }
    plot.GetGraph()->UpdatePlots();
    return curve;
}

/// The least and the largest value along x or y of a graph, plot or curve that is asked with zeros.
template <typename T> std::pair<double, double> XRange(T&& object)
{
    std::pair<double, double> range;
    object.GetXRange(range.first, range.second);
    return range;
}
template <typename T> std::pair<double, double> YRange(T&& object)
{
    std::pair<double, double> range;
    object.GetYRange(range.first, range.second);
    return range;
}

/// Fixed ranges from 0 on.
inline void FixAxes(CAxes& axes, double maxX, double maxY)
{
    axes.SetXAxisRangeMode(CAxes::rmFixed);
    axes.SetYAxisRangeMode(CAxes::rmFixed);
    axes.SetXAxisRange(0, maxX);
    axes.SetYAxisRange(0, maxY);
}

/// Draws the graph directly onto a recording surface of the size and returns what was drawn.
inline std::vector<RecordedPrimitive> Record(C2DGraph& graph, CSize size, bool printing = false)
{
    auto const surface = std::make_shared<RecordingSurface>(size, DeviceCapabilities(), printing);
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

inline std::string Figure(CPoint p) { return std::to_string(p.x) + "," + std::to_string(p.y); }

/// The corners of a rectangle.
inline std::string Figure(CRect const& box) { return Figure(box.TopLeft()) + "-" + Figure(box.BottomRight()); }

/// Points one after the other, of many that return to the first their box.
inline std::string Figure(std::span<CPoint const> points)
{
    constexpr std::size_t kMany = 12;
    std::string text;
    CRect box(points.front(), CSize());
    for (CPoint const& p : points) {
        text += (text.empty() ? "" : "-") + Figure(p);
        box = CRect(
            std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x), std::max(box.bottom, p.y));
    }
    return points.size() > kMany && points.front() == points.back() ? "o" + Figure(box) : text;
}

/// The corners of a rectangle; of any other region its rows, those alike together, with the pixels from … to, the last
/// left out.
inline std::string Figure(Region const& region)
{
    if (region.IsRect())
        return Figure(region.Box());
    std::vector<std::pair<int, std::string>> rows;
    for (Region::Span const& s : region.Spans(-100, 200)) {
        bool const first = rows.empty() || rows.back().first != s.y;
        if (first)
            rows.emplace_back(s.y, "");
        rows.back().second += (first ? ":" : "+") + std::to_string(s.left) + "-" + std::to_string(s.right);
    }
    std::string text;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::size_t const first = i;
        while (i + 1 < rows.size() && rows[i + 1].second == rows[first].second)
            ++i;
        text += (first > 0 ? " " : "") + std::to_string(rows[first].first)
            + (i > first ? "-" + std::to_string(rows[i].first) : "") + rows[first].second;
    }
    return text;
}

/// What was drawn but for white backgrounds, in few words: "1,2-3,4" is a line, "o1,2-3,4" a closed curve in that box,
/// "[3,1]" before the lines of a path its dashes and "[]" their end, "fill 1,2-3,4" a filled rectangle, "text 15 1,2" a
/// text with its height and point, "^" before one that is turned and "=" before one in an opaque cell; colours but
/// black follow.
inline std::string Figures(std::vector<RecordedPrimitive> const& primitives)
{
    std::string all;
    bool dashed = false;
    auto const add = [&all](std::string const& item, COLORREF colour = 0) {
        all += (all.empty() ? "" : "  ") + item + (colour ? "#" + std::to_string(colour) : "");
    };
    for (RecordedPrimitive const& p : primitives) {
        if (auto const* const line = p.As<primitive::Polyline>())
            add(Figure(line->points), line->line.colour);
        if (auto const* const fill = p.As<primitive::Fill>(); fill && fill->brush.foreground.colour != 0xFFFFFF)
            add("fill " + Figure(fill->region), fill->brush.foreground.colour);
        if (auto const* const text = p.As<primitive::Text>())
            add((text->cellColour ? "=" : "") + std::string(text->font.lfEscapement ? "^" : "") + text->text.ToUtf8()
                    + " " + std::to_string(text->font.lfHeight) + " " + Figure(text->at),
                text->colour);
        auto const* const stroke = p.As<primitive::Stroke>();
        if (!stroke)
            continue;
        std::vector<double> const& dashes = stroke->pen.dashes;
        if (!dashes.empty())
            add("[" + std::to_string(static_cast<int>(dashes[0])) + "," + std::to_string(static_cast<int>(dashes[1]))
                + "]");
        else if (dashed)
            add("[]");
        dashed = !dashes.empty();
        ombrel::Figures const figures { stroke->points, stroke->starts };
        for (std::size_t i = 0; i < figures.Count(); ++i) {
            if (!figures.PointsOf(i).empty())
                add(Figure(figures.PointsOf(i)), stroke->pen.colour.colour);
        }
    }
    return all;
}

} // namespace ombrel::test
