#pragma once
#include "ombrel/drawing/2DSymbol.h"
#include "ombrel/platform/framework/Export.h"

#include <string>
#include <vector>

namespace ombrel {
class C2DGraph;
class C2DLine;
class CAnnotation;

/// On which ground a chart is drawn: white, dark, or the white of paper.
enum class Theme { Light, Dark, Print };

/// The colours of everything in a graph but its curves.
struct Look {
    Theme theme = Theme::Light;
    COLORREF window = RGB(255, 255, 255);
    COLORREF plottingArea = RGB(255, 255, 255);
    COLORREF axes = RGB(64, 64, 64);
    /// Labels, titles, captions and the legend.
    COLORREF text = RGB(0, 0, 0);
    COLORREF majorGrid = RGB(221, 221, 221);
    COLORREF minorGrid = RGB(240, 240, 240);
    /// Round the legend.
    COLORREF frame = RGB(128, 128, 128);
    /// Round bars and bands: parts them from each other.
    COLORREF barBorder = RGB(255, 255, 255);
};

/// The look of a theme.
OMBREL_EXPORT Look LookOf(Theme theme);

/// The look for a polar grid. Its labels are black in every theme, so a dark ground becomes a mid grey on which black
/// and white can both be read.
OMBREL_EXPORT Look PolarLookOf(Theme theme);

/// Colours the graph, its axes, both grids, the legend and the captions there are.
OMBREL_EXPORT void ApplyLook(C2DGraph& graph, Look const& look);
/// Likewise one box of text: a caption or the legend.
OMBREL_EXPORT void ApplyLook(CAnnotation& box, Look const& look);

/// How one curve is told from the others.
struct CurveLook {
    COLORREF colour = 0;
    /// A shade of the colour for the area under a line.
    COLORREF tint = 0;
    /// Dash style of a line; 0 is solid.
    int lineType = 0;
    /// Of bars and bands.
    COLORREF fill = 0;
    C2DSymbol::SymbolType symbol = C2DSymbol::Circle;
};

/// A shade of a curve's colour for the area under its line.
OMBREL_EXPORT COLORREF TintOf(COLORREF colour, Look const& look);

/// The looks of the curves of one graph.
class OMBREL_EXPORT Palette {
public:
    Palette(std::vector<COLORREF> colours, Look const& look);
    /// Curves beyond the colours get them again: lines with other dashes, points with other symbols, bars and bands
    /// in lighter and darker shades.
    CurveLook At(std::size_t index) const;
    std::size_t NumColours() const { return m_colours.size(); }

private:
    std::vector<COLORREF> m_colours;
    COLORREF m_ground;
    COLORREF m_text;
    /// Every line has dashes of its own, not just those that share a colour.
    bool m_dashed;
};

/// The palette for so many curves: distinct, grey, or the name of a colour map, whose colours are taken evenly; an
/// empty name is distinct. Colours that would not stand out from the look's ground are left out. Throws ChartError for
/// any other name.
OMBREL_EXPORT Palette PaletteNamed(std::string const& name, std::size_t count, Look const& look);

/// How light a colour is beside white, 0 to 1: its relative luminance, of which ITU-R BT.709 gives the weights.
OMBREL_EXPORT double LuminanceOf(COLORREF colour);

/// How different two colours look in grey: the contrast ratio of 1 (the same) to 21 (black and white).
OMBREL_EXPORT double ContrastOf(COLORREF a, COLORREF b);

} // namespace ombrel
