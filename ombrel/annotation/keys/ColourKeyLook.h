#pragma once
#include "ombrel/annotation/ColourKey.h"
#include "ombrel/annotation/keys/KeyCells.h"
#include "ombrel/annotation/keys/KeyLabels.h"

#include <vector>

namespace ombrel {

struct CColourKey::Look {
    KeyRange range;
    /// Of a bar; ascending from low to high, or, stepped in a range that runs backwards, the other way.
    std::vector<double> values;
    bool isEven = true;
    CStringArray labels;
    CDWordArray swatchColours;
    KeyCells cells;
    /// The whole picture.
    CRect window;
};

} // namespace ombrel
