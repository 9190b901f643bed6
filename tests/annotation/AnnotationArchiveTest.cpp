#include "ombrel/annotation/AnnotatedGraph.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::Load;
using test::Stored;

Bytes LegendBytes()
{
    return Bytes()
        .Component(0x332211, 1, 1, 7)
        .Int(1, 1, 2, 3) // version; created, on, positioned
        .Int(10, 20, 30, 40) // rectangle
        .Int(0x0000FF, 0x00FF00, 0xFF0000, 5, 2) // text, background, border; frame, style
        .Font("Serif", 700, 1, 1.5)
        .Double(2.5)
        .Point(0.25, 0.75)
        .Double(1.463);
}

Bytes CaptionBytes(int version)
{
    Bytes bytes;
    bytes.Component(0x332211, 1, 1, 8)
        .Int(version, 1, 2, 3) // created, on, positioned
        .Int(10, 20, 30, 40)
        .Text("Two\nlines")
        .Font("Mono", 400, 1, 0.5)
        .Double(2.5)
        .Int(0x0000FF, 0x00FF00, 0xFF0000, 4, 5) // text, background, border; frame, title type
        .Short(2)
        .Texts("Two", "lines")
        .Point(0.25, 0.75);
    if (version >= 2)
        bytes.Int(6);
    return bytes;
}

Bytes KeyBytes(int version)
{
    Bytes bytes;
    bytes.Component(0x332211, 1, 1, 9)
        .Int(version, 1, 2, 3) // created, on, positioned
        .Int(0x0000FF, 0x00FF00, 0xFF0000, 4) // text, background, border; frame
        .Int(10, 20, 30, 40)
        .Double(0.125)
        .Font("Mono", 400, 1, 0.5)
        .Double(2.5)
        .Point(0.25, 0.75)
        .Point(0.3, 0.6)
        .Short(2)
        .Texts("low", "high")
        .Short(3)
        .Int(1, 2, 3)
        .Int(5)
        .Double(-1.0, 0.5)
        .Int(6)
        .Double(-2.0, 2.0);
    if (version >= 2)
        bytes.Int(21, 0, 8); // curve tag, style, ticks
    return bytes;
}

TEST(AnnotationArchive, ALegendKeepsEveryFieldInItsPlace)
{
    CLegend legend;
    ASSERT_TRUE(Load(legend, LegendBytes()));
    EXPECT_EQ(Stored(legend), LegendBytes());
    EXPECT_EQ(legend.GetTag(), 7u);
    EXPECT_EQ(legend.IsOn(), 2);
    EXPECT_EQ(legend.GetTextColour(), RGB(255, 0, 0));
    EXPECT_EQ(legend.GetStyle(), 2);
}

TEST(AnnotationArchive, ANewLegendIsOffAndBlackOnWhite)
{
    CLegend legend(nullptr);
    EXPECT_EQ(Stored(legend),
        Bytes()
            .Component(0, 0, 0, 0)
            .Int(1, 0, 0, 0)
            .Int(0, 0, 0, 0)
            .Int(0, 0xFFFFFF, 0, 1, 0)
            .Font("Arial", 400, 0, 1.0)
            .Double(1.0)
            .Point(0, 0)
            .Double(1.1));
}

TEST(AnnotationArchive, ACaptionKeepsEveryFieldInItsPlace)
{
    CCaption caption;
    ASSERT_TRUE(Load(caption, CaptionBytes(2)));
    EXPECT_EQ(Stored(caption), CaptionBytes(2));
    EXPECT_EQ(caption.GetTitleType(), 5);
    EXPECT_EQ(caption.GetTransparentBkgnd(), 6);
    CCaption older;
    ASSERT_TRUE(Load(older, CaptionBytes(1)));
    EXPECT_EQ(older.GetTransparentBkgnd(), 0) << "the first layout does not have it";
}

TEST(AnnotationArchive, ANewCaptionHasNoPositionYet)
{
    CCaption caption(nullptr, "Hi", CCaption::ctGeneral);
    EXPECT_EQ(Stored(caption),
        Bytes()
            .Component(0, 0, 0, 0)
            .Int(2, 0, 0, 0)
            .Int(0, 0, 0, 0)
            .Text("Hi")
            .Font("Arial", 400, 0, 1.0)
            .Double(1.0)
            .Int(0, 0xFFFFFF, 0, 1, 1)
            .Short(0)
            .Point(-100, -100)
            .Int(0));
}

