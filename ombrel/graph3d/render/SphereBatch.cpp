#include "ombrel/graph3d/render/SphereBatch.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/render/FaceBatch.h"
#include "ombrel/graph3d/render/GLBuffer.h"
#include "ombrel/graph3d/view/Picture3D.h"
#include "ombrel/platform/opengl/GLProgram.h"
#include "ombrel/platform/opengl/GLState.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <span>
#include <string>

namespace ombrel {
namespace {

/// A corner of the square that the sphere just fills: it lies across the line of sight, through the centre or nearer.
/// Which one, the fourth channel of the colour tells; the last is the middle, raised to the sphere's nearest point.
constexpr char kVertexText[] = R"(#version 130
// What a pixel measures at a distance of 1 from the eye.
uniform float pixel;
// How much nearer the square is than the centre, in radii.
uniform float raise;
out vec3 place;
out vec3 fromCentre;
flat out float radius;
flat out vec3 colour;
void main()
{
    vec3 centre = (gl_ModelViewMatrix * vec4(gl_Vertex.xyz, 1.0)).xyz;
    float distance = length(centre);
    radius = max(gl_Vertex.w, 0.6 * pixel * distance);
    colour = gl_Color.rgb;
    vec3 away = centre / distance;
    // With the eye in the sphere, or nearly so, nothing is seen of it.
    float apart = distance * distance - radius * radius;
    float reach = apart > 1e-6 ? radius * distance * inversesqrt(apart) : 0.0;
    int corner = int(gl_Color.a * 255.0 + 0.5);
    if (corner == 4) {
        fromCentre = -min(radius, reach) * away;
    } else {
        vec3 right = normalize(cross(away, vec3(0.0, 1.0, 0.0)));
        vec3 up = cross(right, away);
        fromCentre = reach * ((corner == 1 || corner == 2 ? right : -right) + (corner >= 2 ? up : -up))
            - raise * min(radius, reach) * away;
    }
    place = centre + fromCentre;
    gl_Position = gl_ProjectionMatrix * vec4(place, 1.0);
}
)";

/// Everything is reckoned from the sphere's centre: single precision is enough there for the smallest sphere. Light
/// falls on a pixel as OpenGL's own does on a vertex.
constexpr char kPixelText[] = R"(
in vec3 place;
in vec3 fromCentre;
flat in float radius;
flat in vec3 colour;
uniform float isLit;
uniform vec2 lights;
// Half the sides of the box that cuts, which lies about the origin.
uniform vec3 box;
vec3 Light(int i, vec3 at, vec3 normal)
{
    vec3 towards = gl_LightSource[i].position.xyz - at;
    float part = max(dot(towards, normal) * inversesqrt(dot(towards, towards)), 0.0);
    return (gl_LightSource[i].ambient.rgb + part * gl_LightSource[i].diffuse.rgb)
        / gl_LightSource[i].constantAttenuation;
}
vec3 Lit(vec3 at, vec3 normal)
{
    if (isLit == 0.0)
        return colour;
    vec3 light = gl_LightModel.ambient.rgb;
    if (lights.x != 0.0)
        light += Light(0, at, normal);
    if (lights.y != 0.0)
        light += Light(1, at, normal);
    return colour * light;
}
void main()
{
    vec3 sight = normalize(place);
    float along = dot(fromCentre, sight);
    float square = radius * radius - dot(fromCentre, fromCentre) + along * along;
    if (square < 0.0)
        discard;
    float root = sqrt(square);
    float step = -along - root;
    vec3 normal = fromCentre + step * sight;
#if IS_CUT
    // Where the line of sight enters the box, and leaves it, in the box's directions.
    mat3 turn = mat3(gl_ModelViewMatrix);
    vec3 start = (place - gl_ModelViewMatrix[3].xyz) * turn;
    vec3 way = sight * turn;
    way += vec3(equal(way, vec3(0.0))) * 1e-20;
    vec3 enter = (-sign(way) * box - start) / way;
    vec3 leave = (sign(way) * box - start) / way;
    float first = max(max(enter.x, enter.y), enter.z);
    if (step < first) {
        step = first;
        normal = turn * (-sign(way) * vec3(equal(enter, vec3(first))));
    }
    if (step > min(min(leave.x, leave.y), leave.z) || step > root - along)
        discard;
#endif
    vec3 at = place + step * sight;
    gl_FragColor = vec4(Lit(at, normalize(normal)), 1.0);
#if IS_EXACT
    gl_FragDepth = 0.5 - 0.5 * (gl_ProjectionMatrix[2][2] + gl_ProjectionMatrix[3][2] / at.z);
#endif
}
)";

