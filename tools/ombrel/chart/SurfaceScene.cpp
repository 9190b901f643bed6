#include "tools/ombrel/chart/SurfaceScene.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/SurfacePlot.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/gdi/PngDecoder.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/chart/HeightColours.h"
#include "tools/ombrel/chart/Look.h"
#include "tools/ombrel/chart/Scene.h"
#include "tools/ombrel/chart/TitleCaption.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <span>
#include <vector>

namespace ombrel::host {

namespace {

constexpr COLORREF kLineColour = RGB(40, 40, 40);
/// Colours by the colour map, and not by shades of one colour.
constexpr int kColourMapDescription = 2;

void SetCoordinates(CSurface& surface, CoordinateChoice coordinates)
{
    switch (coordinates) {
    case CoordinateChoice::Cartesian:
        break;
    case CoordinateChoice::Polar:
        surface.SetCurveType(C3DCurve::ctPolar);
        break;
    case CoordinateChoice::Cylindrical:
        surface.SetCurveType(C3DCurve::ctCylindrical);
        break;
    case CoordinateChoice::Geographical:
        surface.SetCurveType(C3DCurve::ctGeographical);
        break;
    case CoordinateChoice::Radial:
        surface.SetUseRadialGrid(1);
        break;
    }
}

void SetColours(CSurface& surface, SurfaceOptions const& options)
{
    LoadHeightMap(options.colourMap, *surface.GetColourmap());
    surface.SetColourDescription(kColourMapDescription);
    surface.SetTransparency(options.transparency);
    if (options.zRange) {
        surface.SetLUTMinMax(options.zRange->first, options.zRange->second);
        surface.SetUseLUTMinMax(1);
    }
}

void SetContours(CSurface& surface, SurfaceOptions const& options, AxisRange heights)
{
    // Asking for levels is asking to see them.
    ContourChoice const contours
        = options.contours.value_or(options.levels || options.lineColours ? ContourChoice::Both : ContourChoice::Off);
    surface.SetContoursOn(contours != ContourChoice::Off);
    if (contours == ContourChoice::Off)
        return;
    CDoubleArray levels;
    for (double const level : LevelsOf(options, heights))
        levels.Add(level);
    surface.SetArbContourLevels(levels);
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

} // namespace

std::unique_ptr<C3DGraph> MakeSurfaceScene(
    Options const& options, HeightFile&& file, Picture& picture, Messages const& messages)
{
    Look const look = LookOf(options.theme);
    std::unique_ptr<C3DGraph> owner = MakeScene(options, look);
    C3DGraph& scene = *owner;
    AddTitle(scene, OneLine(options.title), look);
    CPlot* const plot = scene.AddPlot(itSurfacePlot);
    auto& surface = static_cast<CSurface&>(*plot->CreateCurve());
    std::string const name = file.name;
    HeightTitles const titles = GiveHeights(std::move(file), surface, messages);
    SetCoordinates(surface, options.surface.coordinates);
    SetColours(surface, options.surface);
    SetWireframe(surface, options.surface);
    SetTexture(surface, options.surface.texture);
    scene.UpdatePlots();
    CheckHeights(surface, name, messages);
    double low = 0.0;
    double high = 0.0;
    surface.GetUntransformedDataRange(low, high);
    SetContours(surface, options.surface, { low, high });
    SceneData data = SceneDataOf(surface);
    data.titles = titles;
    if (options.surface.zRange)
        data.z = { options.surface.zRange->first, options.surface.zRange->second };
    LayOutScene(scene, surface, data, look, picture, options);
    return owner;
}

} // namespace ombrel::host
