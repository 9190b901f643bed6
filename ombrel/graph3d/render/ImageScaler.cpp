#include "ombrel/colour/TextureMap.h"
#include "ombrel/graph3d/render/SurfaceRenderer.h"
#include "ombrel/platform/opengl/GLCanvas.h"
#include "ombrel/platform/opengl/OpenGL.h"

namespace ombrel {
namespace {

// Outside of a draw there is nothing to draw on, which OpenGL wants even so.
class ImageScaler : public TextureScaler {
public:
    int GetMaxSize() override
    {
        GLCanvas canvas;
        GLCanvas::Scope const scope(canvas);
        GLint size = 0;
        gl::GetIntegerv(GL_MAX_TEXTURE_SIZE, &size);
        return size;
    }
    void Scale(CSize size, BYTE const* from, CSize scaledSize, BYTE* to) override
    {
        GLCanvas canvas;
        GLCanvas::Scope const scope(canvas);
        LoadGLU();
        gl::PixelStorei(GL_UNPACK_ALIGNMENT, 1);
        glu::ScaleImage(
            GL_RGBA, size.cx, size.cy, GL_UNSIGNED_BYTE, from, scaledSize.cx, scaledSize.cy, GL_UNSIGNED_BYTE, to);
    }
};

} // namespace

TextureScaler& SurfaceRenderer::GetImageScaler()
{
    static ImageScaler scaler;
    return scaler;
}

} // namespace ombrel
