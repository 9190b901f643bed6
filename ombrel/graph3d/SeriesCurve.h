#pragma once
#include "ombrel/foundation/Vertex.h"
#include "ombrel/graph3d/GridNodeCurve.h"
#include "ombrel/graph3d/RowColours.h"
#include "ombrel/graph3d/SeriesSettings.h"
#include "ombrel/model/NamesOtherThan.h"
#include "ombrel/platform/framework/Export.h"

#include <memory>
#include <vector>

namespace ombrel {

class SeriesDrawing;

/// What series are drawn with, whatever their points come from: lines one behind the other, and under each of them a
/// stack down to the baseline.
///
/// Lines have an x of their own and run along y, or in another row mode the reverse. A missing point breaks its line.
/// What a setting means, and its value at first, stands at the field of SeriesSettings that has its name.
template <typename Base> class OMBREL_EXPORT SeriesCurve : public Base {
public:
    explicit SeriesCurve(CPlot* plot, int useGraphColour);
    ~SeriesCurve() override;

    int GetRowMode() const { return m_series.rowMode; }
    virtual void SetRowMode(int mode) { this->Change(m_series.rowMode, mode); }
    int GetLineStyle() const { return m_series.lineStyle; }
    void SetLineStyle(int style) { this->Change(m_series.lineStyle, style); }
    double GetThicknessScaleFac() const { return m_series.thicknessScaleFac; }
    void SetThicknessScaleFac(double factor) { this->Change(m_series.thicknessScaleFac, factor); }
    COLORREF GetLineColour() const { return m_series.lineColour; }
    void SetLineColour(COLORREF colour) { this->Change(m_series.lineColour, colour); }
    COLORREF GetStackColour() const { return m_series.stackColour; }
    void SetStackColour(COLORREF colour) { this->Change(m_series.stackColour, colour); }
    /// Counts when the automatic baseline is off.
    double GetBaseline() const { return m_series.baseline.value; }
    void SetBaseline(double z) { this->Change(m_series.baseline.value, z); }
    int GetAutoBaseline() const { return m_series.baseline.automatic; }
    void SetAutoBaseline(int on) { this->Change(m_series.baseline.automatic, on); }
    int GetDrawLines() const { return m_series.drawLines; }
    void SetDrawLines(int on) { this->Change(m_series.drawLines, on); }
    int GetDrawStacks() const { return m_series.drawStacks; }
    void SetDrawStacks(int on) { this->Change(m_series.drawStacks, on); }
    /// SeriesSettings::ColourBy.
    int GetLineColourDescription() const { return m_series.lineColourDescription; }
    void SetLineColourDescription(int description) { this->Change(m_series.lineColourDescription, description); }
    void SetLineColourDescription(NamesOtherThan<SeriesSettings::ColourBy> auto) = delete;
    int GetStackColourDescription() const { return m_series.stackColourDescription; }
    void SetStackColourDescription(int description) { this->Change(m_series.stackColourDescription, description); }
    void SetStackColourDescription(NamesOtherThan<SeriesSettings::ColourBy> auto) = delete;

    /// The automatic baseline on the graph's z axis, whether it is used or not; data units.
    double GetBaselineAuto() const;
    /// The baseline that is used, in data units and in the box.
    double GetWorldBaseline() const;
    double GetViewBaseline() const;
    static COLORREF GetRowColour(int row) { return ombrel::GetRowColour(row); }

    virtual int GetNumSubcurves() const = 0;
    /// The points of line k in data units. Missing ones have a z that is (IsGridGap).
    virtual void GetSubcurve(int k, std::vector<CVertex>& points) const = 0;
    /// Whether line k is left out: it has an x (or y) of its own, and this lies outside of the data box.
    int SubcurveClipped(int k) const;

    int NeedsColourKey() const override { return m_series.UsesColourMap() ? 1 : 0; }
    COLORREF GetColourOfValue(double value, double low, double high) const override
    {
        return this->GetColourmap()->GetColour(value, low, high);
    }
    /// A patch of the stacks' colour, or of the lines' where there are no stacks; none for more than one colour.
    std::optional<LegendEntry> GetLegendEntry() const override;
    void Render() override;
    void InvalidateDeviceObjects() override;

protected:
    /// Goes up with every change of the points.
    virtual std::uint64_t GetDataRevision() const = 0;

    SeriesSettings m_series;

private:
    /// Whether each line has an x, or in the other row mode a y, of its own.
    bool HasFixedPlaces() const;
    bool IsClipped(std::vector<CVertex> const& points) const;

    std::unique_ptr<SeriesDrawing> m_drawing;
};

extern template class SeriesCurve<C3DCurve>;
extern template class SeriesCurve<GridNodeCurve>;

} // namespace ombrel
