#pragma once
#include "ombrel/drawing/FillPattern.h"
#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/platform/framework/Export.h"

namespace ombrel {

/// The values of one curve of a bar plot whose curves share their x values; its plot draws them. The common part of
/// the clustered and the stacked curves: in archives and among the run-time classes it does not appear.
class OMBREL_EXPORT SeriesBarCurve : public C2DCurve {
public:
    SeriesBarCurve(CPlot* plot, int useGraphColour, CString const& title, ItemType type);
    void Serialize(CArchive& ar) override;
    /// With the fill pattern.
    std::optional<LegendEntry> GetLegendEntry() const override;

    /// Hatch style; 6 is solid, as is a style that does not exist.
    int GetFillPattern() const { return m_fillPattern; }
    void SetFillPattern(int pattern) { m_fillPattern = pattern; }

private:
    int m_fillPattern = kSolidFillPattern;
};

} // namespace ombrel
