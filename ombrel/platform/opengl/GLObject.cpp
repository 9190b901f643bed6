#include "ombrel/platform/opengl/GLObject.h"

#include "ombrel/platform/opengl/OpenGL.h"

namespace ombrel {

GLObject::GLObject(Kind kind)
    : m_kind(kind)
    , m_generation(GLContext::Process().Generation())
{
    switch (kind) {
    case Kind::Texture:
        gl::GenTextures(1, &m_name);
        break;
    case Kind::Buffer:
        gl::GenBuffers(1, &m_name);
        break;
    case Kind::Framebuffer:
        gl::GenFramebuffers(1, &m_name);
        break;
    case Kind::Renderbuffer:
        gl::GenRenderbuffers(1, &m_name);
        break;
    case Kind::Program:
        m_name = gl::CreateProgram();
        break;
    }
}

void GLObject::Reset() noexcept
{
    if (m_name != 0)
        GLContext::Process().Release(m_kind, m_name, m_generation);
    m_name = 0;
}

} // namespace ombrel
