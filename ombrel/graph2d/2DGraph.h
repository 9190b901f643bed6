#pragma once
#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

class C2DGrid;
class C2DPolarGrid;
class CAxes;
class CPort;

/// A two-dimensional graph: axes, grids and annotation round an area in which plots are drawn.
///
/// A typical host makes a graph, adds a plot (AddPlot) and curves to it, gives them data, calls UpdatePlots, and draws.
/// Errors: Draw throws CResourceException* when a bitmap cannot be made, Serialize CArchiveException*.
class OMBREL_EXPORT C2DGraph : public CAnnotatedGraph {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading: without components.
    C2DGraph()
        : C2DGraph(0)
    {
    }
    /// With createComponents non-zero the graph has its standard components.
    explicit C2DGraph(int createComponents);
    ~C2DGraph() override;
    void Serialize(CArchive& ar) override;

    /// Of the kinds it2D…; null for any other. Owned by the graph.
    CPlot* AddPlot(ItemType type) override;
    /// The plotting area on the device.
    bool GetPlotClipRect(CRect& clip) const override;
    /// The legend and captions follow the axes' rectangle, colour keys the graph's.
    std::optional<AnnotationFrame> GetAnnotationFrame(AnnotationKind kind, CRect const& window) const override;

    /// Null in a graph without components.
    CAxes* GetAxes() const { return m_axes; }
    C2DGrid* GetGrid() const { return m_grid; }
    C2DPolarGrid* GetPolarGrid() const { return m_polarGrid; }
    /// The plotting area on the device, after a draw or SetGraphSize.
    CRect GetAxesRect() const { return m_layout.axesRect; }
    /// Of the plotting area; at first that of the preferences.
    unsigned long GetBkndColour() const { return m_graphBackground; }
    void SetBkndColour(unsigned long colour) { Change(m_graphBackground, colour); }
    /// Of what lies round it, likewise.
    unsigned long GetWindowBkndColour() const { return m_windowBackground; }
    void SetWindowBkndColour(unsigned long colour) { Change(m_windowBackground, colour); }
    /// Takes over all settings of the given axes; the graph keeps its own axes object and tag. Not owned.
    void ReplaceAxes(CAxes* axes);

    /// Whether x values are dates.
    int TimeUnitsOn() const;
    /// False without plots, and when some plot cannot be drawn on logarithmic axes.
    int CanHaveLogScale() const;
    /// Does nothing: UpdatePlots evaluates.
    int Evaluate() { return 1; }
    /// The range of the data of all plots; (0, 0) when none reports one.
    void GetXRange(double& min, double& max) const;
    void GetYRange(double& min, double& max) const;
    /// The axes' range in real units.
    CRealRect GetAxesRealRect() const;
    /// The device rectangle of the axes' range.
    CRect GetClipRect() const;
    /// From data units (decades on logarithmic axes) to device pixels, by the layout of the last draw.
    CPoint UnitsToWindow(CRealPoint const& p) const;
    /// And back.
    CRealPoint WindowToUnits(POINT p) const;
    /// The device rectangle that the axes take up with labels and titles; measured without drawing.
    CRect GetAxesExtent();

    /// Follows the axes' range and rectangle, so that the units rectangle lies on the graph rectangle.
    void UpdateUnitsRect();
    /// Gives the graph this rectangle and shrinks the axes in it until their labels fit.
    void SetGraphSize(CRect const& rect) override;
    /// Gives a graph without a rectangle the initial one. Measures on the context, or with null on the graph's bitmap.
    void SetInitialSize(CDC* dc);
    void SetInitialSize() override;

    /// Tags in drawing order: the rectangular grid, the axes, plots drawn as a whole, and curves. The polar grid is
    /// drawn right after the axes, unless a user's order has a place for it.
    void GetDefaultDrawOrderTags(CDWordArray& tags) const;
    /// The user's order when there is one, else the default order.
    void GetDrawOrderTags(CDWordArray& tags) const;
    /// Each tag counts where it stands first. The default order is not kept as the user's.
    void SetDrawOrderTags(CDWordArray const& tags);
    /// Goes back to the default order.
    void ResetDrawOrderTags();

    /// The steps of a draw between its layout and its annotation.
    void DrawGraphBackground(CPort& port);
    void DrawComponents(CPort& port);
    void DrawComponentsDefaultOrder(CPort& port);
    void DrawComponentsUserOrder(CPort& port);

protected:
    /// Adds each standard component that is missing.
    void CreateComponents();
    void DrawBody(CDC& dc) override;
    CRealRect GetRealRect() const override { return m_layout.unitsRect; }
    void ExchangeLayout() override;
    void ClearComponents() override;
    void FindComponents() override;
    void RemoveInvalidDrawOrderTags();
    void AppendNewDrawOrderTags();
    bool DrawOrderTagsSameAsDefault(CDWordArray const& tags) const;

private:
    /// Each tag where it stands first.
    static CDWordArray WithoutRepetitions(CDWordArray const& tags);
    struct Layout {
        /// The plotting area on the device.
        CRect axesRect;
        /// What lies on the graph rectangle, in real units.
        CRealRect unitsRect;
    };

    COLORREF m_graphBackground = 0xFFFFFF;
    COLORREF m_windowBackground = 0xFFFFFF;
    Layout m_layout;
    /// That of the graph's own window, while it is drawn elsewhere.
    Layout m_otherLayout;
    CAxes* m_axes = nullptr;
    C2DGrid* m_grid = nullptr;
    C2DPolarGrid* m_polarGrid = nullptr;
    /// The user's, without repetitions; empty for the default order.
    CDWordArray m_drawOrder;
};

} // namespace ombrel
