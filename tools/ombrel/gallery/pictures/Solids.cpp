#include "ombrel/chart.h"
#include "ombrel/colour/TextureMap.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DMeshCurve.h"
#include "ombrel/graph3d/3DObjectCurve.h"
#include "ombrel/graph3d/3DObjectCylinder.h"
#include "ombrel/graph3d/3DObjectSphere.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/layout/ColourMapFiles.h"
#include "tools/ombrel/gallery/Pictures.h"

#include <cmath>
#include <memory>
#include <numbers>
#include <utility>

namespace ombrel::host {

namespace {

/// Adds a curve in a plot of its own that takes its data from a table.
template <typename Curve> Curve& AddSceneCurve(C3DGraph& graph, ItemType plot)
{
    auto& curve = static_cast<Curve&>(*graph.AddPlot(plot)->CreateCurve());
    curve.SetDataSourceType(CPlotComponent::dsTable);
    return curve;
}

/// Nodes along a beam, across it and up.
constexpr int kLong = 24;
constexpr int kWide = 6;
constexpr int kHigh = 6;

int NodeAt(int i, int j, int k) { return i + (kLong + 1) * (j + (kWide + 1) * k); }

/// Bricks of a beam that is held at one end and bends, in colours of the stress: pull above, push below.
C3DMeshCurve& AddBeam(Scene& scene)
{
    constexpr int kNodes = (kLong + 1) * (kWide + 1) * (kHigh + 1);
    CTableData points(3, kNodes);
    CTableData values(1, kNodes);
    CDWordArray corners;
    for (int k = 0; k <= kHigh; ++k) {
        for (int j = 0; j <= kWide; ++j) {
            for (int i = 0; i <= kLong; ++i) {
                double const x = 10.0 * i / kLong;
                double const height = 2.0 * k / kHigh - 1;
                points.SetAt(0, NodeAt(i, j, k), x);
                points.SetAt(1, NodeAt(i, j, k), 2.0 * j / kWide - 1);
                points.SetAt(2, NodeAt(i, j, k), height - 0.0015 * x * x * (30 - x));
                values.SetAt(0, NodeAt(i, j, k), (10 - x) * height);
                if (i == kLong || j == kWide || k == kHigh)
                    continue;
                for (int const up : { k, k + 1 }) {
                    for (int const node :
                        { NodeAt(i, j, up), NodeAt(i + 1, j, up), NodeAt(i + 1, j + 1, up), NodeAt(i, j + 1, up) })
                        corners.Add(static_cast<DWORD>(node + 1));
                }
            }
        }
    }
    auto nodes = std::make_unique<CMeshNodeSet>();
    nodes->SetTitle("beam");
    nodes->SetVariableCount(1);
    *nodes->GetPoints() = std::move(points);
    *nodes->GetNodeData() = std::move(values);
    auto& mesh = AddSceneCurve<C3DMeshCurve>(scene.Graph(), it3DMeshPlot);
    mesh.SetVariableNames({ "stress" }, {});
    auto patch = std::make_unique<CMeshPatch>();
    patch->SetElementType(etBrick);
    patch->SetNodeSet(mesh.AddNodeSet(std::move(nodes)));
    patch->SetIndices(std::move(corners));
    mesh.AddPatch(std::move(patch));
    mesh.SetColourDescription(1);
    mesh.SetColourmapVar("stress");
    LoadColourMap("coolwarm", *mesh.GetColourmap());
    return mesh;
}

void Beam(Scene& scene) { AddBeam(scene); }

void CutBeam(Scene& scene)
{
    C3DMeshCurve& mesh = AddBeam(scene);
    // What lies in front of the middle, or beyond 7, is taken away.
    mesh.SetClipRanges(-1e300, 7, 0, 1e300, -1e300, 1e300);
    mesh.SetClip(1);
    mesh.SetWireframeOn(1);
    mesh.SetWireframeColour(RGB(40, 40, 40));
}

void Outlines(Scene& scene)
{
    C3DMeshCurve& mesh = AddBeam(scene);
    mesh.SetColourDescription(0);
    mesh.SetWireframeOn(1);
    mesh.SetWireframeColour(colours::kSkyBlue.ToColorRef());
    mesh.SetSolidOn(0);
}

void AddBall(C3DObjectCurve& molecule, CVertex const& place, double radius, COLORREF colour)
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

void Benzene(Scene& scene)
{
    auto& molecule = AddSceneCurve<C3DObjectCurve>(scene.Graph(), it3DObjectPlot);
    // Ångströms from the middle of the ring.
    constexpr double kCarbon = 1.39;
    constexpr double kHydrogen = 2.48;
    auto const at = [](double radius, int corner) {
        double const angle = std::numbers::pi / 3 * corner;
        return CVertex(radius * std::cos(angle), radius * std::sin(angle), 0);
    };
    for (int i = 0; i < 6; ++i) {
        AddBall(molecule, at(kCarbon, i), 0.4, RGB(70, 70, 70));
        AddBall(molecule, at(kHydrogen, i), 0.25, RGB(240, 240, 240));
        AddBond(molecule, at(kCarbon, i), at(kCarbon, i + 1), 0.14);
        AddBond(molecule, at(kCarbon, i), at(kHydrogen, i), 0.1);
    }
    scene.Graph().SetViewingElevation(40);
}

void Textured(Scene& scene)
{
    constexpr int kNodes = 101;
    constexpr double kStep = 0.08;
    CTableData heights(kNodes, kNodes);
    for (int j = 0; j < kNodes; ++j) {
        for (int i = 0; i < kNodes; ++i) {
            double const x = -4 + i * kStep;
            heights.SetAt(j, i, std::sin(x) * std::cos(-4 + j * kStep) + 0.1 * x);
        }
    }
    auto& surface = AddSceneCurve<CSurface>(scene.Graph(), itSurfacePlot);
    surface.SetTableData(std::move(heights));
    surface.SetTablePlacement({ -4, -4, kStep, kStep });
    surface.AlignMeshes();
    // An image made here; SceneSurface::Texture reads one from a file.
    constexpr int kSide = 256;
    std::vector<BYTE> texels;
    for (int i = 0; i < kSide * kSide; ++i) {
        bool const isBlue = (i % kSide / 32 + i / kSide / 32) % 2 == 1;
        for (int const part : { isBlue ? 0 : 235, isBlue ? 95 : 235, isBlue ? 170 : 235, 255 })
            texels.push_back(static_cast<BYTE>(part));
    }
    TextureMapParams params;
    params.xMin = params.yMin = -4;
    params.xMax = params.yMax = 4;
    surface.SetColourDescription(0);
    surface.SetUseTextureMap(1);
    surface.GetTextureMap()->SetParams(params);
    surface.GetTextureMap()->SetTexels({ kSide, kSide }, texels);
}

constexpr GalleryPicture kPictures[] {
    { "mesh-bricks", "Meshes and solids", "A bent beam is stretched above and pressed below",
        "The stress in a beam that bends.", OMBREL_PICTURE(Beam), "Computed: x²(30 − x), stress (10 − x) z" },
    { "mesh-clipped", "Meshes and solids", "Inside the beam a layer is free of stress",
        "A box takes elements away; outlines show the others.", OMBREL_PICTURE(CutBeam),
        "Computed: x²(30 − x), stress (10 − x) z" },
    { "mesh-outlines", "Meshes and solids", "864 bricks make up the beam", "The edges of all elements alone.",
        OMBREL_PICTURE(Outlines), "Computed: x²(30 − x)" },
    { "objects-benzene", "Meshes and solids", "Benzene is a flat ring", "Balls and sticks for atoms and bonds.",
        OMBREL_PICTURE(Benzene), "Computed: bonds of 1.39 and 1.09 Å" },
    { "surfaces-textured", "Surfaces", "A chess board lies over hills and hollows",
        "A picture that is draped over the surface.", OMBREL_PICTURE(Textured), "Computed: sin x cos y + x/10" },
};

} // namespace

std::span<GalleryPicture const> SolidPictures() { return kPictures; }

} // namespace ombrel::host
