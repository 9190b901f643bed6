#pragma once
#include "ombrel/model/Plot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// The base of the 2D plots: adds the range of the curves' data.
class OMBREL_EXPORT C2DPlot : public CPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    C2DPlot() = default;
    explicit C2DPlot(CGraph* graph)
        : CPlot(graph)
    {
    }
    void Serialize(CArchive& ar) override;

    /// Over the curves that are defined and valid (and for x contribute to the range); leaves both unchanged when there
    /// is none.
    virtual void GetXRange(double& min, double& max);
    virtual void GetYRange(double& min, double& max);
    using CPlot::Draw;
    /// Draws every curve in order.
    void Draw(CPort* port) override;

protected:
    /// Adds a curve of the class, in the graph's next colour. Owned by the plot.
    template <typename Curve> Curve* AddNew()
    {
        auto* const curve = new Curve(this, 1);
        AddComponent(curve);
        return curve;
    }
};

} // namespace ombrel
