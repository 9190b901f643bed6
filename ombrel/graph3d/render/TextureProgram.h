#pragma once
#include "ombrel/platform/opengl/GLProgram.h"

#include <cstddef>
#include <optional>

namespace ombrel {

/// While it lives, faces that a 1D texture colours are lit by a program of its own in place of OpenGL's fixed
/// functions, which carry three colours across each triangle where two numbers tell as much. For many small triangles
/// that saves software renderers a sixth of the time; colours differ by rounding alone.
///
/// It takes over lights, matrices and clip planes as they are when it begins; vertices are white, the texture is bound
/// and no other one switched on. Within a draw of the graph. Does nothing for few triangles, whose drawing is quicker
/// than making the program, and where a driver cannot make it.
class TextureProgram {
public:
    explicit TextureProgram(std::size_t triangles);

private:
    std::optional<GLProgram::Use> m_use;
};

} // namespace ombrel
