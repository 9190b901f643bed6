#pragma once
#include "ombrel/chart/DrawnPicture.h"
#include "ombrel/scene/SceneItems.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel {

class C3DGraph;
class Scene;

/// One axis of a scene.
class OMBREL_EXPORT SceneAxis {
public:
    /// With its unit, such as "height / m".
    SceneAxis& Title(std::string_view title);
    /// Fixes both ends, data units; min < max.
    SceneAxis& Range(double min, double max);
    /// Fixes one of them.
    SceneAxis& Min(double min);
    SceneAxis& Max(double max);

private:
    friend class Scene;
    SceneAxis(Scene& scene, AxisStyle& axis)
        : m_scene(scene)
        , m_axis(axis)
    {
    }
    Scene& m_scene;
    AxisStyle& m_axis;
};

/// A picture in three dimensions in a few lines: surfaces, bars, points, lines, texts and meshes in a box with axes.
///
///     ombrel::Scene scene("Hills");
///     scene.Surface(heights, rows, columns).XRange(0, 10).YRange(0, 5).Name("height / m");
///     scene.X().Title("east / km");
///     scene.Save("hills.png");
///
/// What is added is drawn together, in one box. Axes have tidy ticks round all data; the scene is as large as the
/// picture has room for; a key explains the first colours that need one. Settings and data may change at any time, also
/// after a draw. Data is copied; a scene owns everything in it.
class OMBREL_EXPORT Scene : public DrawnPicture {
public:
    /// An empty title is none.
    explicit Scene(std::string_view title = {});
    ~Scene() override;
    Scene(Scene&&) noexcept;
    Scene& operator=(Scene&&) noexcept;

    // What is in it. Heights are rows × columns values, row by row, the first row at the lowest y; NaN is a gap. Points
    // have as many x as y and z. Throw ChartError when numbers do not fit, and Error for files that cannot be read.

    SceneSurface& Surface(std::span<double const> heights, std::size_t rows, std::size_t columns);
    /// Points in any order: over the grid that they form, else over the triangles between them.
    SceneSurface& Surface(std::span<double const> x, std::span<double const> y, std::span<double const> z);
    SceneSurface& Surface(HeightSource heights);
    SceneBars& Bars(std::span<double const> heights, std::size_t rows, std::size_t columns);
    SceneBars& Bars(std::span<double const> x, std::span<double const> y, std::span<double const> z);
    SceneBars& Bars(HeightSource heights);
    SceneSeries& Series(std::span<double const> heights, std::size_t rows, std::size_t columns);
    SceneSeries& Series(std::span<double const> x, std::span<double const> y, std::span<double const> z);
    SceneSeries& Series(HeightSource heights);
    SceneWireframe& Wireframe(std::span<double const> heights, std::size_t rows, std::size_t columns);
    /// The points have to form a grid.
    SceneWireframe& Wireframe(std::span<double const> x, std::span<double const> y, std::span<double const> z);
    SceneWireframe& Wireframe(HeightSource heights);
    SceneLine& Line(std::span<double const> x, std::span<double const> y, std::span<double const> z);
    SceneLine& Line(ombrel::Points points);
    ScenePoints& Points(std::span<double const> x, std::span<double const> y, std::span<double const> z);
    ScenePoints& Points(ombrel::Points points);
    SceneTexts& Texts(std::span<double const> x, std::span<double const> y, std::span<double const> z,
        std::span<std::string const> texts);
    SceneTexts& Texts(ombrel::Points points);
    /// A mesh (.tvm), solid objects (.tvo) or a drawing (.dxf).
    SceneMesh& Mesh(std::string const& path);

    // How all of it is shown

    SceneAxis X();
    SceneAxis Y();
    SceneAxis Z();
    SceneStyle const& GetStyle() const;
    Scene& Style(SceneStyle style);
    Scene& SetTheme(Theme theme);
    /// A small line below everything, such as where the data come from.
    Scene& Footnote(std::string_view text);
    Scene& View(Direction direction);
    /// Of the size that fits the picture, 0.1 to 10.
    Scene& Zoom(double factor);
    /// 0 for parallel lines to 1.
    Scene& Perspective(double strength);
    /// Height of the box against its longer side on the ground, 0.01 to 100; of meshes, against the scale of x and y.
    Scene& VerticalScale(double scale);
    /// One light or two.
    Scene& Lights(std::initializer_list<Direction> lights);
    /// Colours as they are, without light and shade.
    Scene& Unlit();
    Scene& Edges(EdgeChoice edges);
    Scene& Key(KeyChoice choice);
    /// Makes the scene as large as the picture has room for at the next draw, after data that was updated.
    Scene& Refit();

    /// The graph that is drawn, for everything else; the scene owns it. What a draw settles anew: the ranges, ticks and
    /// titles of axes, zoom and place of the scene, and the curves of what is in it. Curves may be added.
    C3DGraph& Graph();
    /// Gives the graph away, as it was last laid out; nothing else may be done with the scene then.
    std::unique_ptr<C3DGraph> TakeGraph() &&;

    ChartNotes Notes() const override;

private:
    friend class SceneAxis;
    struct State;
    template <typename Item, typename Data> Item& Add(Data&& data);
    CAnnotatedGraph& LaidOut(CDC& dc, CRect const& window) override;
    void Changed();

    std::unique_ptr<State> m_state;
};

} // namespace ombrel
