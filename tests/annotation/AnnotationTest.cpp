#include "ombrel/annotation/AnnotatedGraph.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <functional>

namespace ombrel {
namespace {

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
    EXPECT_EQ(test::Stored(legend), test::Stored(fresh));
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
