#include "ombrel/Init.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DLinePlot.h"
#include "ombrel/graph3d/3DScatterCurve.h"
#include "ombrel/graph3d/3DTextCurve.h"
#include "ombrel/graph3d/render/ShapeBatch.h"
#include "ombrel/platform/framework/Exception.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

TEST(LineData, PointsThatMissACoordinateHaveNoPartInRanges)
{
    C3DLineData data;
    double min = 7.0;
    double max = 8.0;
    data.GetYRange(min, max);
    EXPECT_EQ(min, 7.0);
    EXPECT_EQ(max, 8.0);
    data.Initialise(4);
    data[0] = { 1.0, -2.0, 3.0 };
    data[1] = { kGap, -50.0, 50.0 };
    data[2] = { -4.0, 5.0, std::numeric_limits<double>::quiet_NaN() };
    data[3] = { -1.0, 2.0, 9.0 };
    data.GetXRange(min, max);
    EXPECT_EQ(min, -1.0);
    EXPECT_EQ(max, 1.0);
    data.GetYRange(min, max);
    EXPECT_EQ(min, -2.0);
    EXPECT_EQ(max, 2.0);
    data.GetZRange(min, max);
    EXPECT_EQ(min, 3.0);
    EXPECT_EQ(max, 9.0);
    data.Initialise(-3);
    EXPECT_EQ(data.GetNumPoints(), 0);
}

