#include "ombrel/scene/parts/SceneLayout.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/Walls.h"
#include "ombrel/layout/Look.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/scene/MapKey.h"
#include "ombrel/scene/parts/HeightColours.h"
#include "ombrel/scene/parts/SceneSketch.h"
#include "ombrel/scene/parts/ViewAngle.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ombrel {

namespace {

/// From the left in front of the box and well above it.
constexpr Direction kUsualView { 330.0, 62.0 };
/// Straight lines stay nearly parallel, and the far side is still smaller than the near one.
constexpr double kUsualPerspective = 0.35;
/// What the library can draw: beyond it, the near side of the box would lie behind the eye.
constexpr double kStrongestPerspective = 0.85;

/// Over the viewer's left shoulder, above or below as the viewer is: relief stands out, and no side that can be seen is
/// dark.
Direction LightBeside(Direction view)
{
    constexpr double kToTheLeft = 65.0;
    constexpr double kFromZenith = 40.0;
    constexpr double kLevel = 90.0;
    return { std::fmod(view.azimuth + 360.0 - kToTheLeft, 360.0),
        view.polar > kLevel ? 2.0 * kLevel - kFromZenith : kFromZenith };
}

void SetLights(C3DGraph& scene, SceneStyle const& style, Direction view)
{
    scene.SetLightingOn(style.lit ? 1 : 0);
    std::vector<Direction> lights = style.lights;
    if (lights.empty())
        lights.push_back(LightBeside(view));
    // Far away, light falls on all of the box from the same side.
    constexpr double kFar = 6.0;
    scene.SetLightDistance(kFar);
    scene.SetLight1On(1);
    scene.SetLight1Pos(lights.front().azimuth, lights.front().polar);
    scene.SetLight2On(lights.size() > 1 ? 1 : 0);
    if (lights.size() > 1)
        scene.SetLight2Pos(lights[1].azimuth, lights[1].polar);
    // Together with what the library adds, the brightest places have the very colours of the colour map, and those
    // turned away keep half of them.
    scene.SetAmbientLight(0.3);
    scene.SetAttenuation(lights.size() > 1 ? 2.2 : 1.55);
}

/// Ticks inside of the range, which stays as it is.
NumberTicks TicksIn(AxisRange range, int most) { return MakeNumberTicks(WidenEmptyRange(range), { true, true }, most); }

void SetAxis(C3DAxis& axis, NumberTicks const& ticks, std::string const& title)
{
    axis.SetRangeMode(C3DAxis::rmFixed);
    axis.SetRange(ticks.range.min, ticks.range.max);
    axis.SetTickMode(C3DAxis::tmStep);
    axis.SetTickMin(ticks.first);
    axis.SetTickDel(ticks.step);
    axis.SetNumMinorDivs(ticks.minor + 1);
    axis.SetFormatType(kFixedFormat);
    axis.SetLabelPrecision(ticks.decimals);
    axis.SetLabelMode(ticks.IsPlain() ? C3DAxis::lmNumbers : C3DAxis::lmTexts);
    CStringArray labels;
    if (!ticks.IsPlain()) {
        for (std::string const& text : NumberLabels(ticks))
            labels.Add(CString(text));
    }
    axis.SetLabels(labels);
    axis.SetTitle(CString(TitleWithPower(title, ticks)));
}

double WidthOf(AxisRange range)
{
    AxisRange const wide = WidenEmptyRange(range);
    return wide.max - wide.min;
}

/// The sides of the box, the longest on the ground 1 long.
std::array<double, 3> Proportions(SceneData const& data, std::optional<double> verticalScale)
{
    // Ranges that differ more are hardly lengths of one kind.
    constexpr double kMostAlike = 3.0;
    constexpr double kUsualHeight = 0.5;
    constexpr double kReliefHeight = 0.25;
    double const width = WidthOf(data.x);
    double const depth = WidthOf(data.y);
    double const longer = std::max(width, depth);
    double const height = WidthOf(data.z);
    if (data.inSpace) {
        double const high = height * verticalScale.value_or(1.0);
        double const longest = std::max(longer, high);
        return { width / longest, depth / longest, high / longest };
    }
    bool const isAlike = longer <= kMostAlike * std::min(width, depth);
    double const sx = data.titles.sameUnits || isAlike ? width / longer : 1.0;
    double const sy = data.titles.sameUnits || isAlike ? depth / longer : 1.0;
    double const sz = verticalScale.value_or(data.titles.sameUnits ? kReliefHeight : kUsualHeight);
    // The camera sees a box whose longest side is about 1.
    double const longest = std::max(sz, 1.0);
    return { sx / longest, sy / longest, sz / longest };
}

/// A rectangle of the picture at the resolution of a screen: pages have several times its pixels.
CRect OnScreen(CRect const& rect, double scale)
{
    auto const scaled = [scale](LONG v) { return static_cast<int>(std::lround(static_cast<double>(v) * scale)); };
    return { scaled(rect.left), scaled(rect.top), scaled(rect.right), scaled(rect.bottom) };
}

/// Pixels of the picture that one unit in the middle of the box covers.
double PixelsPerUnit(C3DGraph const& scene, CRect const& graph)
{
    double const shape = static_cast<double>(graph.Width()) / graph.Height();
    double const angle = ViewAngle(scene.GetPerspective(), scene.GetZoomFactor(), shape);
    return graph.Height() / 2.0 / (EyeDistance(scene.GetPerspective()) * std::tan(angle / 2.0));
}

/// What fitting changes of a view.
struct View {
    double x = 0.0;
    double y = 0.0;
    double zoom = 1.0;
};

View ViewOf(C3DGraph const& scene) { return { scene.GetXPos(), scene.GetYPos(), scene.GetZoomFactor() }; }

void SetView(C3DGraph& scene, View const& view)
{
    scene.SetXPos(view.x);
    scene.SetYPos(view.y);
    scene.SetZoomFactor(view.zoom);
}

/// Where the title stands in a window; without height when there is none.
CRect TitleRoom(CRect const& window, CAnnotatedGraph& graph)
{
    int const height = !FindTitle(graph) ? 0 : std::min(window.Width(), window.Height()) / 14;
    return { window.left, window.top, window.right, window.top + height };
}

/// Where the footnote stands, likewise.
CRect FootnoteRoom(CRect const& window, CAnnotatedGraph& graph)
{
    int const height = !FindFootnote(graph) ? 0 : std::min(window.Width(), window.Height()) / 20;
    int const margin = height / 3;
    // Letters do not touch the window's edge.
    int const bottom = window.bottom - (height > 0 ? 1 : 0);
    return { window.left + margin, bottom - height, window.right - margin, bottom };
}

/// What texts in a room of a picture are enlarged by, whose height is a thirtieth of its smaller side up to four
/// millimetres: in small pictures they would be too small to read.
double TextFactor(CRect const& room, CDC const& dc)
{
    constexpr double kUsualPart = 1.0 / 30.0;
    constexpr double kMostEnlarged = 1.6;
    // As high as people read with ease: twelve pixels of a screen.
    constexpr double kReadableInches = 12.0 / 96.0;
    double const usual = std::max(1.0, kUsualPart * std::min(room.Width(), room.Height()));
    return std::clamp(kReadableInches * dc.GetDeviceCaps(LOGPIXELSY) / usual, 1.0, kMostEnlarged);
}

void SetAxisFonts(C3DGraph& scene, double factor)
{
    for (int i = 0; i < 3; ++i) {
        C3DAxis& axis = *scene.GetAxes()[i];
        CFontData labels = *axis.GetLabelsFont();
        CFontData titles = *axis.GetTitlesFont();
        labels.sizeFactor = titles.sizeFactor = factor;
        axis.SetLabelsFont(labels);
        axis.SetTitlesFont(titles);
    }
}

/// Makes box, labels and titles as large as the picture has room for beside a strip of that many pixels at its right
/// between the graph's title and its footnote. Only the view's size and place change. Returns where what is drawn ends
/// at the right.
int FitScene(C3DGraph& scene, CDC& dc, CRect const& window, int stripAtRight, double zoom)
{
    constexpr int kScreenDotsPerInch = 96;
    constexpr int kPasses = 6;
    double const scale = static_cast<double>(kScreenDotsPerInch) / dc.GetDeviceCaps(LOGPIXELSX);
    int const margin = std::min(window.Width(), window.Height()) / 40;
    int const titleRoom = 2 * margin;
    CRect const room(
        window.left, TitleRoom(window, scene).bottom, window.right - stripAtRight, FootnoteRoom(window, scene).top);
    SetView(scene, {});
    SetAxisFonts(scene, TextFactor(room, dc));
    CRect const graph = OnScreen(room, scale);
    SceneSketch sketch(scene, OnScreen(window, scale), graph);
    CRect const inside = OnScreen(
        CRect(room.left + titleRoom, room.top + margin, room.right - titleRoom, room.bottom - margin - titleRoom),
        scale);
    int const antialiased = scene.GetAntialiasMode();
    scene.SetAntialiasMode(0);
    auto boxAlone = std::make_unique<BoxAlone>(scene);
    CRect extent;
    // What reaches the edge of the room may reach beyond it, how far is not known: the largest view that is whole
    // counts.
    constexpr double kStepBack = 0.85;
    constexpr double kTooLarge = 1e9;
    CRect const all(graph.left + 1, graph.top + 1, graph.right - 1, graph.bottom - 1);
    View whole = ViewOf(scene);
    double cutZoom = kTooLarge;
    for (int pass = 0; pass < kPasses; ++pass) {
        extent = sketch.Extent();
        if (extent.IsRectEmpty())
            break;
        bool const isCut
            = extent.left < all.left || extent.top < all.top || extent.right > all.right || extent.bottom > all.bottom;
        if (isCut)
            cutZoom = std::min(cutZoom, scene.GetZoomFactor());
        else
            whole = ViewOf(scene);
        double const fit = std::min(static_cast<double>(inside.Width()) / extent.Width(),
            static_cast<double>(inside.Height()) / extent.Height());
        constexpr double kGoodFit = 0.02;
        if (!isCut && std::abs(fit - 1.0) < kGoodFit)
            break;
        double const unit = PixelsPerUnit(scene, graph);
        // The place where the middle of what is drawn lies, from the middle of the room.
        double const right = (extent.left + extent.right - inside.left - inside.right) / 2.0;
        double const down = (extent.top + extent.bottom - inside.top - inside.bottom) / 2.0;
        double const next = scene.GetZoomFactor() * (isCut ? kStepBack : fit);
        SetView(scene,
            { scene.GetXPos() - right / unit, scene.GetYPos() + down / unit,
                next < cutZoom ? next : (whole.zoom + cutZoom) / 2.0 });
    }
    SetView(scene, whole);
    scene.SetZoomFactor(scene.GetZoomFactor() * zoom);
    boxAlone.reset();
    // In a wide picture, what stands beside the scene should not stand far from it.
    constexpr double kHalfEmpty = 0.75;
    bool const isWide = stripAtRight > 0 && extent.right - inside.left < kHalfEmpty * inside.Width();
    int const right = isWide ? static_cast<int>(std::lround(sketch.Extent().right / scale)) : room.right;
    scene.SetAntialiasMode(antialiased);
    scene.SetGraphAndWindowRect(room, window);
    return right;
}

/// A key of a curve's colours, and over it what they mean.
class SceneKey {
public:
    SceneKey(C3DGraph& scene, C3DCurve const& curve, std::string const& title, Look const& look, double textFactor)
        : m_key(AddKey(scene, curve, title, look))
    {
        Enlarge(*m_key.colours, textFactor);
        if (m_key.title)
            Enlarge(*m_key.title, textFactor);
    }
    int Width(CDC& dc) const
    {
        return static_cast<int>(
            std::max(m_key.colours->Measure(&dc).cx, m_key.title ? m_key.title->Measure(&dc).cx : 0));
    }
    /// In the middle of the window's height, at that place or farther to the left.
    void Place(CRect const& window, int left, CDC& dc) const
    {
        CSize const size = m_key.colours->Measure(&dc);
        int const above = m_key.title ? static_cast<int>(m_key.title->Measure(&dc).cy) : 0;
        int const top = window.top + std::max<int>(0, (window.Height() - size.cy - above) / 2);
        m_key.colours->Create(CPoint(left, top + above));
        if (m_key.title)
            static_cast<CAnnotation&>(*m_key.title).Create(CPoint(left, top));
    }
    TitledKey const& Get() const { return m_key; }

private:
    static void Enlarge(CAnnotation& box, double factor)
    {
        CFontData font = box.GetFont();
        font.sizeFactor = factor;
        box.SetFont(font);
    }

