#pragma once
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/platform/opengl/OpenGL.h"

namespace ombrel {

/// How far lines are moved towards the viewer, in box units, so that they lie just in front of their surface.
inline constexpr double kLineDistance = 0.005;

/// While it lives, what is drawn is moved so. Belongs within a draw of the graph.
class TowardsViewer {
public:
    explicit TowardsViewer(C3DGraph& graph)
    {
        gl::PushMatrix();
        graph.SetView();
        gl::Translated(0.0, 0.0, kLineDistance);
        graph.UnsetView();
    }
    ~TowardsViewer() { gl::PopMatrix(); }
    TowardsViewer(TowardsViewer const&) = delete;
    TowardsViewer& operator=(TowardsViewer const&) = delete;
};

} // namespace ombrel
