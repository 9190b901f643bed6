#pragma once
#include "ombrel/graph3d/BoxAxis.h"
#include "ombrel/graph3d/render/FaceBatch.h"

#include <optional>
#include <span>

namespace ombrel {

/// The values at the ends of a colour map.
struct ValueRange {
    double min = 0.0;
    double max = 0.0;
};

/// Makes the stacks and lines of series in a batch. Lines are colour and nothing else: what is made has no normals.
class StackBuilder {
public:
    /// The baseline is in data units, the batch is not owned.
    StackBuilder(FaceBatch& batch, BoxAxes const& axes, double baseline, ValueRange const& range);

    /// The strips between the baseline and a line through points in data units. A line is broken where a point is
    /// missing.
    void AddStack(std::span<CVertex const> points, COLORREF colour);
    /// The sides of each strip that is not interrupted, and the stretch of the baseline between them.
    void AddOutline(std::span<CVertex const> points, COLORREF colour);
    /// The line itself.
    void AddLine(std::span<CVertex const> points, COLORREF colour);

private:
    /// Calls take(points) with each unbroken part of a line.
    template <typename Take> static void ForEachRun(std::span<CVertex const> points, Take const& take);
    FaceVertex VertexAt(CVertex const& place, double value, COLORREF colour) const;
    FaceVertex VertexOf(CVertex const& point, COLORREF colour) const;
    FaceVertex FootOf(CVertex const& point, COLORREF colour) const;
    void AddQuad(CVertex const& a, CVertex const& b, COLORREF colour);
    void AddTriangle(CVertex const& top, double value, CVertex const& b, CVertex const& c, COLORREF colour);
    void AddSegment(FaceVertex const& from, FaceVertex const& to);

    FaceBatch& m_batch;
    BoxAxes m_axes;
    double m_base;
    double m_viewBase;
    ValueRange m_range;
};

} // namespace ombrel
