#pragma once
#include "ombrel/platform/opengl/GLObject.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <bit>
#include <vector>

namespace ombrel {

/// A place in the buffer that is bound, as OpenGL's functions take it.
inline void const* BufferOffset(std::size_t bytes) { return std::bit_cast<void const*>(bytes); }

/// Gives the buffer that content, for a target as GL_ARRAY_BUFFER; makes it when there is none.
template <typename T> void FillBuffer(GLObject& buffer, unsigned int target, std::vector<T> const& content)
{
    if (!buffer.IsAlive())
        buffer = GLObject(GLObject::Kind::Buffer);
    gl::BindBuffer(target, buffer.Name());
    gl::BufferData(target, static_cast<GLsizeiptr>(content.size() * sizeof(T)), content.data(), GL_STATIC_DRAW);
    gl::BindBuffer(target, 0);
}

/// Gives back the memory of what a buffer holds now: an assigned {} would keep it.
template <typename T> void Release(std::vector<T>& content) { std::vector<T>().swap(content); }

} // namespace ombrel