TEST(LineData, StoresItsPointsAndBelievesNoCount)
{
    C3DLineData data;
    data.Initialise(2);
    data[1] = { 1.5, 2.5, 3.5 };
    Bytes const bytes = Bytes().Int(1, 2).Int(1).Double(0, 0, 0).Int(1).Double(1.5, 2.5, 3.5);
    EXPECT_EQ(Stored(data), bytes);
    C3DLineData loaded;
    loaded.Initialise(5);
    ASSERT_TRUE(Load(loaded, bytes));
    EXPECT_EQ(Stored(loaded), bytes);
    ASSERT_TRUE(Load(loaded, Bytes().Int(1, -7)));
    EXPECT_EQ(loaded.GetNumPoints(), 0);
    EXPECT_FALSE(Load(loaded, Bytes().Int(1, 2'000'000'000).Int(1).Double(0, 0, 0)));
    EXPECT_EQ(loaded.GetNumPoints(), 0);
}

VARIANT Array(std::vector<std::size_t> const& bounds, std::vector<double> const& values)
{
    VARIANT variant;
    variant.vt = VT_ARRAY | VT_R8;
    variant.parray = std::make_shared<SAFEARRAY>(SAFEARRAY { bounds, values });
    return variant;
}

CString ErrorOf(C3DLineCurve& curve, VARIANT const& points)
{
    CString text;
    try {
        curve.SetPoints(points);
    } catch (COleDispatchException* e) {
        text = e->GetErrorMessage();
        e->Delete();
    }
    return text;
}

TEST(LineCurve, TakesArraysOfThreeColumns)
{
    C3DLineCurve curve;
    std::vector<double> values(15);
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<double>(i);
    curve.ResetModifiedFlags();
    EXPECT_EQ(ErrorOf(curve, Array({ 5, 3 }, values)), CString());
    ASSERT_EQ(curve.GetNumPts(), 5);
    EXPECT_EQ(curve.GetPoints()[1], CVertex(1, 6, 11));
    EXPECT_TRUE(curve.Modified() && curve.PlotDataModified() && curve.ZValPropertyModified());

    CString const two = "Scatter curve points array needs to be two dimensional";
    CString const bounds = "Problem with Scatter curve points array bounds";
    EXPECT_EQ(ErrorOf(curve, VARIANT()), two);
    EXPECT_EQ(ErrorOf(curve, Array({ 15 }, values)), two);
    EXPECT_EQ(ErrorOf(curve, Array({ 0, 3 }, {})), bounds);
    EXPECT_EQ(ErrorOf(curve, Array({ 5, 0 }, {})), bounds);
    EXPECT_EQ(ErrorOf(curve, Array({ 1000000, 3 }, values)), bounds);
    EXPECT_EQ(ErrorOf(curve, Array({ 3, 5 }, values)), CString("Scatter curve points array must have 3 columns"));
    EXPECT_EQ(curve.GetNumPts(), 5);
}

/// The points of a curve of table data as evaluated.
std::vector<CVertex> Evaluated(C3DLineCurve& curve)
{
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.Evaluate();
    auto const points = curve.GetTransformedPoints().GetPoints();
    return { points.begin(), points.end() };
}

TEST(LineCurve, IntermediatePointsFollowTheCoordinateSystem)
{
    C3DLineCurve curve;
    CDoubleArray const angle { 0, 90 };
    CDoubleArray const height { 0, 6 };
    CDoubleArray const radius { 2, 2, 5 };
    curve.SetPoints(&angle, &height, &radius);
    EXPECT_EQ(curve.Evaluate(), 0) << "of a formula";
    curve.SetNumIntermediatePts(2);
    EXPECT_EQ(Evaluated(curve).size(), 2U) << "a straight line needs none";
    curve.SetCurveType(C3DCurve::ctCylindrical);
    std::vector<CVertex> const points = Evaluated(curve);
    ASSERT_EQ(points.size(), 4U);
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(std::hypot(points[i].X(), points[i].Y()), 2.0, 1e-12);
        EXPECT_NEAR(points[i].Z(), 2.0 * static_cast<double>(i), 1e-12);
    }
    EXPECT_NEAR(points[1].Y(), 1.0, 1e-12) << "twice the sine of 30 degrees";
    double min = 0.0;
    double max = 0.0;
    curve.GetXRange(min, max);
    EXPECT_NEAR(min, 0.0, 1e-12);
    EXPECT_NEAR(max, 2.0, 1e-12);

    // A missing point takes those beside it with it; absurd numbers of points are limited.
    curve.SetXVal(0, kGap);
    EXPECT_TRUE(C3DLineData::IsMissing(Evaluated(curve)[2]));
    EXPECT_EQ(curve.IsValid(), 1);
    curve.SetZVal(1, std::numeric_limits<double>::infinity());
    EXPECT_EQ(Evaluated(curve).size(), 4U);
    EXPECT_EQ(curve.IsValid(), 0);
    curve.SetNumIntermediatePts(std::numeric_limits<int>::max());
    EXPECT_LE(Evaluated(curve).size(), 1U << 18);
    curve.SetNumIntermediatePts(-5);
    EXPECT_EQ(Evaluated(curve).size(), 2U);
}

// --- Archives

Bytes CurveBytes(int type)
{
    C3DCurve curve;
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.SetCurveType(static_cast<C3DCurve::CurveType>(type));
    curve.ResetModifiedFlags();
    return Stored(curve);
}

/// A line's own fields in the layout of a version; one point.
Bytes LineBytes(int version)
{
    Bytes bytes;
    bytes.Int(version, 1);
    if (version >= 2)
        bytes.Int(7);
    bytes.Double(1.5, 2.5).Int(0, 2, 3).Double(3.5, 4.5).Int(1, 0x332211).Int(1, 1).Int(1).Double(5, 6, 7);
    if (version >= 2)
        bytes.Int(2, 1);
    return bytes;
}

TEST(LineArchive, LoadsEveryLayoutAndStoresTheLast)
{
    C3DLineCurve curve;
    for (auto const [version, stored, type] :
        { std::array { 3, 2, 2 }, { 2, 0, 0 }, { 2, 1, 2 }, { 2, 3, 4 }, { 1, 2, 3 }, { 1, 4, 4 } }) {
        ASSERT_TRUE(Load(curve, CurveBytes(stored).Add(LineBytes(version)))) << version;
        EXPECT_EQ(curve.GetCurveType(), type) << version;
        EXPECT_EQ(curve.Modified(), 0);
        EXPECT_EQ(curve.GetPoints()[0], CVertex(5, 6, 7));
        EXPECT_EQ(curve.PlotDataModified(), 1);
    }
    ASSERT_TRUE(Load(curve, CurveBytes(2).Add(LineBytes(3))));
    EXPECT_EQ(Stored(curve), CurveBytes(2).Add(LineBytes(3)));
    EXPECT_EQ(curve.GetSymbolColour(), 0x332211U);
    EXPECT_EQ(curve.GetSymbolAlignMode(), 2);
    EXPECT_EQ(curve.GetEndPointSymbolMode(), 1);
    C3DLineCurve old;
    ASSERT_TRUE(Load(old, CurveBytes(0).Add(LineBytes(1))));
    EXPECT_EQ(old.GetNumIntermediatePts(), 0);
    EXPECT_EQ(old.GetTMin(), 1.5);
}

TEST(LineArchive, ScatterAndTextCurvesAddTheirFields)
{
    Bytes const line = CurveBytes(0).Add(LineBytes(3));
    auto const scatter = [&line](int version) {
        Bytes bytes = line;
        bytes.Int(version, 1).Double(1.5).Int(0x445566, 0).Double(2.5).Int(3, 4);
        if (version >= 2)
            bytes.Int(1, 2, 5).Int(2, 2, 1).Double(8, 9).Double(0, 1);
        return bytes;
    };
    C3DScatterCurve curve;
    ASSERT_TRUE(Load(curve, scatter(1)));
    EXPECT_EQ(curve.GetColourVar(), -1);
    ASSERT_TRUE(Load(curve, scatter(2)));
    EXPECT_EQ(Stored(curve), scatter(2));
    EXPECT_EQ(curve.GetStickColour(), 0x445566U);
    EXPECT_EQ(curve.GetColourVar(), 0);
    EXPECT_EQ(curve.GetSizeVar(), 1);

    Bytes text = line;
    text.Int(1).Byte(2, 0).Texts("a", "b").Int(1, 4).Double(1.5).Font("Courier", 700, 1, 2.5).Int(1).Double(1, 2, 3);
    text.Int(0);
    C3DTextCurve texts;
    ASSERT_TRUE(Load(texts, text));
    EXPECT_EQ(Stored(texts), text);
    EXPECT_EQ(texts.GetText()[1], CString("b"));
    EXPECT_EQ(texts.GetVertAlignment(), C3DTextCurve::alTop);
}

TEST(LineArchive, PlotsAreReadWithAndWithoutAVersionOfTheirOwn)
{
    OmbrelInit();
    C3DPlot base;
    C3DScatterPlot plot;
    Bytes const stored = Stored(plot);
    C3DLinePlot line;
    Bytes shorter = Bytes::Of(std::span(stored.Get()).first(stored.Get().size() - sizeof(LONG)));
    EXPECT_EQ(stored, Bytes(shorter).Int(1));
    EXPECT_TRUE(Load(plot, stored));
    EXPECT_TRUE(Load(plot, shorter));

    C3DGraph graph(1);
    for (ItemType const type : { it3DTextPlot, it3DScatterPlot, it3DLinePlot }) {
        auto* const curve = static_cast<C3DLineCurve*>(graph.AddPlot(type)->CreateCurve());
        EXPECT_EQ(curve->GetItemType(), type + 1);
        EXPECT_EQ(curve->GetPlot()->GetItemType(), type);
        curve->SetNumPts(2);
    }
    Bytes const document = Stored(graph);
    C3DGraph loaded(0);
    ASSERT_TRUE(Load(loaded, document));
    EXPECT_EQ(Stored(loaded), document);
    EXPECT_TRUE(DynamicDowncast<C3DScatterCurve>(loaded.GetPlotArray()->GetAt(1)->GetComponent(0)));
}

// --- Variables of scatter curves

TEST(ScatterCurve, TheSecondOfTwoVariablesWithOneUseCounts)
{
    C3DScatterCurve curve;
    CDoubleArray const first { 10, 20, 30 };
    CDoubleArray const second { -2, 4, kGap };
    CDoubleArray const* const both[] = { &first, &second };
    curve.SetVarData(both, 4);
    EXPECT_EQ(curve.NeedsColourKey(), 0);
    EXPECT_EQ(curve.GetSymbolVarScaleFac(0), 1.0);
    curve.SetVar1Use(C3DScatterCurve::vuSize);
    EXPECT_EQ(curve.GetSizeVar(), 0);
    EXPECT_DOUBLE_EQ(curve.GetSymbolVarScaleFac(1), 20.0 / 30.0);
    curve.SetVar2Use(C3DScatterCurve::vuSize);
    EXPECT_EQ(curve.GetSizeVar(), 1);
    EXPECT_EQ(curve.GetColourVar(), -1);
    EXPECT_EQ(curve.NeedsColourKey(), 0);
    EXPECT_EQ(curve.GetSymbolVarScaleFac(0), 0.5);
    EXPECT_EQ(curve.GetSymbolVarScaleFac(1), 1.0);
    for (int const missing : { 2, 3, 4, -1 })
        EXPECT_EQ(curve.GetSymbolVarScaleFac(missing), 0.0) << missing;
    curve.SetColourByZVal(1);
    EXPECT_EQ(curve.NeedsColourKey(), 1);

    curve.SetVar1Use(C3DScatterCurve::vuColour);
    curve.SetVar2Use(C3DScatterCurve::vuColour);
    EXPECT_EQ(curve.GetColourVar(), 1);
    EXPECT_EQ(curve.GetSizeVar(), -1);
    EXPECT_FALSE(curve.GetSymbolVarColour(2).has_value());
    EXPECT_EQ(*curve.GetSymbolVarColour(1), curve.GetColourmap()->GetColour(4, -2, 4));
}

TEST(ScatterCurve, ColoursComeFromTheVariableThenFromZ)
{
    C3DScatterCurve curve;
    CDoubleArray const at { 1, 2 };
    CDoubleArray const z { 5, 9 };
    curve.SetPoints(&at, &at, &z);
    CDoubleArray const values { 100, 300 };
    CDoubleArray const* const arrays[] = { &values, nullptr };
    curve.SetVarData(arrays, 2);
    curve.SetColourByZVal(1);
    ColourKeySource source = curve.GetColourKeySource();
    EXPECT_EQ(source.dataLow, 5.0);
    EXPECT_EQ(source.high, 9.0);
    EXPECT_FALSE(curve.GetLegendEntry().has_value());
    curve.SetVar1Use(C3DScatterCurve::vuColour);
    curve.SetUseLUTMinMax(1);
    curve.SetLUTMinMax(0, 1000);
    source = curve.GetColourKeySource();
    EXPECT_EQ(source.dataLow, 100.0);
    EXPECT_EQ(source.dataHigh, 300.0);
    EXPECT_EQ(source.low, 0.0);
    EXPECT_EQ(source.high, 1000.0);
}

// --- Texts

TEST(TextCurve, AlignmentMovesTextsAboutTheirPoints)
{
    struct Case {
        int rotate;
        C3DTextCurve::Alignment vertical;
        C3DTextCurve::Alignment horizontal;
        CPoint at;
        CRect covered;
    };
    using T = C3DTextCurve;
    // A text of 41 × 13 at (100, 100).
    Case const cases[] = {
        { 0, T::alBottom, T::alLeft, { 100, 87 }, { 100, 87, 141, 100 } },
        { 0, T::alTop, T::alRight, { 59, 100 }, { 59, 100, 100, 113 } },
        { 0, T::alCentre, T::alCentre, { 80, 94 }, { 80, 94, 121, 107 } },
        { 1, T::alBottom, T::alLeft, { 100, 100 }, { 100, 59, 113, 100 } },
        { 1, T::alTop, T::alRight, { 87, 141 }, { 87, 100, 100, 141 } },
        { 1, T::alCentre, T::alCentre, { 94, 120 }, { 94, 79, 107, 120 } },
        { 0, T::alRight, T::alTop, { 100, 100 }, { 100, 100, 141, 113 } },
    };
    for (Case const& c : cases) {
        C3DTextCurve curve;
        curve.SetRotate(c.rotate);
        curve.SetVertAlignment(c.vertical);
        curve.SetHorzAlignment(c.horizontal);
        CPoint point(100, 100);
        CRect rect;
        curve.GetTextPosParams({ 41, 13 }, point, rect);
        EXPECT_EQ(point, c.at) << c.rotate << c.vertical << c.horizontal;
        EXPECT_EQ(rect, c.covered) << c.rotate << c.vertical << c.horizontal;
    }
}

// --- Shapes

/// The volume that faces enclose when they turn one way, seen from outside: the sum of tetrahedra to the origin.
double VolumeOf(FaceBatch const& batch)
{
    double volume = 0.0;
    auto const triangles = batch.GetTriangles();
    for (std::size_t t = 0; t < triangles.size(); t += 3) {
        auto const& a = batch.GetVertices()[triangles[t]].place;
        auto const& b = batch.GetVertices()[triangles[t + 1]].place;
        auto const& c = batch.GetVertices()[triangles[t + 2]].place;
        volume += static_cast<double>(a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2])
                      + a[2] * (b[0] * c[1] - b[1] * c[0]))
            / 6.0;
    }
    return volume;
}

