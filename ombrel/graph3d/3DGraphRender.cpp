#include "ombrel/foundation/Utils.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/3DPlot.h"
#include "ombrel/graph3d/Walls.h"
#include "ombrel/graph3d/view/BoxFaces.h"
#include "ombrel/graph3d/view/Picture3D.h"
#include "ombrel/graph3d/view/ViewDirection.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace ombrel {

namespace {

struct Jitter {
    double x;
    double y;
};

/// Eight places within a pixel: OpenGL Programming Guide, "Accumulation Buffer", sample values for jittering.
constexpr Jitter kJitters[] = { { 0.5625, 0.4375 }, { 0.0625, 0.9375 }, { 0.3125, 0.6875 }, { 0.6875, 0.8125 },
    { 0.8125, 0.1875 }, { 0.9375, 0.5625 }, { 0.4375, 0.0625 }, { 0.1875, 0.3125 } };

} // namespace

void C3DGraph::SetState(double jitterX, double jitterY)
{
    if (!m_picture)
        return;
    Picture3D& picture = *m_picture;
    ViewDirection const direction(m_azimuth, m_elevation);
    m_quadrant = direction.quadrant;
    m_octant = direction.octant;
    m_level = direction.level;

    CRect const viewport = GetViewportRect();
    ViewSettings settings;
    settings.azimuth = m_azimuth;
    settings.elevation = m_elevation;
    settings.perspective = m_perspective;
    settings.zoom = m_zoom;
    settings.xPos = m_xPos;
    settings.yPos = m_yPos;
    settings.aspectRatio = m_aspectRatio;
    settings.viewportOrigin = viewport.TopLeft();
    settings.viewportSize = viewport.Size();
    settings.jitterX = jitterX;
    settings.jitterY = jitterY;
    picture.camera = Camera(settings);

    // Everything is background; then drawing keeps to the graph's rectangle, lines wider than a pixel too.
    gl::Viewport(viewport.left, viewport.top, viewport.Width(), viewport.Height());
    gl::Disable(GL_SCISSOR_TEST);
    auto const channel = [this](std::size_t i) { return static_cast<float>(m_background[i]) / 255.0F; };
    gl::ClearColor(channel(0), channel(1), channel(2), 0.0F);
    gl::DepthMask(GL_TRUE);
    gl::Clear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    gl::Scissor(viewport.left, viewport.top, viewport.Width(), viewport.Height());
    gl::Enable(GL_SCISSOR_TEST);
    gl::ShadeModel(GL_SMOOTH);
    gl::DepthFunc(GL_LEQUAL);
    gl::Enable(GL_DEPTH_TEST);
    EnableLighting(1);

    gl::MatrixMode(GL_PROJECTION);
    gl::LoadMatrixd(picture.camera.Projection().data());
    gl::MatrixMode(GL_MODELVIEW);
    gl::LoadMatrixd(picture.camera.ModelView().data());
    SetLights();
}

void C3DGraph::SetLights() const
{
    for (std::size_t i = 0; i < m_lights.size(); ++i) {
        GLenum const name = static_cast<GLenum>(GL_LIGHT0 + i);
        Light3D const& light = m_lights[i];
        if (!light.on) {
            gl::Disable(name);
            continue;
        }
        gl::Enable(name);
        float const level = static_cast<float>(m_ambientLight);
        float const ambient[] = { level, level, level, 1.0F };
        float const diffuse[] = { 1.0F, 1.0F, 1.0F, 0.2F };
        gl::Lightfv(name, GL_AMBIENT, ambient);
        gl::Lightfv(name, GL_DIFFUSE, diffuse);
        gl::Lightf(name, GL_CONSTANT_ATTENUATION, static_cast<float>(m_attenuation));
        // Given after the model-view matrix: the light turns with the box.
        double const azimuth = light.azimuth * std::numbers::pi / 180.0;
        double const polar = light.polarAngle * std::numbers::pi / 180.0;
        float const position[] = { static_cast<float>(std::cos(azimuth) * std::sin(polar) * m_lightDistance),
            static_cast<float>(std::sin(azimuth) * std::sin(polar) * m_lightDistance),
            static_cast<float>(std::cos(polar) * m_lightDistance), 1.0F };
        gl::Lightfv(name, GL_POSITION, position);
    }
    float const ambient[] = { 0.2F, 0.2F, 0.2F, 1.0F };
    gl::LightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
    gl::LightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
    gl::LightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 1);
    // Colours of vertices are those of the material.
    gl::ColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE);
    gl::Enable(GL_COLOR_MATERIAL);
}

std::array<double, 3> C3DGraph::GetClipBox() const
{
    std::array<double, 3> box { 1.0, 1.0, 1.0 };
    if (m_axes[0])
        m_axes[0]->GetScaleFacs(box[0], box[1], box[2]);
    for (double& side : box)
        side *= 1.005 / 2.0;
    return box;
}

