#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/view/AxisGeometry.h"
#include "ombrel/graph3d/view/Picture3D.h"
#include "ombrel/platform/gdi/DC.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ombrel {

namespace {

CRect Inflated(CRect const& rect, int by)
{
    return { rect.left - by, rect.top - by, rect.right + by, rect.bottom + by };
}

CRect Moved(CRect const& rect, CPoint by)
{
    return { rect.left + by.x, rect.top + by.y, rect.right + by.x, rect.bottom + by.y };
}

/// A text with the room that parts it from the next one in its line.
CRect WithGap(CRect const& rect, bool horizontal)
{
    int const gap = std::max(static_cast<int>(horizontal ? rect.Height() : rect.Width()) / 4, 1);
    return horizontal ? CRect(rect.left - gap, rect.top, rect.right + gap, rect.bottom)
                      : CRect(rect.left, rect.top - gap, rect.right, rect.bottom + gap);
}

/// Writes the texts of one axis into a picture, once their place is known.
class TextPlacer {
public:
    TextPlacer(C3DGraph const& graph, Picture3D& picture)
        : m_picture(picture)
        , m_dc(*picture.bitmap->GetDC())
        , m_height(graph.GetTextHeight())
        , m_windowHeight(graph.GetWindowRect().Height())
    {
    }

    /// What a text covers, unturned, with the size factor of its font.
    CSize Extent(CString const& text, CFontData const& data) const
    {
        CFontData nominal = data;
        nominal.sizeFactor = 1.0;
        CFont font;
        CVUtils::ConfigureFont(&font, nominal, m_height, 0);
        SavedDC const saved(m_dc);
        m_dc.SelectObject(&font);
        CSize const extent = m_dc.GetTextExtent(text);
        auto const scaled
            = [&data](int length) { return VUNearest(std::clamp(length * data.sizeFactor, -kFarthest, kFarthest)); };
        return { scaled(extent.cx), scaled(extent.cy) };
    }
    /// A point of the box in the picture, y down; nothing for one behind the eye, or too far out.
    std::optional<CPoint> ToPicture(CVertex const& v) const
    {
        std::optional<CVertex> const window = m_picture.camera.Project(v);
        if (!window || !(std::fabs(window->X()) < kFarthest && std::fabs(window->Y()) < kFarthest))
            return {};
        return CPoint(VUNearest(window->X()), m_windowHeight - VUNearest(window->Y()));
    }
    /// What a text covers whose anchor lies there.
    static CRect Bounds(CPoint at, CSize extent, bool horizontal, bool evenOctant)
    {
        if (!horizontal)
            return { at.x, at.y, at.x + extent.cy, at.y + extent.cx };
        int const left = evenOctant ? at.x - VUNearest(extent.cx / 1.2) : at.x + VUNearest(extent.cx / 100.0);
        int const top = at.y - VUNearest(extent.cy / 2.0);
        return { left, top, left + extent.cx, top + extent.cy };
    }
    /// Returns what the text covers.
    CRect Write(CString const& text, CFontData const& font, CRect const& bounds, bool horizontal, COLORREF colour)
    {
        PlacedText placed;
        placed.text = text;
        placed.origin = horizontal ? bounds.TopLeft() : CPoint(bounds.left, bounds.bottom);
        placed.bounds = WithWholeText(bounds, text, font, horizontal);
        placed.font = &font;
        placed.fontHeight = m_height;
        placed.isUpwards = !horizontal;
        placed.colour = colour;
        m_picture.texts.push_back(placed);
        m_picture.labelSpace.Take(WithGap(placed.bounds, horizontal));
        return placed.bounds;
    }

private:
    /// Letters of another size may be a little wider than in proportion to it.
    CRect WithWholeText(CRect bounds, CString const& text, CFontData const& data, bool horizontal) const
    {
        if (data.sizeFactor == 1.0)
            return bounds;
        CFont font;
        CVUtils::ConfigureFont(&font, data, m_height, 0);
        SavedDC const saved(m_dc);
        m_dc.SelectObject(&font);
        CSize const extent = m_dc.GetTextExtent(text);
        bounds.right = std::max<LONG>(bounds.right, bounds.left + (horizontal ? extent.cx : extent.cy));
        bounds.bottom = std::max<LONG>(bounds.bottom, bounds.top + (horizontal ? extent.cy : 0));
        bounds.top = std::min<LONG>(bounds.top, bounds.bottom - (horizontal ? 0 : extent.cx));
        return bounds;
    }

    /// In pixels: sums of what is farther out or larger would be no numbers.
    static constexpr double kFarthest = 1e6;

