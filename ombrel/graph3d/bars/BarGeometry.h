#pragma once
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/Bar3DSettings.h"
#include "ombrel/graph3d/render/ColourMapKey.h"
#include "ombrel/graph3d/render/FaceBatch.h"

#include <array>
#include <vector>

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
    BarsKey(C3DCurve const& curve, C3DGraph const& graph, std::uint64_t dataRevision, Bar3DSettings const& barSettings);
    friend bool operator==(BarsKey const& a, BarsKey const& b) = default;

    /// Of the data.
    std::uint64_t revision = 0;
    BoxAxes axes;
    Bar3DSettings settings;
    CurveColoursKey colours;
    /// The eighth of a circle round the box in which the eye is, counted from the x axis against the clock.
    int eyeSector = 0;
};

/// Upright boxes, of which the sides that look away from the viewer are not drawn.
class BarBatch {
public:
    struct Bar {
        /// Data units.
        CVertex end;
        COLORREF colour = 0;
    };
    void Clear();
    /// Adds boxes from the baseline, in data units, to the ends of bars. One as high as the baseline is flat; a bar
    /// that is not finite is left out. Default widths are fractions of the sides of the data box. When the last bar is
    /// nearer to the eye than the first one, their order is turned round: what is hidden by something nearer need not
    /// be drawn, which saves a tenth of the time.
    void Build(std::vector<Bar> const& bars, BarsKey const& key, BarWidths const& defaultWidths);
    void Draw(C3DGraph& graph);
    void InvalidateDeviceObjects() { m_faces.InvalidateDeviceObjects(); }

    FaceBatch const& GetFaces() const { return m_faces; }
    /// The sides that can be seen from a place in the box's units: all of them when some bar is cut open at the side of
    /// the data box.
    std::vector<FaceBatch::Span> GetVisibleParts(CVertex const& eye) const;

private:
    /// All bars' sides in one direction: the triangles, and how far in this direction the hindmost of them stands.
    struct Side {
        FaceBatch::Span triangles;
        double hindmost = 0.0;
    };
    FaceBatch m_faces;
    std::array<Side, 6> m_sides;
    bool m_isCut = false;
};

} // namespace ombrel
