#include "ombrel/platform/gdi/page/PageMarks.h"

#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/PageSurface.h"
#include "ombrel/platform/gdi/PngDecoder.h"
#include "ombrel/platform/gdi/marks/MarkPicture.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace ombrel {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Not;
using testing::Optional;

/// Rows of '#' and '.' as bits.
class Bits {
public:
    explicit Bits(std::vector<std::string> const& rows)
        : m_width(rows.front().size())
    {
        for (std::string const& row : rows) {
            m_words.resize(m_words.size() + RowWords());
            for (std::size_t x = 0; x < row.size(); ++x)
                if (row[x] == '#')
                    m_words[m_words.size() - RowWords() + x / 64] |= std::uint64_t { 1 } << x % 64;
        }
    }
    BitPicture Get() const
    {
        return { static_cast<int>(m_width), static_cast<int>(m_words.size() / RowWords()), RowWords(), m_words };
    }

private:
    std::size_t RowWords() const { return (m_width + 63) / 64; }
    std::size_t m_width;
    std::vector<std::uint64_t> m_words;
};

std::vector<int> Fax(std::vector<std::string> const& rows)
{
    std::vector<int> bytes;
    for (char const byte : EncodeFax(Bits(rows).Get()))
        bytes.push_back(static_cast<unsigned char>(byte));
    return bytes;
}

TEST(FaxEncoder, WritesEdgesByThoseAbove)
{
    // Along the row: 001, three white 1000, two black 11, then the row's end below that of the row above: 1. The next
    // row is the same, and 000000000001 twice is the end.
    EXPECT_THAT(Fax({ "...##...", "...##..." }), ElementsAre(0x31, 0xF8, 0x00, 0x80, 0x08));
    // One to the left 010, two to the right 000011; passed over 0001.
    EXPECT_THAT(Fax({ "...##...", "..#####.", "........" }), ElementsAre(0x31, 0xD0, 0x71, 0x80, 0x08, 0x00, 0x80));
    // Three to the right 0000011, one to the left 010, then 67 white as 64 and 3, and one black.
    std::string const first = "....#####" + std::string(80, '.');
    std::string const second = ".......#" + std::string(67, '.') + "#" + std::string(13, '.');
    EXPECT_THAT(Fax({ first, second }), ElementsAre(0x36, 0x70, 0x68, 0xEE, 0x14, 0x00, 0x40, 0x04));
}

TEST(FaxEncoder, RunsOfEveryLengthAreWrittenAsTheyWereWhenADecoderReadThemBack)
{
    // The sum is that of bytes which another program decoded to these pixels.
    std::vector<std::string> rows;
    for (std::size_t n = 0; n <= 2700; n += n < 70 ? 1 : 61) {
        std::string row = std::string(n, '.') + std::string(n * 7 % 50, '#');
        rows.push_back(row + std::string(6000 - row.size(), '.'));
        rows.push_back(std::string(6000, '.'));
        row = std::string(n, '#') + ".##";
        rows.push_back(row + std::string(6000 - row.size(), '.'));
    }
    std::uint64_t sum = 0xCBF29CE484222325;
    for (int const byte : Fax(rows))
        sum = (sum ^ static_cast<std::uint64_t>(byte)) * 0x100000001B3;
    EXPECT_EQ(sum, 6416317101553738203U);
}

RecordedPrimitive FillOf(CRect const& rect, COLORREF colour)
{
    return { primitive::Fill { Region::FromRect(rect), VectorBrush::Solid(colour) }, {} };
}

TEST(PageMarks, OnesThatLaterOnesCoverWithTheirEdgesAreLeftOut)
{
    auto const mark = DrawMark(std::array { FillOf({ 0, 0, 10, 10 }, 0x808080) }, 24);
    ASSERT_TRUE(mark);
    CPoint const hidden(100, 100);
    // The four cover 94 … 111 each way, and two pixels less in whole.
    std::vector<CPoint> points { hidden, { 94, 94 }, { 102, 94 }, { 94, 102 }, { 102, 102 } };
    std::vector const others(points.begin() + 1, points.end());
    EXPECT_THAT(WithoutCovered(*mark, points, 9), Optional(ElementsAreArray(others)));
    EXPECT_THAT(WithoutCovered(*mark, points, 4), Optional(ElementsAreArray(others)));
    EXPECT_FALSE(WithoutCovered(*mark, points, 3));
    std::rotate(points.begin(), points.begin() + 1, points.end());
    EXPECT_THAT(WithoutCovered(*mark, points, 9), Optional(ElementsAreArray(points)));
    // A pixel farther to the right there is a gap between what two cover in whole.
    std::vector<CPoint> const apart { hidden, { 94, 94 }, { 103, 94 }, { 94, 102 }, { 103, 102 } };
    EXPECT_THAT(WithoutCovered(*mark, apart, 9), Optional(ElementsAreArray(apart)));
    EXPECT_THAT(WithoutCovered(*mark, {}, 9), Optional(ElementsAre()));
}

TEST(PageMarks, PensOfOnePixelAreAsWideAsOnThePage)
{
    LineStyle const thin { PS_SOLID, 1, 0, {} };
    LineStyle const wide { PS_SOLID, 7, 0, {} };
    auto const line = [](LineStyle const& style) {
        return RecordedPrimitive { primitive::Polyline { { { 0, 0 }, { 5, 5 } }, style }, {} };
    };
    LineStyle drawn = thin;
    drawn.width = 3;
    EXPECT_THAT(
        WithPageLines(std::array { line(thin), line(wide) }, 3), Optional(ElementsAre(line(drawn), line(wide))));
    EXPECT_FALSE(WithPageLines(std::array { line(thin), line({ PS_DOT, 1, 0, {} }) }, 3));
}

