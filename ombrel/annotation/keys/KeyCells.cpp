#include "ombrel/annotation/keys/KeyCells.h"
#include "ombrel/foundation/Utils.h"
#include "ombrel/platform/gdi/Coordinates.h"

#include <algorithm>

namespace ombrel {

KeyCells MakeKeyCells(CSize widestLabel, KeyKind kind, bool isPrinted)
{
    constexpr int kHighestText = 1 << 20;
    constexpr double kPrintedFactor = 1.33;
    bool const isBar = kind == KeyKind::Bar;
    KeyCells cells;
    cells.text = CSize(ClampCoordinate(widestLabel.cx), std::clamp(widestLabel.cy, 0, kHighestText));
    int const textHeight = cells.text.cy;
    int height = isBar ? VUNearest(1.6 * textHeight) : textHeight;
    int const width = isBar ? VUNearest(1.2 * textHeight) : static_cast<int>(0.75 * textHeight);
    if (isPrinted)
        height = VUNearest(kPrintedFactor * height);
    int const margin = VUNearest(height / 3.0);
    cells.cell = CSize(cells.text.cx + VUNearest(textHeight / 3.0) + height + margin, height + margin);
    cells.textOffset = CSize(VUNearest(height / (isBar ? 6.0 : 3.0)) + height + VUNearest(margin / 2.0),
        VUNearest((height - textHeight) / 2.0) + VUNearest(margin / 2.0));
    cells.swatchOffset
        = CPoint(VUNearest((cells.textOffset.cx - width) / 2.0), VUNearest((cells.cell.cy - width) / 2.0));
    cells.swatch = CSize(width, static_cast<int>(0.75 * textHeight));
    return cells;
}

int KeyBar::RowOf(double part) const { return ClampCoordinate(1LL * BottomRow() - VUNearest(part * rect.Height())); }

KeyBar MakeKeyBar(CRect const& key, KeyCells const& cells, int count)
{
    long long const cellHeight = cells.cell.cy;
    long long const total = count * cellHeight;
    long long const spare = std::max(key.Height() - total, 0LL);
    long long const gap = count > 1 ? VUNearest(static_cast<double>(spare) / (count - 1)) : 0;
    // A key is half a swatch lower than its cells.
    long long const room = key.Height() + VUNearest(cells.swatch.cy / 2.0) - cellHeight;
    long long const height = std::clamp((count - 1) * gap + total - cellHeight, 0LL, std::max(room, 0LL));
    int const left = key.left + cells.swatchOffset.x;
    int const top = key.top + cells.swatchOffset.y + cells.swatch.cy / 2;
    KeyBar bar;
    bar.rect = CRect(left, top, left + VUNearest(0.75 * cells.swatch.cx), ClampCoordinate(top + height));
    bar.tickEnd = left + cells.swatch.cx;
    bar.textLeft = key.left + cells.textOffset.cx;
    return bar;
}

} // namespace ombrel
