#include "ombrel/model/PlotComponent.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

/// Every field with a value of its own, in one of the layouts.
Bytes CurveBytes(int version, bool shortDataSource, std::string_view fullScript = "script")
{
    Bytes bytes;
    bytes.Int(version, 26).Texts("text", "formula", "title", "lut", "name").Short(3);
    if (shortDataSource)
        bytes.Short(2);
    else
        bytes.Int(2);
    bytes.Int(1, 0x332211, 0x665544, 4).Text(fullScript).Int(5); // modified, colours, debug; use full script
    bytes.Int(6, 7, 8).Double(0.5).Int(9).Double(-1.5, 1.5); // tag, steps, first width; range of the look-up table
    bytes.Int(10, 11);
    if (version >= 2)
        bytes.Int(12);
    if (version >= 3)
        bytes.Int(1).Short(1).NewClass("CCoordTransform").Int(1, 2).Double(1, 2, 3);
    if (version >= 4)
        bytes.Int(13);
    return bytes;
}

TEST(PlotComponentArchive, KeepsEveryFieldInItsPlace)
{
    RegisterClass(CCoordTransform::kClass);
    CPlotComponent curve;
    ASSERT_TRUE(Load(curve, CurveBytes(5, false)));
    EXPECT_EQ(Stored(curve), CurveBytes(5, false));
    EXPECT_EQ(curve.GetItemType(), it3DLineArrayCurve);
    EXPECT_EQ(curve.GetFormulaString(), "formula");
    EXPECT_EQ(curve.GetTitle(), "title");
    EXPECT_EQ(curve.GetLUTString(), "lut");
    EXPECT_EQ(curve.GetLUTName(), "name");
    EXPECT_EQ(curve.GetColourDescription(), 3);
    EXPECT_EQ(curve.GetDataSourceType(), CPlotComponent::dsFile);
    EXPECT_EQ(curve.GetColour(), 0x332211u);
    EXPECT_EQ(curve.GetOriginalColour(), 0x665544u);
    EXPECT_EQ(curve.GetDebug(), 4);
    EXPECT_EQ(curve.GetUseFullScript(), 5);
    EXPECT_EQ(curve.GetTag(), 6u);
    EXPECT_EQ(curve.GetNumSharpSpectrumSteps(), 7);
    EXPECT_EQ(curve.GetUseFirstSharpSpectrumWidth(), 8);
    EXPECT_EQ(curve.GetUseLUTMinMax(), 9);
    EXPECT_EQ(curve.GetScriptSegmentLine(), 10);
    EXPECT_EQ(curve.GetScriptDebug(), 11);
    EXPECT_EQ(curve.GetNumScriptLines(), 12);
    EXPECT_EQ(curve.GetSeed(), 13);
    ASSERT_EQ(curve.GetNumTransforms(), 1);
    CTransformArray const transforms = curve.GetTransforms();
    EXPECT_EQ(transforms.GetAt(0)->GetType(), CCoordTransform::ctScale);
}

TEST(PlotComponentArchive, OlderLayoutsKeepTheDefaultsOfWhatTheyLack)
{
    RegisterClass(CCoordTransform::kClass);
    struct {
        int version;
        bool shortDataSource;
        int scriptLines;
        int transforms;
        int seed;
    } const cases[] = {
        { 1, true, 0, 0, 99 },
        { 2, true, 12, 0, 99 },
        { 3, true, 12, 1, 99 },
        { 4, true, 12, 1, 13 },
        { 4, false, 12, 1, 13 },
        { 5, false, 12, 1, 13 },
    };
    for (auto const& c : cases) {
        CPlotComponent curve;
        ASSERT_TRUE(Load(curve, CurveBytes(c.version, c.shortDataSource))) << c.version << c.shortDataSource;
        EXPECT_EQ(curve.GetDataSourceType(), CPlotComponent::dsFile) << c.version << c.shortDataSource;
        EXPECT_EQ(curve.GetFullScriptString(), "script") << c.version << c.shortDataSource;
        EXPECT_EQ(curve.GetNumScriptLines(), c.scriptLines) << c.version;
        EXPECT_EQ(curve.GetNumTransforms(), c.transforms) << c.version;
        EXPECT_EQ(curve.GetSeed(), c.seed) << c.version;
    }
}

TEST(PlotComponentArchive, BothFormsOfTheFourthLayoutAreToldApartWithoutAScriptToo)
{
    RegisterClass(CCoordTransform::kClass);
    for (bool const shortDataSource : { true, false }) {
        CPlotComponent curve;
        ASSERT_TRUE(Load(curve, CurveBytes(4, shortDataSource, ""))) << shortDataSource;
        EXPECT_EQ(curve.GetTag(), 6u) << shortDataSource;
    }
    // 254 units, the first with the low byte FF: where the longer form would have its string, there is a mark, too.
    std::string const script = "\xFF" + std::string(253, 's');
    CPlotComponent curve;
    ASSERT_TRUE(Load(curve, CurveBytes(4, true, script)));
    EXPECT_EQ(curve.GetFullScriptString().GetLength(), 254);
    EXPECT_EQ(curve.GetTag(), 6u);
}

TEST(PlotComponentArchive, TruncatedBytesFailAtEveryLength)
{
    RegisterClass(CCoordTransform::kClass);
    for (int const version : { 1, 4, 5 }) {
        Bytes const bytes = CurveBytes(version, version < 4);
        for (std::size_t length = 0; length < bytes.Get().size(); ++length) {
            CPlotComponent curve;
            EXPECT_FALSE(Load(curve, Bytes::Of(std::span(bytes.Get()).first(length)))) << version << ' ' << length;
        }
    }
}

} // namespace
} // namespace ombrel