    TitledKey m_key;
};

} // namespace

std::unique_ptr<C3DGraph> MakeScene()
{
    auto scene = std::make_unique<C3DGraph>(1);
    scene->SetGraphFrameOn(0);
    scene->GetWalls()->SetOn(0);
    return scene;
}

void ApplySceneStyle(C3DGraph& scene, SceneStyle const& style, Look const& look)
{
    Direction const view = style.view.value_or(kUsualView);
    scene.SetViewingAzimuth(view.azimuth);
    scene.SetViewingElevation(view.polar);
    scene.SetPerspective(std::min(style.perspective.value_or(kUsualPerspective), kStrongestPerspective));
    scene.SetAntialiasMode(style.edges == EdgeChoice::Smooth ? 1 : 0);
    scene.SetBackgroundColour(look.window);
    SetLights(scene, style, view);
    for (int i = 0; i < 3; ++i) {
        C3DAxis& axis = *scene.GetAxes()[i];
        axis.SetColour(look.axes);
        axis.SetLabelsColour(look.text);
        axis.SetTitleColour(look.text);
    }
    scene.GetGrid()->SetColour(look.majorGrid);
    if (CCaption* const title = FindTitle(scene))
        ApplyLook(*title, look);
    SetFootnote(scene, style.footnote, look);
}

