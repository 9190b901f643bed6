#pragma once
#include "ombrel/drawing/DIB.h"
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/model/AnnotationFrame.h"
#include "ombrel/model/LineWidth.h"
#include "ombrel/model/PlotArray.h"
#include "ombrel/platform/framework/DateTime.h"
#include "ombrel/platform/framework/Export.h"

#include <memory>
#include <optional>
#include <unordered_set>

namespace ombrel {

class CDC;

/// An integer that a graph keeps for the host; nothing sets or reads it here. 0 at first.
enum GraphType : int { gtDefault = 0 };
/// Whether a graph is a plane or a 3D one.
enum GraphDataDimension : int { gd2D = 0, gd3D = 1 };
/// How a graph is drawn: 0 through off-screen bitmaps, so that an unchanged graph is only copied; any other value
/// straight onto the target.
enum PaintMode : int { pmOffScreen = 0, pmDirect = 1 };
/// Hints that the annotation reads: 1 the window was resized, 2 the graph was moved under it. Others are the host's.
enum GraphHint : long { ghNone = 0, ghResized = 1, ghKeepRects = 2 };

class CGraph;

/// The native window of a host's view; only stored.
using WindowHandle = void*;

/// A graph: owns its components, and through the plot array its plots and their curves.
///
/// Every component, plot and curve carries a tag handed out by its graph. Everything runs on one thread.
/// Errors: only Serialize and Draw throw (see CArchive and CDIB).
class OMBREL_EXPORT CGraph : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CGraph();
    ~CGraph() override;
    CGraph(CGraph const&) = delete;
    CGraph& operator=(CGraph const&) = delete;
    void Serialize(CArchive& ar) override;

    /// Does nothing here.
    virtual void Draw(CDC*, CRect const&, PaintMode) { }
    /// What Draw would draw in the window, scaled into the target; does nothing here.
    virtual void DrawEmbedded(CDC*, CRect const& /*window*/, CRect const& /*target*/) { }
    /// Evaluates every curve; the host calls it after it made or loaded curves or changed their data, and before it
    /// draws. A curve that was never evaluated is not drawn, and axes take no range from it: without the call the
    /// picture of a new graph is empty.
    virtual void UpdatePlots();
    virtual void UpdateZVals() { }
    virtual void SetInitialSize() { }
    virtual void AdjustGraphRectForLegend() { }
    /// Bytes of data of all plots.
    virtual int GetDataSize() const;
    /// Makes a plot of the kind; null for a kind that the graph does not offer. Owned by the graph.
    virtual CPlot* AddPlot(ItemType) { return nullptr; }
    virtual CObject* GetAutomationObject() { return nullptr; }
    virtual CObject* GetAutomationObjectInt() { return nullptr; }

    /// The device rectangle that clips plots; false when plots are not clipped to one.
    virtual bool GetPlotClipRect(CRect&) const { return false; }
    /// Switches the clip planes of a 3D graph.
    virtual void SwitchClipping(bool) { }
    /// How annotation of a kind follows the graph in a drawing of that window; without an answer it stays where it is,
    /// at the size it has.
    virtual std::optional<AnnotationFrame> GetAnnotationFrame(AnnotationKind, CRect const& /*window*/) const
    {
        return {};
    }
    /// The annotation that the graph has: null unless a derived graph brings it.
    virtual CGraphComponent* GetCaptionArray() const { return nullptr; }
    virtual CGraphComponent* GetColourKeyArray() const { return nullptr; }
    virtual CGraphComponent* GetLegend() const { return nullptr; }
    /// Adds a caption "Caption Text" at a device point; null where there are no captions. Owned by the graph.
    virtual CGraphComponent* AddCaption(CPoint) { return nullptr; }
    /// Deletes every caption.
    virtual void ClearCaptions() { }

