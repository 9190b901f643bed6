#include "ombrel/Init.h"
#include "ombrel/graph3d/Surface.h"
#include "ombrel/graph3d/SurfacePlot.h"
#include "tests/graph3d/SurfaceData.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

/// The part of a surface before its own fields: a table curve of which this test says only what a surface looks at.
Bytes CurveBytes(int colourDescription, int gradation)
{
    C3DCurve curve;
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.SetColourDescription(colourDescription);
    curve.SetGradationOn(gradation);
    return Stored(curve);
}

Bytes GridBytes()
{
    return Bytes()
        .Int(1, 7, 8) // rows, columns
        .Double(1.5, 2.5, 3.5, 4.5) // x and y ranges
        .Double(5.5, 6.5, 7.5, 8.5) // the table's place
        .Int(9) // align meshes
        .Int(2, 1, 2) // the table: 1 × 2
        .Double(11.5, 12.5)
        .Double(0, 1);
}

template <typename T> Bytes Of(T&& object) { return Stored(object); }

/// A surface's own fields in the layout of a version.
Bytes SurfaceBytes(int version)
{
    Bytes bytes;
    bytes.Int(version).Short(21, 22, 23, 24).Int(31, 1, 32).Short(2);
    bytes.Texts("name", "lut").Short(5, 6).Byte(41, 42, 43);
    if (version >= 2) {
        bytes.Int(51).Double(0.25).Int(52).Double(1, 2, 3, 4).Add(Of(CTableData(1, 1)));
        bytes.Int(53, 0, 54, 55).Add(Of(CTextureMap()));
        bytes.Int(56).Short(1).Double(17.5).Int(0x332211, 57).Double(2.5);
        bytes.Add(Of(CUSGSDEM())).Add(Of(CColourMap()));
    }
    if (version >= 3)
        bytes.Int(1, 61).Double(62.5, 63.5).Int(2).Add(Of(CColourMap()));
    if (version >= 4)
        bytes.Int(0);
    if (version >= 5)
        bytes.Int(2);
    if (version >= 6)
        bytes.Int(2).Add(Of(CZValsFile())).Int(71, 1).Add(Of(CScanTestHeader()));
    return bytes;
}

TEST(SurfaceArchive, EveryFieldIsInItsPlace)
{
    Bytes const bytes = CurveBytes(2, 1).Add(GridBytes()).Add(SurfaceBytes(6));
    CSurface surface;
    ASSERT_TRUE(Load(surface, bytes));
    EXPECT_EQ(Stored(surface), bytes);
    EXPECT_EQ(surface.GetNumRows(), 7);
    EXPECT_EQ(surface.GetYMax(), 4.5);
    EXPECT_EQ(surface.GetTableYStep(), 8.5);
    EXPECT_EQ(surface.GetNumWireframeCols(), 22);
    EXPECT_EQ(surface.GetWireframeYFac(), 6);
    EXPECT_EQ(surface.GetWireframeColour(), RGB(41, 42, 43));
    EXPECT_EQ(surface.GetWireframeMode(), 2);
    EXPECT_EQ(surface.GetTransparency(), 0.25);
    EXPECT_EQ(surface.GetClampTextureMap(), 0);
    EXPECT_EQ(surface.GetArbContourLevels(), CDoubleArray { 17.5 });
    EXPECT_EQ(surface.GetContourLevelMode(), 1);
    EXPECT_EQ(surface.GetContourSpacing(), 63.5);
    EXPECT_EQ(surface.GetContourMode(), 2);
    EXPECT_EQ(surface.GetForceNormalAveraging(), 0);
    EXPECT_EQ(surface.GetUseRadialGrid(), 71);
    EXPECT_TRUE(surface.GetScanTestHeader());
    for (std::size_t length = 0; length < bytes.Get().size(); length += 3) {
        CSurface cut;
        EXPECT_FALSE(Load(cut, Bytes::Of(std::span(bytes.Get()).first(length)))) << length;
    }
}

TEST(SurfaceArchive, OlderLayoutsKeepTheDefaultsOfWhatTheyLack)
{
    for (int version = 1; version <= 5; ++version) {
        CSurface surface;
        ASSERT_TRUE(Load(surface, CurveBytes(2, 1).Add(GridBytes()).Add(SurfaceBytes(version)))) << version;
        EXPECT_EQ(surface.GetWireframeOn(), 1);
        EXPECT_EQ(surface.GetTransparency(), version >= 2 ? 0.25 : 0.0);
        EXPECT_EQ(surface.GetNumContourBands(), version >= 3 ? 61 : 6);
        EXPECT_EQ(surface.GetForceNormalAveraging(), version >= 4 ? 0 : 1);
        EXPECT_EQ(surface.GetWireframeMode(), version >= 5 ? 2 : 0);
        EXPECT_EQ(surface.GetFileType(), 1);
        EXPECT_FALSE(surface.GetScanTestHeader());
    }
}

TEST(SurfaceArchive, AHeaderOfBeforeIsReplaced)
{
    CScanTestHeader const header;
    CSurface with;
    with.SetScanTestHeader(&header);
    CSurface without;
    ASSERT_TRUE(Load(with, Stored(without)));
    EXPECT_FALSE(with.GetScanTestHeader());
}

TEST(SurfaceArchive, OldColoursBecomeGradation)
{
    CSurface surface;
    ASSERT_TRUE(Load(surface, CurveBytes(1, 0).Add(GridBytes()).Add(SurfaceBytes(6))));
    EXPECT_EQ(surface.GetColourDescription(), 0);
    EXPECT_FALSE(surface.GetGradationOn());
    // The first layout of 3D curves, before colour maps: base, version, type.
    CPlotComponent component;
    component.SetDataSourceType(CPlotComponent::dsTable);
    component.SetColourDescription(2);
    CSurface legacy;
    legacy.SetGradationOn(0);
    ASSERT_TRUE(Load(legacy, Stored(component).Int(1, 3).Add(GridBytes()).Add(SurfaceBytes(1))));
    EXPECT_EQ(legacy.GetColourDescription(), 0);
    EXPECT_EQ(legacy.GetGradationOn(), 1);
    EXPECT_EQ(legacy.GetColour(), RGB(255, 0, 0));
    EXPECT_EQ(legacy.GetCurveType(), C3DCurve::ctCylindrical);
}

TEST(SurfaceArchive, FormulaSurfacesStoreNoTableAndPlotsTheirSurfaces)
{
    OmbrelInit();
    CSurfacePlot plot;
    auto* const surface = static_cast<CSurface*>(plot.CreateCurve());
    std::size_t const without = Stored(*surface).Get().size();
    test::Fill(*surface, 3, 4, [](int c, int r) { return c - r; });
    EXPECT_EQ(Stored(*surface).Get().size(), without + 3 * 4 + 14 * 8);
    CSurfacePlot loaded;
    ASSERT_TRUE(Load(loaded, Stored(plot)));
    EXPECT_EQ(Stored(loaded), Stored(plot));
    auto* const copy = dynamic_cast<CSurface*>(loaded.GetComponent(0));
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->Evaluate(), 1);
    EXPECT_EQ(copy->GetSurfaceMesh()->GetZMin(), -2);
}

} // namespace
} // namespace ombrel
