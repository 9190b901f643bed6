#pragma once
#include "ombrel/colour/ColourMap.h"
#include "ombrel/graph3d/3DCurve.h"

namespace ombrel {

/// All that the colours of a colour map follow from, besides the ends of the values' range.
struct ColourMapKey {
    ColourMapKey() = default;
    explicit ColourMapKey(CColourMap const& map)
        : colours(map.GetColourTable())
        , scaleValues(map.GetScale().values)
        , scaleIndices(map.GetScale().indices)
    {
    }
    friend bool operator==(ColourMapKey const& a, ColourMapKey const& b) = default;

    CDWordArray colours;
    CDoubleArray scaleValues;
    CDWordArray scaleIndices;
};

/// All that the colours of a curve follow from, whose description 1 means the colour map, besides its data.
struct CurveColoursKey {
    CurveColoursKey() = default;
    explicit CurveColoursKey(C3DCurve const& curve)
        : description(curve.GetColourDescription())
        , colour(curve.GetColour())
    {
        if (description != 1)
            return;
        map = ColourMapKey(*curve.GetColourmap());
        if (curve.GetUseLUTMinMax())
            curve.GetLUTMinMax(low, high);
        hasRange = curve.GetUseLUTMinMax() != 0;
    }
    friend bool operator==(CurveColoursKey const& a, CurveColoursKey const& b) = default;

    int description = 0;
    unsigned long colour = 0;
    ColourMapKey map;
    bool hasRange = false;
    double low = 0.0;
    double high = 0.0;
};

} // namespace ombrel
