#include "ombrel/graph2d/paths/PointSummary.h"
#include "ombrel/foundation/GArray.h"

#include <algorithm>
#include <limits>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace ombrel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr Extremes kNone { kInfinity, -kInfinity };

void Widen(Extremes& e, double v)
{
    e.min = v < e.min ? v : e.min;
    e.max = v > e.max ? v : e.max;
}

void Widen(Extremes& e, Extremes const& other)
{
    e.min = std::min(e.min, other.min);
    e.max = std::max(e.max, other.max);
}

struct BlockSummary {
    Extremes x = kNone;
    Extremes y = kNone;
    bool gap = false;
    bool ascends = true;
};

#if defined(__SSE2__)

/// The extremes of y over a whole block; false unless x ascends (from the value before on) and no coordinate is
/// missing.
bool SummariseCleanBlock(double const* xs, double const* ys, double before, Extremes& y)
{
    __m128d low = _mm_loadu_pd(ys);
    __m128d high = low;
    __m128d notNumbers = _mm_setzero_pd();
    __m128d ascending = _mm_cmple_pd(_mm_set_pd(xs[0], before), _mm_loadu_pd(xs));
    for (std::size_t i = 0; i < PointSummary::kBlock; i += 2) {
        __m128d const v = _mm_loadu_pd(ys + i);
        low = _mm_min_pd(v, low);
        high = _mm_max_pd(v, high);
        notNumbers = _mm_or_pd(notNumbers, _mm_cmpunord_pd(v, v));
    }
    for (std::size_t i = 1; i + 2 < PointSummary::kBlock; i += 2)
        ascending = _mm_and_pd(ascending, _mm_cmple_pd(_mm_loadu_pd(xs + i), _mm_loadu_pd(xs + i + 1)));
    y.min = std::min(_mm_cvtsd_f64(low), _mm_cvtsd_f64(_mm_unpackhi_pd(low, low)));
    y.max = std::max(_mm_cvtsd_f64(high), _mm_cvtsd_f64(_mm_unpackhi_pd(high, high)));
    double const lastX = xs[PointSummary::kBlock - 1];
    // Values between two that are present are present when they ascend; extremes that are present leave out none.
    return _mm_movemask_pd(ascending) == 3 && _mm_movemask_pd(notNumbers) == 0 && !IsGap(xs[0]) && !IsGap(lastX)
        && xs[PointSummary::kBlock - 2] <= lastX && !IsGap(y.min) && !IsGap(y.max);
}

#else

bool SummariseCleanBlock(double const* xs, double const* ys, double before, Extremes& y)
{
    bool clean = true;
    y = kNone;
    for (std::size_t i = 0; i < PointSummary::kBlock; ++i) {
        clean &= before <= xs[i] && !IsGap(xs[i]) && !IsGap(ys[i]);
        before = xs[i];
        Widen(y, ys[i]);
    }
    return clean;
}

#endif

/// Of any number of points, leaving the gaps out.
BlockSummary SummarisePoints(double const* xs, double const* ys, std::size_t count, double before)
{
    BlockSummary s;
    for (std::size_t i = 0; i < count; ++i) {
        bool const gapInX = IsGap(xs[i]);
        s.ascends &= !gapInX && before <= xs[i];
        before = xs[i];
        if (gapInX || IsGap(ys[i])) {
            s.gap = true;
            continue;
        }
        Widen(s.x, xs[i]);
        Widen(s.y, ys[i]);
    }
    return s;
}

} // namespace

void PointSummary::Update(CTableData const& points)
{
    if (m_revision == points.GetRevision())
        return;
    m_revision = points.GetRevision();
    m_x = m_y = kNone;
    m_ascends = true;
    m_blocks.clear();
    if (!points.HasData() || points.GetNumRows() < 2)
        return;
    double const* const xs = points.GetRow(0);
    double const* const ys = points.GetRow(1);
    auto const count = static_cast<std::size_t>(points.GetNumCols());
    m_blocks.reserve(count / kBlock);
    double before = -kInfinity;
    for (std::size_t first = 0; first < count; first += kBlock) {
        std::size_t const size = std::min(kBlock, count - first);
        BlockSummary s;
        if (size == kBlock && SummariseCleanBlock(xs + first, ys + first, before, s.y))
            s.x = { xs[first], xs[first + size - 1] };
        else
            s = SummarisePoints(xs + first, ys + first, size, before);
        before = xs[first + size - 1];
        Widen(m_x, s.x);
        Widen(m_y, s.y);
        m_ascends &= s.ascends;
        if (size == kBlock)
            m_blocks.push_back(s.gap ? kNone : s.y);
    }
}

bool PointSummary::YExtremes(double const* ys, std::size_t first, std::size_t last, Extremes& found) const
{
    Extremes e = kNone;
    bool gap = false;
    auto const scan = [&](std::size_t to) {
        for (; first < to; ++first) {
            gap |= IsGap(ys[first]);
            Widen(e, ys[first]);
        }
    };
    scan(std::min(last, (first + kBlock - 1) / kBlock * kBlock));
    for (; first + kBlock <= last; first += kBlock) {
        Extremes const& block = m_blocks[first / kBlock];
        gap |= block.IsEmpty();
        Widen(e, block);
    }
    scan(last);
    found = e;
    return !gap;
}

} // namespace ombrel
