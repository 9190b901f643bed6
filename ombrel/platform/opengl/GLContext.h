#pragma once
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace ombrel {

/// The OpenGL context of the process: made at its first use, without a window or a display server, on a graphics card
/// whose driver is there and else on Mesa's software renderer.
///
/// One thread at a time has it. It is entered and left like a lock, in pairs and any number of times within each other;
/// between the outermost pair it is current in that thread, and what the host had current there comes back afterwards.
class GLContext {
public:
    /// The libraries to open, for tests of machines that miss them.
    struct Libraries {
        char const* egl = "libEGL.so.1";
        char const* openGL = "libOpenGL.so.0";
    };
    /// What Release gives back.
    enum class Kind { Texture, Buffer, Framebuffer, Renderbuffer, Program };

    explicit GLContext(Libraries const& libraries);
    ~GLContext();
    GLContext(GLContext const&) = delete;
    GLContext& operator=(GLContext const&) = delete;
    static GLContext& Process();

    /// Throws Error (Resource) when there can be no context, the same each time and without trying again.
    void Enter();
    void Leave() noexcept;
    /// The number of the context that is current: 1, and one more after each that was lost. What was made in another
    /// one is gone.
    std::uint64_t Generation() const { return m_generation; }
    /// The largest width and height of a picture. Within Enter and Leave.
    int LongestSide() const { return m_longestSide; }
    /// Whether the processor draws, not a graphics card. Within Enter and Leave.
    bool IsSoftware() const { return m_isSoftware; }
    /// Deletes an object of OpenGL, from any thread and without waiting: at once, or as soon as who has the context
    /// leaves it.
    void Release(Kind kind, unsigned int name, std::uint64_t generation) noexcept;
    /// What happens when a driver loses the context: whoever enters next gets a new one. Within Enter and Leave, for
    /// tests.
    void Lose();

private:
    struct Display;
    struct Released {
        Kind kind;
        unsigned int name;
        std::uint64_t generation;
    };
    void Create();
    void MakeCurrent();
    void DeleteReleased() noexcept;
    void ReleaseIfFree() noexcept;

    Libraries m_libraries;
    std::recursive_mutex m_lock;
    // Behind m_lock.
    std::unique_ptr<Display> m_display;
    std::optional<std::string> m_failure;
    std::uint64_t m_generation = 0;
    int m_depth = 0;
    int m_longestSide = 0;
    bool m_isSoftware = false;
    // Behind m_releasedLock, which is held for a moment only.
    std::mutex m_releasedLock;
    std::vector<Released> m_released;
};

} // namespace ombrel
