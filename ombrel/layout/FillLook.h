#pragma once
#include "ombrel/platform/framework/Export.h"

namespace ombrel {
class C2DGraph;
class CDC;

class ChartNotes;

/// How bars of some size are drawn.
struct BarLook {
    /// The part of their places that they take up.
    double widthFactor = 1.0;
    /// Their outlines have their own colours, since any other would hide them.
    bool ownOutlines = false;
};

/// The look of bars that are to take up the part factor of their places: place pixels each, with so many bars side by
/// side in one, and outlines of so many pixels. hasFlatBars: some bar is so low that outlines would cover it.
OMBREL_EXPORT BarLook ChooseBarLook(double place, double factor, int sideBySide, double outline, bool hasFlatBars);

/// Gives bars and bands outlines that leave them to be seen, and closes gaps between bars that would make patterns;
/// tells when bars are too narrow to be kept apart. The graph must have been laid out for a context like dc.
OMBREL_EXPORT void SettleOutlines(C2DGraph& graph, CDC& dc, ChartNotes& notes);

/// Has the axes drawn after bars, bands and filled lines, which would cover them. Nothing happens without these.
OMBREL_EXPORT void PutAxesOverFills(C2DGraph& graph);

} // namespace ombrel
