#pragma once
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/scene/Heights.h"
#include "ombrel/scene/SceneSetters.h"

#include <initializer_list>
#include <string>

namespace ombrel {

class C3DCurve;
class C3DLineCurve;
class C3DRowColCurve;
class C3DScatterCurve;
class C3DTextCurve;
struct Look;
struct SceneParts;

/// One thing in a scene, which owns it: a reference stays good as long as the scene lives.
///
/// Settings may be changed at any time; the next draw shows them. Data is copied. Errors of data are ChartError, thrown
/// where the data is given or by the next draw.
class OMBREL_EXPORT SceneItem {
public:
    virtual ~SceneItem() = default;
    SceneItem(SceneItem const&) = delete;
    SceneItem& operator=(SceneItem const&) = delete;

protected:
    SceneItem(SceneParts& scene, std::string source);
    /// Has everything made anew: a setting changed.
    void Touch();
    /// Has the data shown as it is now; the view stays.
    void TouchData();
    void SetName(std::string_view name);
    /// What needs the ranges of the data, which are known now. Throws ChartError when there is nothing to draw.
    virtual void Finish();

    SceneParts& m_scene;
    /// How messages call it.
    std::string m_source;
    /// Owned by the graph.
    C3DCurve* m_curve = nullptr;
    HeightTitles m_titles;
    /// What colours mean, when that is not told by the z axis.
    std::string m_keyTitle;
    /// Of what was last made.
    ChartNotes m_notes;

private:
    friend class Scene;
    /// Hands settings and data over to the curve.
    virtual void Prepare() = 0;
    /// The curve whose colours a key explains; null for none.
    virtual C3DCurve const* KeyCurve() const { return m_curve; }
    bool m_isTouched = true;
};

/// Heights over a grid, or at points that form none.
class OMBREL_EXPORT HeightItem : public SceneItem {
public:
    /// Shows other heights in place of those there are, one each, in their order. Axes and colours follow the data
    /// where they are not fixed; the view stays. Throws ChartError when there are more or fewer.
    void Update(std::span<double const> heights);
    /// Shows other data. A grid stays a grid, of any size, and points stay points.
    void Update(HeightSource heights);

protected:
    using SceneItem::SceneItem;
    void TakeHeights(HeightSource&& heights);
    /// Lay a grid's columns or rows from one coordinate to another.
    void PlaceColumns(double first, double last) { Place(true, first, last); }
    void PlaceRows(double first, double last) { Place(false, first, last); }

    /// The curve, when it is one over a grid.
    C3DRowColCurve* m_grid = nullptr;
    Points m_points;

private:
    void Place(bool columns, double first, double last);
};

/// A surface over a grid, or of triangles between points.
class OMBREL_EXPORT SceneSurface : public HeightItem, public SceneSetters<SceneSurface, SurfaceStyle> {
public:
    SceneSurface(SceneParts& scene, HeightSource&& heights);
    /// What the heights are, with their unit: the z axis's title.
    SceneSurface& Name(std::string_view name);
    /// Where the first and the last column of a grid lie, first < last.
    SceneSurface& XRange(double first, double last);
    /// Where the first and the last row lie.
    SceneSurface& YRange(double first, double last);
    /// Lines over every so many cells; 0 for a number that fits.
    SceneSurface& Wireframe(int cells = 0);
    /// 0 to 1.
    SceneSurface& Transparency(double part);
    /// Lays an image (.png, .bmp) over a grid.
    SceneSurface& Texture(std::string_view path);

private:
    friend class SceneSetters<SceneSurface, SurfaceStyle>;
    void Prepare() override;
    void Finish() override;
    C3DCurve const* KeyCurve() const override;
    void PrepareGrid();
    void PrepareTriangles();
    void FinishGrid();
    void FinishTriangles();
};

/// A bar at each node of a grid, or at each point.
class OMBREL_EXPORT SceneBars : public HeightItem, public SceneSetters<SceneBars, BarStyle> {
public:
    SceneBars(SceneParts& scene, HeightSource&& heights);
    SceneBars& Name(std::string_view name);
    SceneBars& XRange(double first, double last);
    SceneBars& YRange(double first, double last);
    /// Parts of the room that a bar has along x and along y, above 0 and up to 10.
    SceneBars& Width(double x, double y);

private:
    friend class SceneSetters<SceneBars, BarStyle>;
    void Prepare() override;
};

/// Lines one behind the other, each over a stack: the rows or columns of a grid, or points with the same y or x.
class OMBREL_EXPORT SceneSeries : public HeightItem, public SceneSetters<SceneSeries, SeriesStyle> {
public:
    SceneSeries(SceneParts& scene, HeightSource&& heights);
    SceneSeries& Name(std::string_view name);
    SceneSeries& XRange(double first, double last);
    SceneSeries& YRange(double first, double last);
    SceneSeries& Along(AlongChoice along);

private:
    friend class SceneSetters<SceneSeries, SeriesStyle>;
    void Prepare() override;
};

/// A net of lines between the nodes of a grid.
class OMBREL_EXPORT SceneWireframe : public HeightItem, public SceneSetters<SceneWireframe, NetStyle> {
public:
    /// Throws ChartError for points that form no grid.
    SceneWireframe(SceneParts& scene, HeightSource&& heights);
    SceneWireframe& Name(std::string_view name);
    SceneWireframe& XRange(double first, double last);
    SceneWireframe& YRange(double first, double last);

private:
    friend class SceneSetters<SceneWireframe, NetStyle>;
    void Prepare() override;
};

/// Points in space.
class OMBREL_EXPORT PointItem : public SceneItem {
public:
    /// Shows other points in place of those there are; their own colours, sizes and texts go. The view stays.
    void Update(Points points);
    void Update(std::span<double const> x, std::span<double const> y, std::span<double const> z);

protected:
    PointItem(SceneParts& scene, Points&& points);
    void TakePoints(Points&& points);
    void Finish() override;

