#pragma once
#include "ombrel/graph3d/Baseline.h"
#include "ombrel/graph3d/RowColours.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

/// How 3D bars look.
struct Bar3DSettings {
    /// Of the default widths along x and y.
    double widthScaleX = 1.0;
    double widthScaleY = 1.0;
    Baseline baseline;

    /// As documents have them.
    void Serialize(ArchiveFields& f) { f.Double(widthScaleX, widthScaleY, baseline.value).Int(baseline.automatic); }
    friend bool operator==(Bar3DSettings const& a, Bar3DSettings const& b) = default;
};

/// The settings of bars, for the curves that draw these; Bar3DSettings has what they are at first.
///
/// Colour descriptions: 0 the curve's colour, 1 the colour map's by the bar's z, 2 and 3 the row colour of its place
/// along x and along y; what is above is black.
template <typename Base> class BarAccessors : public Base {
public:
    using Base::Base;
    double GetBarWidthScaleFacX() const { return m_bars.widthScaleX; }
    void SetBarWidthScaleFacX(double factor) { this->Change(m_bars.widthScaleX, factor); }
    double GetBarWidthScaleFacY() const { return m_bars.widthScaleY; }
    void SetBarWidthScaleFacY(double factor) { this->Change(m_bars.widthScaleY, factor); }
    /// Counts when the automatic baseline is off.
    double GetBaseline() const { return m_bars.baseline.value; }
    void SetBaseline(double z) { this->Change(m_bars.baseline.value, z); }
    int GetAutoBaseline() const { return m_bars.baseline.automatic; }
    void SetAutoBaseline(int on) { this->Change(m_bars.baseline.automatic, on); }
    /// The automatic one on the graph's z axis, whether it is used or not.
    double GetBaselineAuto() const
    {
        BoxAxes axes;
        this->GetBoxAxes(axes);
        return Baseline::GetAutomatic(axes[2]);
    }
    static COLORREF GetRowColour(int row) { return ombrel::GetRowColour(row); }
    int NeedsColourKey() const override { return this->GetColourDescription() == 1 ? 1 : 0; }
    COLORREF GetColourOfValue(double value, double low, double high) const override
    {
        return this->GetColourmap()->GetColour(value, low, high);
    }

protected:
    /// That of a bar whose end lies at z.
    COLORREF GetBarColourAt(double z, int row, int col) const
    {
        switch (this->GetColourDescription()) {
        case 0:
            return static_cast<COLORREF>(this->GetColour());
        case 1:
            return this->GetLUTColour(z);
        case 2:
            return GetRowColour(row);
        case 3:
            return GetRowColour(col);
        default:
            return 0;
        }
    }

    Bar3DSettings m_bars;
};

} // namespace ombrel
