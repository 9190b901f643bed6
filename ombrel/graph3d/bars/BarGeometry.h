#pragma once
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/Bar3DSettings.h"
#include "ombrel/graph3d/render/ColourMapKey.h"
#include "ombrel/graph3d/render/FaceBatch.h"

namespace ombrel {

/// The lengths of a bar's sides along x and y.
struct BarWidths {
    double x = 0.0;
    double y = 0.0;
};

/// The share of its cell that a bar covers along x and y.
inline constexpr double kBarShare = 0.75;

/// What a curve's bars follow from, besides its data.
struct BarsKey {
    BarsKey() = default;
    BarsKey(C3DCurve const& curve, std::uint64_t revision, Bar3DSettings const& settings);
    friend bool operator==(BarsKey const& a, BarsKey const& b) = default;

    /// Of the data.
    std::uint64_t revision = 0;
    BoxAxes axes;
    Bar3DSettings settings;
    CurveColoursKey colours;
};

/// Makes the bars of a curve in a batch.
class BarBuilder {
public:
    /// Widths are box units; the batch is not owned.
    BarBuilder(FaceBatch& batch, BoxAxes const& axes, double baseline, BarWidths const& widths);
    /// A box from the baseline to a place in data units. One as high as the baseline is flat; a place that is not
    /// finite has none.
    void Add(CVertex const& place, COLORREF colour);

private:
    FaceBatch& m_batch;
    BoxAxes m_axes;
    double m_base;
    BarWidths m_widths;
};

} // namespace ombrel
