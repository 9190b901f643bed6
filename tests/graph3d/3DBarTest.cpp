#include "ombrel/graph3d/3DBarCurve.h"
#include "ombrel/graph3d/3DBarPlot.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregBarCurve.h"
#include "ombrel/graph3d/bars/BarGeometry.h"
#include "tests/graph3d/SurfaceData.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

TEST(RowColours, FromTheSixteenthOnAreThoseOfThePlatformsRandomNumbers)
{
    EXPECT_EQ(GetRowColour(0), RGB(255, 0, 0));
    EXPECT_EQ(GetRowColour(8), RGB(192, 192, 0));
    EXPECT_EQ(GetRowColour(14), RGB(0, 128, 128));
    EXPECT_EQ(GetRowColour(-1), 0U);
    // srand(1234), and as many triples as it takes.
    std::uint64_t state = 1234;
    auto const channel = [&state] {
        state = (state * 214013 + 2531011) % (std::uint64_t { 1 } << 32);
        return static_cast<int>(static_cast<double>(state / 65536 % 32768) / 32767 * 255 + 0.5);
    };
    for (int row = 0; row < 300; ++row) {
        int const red = channel();
        int const green = channel();
        int const blue = channel();
        if (row > 14) {
            ASSERT_EQ(GetRowColour(row), RGB(red, green, blue)) << row;
        }
    }
}

TEST(Baselines, AutomaticOnesAreNearestTo0AndFixedOnesStayInTheRange)
{
    struct Case {
        double min, max, automatic, fixed, clamped;
    };
    for (Case const& c : { Case { -5, 10, 0, 3, 3 }, { 2, 10, 2, -50, 2 }, { -10, -2, -2, 0, -2 }, { 0, 10, 0, 50, 10 },
             { 10, -5, 0, 20, 10 }, { 4, 4, 4, 7, 4 } }) {
        BoxAxis const axis { c.min, c.max, 1.0 };
        EXPECT_EQ((Baseline { 99.0, 1 }.Get(axis)), c.automatic) << c.min;
        EXPECT_EQ((Baseline { c.fixed, 0 }.Get(axis)), c.clamped) << c.min;
        EXPECT_EQ((Baseline { std::numeric_limits<double>::quiet_NaN(), 0 }.Get(axis)), c.automatic);
    }
}

/// A box of a batch: its ends, with every face looking outwards.
struct Box {
    std::array<float, 3> low;
    std::array<float, 3> high;
};

Box ReadBox(FaceBatch const& batch)
{
    EXPECT_EQ(batch.GetTriangles().size(), 36U);
    Box box { batch.GetVertices()[0].place, batch.GetVertices()[0].place };
    for (FaceVertex const& vertex : batch.GetVertices()) {
        for (std::size_t k = 0; k < 3; ++k) {
            box.low[k] = std::min(box.low[k], vertex.place[k]);
            box.high[k] = std::max(box.high[k], vertex.place[k]);
        }
    }
    double area = 0.0;
    for (std::size_t t = 0; t < batch.GetTriangles().size(); t += 3) {
        std::array<FaceVertex, 3> v;
        for (std::size_t c = 0; c < 3; ++c)
            v[c] = batch.GetVertices()[batch.GetTriangles()[t + c]];
        std::array<double, 3> cross {};
        for (std::size_t k = 0; k < 3; ++k) {
            std::size_t const p = (k + 1) % 3;
            std::size_t const q = (k + 2) % 3;
            auto const side = [&](std::size_t c, std::size_t axis) {
                return static_cast<double>(v[c].place[axis]) - static_cast<double>(v[0].place[axis]);
            };
            cross[k] = side(1, p) * side(2, q) - side(1, q) * side(2, p);
        }
        for (std::size_t k = 0; k < 3; ++k) {
            float const normal = v[0].normal[k];
            area += std::fabs(cross[k]) / 2.0;
            if (normal == 0.0F)
                EXPECT_NEAR(cross[k], 0.0, 1e-7) << "the face is square to its normal";
            else
                EXPECT_EQ(v[0].place[k], normal > 0 ? box.high[k] : box.low[k]) << "outwards";
        }
    }
    auto const side = [&](std::size_t k) { return static_cast<double>(box.high[k] - box.low[k]); };
    EXPECT_NEAR(area, 2.0 * (side(0) * side(1) + side(1) * side(2) + side(2) * side(0)), 1e-6);
    return box;
}

