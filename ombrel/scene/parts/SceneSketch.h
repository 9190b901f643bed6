#pragma once
#include "ombrel/drawing/DIB.h"
#include "ombrel/platform/framework/String.h"

#include <array>
#include <vector>

namespace ombrel {
class C3DGraph;
class CPlot;

/// What is drawn of a scene, in a bitmap of a picture's proportions.
class SceneSketch {
public:
    /// Lays the scene out in the window, which is the bitmap's; with a rectangle of its own, or that one.
    SceneSketch(C3DGraph& scene, CRect const& window);
    SceneSketch(C3DGraph& scene, CRect const& window, CRect const& graph);

    /// The box round all that differs from the background; in the graph's rectangle.
    CRect Extent();

private:
    C3DGraph& m_scene;
    CDIB m_bitmap;
};

/// For its own life, leaves the scene the box with axes and labels, which is what a scene is fitted by: plots lie
/// inside of the box and take long to draw. Nor have the x and y axes their titles, which stand far from short axes but
/// never outside of the graph: fitted without them, the scene leaves them just the room at its edges.
class BoxAlone {
public:
    explicit BoxAlone(C3DGraph& scene);
    ~BoxAlone();
    BoxAlone(BoxAlone const&) = delete;
    BoxAlone& operator=(BoxAlone const&) = delete;

private:
    C3DGraph& m_scene;
    std::vector<CPlot*> m_plots;
    std::array<CString, 2> m_titles;
};

} // namespace ombrel
