#pragma once
#include "ombrel/platform/framework/Export.h"

#include <cstddef>
#include <span>
#include <vector>

namespace ombrel {

/// The edges of the bins of a histogram, ascending, one more than there are bins; without values there are none.
///
/// With a number of bins they are of equal width from the smallest value to the largest. With 0 their width is the
/// smaller of two: of Freedman and Diaconis's, 2 · (interquartile range) / (cube root of the number of values), unless
/// the quartiles are equal, and of Sturges's, range / (1 + log2 of the number). It is made a tidy one (1, 2 or 5 times
/// a power of ten, the nearest by ratio) and the edges its multiples. Whole numbers get bins of a whole width, and bins
/// of width 1 have them in their middle. There are at most 1000 bins.
///
/// Values must be finite.
OMBREL_EXPORT std::vector<double> HistogramEdges(std::span<double const> values, int bins);

/// How many of the values lie in each bin. A value on an edge counts to the right of it, and on the last edge to the
/// left. Values outside count nowhere.
OMBREL_EXPORT std::vector<std::size_t> CountInBins(std::span<double const> values, std::span<double const> edges);

/// Points that a line follows.
struct Outline {
    std::vector<double> xs;
    std::vector<double> ys;
};

/// The outline of bars of these heights from 0, without the empty bins before the first and after the last.
OMBREL_EXPORT Outline OutlineOf(std::span<std::size_t const> counts, std::span<double const> edges);

} // namespace ombrel
