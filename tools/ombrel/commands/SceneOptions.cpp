#include "tools/ombrel/commands/SceneOptions.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/options/OptionValues.h"
#include "tools/ombrel/options/Options.h"
#include "tools/ombrel/options/PlotChecks.h"

namespace ombrel::host {

namespace {

std::optional<AxisRange> RangeOf(std::optional<std::pair<double, double>> const& ends)
{
    return ends ? std::optional(AxisRange { ends->first, ends->second }) : std::nullopt;
}

ColourStyle ColoursOf(SurfaceOptions const& options) { return { options.colourMap, RangeOf(options.zRange) }; }

ContourStyle ContoursOf(SurfaceOptions const& options)
{
    return { options.levels, options.contours, options.lineColours };
}

SymbolStyle SymbolsOf(SurfaceOptions const& options)
{
    return { options.symbol.value_or(SymbolChoice::Sphere), options.symbolSize };
}

SurfaceStyle SurfaceOf(SurfaceOptions const& options)
{
    return { ColoursOf(options), ContoursOf(options), options.wireframe, options.transparency, options.texture,
        options.coordinates };
}

LineStyle3D LineOf(Options const& options)
{
    return { static_cast<double>(options.lineWidth.value_or(1)), options.surface.tubes,
        options.symbols || options.surface.symbol, SymbolsOf(options.surface), options.surface.coordinates };
}

PointStyle PointsOf(SurfaceOptions const& options)
{
    return { ColoursOf(options), options.colouring, SymbolsOf(options), options.sticks, options.baseline,
        options.coordinates };
}

MeshStyle MeshOf(SurfaceOptions const& options)
{
    bool const isSolid = options.solid && !options.outline;
    MeshFaces const faces = !isSolid ? MeshFaces::Edges
        : options.wireframe          ? MeshFaces::SolidAndEdges
                                     : MeshFaces::Solid;
    return { ColoursOf(options), ContoursOf(options), options.variable, options.clip, faces };
}

/// The ends that were asked for.
AxisEnds EndsOf(std::optional<std::string> const& text, char const* option)
{
    if (!text)
        return {};
    auto const ends = ParseRange(*text, false, nullptr);
    if (!ends)
        throw Failure(kUsageFault,
            std::string(option) + ": expected A:B with numbers A below B, found " + QuoteForMessage(*text));
    return *ends;
}

/// Points have the axes that are asked for; ranges place grids.
void SetPointRanges(Scene& scene, Options const& options)
{
    SceneStyle style = scene.GetStyle();
    style.x.ends = EndsOf(options.xRange, "--x-range");
    style.y.ends = EndsOf(options.yRange, "--y-range");
    scene.Style(style);
}

} // namespace

HeightShape ShapeFor(Options const& options)
{
    switch (SceneKindOf(options)) {
    case PlotKind::Lines:
        return HeightShape::PointsWithGaps;
    case PlotKind::Scatter:
    case PlotKind::Text:
        return HeightShape::Points;
    case PlotKind::Wireframe:
        return HeightShape::Grid;
    default:
        return HeightShape::GridOrPoints;
    }
}

Scene SceneFor(Options const& options)
{
    SurfaceOptions const& wanted = options.surface;
    SceneStyle style;
    style.theme = options.theme;
    style.footnote = options.footnote;
    style.key = wanted.key;
    style.edges = wanted.plainEdges ? EdgeChoice::Plain : EdgeChoice::Smooth;
    style.view = wanted.view;
    style.zoom = wanted.zoom;
    style.perspective = wanted.perspective;
    style.verticalScale = wanted.verticalScale;
    style.lit = wanted.lit;
    style.lights = wanted.lights;
    style.x.title = options.xTitle;
    style.y.title = options.yTitle;
    style.z.title = wanted.zTitle;
    Scene scene(options.title);
    scene.Style(style);
    return scene;
}

void AddHeights(Scene& scene, Options const& options, HeightSource&& heights)
{
    SurfaceOptions const& wanted = options.surface;
    if (wanted.zRange)
        scene.Z().Range(wanted.zRange->first, wanted.zRange->second);
    ColourStyle const colours = ColoursOf(wanted);
    switch (SceneKindOf(options)) {
    case PlotKind::Bars:
        scene.Bars(std::move(heights)).Style({ colours, wanted.colouring, wanted.baseline, wanted.barWidth });
        break;
    case PlotKind::Series:
        scene.Series(std::move(heights)).Style({ colours, wanted.colouring, wanted.baseline, wanted.along });
        break;
    case PlotKind::Wireframe:
        scene.Wireframe(std::move(heights)).Style({ colours, wanted.colouring, wanted.coordinates });
        break;
    case PlotKind::Lines:
        scene.Line(std::get<Points>(std::move(heights))).Style(LineOf(options));
        SetPointRanges(scene, options);
        break;
    case PlotKind::Scatter:
        scene.Points(std::get<Points>(std::move(heights))).Style(PointsOf(wanted));
        SetPointRanges(scene, options);
        break;
    case PlotKind::Text:
        scene.Texts(std::get<Points>(std::move(heights)))
            .Style({ options.symbols, SymbolsOf(wanted), wanted.coordinates });
        SetPointRanges(scene, options);
        break;
    default:
        scene.Surface(std::move(heights)).Style(SurfaceOf(wanted));
        break;
    }
}

void AddMesh(Scene& scene, Options const& options, std::string const& path)
{
    scene.Mesh(path).Style(MeshOf(options.surface));
}

ContourMap MapFor(Options const& options, HeightSource&& heights)
{
    SurfaceOptions const& wanted = options.surface;
    ContourMap map(std::move(heights), options.title);
    map.Style({ options.theme, options.footnote, wanted.key, ColoursOf(wanted), ContoursOf(wanted), options.xTitle,
        options.yTitle, wanted.zTitle });
    return map;
}

} // namespace ombrel::host
