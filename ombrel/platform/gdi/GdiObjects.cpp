#include "ombrel/platform/gdi/GdiObjects.h"

#include "ombrel/platform/gdi/DC.h"

#include <new>

namespace ombrel {

bool CBitmap::CreateBitmap(int width, int height, int bitsPerPixel)
{
    bool const known = bitsPerPixel == 1 || bitsPerPixel == 24 || bitsPerPixel == 32;
    if (width < 1 || height < 1 || !known)
        return false;
    try {
        m_raster = std::make_shared<Raster>(width, height, bitsPerPixel);
    } catch (std::bad_alloc const&) {
        return false;
    }
    return true;
}

bool CBitmap::CreateCompatibleBitmap(CDC* dc, int width, int height)
{
    // A context whose bitmap is one-bit asks for another such; everything else is a screen of 32 bits.
    Raster const* const raster = dc ? dc->GetSurface().GetRaster() : nullptr;
    return CreateBitmap(width, height, raster ? raster->BitsPerPixel() : 32);
}

void CRgn::CreateRectRgn(int left, int top, int right, int bottom)
{
    m_region = std::make_shared<Region const>(Region::FromRect({ left, top, right, bottom }));
}

void CRgn::CreatePolygonRgn(std::span<CPoint const> points, PolyFillMode mode)
{
    m_region = std::make_shared<Region const>(Region::FromPolygon(points, mode));
}

} // namespace ombrel
