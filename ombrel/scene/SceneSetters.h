#pragma once
#include "ombrel/scene/SceneStyle.h"

#include <span>
#include <string_view>

namespace ombrel {

// Settings out of their reach throw ChartError, which names the setting and what was expected.

/// value when it lies between least and most. setting is what messages call it.
OMBREL_EXPORT double CheckedSetting(char const* setting, double value, double least, double most);
/// The range when its ends are finite and ascend.
OMBREL_EXPORT AxisRange CheckedRange(char const* setting, double low, double high);
/// Ascending levels, at most 1000.
OMBREL_EXPORT LevelChoice LevelsAt(std::span<double const> values);
/// 1 to 1000 bands.
OMBREL_EXPORT LevelChoice LevelsOfBands(int bands);
/// At reference and every step from it; step is above 0.
OMBREL_EXPORT LevelChoice LevelsEvery(double step, double reference);

template <typename Settings>
concept HasColours = requires(Settings s)
{
    s.colours;
};
template <typename Settings>
concept HasContours = requires(Settings s)
{
    s.contours;
};
template <typename Settings>
concept HasColouring = requires(Settings s)
{
    s.colouring;
};
template <typename Settings>
concept HasBaseline = requires(Settings s)
{
    s.baseline;
};
template <typename Settings>
concept HasSymbols = requires(Settings s)
{
    s.symbols;
};
template <typename Settings>
concept HasCoordinates = requires(Settings s)
{
    s.coordinates;
};

/// The settings that several kinds have, one by one: each kind has those of its own Settings. Derived says with Touch
/// that it has to be made anew.
template <typename Derived, typename Settings> class SceneSetters {
public:
    Settings const& GetStyle() const { return m_style; }
    /// All of them together.
    Derived& Style(Settings style) { return Set(m_style, std::move(style)); }

    /// By the name of a map, without regard to case, or the path of its file.
    Derived& ColourMap(std::string_view name) requires HasColours<Settings>
    {
        return Set(m_style.colours.map, std::string(name));
    }
    /// The values of the map's ends, in data units; low < high. Levels lie between them.
    Derived& ColourRange(double low, double high) requires HasColours<Settings>
    {
        return Set(m_style.colours.range, CheckedRange("colour range", low, high));
    }
    Derived& Contours(ContourChoice choice) requires HasContours<Settings>
    {
        return Set(m_style.contours.choice, choice);
    }
    /// Ascending, at most 1000, data units.
    Derived& Levels(std::span<double const> values) requires HasContours<Settings>
    {
        return Set(m_style.contours.levels, LevelsAt(values));
    }
    /// So many bands between the ends of the range, 1 to 1000; at tidy values where there are such.
    Derived& Bands(int bands) requires HasContours<Settings>
    {
        return Set(m_style.contours.levels, LevelsOfBands(bands));
    }
    /// A level at reference and every step from it; step is above 0, data units.
    Derived& LevelsEach(double step, double reference = 0.0) requires HasContours<Settings>
    {
        return Set(m_style.contours.levels, LevelsEvery(step, reference));
    }
    /// Gives each contour line its level's colour.
    Derived& LineColours() requires HasContours<Settings> { return Set(m_style.contours.lineColours, true); }
    Derived& Colouring(ColouringChoice colouring) requires HasColouring<Settings>
    {
        return Set(m_style.colouring, colouring);
    }
    /// Where bars, stacks and sticks stand, data units.
    Derived& Baseline(double value) requires HasBaseline<Settings> { return Set(m_style.baseline, value); }
    /// size: of the usual one, 0.01 to 100.
    Derived& Symbols(SymbolChoice shape, double size = 1.0) requires HasSymbols<Settings>
    {
        if constexpr (requires { m_style.marks; })
            m_style.marks = true;
        return Set(m_style.symbols, SymbolStyle { shape, CheckedSetting("symbol-size", size, 0.01, 100.0) });
    }
    Derived& Coordinates(CoordinateChoice coordinates) requires HasCoordinates<Settings>
    {
        return Set(m_style.coordinates, coordinates);
    }

protected:
    template <typename T, typename Value> Derived& Set(T& setting, Value&& value)
    {
        auto& self = static_cast<Derived&>(*this);
        setting = std::forward<Value>(value);
        self.Touch();
        return self;
    }
    Settings m_style;
};

} // namespace ombrel
