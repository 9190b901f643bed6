#pragma once

namespace ombrel {

/// Calls visit(x, y) for the pixels of the line from start up to, not including, end: along the longer axis, the
/// nearest whole coordinate on the other, halves nearer the start.
template <typename Visit> void LineDDA(int x1, int y1, int x2, int y2, Visit&& visit)
{
    long long const dx = x2 - static_cast<long long>(x1);
    long long const dy = y2 - static_cast<long long>(y1);
    long long const ax = dx < 0 ? -dx : dx;
    long long const ay = dy < 0 ? -dy : dy;
    long long const n = ax > ay ? ax : ay;
    for (long long i = 0; i < n; ++i) {
        // Rounding halves towards the start: ceil((2·i·a − n) / (2·n)) steps along an axis of length a.
        auto const steps = [n, i](long long a) { return (2 * i * a + n - 1) / (2 * n); };
        visit(static_cast<int>(x1 + (dx < 0 ? -steps(ax) : steps(ax))),
            static_cast<int>(y1 + (dy < 0 ? -steps(ay) : steps(ay))));
    }
}

} // namespace ombrel
