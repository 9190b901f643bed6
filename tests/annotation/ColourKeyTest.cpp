#include "ombrel/annotation/keys/KeyCells.h"
#include "ombrel/annotation/keys/KeyLabels.h"
#include "ombrel/foundation/Utils.h"
#include "tests/annotation/AnnotationFixture.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace ombrel {
namespace {

using test::FramedGraph;
using test::Recorder;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr COLORREF kLowColour = RGB(0, 0, 255);
constexpr COLORREF kHighColour = RGB(255, 0, 0);

/// Blue below the middle of its range, red from there on, or whatever bands it is given.
class TwoColoured : public CPlotComponent {
public:
    int NeedsColourKey() const override { return 1; }
    ColourKeySource GetColourKeySource() const override { return source; }
    COLORREF GetColourOfValue(double value, double low, double high) const override
    {
        return value < (low + high) / 2 ? kLowColour : kHighColour;
    }
    void SetRange(double low, double high)
    {
        source = ColourKeySource();
        source.low = low;
        source.high = high;
    }
    void SetBands(std::vector<double> const& values)
    {
        source.style = ColourKeySource::Style::Bands;
        source.bandColours.RemoveAll();
        source.bandValues.RemoveAll();
        for (double const value : values) {
            source.bandColours.Add(RGB(source.bandValues.GetSize() + 1, 0, 0));
            source.bandValues.Add(value);
        }
    }
    ColourKeySource source;
};

/// A graph with a curve and its key, in a picture whose shorter side asks for text of 15 pixels.
class KeyGraph : public FramedGraph {
public:
    KeyGraph()
    {
        CreateColourKeyArray();
        SetFrame({ 0, 0, 1000, 450 });
        frame->textRule = AnnotationFrame::TextRule::Picture;
        curve->SetTag(GetNewTag());
        GetPlotArray()->GetAt(0)->AddComponent(curve);
    }
    CColourKey& Key() { return m_key ? *m_key : *(m_key = AddColourKey({ 100, 50 }, curve->GetTag())); }