    /// Takes the component over and gives it a new tag. Components that come or go make the next draw a complete one.
    void AddComponent(CGraphComponent* component);
    /// Detaches the component, which then belongs to the caller; false when it is not of this graph.
    bool RemoveComponent(CGraphComponent* component);
    /// From 0 on; an index outside throws CInvalidArgException*. Owned by the graph.
    CGraphComponent* GetComponent(int index) const { return m_components.GetAt(index); }
    int GetNumComponents() const { return m_components.GetSize(); }
    OwnedArray<CGraphComponent> const& GetComponentArray() const { return m_components; }
    /// Lets every component recompute what depends on the graph.
    void UpdateComponentParameters();
    /// Tells every component, plot and curve whose it is.
    void AttachToChildren();

    /// Null until created, as in a graph without components.
    CPlotArray* GetPlotArray() const { return m_plotArray; }
    CPlot* GetPlotByTag(unsigned long tag) const;
    /// The first plot of exactly that title, or null.
    CPlot* GetPlot(CString const& title) const;
    /// −1 when the plot is not of this graph.
    int GetPlotIndex(CPlot const* plot) const { return m_plotArray ? m_plotArray->GetPlotIndex(plot) : -1; }
    /// Appends the tags of the plots of a kind.
    void GetPlotTags(ItemType type, CDWordArray& tags) const;
    /// Non-zero when some plot is of the kind.
    int HasPlotType(ItemType type) const;
    /// Detach without deleting: the plot or curve then belongs to the caller. False when it is not of this graph.
    bool RemovePlot(CPlot* plot);
    /// A curve, likewise.
    bool RemovePlotComponent(CPlotComponent* curve);
    /// The first curve with that tag or that exact title, or null.
    CPlotComponent* GetComponentByTag(unsigned long tag) const;
    CPlotComponent* GetComponentByName(CString const& title) const;
    /// Non-zero when the x values of some curve are dates.
    int HasDateCurve() const { return m_plotArray ? m_plotArray->HasDateCurve() : 0; }
    /// Whether some plot has a curve.
    int IsDefined() const;
    /// The first colour of the plot colour table that no curve uses; beyond the table a pseudo-random one, the same
    /// every time.
    unsigned long GetColour() const;

    /// The next tag; the first is 1.
    unsigned long GetNewTag() { return ++m_tagCounter; }
    /// The component, plot or curve with that tag, or null.
    CObject* GetObjectByTag(unsigned long tag) const;
    /// The graph's own number, for the host; 0 at first.
    unsigned long GetTag() const { return m_tag; }
    void SetTag(unsigned long tag) { m_tag = static_cast<DWORD>(tag); }

    /// Weak references: the host clears them before it deletes what they point to.
    void SetActivePlot(CPlot* plot, ScriptType type);
    void SetActiveCurve(CPlotComponent* curve, ScriptType type);
    CPlot* GetActivePlot() const { return m_activePlot; }
    CPlotComponent* GetActiveCurve() const { return m_activeCurve; }
    ScriptType GetActiveScriptType() const { return m_activeScriptType; }

    /// The selected component, plot, caption or colour key; null when nothing is selected.
    CGraphComponent* GetSelectedComponent() const;
    /// Nothing is selected afterwards.
    void ClearSelection();

    /// Non-zero: the next draw is a complete one.
    int GetModifiedFlag() const { return m_modified; }
    void SetModifiedFlag(int modified) { m_modified = modified; }
    /// Those of the graph and of its components, as at the end of a draw.
    void ResetModifiedFlags();

    /// A hint that is not 0 is kept as the previous one when the next is set.
    void SetHint(long hint);
    long GetHint() const { return m_hint; }
    long GetPrevHint() const { return m_prevHint; }

    /// The host's window and the part of it that the graph takes up, in device pixels.
    CRect GetWindowRect() const { return m_windowRect; }
    CRect GetGraphRect() const { return m_graphRect; }
    void SetGraphRect(CRect const& graph);
    void SetGraphAndWindowRect(CRect const& graph, CRect const& window);
    /// The graph rectangle as fractions of the window rectangle, from the rectangles; and back. An empty window leaves
    /// the fractions as they are.
    void UpdateNormalisedRect();
    void UpdateGraphRect();
    /// Where the first sizing of a 2D graph puts the graph rectangle.
    void SetInitialNormalisedRect(CRealPoint const& origin, CRealSize const& size);