constexpr std::size_t kCorners = 5;

struct Corner {
    std::array<float, 3> centre;
    float radius;
    std::array<BYTE, 4> colour;
};

/// Of a flat square, and of one whose middle is raised.
constexpr std::uint32_t kFlat[] = { 0, 1, 2, 0, 2, 3 };
constexpr std::uint32_t kRaised[] = { 0, 1, 4, 1, 2, 4, 2, 3, 4, 3, 0, 4 };

std::span<std::uint32_t const> GetTriangles(bool isRaised)
{
    return isRaised ? std::span<std::uint32_t const>(kRaised) : std::span<std::uint32_t const>(kFlat);
}

double PixelsOfUnit(Camera const& camera) { return camera.Near() / (camera.UnitsOfHeight(1.0) * camera.EyeDistance()); }

} // namespace

void SphereBatch::Clear()
{
    m_spheres.clear();
    m_sumOfSquares = 0.0;
    m_isUploaded = false;
}

void SphereBatch::Add(CVertex const& centre, double radius, COLORREF colour)
{
    // Farther out nothing of a sphere is seen; and larger ones single precision makes ragged.
    constexpr double kFarthest = 1e4;
    constexpr double kLargest = 100.0;
    for (int i = 0; i < 3; ++i) {
        if (!(std::fabs(centre[i]) < kFarthest))
            return;
    }
    if (!(radius > 0.0))
        return;
    double const used = std::min(radius, kLargest);
    m_spheres.push_back({ FaceVertex::Floats(centre), static_cast<float>(used), FaceVertex::Bytes(colour) });
    m_sumOfSquares += used * used;
    m_isUploaded = false;
}

void SphereBatch::InvalidateDeviceObjects()
{
    m_isUploaded = false;
    m_vertexBuffer.Reset();
    m_indexBuffer.Reset();
}

void SphereBatch::Upload(std::array<double, 3> const& box)
{
    if (m_isUploaded && m_vertexBuffer.IsAlive() && m_box == box)
        return;
    auto const isInside = [&box](Sphere const& sphere) {
        for (std::size_t i = 0; i < box.size(); ++i) {
            if (std::fabs(static_cast<double>(sphere.centre[i])) + static_cast<double>(sphere.radius) > box[i])
                return false;
        }
        return true;
    };
    m_numInside = static_cast<std::size_t>(
        std::stable_partition(m_spheres.begin(), m_spheres.end(), isInside) - m_spheres.begin());
    std::vector<Corner> corners;
    corners.reserve(m_spheres.size() * kCorners);
    for (Sphere const& sphere : m_spheres) {
        for (std::size_t i = 0; i < kCorners; ++i)
            corners.push_back({ sphere.centre, sphere.radius,
                { sphere.colour[0], sphere.colour[1], sphere.colour[2], static_cast<BYTE>(i) } });
    }
    FillBuffer(m_vertexBuffer, GL_ARRAY_BUFFER, corners);
    m_indexBuffer.Reset();
    m_box = box;
    m_isUploaded = true;
}

/// Hidden pixels counted.
bool SphereBatch::CoverFewPixels(Camera const& camera) const
{
    constexpr double kFew = 5e6;
    double const pixels = PixelsOfUnit(camera);
    return 4.0 * m_sumOfSquares * pixels * pixels < kFew;
}

bool SphereBatch::AreLarge(Camera const& camera) const
{
    constexpr double kLargePixels = 10.0;
    double const pixels = kLargePixels / PixelsOfUnit(camera);
    return m_sumOfSquares > pixels * pixels * static_cast<double>(m_spheres.size());
}

