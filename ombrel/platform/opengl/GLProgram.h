#pragma once
#include "ombrel/platform/opengl/GLObject.h"

#include <cstdint>
#include <string>
#include <utility>

namespace ombrel {

/// A program of the graphics card, or of what stands in for one: what it does with vertices and pixels.
///
/// All functions belong within a GLCanvas::Scope. Programs of a process are few and shared: whoever has one keeps it
/// for good, and it is made again after the context was lost.
class GLProgram {
public:
    /// Nothing is compiled before the first use.
    GLProgram(std::string vertexText, std::string pixelText)
        : m_vertexText(std::move(vertexText))
        , m_pixelText(std::move(pixelText))
    {
    }

    /// Whether the driver takes the program, which is made now unless it was; a driver is asked once.
    bool IsTaken();

    /// Draws with a program until this ends; then without any.
    class Use {
    public:
        /// Throws Error (Resource) with the driver's words when it takes the program not.
        explicit Use(GLProgram& program);
        ~Use();
        Use(Use const&) = delete;
        Use& operator=(Use const&) = delete;
        /// The values that the program's text calls by that name.
        void Set(char const* name, float x) const;
        void Set(char const* name, float x, float y) const;
        void Set(char const* name, float x, float y, float z) const;
        /// Sets lights to 1 for each of the two that are on, else 0, and isLit so for lighting.
        void SetLights() const;

    private:
        int Find(char const* name) const;
        unsigned int m_name;
    };

private:
    void Make();

    std::string m_vertexText;
    std::string m_pixelText;
    GLObject m_program;
    /// Of the context whose driver did not take it.
    std::uint64_t m_refusedGeneration = 0;
};

} // namespace ombrel
