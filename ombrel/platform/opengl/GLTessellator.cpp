#include "ombrel/platform/opengl/GLTessellator.h"

#include "ombrel/platform/opengl/OpenGL.h"

#include <new>

namespace ombrel {
namespace {

std::mutex g_lock;

GLUtesselator* MakeTessellator()
{
    LoadGLU();
    GLUtesselator* const made = glu::NewTess();
    if (!made)
        throw std::bad_alloc();
    return made;
}

} // namespace

GLTessellator::GLTessellator()
    : m_lock(g_lock)
{
    static GLUtesselator* const tessellator = MakeTessellator();
    m_tessellator = tessellator;
}

} // namespace ombrel
