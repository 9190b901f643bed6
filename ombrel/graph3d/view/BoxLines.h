#pragma once
#include "ombrel/platform/opengl/GLState.h"

#include <span>

namespace ombrel {

/// Draws the lines of axes and grids: while it lives, lines are that wide, and, where they are smooth, blended at their
/// sides. Then OpenGL is as it was.
class BoxLines {
public:
    /// Pixels; smooth lines are at least 1.5 wide.
    BoxLines(double width, bool isSmooth);
    /// Three coordinates a point, in box units, and two points a line.
    static void Draw(std::span<float const> points);

private:
    GLKeptSettings m_kept;
};

} // namespace ombrel
