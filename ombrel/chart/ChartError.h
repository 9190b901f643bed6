#pragma once
#include "ombrel/platform/framework/Export.h"

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

/// A point of a series that does not fit.
class OMBREL_EXPORT SeriesError : public ChartError {
public:
    SeriesError(std::size_t series, std::size_t point, std::string const& text)
        : ChartError(Cause::Data, text)
        , m_series(series)
        , m_point(point)
    {
    }
    /// In the order in which series were added, from 0.
    std::size_t GetSeries() const { return m_series; }
    /// From 0, as it was given.
    std::size_t GetPoint() const { return m_point; }

private:
    std::size_t m_series;
    std::size_t m_point;
};

} // namespace ombrel
