#pragma once
#include "ombrel/platform/framework/Export.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>

namespace ombrel {

/// Why a chart cannot be drawn, loaded or written; what() is one line that says what was expected and found.
class OMBREL_EXPORT ChartError : public std::runtime_error {
public:
    /// What has to be changed: what is to be shown, or how. Of settings the text begins with the name, as "palette: ".
    enum class Cause { Data, Setting };

    ChartError(Cause cause, std::string const& text)
        : std::runtime_error(text)
        , m_cause(cause)
    {
    }
    Cause GetCause() const { return m_cause; }

private:
    Cause m_cause;
};

/// A series, or a point of it, that does not fit.
class OMBREL_EXPORT SeriesError : public ChartError {
public:
    SeriesError(std::size_t series, std::optional<std::size_t> point, std::string const& text,
        std::optional<std::size_t> earlier = std::nullopt)
        : ChartError(Cause::Data, text)
        , m_series(series)
        , m_point(point)
        , m_earlier(earlier)
    {
    }
    /// In the order in which series were added, from 0.
    std::size_t GetSeries() const { return m_series; }
    /// From 0, as it was given; nothing when all of the series is at fault.
    std::optional<std::size_t> GetPoint() const { return m_point; }
    /// The one before that it does not go with, when there is one.
    std::optional<std::size_t> GetEarlierPoint() const { return m_earlier; }

private:
    std::size_t m_series;
    std::optional<std::size_t> m_point;
    std::optional<std::size_t> m_earlier;
};

} // namespace ombrel
