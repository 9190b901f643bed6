#include "ombrel/platform/gdi/marks/MarkPlanes.h"

#include <algorithm>

namespace ombrel {

CRect VisibleCorners(CRect const& visible, CRect const& markBox, std::span<CPoint const> points)
{
    CRect const reaching(visible.left - markBox.right + 1, visible.top - markBox.bottom + 1,
        visible.right - markBox.left, visible.bottom - markBox.top);
    CRect around(reaching.right, reaching.bottom, reaching.left, reaching.top);
    for (CPoint const& p : points)
        if (reaching.PtInRect(p))
            around = { std::min(around.left, p.x), std::min(around.top, p.y), std::max(around.right, p.x + 1),
                std::max(around.bottom, p.y + 1) };
    around.OffsetRect(markBox.left, markBox.top);
    return around;
}

} // namespace ombrel