void SetSceneAxes(C3DGraph& scene, SceneData const& data, std::optional<double> verticalScale)
{
    constexpr int kMostSteps = 6;
    C3DAxis* const* const axes = scene.GetAxes();
    NumberTicks const x = TicksIn(data.x, kMostSteps);
    NumberTicks const y = TicksIn(data.y, kMostSteps);
    NumberTicks const z = TicksIn(data.z, kMostSteps - 1);
    SetAxis(*axes[0], x, data.titles.x);
    SetAxis(*axes[1], y, data.titles.y);
    SetAxis(*axes[2], z, data.titles.z);
    auto const [sx, sy, sz] = Proportions(data, verticalScale);
    for (int i = 0; i < 3; ++i)
        axes[i]->SetScaleFacs(sx, sy, sz);
    C3DGrid& grid = *scene.GetGrid();
    grid.SetXLineMode(GridLines3D::glStep);
    grid.SetXLineMin(x.first);
    grid.SetXLineDel(x.step);
    grid.SetYLineMode(GridLines3D::glStep);
    grid.SetYLineMin(y.first);
    grid.SetYLineDel(y.step);
    grid.SetZLineMode(GridLines3D::glStep);
    grid.SetZLineMin(z.first);
    grid.SetZLineDel(z.step);
}

