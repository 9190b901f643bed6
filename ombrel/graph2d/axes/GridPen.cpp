#include "ombrel/graph2d/axes/GridPen.h"

#include "ombrel/model/LineWidth.h"

namespace ombrel {

VectorPen GridPen(CDC const& dc, GridLine const& line, std::span<double const> dashes)
{
    int const width = DeviceLineWidth(dc, 1.0, ThicknessKind::Grid);
    return { { line.colour, 255 }, static_cast<double>(width), line.IsSolid() ? std::span<double const>() : dashes };
}

} // namespace ombrel
