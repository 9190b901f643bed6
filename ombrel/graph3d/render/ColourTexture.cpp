#include "ombrel/graph3d/render/ColourTexture.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/platform/opengl/OpenGL.h"

namespace ombrel {

std::vector<BYTE> MakeTexels(double lo, double hi, std::function<COLORREF(double value)> const& colourOf)
{
    std::vector<BYTE> texels;
    texels.reserve(3 * kTexels);
    for (int k = 0; k < kTexels; ++k) {
        COLORREF const colour = colourOf(lo + k * (hi - lo) / (kTexels - 1));
        for (int shift = 0; shift < 24; shift += 8)
            texels.push_back(static_cast<BYTE>(colour >> shift));
    }
    return texels;
}

double GetTexelPlace(double value, double lo, double hi)
{
    return static_cast<float>(lo) == static_cast<float>(hi) ? 0.0 : (value - lo) / (hi - lo);
}

unsigned int ColourTexture::Update(std::vector<BYTE>&& texels)
{
    if (!m_texture.IsAlive() || texels != m_texels) {
        m_texels = std::move(texels);
        m_texture = GLObject(GLObject::Kind::Texture);
        gl::PixelStorei(GL_UNPACK_ALIGNMENT, 1);
        gl::BindTexture(GL_TEXTURE_1D, m_texture.Name());
        gl::TexImage1D(GL_TEXTURE_1D, 0, GL_RGB, static_cast<GLsizei>(m_texels.size() / 3), 0, GL_RGB, GL_UNSIGNED_BYTE,
            m_texels.data());
    }
    return m_texture.Name();
}

void ColourTexture::Bind(C3DGraph& graph, std::vector<BYTE>&& texels)
{
    graph.Set1DTextureState(1, static_cast<int>(Update(std::move(texels))));
}

void ColourTexture::Unbind(C3DGraph& graph) { graph.Set1DTextureState(0, 0); }

} // namespace ombrel
