#include "ombrel/graph3d/bars/StackGeometry.h"
#include "ombrel/graph3d/ContourLines.h"
#include "ombrel/graph3d/render/ColourTexture.h"

#include <cmath>

namespace ombrel {

StackBuilder::StackBuilder(FaceBatch& batch, BoxAxes const& axes, double baseline, ValueRange const& range)
    : m_batch(batch)
    , m_axes(axes)
    , m_base(baseline)
    , m_viewBase(axes[2].GetViewVal(baseline))
    , m_range(range)
{
}

template <typename Take> void StackBuilder::ForEachRun(std::span<CVertex const> points, Take const& take)
{
    auto const isMissing = [](CVertex const& p) { return IsGridGap(p.X()) || IsGridGap(p.Y()) || IsGridGap(p.Z()); };
    std::size_t first = 0;
    for (std::size_t k = 0; k <= points.size(); ++k) {
        if (k < points.size() && !isMissing(points[k]))
            continue;
        if (k > first)
            take(points.subspan(first, k - first));
        first = k + 1;
    }
}

FaceVertex StackBuilder::VertexAt(CVertex const& place, double value, COLORREF colour) const
{
    FaceVertex vertex;
    vertex.place = FaceVertex::Floats(place);
    vertex.value = static_cast<float>(GetTexelPlace(value, m_range.min, m_range.max));
    vertex.colour = FaceVertex::Bytes(colour);
    return vertex;
}

FaceVertex StackBuilder::VertexOf(CVertex const& point, COLORREF colour) const
{
    return VertexAt(GetBoxPlace(m_axes, point), point.Z(), colour);
}

FaceVertex StackBuilder::FootOf(CVertex const& point, COLORREF colour) const
{
    CVertex const top = GetBoxPlace(m_axes, point);
    return VertexAt({ top.X(), top.Y(), m_viewBase }, m_base, colour);
}

void StackBuilder::AddStack(std::span<CVertex const> points, COLORREF colour)
{
    ForEachRun(points, [&](std::span<CVertex const> run) {
        for (std::size_t k = 1; k < run.size(); ++k)
            AddQuad(run[k - 1], run[k], colour);
    });
}

void StackBuilder::AddQuad(CVertex const& from, CVertex const& to, COLORREF colour)
{
    CVertex a = GetBoxPlace(m_axes, from);
    CVertex b = GetBoxPlace(m_axes, to);
    double heightA = a.Z() - m_viewBase;
    double heightB = b.Z() - m_viewBase;
    // An end on the baseline belongs to the side of the other one.
    constexpr double kOffBaseline = 0.001;
    if (heightA == 0.0)
        heightA = kOffBaseline * heightB;
    else if (heightB == 0.0)
        heightB = kOffBaseline * heightA;
    a = { a.X(), a.Y(), m_viewBase + heightA };
    b = { b.X(), b.Y(), m_viewBase + heightB };
    CVertex const footA(a.X(), a.Y(), m_viewBase);
    CVertex const footB(b.X(), b.Y(), m_viewBase);
    if (heightA * heightB < 0.0) {
        CVertex crossing = a + (b - a) * (heightA / (heightA - heightB));
        crossing[2] = m_viewBase;
        AddTriangle(a, from.Z(), crossing, footA, colour);
        AddTriangle(b, to.Z(), footB, crossing, colour);
        return;
    }
    std::uint32_t const first = m_batch.AddVertex(VertexAt(a, from.Z(), colour));
    m_batch.AddVertex(VertexAt(b, to.Z(), colour));
    m_batch.AddVertex(VertexAt(footB, m_base, colour));
    m_batch.AddVertex(VertexAt(footA, m_base, colour));
    m_batch.AddTriangle(first, first + 1, first + 2);
    m_batch.AddTriangle(first, first + 2, first + 3);
}

void StackBuilder::AddTriangle(CVertex const& top, double value, CVertex const& b, CVertex const& c, COLORREF colour)
{
    std::uint32_t const first = m_batch.AddVertex(VertexAt(top, value, colour));
    m_batch.AddVertex(VertexAt(b, m_base, colour));
    m_batch.AddVertex(VertexAt(c, m_base, colour));
    m_batch.AddTriangle(first, first + 1, first + 2);
}

void StackBuilder::AddSegment(FaceVertex const& from, FaceVertex const& to)
{
    std::uint32_t const first = m_batch.AddVertex(from);
    m_batch.AddLine(first, m_batch.AddVertex(to));
}

void StackBuilder::AddOutline(std::span<CVertex const> points, COLORREF colour)
{
    ForEachRun(points, [&](std::span<CVertex const> run) {
        AddSegment(VertexOf(run.front(), colour), FootOf(run.front(), colour));
        if (run.size() == 1)
            return;
        AddSegment(VertexOf(run.back(), colour), FootOf(run.back(), colour));
        AddSegment(FootOf(run.front(), colour), FootOf(run.back(), colour));
    });
}

void StackBuilder::AddLine(std::span<CVertex const> points, COLORREF colour)
{
    ForEachRun(points, [&](std::span<CVertex const> run) {
        std::uint32_t last = m_batch.AddVertex(VertexOf(run.front(), colour));
        for (CVertex const& point : run.subspan(1)) {
            std::uint32_t const next = m_batch.AddVertex(VertexOf(point, colour));
            m_batch.AddLine(last, next);
            last = next;
        }
    });
}

} // namespace ombrel