constexpr COLORREF kOuter = RGB(200, 0, 0);
constexpr COLORREF kInner = RGB(0, 0, 250);
constexpr CRect kOuterBox { -9, -7, 8, 9 };
constexpr CRect kInnerBox { -2, -1, 3, 2 };

void DrawMarkOnce(CDC& dc)
{
    dc.FillSolidRect(kOuterBox, kOuter);
    dc.FillSolidRect(kInnerBox, kInner);
}

/// Sparse and crowded ones, some beyond the corner of the page.
std::vector<CPoint> ManyPoints(std::size_t count)
{
    std::mt19937 random(7);
    std::vector<CPoint> points;
    while (points.size() < count)
        points.emplace_back(static_cast<int>(random() % 1600) - 20, static_cast<int>(random() % 1300) - 20);
    return points;
}

struct MarksPage {
    std::string bytes;
    MarkCounts counts;
};

MarksPage DrawMarksPage(PageFormat format, PageMarks marks, std::vector<CPoint> const& points)
{
    PageSetup setup;
    setup.format = format;
    setup.marks = marks;
    std::shared_ptr<PageSurface> const page = MakePageSurface(setup);
    CDC(page).Repeat(DrawMarkOnce, points);
    MarkCounts const counts = page->GetMarkCounts();
    return { page->Finish(), counts };
}

std::string FromBase64(std::string_view text)
{
    static constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    unsigned bits = 0;
    int count = 0;
    for (char const c : text.substr(0, text.find('='))) {
        bits = bits << 6 | static_cast<unsigned>(kDigits.find(c));
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count);
        }
    }
    return bytes;
}

std::string Attribute(std::string const& element, std::string const& name)
{
    std::size_t const begin = element.find(" " + name + "=\"") + name.size() + 3;
    return element.substr(begin, element.find('"', begin) - begin);
}

TEST(PageSurface, ManyMarksBecomeAnImageOfThePixelsThatAreDrawnOneAfterTheOther)
{
    std::vector<CPoint> const points = ManyPoints(60000);
    MarksPage const page = DrawMarksPage(PageFormat::Svg, PageMarks::Auto, points);
    auto const onPage = std::count_if(
        points.begin(), points.end(), [](CPoint p) { return p.x + kOuterBox.right > 0 && p.y + kOuterBox.bottom > 0; });
    EXPECT_EQ(page.counts, (MarkCounts { 0, onPage }));
    EXPECT_THAT(page.bytes, Not(HasSubstr("<use")));
    std::size_t const at = page.bytes.find("<image");
    ASSERT_NE(at, std::string::npos);
    std::string const element = page.bytes.substr(at, page.bytes.find("/>", at) - at);
    CPoint const corner(std::stoi(Attribute(element, "x")), std::stoi(Attribute(element, "y")));
    std::string const link = Attribute(element, "xlink:href");
    std::string const png = FromBase64(std::string_view(link).substr(link.find(',') + 1));
    Raster const shown = DecodePng(std::as_bytes(std::span(png)));
    EXPECT_EQ(std::to_string(shown.Width()), Attribute(element, "width"));
    EXPECT_EQ(std::to_string(shown.Height()), Attribute(element, "height"));

    static constexpr std::uint32_t kColour = 0xFFFFFF;
    auto const plain = std::make_shared<Raster>(1700, 1400, 24);
    CDC dc(MakeRasterSurface(plain));
    dc.FillSolidRect({ 0, 0, 1700, 1400 }, RGB(255, 255, 255));
    for (CPoint const& p : points) {
        dc.SetViewportOrg(p.x, p.y);
        DrawMarkOnce(dc);
    }
    int different = 0;
    for (int y = 0; y < 1400; ++y) {
        for (int x = 0; x < 1700; ++x) {
            CPoint const in = CPoint(x, y) - corner;
            std::uint32_t const pixel = shown.Bounds().PtInRect(in) ? shown.Row(in.y)[in.x] & kColour : kColour;
            different += pixel == plain->Row(y)[x] ? 0 : 1;
        }
    }
    EXPECT_EQ(different, 0);
}

TEST(PageSurface, MarksAreImagesOrShapesAsTheSetupSays)
{
    std::vector<CPoint> points = ManyPoints(60000);
    for (PageFormat const format : { PageFormat::Pdf, PageFormat::PostScript }) {
        MarksPage const page = DrawMarksPage(format, PageMarks::Auto, points);
        EXPECT_LT(page.bytes.size(), 200000U);
        EXPECT_THAT(page.bytes, HasSubstr("CCITTFaxDecode"));
    }
    // Half of these are at places that come again, and later ones hide some more.
    points.resize(3000);
    std::vector<CPoint> twice = points;
    twice.insert(twice.end(), points.begin(), points.end());
    MarksPage const kept = DrawMarksPage(PageFormat::Svg, PageMarks::Auto, twice);
    EXPECT_EQ(kept.counts.inImages, 0);
    auto const uses = [](std::string const& svg) {
        long long count = 0;
        for (std::size_t at = svg.find("<use"); at != std::string::npos; at = svg.find("<use", at + 1))
            ++count;
        return count;
    };
    MarksPage const all = DrawMarksPage(PageFormat::Svg, PageMarks::Vector, twice);
    EXPECT_EQ(all.counts, MarkCounts());
    EXPECT_EQ(uses(kept.bytes), uses(all.bytes) - kept.counts.hidden);
    EXPECT_GT(uses(all.bytes), 5800);
    EXPECT_GT(kept.counts.hidden, uses(all.bytes) / 2);
}

} // namespace
} // namespace ombrel
