#include "ombrel/graph3d/view/BoxLines.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>

namespace ombrel {

BoxLines::BoxLines(double width, bool isSmooth)
    : m_kept(GL_LINE_BIT | GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_HINT_BIT)
{
    if (isSmooth) {
        width = std::max(width, 1.5);
        gl::Enable(GL_LINE_SMOOTH);
        gl::Enable(GL_BLEND);
        gl::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        gl::Hint(GL_LINE_SMOOTH_HINT, GL_NICEST);
    }
    gl::LineWidth(static_cast<float>(width));
    gl::BindBuffer(GL_ARRAY_BUFFER, 0);
    gl::EnableClientState(GL_VERTEX_ARRAY);
}

void BoxLines::Draw(std::span<float const> points)
{
    gl::VertexPointer(3, GL_FLOAT, 0, points.data());
    gl::DrawArrays(GL_LINES, 0, static_cast<GLsizei>(points.size() / 3));
}

} // namespace ombrel
