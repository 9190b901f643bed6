#include "ombrel/platform/opengl/GLLibrary.h"

#include "ombrel/platform/framework/Error.h"

#include <dlfcn.h>

namespace ombrel {

GLLibrary::GLLibrary(std::initializer_list<char const*> names)
{
    std::string reason;
    for (char const* const name : names) {
        m_handle = dlopen(name, RTLD_NOW | RTLD_LOCAL);
        if (m_handle)
            return;
        // The first name is the usual one: why it failed says most.
        if (char const* const text = dlerror(); text && reason.empty())
            reason = text;
    }
    throw Error(Error::Kind::Resource,
        "3D pictures need OpenGL, and a library of it cannot be opened: " + reason + " (" + kOpenGLPackages + ")");
}

GLLibrary::Function GLLibrary::Find(std::string const& name) const
{
    return reinterpret_cast<Function>(dlsym(m_handle, name.c_str()));
}

} // namespace ombrel
