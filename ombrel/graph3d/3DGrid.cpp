#include "ombrel/graph3d/3DGrid.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/view/AxisTicks3D.h"
#include "ombrel/graph3d/view/BoxFaces.h"
#include "ombrel/graph3d/view/BoxLines.h"
#include "ombrel/graph3d/view/Picture3D.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/opengl/OpenGL.h"
#include "ombrel/prefs/Preferences.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace ombrel {

constinit CRuntimeClass const C3DGrid::kClass = PersistentClass<C3DGrid, CGraphComponent>("C3DGrid");

C3DGrid::C3DGrid() = default;

C3DGrid::C3DGrid(C3DGraph* graph)
    : CGraphComponent(graph)
{
    COLORREF colour = CPreferences::GetGridColour3DDefault();
    CPreferences::GetGridColour3D(colour);
    m_colour = Colour3(colour);
}

void C3DGrid::Serialize(CArchive& ar)
{
    CGraphComponent::Serialize(ar);
    ArchiveFields f(ar);
    f.Version(1);
    f.Int(m_on).Double(m_scale[0], m_scale[1], m_scale[2]);
    f.Int(m_x.lines, m_y.lines, m_z.lines, m_synch, m_x.mode, m_y.mode, m_z.mode);
    f.Double(m_x.min, m_x.del, m_y.min, m_y.del, m_z.min, m_z.del);
    f.Int(m_x.planeOn, m_y.planeOn, m_z.planeOn, m_x.minorDivs, m_y.minorDivs, m_z.minorDivs, m_useLighting);
    f.Byte(m_colour.rgb[0], m_colour.rgb[1], m_colour.rgb[2]);
}

C3DGraph* C3DGrid::Get3DGraph() const { return DynamicDowncast<C3DGraph>(GetGraph()); }

void C3DGrid::GetColour(BYTE& r, BYTE& g, BYTE& b) const
{
    r = m_colour.rgb[0];
    g = m_colour.rgb[1];
    b = m_colour.rgb[2];
}

void C3DGrid::UpdateGraphParameters()
{
    for (GridLines3D* lines : { &m_x, &m_y, &m_z }) {
        std::int64_t const total
            = (std::int64_t { lines->lines } - 1) * std::max<std::int64_t>(lines->minorDivs, 1) + 1;
        lines->total = static_cast<int>(std::clamp<std::int64_t>(total, 0, kMaxTicks3D));
    }
    C3DGraph const* const graph = Get3DGraph();
    if (graph && graph->GetAxes()[0])
        graph->GetAxes()[0]->GetScaleFacs(m_scale[0], m_scale[1], m_scale[2]);
}

std::vector<double> C3DGrid::LinePlaces(C3DGraph const& graph, int axis) const
{
    GridLines3D const& lines = Lines(axis);
    double const side = m_scale[static_cast<std::size_t>(axis)];
    // With lines at a step, the even ones are only the borders of the wall.
    int const n = lines.mode == GridLines3D::glStep ? 2 : lines.total;
    std::vector<double> places;
    for (int k = 0; n >= 2 && k < n; ++k)
        places.push_back(-side / 2.0 + k * (side / (n - 1)));
    C3DAxis const* const scale = graph.GetAxes()[axis];
    if (lines.mode == GridLines3D::glStep && scale) {
        double const step = std::fabs(scale->GetViewDel(lines.del / std::max(lines.minorDivs, 1)));
        std::vector<double> const steps = lines.del > 0.0
            ? StepValues(scale->GetViewVal(lines.min, 1), step, -side / 2.0, side / 2.0)
            : std::vector<double>();
        places.insert(places.end(), steps.begin(), steps.end());
    }
    return places;
}

void C3DGrid::RenderGrid(C3DGraph const& graph, WallType wall) const
{
    BoxFace const& face = kBoxFaces[wall];
    std::size_t const across = static_cast<std::size_t>(wall) / 2;
    double const depth = face.sign * m_scale[across] / 2.0;
    std::vector<float> points;
    auto const addPoint = [&](std::size_t axis, double v, std::size_t other, double w) {
        std::array<double, 3> point {};
        point[across] = depth;
        point[axis] = v;
        point[other] = w;
        for (double const coordinate : point)
            points.push_back(static_cast<float>(coordinate));
    };
    std::size_t const axes[2] = { across == 0 ? 1U : 0U, across == 2 ? 1U : 2U };
    for (int i = 0; i < 2; ++i) {
        std::size_t const axis = axes[i];
        std::size_t const other = axes[1 - i];
        for (double const place : LinePlaces(graph, static_cast<int>(axis))) {
            addPoint(axis, place, other, -m_scale[other] / 2.0);
            addPoint(axis, place, other, m_scale[other] / 2.0);
        }
    }
    if (points.empty())
        return;
    gl::Color3ubv(m_colour.rgb);
    float normal[3] = { 0.0F, 0.0F, 0.0F };
    normal[across] = static_cast<float>(face.sign);
    gl::Normal3fv(normal);
    BoxLines::Draw(points);
}

void C3DGrid::Draw()
{
    C3DGraph* const graph = Get3DGraph();
    if (!m_on || !graph || !graph->GetPicture())
        return;
    UpdateGraphParameters();
    graph->EnableLighting(m_useLighting);
    graph->Set1DTextureState(0, 0);
    {
        BoxLines const lines(graph->GetLineWidth(1), graph->GetGridLineAntialiasMode() != 0);
        // Grid lines never hide data.
        gl::DepthMask(GL_FALSE);
        if (m_x.planeOn)
            RenderGrid(*graph, m_wallTypes[0]);
        if (m_y.planeOn)
            RenderGrid(*graph, m_wallTypes[1]);
        if (m_z.planeOn)
            RenderGrid(*graph, m_wallTypes[2]);
        gl::DepthMask(GL_TRUE);
    }
    graph->EnableLighting(1);
}

} // namespace ombrel
