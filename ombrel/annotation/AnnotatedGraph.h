#pragma once
#include "ombrel/annotation/CaptionArray.h"
#include "ombrel/annotation/ColourKeyArray.h"
#include "ombrel/annotation/Legend.h"
#include "ombrel/model/Graph.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// A graph that is drawn with annotation over its plots: a legend, captions and colour keys. The common part of 2D and
/// 3D graphs; in archives it does not appear.
///
/// The derived graph lays out and draws a body; kept off screen, it is drawn again only when something changed. The
/// annotation is drawn over it afresh each time. Rectangles and points of the graph are device pixels that count from
/// the corner of the window it is drawn in. Errors: Draw throws CResourceException* when a bitmap cannot be made.
class OMBREL_EXPORT CAnnotatedGraph : public CGraph {
public:
    /// Draws the graph into the rectangle of the context. Does nothing while a draw is in progress or when the
    /// rectangle is empty.
    void Draw(CDC* dc, CRect const& rect, PaintMode mode) override;
    /// Draws straight into the target, a rectangle of another drawing, in the proportions that the graph has in its own
    /// window, and leaves the graph laid out as it was. Does nothing where Draw does nothing, and when that drawing's
    /// window is empty.
    void DrawEmbedded(CDC* dc, CRect const& window, CRect const& target) override;
    /// Stretches the finished off-screen picture onto the printer, at the print rectangle of the user's preferences,
    /// in millimetres from the page's corner.
    virtual void DrawToPrinter(CDC* printer);
    /// Works out where everything lies in a draw of that window on a context like this one, without drawing: for hosts
    /// that place annotation by CAnnotation::Measure. Does nothing where Draw does nothing.
    void LayOut(CDC* dc, CRect const& window);
    /// The finished picture of the last off-screen draw.
    CDIB& GetDisplayDIB();

    CCaptionArray* GetCaptionArray() const override;
    CColourKeyArray* GetColourKeyArray() const override;
    CLegend* GetLegend() const override;
    CCaption* AddCaption(CPoint at) override;
    void ClearCaptions() override;
    /// Adds a colour key at a device point for the curve with that tag; null without colour keys. Owned by the graph.
    CColourKey* AddColourKey(CPoint at, unsigned long curveTag);

    // Steps of a draw.

    /// Gives the graph this rectangle, and what is in it its place.
    virtual void SetGraphSize(CRect const& rect) { m_graphRect = rect; }
    void DrawCaptions(CPort* port);
    /// Drops the keys of curves that need none any more first.
    void DrawColourKeys(CPort* port);
    void DrawLegend(CPort* port);

protected:
    /// Called before anything of a draw, and after all of it but the host's callback, however the draw ends.
    virtual void BeginDraw(CDC& /*target*/) { }
    virtual void EndDraw() { }
    /// Brings up to date what the drawing depends on, before it is laid out: here all components.
    virtual void UpdateForDraw() { UpdateComponentParameters(); }
    /// Whether a draw in this mode goes through the graph's own bitmap, rather than straight to the target.
    virtual bool IsDrawnOffScreen(CDC const& /*target*/, PaintMode mode) const { return mode == pmOffScreen; }
    /// Copies the finished picture to the window's corner on the target.
    virtual void CopyPicture(CDC& target, CDIB& picture);
    /// A rectangle of a window of one size in the same place of one of another.
    virtual CRect Embedded(CRect const& rect, CSize from, CSize to) const;
    /// Whether this is the context of the graph's own bitmap.
    bool IsOwnBitmap(CDC const& dc) const { return &dc == m_dib.GetDC(); }
    /// Gives the bitmaps back; the next draw makes them again.
    void ReleaseBitmaps();
    /// Draws everything but frame and annotation, laid out already; the window's corner is the context's origin.
    virtual void DrawBody(CDC&) { }
    /// Draws what lies over the body: here captions, colour keys, legend.
    virtual void DrawAnnotation(CPort& port);
    /// The real rectangle that lies on the graph rectangle in the port that annotation is drawn through.
    virtual CRealRect GetRealRect() const { return { 0.0, 1.0, 1.0, 0.0 }; }
    /// Exchanges what layout has worked out besides the graph rectangle with what was put aside: called before and
    /// after the graph is laid out for a drawing that is not its own.
    virtual void ExchangeLayout() { }
    /// Leaves out the annotation, which every draw draws afresh.
    bool GraphComponentModified() const override;

    /// Add the component, empty and switched off, when the graph has none yet.
    void CreateLegend();
    void CreateColourKeyArray();
    void CreateCaptionArray();
    void ClearComponents() override;
    void FindComponents() override;
    /// Whether the component is the legend, the captions or the colour keys.
    bool IsAnnotation(CGraphComponent const* component) const;

private:
    class OwnPlace;
    class DrawSteps;
    bool IsComplete(CDC const& target) const;
    void LayOutInWindow();
    void DrawOffScreen(CDC& target);
    template <typename LayOutStep> void DrawDirect(CDC& dc, CPoint corner, LayOutStep layOut);
    void DrawBodyAndFrame(CDC& dc);
    bool HasAnnotation() const;
    void DrawAnnotationOn(CDC& dc);
    void Present(CDC& target);

    CCaptionArray* m_captionArray = nullptr;
    CColourKeyArray* m_colourKeyArray = nullptr;
    CLegend* m_legend = nullptr;
    CDIB m_displayDIB;
    /// The finished picture is just the body, and the display bitmap has not been filled with it yet.
    bool m_displayIsBody = false;
    /// The graph's bitmap holds the body as it was last drawn, and no draw elsewhere has cleared flags since.
    bool m_bodyIsDrawn = false;
    CSize m_bitmapSize;
};

} // namespace ombrel