TitledKey LayOutScene(C3DGraph& scene, C3DCurve const* keyCurve, SceneData const& data, Look const& look,
    SceneStyle const& style, TitledKey keys, CDC& dc, CRect const& window)
{
    RemoveKey(scene, keys);
    keys = {};
    // What the scene is fitted by does not include title and footnote, which get their places last.
    for (CCaption* const line : { FindTitle(scene), FindFootnote(scene) }) {
        if (line)
            line->SetOn(0);
    }
    SetSceneAxes(scene, data, style.verticalScale);
    scene.SetGraphAndWindowRect(window, window);
    int strip = 0;
    double const textFactor = TextFactor(window, dc);
    if (keyCurve) {
        SceneKey const measured(scene, *keyCurve, data.keyTitle, look, textFactor);
        strip = measured.Width(dc) * 5 / 4;
        // While its curve is away, a key goes.
        RemoveKey(scene, measured.Get());
    }
    int const right = FitScene(scene, dc, window, strip, style.zoom);
    if (keyCurve) {
        SceneKey const key(scene, *keyCurve, data.keyTitle, look, textFactor);
        int const width = key.Width(dc);
        key.Place(
            window, std::min(right + (strip - width) * 2, static_cast<int>(window.right) - (strip + width) / 2), dc);
        keys = key.Get();
    }
    PlaceTitleIn(scene, TitleRoom(window, scene), dc);
    PlaceFootnoteIn(scene, style.footnote, FootnoteRoom(window, scene), textFactor, dc);
    return keys;
}

} // namespace ombrel