    CString GetTitle() const { return m_title; }
    void SetTitle(CString const& title) { Change(m_title, title); }
    /// Non-zero, as at first: a frame round the graph rectangle.
    int GetGraphFrameOn() const { return m_frameOn; }
    void SetGraphFrameOn(int on) { Change(m_frameOn, on); }
    WindowHandle GetWindow() const { return m_window; }
    void SetWindow(WindowHandle window) { Change(m_window, window); }
    /// A date and the data value that it stands for; only stored.
    COleDateTime GetRefDateTime() const { return m_refDateTime; }
    void SetRefDateTime(COleDateTime const& date) { m_refDateTime = date; }
    double GetRefDataVal() const { return m_refDataVal; }
    void SetRefDataVal(double value) { m_refDataVal = value; }
    /// 2D or 3D.
    GraphDataDimension GetDataDimension() const { return m_dataDimension; }
    GraphType GetType() const { return m_type; }
    /// The context in use during a draw, else null.
    CDC* GetDC() const { return m_dc; }

    /// Called on the target after every completed draw; the call may destroy the graph. Null for none. Not owned.
    void SetGraphDrawnCallback(CObject* target, void (CObject::*method)());

protected:
    /// Deletes every component.
    virtual void ClearComponents();
    virtual bool GraphComponentModified() const;
    /// After loading: finds the components that have shortcuts.
    virtual void FindComponents();
    /// Every tag that GetObjectByTag finds something for.
    std::unordered_set<DWORD> GetAllTags() const;
    bool PlotComponentModified() const;
    bool PlotComponentDataModified() const;
    void SetComponentTags();
    void SetPlotArray(CPlotArray* plots) { m_plotArray = plots; }
    /// Adds the plot under a new tag; null, and the plot is gone, without a plot array.
    CPlot* TakePlot(std::unique_ptr<CPlot> plot);

    template <typename T, typename V> void Change(T& setting, V const& value)
    {
        setting = static_cast<T>(value);
        m_modified = 1;
    }

    GraphType m_type = gtDefault;
    GraphDataDimension m_dataDimension = gd2D;
    int m_modified = 1;
    int m_sized = 0;
    int m_rectModified = 0;
    /// The off-screen picture of the graph without its annotation.
    CDIB m_dib;
    CRect m_windowRect;
    CRect m_graphRect;
    CRealPoint m_normalisedOrigin;
    CRealPoint m_normalisedSize;
    CRealPoint m_initialOrigin;
    CRealSize m_initialSize;
    CDC* m_dc = nullptr;

    /// One draw at a time: busy from its start to its end, also when an exception ends it.
    class DrawScope {
    public:
        explicit DrawScope(CGraph& graph);
        ~DrawScope();
        DrawScope(DrawScope const&) = delete;
        DrawScope& operator=(DrawScope const&) = delete;
        /// Ends the draw: resets the flags, calls the drawn callback, and after a printed page asks for a complete
        /// next draw. False when the callback destroyed the graph.
        bool Finish(bool printed);

    private:
        CGraph& m_graph;
        std::weak_ptr<int> m_alive;
        PrintedLinesScope m_printedLines;
    };
    bool IsBusy() const { return m_busy != 0; }

private:
    CPlotArray* m_plotArray = nullptr;
    OwnedArray<CGraphComponent> m_components;
    CString m_title = "untitled";
    DWORD m_tag = 0;
    int m_frameOn = 1;
    COleDateTime m_refDateTime { 2000, 1, 1, 0, 0, 0 };
    double m_refDataVal = 0.0;
    ScriptType m_activeScriptType = stNone;
    CPlotComponent* m_activeCurve = nullptr;
    CPlot* m_activePlot = nullptr;
    DWORD m_tagCounter = 0;
    CObject* m_callbackTarget = nullptr;
    void (CObject::*m_callbackMethod)() = nullptr;
    long m_hint = 0;
    long m_prevHint = 0;
    WindowHandle m_window = nullptr;
    int m_busy = 0;
    std::shared_ptr<int> m_alive = std::make_shared<int>();
};

} // namespace ombrel
