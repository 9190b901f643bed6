#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/platform/framework/Arrays.h"

namespace ombrel {

/// How a curve wants to be shown in a colour key.
struct ColourKeySource {
    /// Bands of one colour each, or colours that run through.
    enum class Style {
        /// A swatch for each band of colour.
        Bands,
        /// A bar that runs through the colours from low to high.
        Range,
    };

    Style style = Style::Range;
    /// The values that the curve has.
    double dataLow = 0.0;
    double dataHigh = 0.0;
    /// The values that the first and the last colour stand for. Above each other (low > high) they run backwards.
    double low = 0.0;
    double high = 0.0;
    /// Of bands, the lowest first: the colours, and the values that they are labelled with. Bands without a value are
    /// left out.
    CDWordArray bandColours;
    CDoubleArray bandValues;
};

} // namespace ombrel
