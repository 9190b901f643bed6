#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph3d/ContourLevels.h"

#include <optional>

namespace ombrel {

class CPlotComponent;

/// The contour levels of a curve's values, and the colours of the bands between them.
class OMBREL_EXPORT ContourColours {
public:
    /// A colour for a value.
    using ColourOf = std::function<COLORREF(double value)>;

    /// No levels and no colours.
    ContourColours() = default;
    /// Those of values from lo to hi by the settings.
    ContourColours(LevelSettings const& settings, double lo, double hi, ColourOf const& colourOf);
    /// Becomes the other. Why that has no levels is told to the curve's user, unless it is what was told last.
    void Replace(ContourColours&& other, CPlotComponent* curve);

    std::span<double const> GetLevels() const { return m_bands.GetLevels(); }
    /// A band more than levels.
    CDWordArray const& GetColours() const { return m_colours; }
    /// The colour of the band that the value lies in; black without colours.
    COLORREF GetColour(double value) const;
    /// The colours, and the values that their bands begin at: first the low end, where one is given, then the levels.
    void GetKeyEntries(std::optional<double> lowEnd, CDWordArray& colours, CDoubleArray& values) const;

private:
    ContourBands m_bands;
    CDWordArray m_colours;
    CString m_error;
};

} // namespace ombrel