    TwoColoured* const curve = new TwoColoured;

private:
    CColourKey* m_key = nullptr;
};

/// What is drawn inside of the key, without the background, the frame and the font.
std::string Content(std::vector<RecordedPrimitive> primitives)
{
    std::erase_if(primitives, [](RecordedPrimitive const& p) { return !p.clip.region; });
    for (RecordedPrimitive& p : primitives)
        p.clip = Clip();
    std::string dump = test::Dump(primitives);
    for (std::string const font : { " font=Arial/15/w400", "/1/solid" }) {
        for (std::size_t at = dump.find(font); at != dump.npos; at = dump.find(font))
            dump.erase(at, font.size());
    }
    return dump;
}

std::string Labels(CColourKey& key)
{
    std::string labels;
    for (primitive::Text const& text : Recorder().Draw<primitive::Text>(key)) {
        labels += labels.empty() ? "" : " ";
        labels += text.text.ToUtf8();
    }
    return labels;
}

/// The size of a text in Arial of that height.
CSize ExtentOf(CString const& text, int height)
{
    CDC dc;
    CFont font;
    CVUtils::ConfigureFont(&font, CFontData(), height, 0);
    dc.SelectObject(&font);
    return dc.GetTextExtent(text);
}

TEST(ColourKey, ABarHasSixLabelsFromItsFootToItsTop)
{
    KeyGraph graph;
    graph.curve->SetRange(0, 1);
    Recorder recorder;
    // Cells of 24 + 8 pixels. The bar begins 7 + 11 / 2 below the top; row j shows (160 − j) / 160.
    EXPECT_EQ(Content(recorder.Draw(graph.Key())),
        "fill [107,62 121,143] #ff0000\nfill [107,143 121,222] #0000ff\n"
        "text 132,213 \"0\" #000000\npolyline 121,221 125,221 pen=#000000\n"
        "text 132,181 \"0.2\" #000000\npolyline 121,189 125,189 pen=#000000\n"
        "text 132,149 \"0.4\" #000000\npolyline 121,157 125,157 pen=#000000\n"
        "text 132,117 \"0.6\" #000000\npolyline 121,125 125,125 pen=#000000\n"
        "text 132,85 \"0.8\" #000000\npolyline 121,93 125,93 pen=#000000\n"
        "text 132,54 \"1\" #000000\npolyline 121,62 125,62 pen=#000000\n");
    CSize const size(ExtentOf("0.2", 15).cx + 5 + 24 + 8, 6 * 32 - 6);
    EXPECT_EQ(graph.Key().GetRect(), CRect(CPoint(100, 50), size));
    EXPECT_EQ(graph.Key().GetStyle(), CColourKey::ksContinuous);
    EXPECT_EQ(graph.Key().GetKeyMode(), CColourKey::kmCurve);
    graph.Draw(&recorder.Dc(), { 0, 0, 1000, 450 }, pmDirect);
    EXPECT_EQ(graph.Key().Measure(&recorder.Dc()), size);

    // Archives keep the height of the text as part of the key's, after colours and rectangle.
    double part = 0.0;
    std::memcpy(&part, test::Stored(graph.Key()).Get().data() + 72, sizeof part);
    EXPECT_EQ(part, 15.0 / 186);
}

TEST(ColourKey, BandsStandWithTheHighestAtTheTopSpreadOverSixCells)
{
    KeyGraph graph;
    graph.curve->SetBands({ 0, 2.5, 5 });
    CColourKey& key = graph.Key();
    key.SetTextColour(kLowColour);
    Recorder recorder;
    // Cells of 15 + 5 pixels; between three of them half of what the other three leave.
    auto drawn = recorder.Draw(key);
    EXPECT_EQ(test::OfKind<primitive::Polyline>(drawn)[1].points, (std::vector { CPoint(117, 55), CPoint(117, 66) }));
    std::erase_if(drawn, [](RecordedPrimitive const& p) { return p.As<primitive::Polyline>(); });
    EXPECT_EQ(Content(drawn),
        "fill [106,55 117,66] #030000\ntext 123,53 \"5\" #0000ff\n"
        "fill [106,105 117,116] #020000\ntext 123,103 \"2.5\" #0000ff\n"
        "fill [106,155 117,166] #010000\ntext 123,153 \"0\" #0000ff\n");
    EXPECT_EQ(key.GetRect(), CRect(CPoint(100, 50), CSize(ExtentOf("2.5", 15).cx + 5 + 15 + 5, 120)));
    EXPECT_EQ(key.GetStyle(), CColourKey::ksDiscrete);
    graph.curve->SetBands({ 1, 2, 3, 4, 5, 6, 7, 8 });
    recorder.Draw(key);
    EXPECT_EQ(key.GetRect().Height(), 160);
    // A band that has no colour is black; one that has no value is not shown.
    graph.curve->source.bandColours.SetSize(1);
    graph.curve->source.bandValues.SetSize(2);
    auto const fills = recorder.Draw<primitive::Fill>(key);
    ASSERT_EQ(fills.size(), 3u);
    EXPECT_EQ(fills[1].brush.foreground.colour, 0u);
    EXPECT_EQ(fills[2].brush.foreground.colour, RGB(1, 0, 0));
}

TEST(ColourKey, CellsOfPrintedPicturesAreAThirdHigher)
{
    KeyCells const bar = MakeKeyCells({ 30, 10 }, KeyKind::Bar, true);
    EXPECT_EQ(bar.cell, CSize(30 + 3 + 21 + 7, 28)) << "16 pixels become 21";
    EXPECT_EQ(bar.textOffset, CSize(4 + 21 + 4, 6 + 4));
    EXPECT_EQ(bar.swatchOffset, CPoint(9, 8));
    EXPECT_EQ(bar.swatch, CSize(12, 7));
    KeyCells const swatches = MakeKeyCells({ 30, 10 }, KeyKind::Swatches, true);
    EXPECT_EQ(swatches.cell, CSize(30 + 3 + 13 + 4, 17));
    EXPECT_EQ(swatches.textOffset, CSize(4 + 13 + 2, 2 + 2));

    KeyGraph graph;
    graph.curve->SetRange(0, 1);
    Recorder page(true);
    graph.frame->printer = &page.Dc();
    auto const drawn = page.Draw(graph.Key());
    auto const images = test::OfKind<primitive::Image>(drawn);
    ASSERT_EQ(images.size(), 1u) << "the bar is one picture";
    // Text of three quarters of 15: 11 pixels in cells of 24 + 8.
    CRect const bounds(CPoint(100 + 10, 50 + 10 + 4), CSize(10, 5 * 32));
    EXPECT_EQ(images[0].to, bounds);
    EXPECT_EQ(images[0].from, CRect({}, bounds.Size()));
    EXPECT_NE(images[0].pixelSum, 0u) << "not all of it is black";
    for (RecordedPrimitive const& p : drawn)
        EXPECT_FALSE(p.clip.region) << "nothing is clipped on a page";
}

TEST(ColourKey, LabelsAreTidyNumbersOfTheColourRange)
{
    struct {
        KeyRange range;
        int mode;
        int ticks;
        double min;
        double del;
        char const* labels;
    } const cases[] = {
        { { 0, 1 }, 0, 6, 0, 0, "0 0.2 0.4 0.6 0.8 1" },
        { { -0.3, 0.3 }, 0, 7, 0, 0, "-0.3 -0.2 -0.1 0 0.1 0.2 0.3" },
        { { -12345.678, -1e-5 }, 0, 3, 0, 0, "-1.235e+04 -6173 -1e-05" },
        { { -12345.678, -1e-5 }, 2, 0, 0, 5000, "-10,000 -5,000" },
        { { 1e6, 1e6 + 1 }, 2, 0, 0, 0.5, "1,000,000 1,000,000.5 1,000,001" },
        { { 1e6, 1e6 + 1 }, 0, 3, 0, 0, "1000000 1000000.5 1000001" },
        { { 10, -10 }, 0, 3, 0, 0, "10 0 -10" },
        { { -1.5e308, 1.5e308 }, 0, 3, 0, 0, "-1.5e+308 0 1.5e+308" },
        { { 5, 5 }, 0, 6, 0, 0, "5" },
        { { 0, 2 }, 0, 1, 0, 0, "0" },
        { { 0, 2 }, 0, 0, 0, 0, "" },
        { { 0, 2 }, 0, -7, 0, 0, "" },
        { { 0, kInfinity }, 0, 6, 0, 0, "" },
        { { 0, 2 }, 1, 6, 0.25, 0.5, "0.25 0.75 1.25 1.75" },
        { { 0, 2 }, 1, 6, 100.25, 0.5, "0.25 0.75 1.25 1.75" },
        { { 0, 2 }, 1, 6, -100.25, 0.5, "0.25 0.75 1.25 1.75" },
        { { 0, 0.3 }, 1, 6, 0, 0.1, "0 0.1 0.2 0.3" },
        { { 2, 0 }, 7, 6, 0.25, 0.5, "0.25 0.75 1.25 1.75" },
        { { 0, 2 }, 1, 3, 0, 0, "0 1 2" },
        { { 0, 2 }, 1, 3, 0, -1, "0 1 2" },
        { { 0, 2 }, 1, 3, 0, std::numeric_limits<double>::quiet_NaN(), "0 1 2" },
        { { 0, 2 }, 1, 3, 1e300, 0.5, "" },
        { { 0, 2 }, 1, 3, kInfinity, 0.5, "" },
    };
    for (auto const& c : cases) {
        KeyGraph graph;
        graph.curve->SetRange(c.range.low, c.range.high);
        CColourKey& key = graph.Key();
        key.SetNumTicks(c.ticks);
        key.SetLabelMode(c.mode);
        key.SetMinAndDel(c.min, c.del);
        EXPECT_EQ(Labels(key), c.labels) << c.range.low << " " << c.mode << " " << c.min << " " << c.del;
    }
    // Steps keep their distance to the ends; above all rows is the upper end.
    KeyGraph graph;
    graph.curve->SetRange(0, 2);
    graph.Key().SetLabelMode(1);
    graph.Key().SetMinAndDel(0.5, 0.75);
    auto const texts = Recorder().Draw<primitive::Text>(graph.Key());
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_EQ(texts[0].at, CPoint(132, 221 - 40 - 8));
    EXPECT_EQ(texts[2].at, CPoint(132, 221 - 160 - 8));
    EXPECT_EQ(SteppedKeyValues({ 0, 1 }, 0, 1e-5).size(), 501u) << "every 200th";
}

TEST(ColourKey, LiesInsideOfThePictureWithEveryLabelInsideOfTheKey)
{
    std::vector<double> fifty;
    for (int i = 0; i < 50; ++i)
        fifty.push_back(i * 1e-7);
    std::vector<double> const thousands(3000, -123456789.0);
    for (CSize const size : { CSize(1000, 450), CSize(120, 90), CSize(1000, 40), CSize(20, 500), CSize(2, 2) }) {
        for (CPoint const at : { CPoint(100, 50), CPoint(990, 440), CPoint(-2000, -2000), CPoint(1 << 30, 1 << 30) }) {
            KeyGraph graph;
            graph.SetFrame(CRect({}, size));
            graph.frame->textRule = AnnotationFrame::TextRule::Picture;
            CColourKey& key = graph.Key();
            key.Create(at);
            for (int kind = 0; kind < 6; ++kind) {
                int const ticks[] = { 6, 20, 2000000000 };
                std::vector<double> const bands[] = { fifty, thousands, { 1 } };
                if (kind < 3)
                    graph.curve->SetRange(-1.2345678e-300, 9.87654321e300);
                else
                    graph.curve->SetBands(bands[kind - 3]);
                key.SetNumTicks(ticks[kind % 3]);
                key.SetRect(CRect(at, CSize()));
                Recorder recorder(false, size);
                auto const texts = recorder.Draw<primitive::Text>(key);
                CRect const rect = key.GetRect();
                EXPECT_TRUE(rect.left >= 0 && rect.top >= 0 && rect.bottom < size.cy)
                    << size.cx << " " << at.x << " " << kind;
                EXPECT_TRUE(rect.right < size.cx || size.cx < 30);
                for (std::size_t i = 0; i < texts.size(); ++i) {
                    CSize const extent = ExtentOf(texts[i].text, texts[i].font.lfHeight);
                    EXPECT_LE(texts[i].at.x + extent.cx, rect.right);
                    EXPECT_GE(texts[i].at.y, rect.top);
                    EXPECT_LE(texts[i].at.y + extent.cy, rect.bottom);
                    int const step = i > 0 ? std::abs(texts[i].at.y - texts[i - 1].at.y) : extent.cy;
                    EXPECT_GE(step, extent.cy) << "labels do not touch";
                }
            }
        }
    }
    // Fifty bands in 449 pixels less a cell: 429 without a gap between them, and every second has a label.
    KeyGraph graph;
    graph.curve->SetBands(fifty);
    Recorder recorder(false, { 1000, 450 });
    auto const fills = recorder.Draw<primitive::Fill>(graph.Key());
    ASSERT_EQ(fills.size(), 51u);
    EXPECT_EQ(fills[1].region.Box(), CRect(106, 10, 117, 18));
    EXPECT_EQ(fills[1].brush.foreground.colour, RGB(50, 0, 0));
    EXPECT_EQ(fills[50].region.Box(), CRect(106, 430, 117, 439));
    for (std::size_t i = 2; i < fills.size(); ++i)
        EXPECT_EQ(fills[i].region.Box().top, fills[i - 1].region.Box().bottom);
    EXPECT_EQ(recorder.Draw<primitive::Text>(graph.Key()).size(), 25u);
}

TEST(ColourKey, KeepsItsPlaceInThePictureOrItsRectangle)
{
    KeyGraph graph;
    graph.curve->SetRange(0, 1);
    CColourKey& key = graph.Key();
    Recorder recorder;
    auto const fontOf = [&] { return recorder.Draw<primitive::Text>(key)[0].font.lfHeight; };
    EXPECT_EQ(fontOf(), 15);
    graph.frame->reference = graph.frame->textArea = CRect(10, 20, 310, 320);
    graph.SetHint(ghKeepRects);
    EXPECT_EQ(fontOf(), 15);
    EXPECT_EQ(key.GetRect().TopLeft(), CPoint(100, 50)) << "0.3 and 0.1 of the smaller one";
    graph.frame->reference = CRect(0, 0, 600, 500);
    graph.SetHint(1);
    EXPECT_EQ(fontOf(), 10);
    EXPECT_EQ(key.GetRect().TopLeft(), CPoint(180, 50));
    key.SetRect({ 60, 250, 0, 0 });
    graph.frame->textArea = CRect(0, 0, 600, 900);
    EXPECT_EQ(fontOf(), 10) << "one that was moved";
    EXPECT_EQ(fontOf(), 15);
    EXPECT_EQ(key.GetRect().TopLeft(), CPoint(60, 250));
    // Whatever the font, a bar has only the rows that can be seen.
    key.SetFont(CFontData("Arial", 400, 0, 1e6));
    EXPECT_LE(recorder.Draw(key).size(), 30u);
    EXPECT_EQ(key.GetRect().TopLeft(), CPoint(0, 0));
    key.SetOn(0);
    EXPECT_TRUE(recorder.Draw(key).empty());
}

/// A host's key that shows what the host has given it.
class ArbitraryKey : public CColourKey {
public:
    using CColourKey::CColourKey;

protected:
    void UpdateGraphParameters() override
    {
        CColourKey::UpdateGraphParameters();
        SetKeyMode(kmArbitrary);
    }
};

TEST(ColourKey, AHostsKeyShowsArbitraryColoursAndLabels)
{
    KeyGraph graph;
    graph.curve->SetBands({ 1 });
    ArbitraryKey key(&graph, graph.curve);
    key.Create({ 0, 0 });
    EXPECT_EQ(Labels(key), "Scripted Colour Ramp");
    EXPECT_EQ(key.GetRect().Height(), 20) << "as many cells as entries";
    CDWordArray const colours { kLowColour };
    key.SetArbData(colours, CStringArray { "first", "second" });
    EXPECT_EQ(Labels(key), "first second");
    auto const fills = Recorder().Draw<primitive::Fill>(key);
    ASSERT_EQ(fills.size(), 3u);
    EXPECT_EQ(fills[1].brush.foreground.colour, kLowColour);
    EXPECT_EQ(fills[2].brush.foreground.colour, 0u) << "a label without a colour";
}

TEST(ColourKey, GoesWithItsCurveAndIsDrawnWithItsGraph)
{
    KeyGraph graph;
    graph.curve->SetRange(0, 1);
    CColourKey& key = graph.Key();
    CDIB target(400, 300, 24);
    CDC& dc = *target.GetDC();
    for (int const way : { 0, 1, 2 }) {
        dc.FillSolidRect({ 0, 0, 400, 300 }, 0);
        if (way < 2)
            graph.Draw(&dc, { 0, 0, 400, 300 }, way == 0 ? pmOffScreen : pmDirect);
        else
            graph.DrawEmbedded(&dc, { 0, 0, 400, 300 }, { 0, 0, 400, 300 });
        EXPECT_EQ(dc.GetPixel(110, 70), kHighColour) << way;
        EXPECT_EQ(dc.GetPixel(110, 200), kLowColour) << way;
    }
    graph.GetPlotArray()->GetAt(0)->RemoveComponent(graph.curve);
    std::unique_ptr<TwoColoured> const curve(graph.curve);
    EXPECT_EQ(Labels(key), "0 0.2 0.4 0.6 0.8 1") << "what it had, until its graph is drawn";
    EXPECT_EQ(Recorder().Draw<primitive::Fill>(key).size(), 1u) << "but there are no colours to be had";
    graph.Draw(&dc, { 0, 0, 400, 300 }, pmOffScreen);
    EXPECT_EQ(graph.GetColourKeyArray()->GetSize(), 0);
    EXPECT_NE(dc.GetPixel(110, 70), kHighColour);
}

TEST(ColourKey, ACurveThatSaysNothingHasABarOfItsOwnColour)
{
    class Plain : public CPlotComponent {
        void GetZRange(double& low, double& high) const override
        {
            low = -2;
            high = 3;
        }
    };
    KeyGraph graph;
    auto* const plain = new Plain;
    plain->SetTag(graph.GetNewTag());
    plain->SetColour(RGB(1, 2, 3));
    graph.GetPlotArray()->GetAt(0)->AddComponent(plain);
    CColourKey& key = *graph.AddColourKey({ 0, 0 }, plain->GetTag());
    EXPECT_EQ(Labels(key), "-2 -1 0 1 2 3");
    EXPECT_EQ(Recorder().Draw<primitive::Fill>(key)[1].brush.foreground.colour, RGB(1, 2, 3));
}

} // namespace
} // namespace ombrel
