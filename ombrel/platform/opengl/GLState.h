#pragma once
#include <array>

namespace ombrel {

/// All settings of the context that is current, put back when this ends: framebuffer, attributes, matrices, arrays.
/// What was pushed onto OpenGL's stacks in between, and not popped, goes.
class GLState {
public:
    GLState();
    ~GLState();
    GLState(GLState const&) = delete;
    GLState& operator=(GLState const&) = delete;

private:
    struct Matrix {
        int depth = 1;
        std::array<double, 16> values {};
    };
    std::array<Matrix, 3> m_matrices;
    int m_framebuffer = 0;
    int m_attributes = 0;
    int m_clientAttributes = 0;
};

/// Settings of these groups (GL_ENABLE_BIT, …), and the arrays of vertices, put back when this ends.
class GLKeptSettings {
public:
    explicit GLKeptSettings(unsigned int groups);
    ~GLKeptSettings();
    GLKeptSettings(GLKeptSettings const&) = delete;
    GLKeptSettings& operator=(GLKeptSettings const&) = delete;
};

} // namespace ombrel
