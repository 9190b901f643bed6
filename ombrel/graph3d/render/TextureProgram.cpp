#include "ombrel/graph3d/render/TextureProgram.h"
#include "ombrel/platform/opengl/GLObject.h"
#include "ombrel/platform/opengl/OpenGL.h"

namespace ombrel {
namespace {

// Fewer are drawn in less time than the program is made in.
constexpr std::size_t kFewTriangles = 100000;

// What the fixed functions do with white faces under white lights: all channels are the same, so that one number a side
// will do.
constexpr char kVertexShader[] = R"(#version 120
uniform vec2 lights;
uniform float lighting;
varying vec3 placeFrontBack;
void main()
{
    vec3 eye = (gl_ModelViewMatrix * gl_Vertex).xyz;
    vec3 normal = gl_NormalMatrix * gl_Normal;
    vec2 level = vec2(gl_LightModel.ambient.r);
    for (int i = 0; i < 2; ++i) {
        if (lights[i] == 0.0)
            continue;
        float facing = dot(normal, normalize(gl_LightSource[i].position.xyz - eye));
        level += (gl_LightSource[i].ambient.r + gl_LightSource[i].diffuse.r * max(vec2(facing, -facing), 0.0))
            / gl_LightSource[i].constantAttenuation;
    }
    placeFrontBack = vec3(gl_MultiTexCoord0.x, mix(vec2(1.0), clamp(level, 0.0, 1.0), lighting));
    gl_Position = ftransform();
    gl_ClipVertex = vec4(eye, 1.0);
}
)";

constexpr char kFragmentShader[] = R"(#version 120
uniform sampler1D colours;
varying vec3 placeFrontBack;
void main()
{
    float level = gl_FrontFacing ? placeFrontBack.y : placeFrontBack.z;
    gl_FragColor = vec4(texture1D(colours, placeFrontBack.x).rgb * level, 1.0);
}
)";

/// The one program of the context, which all graphs share: drivers translate it anew for each that is made.
class Program {
public:
    /// 0 when there is none.
    GLuint Name()
    {
        if (m_generation != GLContext::Process().Generation()) {
            m_generation = GLContext::Process().Generation();
            Make();
        }
        return m_name;
    }
    void SetLights()
    {
        auto const level = [](GLenum what) { return gl::IsEnabled(what) ? 1.0F : 0.0F; };
        gl::Uniform2f(m_lights, level(GL_LIGHT0), level(GL_LIGHT1));
        gl::Uniform1f(m_lighting, level(GL_LIGHTING));
    }

private:
    void Make()
    {
        m_name = gl::CreateProgram();
        for (auto const& [type, text] :
            { std::pair(GL_VERTEX_SHADER, &kVertexShader[0]), { GL_FRAGMENT_SHADER, &kFragmentShader[0] } }) {
            GLuint const shader = gl::CreateShader(static_cast<GLenum>(type));
            gl::ShaderSource(shader, 1, &text, nullptr);
            gl::CompileShader(shader);
            gl::AttachShader(m_name, shader);
            // The program keeps it.
            gl::DeleteShader(shader);
        }
        gl::LinkProgram(m_name);
        GLint isLinked = 0;
        gl::GetProgramiv(m_name, GL_LINK_STATUS, &isLinked);
        if (!isLinked) {
            gl::DeleteProgram(m_name);
            m_name = 0;
            return;
        }
        m_lights = gl::GetUniformLocation(m_name, "lights");
        m_lighting = gl::GetUniformLocation(m_name, "lighting");
    }

    GLuint m_name = 0;
    GLint m_lights = -1;
    GLint m_lighting = -1;
    std::uint64_t m_generation = 0;
};

// Behind the context's lock, and gone with the context.
Program g_program;

} // namespace

TextureProgram::TextureProgram(std::size_t triangles)
    : m_isUsed(triangles > kFewTriangles && g_program.Name() != 0)
{
    if (!m_isUsed)
        return;
    gl::UseProgram(g_program.Name());
    g_program.SetLights();
}

TextureProgram::~TextureProgram()
{
    if (m_isUsed)
        gl::UseProgram(0);
}

} // namespace ombrel
