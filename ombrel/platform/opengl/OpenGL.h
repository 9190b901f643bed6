#pragma once
#include "ombrel/platform/opengl/GLLibrary.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>
#include <GL/glu.h>
#undef GL_GLEXT_PROTOTYPES

/// The functions of OpenGL that the library calls, as gl::Begin, gl::Enable and so on. A name added here is there.
#define OMBREL_GL_FUNCTIONS(X)                                                                                         \
    /* primitives */                                                                                                   \
    X(Begin)                                                                                                           \
    X(End)                                                                                                             \
    X(Vertex2d)                                                                                                        \
    X(Vertex2f)                                                                                                        \
    X(Vertex2i)                                                                                                        \
    X(Vertex3d)                                                                                                        \
    X(Vertex3dv)                                                                                                       \
    X(Vertex3f)                                                                                                        \
    X(Vertex3fv)                                                                                                       \
    X(Normal3d)                                                                                                        \
    X(Normal3dv)                                                                                                       \
    X(Normal3f)                                                                                                        \
    X(Normal3fv)                                                                                                       \
    X(Color3d)                                                                                                         \
    X(Color3f)                                                                                                         \
    X(Color3ub)                                                                                                        \
    X(Color3ubv)                                                                                                       \
    X(Color4d)                                                                                                         \
    X(Color4f)                                                                                                         \
    X(Color4ub)                                                                                                        \
    X(Color4ubv)                                                                                                       \
    X(TexCoord1d)                                                                                                      \
    X(TexCoord1f)                                                                                                      \
    X(TexCoord2d)                                                                                                      \
    X(TexCoord2f)                                                                                                      \
    X(Rectd)                                                                                                           \
    /* arrays and buffers */                                                                                           \
    X(EnableClientState)                                                                                               \
    X(DisableClientState)                                                                                              \
    X(VertexPointer)                                                                                                   \
    X(NormalPointer)                                                                                                   \
    X(ColorPointer)                                                                                                    \
    X(TexCoordPointer)                                                                                                 \
    X(DrawArrays)                                                                                                      \
    X(DrawElements)                                                                                                    \
    X(DrawRangeElements)                                                                                               \
    X(MultiDrawArrays)                                                                                                 \
    X(MultiDrawElements)                                                                                               \
    X(PrimitiveRestartIndex)                                                                                           \
    X(GenBuffers)                                                                                                      \
    X(DeleteBuffers)                                                                                                   \
    X(BindBuffer)                                                                                                      \
    X(BufferData)                                                                                                      \
    X(BufferSubData)                                                                                                   \
    /* lights and materials */                                                                                         \
    X(Materialf)                                                                                                       \
    X(Materialfv)                                                                                                      \
    X(ColorMaterial)                                                                                                   \
    X(Lightf)                                                                                                          \
    X(Lightfv)                                                                                                         \
    X(LightModelf)                                                                                                     \
    X(LightModelfv)                                                                                                    \
    X(LightModeli)                                                                                                     \
    X(ShadeModel)                                                                                                      \
    /* matrices */                                                                                                     \
    X(MatrixMode)                                                                                                      \
    X(LoadIdentity)                                                                                                    \
    X(LoadMatrixd)                                                                                                     \
    X(MultMatrixd)                                                                                                     \
    X(PushMatrix)                                                                                                      \
    X(PopMatrix)                                                                                                       \
    X(Translated)                                                                                                      \
    X(Rotated)                                                                                                         \
    X(Scaled)                                                                                                          \
    X(Frustum)                                                                                                         \
    X(Ortho)                                                                                                           \
    X(Viewport)                                                                                                        \
    X(DepthRange)                                                                                                      \
    /* state */                                                                                                        \
    X(Enable)                                                                                                          \
    X(Disable)                                                                                                         \
    X(IsEnabled)                                                                                                       \
    X(PushAttrib)                                                                                                      \
    X(PopAttrib)                                                                                                       \
    X(PushClientAttrib)                                                                                                \
    X(PopClientAttrib)                                                                                                 \
    X(AlphaFunc)                                                                                                       \
    X(BlendFunc)                                                                                                       \
    X(ClipPlane)                                                                                                       \
    X(ColorMask)                                                                                                       \
    X(CullFace)                                                                                                        \
    X(DepthFunc)                                                                                                       \
    X(DepthMask)                                                                                                       \
    X(FrontFace)                                                                                                       \
    X(Hint)                                                                                                            \
    X(LineStipple)                                                                                                     \
    X(LineWidth)                                                                                                       \
    X(PointSize)                                                                                                       \
    X(PolygonMode)                                                                                                     \
    X(PolygonOffset)                                                                                                   \
    X(Scissor)                                                                                                         \
    X(StencilFunc)                                                                                                     \
    X(StencilMask)                                                                                                     \
    X(StencilOp)                                                                                                       \
    X(GetBooleanv)                                                                                                     \
    X(GetDoublev)                                                                                                      \
    X(GetError)                                                                                                        \
    X(GetFloatv)                                                                                                       \
    X(GetIntegerv)                                                                                                     \
    X(GetString)                                                                                                       \
    /* textures */                                                                                                     \
    X(GenTextures)                                                                                                     \
    X(DeleteTextures)                                                                                                  \
    X(IsTexture)                                                                                                       \
    X(BindTexture)                                                                                                     \
    X(TexImage1D)                                                                                                      \
    X(TexImage2D)                                                                                                      \
    X(TexSubImage1D)                                                                                                   \
    X(TexSubImage2D)                                                                                                   \
    X(TexParameteri)                                                                                                   \
    X(TexEnvf)                                                                                                         \
    X(TexEnvi)                                                                                                         \
    /* programs */                                                                                                     \
    X(CreateShader)                                                                                                    \
    X(ShaderSource)                                                                                                    \
    X(CompileShader)                                                                                                   \
    X(DeleteShader)                                                                                                    \
    X(CreateProgram)                                                                                                   \
    X(AttachShader)                                                                                                    \
    X(LinkProgram)                                                                                                     \
    X(GetProgramiv)                                                                                                    \
    X(DeleteProgram)                                                                                                   \
    X(UseProgram)                                                                                                      \
    X(GetUniformLocation)                                                                                              \
    X(Uniform1f)                                                                                                       \
    X(Uniform2f)                                                                                                       \
    X(GetProgramInfoLog)                                                                                               \
    X(Uniform3f)                                                                                                       \
    /* pictures */                                                                                                     \
    X(Clear)                                                                                                           \
    X(ClearColor)                                                                                                      \
    X(ClearDepth)                                                                                                      \
    X(ClearStencil)                                                                                                    \
    X(DrawBuffer)                                                                                                      \
    X(ReadBuffer)                                                                                                      \
    X(PixelStorei)                                                                                                     \
    X(ReadPixels)                                                                                                      \
    X(Flush)                                                                                                           \
    X(Finish)                                                                                                          \
    X(GenFramebuffers)                                                                                                 \
    X(DeleteFramebuffers)                                                                                              \
    X(BindFramebuffer)                                                                                                 \
    X(FramebufferTexture2D)                                                                                            \
    X(FramebufferRenderbuffer)                                                                                         \
    X(CheckFramebufferStatus)                                                                                          \
    X(GenRenderbuffers)                                                                                                \
    X(DeleteRenderbuffers)                                                                                             \
    X(BindRenderbuffer)                                                                                                \
    X(RenderbufferStorage)

