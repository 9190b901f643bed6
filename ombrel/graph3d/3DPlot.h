#pragma once
#include "ombrel/model/Plot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// The base of the 3D plots: adds the range of the curves' data in x and y.
class OMBREL_EXPORT C3DPlot : public CPlot {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    C3DPlot() = default;
    explicit C3DPlot(CGraph* graph)
        : CPlot(graph)
    {
    }
    void Serialize(CArchive& ar) override;

    /// The smallest and the largest coordinate of the curves that are defined and valid; leave both unchanged when
    /// there is none.
    virtual void GetXRange(double& min, double& max);
    virtual void GetYRange(double& min, double& max);
    void GetZRange(double& min, double& max) override;

    using CPlot::Draw;
    /// Renders every curve that is defined, in order, in the state that the graph has set up.
    void Draw() override;
    /// Whether the plot is text that stays sharp: in an anti-aliased picture it is drawn once, after the rest.
    virtual bool IsText() const { return false; }

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
