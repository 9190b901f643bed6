#include "ombrel/platform/opengl/GLCanvas.h"

#include "ombrel/platform/framework/Error.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>
#include <cassert>
#include <string>

namespace ombrel {
namespace {

/// What is drawn on, behind the context's lock.
GLCanvas* g_current = nullptr;

// The order of bytes that bitmaps have. Drivers keep a picture in the one that it was made with, and then copy where
// they would have to convert.
constexpr GLenum kFormat = GL_BGRA;
constexpr GLenum kType = GL_UNSIGNED_INT_8_8_8_8_REV;
constexpr std::uint32_t kColourBits = 0x00FFFFFF;

[[noreturn]] void ThrowSize(CSize size, std::string const& reason)
{
    throw Error(Error::Kind::Resource,
        "A 3D picture of " + std::to_string(size.cx) + " × " + std::to_string(size.cy)
            + " pixels cannot be made: " + reason);
}

/// Rows of pixels without gaps from and to memory, whatever was set; the settings come back.
class PlainRows {
public:
    PlainRows()
    {
        gl::PushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        gl::BindBuffer(GL_PIXEL_PACK_BUFFER, 0);
        gl::BindBuffer(GL_PIXEL_UNPACK_BUFFER, 0);
        static constexpr GLenum kSettings[]
            = { GL_PACK_ROW_LENGTH, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS, GL_PACK_SWAP_BYTES, GL_UNPACK_ROW_LENGTH,
                  GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS, GL_UNPACK_SWAP_BYTES };
        for (GLenum const setting : kSettings)
            gl::PixelStorei(setting, 0);
    }
    ~PlainRows() { gl::PopClientAttrib(); }
    PlainRows(PlainRows const&) = delete;
    PlainRows& operator=(PlainRows const&) = delete;
};

/// Binds a texture for as long as it lives.
class TextureBinding {
public:
    explicit TextureBinding(GLuint name)
    {
        gl::GetIntegerv(GL_TEXTURE_BINDING_2D, &m_before);
        gl::BindTexture(GL_TEXTURE_2D, name);
    }
    ~TextureBinding() { gl::BindTexture(GL_TEXTURE_2D, static_cast<GLuint>(m_before)); }
    TextureBinding(TextureBinding const&) = delete;
    TextureBinding& operator=(TextureBinding const&) = delete;

private:
    GLint m_before = 0;
};

std::size_t Width(CRect const& rect) { return static_cast<std::size_t>(rect.Width()); }
std::size_t Area(CRect const& rect) { return Width(rect) * static_cast<std::size_t>(rect.Height()); }

CRect Common(CRect const& a, CRect const& b)
{
    CRect common;
    common.IntersectRect(a, b);
    return common;
}

/// From the corner of a rectangle of pixels to that of a smaller one in it.
std::ptrdiff_t Offset(CRect const& from, CRect const& to, std::ptrdiff_t stride)
{
    return (to.top - from.top) * stride + (to.left - from.left);
}

} // namespace

GLCanvas::Scope::Scope(GLCanvas& canvas)
    : m_outer(g_current)
{
    canvas.Prepare();
    gl::BindFramebuffer(GL_FRAMEBUFFER, canvas.m_framebuffer.Name());
    gl::Viewport(0, 0, canvas.m_size.cx, canvas.m_size.cy);
    g_current = &canvas;
}

GLCanvas::Scope::~Scope() { g_current = m_outer; }

void GLCanvas::SetSize(CSize size) { m_size = { std::max(size.cx, 1), std::max(size.cy, 1) }; }

void GLCanvas::Prepare()
{
    if (m_framebuffer.IsAlive() && m_madeSize == m_size)
        return;
    int const longest = GLContext::Process().LongestSide();
    if (m_size.cx > longest || m_size.cy > longest)
        ThrowSize(m_size, "the OpenGL driver draws at most " + std::to_string(longest) + " pixels a side");

    m_sum = {};
    m_numAccumulated = 0;
    m_sumRect = {};
    m_rows = {};
    // The old picture's memory is free before the new one's is asked for.
    m_framebuffer.Reset();
    m_colour.Reset();
    m_depth.Reset();
    GLObject framebuffer(GLObject::Kind::Framebuffer);
    GLObject colour(GLObject::Kind::Texture);
    GLObject depth(GLObject::Kind::Renderbuffer);
    {
        TextureBinding const binding(colour.Name());
        // No levels of detail: without this a texture is not complete.
        gl::TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        gl::TexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
        PlainRows const rows;
        // Not GL_RGBA8, for which they choose the order.
        gl::TexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, m_size.cx, m_size.cy, 0, kFormat, kType, nullptr);
    }
    gl::BindRenderbuffer(GL_RENDERBUFFER, depth.Name());
    gl::RenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH24_STENCIL8, m_size.cx, m_size.cy);
    gl::BindRenderbuffer(GL_RENDERBUFFER, 0);
    gl::BindFramebuffer(GL_FRAMEBUFFER, framebuffer.Name());
    gl::FramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, colour.Name(), 0);
    gl::FramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER, depth.Name());
    if (gl::GetError() == GL_OUT_OF_MEMORY || gl::CheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE)
        ThrowSize(m_size, "the OpenGL driver has no memory for it");
    m_framebuffer = std::move(framebuffer);
    m_colour = std::move(colour);
    m_depth = std::move(depth);
    m_madeSize = m_size;
}

