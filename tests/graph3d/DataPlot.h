#pragma once
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DPlot.h"

#include <array>

namespace ombrel::test {

using Corner = std::array<double, 3>;

/// A curve that is just two corners of its data, and counts what it is asked for.
class DataCurve : public C3DCurve {
public:
    using C3DCurve::C3DCurve;
    void RefreshZVals() override { ++refreshed; }
    void Render() override { ++rendered; }
    int IsDefined() const override { return defined; }

    Corner min {};
    Corner max {};
    int defined = 1;
    int refreshed = 0;
    int rendered = 0;
};

/// A plot of one such curve.
class DataPlot : public C3DPlot {
public:
    using C3DPlot::C3DPlot;
    void GetXRange(double& min, double& max) override { Range(0, min, max); }
    void GetYRange(double& min, double& max) override { Range(1, min, max); }
    void GetZRange(double& min, double& max) override { Range(2, min, max); }

    DataCurve* curve = nullptr;

private:
    void Range(std::size_t axis, double& min, double& max) const
    {
        min = curve->min[axis];
        max = curve->max[axis];
    }
};

/// A curve in a plot of its own; both belong to the graph.
template <typename Curve> Curve& AddCurve(C3DGraph& graph, Corner const& min = {}, Corner const& max = {})
{
    auto* const plot = new DataPlot(&graph);
    auto* const curve = new Curve(plot, 1);
    plot->curve = curve;
    curve->min = min;
    curve->max = max;
    curve->SetValid(1);
    graph.GetPlotArray()->Add(plot);
    plot->AddComponent(curve);
    return *curve;
}

inline DataCurve* AddData(C3DGraph& graph, Corner const& min, Corner const& max)
{
    return &AddCurve<DataCurve>(graph, min, max);
}

} // namespace ombrel::test
