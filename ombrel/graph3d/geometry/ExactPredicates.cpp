#include "ombrel/graph3d/geometry/ExactPredicates.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace ombrel {
namespace {

// A number as the sum of doubles that do not overlap, the smallest first: sums and products of single-precision numbers
// have one without rounding, and the last of its doubles tells the sign.
class Expansion {
public:
    Expansion() = default;
    // a − b
    Expansion(float a, float b)
    {
        Add(static_cast<double>(a));
        Add(-static_cast<double>(b));
    }
    double Sign() const { return m_parts.empty() ? 0.0 : m_parts.back(); }

    friend Expansion operator+(Expansion sum, Expansion const& b)
    {
        for (double const part : b.m_parts)
            sum.Add(part);
        return sum;
    }
    friend Expansion operator-(Expansion difference, Expansion const& b)
    {
        for (double const part : b.m_parts)
            difference.Add(-part);
        return difference;
    }
    friend Expansion operator*(Expansion const& a, Expansion const& b)
    {
        Expansion product;
        for (double const x : a.m_parts) {
            for (double const y : b.m_parts) {
                double const high = x * y;
                product.Add(std::fma(x, y, -high));
                product.Add(high);
            }
        }
        return product;
    }

private:
    void Add(double v)
    {
        std::size_t count = 0;
        for (double const part : m_parts) {
            double const sum = v + part;
            double const virtualPart = sum - v;
            double const rest = (v - (sum - virtualPart)) + (part - virtualPart);
            v = sum;
            if (rest != 0.0)
                m_parts[count++] = rest;
        }
        m_parts.resize(count);
        if (v != 0.0)
            m_parts.push_back(v);
    }

    std::vector<double> m_parts;
};

// Whole numbers in the same proportions as the differences of two coordinates each, when there are such of 30 bits: so
// it is on grids, where nothing but ties would have to be worked out the long way.
template <std::size_t N>
std::optional<std::array<std::int64_t, N>> WholeDifferences(std::array<std::array<float, 2>, N> const& pairs)
{
    std::array<double, N> differences;
    double largest = 0.0;
    for (std::size_t k = 0; k < N; ++k) {
        auto const a = static_cast<double>(pairs[k][0]);
        auto const b = static_cast<double>(pairs[k][1]);
        differences[k] = a - b;
        // Each subtracted from the other gives back the rest, unless the difference was rounded.
        if (a - differences[k] != b || differences[k] + b != a)
            return {};
        largest = std::max(largest, std::abs(differences[k]));
    }
    if (largest == 0.0)
        return std::array<std::int64_t, N> {};
    int const shift = 29 - std::ilogb(largest);
    std::array<std::int64_t, N> whole;
    for (std::size_t k = 0; k < N; ++k) {
        double const scaled = std::ldexp(differences[k], shift);
        whole[k] = static_cast<std::int64_t>(scaled);
        if (static_cast<double>(whole[k]) != scaled)
            return {};
    }
    return whole;
}

__extension__ typedef __int128 Wide;

double SignOf(Wide v) { return v > 0 ? 1.0 : v < 0 ? -1.0 : 0.0; }

} // namespace

double ExactOrientation(FloatPoint const& a, FloatPoint const& b, FloatPoint const& c)
{
    using Pairs = std::array<std::array<float, 2>, 4>;
    if (auto const d = WholeDifferences(Pairs { { { a.x, c.x }, { b.y, c.y }, { a.y, c.y }, { b.x, c.x } } })) {
        auto const [ax, by, ay, bx] = *d;
        return SignOf(Wide { ax } * by - Wide { ay } * bx);
    }
    return (Expansion(a.x, c.x) * Expansion(b.y, c.y) - Expansion(a.y, c.y) * Expansion(b.x, c.x)).Sign();
}

double ExactInCircle(FloatPoint const& a, FloatPoint const& b, FloatPoint const& c, FloatPoint const& d)
{
    auto const determinant
        = []<typename T>(T const& ax, T const& ay, T const& bx, T const& by, T const& cx, T const& cy) {
              return (ax * ax + ay * ay) * (bx * cy - cx * by) + (bx * bx + by * by) * (cx * ay - ax * cy)
                  + (cx * cx + cy * cy) * (ax * by - bx * ay);
          };
    using Pairs = std::array<std::array<float, 2>, 6>;
    if (auto const w = WholeDifferences(
            Pairs { { { a.x, d.x }, { a.y, d.y }, { b.x, d.x }, { b.y, d.y }, { c.x, d.x }, { c.y, d.y } } })) {
        auto const [ax, ay, bx, by, cx, cy] = *w;
        return SignOf(determinant(Wide { ax }, Wide { ay }, Wide { bx }, Wide { by }, Wide { cx }, Wide { cy }));
    }
    return determinant(Expansion(a.x, d.x), Expansion(a.y, d.y), Expansion(b.x, d.x), Expansion(b.y, d.y),
        Expansion(c.x, d.x), Expansion(c.y, d.y))
        .Sign();
}

double ExactArcOrder(FloatPoint const& p, FloatPoint const& q, FloatPoint const& s)
{
    Expansion const px(p.x, s.x);
    Expansion const py(p.y, s.y);
    Expansion const qx(q.x, s.x);
    Expansion const qy(q.y, s.y);
    return ((qx * qx + qy * qy) * py - (px * px + py * py) * qy).Sign();
}

} // namespace ombrel
