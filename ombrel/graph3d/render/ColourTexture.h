#pragma once
#include "ombrel/platform/framework/Types.h"
#include "ombrel/platform/opengl/GLObject.h"

#include <functional>
#include <vector>

namespace ombrel {

class C3DGraph;

/// How many colours a colour texture has.
inline constexpr int kTexels = 1024;
/// The colours of values from lo to hi, evenly spread: kTexels of them, three bytes each.
std::vector<BYTE> MakeTexels(double lo, double hi, std::function<COLORREF(double value)> const& colourOf);
/// Where on such a texture a value lies, 0 … 1; 0 everywhere when lo equals hi in single precision.
double GetTexelPlace(double value, double lo, double hi);

/// The colours by value of a curve, as a 1D texture of OpenGL.
///
/// All but Reset belongs within a draw of the graph.
class ColourTexture {
public:
    /// The name of the texture of these colours, three bytes each.
    unsigned int Update(std::vector<BYTE>&& texels);
    /// Modulates what is drawn next by these colours, until Unbind.
    void Bind(C3DGraph& graph, std::vector<BYTE>&& texels);
    static void Unbind(C3DGraph& graph);
    /// As last updated.
    unsigned int Name() const { return m_texture.Name(); }
    /// Gives the texture back; the next Update makes it again.
    void Reset() { m_texture.Reset(); }

private:
    std::vector<BYTE> m_texels;
    GLObject m_texture;
};

} // namespace ombrel
