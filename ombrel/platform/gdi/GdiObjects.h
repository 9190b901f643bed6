#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"
#include "ombrel/platform/framework/String.h"
#include "ombrel/platform/gdi/Raster.h"
#include "ombrel/platform/gdi/Region.h"

#include <memory>
#include <span>

namespace ombrel {

class CDC;

/// Dash styles of pens.
enum PenStyle {
    PS_SOLID = 0,
    PS_DASH = 1,
    PS_DOT = 2,
    PS_DASHDOT = 3,
    PS_DASHDOTDOT = 4,
    PS_NULL = 5,
    PS_INSIDEFRAME = 6
};

/// A pen of width-dependent look: styles 1–4 are dashed at width 1 (or 0) only, wider pens draw solid.
class CPen {
public:
    CPen() = default;
    CPen(int style, int width, COLORREF colour) { CreatePen(style, width, colour); }
    void CreatePen(int style, int width, COLORREF colour)
    {
        m_style = style;
        m_width = width;
        m_colour = colour;
    }
    int GetStyle() const { return m_style; }
    int GetWidth() const { return m_width; }
    COLORREF GetColour() const { return m_colour; }

private:
    int m_style = PS_SOLID;
    int m_width = 1;
    COLORREF m_colour = 0;
};

/// A solid brush, or one that fills nothing.
class CBrush {
public:
    /// Fills nothing.
    CBrush() = default;
    explicit CBrush(COLORREF colour)
        : m_null(false)
        , m_colour(colour)
    {
    }
    void CreateSolidBrush(COLORREF colour) { *this = CBrush(colour); }
    bool IsNull() const { return m_null; }
    COLORREF GetColour() const { return m_colour; }

private:
    bool m_null = true;
    COLORREF m_colour = 0;
};

/// Room for the name of a face in stored fonts, its end included.
inline constexpr int LF_FACESIZE = 32;

/// A logical font. lfHeight > 0 is the cell height in device pixels. lfEscapement is in tenths of a degree,
/// counter-clockwise; 0 and 900 are drawn.
struct LOGFONT {
    LONG lfHeight = 0;
    LONG lfWidth = 0;
    LONG lfEscapement = 0;
    LONG lfOrientation = 0;
    LONG lfWeight = 0;
    BYTE lfItalic = 0;
    BYTE lfUnderline = 0;
    BYTE lfStrikeOut = 0;
    BYTE lfCharSet = 0;
    BYTE lfOutPrecision = 0;
    BYTE lfClipPrecision = 0;
    BYTE lfQuality = 0;
    BYTE lfPitchAndFamily = 0;
    /// At most LF_FACESIZE − 1 units.
    CString lfFaceName;
    friend bool operator==(LOGFONT const&, LOGFONT const&) = default;
};

/// A font to select into a device context; copies share it.
class CFont {
public:
    CFont() = default;
    void CreateFontIndirect(LOGFONT const& lf) { m_font = std::make_shared<LOGFONT const>(lf); }
    void DeleteObject() { m_font.reset(); }
    /// Null before a font was created.
    std::shared_ptr<LOGFONT const> const& GetLogFont() const { return m_font; }

private:
    std::shared_ptr<LOGFONT const> m_font;
};

/// A bitmap that a memory device context draws on.
class OMBREL_EXPORT CBitmap {
public:
    CBitmap() = default;
    /// bitsPerPixel 1, 24 or 32. False when a side is below 1 or there is no memory.
    bool CreateBitmap(int width, int height, int bitsPerPixel);
    bool CreateCompatibleBitmap(CDC* dc, int width, int height);
    void DeleteObject() { m_raster.reset(); }
    CSize GetSize() const { return m_raster ? CSize(m_raster->Width(), m_raster->Height()) : CSize(); }
    /// Null before a bitmap was created.
    std::shared_ptr<Raster> const& GetRaster() const { return m_raster; }

private:
    std::shared_ptr<Raster> m_raster;
};

/// A region for clipping and filling.
class OMBREL_EXPORT CRgn {
public:
    CRgn() = default;
    /// Edges may be given in either order.
    void CreateRectRgn(int left, int top, int right, int bottom);
    void CreatePolygonRgn(std::span<CPoint const> points, PolyFillMode mode);
    void DeleteObject() { m_region.reset(); }
    /// Null before a region was created.
    std::shared_ptr<Region const> const& GetRegion() const { return m_region; }

private:
    std::shared_ptr<Region const> m_region;
};

/// A bitmap, not owned.
using HBITMAP = CBitmap*;
/// A device context, not owned.
using HDC = CDC*;

} // namespace ombrel
