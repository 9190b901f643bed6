#pragma once
#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/platform/gdi/DC.h"
#include "tests/platform/gdi/Recorded.h"

#include <memory>
#include <vector>

namespace ombrel::test {

/// A curve that shows itself in legends as it is told to, or not at all.
class ListedCurve : public CPlotComponent {
public:
    explicit ListedCurve(std::optional<LegendEntry> const& entry)
        : m_entry(entry)
    {
    }
    std::optional<LegendEntry> GetLegendEntry() const override { return m_entry; }

private:
    std::optional<LegendEntry> m_entry;
};

/// A graph with a legend, captions and one plot, whose annotation follows whatever frame a test gives it.
class FramedGraph : public CAnnotatedGraph {
public:
    FramedGraph()
    {
        CreateLegend();
        CreateCaptionArray();
        auto* const plots = new CPlotArray(this);
        AddComponent(plots);
        SetPlotArray(plots);
        plots->Add(new CPlot(this));
    }
    void List(std::optional<LegendEntry> const& entry)
    {
        GetPlotArray()->GetAt(0)->AddComponent(new ListedCurve(entry));
    }
    void List(CString const& title)
    {
        LegendEntry entry;
        entry.title = title;
        List(entry);
    }
    /// A frame of one rectangle, as that of a 2D graph is.
    void SetFrame(CRect const& rect)
    {
        frame.emplace();
        frame->reference = rect;
        frame->textArea = rect;
    }
    std::optional<AnnotationFrame> GetAnnotationFrame(AnnotationKind, CRect const&) const override { return frame; }

    std::optional<AnnotationFrame> frame;
};

/// A context that records: of a screen, or of a page whose 600 dots to the inch call themselves 300.
class Recorder {
public:
    explicit Recorder(bool page = false, CSize size = CSize(1000, 1000))
        : m_surface(std::make_shared<RecordingSurface>(
            size, page ? DeviceCapabilities { 2, 297, 210, 7016, 4961, 300, 300 } : DeviceCapabilities(), page))
        , m_dc(m_surface)
        , m_port(&m_dc, CRect({}, size), CRect({}, size), CRealRect(0, 1, 1, 0))
    {
    }
    CDC& Dc() { return m_dc; }
    /// What the component draws: all primitives, or those of one kind.
    std::vector<RecordedPrimitive> Draw(CGraphComponent& component)
    {
        m_surface->Clear();
        component.Draw(&m_port);
        return m_surface->Primitives();
    }
    template <typename Kind> std::vector<Kind> Draw(CGraphComponent& component)
    {
        return OfKind<Kind>(Draw(component));
    }

private:
    std::shared_ptr<RecordingSurface> m_surface;
    CDC m_dc;
    CPort m_port;
};

} // namespace ombrel::test
