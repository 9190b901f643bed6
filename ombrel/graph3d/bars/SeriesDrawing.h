#pragma once
#include "ombrel/graph3d/SeriesSettings.h"
#include "ombrel/graph3d/bars/StackGeometry.h"
#include "ombrel/graph3d/render/ColourTexture.h"
#include "ombrel/graph3d/render/KeptBatch.h"

#include <functional>

namespace ombrel {

class C3DCurve;

/// Draws series: keeps their stacks and lines in batches, made anew when data, axes or settings have changed.
class SeriesDrawing {
public:
    /// The lines of a curve. None of it is owned.
    struct Source {
        C3DCurve const& curve;
        SeriesSettings const& settings;
        std::uint64_t revision;
        /// Whether all points of a line have one x, or in the other row mode one y.
        bool hasFixedPlaces;
        /// Calls take(k, points in data units) with each line that is not clipped.
        std::function<void(std::function<void(int k, std::span<CVertex const> points)> const& take)> forEachLine;
    };

    /// Belongs within a draw of the graph.
    void Render(C3DGraph& graph, Source const& source);
    void InvalidateDeviceObjects();

private:
    struct Key {
        std::uint64_t revision = 0;
        BoxAxes axes;
        SeriesSettings settings;
        friend bool operator==(Key const& a, Key const& b) = default;
    };
    KeptBatch<Key> m_stacks;
    KeptBatch<Key> m_lines;
    ColourTexture m_colours;
};

} // namespace ombrel
