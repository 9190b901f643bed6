#pragma once
#include <span>

namespace ombrel {

/// Draws the lines of axes and grids: while it lives, lines are that wide, and, where they are smooth, blended at their
/// sides. Then OpenGL is as it was.
class BoxLines {
public:
    /// Pixels; smooth lines are at least 1.5 wide.
    BoxLines(double width, bool isSmooth);
    ~BoxLines();
    BoxLines(BoxLines const&) = delete;
    BoxLines& operator=(BoxLines const&) = delete;
    /// Three coordinates a point, in box units, and two points a line.
    static void Draw(std::span<float const> points);
};

} // namespace ombrel
