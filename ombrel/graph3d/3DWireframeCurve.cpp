#include "ombrel/graph3d/3DWireframeCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/render/ColourMapKey.h"
#include "ombrel/graph3d/render/KeptBatch.h"
#include "ombrel/platform/framework/ArchiveFields.h"

namespace ombrel {

constinit CRuntimeClass const C3DWireframeCurve::kClass
    = PersistentClass<C3DWireframeCurve, C3DRowColCurve>("C3DWireframeCurve");

namespace {

struct NetKey {
    std::uint64_t revision = 0;
    BoxAxes axes;
    CurveColoursKey colours;
    friend bool operator==(NetKey const& a, NetKey const& b) = default;
};

} // namespace

struct C3DWireframeCurve::Drawing : KeptBatch<NetKey> { };

C3DWireframeCurve::C3DWireframeCurve(CPlot* plot, int useGraphColour)
    : GridNodeCurve(plot, useGraphColour)
    , m_drawing(std::make_unique<Drawing>())
{
    SetTitle("Wire Frame Curve");
    SetItemType(it3DWireframeCurve);
    SetNumRows(20);
    SetNumCols(20);
    ResetModifiedFlags();
}

C3DWireframeCurve::~C3DWireframeCurve() = default;

void C3DWireframeCurve::Serialize(CArchive& ar)
{
    C3DRowColCurve::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(2);
    f.Int(m_intermediateRowPts, m_intermediateColPts);
    if (version >= 2)
        f.Int(m_furtherInt);
}

void C3DWireframeCurve::Render()
{
    C3DGraph* const graph = Get3DGraph();
    if (!graph || !IsValid())
        return;
    NetKey key { GetRevision(), {}, CurveColoursKey(*this) };
    GetBoxAxes(key.axes);
    FaceBatch& batch = m_drawing->Get(key, [&](FaceBatch& net) {
        C3DRowColCurveMesh const& nodes = GetNodes();
        bool const isByValue = GetColourDescription() == 1;
        // A missing node takes part in no line.
        for (int j = 0; j <= nodes.GetNumRows(); ++j) {
            for (int i = 0; i <= nodes.GetNumCols(); ++i) {
                bool const isMissing = nodes.IsMissing(i, j);
                FaceVertex vertex;
                if (!isMissing)
                    vertex.place = FaceVertex::Floats(GetBoxPlace(key.axes, GetNode(i, j)));
                COLORREF const colour
                    = isByValue && !isMissing ? GetLUTColour(nodes.GetZ(i, j)) : static_cast<COLORREF>(GetColour());
                vertex.colour = FaceVertex::Bytes(colour);
                net.AddVertex(vertex);
            }
        }
        auto const addLine = [&](int i0, int j0, int i1, int j1) {
            if (!nodes.IsMissing(i0, j0) && !nodes.IsMissing(i1, j1))
                net.AddLine(static_cast<std::uint32_t>(nodes.GetIndex(i0, j0)),
                    static_cast<std::uint32_t>(nodes.GetIndex(i1, j1)));
        };
        for (int j = 0; j <= nodes.GetNumRows(); ++j) {
            for (int i = 0; i < nodes.GetNumCols(); ++i)
                addLine(i, j, i + 1, j);
        }
        for (int i = 0; i <= nodes.GetNumCols(); ++i) {
            for (int j = 0; j < nodes.GetNumRows(); ++j)
                addLine(i, j, i, j + 1);
        }
    });
    batch.DrawLines(*graph, graph->GetLineWidth(3), 0);
}

void C3DWireframeCurve::InvalidateDeviceObjects() { m_drawing->InvalidateDeviceObjects(); }

} // namespace ombrel