/// Whether normals have length 1 and point to where their faces are seen from.
bool NormalsPointOut(FaceBatch const& batch)
{
    auto const triangles = batch.GetTriangles();
    for (std::size_t t = 0; t < triangles.size(); t += 3) {
        FaceVertex const* v[3];
        for (std::size_t k = 0; k < 3; ++k)
            v[k] = &batch.GetVertices()[triangles[t + k]];
        std::array<double, 3> p {};
        std::array<double, 3> q {};
        for (std::size_t k = 0; k < 3; ++k) {
            p[k] = static_cast<double>(v[1]->place[k] - v[0]->place[k]);
            q[k] = static_cast<double>(v[2]->place[k] - v[0]->place[k]);
        }
        double const out[] = { p[1] * q[2] - p[2] * q[1], p[2] * q[0] - p[0] * q[2], p[0] * q[1] - p[1] * q[0] };
        for (FaceVertex const* corner : v) {
            auto const& n = corner->normal;
            double const length = std::hypot(n[0], n[1], n[2]);
            double const across = out[0] * static_cast<double>(n[0]) + out[1] * static_cast<double>(n[1])
                + out[2] * static_cast<double>(n[2]);
            if (std::fabs(length - 1.0) > 1e-5 || across < 0.0)
                return false;
        }
    }
    return true;
}

