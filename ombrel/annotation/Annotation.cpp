#include "ombrel/annotation/Annotation.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/model/Graph.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>

namespace ombrel {

void CAnnotation::Create(CPoint at)
{
    m_on = 1;
    m_positioned = 0;
    m_created = 1;
    SetRect(CRect(at, CSize()));
}

void CAnnotation::SetRect(CRect const& rect)
{
    m_rect = rect;
    m_rectSet = 1;
}

void CAnnotation::Reset()
{
    m_created = 0;
    m_on = 0;
    m_positioned = 0;
    m_rectSet = 0;
}

void CAnnotation::SerializeRect(ArchiveFields& fields)
{
    fields.Rect(m_rect);
    if (fields.GetArchive().IsLoading())
        m_rect = ClampRect(m_rect);
}

void CAnnotation::AskForFrame(AnnotationKind kind, CRect const& window)
{
    m_frame = GetGraph() ? GetGraph()->GetAnnotationFrame(kind, window) : std::nullopt;
}

void CAnnotation::UpdateRect()
{
    if (m_frame)
        IsOnPicture() ? UpdateRect3D() : UpdateRect2D();
}

void CAnnotation::CornerFromFractions()
{
    if (!m_frame)
        return;
    CRect const& r = m_frame->reference;
    CPoint const corner(
        VUNearest(r.Width() * m_normalisedPosition.x + r.left), VUNearest(r.Height() * m_normalisedPosition.y + r.top));
    m_rect = CRect(ClampPoint(corner), CSize());
}

void CAnnotation::UpdateNormalisedPos()
{
    if (m_frame)
        IsOnPicture() ? UpdateNormalisedPos3D() : UpdateNormalisedPos2D();
}

void CAnnotation::FractionsFromCorner()
{
    if (!m_frame || m_frame->reference.Width() == 0 || m_frame->reference.Height() == 0)
        return;
    CRect const& r = m_frame->reference;
    m_normalisedPosition.Set((static_cast<double>(m_rect.left) - r.left) / r.Width(),
        (static_cast<double>(m_rect.top) - r.top) / r.Height());
}

void CAnnotation::UpdateFontHeight(CDC* dc)
{
    if (m_frame)
        IsOnPicture() ? UpdateFontHeight3D(dc) : UpdateFontHeight2D(dc);
}

void CAnnotation::UpdateFontHeight2D(CDC* dc)
{
    if (m_frame)
        m_fontHeight = GetAnnotationTextHeight(*dc, *m_frame).pixels;
}

void CAnnotation::UpdateFontHeight3D(CDC* dc)
{
    if (m_frame)
        m_fontHeight = ReduceForPrinter(GetAnnotationTextHeight(*dc, *m_frame).pixels, *m_frame);
}

CAnnotation::Leader CAnnotation::Place()
{
    Leader leader = Leader::Fractions;
    if (!m_positioned)
        leader = Leader::FirstRect;
    else if (m_rectSet)
        leader = Leader::MovedRect;
    else if (GetGraph() && GetGraph()->GetHint() == ghKeepRects)
        leader = Leader::KeptRect;
    if (leader == Leader::Fractions) {
        UpdateRect();
        return leader;
    }
    // There are no fractions of a reference without a size: the rectangle goes on leading until it has one.
    if (m_frame && (m_frame->reference.Width() == 0 || m_frame->reference.Height() == 0))
        return leader;
    m_positioned = 1;
    m_rectSet = 0;
    UpdateNormalisedPos();
    return leader;
}

void CAnnotation::SetSize(long long width, long long height)
{
    CPoint const corner = ClampPoint(m_rect.TopLeft());
    m_rect = CRect(corner.x, corner.y, ClampCoordinate(corner.x + width), ClampCoordinate(corner.y + height));
}

CFont CAnnotation::MakeFont() const
{
    CFont font;
    CVUtils::ConfigureFont(&font, m_font, m_fontHeight, 0);
    return font;
}

void CAnnotation::FillBackground(CDC& dc) const
{
    CBrush const brush(m_backgroundColour);
    dc.FillRect(m_rect, &brush);
}

void CAnnotation::SelectTextStyle(CDC& dc) const
{
    dc.SetTextColor(m_textColour);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextAlign(TA_LEFT | TA_TOP);
}

void CAnnotation::DrawBorder(CDC& dc) const
{
    if (!m_boundingRectOn)
        return;
    SavedDC const saved(dc);
    CPen pen(PS_SOLID, 1, m_borderColour);
    dc.SelectObject(&pen);
    CVUtils::DrawRect(&dc, m_rect);
}

AnnotationTextHeight GetAnnotationTextHeight(CDC& dc, AnnotationFrame const& frame)
{
    constexpr int kHighestMm = 4;
    bool const onPicture = frame.textRule == AnnotationFrame::TextRule::Picture;
    double const linesPerSide = onPicture ? 30.0 : 25.0;
    CDC* const device = frame.printer ? frame.printer : &dc;
    AnnotationTextHeight height;
    height.pixels = VUNearest(std::min(frame.textArea.Width(), frame.textArea.Height()) / linesPerSide);
    height.isLimited = CVUtils::PixelsToMM(device, { 0, height.pixels }).cy > kHighestMm;
    if (height.isLimited && onPicture)
        height.pixels = VUNearest(CVUtils::MMToPixels2(device, { 0, kHighestMm }).cy / frame.printScale);
    else if (height.isLimited)
        height.pixels = CVUtils::MMToPixels(device, { 0, kHighestMm }).cy;
    // A font without a height would come out at a default size, larger than a tiny graph's text.
    height.pixels = std::max(height.pixels, 1);
    return height;
}

int ReduceForPrinter(int pixels, AnnotationFrame const& frame)
{
    constexpr double kPrintedPart = 0.75;
    return frame.printer ? std::max(VUNearest(pixels * kPrintedPart), 1) : pixels;
}

} // namespace ombrel
