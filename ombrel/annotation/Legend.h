#pragma once
#include "ombrel/annotation/Annotation.h"
#include "ombrel/model/LegendEntry.h"
#include "ombrel/platform/framework/Export.h"

#include <vector>

namespace ombrel {

/// The legend of a graph: lists its curves, each with a sample and its title.
///
/// Off, and not created, until Create. Titles are not broken into lines. In an entry without a line or a symbol of its
/// own, as curves of 3D graphs are, the stretch of line is thin and the symbol is left out. Lifetime: owned by its
/// graph. Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT CLegend : public CAnnotation {
public:
    /// What stands before each title: a patch filled as the curve is, a stretch of its line, or its symbol.
    enum Style : int { lsFill = 0, lsLine = 1, lsSymbol = 2 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading.
    CLegend() = default;
    explicit CLegend(CGraph* graph)
        : CAnnotation(graph)
    {
    }
    void Serialize(CArchive& ar) override;

    /// Lists the curves of the graph's plots that show themselves in legends, in order. Every draw does that, too.
    void UpdateGraphParameters() override;
    /// Follows the graph's size and draws; entries outside the context's clip are left out.
    void Draw(CPort* port) override;
    using CGraphComponent::Draw;
    CSize Measure(CDC* dc) override;

    /// Switches the legend off and gives it its first settings back; font, rectangle and position stay.
    void Delete();
    /// Raises no flag: a legend is drawn afresh at every draw.
    void SetOn(int on) { m_on = on; }
    int GetStyle() const { return m_style; }
    void SetStyle(int style) { Change(m_style, style); }
    /// Pixels; holds until the next draw, which follows the graph's size.
    void SetFontHeight(int height) { m_fontHeight = height; }

private:
    /// From one entry's top to the next, as a multiple of an entry's height; printed 3D graphs widen it.
    static constexpr double kLineSpacing = 1.1;
    static constexpr double kPrintedLineSpacing = 1.463;

    /// Sizes in pixels that follow from the font and the titles.
    struct Layout {
        int sampleWidth = 0;
        CSize cell;
        /// From one entry's top to the next.
        int step = 0;
        CSize size;
    };
    void UpdateFontHeight(CDC& dc, Frame const& frame);
    /// With the legend's font selected.
    Layout LayOut(CDC const& dc) const;
    void DrawEntries(CPort& port, Layout const& layout) const;

    /// One of Style, unless an archive or a host brought another value, which draws as patches do.
    int m_style = lsFill;
    double m_lineSpacing = kLineSpacing;
    std::vector<LegendEntry> m_entries;
};

} // namespace ombrel
