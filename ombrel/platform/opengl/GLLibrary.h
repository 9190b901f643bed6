#pragma once
#include <initializer_list>
#include <string>

namespace ombrel {

/// What a machine without OpenGL misses, as a person installs it.
inline constexpr char kOpenGLPackages[] = "on Debian: apt install libegl1 libopengl0 libglu1-mesa libgl1-mesa-dri";

/// A shared library that is opened while the program runs, and stays open until it ends: drivers have threads.
class GLLibrary {
public:
    using Function = void (*)();
    /// The first of the names that can be opened. Throws Error (Resource) with what to install when none can.
    explicit GLLibrary(std::initializer_list<char const*> names);
    /// Null when the library has no function of that name.
    Function Find(std::string const& name) const;

private:
    void* m_handle = nullptr;
};

} // namespace ombrel
