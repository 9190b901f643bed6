#pragma once
#include "ombrel/foundation/Vertex.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/view/ViewDirection.h"

#include <array>

namespace ombrel {

/// Where an axis, its ticks, labels and title lie in the data box, seen from a direction. Lengths are box units.
class AxisGeometry {
public:
    /// scale: the sides of the box.
    AxisGeometry(AxisType type, ViewDirection const& view, std::array<double, 3> const& scale);

    /// The point of the axis at a coordinate along it, from −scale/2 to scale/2.
    CVertex At(double along) const;
    /// The other end of a tick of that length.
    CVertex TickEnd(CVertex const& position, double length) const;
    /// From a tick to where its label is put. tickLength is that of major ticks; width and height are the label's.
    CVertex LabelOffset(double tickLength, double width, double height, bool horizontal) const;
    /// From the widest label, moved to the middle of the axis, to where the title is put. tickRoom is one and a half
    /// times the length of major ticks; widestLabel and titleWidth are widths.
    CVertex TitleOffset(double tickRoom, double widestLabel, double titleWidth, bool horizontal) const;
    bool IsEvenOctant() const { return m_view.octant % 2 == 0; }

private:
    AxisType m_type;
    ViewDirection m_view;
    std::array<double, 3> m_scale;
    /// The place of the axis across itself, in sides of the box; 0 along it.
    std::array<double, 3> m_edge {};
    float m_sin;
    float m_cos;
};

} // namespace ombrel
