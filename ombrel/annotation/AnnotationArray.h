#pragma once
#include "ombrel/drawing/Port.h"
#include "ombrel/model/Graph.h"
#include "ombrel/platform/framework/ArchiveFields.h"

#include <memory>

namespace ombrel {

/// The boxes of one kind that float over a graph, in drawing order. Owns them.
///
/// The common part of the caption array and the colour-key array; in archives it does not appear.
/// Errors: only Serialize throws (CArchiveException*, newly allocated).
template <typename T> class AnnotationArray : public CGraphComponent {
public:
    AnnotationArray() = default;
    explicit AnnotationArray(CGraph* graph)
        : CGraphComponent(graph)
    {
    }

    void Serialize(CArchive& ar) override
    {
        CGraphComponent::Serialize(ar);
        ArchiveFields f(ar);
        f.Version(1);
        f.Owned(m_items);
    }
    /// Everything in order. In a graph that clips its plots to a rectangle the port clips to it meanwhile: what is
    /// drawn past the port, as the boxes of annotation are, may lie outside.
    void Draw(CPort* port) override
    {
        CRect clip;
        if (GetGraph() && GetGraph()->GetPlotClipRect(clip))
            port->SetClipRect(&clip);
        for (T* item : m_items)
            item->Draw(port);
        port->SetClipRect(nullptr);
    }
    using CGraphComponent::Draw;
    /// The graph of the array and of everything in it.
    void SetGraph(CGraph* graph) override
    {
        CGraphComponent::SetGraph(graph);
        for (T* item : m_items)
            item->SetGraph(graph);
    }
    /// Whether the array itself or something in it was modified.
    int Modified() const override
    {
        for (T const* item : m_items) {
            if (item->Modified())
                return 1;
        }
        return CGraphComponent::Modified();
    }
    void ResetModifiedFlags() override
    {
        CGraphComponent::ResetModifiedFlags();
        for (T* item : m_items)
            item->ResetModifiedFlags();
    }
    /// The array itself, or what is in it, with that tag; null when there is none.
    CObject* GetObjectByTag(unsigned long tag) override
    {
        if (tag == GetTag())
            return this;
        for (T* item : m_items) {
            if (CObject* const found = item->GetObjectByTag(tag))
                return found;
        }
        return nullptr;
    }
    bool IsArray() const override { return true; }
    int GetNumItems() const override { return m_items.GetSize(); }
    CGraphComponent* GetItem(int index) const override { return m_items.GetAt(index); }

    /// Takes the object over; returns its index.
    int Add(T* item) { return m_items.Add(std::unique_ptr<T>(item)); }
    /// Not owned by the caller; null outside the array.
    T* GetAt(int index) const { return m_items.GetAt(index); }
    int GetSize() const { return m_items.GetSize(); }
    /// Deletes the object and raises the array's modified flag; 0 outside the array, else 1.
    int RemoveAt(int index)
    {
        if (!m_items.Detach(index))
            return 0;
        this->SetModified(1);
        return 1;
    }
    /// Empties the array without deleting: the objects belong to whoever holds them.
    void RemoveAll() { m_items.DetachAll(); }
    /// Deletes every object.
    void Clear() { m_items.DeleteAll(); }

protected:
    OwnedArray<T> const& GetItems() const { return m_items; }

private:
    OwnedArray<T> m_items;
};

} // namespace ombrel
