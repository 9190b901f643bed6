#pragma once
#include "ombrel/layout/Look.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"

#include <string>
#include <vector>

namespace ombrel {
class CAnnotatedGraph;
class CCaption;
class CDC;

/// A text over the graph, with its top-left corner at fractions of the plotting area: (0, 0) is its top left.
struct CaptionSettings {
    std::string text;
    double x = 0.0;
    double y = 0.0;
};

/// The name that a graph without a title has.
inline constexpr char const* kUntitled = "untitled";

/// Titles are one line.
OMBREL_EXPORT std::string OneLine(std::string text);

/// Gives the graph the title, and a bold caption that shows it; an empty one does nothing. PlaceTitle places it.
OMBREL_EXPORT void AddTitle(CAnnotatedGraph& graph, std::string const& title, Look const& look);

/// The caption that AddTitle made, in a document too; null when there is none.
OMBREL_EXPORT CCaption* FindTitle(CAnnotatedGraph& graph);

/// Centres the title over the plotting area, in the room between it and the top of the window: as large as fits, and
/// shortened when it would be too small to read. It ends at a key at the right of the plotting area where that rises
/// beside it. The graph must have been laid out for a context like dc.
OMBREL_EXPORT void PlaceTitle(C2DGraph& graph, CDC& dc, CRect const& key = {});

/// Centres the title in the room at the top of a window without axes to go by, likewise.
OMBREL_EXPORT void PlaceTitleIn(CAnnotatedGraph& graph, CRect const& room, CDC& dc);

/// Gives the graph a small line below it, such as where its data come from, in place of the one it has; an empty one is
/// none. PlaceFootnote places it.
OMBREL_EXPORT void SetFootnote(CAnnotatedGraph& graph, std::string const& text, Look const& look);

/// The caption that SetFootnote made, in a document too; null when there is none.
OMBREL_EXPORT CCaption* FindFootnote(CAnnotatedGraph& graph);

/// Puts that footnote at the left of the window's bottom: a little smaller than labels, smaller where it is long, and
/// shortened when it would be too small to read. The graph must have been laid out for a context like dc.
OMBREL_EXPORT void PlaceFootnote(C2DGraph& graph, std::string const& text, CDC& dc);

/// Likewise in the room at the bottom of a window without axes to go by, with letters so many times as large.
OMBREL_EXPORT void PlaceFootnoteIn(
    CAnnotatedGraph& graph, std::string const& text, CRect const& room, double textFactor, CDC& dc);

/// Adds captions without frames, for PlaceCaptions.
OMBREL_EXPORT void AddCaptions(C2DGraph& graph, std::vector<CaptionSettings> const& settings, Look const& look);

/// Puts the captions where they are wanted, but inside the window. The graph must have been laid out for a context like
/// dc.
OMBREL_EXPORT void PlaceCaptions(C2DGraph& graph, std::vector<CaptionSettings> const& settings, CDC& dc);

/// Moves the legend and captions that reach beyond the window they were last drawn in back into it, for a draw of the
/// same size: in a picture of another shape they would be cut.
OMBREL_EXPORT void KeepBoxesInside(CAnnotatedGraph& graph);

} // namespace ombrel
