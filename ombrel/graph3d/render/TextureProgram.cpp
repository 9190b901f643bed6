#include "ombrel/graph3d/render/TextureProgram.h"

namespace ombrel {
namespace {

// Fewer are drawn in less time than the program is made in.
constexpr std::size_t kFewTriangles = 100000;

// What the fixed functions do with white faces under white lights: all channels are the same, so that one number a side
// will do.
constexpr char kVertexShader[] = R"(#version 120
uniform vec2 lights;
uniform float isLit;
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
    placeFrontBack = vec3(gl_MultiTexCoord0.x, mix(vec2(1.0), clamp(level, 0.0, 1.0), isLit));
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

/// The one program of the process, which all graphs share: drivers translate it anew for each that is made. Never
/// destroyed: the driver may have ended before what is static is.
GLProgram& Program()
{
    static auto* const program = new GLProgram(kVertexShader, kFragmentShader);
    return *program;
}

} // namespace

TextureProgram::TextureProgram(std::size_t triangles)
{
    if (triangles <= kFewTriangles || !Program().IsTaken())
        return;
    m_use.emplace(Program());
    m_use->SetLights();
}

} // namespace ombrel
