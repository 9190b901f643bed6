#include "ombrel/platform/opengl/GLProgram.h"

#include "ombrel/platform/framework/Error.h"
#include "ombrel/platform/opengl/OpenGL.h"

namespace ombrel {
namespace {

/// Belongs to the program from then on. What is wrong with the text is said when the program is linked.
void Attach(unsigned int program, GLenum kind, std::string const& text)
{
    char const* const characters = text.c_str();
    GLuint const shader = gl::CreateShader(kind);
    gl::ShaderSource(shader, 1, &characters, nullptr);
    gl::CompileShader(shader);
    gl::AttachShader(program, shader);
    gl::DeleteShader(shader);
}

} // namespace

void GLProgram::Make()
{
    GLObject program(GLObject::Kind::Program);
    Attach(program.Name(), GL_VERTEX_SHADER, m_vertexText);
    Attach(program.Name(), GL_FRAGMENT_SHADER, m_pixelText);
    gl::LinkProgram(program.Name());
    GLint isLinked = GL_FALSE;
    gl::GetProgramiv(program.Name(), GL_LINK_STATUS, &isLinked);
    if (isLinked != GL_TRUE) {
        char words[1000] = "";
        gl::GetProgramInfoLog(program.Name(), static_cast<GLsizei>(sizeof words), nullptr, words);
        throw Error(Error::Kind::Resource, std::string("The OpenGL driver takes a program of ours not: ") + words);
    }
    m_program = std::move(program);
}

bool GLProgram::IsTaken()
{
    std::uint64_t const generation = GLContext::Process().Generation();
    if (m_program.IsAlive() || m_refusedGeneration == generation)
        return m_program.IsAlive();
    try {
        Make();
        return true;
    } catch (Error const&) {
        m_refusedGeneration = generation;
        return false;
    }
}

GLProgram::Use::Use(GLProgram& program)
{
    if (!program.m_program.IsAlive())
        program.Make();
    m_name = program.m_program.Name();
    gl::UseProgram(m_name);
}

GLProgram::Use::~Use() { gl::UseProgram(0); }

int GLProgram::Use::Find(char const* name) const { return gl::GetUniformLocation(m_name, name); }

void GLProgram::Use::Set(char const* name, float x) const { gl::Uniform1f(Find(name), x); }

void GLProgram::Use::Set(char const* name, float x, float y) const { gl::Uniform2f(Find(name), x, y); }

void GLProgram::Use::Set(char const* name, float x, float y, float z) const { gl::Uniform3f(Find(name), x, y, z); }

void GLProgram::Use::SetLights() const
{
    auto const level = [](GLenum what) { return gl::IsEnabled(what) ? 1.0F : 0.0F; };
    Set("isLit", level(GL_LIGHTING));
    Set("lights", level(GL_LIGHT0), level(GL_LIGHT1));
}

} // namespace ombrel