/// Those of the OpenGL utility library, as glu::Sphere.
#define OMBREL_GLU_FUNCTIONS(X)                                                                                        \
    X(Project)                                                                                                         \
    X(UnProject)                                                                                                       \
    X(ScaleImage)                                                                                                      \
    X(NewQuadric)                                                                                                      \
    X(DeleteQuadric)                                                                                                   \
    X(QuadricDrawStyle)                                                                                                \
    X(QuadricNormals)                                                                                                  \
    X(Sphere)                                                                                                          \
    X(Cylinder)                                                                                                        \
    X(Disk)                                                                                                            \
    X(NewTess)                                                                                                         \
    X(DeleteTess)                                                                                                      \
    X(TessCallback)                                                                                                    \
    X(TessProperty)                                                                                                    \
    X(TessNormal)                                                                                                      \
    X(TessBeginPolygon)                                                                                                \
    X(TessBeginContour)                                                                                                \
    X(TessVertex)                                                                                                      \
    X(TessEndContour)                                                                                                  \
    X(TessEndPolygon)

namespace ombrel {

// Null until the libraries are loaded: call the functions of gl within a GLCanvas::Scope, those of glu there or after
// LoadGLU.
namespace gl {
// A declared name takes no parentheses.
#define OMBREL_DECLARE(name) extern decltype(&::gl##name) name; // NOLINT(bugprone-macro-parentheses)
OMBREL_GL_FUNCTIONS(OMBREL_DECLARE)
#undef OMBREL_DECLARE
} // namespace gl

namespace glu {
// A declared name takes no parentheses.
#define OMBREL_DECLARE(name) extern decltype(&::glu##name) name; // NOLINT(bugprone-macro-parentheses)
OMBREL_GLU_FUNCTIONS(OMBREL_DECLARE)
#undef OMBREL_DECLARE
} // namespace glu

/// Fills the table of gl from the library or, what it does not have, from the driver. Throws Error (Resource) naming
/// the function when one is in neither.
void LoadGL(GLLibrary const& library, GLLibrary::Function (*getDriverFunction)(char const*));
/// Opens the utility library unless that was done; it needs no context, but the functions that draw do. Any thread may
/// call it. Throws Error (Resource) with what to install.
void LoadGLU();

} // namespace ombrel
