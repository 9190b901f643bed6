#pragma once
#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

class C2DGrid;
class C2DPolarGrid;
class CAxes;
class CColourKey;
class CPort;

/// A two-dimensional graph: axes, grids and annotation round an area in which plots are drawn.
///
/// A typical host makes a graph, adds a plot (AddPlot) and curves to it, gives them data, calls UpdatePlots, and draws.
/// Rectangles are device pixels. Errors: Draw throws CResourceException* when a bitmap cannot be made, Serialize
/// CArchiveException*.
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

    /// Draws the graph into the rectangle of the context. Does nothing while a draw is in progress or when the
    /// rectangle is empty.
    void Draw(CDC* dc, CRect const& rect, PaintMode mode) override;
    /// Draws into a rectangle of another drawing, in the proportions of the graph's own window.
    void DrawEmbedded(CDC* dc, CRect const& window, CRect const& target) override;
    /// Stretches the finished off-screen picture onto the printer, at the print rectangle of the user's preferences,
    /// in millimetres from the page's corner.
    void DrawToPrinter(CDC* printer);
    CPlot* AddPlot(ItemType type) override;
    /// The plotting area on the device.
    bool GetPlotClipRect(CRect& clip) const override;
    /// The legend and captions follow the axes' rectangle, colour keys the graph's.
    std::optional<AnnotationFrame> GetAnnotationFrame(AnnotationKind kind, CRect const& window) const override;

    /// Null in a graph without components.
    CAxes* GetAxes() const { return m_axes; }
    C2DGrid* GetGrid() const { return m_grid; }
    C2DPolarGrid* GetPolarGrid() const { return m_polarGrid; }
    CRect GetAxesRect() const { return m_axesRect; }
    /// The finished picture of the last off-screen draw.
    CDIB& GetDisplayDIB();
    unsigned long GetBkndColour() const { return m_graphBackground; }
    void SetBkndColour(unsigned long colour) { Change(m_graphBackground, colour); }
    unsigned long GetWindowBkndColour() const { return m_windowBackground; }
    void SetWindowBkndColour(unsigned long colour) { Change(m_windowBackground, colour); }
    /// Takes over all settings of the given axes; the graph keeps its own axes object and tag. Not owned.
    void ReplaceAxes(CAxes* axes);
    /// Adds a colour key at a device point for the curve with that tag. Owned by the graph.
    CColourKey* AddColourKey(CPoint at, unsigned long curveTag);

    /// Whether x values are dates.
    int TimeUnitsOn() const;
    /// False without plots, and when some plot cannot be drawn on logarithmic axes.
    int CanHaveLogScale() const;
    int Evaluate() { return 1; }
    /// The range of the data of all plots; (0, 0) when none reports one.
    void GetXRange(double& min, double& max) const;
    void GetYRange(double& min, double& max) const;
    /// The axes' range in real units.
    CRealRect GetAxesRealRect() const;
    /// The device rectangle of the axes' range.
    CRect GetClipRect() const;
    CPoint UnitsToWindow(CRealPoint const& p) const;
    CRealPoint WindowToUnits(POINT p) const;
    /// The device rectangle that the axes take up with labels and titles; measured without drawing.
    CRect GetAxesExtent();

    /// Follows the axes' range and rectangle, so that the units rectangle lies on the graph rectangle.
    void UpdateUnitsRect();
    /// Gives the graph this rectangle and shrinks the axes in it until their labels fit.
    void SetGraphSize(CRect const& rect);
    /// Works out where everything lies in a draw of that window on a context like this one, without drawing: for hosts
    /// that place annotation by GetAxesRect and CAnnotation::Measure. Does nothing where Draw does nothing.
    void LayOut(CDC* dc, CRect const& window);
    using CGraph::SetInitialSize;
    void SetInitialSize(CDC* dc);

    /// Tags in drawing order: the rectangular grid, the axes, plots drawn as a whole, and curves.
    void GetDefaultDrawOrderTags(CDWordArray& tags) const;
    /// The user's order when there is one, else the default order.
    void GetDrawOrderTags(CDWordArray& tags) const;
    void SetDrawOrderTags(CDWordArray const& tags);
    void ResetDrawOrderTags();

    void DrawGraphBackground(CPort& port);
    void DrawComponents(CPort& port);
    void DrawComponentsDefaultOrder(CPort& port);
    void DrawComponentsUserOrder(CPort& port);
    void DrawLegend(CPort* port);
    void DrawCaptions(CPort* port);
    void DrawColourKeys(CPort* port);

protected:
    /// Adds each standard component that is missing.
    void CreateComponents();
    void ClearComponents() override;
    /// Leaves out the annotation, which every draw draws afresh.
    bool GraphComponentModified() const override;
    void FindComponents() override;
    void RemoveInvalidDrawOrderTags();
    void AppendNewDrawOrderTags();
    bool DrawOrderTagsSameAsDefault(CDWordArray const& tags) const;

private:
    /// Where the graph lies in its own window, put back after it was embedded.
    struct Placement {
        CRect window;
        CRect graph;
        CRealPoint normalisedOrigin;
        CRealPoint normalisedSize;
        int sized;
    };
    bool IsComplete(CDC const& dc) const;
    void ResizeBitmaps(CRect const& rect);
    void LayOut(CDC& dc);
    void DrawBody(CDC& dc, CRect const& background, CRect const& frame);
    bool HasAnnotation() const;
    void DrawAnnotation(CDC& dc);
    void Present(CDC& target, CPoint at);
    static CRect EmbeddedRect(CRect const& graph, CRect const& window, CRect const& target);

    COLORREF m_graphBackground = 0xFFFFFF;
    COLORREF m_windowBackground = 0xFFFFFF;
    CRealRect m_unitsRect;
    CRect m_axesRect;
    CAxes* m_axes = nullptr;
    C2DGrid* m_grid = nullptr;
    C2DPolarGrid* m_polarGrid = nullptr;
    CDWordArray m_drawOrder;
    CDIB m_displayDIB;
    /// The finished picture is just the body, and the display bitmap has not been filled with it yet.
    bool m_displayIsBody = false;
    /// The graph's bitmap holds the body as it was last drawn, whatever has been drawn elsewhere since.
    bool m_bodyIsDrawn = false;
    CSize m_bitmapSize;
};

} // namespace ombrel
