#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/gdi/GdiObjects.h"
#include "ombrel/platform/gdi/Surface.h"
#include "ombrel/platform/gdi/TextMetrics.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace ombrel {

/// Whether the cells of text and the gaps of dashes keep what was there, or take the background colour.
enum BackgroundMode { TRANSPARENT = 1, OPAQUE = 2 };
/// Where the reference point of text lies: a sum of one for x and one for y.
enum TextAlignment { TA_LEFT = 0, TA_TOP = 0, TA_RIGHT = 2, TA_CENTER = 6, TA_BOTTOM = 8, TA_BASELINE = 24 };
/// How a picture that shrinks becomes fewer pixels.
enum StretchMode { BLACKONWHITE = 1, WHITEONBLACK = 2, COLORONCOLOR = 3, HALFTONE = 4 };
/// What GetDeviceCaps is asked for.
enum DeviceCapability {
    TECHNOLOGY = 2,
    HORZSIZE = 4,
    VERTSIZE = 6,
    HORZRES = 8,
    VERTRES = 10,
    BITSPIXEL = 12,
    PLANES = 14,
    LOGPIXELSX = 88,
    LOGPIXELSY = 90,
};
/// No colour.
inline constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;

/// A device context: drawing state, and the surface that primitives are sent to.
///
/// Coordinates are device pixels, y down, moved by the viewport origin. Objects are selected by value: deleting one
/// that is selected changes nothing, and the pointer that SelectObject returns is only for selecting it back. Selecting
/// null changes nothing, except that a null bitmap takes the bitmap away.
/// A new memory context has a black one-pixel pen, a white brush, the system font, black text on opaque white.
class OMBREL_EXPORT CDC {
public:
    /// A memory context without a bitmap: state and capabilities of the screen, draws nothing.
    CDC();
    /// Draws on the surface.
    explicit CDC(std::shared_ptr<Surface> surface);
    ~CDC();
    CDC(CDC const&) = delete;
    CDC& operator=(CDC const&) = delete;

    bool CreateCompatibleDC(CDC* reference);
    /// Where primitives go to.
    Surface& GetSurface() const { return *m_surface; }
    bool IsPrinting() const { return m_surface->IsPrinting(); }
    int GetDeviceCaps(int capability) const;

    /// Each returns the object selected before.
    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    CFont* SelectObject(CFont* font);
    /// Memory contexts only (else null, and nothing changes): primitives go to this bitmap from now on. With a null
    /// bitmap, or one that was not created, nothing is drawn.
    CBitmap* SelectObject(CBitmap* bitmap);

    COLORREF GetTextColor() const { return m_state.textColour; }
    COLORREF SetTextColor(COLORREF c) { return std::exchange(m_state.textColour, c); }
    COLORREF GetBkColor() const { return m_state.backColour; }
    COLORREF SetBkColor(COLORREF c) { return std::exchange(m_state.backColour, c); }
    int GetBkMode() const { return m_state.backMode; }
    int SetBkMode(int mode) { return std::exchange(m_state.backMode, mode); }
    UINT GetTextAlign() const { return m_state.textAlign; }
    UINT SetTextAlign(UINT align) { return std::exchange(m_state.textAlign, align); }
    int GetStretchBltMode() const { return m_state.stretchMode; }
    int SetStretchBltMode(int mode) { return std::exchange(m_state.stretchMode, mode); }
    int GetPolyFillMode() const { return m_state.polyFillMode; }
    int SetPolyFillMode(int mode) { return std::exchange(m_state.polyFillMode, mode); }
    CPoint GetViewportOrg() const { return m_state.origin; }
    CPoint SetViewportOrg(int x, int y) { return std::exchange(m_state.origin, CPoint(x, y)); }

    /// The level saved, from 1.
    int SaveDC();
    /// Back to a level, or with −1 one level; false when there is none such.
    bool RestoreDC(int level);

    /// Copies the region (device pixels, untouched by the viewport origin); null lifts the clip.
    void SelectClipRgn(CRgn const* region);
    /// Limits drawing to the rectangle as well, within what limits it already.
    void IntersectClipRect(CRect const& rect);
    /// The smallest rectangle that drawing is limited to, in the context's coordinates.
    CRect GetClipBox() const;
    /// Clip region of this context, with no box of its own.
    Clip const& GetClip() const { return m_state.clip; }