    Picture3D& m_picture;
    CDC& m_dc;
    int m_height;
    int m_windowHeight;
};

/// A label that finds room: what it covers.
struct Label {
    CString text;
    CRect bounds;
};

/// The room between texts, and from them to the box.
int GapOf(CSize extent) { return std::max(static_cast<int>(extent.cy) / 6, 1); }

/// Leaves of labels in a row every second, third, … one, so many that no two meet.
void ThinOut(std::vector<Label>& labels, bool horizontal)
{
    // Lines of text have air above and below: the labels of a slanted axis may be that much closer.
    auto const meet = [horizontal](CRect const& first, CRect const& second) {
        CRect const a = WithGap(first, horizontal);
        CRect const b = WithGap(second, horizontal);
        int const air = horizontal ? static_cast<int>(a.Height()) / 5 : 0;
        return a.left < b.right && b.left < a.right && a.top < b.bottom - air && b.top < a.bottom - air;
    };
    std::size_t stride = 1;
    auto const isCrowded = [&] {
        for (std::size_t i = stride; i < labels.size(); i += stride) {
            if (meet(labels[i - stride].bounds, labels[i].bounds))
                return true;
        }
        return false;
    };
    while (stride < labels.size() && isCrowded())
        ++stride;
    std::vector<Label> kept;
    for (std::size_t i = 0; i < labels.size(); i += stride)
        kept.push_back(labels[i]);
    labels = std::move(kept);
}

/// What a title's place is looked for with: its axis in the picture, and how much it covers.
struct TitleAxis {
    std::optional<CPoint> from;
    std::optional<CPoint> to;
    PicturePoint outwards;
    CSize size;
};

/// Beyond one end of the axis, in its direction; nothing when there is no room in the picture.
std::optional<CRect> PlaceBeyond(LabelSpace const& space, CPoint end, CPoint other, CSize size, int gap, int reach)
{
    double const length = std::hypot(end.x - other.x, end.y - other.y);
    if (!(length >= 1.0))
        return {};
    PicturePoint const away { (end.x - other.x) / length, (end.y - other.y) / length };
    CRect const picture = space.Picture();
    int const rightmost = std::max<int>(picture.right - gap - size.cx, picture.left + gap);
    int const left = std::clamp<int>(end.x - size.cx / 2, picture.left + gap, rightmost);
    int const top = end.y - size.cy / 2;
    CRect const bounds(left, top, left + size.cx, top + size.cy);
    std::optional<CPoint> const way = space.WayOut(Inflated(bounds, gap), away, LabelSpace::Clear::OfAll, reach);
    if (!way || !space.IsInPicture(Inflated(Moved(bounds, *way), gap)))
        return {};
    return Moved(bounds, *way);
}

/// Where a title stands: as laid down, unless that leaves the picture or is taken. Then it comes back towards the
/// axis, or moves away from it, to the first place that is free, or stands beyond an end of the axis.
template <typename BoundsAt>
CRect TitlePlace(LabelSpace const& space, TitleAxis const& axis, BoundsAt boundsAt, int reach)
{
    int const gap = GapOf({ 0, std::min(axis.size.cx, axis.size.cy) });
    std::optional<CRect> const laidDown = boundsAt(1.0);
    std::optional<CRect> inside;
    constexpr int kSteps = 50;
    for (int step = kSteps; step >= 0; --step) {
        std::optional<CRect> const bounds = boundsAt(static_cast<double>(step) / kSteps);
        if (!bounds || !space.IsInPicture(Inflated(*bounds, gap)))
            continue;
        if (space.IsFree(Inflated(*bounds, gap)))
            return *bounds;
        if (!inside)
            inside = bounds;
        if (std::optional<CPoint> const way
            = space.WayOut(Inflated(*bounds, gap), axis.outwards, LabelSpace::Clear::OfAll, reach)) {
            CRect const moved = Moved(*bounds, *way);
            if (space.IsInPicture(Inflated(moved, gap)))
                return moved;
        }
    }
    if (axis.from && axis.to) {
        if (std::optional<CRect> const place = PlaceBeyond(space, *axis.to, *axis.from, axis.size, gap, reach))
            return *place;
        if (std::optional<CRect> const place = PlaceBeyond(space, *axis.from, *axis.to, axis.size, gap, reach))
            return *place;
    }
    return inside ? *inside : laidDown.value_or(CRect());
}

} // namespace

