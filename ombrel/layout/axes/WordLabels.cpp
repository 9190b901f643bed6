#include "ombrel/layout/axes/WordLabels.h"

#include <algorithm>

namespace ombrel {

namespace {

using Width = std::function<int(std::string const&)>;

constexpr std::string_view kEllipsis = "…";

/// The text, or as much of its start as fits with an ellipsis behind it.
std::string Shortened(std::string const& text, int room, Width const& width)
{
    if (width(text) <= room)
        return text;
    std::string start = text;
    while (!start.empty()) {
        // A whole character of UTF-8.
        while (!start.empty() && (static_cast<unsigned char>(start.back()) & 0xC0) == 0x80)
            start.pop_back();
        if (!start.empty())
            start.pop_back();
        while (!start.empty() && start.back() == ' ')
            start.pop_back();
        std::string candidate = start + std::string(kEllipsis);
        if (width(candidate) <= room)
            return candidate;
    }
    return {};
}

WordLabels EveryWord(std::vector<std::string> const& words, std::size_t step, int room, Width const& width)
{
    WordLabels labels;
    for (std::size_t i = 0; i < words.size(); i += step) {
        labels.shown.push_back(i);
        labels.texts.push_back(Shortened(words[i], room, width));
    }
    return labels;
}

bool FitLevel(std::vector<std::string> const& words, std::size_t step, double room, Width const& width)
{
    for (std::size_t i = 0; i < words.size(); i += step) {
        if (width(words[i]) > room)
            return false;
    }
    return true;
}

/// 1, 2, 5, 10, 20, ...
std::size_t NextStep(std::size_t step)
{
    std::size_t power = 1;
    while (step / power >= 10)
        power *= 10;
    return step / power == 2 ? 5 * power : 2 * step;
}

} // namespace

WordLabels FitWords(std::vector<std::string> const& words, int length, int mostHeight, int height,
    std::function<int(std::string const&)> const& width)
{
    int const gap = width("n");
    double const part = static_cast<double>(length) / static_cast<double>(std::max<std::size_t>(words.size(), 1));
    // No word is narrower than a few pixels.
    if (part > gap && FitLevel(words, 1, part - gap, width))
        return EveryWord(words, 1, length, width);
    for (std::size_t const step : { 1U, 2U }) {
        double const room = part * static_cast<double>(step);
        if (step > 1 && room > gap && FitLevel(words, step, room - gap, width))
            break;
        if (room >= height * 1.1 && step <= words.size()) {
            WordLabels labels = EveryWord(words, step, mostHeight, width);
            labels.upright = true;
            return labels;
        }
    }
    // At least a few labels, whatever their length.
    constexpr int kFewest = 5;
    int const longest = length / kFewest;
    for (std::size_t step = 2;; step = NextStep(step)) {
        double const room = part * static_cast<double>(step) - gap;
        if (step >= words.size() || room >= longest || (room > gap && FitLevel(words, step, room, width)))
            return EveryWord(words, step, static_cast<int>(std::max<double>(room, gap)), width);
    }
}

} // namespace ombrel
