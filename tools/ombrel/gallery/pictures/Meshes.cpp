#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/graph3d/3DObjectCylinder.h"
#include "ombrel/graph3d/3DObjectSphere.h"
#include "ombrel/layout/ColourMapFiles.h"
#include "tools/ombrel/gallery/Helpers.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <array>
#include <cmath>
#include <memory>
#include <numbers>

namespace ombrel::host {

namespace {

/// Nodes along a beam, across it and up.
constexpr int kLong = 24;
constexpr int kWide = 6;
constexpr int kHigh = 6;

DWORD NodeNumber(int i, int j, int k) { return static_cast<DWORD>(1 + i + (kLong + 1) * (j + (kWide + 1) * k)); }

/// Places of a beam that is held at one end and bends, and the stress there: pull above, push below.
std::unique_ptr<CMeshNodeSet> BeamNodes()
{
    auto nodes = std::make_unique<CMeshNodeSet>();
    nodes->SetTitle("beam");
    nodes->SetVariableCount(1);
    constexpr int kNodes = (kLong + 1) * (kWide + 1) * (kHigh + 1);
    CTableData points(3, kNodes);
    CTableData values(1, kNodes);
    for (int k = 0; k <= kHigh; ++k) {
        for (int j = 0; j <= kWide; ++j) {
            for (int i = 0; i <= kLong; ++i) {
                auto const node = static_cast<int>(NodeNumber(i, j, k)) - 1;
                double const x = 10.0 * i / kLong;
                double const height = 2.0 * k / kHigh - 1;
                points.SetAt(0, node, x);
                points.SetAt(1, node, 2.0 * j / kWide - 1);
                points.SetAt(2, node, height - 0.0015 * x * x * (30 - x));
                values.SetAt(0, node, (10 - x) * height);
            }
        }
    }
    *nodes->GetPoints() = std::move(points);
    *nodes->GetNodeData() = std::move(values);
    return nodes;
}

/// A mesh of the beam's bricks.
C3DMeshCurve& AddBeam(C3DGraph& graph)
{
    auto& mesh = AddSceneCurve<C3DMeshCurve>(graph, it3DMeshPlot);
    mesh.SetVariableNames({ "stress" }, {});
    CMeshNodeSet* const nodes = mesh.AddNodeSet(BeamNodes());
    CDWordArray corners;
    for (int k = 0; k < kHigh; ++k) {
        for (int j = 0; j < kWide; ++j) {
            for (int i = 0; i < kLong; ++i) {
                for (int const up : { k, k + 1 }) {
                    corners.Add(NodeNumber(i, j, up));
                    corners.Add(NodeNumber(i + 1, j, up));
                    corners.Add(NodeNumber(i + 1, j + 1, up));
                    corners.Add(NodeNumber(i, j + 1, up));
                }
            }
        }
    }
    auto patch = std::make_unique<CMeshPatch>();
    patch->SetElementType(etBrick);
    patch->SetNodeSet(nodes);
    patch->SetIndices(std::move(corners));
    mesh.AddPatch(std::move(patch));
    mesh.SetDataSourceType(CPlotComponent::dsTable);
    mesh.SetColourDescription(1);
    mesh.SetColourmapVar("stress");
    LoadColourMap("coolwarm", *mesh.GetColourmap());
    return mesh;
}

void Beam(C3DGraph& graph, PictureLook const& /*look*/) { AddBeam(graph); }

void CutBeam(C3DGraph& graph, PictureLook const& /*look*/)
{
    C3DMeshCurve& mesh = AddBeam(graph);
    // What lies in front of the middle, or beyond 7, is taken away.
    mesh.SetClipRanges(-1e300, 7, 0, 1e300, -1e300, 1e300);
    mesh.SetClip(1);
    mesh.SetWireframeOn(1);
    mesh.SetWireframeColour(RGB(40, 40, 40));
}

void BandedBeam(C3DGraph& graph, PictureLook const& /*look*/)
{
    C3DMeshCurve& mesh = AddBeam(graph);
    mesh.SetContoursOn(1);
    mesh.SetNumContours(10);
}

void Outlines(C3DGraph& graph, PictureLook const& look)
{
    C3DMeshCurve& mesh = AddBeam(graph);
    mesh.SetColourDescription(0);
    mesh.SetWireframeOn(1);
    mesh.SetWireframeColour(look.Colour(0));
    mesh.SetSolidOn(0);
}

/// A ball in that place.
void AddAtom(C3DObjectCurve& molecule, CVertex const& place, double radius, COLORREF colour)
{
    auto atom = std::make_unique<C3DObjectSphere>();
    atom->SetRadii(radius, radius, radius);
    atom->SetColour(colour);
    atom->Translate(place.X(), place.Y(), place.Z());
    molecule.AddObject(std::move(atom));
}

void AddBond(C3DObjectCurve& molecule, CVertex const& from, CVertex const& to, double radius)
{
    auto bond = std::make_unique<C3DObjectCylinder>();
    bond->SetRadii(radius, radius);
    bond->SetEndpoints(from, to);
    bond->SetColour(RGB(200, 200, 200));
    molecule.AddObject(std::move(bond));
}

void Benzene(C3DGraph& graph, PictureLook const& /*look*/)
{
    auto& molecule = AddSceneCurve<C3DObjectCurve>(graph, it3DObjectPlot);
    molecule.SetDataSourceType(CPlotComponent::dsTable);
    // Ångströms from the middle of the ring.
    constexpr double kCarbon = 1.39;
    constexpr double kHydrogen = 2.48;
    auto const at = [](double radius, int corner) {
        double const angle = std::numbers::pi / 3 * corner;
        return CVertex(radius * std::cos(angle), radius * std::sin(angle), 0);
    };
    for (int i = 0; i < 6; ++i) {
        AddAtom(molecule, at(kCarbon, i), 0.4, RGB(70, 70, 70));
        AddAtom(molecule, at(kHydrogen, i), 0.25, RGB(240, 240, 240));
        AddBond(molecule, at(kCarbon, i), at(kCarbon, i + 1), 0.14);
        AddBond(molecule, at(kCarbon, i), at(kHydrogen, i), 0.1);
    }
    graph.SetViewingElevation(40);
}

constexpr GalleryPicture kPictures[] {
    { "mesh-bricks", "Meshes and solids", "A bent beam is stretched above and pressed below",
        "The stress in a beam that bends.", OMBREL_PICTURE(Beam) },
    { "mesh-clipped", "Meshes and solids", "The beam, cut open", "A box takes elements away; outlines show the others.",
        OMBREL_PICTURE(CutBeam) },
    { "mesh-bands", "Meshes and solids", "The beam in ten bands", "A colour for each tenth of the stress.",
        OMBREL_PICTURE(BandedBeam) },
    { "mesh-outlines", "Meshes and solids", "The beam as a net", "The edges of all elements alone.",
        OMBREL_PICTURE(Outlines) },
    { "objects-benzene", "Meshes and solids", "Benzene is a flat ring", "Atoms and bonds of benzene.",
        OMBREL_PICTURE(Benzene) },
};

} // namespace

std::span<GalleryPicture const> MeshPictures() { return kPictures; }

} // namespace ombrel::host