void C3DAxis::PlaceTexts(C3DGraph const& graph, Picture3D& picture, AxisGeometry const& geometry, double tickLength)
{
    TextPlacer placer(graph, picture);
    LabelSpace& space = picture.labelSpace;
    bool const isHorizontal = m_labelsHorizontal != 0;
    bool const isEven = geometry.IsEvenOctant();

    std::optional<CPoint> const from = placer.ToPicture(geometry.At(GetViewVal(m_min, 1)));
    std::optional<CPoint> const to = placer.ToPicture(geometry.At(GetViewVal(m_max, 1)));
    PicturePoint const outwards = from && to
        ? space.Outwards({ double(from->x), double(from->y) }, { double(to->x), double(to->y) })
        : PicturePoint { 0.0, 1.0 };
    CSize const pictureSize = picture.graphRect.Size();
    int const reach = std::max(pictureSize.cx, pictureSize.cy);

    m_labelPositions.DeleteAll();
    std::vector<Label> labels;
    int gap = 1;
    int widest = -1;
    double widestWidth = 0.0;
    for (int i = 0; i < m_notchPositions.GetSize(); ++i) {
        CSize const extent = placer.Extent(m_labelTexts[i], m_labelsFont);
        double const width = picture.camera.UnitsOfWidth(extent.cx);
        double const height = picture.camera.UnitsOfHeight(extent.cy);
        if (widest < 0 || width > widestWidth) {
            widest = i;
            widestWidth = width;
        }
        CVertex const anchor = *m_notchPositions[i] + geometry.LabelOffset(tickLength, width, height, isHorizontal);
        m_labelPositions.Add(std::make_unique<CVertex>(anchor));
        std::optional<CPoint> const at = placer.ToPicture(anchor);
        if (m_labelTexts[i].IsEmpty() || !at)
            continue;
        gap = GapOf(extent);
        CRect bounds = TextPlacer::Bounds(*at, extent, isHorizontal, isEven);
        // Unless only a part of the box is in the picture, labels are put outside of it.
        if (std::optional<CPoint> const way
            = space.WayOut(Inflated(bounds, gap), outwards, LabelSpace::Clear::OfBox, reach)) {
            CRect const moved = Moved(bounds, *way);
            if (space.IsInPicture(moved) || !space.IsInPicture(bounds))
                bounds = moved;
        }
        labels.push_back({ m_labelTexts[i], bounds });
    }
    ThinOut(labels, isHorizontal);
    // At a corner the labels of two axes may want the same room: those of the second one go further out, or away.
    std::erase_if(labels, [&](Label& label) {
        int const limit = 2 * std::min(static_cast<int>(label.bounds.Height()), static_cast<int>(label.bounds.Width()));
        std::optional<CPoint> const way
            = space.WayOut(Inflated(label.bounds, gap), outwards, LabelSpace::Clear::OfAll, limit);
        CRect const place = Moved(label.bounds, way.value_or(CPoint()));
        bool const leaves = space.IsInPicture(label.bounds) && !space.IsInPicture(place);
        label.bounds = place;
        return leaves || (!way && space.MeetsTaken(place));
    });
    CRect column;
    for (Label const& label : labels) {
        CRect const written
            = placer.Write(label.text, m_labelsFont, label.bounds, isHorizontal, m_labelsColour.ToColour());
        column.UnionRect(column, written);
    }
    // Beside an upright axis a short title would find room between two wide labels, where it reads like one of them.
    if (m_type == atZAxis)
        space.Take(column);

    if (m_title.IsEmpty())
        return;
    double const middle = (GetViewVal(m_min, 1) + GetViewVal(m_max, 1)) / 2.0;
    CVertex anchor = widest >= 0 ? *m_labelPositions[widest] : geometry.At(middle);
    anchor[m_type - atXAxis] = middle;
    CSize const extent = placer.Extent(m_title, m_titlesFont);
    bool const isTitleHorizontal = m_horizontal != 0;
    CVertex const offset = geometry.TitleOffset(
        1.5 * tickLength, widestWidth, picture.camera.UnitsOfWidth(extent.cx), isTitleHorizontal);
    auto const boundsAt = [&](double part) -> std::optional<CRect> {
        std::optional<CPoint> const at = placer.ToPicture(anchor + offset * part);
        if (!at)
            return {};
        return TextPlacer::Bounds(*at, extent, isTitleHorizontal, isEven);
    };
    TitleAxis const titleAxis { from, to, outwards, isTitleHorizontal ? extent : CSize(extent.cy, extent.cx) };
    placer.Write(m_title, m_titlesFont, TitlePlace(space, titleAxis, boundsAt, reach), isTitleHorizontal,
        m_titleColour.ToColour());
}

} // namespace ombrel
