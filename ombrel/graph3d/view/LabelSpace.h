#pragma once
#include "ombrel/platform/framework/Geometry.h"

#include <optional>
#include <span>
#include <vector>

namespace ombrel {

/// A direction or a place in the picture: pixels, y down.
struct PicturePoint {
    double x = 0.0;
    double y = 0.0;
};

/// Which room labels and titles find in the picture: outside of the data box, and clear of each other. Rectangles are
/// pixels of the picture.
class LabelSpace {
public:
    LabelSpace() = default;
    /// The corners of the box in the picture, in any order; without any, nothing is in the way of labels.
    LabelSpace(CRect const& picture, std::span<PicturePoint const> boxCorners);

    CRect const& Picture() const { return m_picture; }
    bool IsInPicture(CRect const& rect) const;
    bool MeetsBox(CRect const& rect) const;
    bool MeetsTaken(CRect const& rect) const;
    bool IsFree(CRect const& rect) const { return !MeetsBox(rect) && !MeetsTaken(rect); }
    void Take(CRect const& rect) { m_taken.push_back(rect); }
    /// From a line of the picture away from the box, of unit length.
    PicturePoint Outwards(PicturePoint from, PicturePoint to) const;
    /// How far, in whole pixels, the rectangle must move in that direction until it is in nobody's way, or (alone) only
    /// clear of the box; nothing when that takes more than the limit.
    enum class Clear { OfBox, OfAll };
    std::optional<CPoint> WayOut(CRect const& rect, PicturePoint direction, Clear clear, int limit) const;

private:
    CRect m_picture;
    /// The corners of the outline of the box, in order.
    std::vector<PicturePoint> m_outline;
    PicturePoint m_centre;
    std::vector<CRect> m_taken;
};

} // namespace ombrel
