#include "ombrel/platform/opengl/GLState.h"

#include "ombrel/platform/opengl/OpenGL.h"

namespace ombrel {
namespace {

struct MatrixNames {
    GLenum mode;
    GLenum depth;
    GLenum values;
};

constexpr std::array<MatrixNames, 3> kMatrices { {
    { GL_TEXTURE, GL_TEXTURE_STACK_DEPTH, GL_TEXTURE_MATRIX },
    { GL_PROJECTION, GL_PROJECTION_STACK_DEPTH, GL_PROJECTION_MATRIX },
    { GL_MODELVIEW, GL_MODELVIEW_STACK_DEPTH, GL_MODELVIEW_MATRIX },
} };

/// A context that was lost answers nothing: then 0.
int Ask(GLenum what)
{
    GLint value = 0;
    gl::GetIntegerv(what, &value);
    return value;
}

} // namespace

GLState::GLState()
    : m_framebuffer(Ask(GL_FRAMEBUFFER_BINDING))
    , m_attributes(Ask(GL_ATTRIB_STACK_DEPTH))
    , m_clientAttributes(Ask(GL_CLIENT_ATTRIB_STACK_DEPTH))
{
    for (std::size_t i = 0; i < kMatrices.size(); ++i) {
        m_matrices[i].depth = Ask(kMatrices[i].depth);
        gl::GetDoublev(kMatrices[i].values, m_matrices[i].values.data());
    }
    gl::PushAttrib(GL_ALL_ATTRIB_BITS);
    gl::PushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
}

GLState::~GLState()
{
    // First of all: the buffers that attributes name are those of the framebuffer which was bound.
    gl::BindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(m_framebuffer));
    for (std::size_t i = 0; i < kMatrices.size(); ++i) {
        gl::MatrixMode(kMatrices[i].mode);
        for (int depth = Ask(kMatrices[i].depth); depth > m_matrices[i].depth; --depth)
            gl::PopMatrix();
        gl::LoadMatrixd(m_matrices[i].values.data());
    }
    for (int depth = Ask(GL_ATTRIB_STACK_DEPTH); depth > m_attributes; --depth)
        gl::PopAttrib();
    for (int depth = Ask(GL_CLIENT_ATTRIB_STACK_DEPTH); depth > m_clientAttributes; --depth)
        gl::PopClientAttrib();
    // Errors stay until somebody asks for them, and would be taken for those of who draws next.
    for (int i = 0; i < 100 && gl::GetError() != GL_NO_ERROR; ++i) { }
}

GLKeptSettings::GLKeptSettings(unsigned int groups)
{
    gl::PushAttrib(groups);
    gl::PushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
}

GLKeptSettings::~GLKeptSettings()
{
    gl::PopClientAttrib();
    gl::PopAttrib();
}

} // namespace ombrel
