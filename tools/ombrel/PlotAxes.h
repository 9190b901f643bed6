#pragma once
#include "tools/ombrel/AxisLayout.h"

#include <optional>
#include <string>

namespace ombrel {
class C2DGraph;
}

namespace ombrel::host {

class Picture;

/// What is known of one axis before it is laid out.
struct AxisWish {
    /// The data's range; min > max without data.
    AxisRange data { 0.0, -1.0 };
    std::optional<double> min;
    std::optional<double> max;
    std::string title;
    bool logarithmic = false;
    bool dates = false;
    /// Values count something: notches stand at whole numbers.
    bool counts = false;
};

/// Chooses ranges, notches and labels of both axes, so that labels neither overlap nor are cut in the picture.
void LayOutAxes(C2DGraph& graph, AxisWish const& x, AxisWish const& y, Picture& picture);

} // namespace ombrel::host