    Points m_points;
};

/// Points joined in their order; one with a gap breaks the line.
class OMBREL_EXPORT SceneLine : public PointItem, public SceneSetters<SceneLine, LineStyle3D> {
public:
    SceneLine(SceneParts& scene, Points&& points);
    SceneLine& Name(std::string_view name);
    /// Pixels, 1 to 100; of tubes, of their usual thickness.
    SceneLine& Width(double width);
    SceneLine& Tubes();

private:
    friend class SceneSetters<SceneLine, LineStyle3D>;
    void Prepare() override;
    C3DLineCurve& m_line;
};

/// A symbol at each point. Points with a gap are left out.
class OMBREL_EXPORT ScenePoints : public PointItem, public SceneSetters<ScenePoints, PointStyle> {
public:
    ScenePoints(SceneParts& scene, Points&& points);
    ScenePoints& Name(std::string_view name);
    /// Colours the points by these values, one each; the title says over the key what they are.
    ScenePoints& Colours(std::span<double const> values, std::string_view title = {});
    /// Makes symbols as large as these values, one each.
    ScenePoints& Sizes(std::span<double const> values);
    ScenePoints& Sticks();

private:
    friend class SceneSetters<ScenePoints, PointStyle>;
    void Prepare() override;
    C3DScatterCurve& m_scatter;
};

/// A text at each point.
class OMBREL_EXPORT SceneTexts : public PointItem, public SceneSetters<SceneTexts, TextStyle> {
public:
    SceneTexts(SceneParts& scene, Points&& points);
    SceneTexts& Name(std::string_view name);

private:
    friend class SceneSetters<SceneTexts, TextStyle>;
    void Prepare() override;
    C3DTextCurve& m_texts;
    /// Where marks are wanted.
    C3DScatterCurve* m_marks = nullptr;
};

/// A finite-element mesh, solid objects or a drawing, from a file.
class OMBREL_EXPORT SceneMesh : public SceneItem, public SceneSetters<SceneMesh, MeshStyle> {
public:
    SceneMesh(SceneParts& scene, std::string const& path);
    /// Colours a mesh by the values of that name; by heights for "z".
    SceneMesh& Variable(std::string_view name);
    /// Shows what lies inside; an end that is left out is everywhere.
    SceneMesh& Clip(AxisEnds x, AxisEnds y, AxisEnds z);
    SceneMesh& Faces(MeshFaces faces);

private:
    friend class SceneSetters<SceneMesh, MeshStyle>;
    void Prepare() override;
    void Finish() override;
    std::vector<C3DCurve*> m_curves;
};

} // namespace ombrel
