#pragma once
#include "ombrel/layout/Look.h"
#include "ombrel/platform/framework/Geometry.h"

#include <string>

namespace ombrel {
class C2DGraph;
class CAnnotatedGraph;
class CCaption;
class CColourKey;
class CDC;
class CPlotComponent;

/// The name of what colours mean in short lines, broken at blanks; a unit stays with its stroke.
OMBREL_EXPORT std::string InShortLines(std::string text);

/// A key of a curve's colours and the name of what they mean; the graph owns both, and may do away with them.
struct TitledKey {
    CColourKey* colours = nullptr;
    CCaption* title = nullptr;
};

/// Adds both, to be placed; there is no caption for an empty title.
OMBREL_EXPORT TitledKey AddKey(
    CAnnotatedGraph& graph, CPlotComponent const& curve, std::string const& title, Look const& look);

/// Whether the graph still has the key.
OMBREL_EXPORT bool HasKey(CAnnotatedGraph& graph, TitledKey const& key);
/// Takes both out of the graph, where it still has them.
OMBREL_EXPORT void RemoveKey(CAnnotatedGraph& graph, TitledKey const& key);

/// A key of a curve's colours and the name of what they mean, at the right of a map. The graph owns both.
class OMBREL_EXPORT MapKey {
public:
    /// title may be empty.
    MapKey(C2DGraph& graph, CPlotComponent const& curve, std::string const& title, Look const& look);

    // dc is a context like the one that will be drawn on.
    /// The pixels that both take from the graph's rectangle, once the graph has been laid out.
    int Width(CDC& dc);
    /// Puts both in the middle of the height of the axes, beside them, and returns the rectangle that they take.
    CRect Place(CDC& dc);

    /// Takes both out of the graph, where it still has them. Nothing else may be done with the key then.
    void Remove();

private:
    C2DGraph& m_graph;
    TitledKey m_key;
};

} // namespace ombrel