TEST(BarBatches, BarsStandOnTheBaselineOrHangFromIt)
{
    BarsKey key;
    key.axes = { { { 0, 10, 1.0 }, { 0, 20, 0.5 }, { -4, 4, 0.8 } } };
    key.settings.baseline = { 1.0, 0 };
    key.settings.widthScaleX = 2.0;
    for (double const z : { 3.0, 1.0, -2.0 }) {
        BarBatch batch;
        batch.Build({ { { 2.0, 15.0, z }, RGB(1, 2, 3) } }, key, { 0.1, 0.2 });
        Box const box = ReadBox(batch.GetFaces());
        EXPECT_FLOAT_EQ(box.low[0], -0.4F) << "x = 2 lies at −0.3";
        EXPECT_FLOAT_EQ(box.high[0], -0.2F);
        EXPECT_FLOAT_EQ(box.low[1], 0.075F) << "y = 15 lies at 0.125";
        EXPECT_FLOAT_EQ(box.high[1], 0.175F);
        EXPECT_NEAR(box.low[2], (std::min(z, 1.0) / 8.0) * 0.8, 1e-6);
        EXPECT_NEAR(box.high[2], (std::max(z, 1.0) / 8.0) * 0.8, 1e-6);
        for (FaceVertex const& vertex : batch.GetFaces().GetVertices())
            EXPECT_EQ(vertex.colour, (std::array<BYTE, 4> { 1, 2, 3, 255 }));
    }
    BarBatch none;
    none.Build({ { { 2.0, 15.0, std::numeric_limits<double>::infinity() }, 0 },
                   { { std::numeric_limits<double>::quiet_NaN(), 15.0, 1.0 }, 0 } },
        key, { 0.2, 0.1 });
    EXPECT_TRUE(none.GetFaces().IsEmpty());
}

TEST(BarBatches, EverySideThatFacesTheEyeIsDrawnAndFewOthers)
{
    std::vector<BarBatch::Bar> bars;
    bars.reserve(41);
    for (int k = 0; k < 40; ++k)
        bars.push_back({ { k * 7 % 19 - 9.0, k * 5 % 17 - 8.0, k * 11 % 21 - 10.0 }, 0 });
    BarBatch batch;
    batch.Build(bars, {}, { 0.05, 0.05 });
    for (CVertex const& eye : { CVertex(3, 2, 4), CVertex(-3, 2, -4), CVertex(0.1, -5, 0.2), CVertex(0, 0, 6),
             CVertex(0.3, 0.2, 0.1), CVertex(-0.46, 5, 0) }) {
        std::vector<bool> isDrawn(batch.GetFaces().GetTriangles().size());
        std::size_t drawn = 0;
        for (FaceBatch::Span const& part : batch.GetVisibleParts(eye)) {
            std::fill_n(isDrawn.begin() + static_cast<std::ptrdiff_t>(part.first), part.count, true);
            drawn += part.count;
        }
        for (std::size_t t = 0; t < isDrawn.size(); t += 3) {
            FaceVertex const& corner = batch.GetFaces().GetVertices()[batch.GetFaces().GetTriangles()[t]];
            double towards = 0.0;
            for (std::size_t k = 0; k < 3; ++k)
                towards += (eye.GetData()[k] - static_cast<double>(corner.place[k]))
                    * static_cast<double>(corner.normal[k]);
            EXPECT_TRUE(towards <= 0.0 || isDrawn[t]);
        }
        if (std::fabs(eye.X()) > 1 && std::fabs(eye.Y()) > 1 && std::fabs(eye.Z()) > 1) {
            EXPECT_EQ(drawn, isDrawn.size() / 2);
        }
    }
    // What the side of the box cuts open is looked into.
    bars.push_back({ { 0, 0, 11 }, 0 });
    batch.Clear();
    batch.Build(bars, {}, { 0.05, 0.05 });
    EXPECT_EQ(batch.GetVisibleParts({ 3, 2, 4 }).size(), 6U);
}