void C3DGraph::EnableClip(int on)
{
    if (!m_picture)
        return;
    std::array<double, 3> const box = GetClipBox();
    for (std::size_t plane = 0; plane < 6; ++plane) {
        GLenum const name = static_cast<GLenum>(GL_CLIP_PLANE0 + plane);
        if (!on) {
            gl::Disable(name);
            continue;
        }
        double equation[4] = { 0.0, 0.0, 0.0, box[plane / 2] };
        equation[plane / 2] = plane % 2 == 0 ? 1.0 : -1.0;
        gl::ClipPlane(name, equation);
        gl::Enable(name);
    }
}

namespace {

void Switch(GLenum what, bool on)
{
    if (on)
        gl::Enable(what);
    else
        gl::Disable(what);
}

} // namespace

void C3DGraph::EnableLights(int on)
{
    if (!m_picture)
        return;
    for (std::size_t i = 0; i < m_lights.size(); ++i) {
        if (m_lights[i].on)
            Switch(static_cast<GLenum>(GL_LIGHT0 + i), on != 0);
    }
}

void C3DGraph::EnableLighting(int on)
{
    if (m_picture)
        Switch(GL_LIGHTING, on && m_lightingOn);
}

int C3DGraph::SetView()
{
    if (m_picture) {
        ViewDirection const view(m_azimuth, m_elevation);
        gl::Rotated(view.azimuth - 270.0, 0.0, 0.0, 1.0);
        gl::Rotated(view.elevation, 1.0, 0.0, 0.0);
    }
    return 1;
}

int C3DGraph::UnsetView()
{
    if (m_picture) {
        ViewDirection const view(m_azimuth, m_elevation);
        gl::Rotated(-view.elevation, 1.0, 0.0, 0.0);
        gl::Rotated(-view.azimuth, 0.0, 0.0, 1.0);
        gl::Rotated(270.0, 0.0, 0.0, 1.0);
    }
    return 1;
}

