#include "ombrel/platform/opengl/OpenGL.h"

#include "ombrel/platform/framework/Error.h"

namespace ombrel {

namespace gl {
// A declared name takes no parentheses.
#define OMBREL_DEFINE(name) decltype(&::gl##name) name = nullptr; // NOLINT(bugprone-macro-parentheses)
OMBREL_GL_FUNCTIONS(OMBREL_DEFINE)
#undef OMBREL_DEFINE
} // namespace gl

namespace glu {
// A declared name takes no parentheses.
#define OMBREL_DEFINE(name) decltype(&::glu##name) name = nullptr; // NOLINT(bugprone-macro-parentheses)
OMBREL_GLU_FUNCTIONS(OMBREL_DEFINE)
#undef OMBREL_DEFINE
} // namespace glu

namespace {

[[noreturn]] void ThrowMissing(char const* name)
{
    throw Error(Error::Kind::Resource,
        std::string("3D pictures need OpenGL 3.0, and the one installed has no ") + name + " (" + kOpenGLPackages
            + ")");
}

template <typename Pointer> void Set(Pointer& entry, GLLibrary::Function function, char const* name)
{
    if (!function)
        ThrowMissing(name);
    entry = reinterpret_cast<Pointer>(function);
}

void FillGLU()
{
    GLLibrary const library({ "libGLU.so.1", "libGLU.so" });
#define OMBREL_LOAD(name) Set(glu::name, library.Find("glu" #name), "glu" #name);
    OMBREL_GLU_FUNCTIONS(OMBREL_LOAD)
#undef OMBREL_LOAD
}

} // namespace

void LoadGL(GLLibrary const& library, GLLibrary::Function (*getDriverFunction)(char const*))
{
    auto const find = [&](char const* name) {
        auto const function = library.Find(name);
        return function ? function : getDriverFunction(name);
    };
#define OMBREL_LOAD(name) Set(gl::name, find("gl" #name), "gl" #name);
    OMBREL_GL_FUNCTIONS(OMBREL_LOAD)
#undef OMBREL_LOAD
}

void LoadGLU()
{
    // Once; when that throws, the next call tries again.
    static bool const loaded = (FillGLU(), true);
    (void)loaded;
}

} // namespace ombrel