TEST(BarBatches, TheNearerEndIsDrawnFirst)
{
    std::vector<BarBatch::Bar> const bars { { { -8, -7, 1 }, 1 }, { { 7, -8, 1 }, 2 }, { { 8, 7, 1 }, 3 } };
    for (int const sector : { 0, 1, -2, 2, -4, 3 }) {
        BarsKey key;
        key.eyeSector = sector;
        BarBatch batch;
        batch.Build(bars, key, { 0.05, 0.05 });
        bool const isLastNear = sector >= -1 && sector <= 2;
        EXPECT_EQ(batch.GetFaces().GetVertices()[0].colour[0], isLastNear ? 3 : 1) << sector;
        EXPECT_EQ(batch.GetFaces().GetVertices()[8].colour[0], isLastNear ? 1 : 3) << sector;
    }
}

/// Bars in a graph whose axes follow them.
struct BarGraph {
    BarGraph()
        : bars(*static_cast<C3DBarCurve*>(graph.AddPlot(it3DBarPlot)->CreateCurve()))
    {
    }
    template <typename Height> void Fill(int rows, int cols, Height const& height)
    {
        bars.SetTableData(test::MakeTable(rows, cols, height));
        bars.SetDataSourceType(CPlotComponent::dsTable);
        bars.AlignMeshes();
        bars.Evaluate();
        graph.UpdateComponentParameters();
    }
    std::array<double, 2> Widths() const
    {
        std::array<double, 2> widths {};
        bars.GetDefaultBarWidths(widths[0], widths[1]);
        return widths;
    }
    std::array<double, 4> Ranges() const
    {
        std::array<double, 4> r {};
        graph.GetXRange(r[0], r[1]);
        graph.GetYRange(r[2], r[3]);
        return r;
    }
    C3DGraph graph { 1 };
    C3DBarCurve& bars;
};

TEST(Bars, TheAxesHaveRoomForWholeBars)
{
    BarGraph g;
    g.Fill(5, 10, [](int c, int r) { return c - r; });
    EXPECT_EQ(g.Ranges(), (std::array { -0.5, 9.5, -0.5, 4.5 }));
    // Three quarters of one of ten columns, and of one of five rows.
    EXPECT_DOUBLE_EQ(g.Widths()[0], 0.075);
    EXPECT_DOUBLE_EQ(g.Widths()[1], 0.15);
    EXPECT_EQ(g.bars.GetBaselineAuto(), 0.0);
    // One row, whose cell is as deep as the table's step.
    g.bars.SetTablePlacement({ 100.0, 7.0, 2.0, 4.0 });
    g.Fill(1, 3, [](int c, int) { return c + 2; });
    EXPECT_EQ(g.Ranges(), (std::array { 99.0, 105.0, 5.0, 9.0 }));
    EXPECT_DOUBLE_EQ(g.Widths()[0], 0.25);
    EXPECT_DOUBLE_EQ(g.Widths()[1], 0.75);
    EXPECT_EQ(g.bars.GetBaselineAuto(), 2.0);
    g.Fill(1, 1, [](int, int) { return -3; });
    EXPECT_EQ(g.bars.IsValid(), 1);
    EXPECT_EQ(g.Ranges(), (std::array { 99.0, 101.0, 5.0, 9.0 }));
}

TEST(Bars, AreColouredByWhatTheDescriptionNames)
{
    BarGraph g;
    g.bars.SetColour(RGB(9, 8, 7));
    g.bars.SetColourmap("Spectrum");
    g.Fill(2, 20, [](int c, int r) { return c + 100 * r; });
    struct Case {
        int description;
        COLORREF colour;
    };
    for (Case const& c : { Case { 0, RGB(9, 8, 7) }, { 1, g.bars.GetColourmap()->GetColour(117, 0, 119) },
             { 2, GetRowColour(17) }, { 3, GetRowColour(1) }, { 4, 0 } }) {
        g.bars.SetColourDescription(c.description);
        EXPECT_EQ(g.bars.GetBarColour(17, 1), c.colour) << c.description;
        EXPECT_EQ(g.bars.NeedsColourKey(), c.description == 1);
    }
    g.bars.SetColourDescription(1);
    g.bars.SetUseLUTMinMax(1);
    g.bars.SetLUTMinMax(100, 200);
    EXPECT_EQ(g.bars.GetBarColour(17, 1), g.bars.GetColourmap()->GetColour(117, 100, 200));
}

