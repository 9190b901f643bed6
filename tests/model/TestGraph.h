#pragma once
#include "ombrel/model/Graph.h"

#include <functional>

namespace ombrel::test {

/// A graph that has plots and whose draws only go through the steps that every draw shares.
class TestGraph : public CGraph {
public:
    TestGraph()
    {
        auto* const plots = new CPlotArray(this);
        AddComponent(plots);
        SetPlotArray(plots);
    }
    CPlot* AddPlot(ItemType) override
    {
        auto* const plot = new CPlot(this);
        plot->SetTag(GetNewTag());
        GetPlotArray()->Add(plot);
        return plot;
    }
    /// A plot with that many curves, each in the graph's next colour.
    CPlot& AddPlotWithCurves(int count)
    {
        CPlot* const plot = AddPlot(it2DLinePlot);
        for (int i = 0; i < count; ++i)
            plot->AddComponent(new CPlotComponent(plot, 1));
        return *plot;
    }
    void Draw(CDC*, CRect const&, PaintMode) override
    {
        if (IsBusy())
            return;
        std::function<void()> const draw = drawing;
        DrawScope scope(*this);
        ++draws;
        if (draw)
            draw();
        bool* const survived = survivedDraw;
        bool const alive = scope.Finish(printing);
        if (survived)
            *survived = alive;
    }
    void DrawOnce() { Draw(nullptr, CRect(), pmOffScreen); }

    using CGraph::GraphComponentModified;
    using CGraph::IsBusy;
    using CGraph::PlotComponentDataModified;
    using CGraph::PlotComponentModified;
    using CGraph::SetComponentTags;

    std::function<void()> drawing;
    bool printing = false;
    /// Where Draw leaves whether the graph was still there after its callback.
    bool* survivedDraw = nullptr;
    int draws = 0;
};

} // namespace ombrel::test
