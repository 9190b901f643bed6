#include "ombrel/annotation/AnnotatedGraph.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <functional>

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

TEST(AnnotationArchive, LegendsAndCaptionsKeepEveryFieldInItsPlace)
{
    CLegend legend;
    ASSERT_TRUE(Load(legend, LegendBytes()));
    EXPECT_EQ(Stored(legend), LegendBytes());
    EXPECT_EQ(legend.GetTag(), 7u);
    EXPECT_EQ(legend.IsOn(), 2);
    EXPECT_EQ(legend.GetTextColour(), RGB(255, 0, 0));
    EXPECT_EQ(legend.GetStyle(), 2);
    CCaption caption;
    ASSERT_TRUE(Load(caption, CaptionBytes(2)));
    EXPECT_EQ(Stored(caption), CaptionBytes(2));
    EXPECT_EQ(caption.GetTitleType(), 5);
    EXPECT_EQ(caption.GetTransparentBkgnd(), 6);
    CCaption older;
    ASSERT_TRUE(Load(older, CaptionBytes(1)));
    EXPECT_EQ(older.GetTransparentBkgnd(), 0) << "the first layout does not have it";
}

TEST(AnnotationArchive, NewOnesHaveNoPlaceAndAreBlackOnWhite)
{
    CLegend legend(nullptr);
    Bytes expected = Bytes().Component(0, 0, 0, 0).Int(1, 0, 0, 0).Int(0, 0, 0, 0).Int(0, 0xFFFFFF, 0, 1, 0);
    EXPECT_EQ(Stored(legend), expected.Font("Arial", 400, 0, 1).Double(1).Point(0, 0).Double(1.1));
    CCaption caption(nullptr, "Hi", CCaption::ctGeneral);
    expected = Bytes().Component(0, 0, 0, 0).Int(2, 0, 0, 0).Int(0, 0, 0, 0).Text("Hi").Font("Arial", 400, 0, 1);
    EXPECT_EQ(Stored(caption), expected.Double(1).Int(0, 0xFFFFFF, 0, 1, 1).Short(0).Point(-100, -100).Int(0));
    auto const key = [](int modified, int ink, int paper) {
        Bytes bytes = Bytes().Component(0, modified, 0, 0).Int(2, 0, 0, 0).Int(ink, paper, ink, 1).Int(0, 0, 0, 0);
        bytes.Double(0).Font("Arial", 400, 0, 1).Double(1).Point(0, 0).Point(0, 0).Short(1);
        bytes.Text("Scripted Colour Ramp").Short(1).Int(0, 0).Double(0, 0).Int(0).Double(0, 0).Int(0, 1, 6);
        return bytes;
    };
    CColourKey newKey(nullptr);
    EXPECT_EQ(Stored(newKey), key(0, 0, 0xFFFFFF));
    CColourKey keyForLoading;
    EXPECT_EQ(Stored(keyForLoading), key(1, 0xFFFFFF, 0));
}

TEST(AnnotationArchive, AColourKeyKeepsEveryFieldInItsPlace)
{
    CColourKey key;
    ASSERT_TRUE(Load(key, KeyBytes(2)));
    EXPECT_EQ(Stored(key), KeyBytes(2));
    auto const range = [&key](void (CColourKey::*get)(double&, double&) const) {
        CRealPoint range;
        (key.*get)(range.x, range.y);
        return range;
    };
    EXPECT_EQ(range(&CColourKey::GetMinAndDel), CRealPoint(-1.0, 0.5));
    EXPECT_EQ(range(&CColourKey::GetClampRange), CRealPoint(-2.0, 2.0));
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
    EXPECT_EQ(range(&CColourKey::GetMinAndDel), CRealPoint(3, 4));
    EXPECT_EQ(range(&CColourKey::GetClampRange), CRealPoint(5, 6));
    CColourKey first;
    ASSERT_TRUE(Load(first, KeyBytes(1)));
    EXPECT_EQ(first.GetStyle(), CColourKey::ksContinuous);
    EXPECT_EQ(first.GetNumTicks(), 6);
    EXPECT_EQ(first.GetCurveTag(), 0u);
    EXPECT_EQ(first.GetClampMode(), 6);
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

TEST(Annotation, DeletingALegendGivesBackItsFirstSettingsButFontAndRectangle)
{
    CLegend legend(nullptr);
    legend.Create(CPoint(12, 34));
    CFontData const font("Serif", 700, 0, 2.0);
    legend.SetFont(font);
    legend.SetTextColour(1);
    legend.SetBkgndColour(2);
    legend.SetBorderColour(3);
    legend.SetBoundingRectOn(0);
    legend.SetStyle(CLegend::lsSymbol);
    legend.SetFontScaleFac(3.0);
    legend.Delete();

    CLegend fresh(nullptr);
    fresh.SetFont(font);
    fresh.SetRect(CRect(12, 34, 12, 34));
    EXPECT_EQ(Stored(legend), Stored(fresh));
}

TEST(Annotation, DeletingAColourKeyKeepsItsColours)
{
    CColourKey key(nullptr);
    key.Create(CPoint(1, 2));
    key.SetTextColour(5);
    key.ResetModifiedFlags();
    key.Delete();
    EXPECT_FALSE(key.IsOn());
    EXPECT_FALSE(key.IsCreated());
    EXPECT_EQ(key.GetTextColour(), 5u);
    EXPECT_TRUE(key.Modified());
}

template <typename T>
void ExpectFlags(T& object, bool raisesFlag, std::initializer_list<std::function<void(T&)>> setters)
{
    for (int i = 0; auto const& set : setters) {
        object.ResetModifiedFlags();
        set(object);
        EXPECT_EQ(object.Modified() != 0, raisesFlag) << "setter " << i;
        ++i;
    }
}

TEST(Annotation, SettersRaiseTheModifiedFlagButForThoseThatEveryDrawReads)
{
    CLegend legend(nullptr);
    ExpectFlags<CLegend>(legend, false,
        { [](auto& l) { l.SetOn(1); }, [](auto& l) { l.SetRect(CRect(1, 2, 3, 4)); },
            [](auto& l) { l.SetFontHeight(9); } });
    ExpectFlags<CLegend>(legend, true, { [](auto& l) { l.SetStyle(1); }, [](auto& l) { l.SetBorderColour(1); } });
    CCaption caption(nullptr, "text", CCaption::ctNone);
    ExpectFlags<CCaption>(caption, true,
        { [](auto& c) { c.SetOn(1); }, [](auto& c) { c.SetRect(CRect(1, 2, 3, 4)); },
            [](auto& c) { c.SetText("other"); }, [](auto& c) { c.SetTransparentBkgnd(1); } });
    CColourKey key(nullptr);
    ExpectFlags<CColourKey>(key, true, { [](auto& k) { k.SetOn(1); }, [](auto& k) { k.SetNumTicks(3); } });
    ExpectFlags<CColourKey>(key, false,
        { [](auto& k) { k.SetRect(CRect(1, 2, 3, 4)); }, [](auto& k) { k.SetLabelMode(1); },
            [](auto& k) { k.SetMinAndDel(1, 2); }, [](auto& k) { k.SetClampMode(1); },
            [](auto& k) { k.SetClampRange(1, 2); } });
}

} // namespace
} // namespace ombrel
