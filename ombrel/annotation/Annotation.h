#pragma once
#include "ombrel/foundation/FontData.h"
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/model/AnnotationFrame.h"
#include "ombrel/model/GraphComponent.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"
#include "ombrel/platform/gdi/GdiObjects.h"

#include <optional>

namespace ombrel {

class ArchiveFields;

/// A box that floats over a graph: the common part of the legend, captions and colour keys.
///
/// The box keeps its place as a device rectangle and as fractions of a reference rectangle; whichever was changed last
/// leads. Its size follows from its content at every draw. Positions are device pixels. In archives and among the
/// run-time classes it does not appear.
class OMBREL_EXPORT CAnnotation : public CGraphComponent {
public:
    CAnnotation() = default;
    explicit CAnnotation(CGraph* graph)
        : CGraphComponent(graph)
    {
    }

    /// Switches the box on, with its top-left corner at a device point; the next draw gives it its size.
    void Create(CPoint at);
    int IsCreated() const { return m_created; }
    /// Drawn only while on.
    int IsOn() const { return m_on; }
    CRect GetRect() const { return m_rect; }
    /// Moves the box. Only the top-left corner counts, and the next draw takes the box's fractions from it.
    virtual void SetRect(CRect const& rect);
    /// The size that the next draw on a context like this one gives the box: for placing it in a graph that is laid out
    /// already. Outside a graph, as boxes are made, that of the rectangle.
    virtual CSize Measure(CDC*) { return m_rect.Size(); }

    CFontData const& GetFont() const { return m_font; }
    void SetFont(CFontData const& font) { Change(m_font, font); }
    /// Stored only.
    double GetFontScaleFac() const { return m_fontScaleFactor; }
    void SetFontScaleFac(double factor) { Change(m_fontScaleFactor, factor); }
    COLORREF GetTextColour() const { return m_textColour; }
    void SetTextColour(COLORREF colour) { Change(m_textColour, colour); }
    COLORREF GetBkgndColour() const { return m_backgroundColour; }
    void SetBkgndColour(COLORREF colour) { Change(m_backgroundColour, colour); }
    COLORREF GetBorderColour() const { return m_borderColour; }
    void SetBorderColour(COLORREF colour) { Change(m_borderColour, colour); }
    /// Whether a frame is drawn round the box.
    int GetBoundingRectOn() const { return m_boundingRectOn; }
    void SetBoundingRectOn(int on) { Change(m_boundingRectOn, on); }

protected:
    static constexpr COLORREF kBlack = 0;
    static constexpr COLORREF kWhite = 0xFFFFFF;

    /// Off and not created, with no place of its own.
    void Reset();
    /// The rectangle as an archive field; on loading it is limited to where pixels can be.
    void SerializeRect(ArchiveFields& fields);

    /// The steps of a draw that a host's own class may override. Each calls its form for a box on a plotting area (2D)
    /// or on a finished picture (3D), by what the graph says; outside a graph nothing happens.

    /// The corner from the fractions.
    virtual void UpdateRect();
    virtual void UpdateRect2D() { CornerFromFractions(); }
    virtual void UpdateRect3D() { CornerFromFractions(); }
    /// The fractions from the corner; of a reference rectangle without a size there are none, and they stay.
    virtual void UpdateNormalisedPos();
    virtual void UpdateNormalisedPos2D() { FractionsFromCorner(); }
    virtual void UpdateNormalisedPos3D() { FractionsFromCorner(); }
    /// The font's height from the size of the graph on that context.
    virtual void UpdateFontHeight(CDC* dc);
    virtual void UpdateFontHeight2D(CDC* dc);
    virtual void UpdateFontHeight3D(CDC* dc);

    using Frame = std::optional<AnnotationFrame>;
    /// Keeps the graph's answer for the draw or measurement that begins; none outside a graph.
    void AskForFrame(AnnotationKind kind, CRect const& window);
    Frame const& GetFrame() const { return m_frame; }
    /// What led when the rectangle and the fractions were brought into step.
    enum class Leader { FirstRect, MovedRect, KeptRect, Fractions };
    /// Brings both into step at the start of a draw.
    Leader Place();
    /// Keeps the corner where pixels can be and gives the box its size.
    void SetSize(long long width, long long height);
    /// Of the font data, in the present height.
    CFont MakeFont() const;
    /// The box in its background colour.
    void FillBackground(CDC& dc) const;
    /// Selects the colour, corner alignment and transparent background that the box's text is drawn with.
    void SelectTextStyle(CDC& dc) const;
    /// When the frame is on.
    void DrawBorder(CDC& dc) const;

    /// Holds the context of a draw or a measurement while that lasts, however it ends.
    class ContextScope {
    public:
        ContextScope(CAnnotation& annotation, CDC* dc)
            : m_annotation(annotation)
        {
            m_annotation.m_dc = dc;
        }
        ~ContextScope() { m_annotation.m_dc = nullptr; }
        ContextScope(ContextScope const&) = delete;
        ContextScope& operator=(ContextScope const&) = delete;

    private:
        CAnnotation& m_annotation;
    };

    /// Of the draw or measurement in progress; null otherwise. Not owned.
    CDC* m_dc = nullptr;
    int m_created = 0;
    int m_on = 0;
    /// 0 until the first draw after Create has worked out the fractions.
    int m_positioned = 0;
    CRect m_rect;
    /// The rectangle was set since the last draw.
    int m_rectSet = 0;
    /// The top-left corner as fractions of the reference rectangle.
    CRealPoint m_normalisedPosition;
    CFontData m_font;
    double m_fontScaleFactor = 1.0;
    COLORREF m_textColour = kBlack;
    COLORREF m_backgroundColour = kWhite;
    COLORREF m_borderColour = kBlack;
    int m_boundingRectOn = 1;
    /// Pixels; 0 until a draw has worked it out.
    int m_fontHeight = 0;

private:
    bool IsOnPicture() const { return m_frame->textRule == AnnotationFrame::TextRule::Picture; }
    void CornerFromFractions();
    void FractionsFromCorner();

    /// Of the draw or measurement in progress, or of the last one.
    Frame m_frame;
};

/// The height of annotation's text, at least 1 pixel.
struct AnnotationTextHeight {
    int pixels = 1;
    /// Whether it would have been more than 4 mm.
    bool isLimited = false;
};

/// By the frame's rule, measured on its printer, or without one on the context.
OMBREL_EXPORT AnnotationTextHeight GetAnnotationTextHeight(CDC& dc, AnnotationFrame const& frame);
/// The height, made smaller when a picture is printed.
OMBREL_EXPORT int ReduceForPrinter(int pixels, AnnotationFrame const& frame);

} // namespace ombrel
