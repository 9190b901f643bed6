#pragma once
#include "ombrel/platform/gdi/Surface.h"
#include "ombrel/platform/gdi/raster/CoverageMask.h"

#include <memory>

namespace ombrel {

/// Draws on a bitmap in memory, pixel by pixel as the platform does.
///
/// Without a bitmap it has no pixels and draws nothing. The masks that lines are gathered in are kept between calls.
class RasterSurface : public Surface {
public:
    explicit RasterSurface(std::shared_ptr<Raster> raster);
    /// Those of a screen, with the bitmap's dots per inch.
    DeviceCapabilities const& Capabilities() const override;
    CRect Bounds() const override { return m_raster ? m_raster->Bounds() : CRect(); }
    void Polyline(std::span<CPoint const> points, LineStyle const& line, Clip const& clip) override;
    void Stroke(Figures const& figures, VectorPen const& pen, bool smooth, Clip const& clip) override;
    void Fill(Region const& region, VectorBrush const& brush, Clip const& clip) override;
    void Text(TextRun const& run, Clip const& clip) override;
    void Image(ImageCopy const& copy, Clip const& clip) override;
    void Ellipse(CRect const& box, LineStyle const* outline, COLORREF const* fill, Clip const& clip) override;
    void Arc(CRect const& box, CPoint start, CPoint end, LineStyle const& line, Clip const& clip) override;
    void Repeat(
        std::span<RecordedPrimitive const> mark, std::span<CPoint const> points, BYTE alpha, Clip const& clip) override;
    Raster const* GetRaster() const override { return m_raster.get(); }

private:
    /// Fills a polygon with very many edges through the mask; false when it is none.
    bool FillCrowded(Region const& region, RasterCanvas const& canvas, Ink const& ink);

    std::shared_ptr<Raster> m_raster;
    CoverageMask m_mask;
    /// Of a bitmap that is denser than a screen.
    mutable DeviceCapabilities m_capabilities;
};

} // namespace ombrel
