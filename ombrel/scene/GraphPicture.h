#pragma once
#include "ombrel/chart/DrawnPicture.h"
#include "ombrel/layout/Look.h"

#include <memory>
#include <string_view>

namespace ombrel {

class C2DGraph;

/// The colours of a theme, for curves and for all else.
class OMBREL_EXPORT PictureLook : public Look {
public:
    explicit PictureLook(Theme which = Theme::Light)
        : Look(LookOf(which))
        , m_palette(PaletteNamed("", 0, *this))
    {
    }
    /// Of the curve with that index, from 0.
    COLORREF Colour(int index) const { return Curve(index).colour; }
    /// A lighter shade of it, for areas.
    COLORREF Tint(int index) const { return Curve(index).tint; }

private:
    CurveLook Curve(int index) const { return m_palette.At(static_cast<std::size_t>(index)); }

    Palette m_palette;
};

/// A 2D graph that a program builds of the classes, with the look and the layout of charts:
///
///     ombrel::GraphPicture picture("Damped oscillation");
///     ombrel::C2DGraph& graph = picture.Graph();
///     // plots and curves
///     picture.Save("example.png");
///
/// Before it is drawn, axes get ranges and tidy ticks round all data unless their range mode is fixed, a legend that is
/// switched on its place, the first colours that need one a key, and title and footnote theirs. What the graph was
/// given besides stays.
class OMBREL_EXPORT GraphPicture : public DrawnPicture {
public:
    /// An empty title is none.
    explicit GraphPicture(std::string_view title = {}, Theme theme = Theme::Light);
    ~GraphPicture() override;
    GraphPicture(GraphPicture&&) noexcept;
    GraphPicture& operator=(GraphPicture&&) noexcept;

    /// A small line below everything, such as where the data come from.
    GraphPicture& Footnote(std::string_view text);
    /// Leaves ranges, ticks and labels of the axes as the graph has them.
    GraphPicture& KeepAxes();

    /// The picture owns it. After a change that was made when it had been drawn, Touch has it laid out anew.
    C2DGraph& Graph();
    void Touch();
    PictureLook const& GetLook() const;

    ChartNotes Notes() const override { return {}; }

private:
    struct State;
    CAnnotatedGraph& LaidOut(CDC& dc, CRect const& window) override;

    std::unique_ptr<State> m_state;
};

} // namespace ombrel
