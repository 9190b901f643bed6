#pragma once
#include "ombrel/colour/Annotation.h"

namespace ombrel {

/// The legend of a graph: lists its curves, each with a sample and its title.
///
/// Off, and not created, until Create. Lifetime: owned by its graph.
/// Errors: only Serialize throws (CArchiveException*, newly allocated).
class CLegend : public CAnnotation {
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

    /// One of Style, unless an archive or a host brought another value.
    int m_style = lsFill;
    double m_lineSpacing = kLineSpacing;
    int m_fontHeight = 0;
};

} // namespace ombrel
