#pragma once
#include "ombrel/platform/framework/Export.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace ombrel {

/// One axis of a chart, which owns it. Setters give the axis back, so that they can follow each other; they take effect
/// when the chart is drawn next.
class OMBREL_EXPORT ChartAxis {
public:
    ChartAxis(ChartAxis const&) = delete;
    ChartAxis& operator=(ChartAxis const&) = delete;

    /// Without it, the axis has none.
    ChartAxis& Title(std::string_view title);
    /// Where it begins and ends, data units; from below to. Ends that are not given follow the data.
    ChartAxis& Range(double from, double to) { return From(from).To(to); }
    ChartAxis& Range(
        std::chrono::sys_time<std::chrono::milliseconds> from, std::chrono::sys_time<std::chrono::milliseconds> to);
    ChartAxis& From(double from);
    ChartAxis& To(double to);
    /// Both ends follow the data again.
    ChartAxis& FollowData();
    ChartAxis& Logarithmic(bool on = true);
    /// Values grow leftwards or downwards, as depths do.
    ChartAxis& Reversed(bool on = true);

private:
    friend class Chart;
    explicit ChartAxis(bool& isChanged)
        : m_isChanged(isChanged)
    {
    }

    bool& m_isChanged;
    std::string m_title;
    std::optional<double> m_from;
    std::optional<double> m_to;
    bool m_isLogarithmic = false;
    bool m_isReversed = false;
};

} // namespace ombrel