bool GLCanvas::IsCurrent() const { return g_current == this; }

void GLCanvas::ReadRows(CRect const& rect)
{
    m_rows.resize(Area(rect));
    PlainRows const rows;
    gl::ReadPixels(rect.left, m_madeSize.cy - rect.bottom, rect.Width(), rect.Height(), kFormat, kType, m_rows.data());
}

void GLCanvas::WriteRows(CRect const& rect)
{
    // The framebuffer's colours are a texture: what is written there passes no test and no mask.
    TextureBinding const binding(m_colour.Name());
    PlainRows const rows;
    gl::TexSubImage2D(GL_TEXTURE_2D, 0, rect.left, m_madeSize.cy - rect.bottom, rect.Width(), rect.Height(), kFormat,
        kType, m_rows.data());
}

void GLCanvas::ReadPixels(CRect const& rect, std::uint32_t* pixels, std::ptrdiff_t stride)
{
    assert(IsCurrent());
    CRect const inside = Common(rect, { 0, 0, m_madeSize.cx, m_madeSize.cy });
    if (inside.IsRectEmpty())
        return;
    ReadRows(inside);
    pixels += Offset(rect, inside, stride);
    auto const* row = m_rows.data() + m_rows.size();
    for (int y = inside.top; y < inside.bottom; ++y, pixels += stride) {
        row -= inside.Width();
        std::transform(row, row + inside.Width(), pixels, [](std::uint32_t pixel) { return pixel & kColourBits; });
    }
}

void GLCanvas::ReadPixels(CRect const& rect, Raster& bitmap)
{
    CRect const inside = Common(rect, bitmap.Bounds());
    if (!inside.IsRectEmpty())
        ReadPixels(inside, bitmap.Row(inside.top) + inside.left, bitmap.Width());
}

void GLCanvas::WritePixels(CRect const& rect, std::uint32_t const* pixels, std::ptrdiff_t stride)
{
    assert(IsCurrent());
    CRect const inside = Common(rect, { 0, 0, m_madeSize.cx, m_madeSize.cy });
    if (inside.IsRectEmpty())
        return;
    pixels += Offset(rect, inside, stride);
    m_rows.resize(Area(inside));
    auto* row = m_rows.data() + m_rows.size();
    for (int y = inside.top; y < inside.bottom; ++y, pixels += stride) {
        row -= inside.Width();
        std::copy_n(pixels, inside.Width(), row);
    }
    WriteRows(inside);
}

void GLCanvas::WritePixels(CRect const& rect, Raster const& bitmap)
{
    CRect const inside = Common(rect, bitmap.Bounds());
    if (!inside.IsRectEmpty())
        WritePixels(inside, bitmap.Row(inside.top) + inside.left, bitmap.Width());
}

void GLCanvas::ClearAccumulation(CRect const& rect)
{
    assert(IsCurrent());
    m_sumRect = Common(rect, { 0, 0, m_madeSize.cx, m_madeSize.cy });
    m_numAccumulated = 0;
}

void GLCanvas::Accumulate()
{
    assert(IsCurrent() && m_numAccumulated < kMostAccumulated);
    if (m_sumRect.IsRectEmpty())
        return;
    ReadRows(m_sumRect);
    auto const* const channels = reinterpret_cast<unsigned char const*>(m_rows.data());
    std::size_t const count = m_rows.size() * 4;
    m_sum.resize(count);
    if (m_numAccumulated++ == 0)
        std::copy_n(channels, count, m_sum.data());
    else
        std::transform(channels, channels + count, m_sum.data(), m_sum.data(),
            [](unsigned char channel, std::uint16_t sum) { return static_cast<std::uint16_t>(sum + channel); });
}

void GLCanvas::ReturnAccumulation()
{
    assert(IsCurrent());
    if (m_numAccumulated == 0)
        return;
    m_rows.resize(Area(m_sumRect));
    auto* const channels = reinterpret_cast<unsigned char*>(m_rows.data());
    float const factor = 1.0F / static_cast<float>(m_numAccumulated);
    std::transform(m_sum.begin(), m_sum.end(), channels, [factor](std::uint16_t sum) {
        return static_cast<unsigned char>(static_cast<int>(static_cast<float>(sum) * factor + 0.5F));
    });
    WriteRows(m_sumRect);
    // Twice as much as the picture.
    m_sum = {};
    m_numAccumulated = 0;
}

} // namespace ombrel
