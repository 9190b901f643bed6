#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"

namespace ombrel {

class CDC;

/// The boxes that float over a graph.
enum class AnnotationKind { Legend, Caption, ColourKey };

/// How a graph places one kind of annotation, and what the height of its text follows.
struct OMBREL_EXPORT AnnotationFrame {
    /// Text is never higher than 4 mm on the device.
    enum class TextRule {
        /// 1/25 of the shorter side of the text area; millimetres are the device's own.
        PlottingArea,
        /// 1/30 of it; millimetres go by the device's logical inches. For boxes that lie on a finished picture, which
        /// is printed through one of printScale times the size: their text is smaller then.
        Picture,
    };

    /// The device rectangle that the corner of a box is kept as fractions of.
    CRect reference;
    /// Device pixels.
    CRect textArea;
    TextRule textRule = TextRule::PlottingArea;
    /// The printer that a picture is made for; null otherwise. Not owned.
    CDC* printer = nullptr;
    double printScale = 1.0;
};

} // namespace ombrel
