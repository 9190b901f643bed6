#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace ombrel {

/// Labels of words that stand side by side, each in the middle of an equal part of the axis.
struct WordLabels {
    /// From 0, ascending: which of the words are shown.
    std::vector<std::size_t> shown;
    /// Theirs, shortened where they had to be.
    std::vector<std::string> texts;
    /// They run upwards.
    bool upright = false;
};

/// Labels that do not overlap along an axis of length pixels: all of them level, or else upright and shortened to
/// mostHeight; every 2nd likewise; or else every 5th, 10th, ... level, shortened when there would be too few. height is
/// that of a line of text; width gives the pixels of a text.
WordLabels FitWords(std::vector<std::string> const& words, int length, int mostHeight, int height,
    std::function<int(std::string const&)> const& width);

} // namespace ombrel
