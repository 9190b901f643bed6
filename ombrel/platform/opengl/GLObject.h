#pragma once
#include "ombrel/platform/opengl/GLContext.h"

#include <utility>

namespace ombrel {

/// A texture, buffer, framebuffer, renderbuffer or program of the process's context: an owned name.
///
/// Made within a GLCanvas::Scope; destroyed anywhere, in any thread.
class GLObject {
public:
    using Kind = GLContext::Kind;
    /// None.
    GLObject() = default;
    /// A new name.
    explicit GLObject(Kind kind);
    ~GLObject() { Reset(); }
    GLObject(GLObject&& other) noexcept
        : m_kind(other.m_kind)
        , m_name(std::exchange(other.m_name, 0))
        , m_generation(other.m_generation)
    {
    }
    GLObject& operator=(GLObject&& other) noexcept
    {
        GLObject taken(std::move(other));
        std::swap(m_kind, taken.m_kind);
        std::swap(m_name, taken.m_name);
        std::swap(m_generation, taken.m_generation);
        return *this;
    }
    GLObject(GLObject const&) = delete;
    GLObject& operator=(GLObject const&) = delete;
    void Reset() noexcept;
    /// 0 when there is none.
    unsigned int Name() const { return m_name; }
    /// False when there is none, or when its context was lost. Within a GLCanvas::Scope.
    bool IsAlive() const { return m_name != 0 && m_generation == GLContext::Process().Generation(); }

private:
    Kind m_kind = Kind::Texture;
    unsigned int m_name = 0;
    std::uint64_t m_generation = 0;
};

} // namespace ombrel
