#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/view/AxisGeometry.h"
#include "ombrel/graph3d/view/AxisTicks3D.h"
#include "ombrel/graph3d/view/BoxLines.h"
#include "ombrel/graph3d/view/Picture3D.h"
#include "ombrel/platform/opengl/OpenGL.h"

#include <vector>

namespace ombrel {

namespace {

constexpr double kMajorTickLength = 0.02;
constexpr double kMinorTickLength = 0.014;

void AddPoint(std::vector<float>& points, CVertex const& v)
{
    for (int i = 0; i < 3; ++i)
        points.push_back(static_cast<float>(v[i]));
}

} // namespace

double C3DAxis::MakeNotches(AxisGeometry const& geometry)
{
    TickSettings3D settings;
    settings.mode = m_tickMode;
    settings.min = m_min;
    settings.max = m_max;
    settings.numTicks = m_numTicks;
    settings.numMinorDivs = m_numMinorDivs;
    settings.tickMin = m_tickMin;
    settings.tickDel = m_tickDel;
    settings.arbitrary = m_arbitraryTicks.GetArray().Values();
    Ticks3D const ticks = MakeTicks(settings);

    m_notchPositions.DeleteAll();
    m_minorNotchPositions.DeleteAll();
    m_notchValues.RemoveAll();
    m_notchKinds.RemoveAll();
    for (Tick3D const& tick : ticks.major) {
        m_notchPositions.Add(std::make_unique<CVertex>(geometry.At(GetViewVal(tick.value, 1))));
        m_notchValues.Add(tick.value);
        m_notchKinds.Add(tick.isArbitrary ? 1 : 0);
    }
    for (double const value : ticks.minor)
        m_minorNotchPositions.Add(std::make_unique<CVertex>(geometry.At(GetViewVal(value, 1))));
    return NotchFactors().major * kMajorTickLength;
}

void C3DAxis::MakeLabelTexts()
{
    m_labelTexts.RemoveAll();
    int next = 0;
    for (int i = 0; i < m_notchValues.GetSize(); ++i) {
        bool const isText = m_labelMode == lmTexts || (m_labelMode == lmNumbersAndTexts && m_notchKinds[i] == 1);
        if (!isText)
            m_labelTexts.Add(CVUtils::FormatDouble(m_formatType, m_notchValues[i], m_labelPrecision));
        else if (next < m_labels.GetSize())
            m_labelTexts.Add(m_labels[next++]);
        else
            m_labelTexts.Add(CString());
    }
}

void C3DAxis::DrawLines(C3DGraph& graph, AxisGeometry const& geometry, double tickLength) const
{
    std::vector<float> points;
    AddPoint(points, geometry.At(GetViewVal(m_min, 1)));
    AddPoint(points, geometry.At(GetViewVal(m_max, 1)));
    auto const addTicks = [&](OwnedArray<CVertex> const& positions, double length) {
        for (CVertex const* position : positions) {
            AddPoint(points, *position);
            AddPoint(points, geometry.TickEnd(*position, length));
        }
    };
    addTicks(m_notchPositions, tickLength);
    addTicks(m_minorNotchPositions, NotchFactors().minor * kMinorTickLength);

    // Lines show their own colour.
    graph.EnableLighting(0);
    graph.Set1DTextureState(0, 0);
    gl::Color3ubv(m_colour.rgb);
    {
        BoxLines const lines(graph.GetLineWidth(0), graph.GetAxisLineAntialiasMode() != 0);
        BoxLines::Draw(points);
    }
    graph.EnableLighting(1);
}

void C3DAxis::Draw()
{
    C3DGraph* const graph = Get3DGraph();
    Picture3D* const picture = graph ? graph->GetPicture() : nullptr;
    if (!m_on || !picture || m_type < atXAxis || m_type > atZAxis)
        return;
    UpdateGraphParameters();
    AxisGeometry const geometry(m_type, ViewDirection(graph->GetViewingAzimuth(), graph->GetViewingElevation()),
        { m_scaleX, m_scaleY, m_scaleZ });
    double const tickLength = MakeNotches(geometry);
    MakeLabelTexts();
    DrawLines(*graph, geometry, tickLength);
    PlaceTexts(*graph, *picture, geometry, tickLength);
}

} // namespace ombrel