namespace {

/// Clamped: beyond the ends of a texture its last texels go on.
void SetTexture(GLenum target, int on, int texture)
{
    Switch(target, on != 0);
    if (!on)
        return;
    gl::TexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    gl::BindTexture(target, static_cast<GLuint>(texture));
    gl::TexParameteri(target, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    gl::TexParameteri(target, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    gl::TexParameteri(target, GL_TEXTURE_WRAP_S, GL_CLAMP);
    gl::TexParameteri(target, GL_TEXTURE_WRAP_T, GL_CLAMP);
}

} // namespace

void C3DGraph::Set1DTextureState(int on, int texture)
{
    if (m_picture)
        SetTexture(GL_TEXTURE_1D, on, texture);
}

void C3DGraph::SetTextureState(int on, int texture)
{
    if (m_picture)
        SetTexture(GL_TEXTURE_2D, on, texture);
}

/// Labels keep clear of the walls, which lie a little outside of the box.
void C3DGraph::MakeLabelSpace()
{
    std::vector<PicturePoint> corners;
    double scale[3] = { 1.0, 1.0, 1.0 };
    if (m_axes[0])
        m_axes[0]->GetScaleFacs(scale[0], scale[1], scale[2]);
    for (auto const& place : kBoxCorners) {
        std::optional<CVertex> const corner = m_picture->camera.Project(
            { place[0] * 1.01 * scale[0], place[1] * 1.01 * scale[1], place[2] * 1.01 * scale[2] });
        if (corner)
            corners.push_back({ corner->X(), m_windowRect.Height() - corner->Y() });
    }
    // Partly behind the eye, the box has no outline.
    if (corners.size() < 8)
        corners.clear();
    m_picture->labelSpace = LabelSpace(m_picture->graphRect, corners);
}

void C3DGraph::BeginPass(double jitterX, double jitterY)
{
    SetState(jitterX, jitterY);
    if (m_walls) {
        m_walls->SetQuadrant(m_quadrant);
        m_walls->SetLevel(m_level);
    }
    if (m_grid) {
        WallType x = wtXMin;
        WallType y = wtYMin;
        WallType z = wtZMin;
        GetWalls(x, y, z);
        m_grid->SetWallTypes(x, y, z);
    }
    ClearPolygons();
}

void C3DGraph::DrawTransparentPolygons()
{
    EnableClip(1);
    RenderTransparentPolygons();
    EnableClip(0);
}

int C3DGraph::Render()
{
    if (m_antialiasMode && !m_coarseMeshMode)
        return RenderAntialias();
    BeginPass(0.0, 0.0);
    MakeLabelSpace();
    for (CGraphComponent* component : GetComponentArray()) {
        // The texts of axes that follow each other are written in one go.
        if (!DynamicDowncast<C3DAxis>(component))
            WriteTexts();
        component->Draw();
    }
    // The texts of plots are written over everything.
    DrawTransparentPolygons();
    WriteTexts();
    return 1;
}

int C3DGraph::RenderAntialias()
{
    GLCanvas& canvas = m_picture->canvas;
    // Elsewhere all passes are background.
    canvas.ClearAccumulation(m_picture->graphRect);
    for (Jitter const jitter : kJitters) {
        BeginPass(jitter.x, jitter.y);
        for (CGraphComponent* component : GetComponentArray()) {
            if (component == GetPlotArray())
                DrawPlots(PlotKind::Picture);
            else if (!DynamicDowncast<C3DAxis>(component))
                component->Draw();
        }
        DrawTransparentPolygons();
        canvas.Accumulate();
    }
    canvas.ReturnAccumulation();
    // Axes and texts are drawn once, sharp, over the blended picture.
    MakeLabelSpace();
    for (CGraphComponent* component : GetComponentArray()) {
        if (component == GetPlotArray())
            DrawPlots(PlotKind::Text);
        else if (DynamicDowncast<C3DAxis>(component))
            component->Draw();
    }
    WriteTexts();
    return 1;
}

void C3DGraph::DrawPlots(PlotKind kind)
{
    EnableClip(1);
    for (CPlot* plot : GetPlotArray()->GetPlots()) {
        auto const* const plot3D = DynamicDowncast<C3DPlot>(plot);
        bool const isText = plot3D && plot3D->IsText();
        if (isText == (kind == PlotKind::Text))
            plot->Draw();
    }
    EnableClip(0);
}

namespace {

/// Leaves out the texts whose points lie behind what is drawn. One reading serves them all.
void DropHiddenTexts(std::vector<PlacedText>& texts, CSize picture)
{
    CRect const window({ 0, 0 }, picture);
    CRect read;
    for (PlacedText const& text : texts) {
        if (text.anchor && window.PtInRect(text.anchor->pixel))
            read.UnionRect(read, CRect(text.anchor->pixel, CSize(1, 1)));
    }
    if (read.IsRectEmpty())
        return;
    auto const width = static_cast<std::size_t>(read.Width());
    std::vector<float> depths(width * static_cast<std::size_t>(read.Height()));
    gl::PixelStorei(GL_PACK_ALIGNMENT, 4);
    gl::ReadPixels(read.left, read.top, read.Width(), read.Height(), GL_DEPTH_COMPONENT, GL_FLOAT, depths.data());
    std::erase_if(texts, [&](PlacedText const& text) {
        if (!text.anchor || !read.PtInRect(text.anchor->pixel))
            return false;
        CPoint const at = text.anchor->pixel;
        float const depth
            = depths[static_cast<std::size_t>(at.y - read.top) * width + static_cast<std::size_t>(at.x - read.left)];
        // A text on a surface is not behind it.
        constexpr double kNearer = 0.98;
        return kNearer * text.anchor->depth > static_cast<double>(depth);
    });
}

/// What has to be read and written for the texts: what each of them covers, or of many all together.
std::vector<CRect> GetTextAreas(std::vector<PlacedText> const& texts, CRect const& picture)
{
    constexpr std::size_t kMany = 50;
    std::vector<CRect> areas;
    CRect all;
    for (PlacedText const& text : texts) {
        CRect area;
        if (area.IntersectRect(text.bounds, picture)) {
            areas.push_back(area);
            all.UnionRect(all, area);
        }
    }
    return areas.size() > kMany ? std::vector<CRect> { all } : areas;
}

} // namespace

void C3DGraph::WriteTexts()
{
    std::vector<PlacedText> texts = std::exchange(m_picture->texts, {});
    DropHiddenTexts(texts, m_windowRect.Size());
    std::vector<CRect> const areas = GetTextAreas(texts, m_picture->graphRect);
    if (areas.empty())
        return;
    CDIB& bitmap = *m_picture->bitmap;
    Raster& raster = *bitmap.GetBitmap().GetRaster();
    // Reading waits for everything drawn before, so all is read before anything is written back.
    for (CRect const& area : areas)
        m_picture->canvas.ReadPixels(area, raster);
    {
        CDC& dc = *bitmap.GetDC();
        SavedDC const saved(dc);
        CRgn clip;
        CRect const& graph = m_picture->graphRect;
        clip.CreateRectRgn(graph.left, graph.top, graph.right, graph.bottom);
        dc.SelectClipRgn(&clip);
        dc.SetBkMode(TRANSPARENT);
        CFont font;
        CFont* original = nullptr;
        PlacedText const* before = nullptr;
        for (PlacedText const& text : texts) {
            bool const isSameFont = before && *before->font == *text.font && before->fontHeight == text.fontHeight
                && before->isUpwards == text.isUpwards;
            if (!isSameFont) {
                if (before)
                    dc.SelectObject(original);
                CVUtils::ConfigureFont(&font, *text.font, text.fontHeight, text.isUpwards);
                original = dc.SelectObject(&font);
            }
            before = &text;
            dc.SetTextColor(text.colour);
            dc.TextOut(text.origin.x, text.origin.y, text.text);
        }
        dc.SelectObject(original);
    }
    for (CRect const& area : areas)
        m_picture->canvas.WritePixels(area, raster);
}

} // namespace ombrel
