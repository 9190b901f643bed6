#pragma once
#include "ombrel/annotation/Annotation.h"
#include "ombrel/model/LegendEntry.h"
#include "ombrel/model/NamesOtherThan.h"
#include "ombrel/platform/framework/Export.h"

#include <vector>

namespace ombrel {

class CPlotComponent;

/// The legend of a graph: lists its curves, each with a sample and its title.
///
/// Off, and not created, until Create. Titles are not broken into lines. In an entry without a line or a symbol of its
/// own, as curves of 3D graphs are, the stretch of line is thin and the symbol is left out. Lifetime: owned by its
/// graph. Errors: only Serialize throws (CArchiveException*, newly allocated).
class OMBREL_EXPORT CLegend : public CAnnotation {
public:
    /// What stands before each title: a patch filled as the curve is, a stretch of its line, or its symbol; what the
    /// curve is drawn with, a patch or a stretch of its line with its symbol in the middle; or likewise on samples as
    /// narrow as patches, the last curve first, as stacks are drawn from the bottom up.
    enum Style : int { lsFill = 0, lsLine = 1, lsSymbol = 2, lsLineAndSymbol = 3, lsStack = 4 };

    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    /// For loading.
    CLegend() = default;
    explicit CLegend(CGraph* graph)
        : CAnnotation(graph)
    {
    }
    void Serialize(CArchive& ar) override;

    /// Lists the curves of the graph's plots that show themselves in legends, in order, or for stacks from the last to
    /// the first. Every draw does that, too.
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
    void SetStyle(NamesOtherThan<Style> auto) = delete;
    /// Pixels; holds until the next draw, which follows the graph's size.
    void SetFontHeight(int height) { m_fontHeight = height; }

protected:
    /// The steps of a draw that a host's own class may override, besides those of CAnnotation. Entries are counted from
    /// 0 in the order of the list; one that is not there throws CInvalidArgException* (newly allocated).

    void UpdateFontHeight3D(CDC* dc) override;
    /// The extent of the widest title in the context's font, the first of equals; (0, 0) without entries.
    virtual CSize GetMaxTextSize(CDC* dc);
    /// An entry's size: a third of its height, the sample and the widest title.
    virtual CSize GetCellSize(CDC* dc);
    /// Where sample and title stand in an entry's cell. The sample is a square, or with lines the horizontal stretch
    /// from its left to its right end.
    virtual void GetLegendCellRects(CRect cell, CRect& sample, CRect& text, CDC* dc);
    /// The size of the whole with the legend's font; the number means nothing.
    virtual CSize GetDefaultSize(CDC* dc, int);
    /// Whether the curve's patch has a fill pattern, and which; −1 for none.
    virtual int IsFillPatternCurve(CPlotComponent* curve);
    virtual int GetFillPattern(CPlotComponent* curve);
    virtual void DrawLine(CPort* port, CPoint from, CPoint to, int entry);
    virtual void DrawSymbol(CPort* port, CRect square, int entry);

private:
    /// From one entry's top to the next, as a multiple of an entry's height; printed 3D graphs widen it.
    static constexpr double kLineSpacing = 1.1;
    static constexpr double kPrintedLineSpacing = 1.463;

    /// From an entry's height.
    int SampleWidth(int height) const { return HasLines() ? 5 * height : 3 * height / 2; }
    bool HasLines() const { return m_style == lsLine || m_style == lsLineAndSymbol; }
    /// From one entry's top to the next.
    int Step(int height) const;
    CSize SizeOf(CSize cell) const;
    /// As the curve is drawn.
    void DrawSample(CPort& port, CRect const& sample, CRect const& cell, int index);
    void DrawEntries(CPort& port, CSize cell);

    /// One of Style, unless an archive or a host brought another value, which draws as patches do.
    int m_style = lsFill;
    double m_lineSpacing = kLineSpacing;
    /// Of the draw in progress.
    int m_cellHeight = 0;
    std::vector<LegendEntry> m_entries;
};

} // namespace ombrel
