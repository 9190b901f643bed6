#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/Types.h"

namespace ombrel {

class CGraph;
class CPort;

/// 0: the graph is being laid out, extents are measured and nothing is drawn. 1: drawing.
enum DrawMode : int { dmMeasure = 0, dmDraw = 1 };

/// A part of a graph that draws itself: axes, a grid, the legend, the arrays of plots, captions and colour keys.
///
/// Lifetime: owned by its graph; the pointer to the graph is not owned.
class OMBREL_EXPORT CGraphComponent : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }

    /// For loading: without a graph, and modified.
    CGraphComponent()
        : m_modified(1)
    {
    }
    explicit CGraphComponent(CGraph* graph)
        : m_graph(graph)
    {
    }
    void Serialize(CArchive& ar) override;

    virtual void SetGraph(CGraph* graph) { m_graph = graph; }
    virtual void SetColour(unsigned long colour) { Change(m_colour, colour); }
    /// The main colour; what else has colours of its own says so.
    virtual unsigned long GetColour() const { return m_colour; }
    /// Non-zero after a change that asks for another draw, until that is done.
    virtual int Modified() const { return m_modified; }
    /// Likewise, of changes that move 3D curves in their box.
    virtual int ZValPropertyModified() const { return m_zValPropertyModified; }
    /// 2D drawing; does nothing here.
    virtual void Draw(CPort*) { }
    /// 3D drawing; does nothing here.
    virtual void Draw() { }
    /// Recomputes what depends on the graph: ranges, rectangles; does nothing here.
    virtual void UpdateGraphParameters() { }
    /// Puts both flags back, at the end of a draw.
    virtual void ResetModifiedFlags();
    /// This component, or one inside it, with that tag; null when there is none.
    virtual CObject* GetObjectByTag(unsigned long tag);
    /// Release and make again what belongs to a device; do nothing here.
    virtual void InvalidateDeviceObjects() { }
    virtual void RestoreDeviceObjects() { }

    /// Whether the component is an array of others, which then stand for it in selections.
    virtual bool IsArray() const { return false; }
    /// The components of an array, from 0 on; none here.
    virtual int GetNumItems() const { return 0; }
    virtual CGraphComponent* GetItem(int) const { return nullptr; }

    /// Null outside a graph.
    CGraph* GetGraph() const { return m_graph; }
    /// The number by which its graph finds the component; 0 outside a graph.
    unsigned long GetTag() const { return m_tag; }
    void SetTag(unsigned long tag) { m_tag = static_cast<DWORD>(tag); }
    DrawMode GetDrawMode() const { return m_drawMode; }
    void SetDrawMode(DrawMode mode) { m_drawMode = mode; }
    void SetModified(int modified) { m_modified = modified; }
    void SetZValPropertyModified(int modified) { m_zValPropertyModified = modified; }
    int GetSelected() const { return m_selected; }
    /// Selecting a component clears every other selection of the graph.
    void SetSelected(int selected);

protected:
    /// Stores a setting and raises the modified flag.
    template <typename T, typename V> void Change(T& setting, V const& value)
    {
        setting = static_cast<T>(value);
        m_modified = 1;
    }
    /// Stores a setting and raises no flag of the component's own; the graph's next draw is a complete one all the
    /// same.
    template <typename T, typename V> void Store(T& setting, V const& value)
    {
        setting = static_cast<T>(value);
        SetGraphModified();
    }
    /// The next draw of the graph, if there is one, is a complete one: after a change that no flag of what is left
    /// tells.
    void SetGraphModified();

private:
    CGraph* m_graph = nullptr;
    COLORREF m_colour = 0;
    DrawMode m_drawMode = dmDraw;
    int m_selected = 0;
    int m_modified = 0;
    int m_zValPropertyModified = 0;
    DWORD m_tag = 0;
};

} // namespace ombrel
