#pragma once
#include "ombrel/platform/framework/Geometry.h"

namespace ombrel {

/// How a colour key is divided, from the extent of its widest label. Device pixels.
struct KeyCells {
    CSize text;
    /// The width of the key, and the height of one of its cells.
    CSize cell;
    /// From a cell's corner to that of its label.
    CSize textOffset;
    /// From a cell's corner to that of its swatch, or of the bar.
    CPoint swatchOffset;
    /// Of bars, the width includes the ticks.
    CSize swatch;
};

enum class KeyKind { Swatches, Bar };

/// Printed keys, of pictures that are made for a printer, have cells a third higher.
KeyCells MakeKeyCells(CSize widestLabel, KeyKind kind, bool isPrinted);

/// Where the bar of a key lies, and how high text at its values is.
struct KeyBar {
    CRect rect;
    /// From the bar's right edge.
    int tickEnd = 0;
    int textLeft = 0;

    /// The row of a tick, by the part of the bar that lies below it.
    int RowOf(double part) const;
    int BottomRow() const { return rect.bottom - 1; }
};

/// The bar of a key of so many cells, cut where the key is not as high as these.
KeyBar MakeKeyBar(CRect const& key, KeyCells const& cells, int count);

} // namespace ombrel
