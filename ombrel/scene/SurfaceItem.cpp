#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/SurfacePlot.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/gdi/PngDecoder.h"
#include "ombrel/scene/SceneItems.h"
#include "ombrel/scene/parts/HeightColours.h"
#include "ombrel/scene/parts/HeightData.h"
#include "ombrel/scene/parts/PointArrays.h"
#include "ombrel/scene/parts/SceneData.h"
#include "ombrel/scene/parts/SceneParts.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

namespace ombrel {

namespace {

/// Colours by the colour map, and not by shades of one colour.
constexpr int kColourMapDescription = 2;

void SetContours(CSurface& surface, SurfaceStyle const& style, AxisRange heights)
{
    ContourStyle const& wanted = style.contours;
    // Asking for levels is asking to see them.
    ContourChoice const contours
        = wanted.choice.value_or(wanted.levels || wanted.lineColours ? ContourChoice::Both : ContourChoice::Off);
    surface.SetContoursOn(contours != ContourChoice::Off);
    if (contours == ContourChoice::Off)
        return;
    surface.SetArbContourLevels(LevelArray(wanted, style.colours, heights));
    surface.SetContourLevelMode(CSurface::clArbitrary);
    surface.SetContourMode(contours == ContourChoice::Bands ? CSurface::cmBands
            : contours == ContourChoice::Lines              ? CSurface::cmLines
                                                            : CSurface::cmBandsAndLines);
    surface.SetContourColourMode(wanted.lineColours ? 1 : 0);
    surface.SetContourColour(kLineColour);
}

void SetWireframe(CSurface& surface, std::optional<int> wireframe)
{
    surface.SetWireframeOn(wireframe ? 1 : 0);
    if (!wireframe)
        return;
    constexpr int kUsualLines = 40;
    int const cells = std::max(surface.GetNumCols(), surface.GetNumRows());
    int const every = *wireframe > 0 ? *wireframe : std::max(1, cells / kUsualLines);
    surface.SetWireframeXFac(static_cast<short>(std::clamp(every, 1, surface.GetNumCols())));
    surface.SetWireframeYFac(static_cast<short>(std::clamp(every, 1, surface.GetNumRows())));
    surface.SetWireframeColour(kLineColour);
}

/// Red, green, blue and opacity, the lowest row first.
std::vector<BYTE> TexelsOf(Raster const& picture)
{
    std::vector<BYTE> texels;
    texels.reserve(static_cast<std::size_t>(picture.Width()) * static_cast<std::size_t>(picture.Height()) * 4);
    for (int y = picture.Height() - 1; y >= 0; --y) {
        for (std::uint32_t const pixel : std::span(picture.Row(y), static_cast<std::size_t>(picture.Width()))) {
            for (int const shift : { 16, 8, 0 })
                texels.push_back(static_cast<BYTE>(pixel >> shift));
            texels.push_back(0xFF);
        }
    }
    return texels;
}

/// Drapes the picture over the whole grid; files of bitmaps are read by the surface.
void SetTexture(CSurface& surface, std::string const& path)
{
    surface.SetUseTextureMap(path.empty() ? 0 : 1);
    if (path.empty())
        return;
    TextureMapParams params;
    params.fileName = CString(path);
    params.xMin = surface.GetXMin();
    params.xMax = surface.GetXMax();
    params.yMin = surface.GetYMin();
    params.yMax = surface.GetYMax();
    CTextureMap wanted;
    wanted.SetParams(params);
    try {
        std::vector<std::byte> const bytes = WithErrors([&] { return ReadWholeFile(params.fileName); });
        bool const isBitmap = bytes.size() > 1 && bytes[0] == std::byte { 'B' } && bytes[1] == std::byte { 'M' };
        if (isBitmap) {
            WithErrors([&] { surface.SetTextureMapParams(wanted); });
            return;
        }
        Raster const picture = DecodePng(bytes);
        surface.GetTextureMap()->SetParams(params);
        surface.GetTextureMap()->SetTexels({ picture.Width(), picture.Height() }, TexelsOf(picture));
    } catch (Error const& error) {
        throw ChartError(ChartError::Cause::Data, "texture " + path + ": " + error.what());
    }
}

/// Where coordinates count from, so that single precision is enough for the plane of x and y: their smallest, when they
/// lie farther from 0 than they are apart, else 0.
double OriginOf(std::vector<double> const& values)
{
    auto const [min, max] = std::minmax_element(values.begin(), values.end());
    return std::max(std::abs(*min), std::abs(*max)) > 2.0 * (*max - *min) ? *min : 0.0;
}

/// Takes the origin off the coordinates, and has the curve put it back behind the triangulation.
void SubtractOrigin(C3DCurve& curve, Points& points, ChartNotes& notes)
{
    double const x = OriginOf(points.x);
    double const y = OriginOf(points.y);
    CTransformArray transforms;
    if (x == 0.0 && y == 0.0) {
        if (curve.GetTransforms().GetSize() > 0)
            curve.SetTransforms(transforms);
        return;
    }
    for (double& value : points.x)
        value -= x;
    for (double& value : points.y)
        value -= y;
    transforms.Add(CCoordTransform(CCoordTransform::ctTranslate, x, y, 0.0));
    curve.SetTransforms(transforms);
    notes.AddNote(points.source + ": triangulated from the origin x = " + ShortNumber(x) + ", y = " + ShortNumber(y)
        + ", for full precision");
}

void SetBands(C3DIrregularSurfaceCurve& surface, SurfaceStyle const& style)
{
    ContourStyle const& wanted = style.contours;
    ContourChoice const contours = wanted.choice.value_or(wanted.levels ? ContourChoice::Bands : ContourChoice::Off);
    surface.SetContoursOn(contours != ContourChoice::Off);
    if (contours == ContourChoice::Off)
        return;
    AxisRange heights;
    surface.GetUntransformedDataRange(heights.min, heights.max);
    surface.SetArbContourLevels(LevelArray(wanted, style.colours, heights));
    surface.SetContourLevelMode(2);
}

/// What triangles cannot show.
void CheckTriangleStyle(SurfaceStyle const& style)
{
    auto const fail = [](char const* text) { throw ChartError(ChartError::Cause::Setting, text); };
    if (!style.texture.empty())
        fail("texture: needs points on a grid, and these form none");
    if (style.coordinates == CoordinateChoice::Geographical || style.coordinates == CoordinateChoice::Radial)
        fail("coordinates: points that form no grid may be cartesian, polar or cylindrical");
    ContourStyle const& contours = style.contours;
    if (contours.choice == ContourChoice::Lines || contours.choice == ContourChoice::Both || contours.lineColours)
        fail("contours: lines need points on a grid; triangles have bands");
}

} // namespace

SceneSurface::SceneSurface(SceneParts& scene, HeightSource&& heights)
    : HeightItem(scene, SourceOf(heights))
{
    if (ArePoints(heights))
        m_curve = &AddCurve<C3DIrregularSurfaceCurve>(*scene.graph, it3DIrregularSurfacePlot);
    else
        m_curve = m_grid = &AddCurve<CSurface>(*scene.graph, itSurfacePlot);
    TakeHeights(std::move(heights));
}

C3DCurve const* SceneSurface::KeyCurve() const
{
    // Under an image, colours mean nothing.
    return m_style.texture.empty() ? m_curve : nullptr;
}

void SceneSurface::Prepare() { m_grid ? PrepareGrid() : PrepareTriangles(); }
void SceneSurface::Finish() { m_grid ? FinishGrid() : FinishTriangles(); }

void SceneSurface::PrepareGrid()
{
    auto& surface = static_cast<CSurface&>(*m_grid);
    SetCoordinates(surface, m_style.coordinates);
    surface.SetUseRadialGrid(m_style.coordinates == CoordinateChoice::Radial);
    SetHeightColours(surface, m_style.colours);
    surface.SetColourDescription(kColourMapDescription);
    surface.SetTransparency(m_style.transparency);
    SetWireframe(surface, m_style.wireframe);
    SetTexture(surface, m_style.texture);
}

void SceneSurface::FinishGrid()
{
    auto& surface = static_cast<CSurface&>(*m_grid);
    CheckHeights(surface, m_source, m_notes);
    AxisRange heights;
    surface.GetUntransformedDataRange(heights.min, heights.max);
    SetContours(surface, m_style, heights);
}

void SceneSurface::PrepareTriangles()
{
    CheckTriangleStyle(m_style);
    auto& surface = static_cast<C3DIrregularSurfaceCurve&>(*m_curve);
    Points points = m_points;
    LeaveOutGaps(points, m_notes);
    if (m_style.coordinates == CoordinateChoice::Cartesian)
        SubtractOrigin(surface, points, m_notes);
    PointArrays arrays(points);
    surface.SetTableData(arrays.All(), arrays.Count());
    SetCoordinates(surface, m_style.coordinates);
    SetHeightColours(surface, m_style.colours);
    surface.SetColourDescription(1);
    surface.SetTransparency(m_style.transparency);
    surface.SetWireframeOn(m_style.wireframe ? 1 : 0);
    surface.SetWireframeColour(kLineColour);
}

void SceneSurface::FinishTriangles()
{
    auto& surface = static_cast<C3DIrregularSurfaceCurve&>(*m_curve);
    std::size_t const triangles = surface.GetTriangles().size();
    if (triangles == 0)
        throw ChartError(ChartError::Cause::Data,
            m_source + ": expected at least 3 points that do not lie on one line, which a surface needs, found none");
    m_notes.AddNote(m_source + ": " + Counted(static_cast<std::size_t>(surface.GetNumPoints()), "point", "points")
        + " form no grid; triangulated into " + Counted(triangles, "triangle", "triangles"));
    SetBands(surface, m_style);
}

SceneSurface& SceneSurface::Name(std::string_view name)
{
    SetName(name);
    return *this;
}

SceneSurface& SceneSurface::XRange(double first, double last)
{
    PlaceColumns(first, last);
    return *this;
}

SceneSurface& SceneSurface::YRange(double first, double last)
{
    PlaceRows(first, last);
    return *this;
}

SceneSurface& SceneSurface::Wireframe(int cells)
{
    constexpr double kMost = 10000;
    CheckedSetting("wireframe", cells, 0.0, kMost);
    return Set(m_style.wireframe, cells);
}

SceneSurface& SceneSurface::Transparency(double part)
{
    return Set(m_style.transparency, CheckedSetting("transparency", part, 0.0, 1.0));
}

SceneSurface& SceneSurface::Texture(std::string_view path) { return Set(m_style.texture, std::string(path)); }

} // namespace ombrel
