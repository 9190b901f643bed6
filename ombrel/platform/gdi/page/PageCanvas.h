#pragma once
#include "ombrel/platform/gdi/PageSurface.h"
#include "ombrel/platform/gdi/Primitive.h"
#include "ombrel/platform/gdi/page/PageHatch.h"
#include "ombrel/platform/gdi/page/PageMarks.h"
#include "ombrel/platform/gdi/page/PagePicture.h"
#include "ombrel/platform/gdi/page/PageShape.h"

#include <optional>
#include <string>
#include <vector>

namespace ombrel {

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
    void Repeat(
        std::span<RecordedPrimitive const> mark, std::span<CPoint const> points, BYTE alpha, Clip const& clip) override;
    std::string Finish() override;
    bool NextPage() override;
    void Describe(CString const& description) override { m_setup.description = description; }
    MarkCounts GetMarkCounts() const override { return m_markCounts; }

protected:
    PageSetup const& Setup() const { return m_setup; }
    int DotsPerInch() const { return m_capabilities.logPixelsX; }
    /// Backgrounds that cannot be seen stay away, so that formats need no transparency for them.
    static constexpr int kInvisible = 1;
    /// A pixel of a screen in those of the page, for what must look as on the screen: dots, dashes, hatches.
    double ScreenScale() const { return DotsPerInch() / 96.0; }
    /// Draws a shape; within the clip.
    virtual void DrawShape(PageShape const& shape, PagePaint const& paint, Clip const& clip) = 0;
    virtual void DrawRun(TextRun const& run, Clip const& clip) = 0;
    virtual void DrawPicture(PagePicture const& picture, Clip const& clip) = 0;
    /// Fills the lines of a hatch.
    virtual void DrawHatch(std::vector<HatchCorners> const& lines, VectorColour const& colour, Clip const& clip) = 0;
    virtual void DrawMarks(MarkImage const& marks, Clip const& clip) = 0;
    virtual std::string FinishDocument() = 0;
    /// Ends the page; false for formats of one page.
    virtual bool EndPage() { return false; }
    /// For formats that can keep a mark and refer to it: what is drawn until EndMark is one, round (0, 0). False when
    /// the mark is better drawn at each point.
    virtual bool BeginMark(std::span<RecordedPrimitive const>, BYTE /*alpha*/) { return false; }
    /// Draws the mark at each of the points.
    virtual void EndMark(std::span<CPoint const>, BYTE /*alpha*/, Clip const&) { }

private:
    enum class Merging { No, Yes };
    double StrokeWidth(LineStyle const& line) const;
    std::vector<double> StyleDashes(LineStyle const& line) const;
    void AddLine(PageShape&& shape, LineStyle const& line, Clip const& clip);
    void FillWithLines(Region const& region, VectorBrush const& brush, Clip const& clip);
    void AddRect(CRect const& rect, VectorBrush const& brush, Clip const& clip);
    void Add(PageShape&& shape, PagePaint&& paint, Merging merging, Clip const& clip);
    bool IsVisible(CRect const& box, Clip const& clip) const;
    void Flush();
    /// Takes the marks that need not be shapes out of the points, which are visible ones; false when that is all.
    bool KeepShapes(std::span<RecordedPrimitive const> mark, std::vector<CPoint>& points, Clip const& clip);

    PageSetup m_setup;
    MarkCounts m_markCounts;
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

} // namespace ombrel