    CPoint GetCurrentPosition() const { return m_state.position; }
    CPoint MoveTo(int x, int y) { return std::exchange(m_state.position, CPoint(x, y)); }
    CPoint MoveTo(POINT p) { return MoveTo(p.x, p.y); }
    /// Draws up to, not including, the point, which becomes the current position.
    void LineTo(int x, int y);
    void LineTo(POINT p) { LineTo(p.x, p.y); }
    /// Lines one after the other; the current position stays.
    void Polyline(std::span<CPoint const> points);
    void Ellipse(CRect const& box);
    void Arc(CRect const& box, CPoint start, CPoint end);
    void FillRect(CRect const& rect, CBrush const* brush);
    void FillRgn(CRgn const* region, CBrush const* brush);
    /// Fills with the selected brush.
    void PaintRgn(CRgn const* region) { FillRgn(region, &m_state.brush); }
    void FillSolidRect(CRect const& rect, COLORREF colour);
    void SetPixel(int x, int y, COLORREF colour);
    /// Draws a mark at each of the points, one point after the other, as draw does round (0, 0): draw is called once,
    /// with a context of the same pen, brush, font, colours and modes, and no clip. What it draws there is looked at
    /// but not the state that it leaves. Pictures are left out. Marks with an alpha below 255 are laid over what is
    /// there, each as a whole.
    void Repeat(std::function<void(CDC&)> const& draw, std::span<CPoint const> points, BYTE alpha = 255);
    /// CLR_INVALID outside, or where no pixels are kept.
    COLORREF GetPixel(int x, int y) const;
    void TextOut(int x, int y, CString const& text);
    /// In pixels of unrotated text; 0 × 0 for the empty text.
    CSize GetTextExtent(CString const& text) const;
    TEXTMETRIC GetTextMetrics() const;
    /// Copies w × h pixels of the source from (sx, sy) to (x, y), the source's raster operation acting bit by bit on
    /// the colours. From a 1-bit bitmap, ones become the background colour and zeros the text colour; into one, the
    /// source's background colour becomes white and all else black. Pixels that the source does not have are left out.
    /// False when the source keeps no pixels or the operation needs a brush.
    bool BitBlt(int x, int y, int w, int h, CDC* source, int sx, int sy, DWORD operation);
    /// As BitBlt, taking the nearest source pixel for each; a negative width or height mirrors.
    bool StretchBlt(int x, int y, int w, int h, CDC* source, int sx, int sy, int sw, int sh, DWORD operation);

private:
    friend class LentSurface;
    struct State {
        CPen* penObject = nullptr;
        CBrush* brushObject = nullptr;
        CFont* fontObject = nullptr;
        CPen pen { PS_SOLID, 1, 0 };
        CBrush brush { 0xFFFFFF };
        std::shared_ptr<LOGFONT const> font;
        COLORREF textColour = 0;
        COLORREF backColour = 0xFFFFFF;
        int backMode = OPAQUE;
        UINT textAlign = TA_LEFT;
        int stretchMode = BLACKONWHITE;
        int polyFillMode = ALTERNATE;
        CPoint position;
        CPoint origin;
        Clip clip;
    };
    void Reset();
    LineStyle CurrentLine() const;
    CPoint ToDevice(CPoint p) const;
    CRect ToDevice(CRect const& r) const;

    /// The context's own surface, whichever is lent to it.
    std::shared_ptr<Surface>& OwnSurface() { return m_own ? m_own : m_surface; }

    std::shared_ptr<Surface> m_surface;
    /// While another is lent.
    std::shared_ptr<Surface> m_own;
    bool m_isMemory = true;
    CBitmap* m_bitmap = nullptr;
    // What a new context has selected, and can be selected back.
    CPen m_firstPen { PS_SOLID, 1, 0 };
    CBrush m_firstBrush { 0xFFFFFF };
    CFont m_firstFont;
    CBitmap m_noBitmap;
    State m_state;
    std::vector<State> m_saved;
};

/// Saves the state of a device context for the life of a scope.
class SavedDC {
public:
    explicit SavedDC(CDC& dc)
        : m_dc(dc)
        , m_level(dc.SaveDC())
    {
    }
    ~SavedDC() { m_dc.RestoreDC(m_level); }
    SavedDC(SavedDC const&) = delete;
    SavedDC& operator=(SavedDC const&) = delete;

private:
    CDC& m_dc;
    int m_level;
};

/// Lends a device context another surface for the life of a scope: primitives go there, and pictures are copied from
/// there. Then the context has its own surface back, with the bitmap that was selected last, before or meanwhile.
/// Scopes may be nested.
class OMBREL_EXPORT LentSurface {
public:
    LentSurface(CDC& dc, std::shared_ptr<Surface> surface);
    ~LentSurface();
    LentSurface(LentSurface const&) = delete;
    LentSurface& operator=(LentSurface const&) = delete;

private:
    CDC& m_dc;
    /// Lent by an outer scope, if any.
    std::shared_ptr<Surface> m_outer;
};

} // namespace ombrel