/// Roughly: what counts is that most of what is hidden comes later than what hides it.
void SphereBatch::SortByDistance(Camera const& camera, bool isRaised)
{
    Camera::Matrix const& view = camera.ModelView();
    std::array<double, 3> const towardsEye { view[2], view[6], view[10] };
    if (m_indexBuffer.IsAlive() && towardsEye == m_towardsEye && isRaised == m_isRaised)
        return;
    constexpr std::size_t kSlices = 1024;
    double const reach = m_box[0] + m_box[1] + m_box[2];
    auto const sliceOf = [&](Sphere const& sphere) {
        double nearness = 0.0;
        for (std::size_t k = 0; k < towardsEye.size(); ++k)
            nearness += towardsEye[k] * static_cast<double>(sphere.centre[k]);
        double const part = std::clamp((reach - nearness) / (2.0 * reach), 0.0, 1.0);
        return static_cast<std::size_t>(part * (kSlices - 1));
    };
    std::vector<std::size_t> next(kSlices + 1);
    for (std::size_t i = 0; i < m_numInside; ++i)
        ++next[sliceOf(m_spheres[i]) + 1];
    std::partial_sum(next.begin(), next.end(), next.begin());
    std::span<std::uint32_t const> const triangles = GetTriangles(isRaised);
    std::vector<std::uint32_t> indices(m_spheres.size() * triangles.size());
    for (std::size_t i = 0; i < m_spheres.size(); ++i) {
        std::size_t const place = i < m_numInside ? next[sliceOf(m_spheres[i])]++ : i;
        for (std::size_t k = 0; k < triangles.size(); ++k)
            indices[place * triangles.size() + k] = static_cast<std::uint32_t>(i * kCorners) + triangles[k];
    }
    FillBuffer(m_indexBuffer, GL_ELEMENT_ARRAY_BUFFER, indices);
    m_towardsEye = towardsEye;
    m_isRaised = isRaised;
}

void SphereBatch::Draw(C3DGraph& graph)
{
    if (m_spheres.empty() || !graph.GetPicture())
        return;
    Camera const& camera = graph.GetPicture()->camera;
    Upload(graph.GetClipBox());
    Look const look = CoverFewPixels(camera) ? Look::Exact : Look::Fast;
    SortByDistance(camera, look == Look::Fast && AreLarge(camera));
    bool const isClipped = gl::IsEnabled(GL_CLIP_PLANE0) == GL_TRUE;
    GLKeptSettings const kept(GL_CURRENT_BIT | GL_DEPTH_BUFFER_BIT | GL_ENABLE_BIT);
    // Of spheres at one place the first is drawn, once.
    gl::DepthFunc(GL_LESS);
    for (GLenum plane = 0; plane < 6; ++plane)
        gl::Disable(GL_CLIP_PLANE0 + plane);
    gl::EnableClientState(GL_VERTEX_ARRAY);
    gl::EnableClientState(GL_COLOR_ARRAY);
    gl::BindBuffer(GL_ARRAY_BUFFER, m_vertexBuffer.Name());
    gl::BindBuffer(GL_ELEMENT_ARRAY_BUFFER, m_indexBuffer.Name());
    constexpr int kStride = sizeof(Corner);
    gl::VertexPointer(4, GL_FLOAT, kStride, BufferOffset(offsetof(Corner, centre)));
    gl::ColorPointer(4, GL_UNSIGNED_BYTE, kStride, BufferOffset(offsetof(Corner, colour)));
    DrawRange(graph, look, 0, m_numInside);
    DrawRange(graph, isClipped ? Look::Cut : look, m_numInside, m_spheres.size() - m_numInside);
}

void SphereBatch::DrawRange(C3DGraph const& graph, Look look, std::size_t first, std::size_t count) const
{
    if (count == 0)
        return;
    auto const make = [](char const* definitions) {
        return new GLProgram(kVertexText, std::string("#version 130\n") + definitions + kPixelText);
    };
    // Never destroyed: the driver may have ended before what is static is.
    static GLProgram* const programs[] = { make("#define IS_CUT 0\n#define IS_EXACT 0\n"),
        make("#define IS_CUT 0\n#define IS_EXACT 1\n"), make("#define IS_CUT 1\n#define IS_EXACT 1\n") };
    GLProgram::Use const program(*programs[static_cast<std::size_t>(look)]);
    Camera const& camera = graph.GetPicture()->camera;
    program.Set("pixel", static_cast<float>(camera.UnitsOfHeight(1.0) / camera.Near()));
    // Between the plane through the centre and the nearest point.
    program.Set("raise", look == Look::Fast && !m_isRaised ? 0.5F : 0.0F);
    program.SetLights();
    if (look == Look::Cut)
        program.Set("box", static_cast<float>(m_box[0]), static_cast<float>(m_box[1]), static_cast<float>(m_box[2]));
    std::size_t const numIndices = GetTriangles(m_isRaised).size();
    gl::DrawElements(GL_TRIANGLES, static_cast<GLsizei>(count * numIndices), GL_UNSIGNED_INT,
        BufferOffset(first * numIndices * sizeof(std::uint32_t)));
}

} // namespace ombrel