TEST(ShapeBatch, ShapesAreClosedAndHaveTheirVolumes)
{
    constexpr int kSides = 200;
    FaceBatch faces;
    ShapeBatch cone;
    cone.AddCone({ 1, 2, 3 }, { 1, 4, 3 }, 0.5, 0);
    cone.MakeFaces(kSides, faces);
    EXPECT_NEAR(VolumeOf(faces), std::numbers::pi * 0.25 * 2 / 3, 1e-3);
    EXPECT_TRUE(NormalsPointOut(faces));

    ShapeBatch cuboid;
    cuboid.AddCuboid({ -1, 2, 5 }, { 0.5, 1, 2 }, 0);
    cuboid.MakeFaces(kSides, faces);
    EXPECT_NEAR(VolumeOf(faces), 8.0, 1e-5);
    EXPECT_TRUE(NormalsPointOut(faces));

    // A straight tube, and one that bends slowly: its length times its cross-section (Pappus).
    for (double const bend : { 0.0, 0.05 }) {
        std::vector<CVertex> points { { 1, 0, 0 } };
        double length = 0.0;
        for (int i = 0; i < 20; ++i) {
            CVertex const way(std::cos(bend * i), std::sin(bend * i), 0.3);
            points.push_back(points.back() + way);
            length += std::hypot(1.0, 0.3);
        }
        ShapeBatch tube;
        tube.AddTube(points, 0.1, 0);
        tube.MakeFaces(kSides, faces);
        EXPECT_NEAR(VolumeOf(faces), length * std::numbers::pi * 0.01, 2e-3) << bend;
        EXPECT_TRUE(NormalsPointOut(faces)) << bend;
        EXPECT_EQ(tube.GetSpheres().GetCount(), 0U);
    }
}

