#pragma once
#include "ombrel/chart/Look.h"

#include <string>

namespace ombrel {
class C2DGraph;
class CAnnotatedGraph;
class CCaption;
class CColourKey;
class CDC;
class CPlotComponent;
} // namespace ombrel

namespace ombrel::host {

/// The name of what colours mean in short lines, broken at blanks; a unit stays with its stroke.
std::string InShortLines(std::string text);

/// A key of a curve's colours and the name of what they mean; the graph owns both.
struct TitledKey {
    CColourKey& colours;
    CCaption* title = nullptr;
};

/// Adds both, to be placed; there is no caption for an empty title.
TitledKey AddKey(CAnnotatedGraph& graph, CPlotComponent const& curve, std::string const& title, Look const& look);

/// A key of a curve's colours and the name of what they mean, at the right of a map. The graph owns both.
class MapKey {
public:
    /// title may be empty. dc is a context like the one that will be drawn on.
    MapKey(C2DGraph& graph, CPlotComponent const& curve, std::string const& title, Look const& look, CDC& dc);
    /// The pixels that both take from the graph's rectangle, once the graph has been laid out.
    int Width();
    /// Puts both in the middle of the height of the axes, beside them.
    void Place();

private:
    C2DGraph& m_graph;
    TitledKey m_key;
    CDC& m_dc;
};

} // namespace ombrel::host
