#pragma once
#include "ombrel/chart/DrawnPicture.h"
#include "ombrel/scene/Heights.h"
#include "ombrel/scene/SceneSetters.h"

#include <memory>
#include <string_view>

namespace ombrel {

class C2DGraph;

/// Heights over a grid as a map: bands and lines in two dimensions, with a key beside them.
///
///     ombrel::ContourMap map(heights, rows, columns, "Hills");
///     map.XRange(0, 10).YRange(0, 5).Bands(8).Name("height / m");
///     map.Save("hills.svg");
///
/// Settings and data may change at any time, also after a draw. Data is copied.
class OMBREL_EXPORT ContourMap : public DrawnPicture, public SceneSetters<ContourMap, MapStyle> {
public:
    /// rows × columns heights, row by row, the first row at the lowest y; NaN is a gap. An empty title is none. Throws
    /// ChartError when there are more or fewer.
    ContourMap(std::span<double const> heights, std::size_t rows, std::size_t columns, std::string_view title = {});
    /// A grid, points that form one in any order, or a file. Throws ChartError when there is no grid, and Error for
    /// files that cannot be read.
    explicit ContourMap(HeightSource heights, std::string_view title = {});
    ~ContourMap() override;
    ContourMap(ContourMap&&) noexcept;
    ContourMap& operator=(ContourMap&&) noexcept;

    /// Where the first and the last column lie, first < last.
    ContourMap& XRange(double first, double last);
    /// Where the first and the last row lie.
    ContourMap& YRange(double first, double last);
    /// What the heights are, with their unit: the key's title.
    ContourMap& Name(std::string_view name);
    ContourMap& XTitle(std::string_view title);
    ContourMap& YTitle(std::string_view title);
    ContourMap& SetTheme(Theme theme);
    /// A small line below everything, such as where the heights come from.
    ContourMap& Footnote(std::string_view text);
    ContourMap& Key(KeyChoice choice);

    /// Shows other heights on the same grid. Throws ChartError when there are more or fewer.
    ContourMap& Update(std::span<double const> heights);

    /// The graph that is drawn, for everything else; the map owns it. A draw settles axes, levels and colours anew.
    C2DGraph& Graph();
    /// Gives the graph away, as it was last laid out; nothing else may be done with the map then.
    std::unique_ptr<C2DGraph> TakeGraph() &&;

    ChartNotes Notes() const override;

private:
    friend class SceneSetters<ContourMap, MapStyle>;
    struct State;
    CAnnotatedGraph& LaidOut(CDC& dc, CRect const& window) override;
    void Touch();
    void Settle(CDC& dc, CRect const& window);

    std::unique_ptr<State> m_state;
};

} // namespace ombrel
