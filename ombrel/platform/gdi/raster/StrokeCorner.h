#pragma once
#include "ombrel/platform/gdi/raster/StrokeBands.h"

namespace ombrel {

/// The outer side of a corner between two bands.
struct StrokeCorner {
    enum class Kind { None, Mitre, Bevel };
    Kind kind = Kind::None;
    /// Where the outer edges of the bands end, and where they would meet.
    MaskPoint outerBefore;
    MaskPoint outerAfter;
    MaskPoint tip;
};

/// A mitre longer than this, in widths of the pen, is cut off.
inline constexpr double kMitreLimit = 10.0;

inline StrokeCorner MakeCorner(MaskPoint corner, MaskPoint before, MaskPoint after, double halfWidth)
{
    double const cross = before.u * after.v - before.v * after.u;
    double const cosine = before.u * after.u + before.v * after.v;
    StrokeCorner result;
    if (std::abs(cross) < 1e-12 && cosine > 0.0)
        return result;
    double const side = cross > 0.0 ? -halfWidth : halfWidth;
    result.outerBefore = { corner.u - side * before.v, corner.v + side * before.u };
    result.outerAfter = { corner.u - side * after.v, corner.v + side * after.u };
    if (1.0 + cosine < 2.0 / (kMitreLimit * kMitreLimit)) {
        result.kind = StrokeCorner::Kind::Bevel;
        return result;
    }
    double const scale = side / (1.0 + cosine);
    result.kind = StrokeCorner::Kind::Mitre;
    result.tip = { corner.u - scale * (before.v + after.v), corner.v + scale * (before.u + after.u) };
    return result;
}

} // namespace ombrel
