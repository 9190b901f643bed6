#include "tools/ombrel/chart/SurfaceScene.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/SurfacePlot.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/gdi/PngDecoder.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/chart/HeightColours.h"
#include "tools/ombrel/chart/PointArrays.h"
#include "tools/ombrel/commands/TableFile.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

namespace ombrel::host {

namespace {

/// Colours by the colour map, and not by shades of one colour.
constexpr int kColourMapDescription = 2;

void SetColours(CSurface& surface, SurfaceOptions const& options)
{
    SetHeightColours(surface, options);
    surface.SetColourDescription(kColourMapDescription);
    surface.SetTransparency(options.transparency);
}

void SetContours(CSurface& surface, SurfaceOptions const& options, AxisRange heights)
{
    // Asking for levels is asking to see them.
    ContourChoice const contours
        = options.contours.value_or(options.levels || options.lineColours ? ContourChoice::Both : ContourChoice::Off);
    surface.SetContoursOn(contours != ContourChoice::Off);
    if (contours == ContourChoice::Off)
        return;
    surface.SetArbContourLevels(LevelArray(options, heights));
    surface.SetContourLevelMode(CSurface::clArbitrary);
    surface.SetContourMode(contours == ContourChoice::Bands ? CSurface::cmBands
            : contours == ContourChoice::Lines              ? CSurface::cmLines
                                                            : CSurface::cmBandsAndLines);
    surface.SetContourColourMode(options.lineColours ? 1 : 0);
    surface.SetContourColour(kLineColour);
}

void SetWireframe(CSurface& surface, SurfaceOptions const& options)
{
    if (!options.wireframe)
        return;
    constexpr int kUsualLines = 40;
    int const cells = std::max(surface.GetNumCols(), surface.GetNumRows());
    int const every = *options.wireframe > 0 ? *options.wireframe : std::max(1, cells / kUsualLines);
    surface.SetWireframeOn(1);
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
    surface.SetUseTextureMap(1);
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
        throw Failure(kDataFault, "--texture " + path + ": " + error.what());
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
void SubtractOrigin(C3DCurve& curve, Points& points, std::string const& name, Messages const& messages)
{
    double const x = OriginOf(points.x);
    double const y = OriginOf(points.y);
    if (x == 0.0 && y == 0.0)
        return;
    for (double& value : points.x)
        value -= x;
    for (double& value : points.y)
        value -= y;
    CTransformArray transforms;
    transforms.Add(CCoordTransform(CCoordTransform::ctTranslate, x, y, 0.0));
    curve.SetTransforms(transforms);
    messages.Note(name + ": triangulated from the origin x = " + ShortNumber(x) + ", y = " + ShortNumber(y)
        + ", for full precision");
}

void SetBands(C3DIrregularSurfaceCurve& surface, SurfaceOptions const& options)
{
    ContourChoice const contours
        = options.contours.value_or(options.levels ? ContourChoice::Bands : ContourChoice::Off);
    if (contours == ContourChoice::Off)
        return;
    AxisRange heights;
    surface.GetUntransformedDataRange(heights.min, heights.max);
    surface.SetArbContourLevels(LevelArray(options, heights));
    surface.SetContourLevelMode(2);
    surface.SetContoursOn(1);
}

/// The surface of triangles between points that form no grid.
SceneContent AddTriangles(
    C3DGraph& scene, Options const& options, Points&& points, std::string const& name, Messages const& messages)
{
    SurfaceOptions const& wanted = options.surface;
    if (!wanted.texture.empty())
        throw Failure(kUsageFault, "--texture: needs points on a grid, and these form none");
    if (wanted.coordinates == CoordinateChoice::Geographical || wanted.coordinates == CoordinateChoice::Radial)
        throw Failure(kUsageFault, "--coordinates: points that form no grid may be cartesian, polar or cylindrical");
    if (wanted.contours == ContourChoice::Lines || wanted.contours == ContourChoice::Both || wanted.lineColours)
        throw Failure(kUsageFault, "contour lines need points on a grid; triangles have bands (--contours bands)");
    auto& surface = AddCurve<C3DIrregularSurfaceCurve>(scene, it3DIrregularSurfacePlot);
    HeightTitles const titles = TitlesOf(points);
    if (wanted.coordinates == CoordinateChoice::Cartesian)
        SubtractOrigin(surface, points, name, messages);
    PointArrays arrays(points);
    surface.SetTableData(arrays.All(), arrays.Count());
    SetCoordinates(surface, wanted.coordinates);
    SetHeightColours(surface, wanted);
    surface.SetColourDescription(1);
    surface.SetTransparency(wanted.transparency);
    surface.SetWireframeOn(wanted.wireframe ? 1 : 0);
    surface.SetWireframeColour(kLineColour);
    scene.UpdatePlots();
    std::size_t const triangles = surface.GetTriangles().size();
    if (triangles == 0)
        throw Failure(kDataFault,
            name + ": expected at least 3 points that do not lie on one line, which a surface needs, found none");
    messages.Note(name + ": " + Counted(static_cast<std::size_t>(arrays.Count()), "point", "points")
        + " form no grid; triangulated into " + Counted(triangles, "triangle", "triangles"));
    SetBands(surface, wanted);
    return ContentOf(scene, surface, titles);
}

} // namespace

SceneContent AddSurface(C3DGraph& scene, Options const& options, HeightFile&& file, Messages const& messages)
{
    if (file.points)
        return AddTriangles(scene, options, std::move(*file.points), file.name, messages);
    auto& surface = AddCurve<CSurface>(scene, itSurfacePlot);
    std::string const name = file.name;
    HeightTitles const titles = GiveHeights(std::move(file), surface, messages);
    SetCoordinates(surface, options.surface.coordinates);
    surface.SetUseRadialGrid(options.surface.coordinates == CoordinateChoice::Radial);
    SetColours(surface, options.surface);
    SetWireframe(surface, options.surface);
    SetTexture(surface, options.surface.texture);
    scene.UpdatePlots();
    CheckHeights(surface, name, messages);
    double low = 0.0;
    double high = 0.0;
    surface.GetUntransformedDataRange(low, high);
    SetContours(surface, options.surface, { low, high });
    return ContentOf(scene, surface, titles);
}

} // namespace ombrel::host
