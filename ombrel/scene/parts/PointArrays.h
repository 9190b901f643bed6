#pragma once
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/scene/Heights.h"

#include <array>
#include <span>
#include <vector>

namespace ombrel {

/// Coordinates of points as curves take them; those of the points are given up.
class PointArrays {
public:
    explicit PointArrays(Points& points)
        : m_count(static_cast<int>(points.Count()))
    {
        std::vector<double>* const values[] { &points.x, &points.y, &points.z };
        for (std::size_t i = 0; i < m_arrays.size(); ++i) {
            m_arrays[i] = ToArray(*values[i]);
            *values[i] = {};
            m_pointers[i] = &m_arrays[i];
        }
    }
    PointArrays(PointArrays const&) = delete;
    PointArrays& operator=(PointArrays const&) = delete;
    int Count() const { return m_count; }
    CDoubleArray* X() { return m_pointers[0]; }
    CDoubleArray* Y() { return m_pointers[1]; }
    CDoubleArray* Z() { return m_pointers[2]; }
    CDoubleArray** All() { return m_pointers.data(); }

    static CDoubleArray ToArray(std::span<double const> values)
    {
        CDoubleArray array;
        array.SetSize(static_cast<int>(values.size()));
        for (std::size_t i = 0; i < values.size(); ++i)
            array[static_cast<int>(i)] = values[i];
        return array;
    }

private:
    int m_count;
    std::array<CDoubleArray, 3> m_arrays;
    std::array<CDoubleArray*, 3> m_pointers {};
};

} // namespace ombrel