TEST(ShapeBatch, TubesBreakWhereAPointIsMissingAndAreRoundWhereTheyBendSharply)
{
    double const missing = std::numeric_limits<double>::quiet_NaN();
    std::vector<CVertex> const points { { 0, 0, 0 }, { 1, 0, 0 }, { 1, 0, 0 }, { 1, 1, 0 }, { 1, 2, missing },
        { 1, 3, 0 }, { 1, 3, missing }, { 0, 0, 1 }, { 0, 0, 2 }, { 0, 0, 1 } };
    ShapeBatch tube;
    tube.AddTube(points, 0.1, 0);
    EXPECT_EQ(tube.GetSpheres().GetCount(), 2U) << "at (1, 0, 0), and where it comes back";
    FaceBatch faces;
    tube.MakeFaces(6, faces);
    // Each of four pieces has two triangles a side; each of two tubes two disks.
    EXPECT_EQ(faces.GetTriangles().size() / 3, 4U * 12 + 2 * 8);
    EXPECT_TRUE(NormalsPointOut(faces));

    ShapeBatch nothing;
    nothing.AddTube(std::span(points).first(1), 0.1, 0);
    nothing.AddTube(points, 0.0, 0);
    nothing.AddTube(points, missing, 0);
    nothing.AddCone({ 0, 0, 0 }, { 0, 0, 0 }, 1.0, 0);
    nothing.AddCone({ 0, 0, 0 }, { 0, 0, missing }, 1.0, 0);
    nothing.AddSphere({ 0, missing, 0 }, 1.0, 0);
    nothing.AddSphere({ 0, 0, 0 }, -1.0, 0);
    nothing.AddCuboid({ 0, 0, 1e300 }, { 1, 1, 1 }, 0);
    EXPECT_TRUE(nothing.IsEmpty());
}

} // namespace
} // namespace ombrel
