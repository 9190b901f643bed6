#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/gdi/Primitive.h"

#include <vector>

namespace ombrel {

/// Keeps a list of the primitives instead of drawing them: for tests, and for drawing them again.
class OMBREL_EXPORT RecordingSurface : public Surface {
public:
    explicit RecordingSurface(CSize size, DeviceCapabilities const& capabilities = {}, bool printing = false);
    std::vector<RecordedPrimitive> const& Primitives() const { return m_primitives; }
    void Clear() { m_primitives.clear(); }

    DeviceCapabilities const& Capabilities() const override { return m_capabilities; }
    CRect Bounds() const override { return m_bounds; }
    bool IsPrinting() const override { return m_printing; }
    void Polyline(std::span<CPoint const> points, LineStyle const& line, Clip const& clip) override;
    void Stroke(Figures const& figures, VectorPen const& pen, bool smooth, Clip const& clip) override;
    void Fill(Region const& region, VectorBrush const& brush, Clip const& clip) override;
    void Text(TextRun const& run, Clip const& clip) override;
    void Image(ImageCopy const& copy, Clip const& clip) override;
    void Ellipse(CRect const& box, LineStyle const* outline, COLORREF const* fill, Clip const& clip) override;
    void Arc(CRect const& box, CPoint start, CPoint end, LineStyle const& line, Clip const& clip) override;

private:
    DeviceCapabilities m_capabilities;
    CRect m_bounds;
    bool m_printing;
    std::vector<RecordedPrimitive> m_primitives;
};

} // namespace ombrel