TEST(Bars, DocumentsKeepThem)
{
    C3DBarCurve curve;
    EXPECT_EQ(curve.GetTitle(), CString("Bars"));
    EXPECT_EQ(curve.GetItemType(), 22);
    EXPECT_EQ(curve.GetNumRows(), 9);
    EXPECT_EQ(curve.GetNumCols(), 9);
    EXPECT_FALSE(curve.Modified() || curve.PlotDataModified());
    C3DRowColCurve base;
    Bytes const bytes = Stored(base).Int(1).Double(1.5, 2.5, 3.5).Int(0);
    ASSERT_TRUE(Load(curve, bytes));
    EXPECT_EQ(Stored(curve), bytes);
    EXPECT_EQ(curve.GetBarWidthScaleFacX(), 1.5);
    EXPECT_EQ(curve.GetBarWidthScaleFacY(), 2.5);
    EXPECT_EQ(curve.GetBaseline(), 3.5);
    EXPECT_EQ(curve.GetAutoBaseline(), 0);
    C3DPlot plainPlot;
    C3DBarPlot plot;
    Bytes const stored = Stored(plot);
    int const added = 4 + 2 * (CString("Bar Plot").GetLength() - plainPlot.GetTitle().GetLength());
    EXPECT_EQ(static_cast<int>(stored.Get().size()), static_cast<int>(Stored(plainPlot).Get().size()) + added);
}

TEST(GridNodes, ParametersAndValuesAreTakenAndGivenAsArrays)
{
    auto const array = [](std::vector<std::size_t> bounds, std::vector<double> values) {
        VARIANT v;
        v.vt = VT_ARRAY | VT_R8;
        v.parray = std::make_shared<SAFEARRAY>(SAFEARRAY { std::move(bounds), std::move(values) });
        return v;
    };
    C3DBarCurve curve;
    curve.SetXValsH(array({ 3 }, { 10, 20, 30 }));
    curve.SetYValsH(array({ 2 }, { -1, -3 }));
    curve.SetZValsH(array({ 2, 3 }, { 1, 4, 2, 5, kGap, 6 }));
    ASSERT_EQ(curve.Evaluate(), 1);
    EXPECT_EQ(curve.DataMeshEqualsCurveMesh(), 1);
    EXPECT_EQ(curve.GetXValsH().parray->values, (std::vector<double> { 10, 20, 30 }));
    EXPECT_EQ(curve.GetYValsH().parray->values, (std::vector<double> { -1, -3 }));
    EXPECT_EQ(curve.GetZValsH().parray->values, (std::vector<double> { 1, 4, 2, 5, kGap, 6 }));
    EXPECT_EQ(curve.GetZValsH().parray->bounds, (std::vector<std::size_t> { 2, 3 }));
    EXPECT_EQ(curve.GetNodes().GetZ(1, 1), 5);
    EXPECT_EQ(curve.GetNodes().GetMax(1), -1);
    for (VARIANT const& wrong : { VARIANT {}, array({ 2, 2 }, { 1, 2, 3, 4 }), array({ 0 }, {}), array({ 3 }, { 1, 2 }),
             array({ 3 }, { 1, 2, 4 }), array({ 2 }, { 5, 5 }), array({ 1 }, { kGap }) }) {
        try {
            curve.SetXValsH(wrong);
            ADD_FAILURE();
        } catch (COleDispatchException* e) {
            e->Delete();
        }
    }
    EXPECT_EQ(curve.GetXMax(), 30);
}

