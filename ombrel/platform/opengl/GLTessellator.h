#pragma once
#include <mutex>

class GLUtesselator;

namespace ombrel {

/// The one tessellator of the process, made at its first use; whoever holds this has it alone. It needs no context.
///
/// Callbacks and properties are as the last user left them. Throws Error (Resource) with what to install when the
/// utility library of OpenGL is missing.
class GLTessellator {
public:
    GLTessellator();
    GLUtesselator* Get() const { return m_tessellator; }

private:
    std::unique_lock<std::mutex> m_lock;
    GLUtesselator* m_tessellator = nullptr;
};

} // namespace ombrel