TEST(AnnotationArchive, AColourKeyKeepsEveryFieldInItsPlace)
{
    CColourKey key;
    ASSERT_TRUE(Load(key, KeyBytes(2)));
    EXPECT_EQ(Stored(key), KeyBytes(2));
    double min = 0.0;
    double max = 0.0;
    key.GetMinAndDel(min, max);
    EXPECT_EQ(CRealPoint(min, max), CRealPoint(-1.0, 0.5));
    key.GetClampRange(min, max);
    EXPECT_EQ(CRealPoint(min, max), CRealPoint(-2.0, 2.0));
    EXPECT_EQ(key.GetLabelMode(), 5);
    EXPECT_EQ(key.GetClampMode(), 6);
    EXPECT_EQ(key.GetCurveTag(), 21u);
    EXPECT_EQ(key.GetStyle(), CColourKey::ksDiscrete);
    EXPECT_EQ(key.GetNumTicks(), 8);
    CDWordArray colours;
    CStringArray labels;
    key.GetArbData(colours, labels);
    EXPECT_EQ(colours, (CDWordArray { 1, 2, 3 }));
    EXPECT_EQ(labels, (CStringArray { "low", "high" }));
    key.SetMinAndDel(3, 4);
    key.SetClampRange(5, 6);
    key.GetMinAndDel(min, max);
    EXPECT_EQ(CRealPoint(min, max), CRealPoint(3, 4));
    key.GetClampRange(min, max);
    EXPECT_EQ(CRealPoint(min, max), CRealPoint(5, 6));
}

TEST(AnnotationArchive, AColourKeyOfTheFirstLayoutIsAContinuousBarOfSixTicks)
{
    CColourKey key;
    ASSERT_TRUE(Load(key, KeyBytes(1)));
    EXPECT_EQ(key.GetStyle(), CColourKey::ksContinuous);
    EXPECT_EQ(key.GetNumTicks(), 6);
    EXPECT_EQ(key.GetCurveTag(), 0u);
    EXPECT_EQ(key.GetClampMode(), 6);
}

TEST(AnnotationArchive, ColourKeysBeginWithOneArbitraryEntry)
{
    auto const bytes = [](int modified, int ink, int paper) {
        return Bytes()
            .Component(0, modified, 0, 0)
            .Int(2, 0, 0, 0)
            .Int(ink, paper, ink, 1)
            .Int(0, 0, 0, 0)
            .Double(0)
            .Font("Arial", 400, 0, 1.0)
            .Double(1.0)
            .Point(0, 0)
            .Point(0, 0)
            .Short(1)
            .Text("Scripted Colour Ramp")
            .Short(1)
            .Int(0)
            .Int(0)
            .Double(0, 0)
            .Int(0)
            .Double(0, 0)
            .Int(0, 1, 6);
    };
    CColourKey key(nullptr);
    EXPECT_EQ(Stored(key), bytes(0, 0, 0xFFFFFF));
    CColourKey forLoading;
    EXPECT_EQ(Stored(forLoading), bytes(1, 0xFFFFFF, 0));
}

TEST(AnnotationArchive, ArraysHoldReferencesToTheirOwnClassOnly)
{
    RegisterClass(CCaption::kClass);
    RegisterClass(CColourKey::kClass);
    Bytes const captions = Bytes().Component(0, 1, 0, 3).Int(1).Short(2).NewClass("CCaption").Add(CaptionBytes(2));
    Bytes const both = Bytes(captions).Short(-0x7FFF).Add(CaptionBytes(2));
    CCaptionArray array;
    ASSERT_TRUE(Load(array, both));
    EXPECT_EQ(array.GetSize(), 2);
    EXPECT_EQ(Stored(array), both);

    Bytes const keys = Bytes().Component(0, 1, 0, 3).Int(1).Short(1).NewClass("CColourKey").Add(KeyBytes(2));
    CColourKeyArray keyArray;
    ASSERT_TRUE(Load(keyArray, keys));
    EXPECT_EQ(Stored(keyArray), keys);
    EXPECT_FALSE(Load(array, keys)) << "a colour key among captions";
}

TEST(AnnotationArchive, RectanglesBeyondEveryDeviceAreLimitedOnLoading)
{
    constexpr int kHuge = 0x7FFFFFFF;
    CLegend legend;
    CRect const huge(-kHuge, kHuge, kHuge, -kHuge);
    legend.SetRect(huge);
    Bytes const bytes = Stored(legend);
    CLegend loaded;
    ASSERT_TRUE(Load(loaded, bytes));
    EXPECT_GT(loaded.GetRect().Width(), 0) << "the width of the loaded rectangle fits into an int";
    EXPECT_LT(loaded.GetRect().Height(), 0);
}

} // namespace
} // namespace ombrel
