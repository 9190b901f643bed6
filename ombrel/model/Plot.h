#pragma once
#include "ombrel/model/GraphComponent.h"
#include "ombrel/model/PlotComponent.h"
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A plot: an ordered array of curves of one kind. Owns its curves.
class OMBREL_EXPORT CPlot : public CGraphComponent {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CPlot() = default;
    explicit CPlot(CGraph* graph)
        : CGraphComponent(graph)
    {
    }
    void Serialize(CArchive& ar) override;

    void SetGraph(CGraph* graph) override;
    int ZValPropertyModified() const override;
    void UpdateGraphParameters() override;
    /// Resets the curves' flags; the plot's own stay.
    void ResetModifiedFlags() override;
    CObject* GetObjectByTag(unsigned long tag) override;
    void InvalidateDeviceObjects() override;
    void RestoreDeviceObjects() override;

    /// Smallest and largest z of the curves; leaves both unchanged here.
    virtual void GetZRange(double&, double&) { }
    /// Does nothing here: CGraph::RemovePlotComponent takes a curve out of its plot.
    virtual void RemoveCurve(int) { }
    /// Non-zero when the plot evaluated its curves itself; with 0 the graph evaluates them one by one.
    virtual int Evaluate() { return 0; }
    /// Takes the curve over and gives it a new tag from the graph. Curves that come, go or change places make the
    /// graph's next draw a complete one.
    virtual void AddComponent(CPlotComponent* curve);
    virtual CPlotComponent* GetComponent(int index) { return m_curves.GetAt(index); }
    /// Bytes of data of all curves.
    virtual int GetDataSize();
    /// Whether some curve is defined and valid.
    virtual int HasDefinedCurve();
    /// Makes a curve with a title and a data source; null for all plots but C2DLinePlot and C2DContourPlot, so that a
    /// cast of the answer must not come before a look at it. CreateCurve makes one in every plot. Owned by the plot.
    virtual CPlotComponent* AddCurve(CString const&, CPlotComponent::DataSourceType) { return nullptr; }
    /// Makes a curve of the plot's kind, in the next free colour. Owned by the plot. Its data source is dsFormula: it
    /// is not drawn before SetDataSourceType(dsTable) and UpdatePlots.
    virtual CPlotComponent* CreateCurve() { return nullptr; }
    virtual CObject* GetAutomationObject() { return nullptr; }

    /// Whether the user's draw order holds the plot as a whole rather than its curves one by one.
    virtual bool IsDrawnAsWhole() const { return false; }
    /// Called before a curve is evaluated: hands it what the plot prescribes for all of its curves.
    virtual void PrepareCurve(CPlotComponent&) { }
    /// Called after the first curve was evaluated: takes over what its points prescribe for the others.
    virtual void TakeOverPoints(CPlotComponent&) { }
    /// Whether the plot can be drawn on logarithmic axes.
    virtual bool CanHaveLogScale() const { return true; }
    /// Checks the plot's objects that come from files; does nothing here.
    virtual void CheckForGeneralObjects() { }

    CString GetTitle() const { return m_title; }
    void SetTitle(CString const& title) { Change(m_title, title); }
    ItemType GetItemType() const { return m_itemType; }
    int GetNumComponents() const { return m_curves.GetSize(); }
    int HasComponents() const { return m_curves.IsEmpty() ? 0 : 1; }
    OwnedArray<CPlotComponent> const& GetComponents() const { return m_curves; }
    /// The first curve of exactly that title, or null.
    CPlotComponent* GetCurve(CString const& title) const;
    /// −1 when the curve is not of this plot.
    int GetCurveIndex(CPlotComponent const* curve) const { return m_curves.Find(curve); }
    /// Detaches the curve, which then belongs to the caller; false when it is not of this plot.
    bool RemoveComponent(CPlotComponent* curve);
    int HasCurveWithColour(unsigned long colour) const;
    int HasDateCurve() const;
    /// Orders the curves by ascending tag; which of equal tags comes first does not change.
    void SortByTag();
    /// Gives every curve a new tag, in order.
    void SetComponentTags();

protected:
    void SetItemType(ItemType type) { m_itemType = type; }
    void StoreTitle(CString const& title) { m_title = title; }

private:
    OwnedArray<CPlotComponent> m_curves;
    CString m_title = "Untitled Plot";
    ItemType m_itemType = itNone;
};

/// Orders an array by ascending tag: for each place the first entry with the smallest tag of the rest.
template <typename T> void SelectionSortByTag(OwnedArray<T>& objects)
{
    for (int i = 0; i < objects.GetSize(); ++i) {
        int smallest = i;
        for (int j = i + 1; j < objects.GetSize(); ++j) {
            if (objects[j]->GetTag() < objects[smallest]->GetTag())
                smallest = j;
        }
        objects.Swap(i, smallest);
    }
}

} // namespace ombrel
