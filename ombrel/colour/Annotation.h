#pragma once
#include "ombrel/foundation/FontData.h"
#include "ombrel/foundation/RealTypes.h"
#include "ombrel/model/GraphComponent.h"
#include "ombrel/platform/framework/Geometry.h"

namespace ombrel {

class ArchiveFields;

/// A box that floats over a graph: the common part of the legend, captions and colour keys.
///
/// The box keeps its place as a device rectangle and as fractions of a reference rectangle; whichever was changed last
/// leads. Its size follows from its content at every draw. Positions are device pixels. In archives and among the
/// run-time classes it does not appear.
class CAnnotation : public CGraphComponent {
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
};

} // namespace ombrel
