#pragma once
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/layout/Look.h"

#include <memory>

namespace ombrel {

/// What has to be made anew before the next draw.
enum class Stale {
    Nothing,
    /// Axes and colours of data that changed; the view stays.
    Data,
    /// The view too.
    View
};

/// What a scene shares with what is in it.
struct SceneParts {
    std::unique_ptr<C3DGraph> graph;
    Look look;
    /// What was noticed in reading.
    ChartNotes readNotes;
    Stale stale = Stale::View;

    void Raise(Stale level) { stale = stale < level ? level : stale; }
};

} // namespace ombrel
