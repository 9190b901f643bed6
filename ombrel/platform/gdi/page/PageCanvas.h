#pragma once
#include "ombrel/platform/gdi/PageSurface.h"
#include "ombrel/platform/gdi/Primitive.h"

#include <optional>
#include <string>
#include <vector>

// What the page surfaces share. Not installed: hosts see PageSurface.h alone.
namespace ombrel {

/// Part of an ellipse: angles in radians on the ellipse's own parameter, clockwise on the page (y down).
struct PageArc {
    double centreX = 0.0;
    double centreY = 0.0;
    double radiusX = 0.0;
    double radiusY = 0.0;
    double start = 0.0;
    /// A whole turn or more is the closed ellipse.
    double sweep = 0.0;
    bool IsWhole() const;
};

/// Lines and arcs of one paint, in device pixels. Whole coordinates are the corners of pixels.
struct PageShape {
    /// Added to both coordinates of the points: lines of an odd width run through the middle of pixels.
    double offset = 0.0;
    std::vector<CPoint> points;
    struct Figure {
        std::size_t first = 0;
        bool closed = false;
    };
    std::vector<Figure> figures;
    std::vector<PageArc> arcs;
    void Add(std::span<CPoint const> figurePoints, bool closed);
    void AddRect(CRect const& rect);
    std::span<CPoint const> PointsOf(std::size_t figure) const;
    bool IsEmpty() const { return figures.empty() && arcs.empty(); }
    /// Around all points and arcs.
    CRect Box() const;
};

/// How a shape's lines look; widths and lengths in device pixels.
struct PagePen {
    VectorColour colour;
    double width = 1.0;
    /// Round ends and joins, or flat ends and mitred corners.
    bool round = false;
    std::vector<double> dashes;
    friend bool operator==(PagePen const&, PagePen const&) = default;
};

struct PagePaint {
    std::optional<VectorBrush> fill;
    std::optional<PagePen> pen;
    bool winding = false;
    /// Fillings side by side must leave no seam between them, whatever the resolution of the viewer.
    enum class Edges { Smooth, Shared, Upright };
    Edges edges = Edges::Smooth;
    friend bool operator==(PagePaint const&, PagePaint const&) = default;
};

/// A corner of a hatch line, in eighths of the cell, x right and y down.
struct HatchCorner {
    double x = 0.0;
    double y = 0.0;
};
/// The lines of a square of hatch cells as polygons of one turning sense: runs of pixels, and smooth bands for the
/// three wide diagonal styles. The style lies within 0 … 52.
std::vector<std::vector<HatchCorner>> HatchLines(int style, int cells);
/// The side of a hatch cell, as large on paper as on the screen: device pixels.
inline constexpr double kHatchCell = 8.0 * kPageDotsPerInch / 96.0;

/// A picture that is ready to place: true colour, with the colour that is left out.
struct PagePicture {
    Raster pixels;
    std::optional<COLORREF> transparent;
    CRect to;
};

/// The outline of a region as a closed polygon, or as rectangles that cover what it has within the bounds.
PageShape RegionShape(Region const& region, CRect const& bounds);

/// What a copy of a bitmap shows, in true colour. Paper cannot be read back: copies that combine with what is there
/// leave out the colour that changes nothing (white for "and", black for "or" and "exclusive or"), which is what masked
/// pictures need. Nothing when the copy has no pixels.
std::optional<PagePicture> MakePicture(ImageCopy const& copy);

/// What of a mark shows on paper: an arc along the outline that was just drawn with the same pen does not.
std::vector<RecordedPrimitive> WithoutRedrawn(std::span<RecordedPrimitive const> mark);
/// The points in order, each place only where it comes last: what is drawn there later hides what was drawn before.
std::vector<CPoint> LastOfEach(std::span<CPoint const> points);

/// Turns the primitives of a device context into shapes, texts and pictures, the same for every format.
///
/// Neighbouring lines, rectangles and pixels of one look become one shape, which keeps documents small.
class PageCanvas : public PageSurface {
public:
    explicit PageCanvas(PageSetup const& setup);
    DeviceCapabilities const& Capabilities() const override { return m_capabilities; }
    CRect Bounds() const override { return m_bounds; }
    void Polyline(std::span<CPoint const> points, LineStyle const& line, Clip const& clip) override;
    void Ellipse(CRect const& box, LineStyle const* outline, COLORREF const* fill, Clip const& clip) override;
    void Arc(CRect const& box, CPoint start, CPoint end, LineStyle const& line, Clip const& clip) override;
    void Text(TextRun const& run, Clip const& clip) override;
    void Image(ImageCopy const& copy, Clip const& clip) override;
    void Stroke(Figures const& figures, VectorPen const& pen, bool smooth, Clip const& clip) override;
    void Fill(Region const& region, VectorBrush const& brush, Clip const& clip) override;
    void Repeat(std::span<RecordedPrimitive const> mark, std::span<CPoint const> points, Clip const& clip) override;
    std::string Finish() override;

protected:
    PageSetup const& Setup() const { return m_setup; }
    /// Draws a shape; within the clip.
    virtual void DrawShape(PageShape const& shape, PagePaint const& paint, Clip const& clip) = 0;
    virtual void DrawRun(TextRun const& run, Clip const& clip) = 0;
    virtual void DrawPicture(PagePicture const& picture, Clip const& clip) = 0;
    virtual std::string FinishDocument() = 0;
    /// For formats that can keep a mark and refer to it: what is drawn until EndMark is one, round (0, 0). False when
    /// the mark is better drawn at each point.
    virtual bool BeginMark(std::span<RecordedPrimitive const>) { return false; }
    /// Draws the mark at each of the points.
    virtual void EndMark(std::span<CPoint const>, Clip const&) { }

private:
    enum class Merging { No, Yes };
    void AddLine(PageShape&& shape, LineStyle const& line, Clip const& clip);
    void AddRect(CRect const& rect, VectorBrush const& brush, Clip const& clip);
    void Add(PageShape&& shape, PagePaint&& paint, Merging merging, Clip const& clip);
    bool IsVisible(CRect const& box, Clip const& clip) const;
    void Flush();

    PageSetup m_setup;
    DeviceCapabilities m_capabilities;
    CRect m_bounds;
    bool m_finished = false;
    /// What neighbours are still added to.
    struct Pending {
        PageShape shape;
        PagePaint paint;
        Clip clip;
    };
    std::optional<Pending> m_pending;
};

std::unique_ptr<PageSurface> MakeCairoPage(PageSetup const& setup);
std::unique_ptr<PageSurface> MakeSvgPage(PageSetup const& setup);

} // namespace ombrel
