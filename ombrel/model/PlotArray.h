#pragma once
#include "ombrel/model/Plot.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

class AxesScaleModes;

/// The plots of a graph, in drawing order. Owns them.
class OMBREL_EXPORT CPlotArray : public CGraphComponent {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CPlotArray() = default;
    explicit CPlotArray(CGraph* graph)
        : CGraphComponent(graph)
    {
    }
    void Serialize(CArchive& ar) override;

    void SetGraph(CGraph* graph) override;
    int Modified() const override;
    int ZValPropertyModified() const override;
    /// Draws every plot, clipped to the graph's plotting area.
    void Draw(CPort* port) override;
    /// Draws every plot in 3D, between switching the graph's clip planes on and off.
    void Draw() override;
    void UpdateGraphParameters() override;
    void ResetModifiedFlags() override;
    CObject* GetObjectByTag(unsigned long tag) override;
    void InvalidateDeviceObjects() override;
    void RestoreDeviceObjects() override;
    bool IsArray() const override { return true; }
    int GetNumItems() const override { return m_plots.GetSize(); }
    CGraphComponent* GetItem(int index) const override { return m_plots.GetAt(index); }

    /// Takes the plot over; returns its index. Plots that come, go or change places make the graph's next draw a
    /// complete one.
    int Add(CPlot* plot);
    CPlot* GetAt(int index) const { return m_plots.GetAt(index); }
    int GetSize() const { return m_plots.GetSize(); }
    OwnedArray<CPlot> const& GetPlots() const { return m_plots; }
    /// −1 when the plot is not here.
    int GetPlotIndex(CPlot const* plot) const { return m_plots.Find(plot); }
    /// Detach without deleting: the plots belong to whoever holds them.
    void RemoveAt(int index);
    void RemoveAll();
    int HasCurveWithColour(unsigned long colour) const;
    int HasDefinedCurve() const;
    int HasDateCurve() const;
    /// Orders the plots, then the curves of each, by ascending tag.
    void SortByTag();
    /// Tells every 2D curve which axes are logarithmic (mode 1; every other mode counts as linear). Null does nothing.
    void Set2DCurveScaleModes(AxesScaleModes const* axes);
    /// Appends tag and title of every curve that a colour key can explain.
    void GetColourRampCurves(CDWordArray& tags, CStringArray& titles) const;
    void CheckForGeneralObjects();

private:
    OwnedArray<CPlot> m_plots;
};

} // namespace ombrel
