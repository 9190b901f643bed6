#pragma once

namespace ombrel {

/// A width that OpenGL takes: widths that are no lengths count as 1.
inline float GetValidLineWidth(double width)
{
    return width > 0.0 ? static_cast<float>(width < 1000.0 ? width : 1000.0) : 1.0F;
}

} // namespace ombrel
