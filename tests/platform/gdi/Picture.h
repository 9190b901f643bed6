#pragma once
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/VectorGraphics.h"

#include <string>

namespace ombrel {

inline constexpr COLORREF kPenColour = RGB(200, 0, 0);
inline constexpr COLORREF kBrushColour = RGB(0, 180, 0);
inline constexpr COLORREF kPaper = RGB(250, 240, 230);

/// A small bitmap with a context on it: pen and brush selected, gaps and backgrounds transparent.
class Picture {
public:
    Picture(int width, int height, int bitsPerPixel = 32)
    {
        m_bitmap.CreateBitmap(width, height, bitsPerPixel);
        m_dc.SelectObject(&m_bitmap);
        m_dc.SelectObject(&m_pen);
        m_dc.SelectObject(&m_brush);
        m_dc.SetBkMode(TRANSPARENT);
        m_dc.FillSolidRect({ 0, 0, width, height }, kPaper);
    }
    CDC& DC() { return m_dc; }
    CBitmap& Bitmap() { return m_bitmap; }
    void UsePen(int style, int width)
    {
        m_pen.CreatePen(style, width, kPenColour);
        m_dc.SelectObject(&m_pen);
    }
    void UseBrush(CBrush const& brush)
    {
        m_brush = brush;
        m_dc.SelectObject(&m_brush);
    }
    /// Lets a rectangle of the bitmap through.
    void ClipTo(CRect const& rect)
    {
        CRgn region;
        region.CreateRectRgn(rect.left, rect.top, rect.right, rect.bottom);
        m_dc.SelectClipRgn(&region);
    }
    std::uint32_t Pixel(int x, int y) const { return m_bitmap.GetRaster()->Row(y)[x]; }
    /// The pixels of a part, or of the whole, row by row.
    std::vector<std::uint32_t> Pixels(CRect const& part) const
    {
        std::vector<std::uint32_t> pixels;
        for (int y = part.top; y < part.bottom; ++y) {
            for (int x = part.left; x < part.right; ++x)
                pixels.push_back(Pixel(x, y));
        }
        return pixels;
    }
    std::vector<std::uint32_t> Pixels() const { return Pixels({ CPoint(), m_bitmap.GetSize() }); }
    /// One line a row: '#' pen, 'o' brush, '.' untouched, '?' anything else.
    std::string Rows() const
    {
        std::string rows;
        CSize const size = m_bitmap.GetSize();
        for (int y = 0; y < size.cy; ++y) {
            for (int x = 0; x < size.cx; ++x)
                rows += Letter(Pixel(x, y));
            rows += '\n';
        }
        return rows;
    }
    int Count(char letter) const
    {
        std::string const rows = Rows();
        return static_cast<int>(std::count(rows.begin(), rows.end(), letter));
    }

private:
    static char Letter(std::uint32_t pixel)
    {
        COLORREF const colour = Raster::ToColour(pixel);
        return pixel >> 24           ? '!'
            : colour == kPenColour   ? '#'
            : colour == kBrushColour ? 'o'
            : colour == kPaper       ? '.'
                                     : '?';
    }
    CBitmap m_bitmap;
    CPen m_pen { PS_SOLID, 1, kPenColour };
    CBrush m_brush { kBrushColour };
    CDC m_dc;
};

/// One line a row of the region's pixels: 'o' inside, '.' outside.
inline std::string Rows(Region const& region, int width, int height)
{
    std::string rows;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            rows += region.Contains({ x, y }) ? 'o' : '.';
        rows += '\n';
    }
    return rows;
}

} // namespace ombrel