TEST(GridNodes, TransformsMoveTheNodesOnceAndFewBytesMakeFewNodes)
{
    C3DBarCurve curve;
    curve.SetTableData(test::MakeTable(2, 2, [](int c, int r) { return c + 2 * r; }));
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.AlignMeshes();
    CTransformArray transforms;
    transforms.Add(CCoordTransform(CCoordTransform::ctTranslate, 10.0, 20.0, 30.0));
    curve.SetTransforms(transforms);
    for (int pass = 0; pass < 2; ++pass) {
        ASSERT_EQ(curve.Evaluate(), 1);
        EXPECT_EQ(curve.GetNodes().GetMin(0), 10);
        EXPECT_EQ(curve.GetNodes().GetMax(1), 21);
        EXPECT_EQ(curve.GetNodes().GetMax(2), 33);
    }
    curve.SetNumRows(1'000'000'000);
    EXPECT_EQ(curve.Evaluate(), 0);
    curve.SetNumRows(-1);
    EXPECT_EQ(curve.Evaluate(), 0);
    EXPECT_FALSE(curve.GetNodes().HasNodes());
}

/// Bars at points in a graph whose axes follow them.
struct PointBars {
    explicit PointBars(std::vector<CVertex> const& points)
        : bars(*static_cast<C3DIrregBarCurve*>(graph.AddPlot(it3DIrregBarPlot)->CreateCurve()))
    {
        std::array<CDoubleArray, 3> rows;
        for (CVertex const& point : points) {
            for (int k = 0; k < 3; ++k)
                rows[static_cast<std::size_t>(k)].Add(point[k]);
        }
        std::array<CDoubleArray*, 3> arrays { &rows[0], &rows[1], &rows[2] };
        bars.SetTableData(arrays.data(), static_cast<int>(points.size()));
        bars.SetDataSourceType(CPlotComponent::dsTable);
        bars.Evaluate();
        graph.UpdateComponentParameters();
    }
    C3DGraph graph { 1 };
    C3DIrregBarCurve& bars;
};

TEST(PointBars, AreAsWideAsTheirPointsHaveRoom)
{
    double x = 0.0;
    double y = 0.0;
    // Columns at 0, 1, 3 and rows at 5, 7, one point missing, in any order; the x of one is computed.
    PointBars grid({ { 3, 7, 1 }, { 0, 5, 2 }, { 0.1 + 0.2 + 0.7, 5, 3 }, { 0, 7, 4 }, { 1, 7, kGap }, { 3, 5, -1 } });
    ASSERT_EQ(grid.bars.IsValid(), 1);
    grid.bars.GetViewDefaultBarWidths(x, y);
    EXPECT_NEAR(x, 0.75 / 4, 1e-12) << "a cell of 1, from −0.5 to 3.5";
    EXPECT_NEAR(y, 0.75 / 2, 1e-12);
    grid.bars.SetColourDescription(2);
    EXPECT_EQ(grid.bars.GetBarColour(0), GetRowColour(2));
    EXPECT_EQ(grid.bars.GetBarColour(2), GetRowColour(1));
    grid.bars.SetColourDescription(3);
    EXPECT_EQ(grid.bars.GetBarColour(0), GetRowColour(1));
    CVertex place;
    grid.bars.GetNormalisedVertex(0, place);
    EXPECT_NEAR(place.X(), 3.5 / 4 - 0.5, 1e-12);
    EXPECT_NEAR(place.Z(), 2.0 / 5 - 0.5, 1e-12);

    std::vector<CVertex> scattered;
    scattered.reserve(100);
    for (int k = 0; k < 100; ++k)
        scattered.emplace_back(k * 37 % 101, k * 61 % 103, k);
    PointBars cloud(scattered);
    cloud.bars.GetViewDefaultBarWidths(x, y);
    EXPECT_NEAR(x, 0.75 / 30, 0.001);
    EXPECT_NEAR(y, 0.75 / 30, 0.001);

    PointBars one({ { 4, 5, 6 } });
    double min = 0.0;
    double max = 0.0;
    one.bars.GetXRange(min, max);
    EXPECT_EQ(min, 3.5);
    EXPECT_EQ(max, 4.5);
    PointBars none({ { 4, kGap, 6 } });
    EXPECT_EQ(none.bars.IsValid(), 0);
}

TEST(PointBars, DocumentsKeepThem)
{
    C3DIrregBarCurve curve;
    C3DCurve base;
    base.SetDataSourceType(CPlotComponent::dsTable);
    Bytes const bytes = Stored(base).Int(1).Int(2, 3, 1).Double(1, 2, 3).Double(0, 1).Double(1.5, 2.5, 3.5).Int(0);
    ASSERT_TRUE(Load(curve, bytes));
    EXPECT_EQ(Stored(curve), bytes);
    EXPECT_EQ(curve.GetBarWidthScaleFacY(), 2.5);
    ASSERT_EQ(curve.Evaluate(), 1);
    double min = 0.0;
    double max = 0.0;
    curve.GetZRange(min, max);
    EXPECT_EQ(min, 3);
    EXPECT_EQ(C3DIrregBarCurve().GetItemType(), 52);
}

} // namespace
} // namespace ombrel
