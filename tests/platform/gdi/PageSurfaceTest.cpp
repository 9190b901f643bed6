#include "ombrel/platform/gdi/PageSurface.h"

#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/TextMetrics.h"

#include <array>
#include <cmath>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>
#include <zlib.h>

namespace ombrel {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr PageFormat kFormats[] = { PageFormat::Pdf, PageFormat::Svg, PageFormat::PostScript };

using Draw = std::function<void(Surface&)>;

std::string MakePage(PageFormat format, Draw const& draw)
{
    PageSetup setup;
    setup.format = format;
    setup.title = "Größe < 3";
    setup.description = "Two\nlines";
    setup.creationTime = 1700000000;
    auto const page = MakePageSurface(setup);
    draw(*page);
    return page->Finish();
}

std::string MakeSvg(Draw const& draw) { return MakePage(PageFormat::Svg, draw); }

std::size_t Count(std::string const& text, std::string_view part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

LOGFONT MakeFont(int height, int escapement = 0)
{
    LOGFONT font;
    font.lfFaceName = "Arial";
    font.lfHeight = height;
    font.lfEscapement = escapement;
    return font;
}

void DrawText(Surface& page, CString const& text, LOGFONT const& font, CPoint at = { 300, 400 })
{
    page.Text({ text, at, &font, RGB(0, 0, 0), {} }, {});
}

void FillRect(Surface& page, CRect const& rect, COLORREF colour, Clip const& clip)
{
    page.Fill(Region::FromRect(rect), VectorBrush::Solid(colour), clip);
}

/// Something of every primitive.
void DrawEverything(Surface& page)
{
    double const dashes[] = { 3, 1 };
    CPoint const points[] = { { 100, 100 }, { 900, 300 }, { 500, 900 } };
    LineStyle const line { PS_DASHDOT, 1, RGB(255, 0, 0), RGB(0, 255, 0) };
    COLORREF const yellow = RGB(255, 255, 0);
    LOGFONT const font = MakeFont(100);
    Raster raster(8, 8, 24);
    raster.Row(2)[3] = 0xFF8000;
    Clip clip;
    clip.box = { 200, 200, 1500, 1500 };
    clip.region = std::make_shared<Region>(Region::FromPolygon(points, ALTERNATE));
    FillRect(page, { 0, 0, 2000, 2000 }, RGB(240, 240, 255), {});
    page.Polyline(points, line, clip);
    page.Ellipse({ 100, 100, 600, 400 }, &line, &yellow, {});
    page.Arc({ 100, 100, 600, 600 }, { 100, 100 }, { 600, 600 }, line, {});
    page.Fill(Region::FromPolygon(points, WINDING), VectorBrush::Hatch(5, { RGB(1, 2, 3), 255 }, { 0, 0 }), clip);
    page.Fill(Region::FromPolygon(points, WINDING), { { yellow, 99 }, {}, { 0, 0 } }, {});
    FillRect(page, { CPoint(5, 5), CSize(1, 1) }, 0, {});
    page.Stroke({ points, {} }, { { 0, 128 }, 4.0, dashes }, true, {});
    page.Image({ &raster, { 0, 0, 8, 8 }, { 1000, 1000, 1400, 1400 }, SRCAND, 0, 0, 0 }, {});
    DrawText(page, u"Höhe \u05D0\u05D1 a\u0301", font);
}

TEST(PageSurface, ReportsAPrinterOfItsSizeInMillimetres)
{
    PageSetup setup;
    setup.widthMm = 254.0;
    setup.heightMm = 127.4;
    auto const page = MakePageSurface(setup);
    DeviceCapabilities const& capabilities = page->Capabilities();
    EXPECT_TRUE(page->IsPrinting());
    EXPECT_EQ(capabilities.technology, 2);
    EXPECT_EQ(capabilities.horzSize, 254);
    EXPECT_EQ(capabilities.vertSize, 127);
    EXPECT_EQ(page->Bounds(), CRect(0, 0, 6000, 3009));
    setup.widthMm = std::numeric_limits<double>::quiet_NaN();
    setup.heightMm = 1e300;
    EXPECT_EQ(MakePageSurface(setup)->Capabilities().horzSize, 1);
    EXPECT_EQ(MakePageSurface(setup)->Capabilities().vertSize, 5080);
}

TEST(PageSurface, TheSameDrawingGivesTheSameCompleteDocument)
{
    using Case = std::tuple<PageFormat, char const*, char const*>;
    Case const cases[] = {
        { PageFormat::Pdf, "%PDF-1.", "%%EOF\n" },
        { PageFormat::Svg, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg ", "</svg>\n" },
        { PageFormat::PostScript, "%!PS-Adobe-3.0", "%%EOF\n" },
    };
    for (auto const& [format, start, end] : cases) {
        std::string const document = MakePage(format, DrawEverything);
        EXPECT_THAT(document, StartsWith(start));
        EXPECT_THAT(document, EndsWith(end));
        EXPECT_TRUE(MakePage(format, DrawEverything) == document) << start;
        PageSetup setup;
        setup.format = format;
        auto const page = MakePageSurface(setup);
        EXPECT_LT(page->Finish().size(), document.size());
        DrawEverything(*page);
        EXPECT_TRUE(page->Finish().empty()) << "it has ended";
    }
    EXPECT_THAT(MakePage(PageFormat::PostScript, DrawEverything), HasSubstr("%%CreationDate: 2023-11-14T22:13:20Z\n"));
    std::string const pdf = MakePage(PageFormat::Pdf, DrawEverything);
    EXPECT_THAT(pdf, HasSubstr("/CreationDate (20231114221320"));
    // In the sixteen bits of a character that ASCII does not have.
    EXPECT_THAT(pdf, HasSubstr("/Title <FEFF0047007200F600DF00650020003C00200033>"));
}

TEST(PageSurface, SvgTextIsTextOfThePlatformsWidth)
{
    LOGFONT const font = MakeFont(125);
    CString const text = "1 < 2 & \"x\"";
    std::string const svg = MakeSvg([&](Surface& page) { DrawText(page, text, font); });
    int const width = MeasureText(font, text).cx;
    EXPECT_THAT(svg, HasSubstr(">1 &lt; 2 &amp; &quot;x&quot;</text>"));
    EXPECT_THAT(svg, HasSubstr("textLength=\"" + std::to_string(width) + "\""));
    EXPECT_THAT(svg, HasSubstr("<title>Größe &lt; 3</title>\n<desc>Two lines</desc>"));
    EXPECT_THAT(svg, HasSubstr("width=\"297mm\" height=\"210mm\" viewBox=\"0 0 7016 4961\""));

    LOGFONT const vertical = MakeFont(125, 900);
    std::string const turned = MakeSvg([&](Surface& page) { DrawText(page, "Up", vertical, { 70, 900 }); });
    EXPECT_THAT(turned, HasSubstr("transform=\"translate(70 900)rotate(-90)\""));

    std::string const odd = MakeSvg([&](Surface& page) { DrawText(page, u" a\u0001\uFFFE  b", font); });
    EXPECT_THAT(odd, HasSubstr("xml:space=\"preserve\""));
    EXPECT_THAT(odd, HasSubstr("> a \uFFFD  b</text>"));
}

TEST(PageSurface, SvgLinesRunThroughTheMiddleOfTheirRowsOfPixels)
{
    auto const line = [](int width, std::vector<CPoint> points) {
        return MakeSvg([&](Surface& page) { page.Polyline(points, { PS_SOLID, width, RGB(255, 0, 0), {} }, {}); });
    };
    EXPECT_THAT(line(1, { { 10, 20 }, { 30, 20 } }), HasSubstr("stroke-width=\"3.125\" d=\"m10.5 20.5h20\""));
    // Points on the way go, signs separate numbers, and letters are not repeated.
    EXPECT_THAT(
        line(4, { { 10, 20 }, { 10, 25 }, { 10, 30 }, { 13, 26 }, { 14, 20 } }), HasSubstr("d=\"m10 20v10l3-4 1-6\""));
    EXPECT_THAT(line(4, { { 1, 1 }, { 9, 1 }, { 9, 9 }, { 1, 9 }, { 1, 1 } }), HasSubstr("d=\"m1 1h8v8h-8z\""));
    // A wide pen leaves a dot where it is set down, a fine one nothing.
    EXPECT_THAT(line(5, { { 7, 7 }, { 7, 7 } }), HasSubstr("d=\"m7.5 7.5h0\""));
    EXPECT_THAT(line(1, { { 7, 7 }, { 7, 7 } }), Not(HasSubstr("<path")));
}

TEST(PageSurface, NeighboursOfOneLookAreOneShape)
{
    static CPoint const lines[][2] = { { { 0, 0 }, { 10, 0 } }, { { 10, 0 }, { 10, 10 } }, { { 50, 50 }, { 60, 50 } } };
    std::string const svg = MakeSvg([](Surface& page) {
        for (auto const& line : lines)
            page.Polyline(line, { PS_SOLID, 1, RGB(255, 0, 0), {} }, {});
        page.Polyline(lines[0], { PS_SOLID, 1, RGB(0, 0, 255), {} }, {});
    });
    EXPECT_THAT(svg, HasSubstr("d=\"m.5 .5h10v10m40 40h10\""));
    EXPECT_EQ(Count(svg, "<path"), 2U);

    std::string const dots = MakeSvg([](Surface& page) {
        for (int x = 0; x < 500; ++x)
            FillRect(page, { CPoint(4 * x, x), CSize(1, 1) }, 0, {});
    });
    EXPECT_EQ(Count(dots, "<path"), 1U);
    EXPECT_EQ(Count(dots, "z"), 500U + Count(MakeSvg([](Surface&) {}), "z"));
    // Lines that can be seen through stay apart: where they cross, both count.
    std::string const glass = MakeSvg([](Surface& page) {
        for (int i = 0; i < 2; ++i)
            page.Stroke({ lines[i], {} }, { { 0, 128 }, 2.0, {} }, false, {});
    });
    EXPECT_EQ(Count(glass, "stroke-opacity=\".502\""), 2U);
}

TEST(PageSurface, RectanglesReachUnderTheNeighbourDrawnNext)
{
    std::string const svg = MakeSvg([](Surface& page) {
        FillRect(page, { 10, 10, 20, 30 }, RGB(255, 0, 0), {});
        FillRect(page, { 20, 10, 30, 30 }, RGB(0, 255, 0), {});
        FillRect(page, { 30, 15, 40, 25 }, RGB(0, 0, 255), {});
    });
    EXPECT_THAT(svg, HasSubstr("fill=\"#f00\" class=\"f\" d=\"m10 10h14v20h-14z\""));
    // The third covers only part of the common edge.
    EXPECT_THAT(svg, HasSubstr("fill=\"#0f0\" class=\"f\" d=\"m20 10h10v20h-10z\""));
}

TEST(PageSurface, EqualClipsAndHatchesAreWrittenOnce)
{
    std::string const svg = MakeSvg([](Surface& page) {
        for (int i = 0; i < 6; ++i) {
            Clip clip;
            clip.box = { 0, 0, 100 + i % 2, 100 };
            // Of dots, which differ by one row.
            VectorBrush const brush = VectorBrush::Hatch(6 + i % 2, { 0, 255 }, { RGB(255, 255, 255), 255 });
            page.Fill(Region::FromRect({ 10 * i, 0, 10 * i + 5, 50 }), brush, clip);
        }
    });
    EXPECT_EQ(Count(svg, "<clipPath "), 2U);
    EXPECT_EQ(Count(svg, "<pattern "), 2U);
    EXPECT_EQ(Count(svg, "<g clip-path="), 6U);
    EXPECT_EQ(Count(svg, "<g"), Count(svg, "</g>"));
    EXPECT_THAT(svg, HasSubstr("fill=\"#000\" d=\"M0 0L1 0L1 1L0 1zM4 4L5 4L5 5L4 5z\""));
}

TEST(PageSurface, HatchesOfLinesAreLinesWithinTheShape)
{
    static CPoint const corners[] = { { 100, 0 }, { 200, 70 }, { 100, 120 } };
    auto const draw = [](Surface& page) {
        Clip clip;
        clip.box = { 0, 0, 150, 1000 };
        // 6.25 pixels of the page are one of the pattern, whose lines are 50 apart.
        page.Fill(Region::FromPolygon(corners, WINDING), VectorBrush::Hatch(0, { 0, 255 }, { 0xFFFFFF, 255 }), clip);
        page.Fill(Region::FromRect({ 120, 500, 190, 545 }), VectorBrush::Hatch(1, { 0, 255 }, { 0, 0 }), clip);
    };
    std::string const svg = MakeSvg(draw);
    EXPECT_EQ(Count(svg, "<pattern"), 0U);
    EXPECT_THAT(svg, HasSubstr("<path d=\"m100 0 100 70-100 50z\""));
    EXPECT_THAT(
        svg, HasSubstr("d=\"M100 0L250 0L250 6.25L100 6.25zM100 50L250 50L250 56.25L100 56.25zM100 100L250 100L"));
    // The second begins at 150, where the clip ends.
    EXPECT_THAT(svg, HasSubstr("<path d=\"m120 500h30v45h-30z\""));
    EXPECT_THAT(svg, HasSubstr("<path fill=\"#000\" d=\"M100 500L106.25 500L106.25 550L100 550z\"/>"));
    for (PageFormat const format : { PageFormat::Pdf, PageFormat::PostScript })
        EXPECT_THAT(MakePage(format, draw), Not(HasSubstr("Pattern")));
}

TEST(PageSurface, WhatLiesOutsideIsLeftOut)
{
    Clip clip;
    clip.box = { 100, 100, 200, 200 };
    std::string const svg = MakeSvg([&](Surface& page) {
        LOGFONT const font = MakeFont(20);
        COLORREF const black = 0;
        CPoint const points[] = { { 300, 300 }, { 400, 350 } };
        FillRect(page, { 0, 0, 90, 90 }, 0, clip);
        page.Polyline(points, {}, clip);
        page.Ellipse({ 300, 300, 400, 400 }, nullptr, &black, clip);
        page.Text({ "far", { 500, 500 }, &font, 0, {} }, clip);
        FillRect(page, { -90, -90, -5, -5 }, 0, {});
    });
    EXPECT_EQ(svg, MakeSvg([](Surface&) {}));
}

TEST(PageSurface, SvgRefersToMarksThatAreRepeated)
{
    auto const marks = [](std::vector<CPoint> const& points, bool filled) {
        auto const page = std::shared_ptr<PageSurface>(MakePageSurface({ PageFormat::Svg, 297.0, 210.0, "", "", 0 }));
        auto const mark = [filled](CDC& dc) {
            if (filled)
                dc.FillSolidRect({ -8, -8, 8, 8 }, RGB(255, 0, 0));
            dc.Polyline(std::array { CPoint(-8, -8), CPoint(8, 8) });
        };
        CDC(page).Repeat(mark, points);
        return page->Finish();
    };
    // The last of equal points is kept, what lies off the page is not.
    std::string const svg = marks({ { 10, 20 }, { 30, 40 }, { 10, 20 }, { -90, 7 }, { -7, 0 } }, true);
    EXPECT_THAT(svg, HasSubstr("<g id=\"m1\">\n<path fill=\"#f00\" class=\"f\" d=\"m-8-8h16v16h-16z\"/>"));
    EXPECT_THAT(svg,
        HasSubstr("<use xlink:href=\"#m1\" x=\"30\" y=\"40\"/>\n<use xlink:href=\"#m1\" x=\"10\" y=\"20\"/>\n"
                  "<use xlink:href=\"#m1\" x=\"-7\" y=\"0\"/>\n</g>"));
    EXPECT_EQ(Count(svg, "<use"), 3U);
    // Lines alone make one path, but not an endless one.
    EXPECT_THAT(marks({ { 10, 20 }, { 30, 40 } }, false), HasSubstr(" d=\"m2.5 12.5 16 16m4 4 16 16\""));
    std::vector<CPoint> many;
    for (int i = 0; i < 1000; ++i)
        many.push_back({ 7 * (i % 900), 3 * i });
    EXPECT_EQ(Count(marks(many, false), "<path"), 4U);
}

TEST(PageSurface, KeepsEachTranslucentMarkAsAShape)
{
    auto const marks = [](PageFormat format, BYTE alpha) {
        auto const page = std::shared_ptr<PageSurface>(MakePageSurface({ format, 297.0, 210.0, "", "", 0 }));
        std::vector<CPoint> const points(12'000, CPoint(10, 20));
        CDC(page).Repeat([](CDC& dc) { dc.FillSolidRect({ -8, -8, 8, 8 }, RGB(255, 0, 0)); }, points, alpha);
        return page->Finish();
    };
    std::string const svg = marks(PageFormat::Svg, 51);
    EXPECT_THAT(svg, HasSubstr("<g id=\"m1\" opacity=\".2\">"));
    EXPECT_EQ(Count(svg, "<use"), 12'000U);
    EXPECT_EQ(Count(marks(PageFormat::Svg, 255), "<use"), 1U);
    // The mark is kept once, and used.
    std::string const pdf = marks(PageFormat::Pdf, 51);
    EXPECT_EQ(Count(pdf, "/XObject\n"), 1U);
    EXPECT_LT(pdf.size(), 20U * 12'000U);
    EXPECT_GT(pdf.size(), marks(PageFormat::Pdf, 255).size());
}

/// What a document has between its frame.
std::string Body(std::string const& svg)
{
    std::size_t const begin = svg.find("sans-serif\">\n") + 13;
    return svg.substr(begin, svg.rfind("\n</g>\n</svg>") - begin);
}

TEST(PageSurface, SvgHasEveryPrimitiveWhereItIsDrawn)
{
    static CPoint const points[] = { { 0, 0 }, { 90, 0 }, { 90, 60 }, { 30, 60 } };
    static std::size_t const starts[] = { 0, 2 };
    static double const dashes[] = { 3, 1 };
    static COLORREF const red = RGB(255, 0, 0);
    static LineStyle const thin { PS_SOLID, 1, 0, {} };
    static LineStyle const dashed { PS_DASH, 1, red, RGB(0, 255, 0) };
    static LineStyle const none { PS_NULL, 1, red, {} };
    static Figures const figures { points, starts };
    static VectorPen const pen { { red, 128 }, 6.0, dashes };
    static VectorBrush const glass { { red, 51 }, {}, {} };
    static CRect const box(10, 20, 51, 41);
    static CRect const circle(0, 0, 100, 100);
    static CPoint const right(200, 50);
    static CPoint const top(50, -9);
    static Raster const raster(2, 1, 24);
    std::pair<Draw, char const*> const cases[] = {
        // Middles of the outermost pixels: 10.5 to 50.5 and 20.5 to 40.5.
        { [](Surface& s) { s.Ellipse(box, &thin, &red, {}); },
            R"(<path fill="#f00" stroke="#000" stroke-width="3.125" class="r" d="M50.5 30.5A20 10 0 0 1 10.5 30.5 20 10 0 0 1 50.5 30.5z"/>)" },
        // Without an outline it fills its box.
        { [](Surface& s) { s.Ellipse(box, nullptr, &red, {}); },
            R"(<path fill="#f00" d="M51 30.5A20.5 10.5 0 0 1 10 30.5 20.5 10.5 0 0 1 51 30.5z"/>)" },
        // A quarter from the right up to the top, and the other three.
        { [](Surface& s) { s.Arc(circle, right, top, thin, {}); },
            R"(<path stroke="#000" stroke-width="3.125" d="M99.5 50A49.5 49.5 0 0 0 85.002 14.998 49.5 49.5 0 0 0 50 .5"/>)" },
        { [](Surface& s) { s.Arc(circle, top, right, thin, {}); },
            R"(<path stroke="#000" stroke-width="3.125" d="M50 .5A49.5 49.5 0 0 0 14.998 85.002 49.5 49.5 0 0 0 99.5 50"/>)" },
        // Dashes as long as on the screen, over a line of the background's colour.
        { [](Surface& s) { s.Polyline(points, dashed, {}); },
            R"(<path stroke="#0f0" stroke-width="3.125" d="m.5 .5h90v60h-60"/>)"
            "\n"
            R"(<path stroke="#f00" stroke-width="3.125" stroke-dasharray="112.5 37.5" d="m.5 .5h90v60h-60"/>)" },
        { [](Surface& s) { s.Polyline(points, none, {}); }, "" },
        { [](Surface& s) { s.Stroke(figures, pen, true, {}); },
            R"(<path stroke="#f00" stroke-opacity=".502" stroke-width="6" stroke-dasharray="18 6" d="m0 0h90m0 60h-60"/>)" },
        { [](Surface& s) { s.Fill(Region::FromPolygon(points, ALTERNATE), VectorBrush::Solid(red), {}); },
            R"(<path fill="#f00" fill-rule="evenodd" class="f" d="m0 0h90v60h-60z"/>)" },
        { [](Surface& s) { s.Fill(Region::FromPolygon(points, WINDING), glass, {}); },
            R"(<path fill="#f00" fill-opacity=".2" class="f" d="m0 0h90v60h-60z"/>)" },
        // A rectangle that goes beyond the page is cut.
        { [](Surface& s) { FillRect(s, CRect(20, -9, -5, 30), red, {}); },
            R"(<path fill="#f00" class="f" d="m0 0h20v30h-20z"/>)" },
    };
    std::string const empty = Body(MakeSvg([](Surface&) {}));
    for (auto const& [draw, body] : cases)
        EXPECT_EQ(Body(MakeSvg(draw)), *body ? body : empty);
    ImageCopy const image { &raster, { 0, 0, 2, 1 }, { 5, 6, 205, 106 }, SRCCOPY, 0, 0, 0 };
    EXPECT_THAT(MakeSvg([&](Surface& s) { s.Image(image, {}); }),
        HasSubstr("<image x=\"5\" y=\"6\" width=\"200\" height=\"100\" preserveAspectRatio=\"none\" "
                  "xlink:href=\"data:image/png;base64,iVBORw0KGgo"));
}

/// The first content stream of a PDF document, with single blanks between its words.
std::string PdfContent(std::string const& pdf)
{
    std::size_t const begin = pdf.find("stream\n") + 7;
    std::string text(1 << 16, '\0');
    z_stream inflater {};
    inflateInit(&inflater);
    inflater.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(pdf.data() + begin));
    inflater.avail_in = static_cast<uInt>(pdf.size() - begin);
    inflater.next_out = reinterpret_cast<Bytef*>(text.data());
    inflater.avail_out = static_cast<uInt>(text.size());
    EXPECT_EQ(inflate(&inflater, Z_FINISH), Z_STREAM_END);
    inflateEnd(&inflater);
    text.resize(inflater.total_out);
    std::istringstream words(text);
    std::string joined;
    for (std::string word; words >> word;)
        joined += word + ' ';
    return joined;
}

TEST(PageSurface, PdfHasEveryPrimitiveWhereItIsDrawn)
{
    // A point is eight and a third pixels: pixel 100 lies at 12.
    static CPoint const points[] = { { 0, 0 }, { 100, 0 }, { 100, 50 }, { 25, 50 } };
    static std::size_t const starts[] = { 0, 2 };
    static double const dashes[] = { 3, 1 };
    static COLORREF const orange = RGB(255, 102, 0);
    static LineStyle const wide { PS_SOLID, 25, orange, {} };
    static LineStyle const dashed { PS_DOT, 1, orange, RGB(0, 255, 0) };
    static Figures const figures { points, starts };
    static VectorPen const pen { { orange, 51 }, 50.0, dashes };
    static CRect const circle(0, 0, 101, 101);
    static CPoint const right(200, 50);
    static CPoint const top(50, -9);
    static Raster const raster(2, 1, 24);
    static LOGFONT const font = MakeFont(125, 900);
    static Clip const clip { { 50, 25, 150, 200 }, std::make_shared<Region>(Region::FromPolygon(points, WINDING)) };
    static VectorBrush const hatch = VectorBrush::Hatch(0, { orange, 255 }, { RGB(0, 0, 255), 255 });
    static VectorBrush const dotted = VectorBrush::Hatch(8, { orange, 255 }, { RGB(0, 0, 255), 255 });
    constexpr char kQuad[] = "0 0 m 12 0 l 12 6 l 3 6 l h";
    std::pair<Draw, std::vector<std::string>> const cases[] = {
        { [](Surface& s) { s.Ellipse(circle, &wide, &orange, {}); },
            { "1 0.4 0 rg", "1 0.4 0 RG 3 w 1 J 1 j [] 0.0 d", "12.059 6.059 m", "6.059 12.059 c", "0.059 6.059 c",
                "h 12.059 6.059 m B*" } },
        { [](Surface& s) { s.Arc(circle, right, top, wide, {}); }, { "12.059 6.039 m", "6.008 0.059 c S" } },
        { [](Surface& s) { s.Arc(circle, top, right, wide, {}); },
            { "6.008 0.059 m", " 8.383 11.594 c", "6.039 c S" } },
        { [](Surface& s) { s.Polyline(points, dashed, {}); },
            { "0 1 0 RG /a0 gs 0.375 w 0 J 0 j [] 0.0 d", "0.059 0.059 m 12.059 0.059 l 12.059 6.059 l 3.059 6.059 l S",
                "1 0.4 0 RG [ 2.25 2.25] 0 d" } },
        { [](Surface& s) { s.Stroke(figures, pen, true, {}); },
            { "6 w 0 J 0 j [ 18 6] 0 d 10 M", "0 0 m 12 0 l 12 6 m 3 6 l S" } },
        // Filled with what closes the gap to a neighbour.
        { [](Surface& s) { s.Fill(Region::FromPolygon(points, ALTERNATE), VectorBrush::Solid(orange), {}); },
            { "1 0.4 0 RG 0.36 w 1 J 1 j", kQuad, " B* Q" } },
        { [](Surface& s) { s.Fill(Region::FromPolygon(points, WINDING), hatch, {}); },
            { "0 0 1 rg", kQuad, " B Q Q q 0 0 12 1 re W n " + std::string(kQuad) + " 0 0 m W n 1 0.4 0 rg",
                "0 0 12 0.75 re f" } },
        { [](Surface& s) { s.Fill(Region::FromPolygon(points, WINDING), dotted, {}); },
            { "0 0 1 rg", kQuad, " B Q q /Pattern cs", " f Q Q" } },
        { [](Surface& s) {
             s.Fill(Region::FromPolygon(points, WINDING), { { orange, 51 }, {}, {} }, {});
         },
            { std::string(kQuad) + " 0 0 m f Q" } },
        { [](Surface& s) {
             FillRect(s, { 25, 0, 75, 50 }, orange, clip);
         },
            { "q 6 3 3 3 re W n 0 0 m 12 0 l 12 6 l 3 6 l h 0 0 m W n", " 3 0 6 6 re f" } },
        { [](Surface& s) {
             s.Image({ &raster, { 0, 0, 2, 1 }, { 50, 100, 250, 200 }, SRCCOPY, 0, 0, 0 }, {});
         },
            { "q 24 0 0 -12 6 24 cm" } },
        // Turned to the left, its baseline 101 pixels to the right of its corner.
        { [](Surface& s) {
             s.Text({ "Up", { 100, 500 }, &font, orange, {} }, {});
         },
            { "1 0.4 0 rg", "BT 0 -13.44 -13.44 0 24.12 60 Tm" } },
    };
    for (auto const& [draw, parts] : cases) {
        std::string const content = PdfContent(MakePage(PageFormat::Pdf, draw));
        for (std::string const& part : parts)
            EXPECT_THAT(content, HasSubstr(part));
    }
    EXPECT_THAT(MakePage(PageFormat::Pdf, cases[4].first), HasSubstr("/CA 0.2 /ca 0.2"));
}

TEST(PageSurface, DocumentsHoldSeveralPages)
{
    LOGFONT const font = MakeFont(100);
    auto const drawing = [&](char const* text) {
        return [&font, text](Surface& page) {
            DrawText(page, text, font);
            page.Fill(Region::FromRect({ 1000, 1000, 1500, 1200 }), VectorBrush::Solid(RGB(200, 0, 0)),
                { CRect(0, 0, 1200, 9000), nullptr });
        };
    };
    auto const both = [&](bool next) {
        return [&, next](Surface& surface) {
            drawing("One")(surface);
            // What neighbours are still added to stays on its page.
            EXPECT_EQ(static_cast<PageSurface&>(surface).NextPage(), next);
            drawing("Two")(surface);
        };
    };
    std::string const pdf = MakePage(PageFormat::Pdf, both(true));
    EXPECT_THAT(pdf, HasSubstr("/Count 2"));
    std::string const ps = MakePage(PageFormat::PostScript, both(true));
    EXPECT_THAT(ps, HasSubstr("%%Pages: 2\n"));
    // Each page is what it is alone.
    auto const pageOf = [](std::string const& text, std::string const& begin) {
        std::size_t const from = text.find("%%EndPageSetup\n", text.find(begin));
        return text.substr(from, text.find("showpage", from) - from);
    };
    std::string const first = pageOf(ps, "%%Page: 1 1");
    EXPECT_THAT(first, testing::Not(testing::IsEmpty()));
    EXPECT_EQ(first, pageOf(MakePage(PageFormat::PostScript, drawing("One")), "%%Page: 1 1"));
    EXPECT_THAT(pageOf(ps, "%%Page: 2 2"), testing::Not(testing::AnyOf(first, "")));
    std::string const svg = MakePage(PageFormat::Svg, both(false));
    EXPECT_THAT(svg, testing::AllOf(HasSubstr(">One<"), HasSubstr(">Two<")));
}

TEST(PageSurface, VeryLargePagesHaveFewerDotsButAllOfTheirArea)
{
    using Case = std::tuple<double, double, int, CSize, char const*>;
    Case const cases[] = {
        { 1355, 500, 300, { 16004, 5906 }, "1.563" },
        { 500, 2000, 300, { 5906, 23622 }, "1.563" },
        { 5080, 5080, 150, { 30000, 30000 }, ".781" },
    };
    for (auto const& [widthMm, heightMm, dotsPerInch, pixels, hairline] : cases) {
        auto const page = MakePageSurface({ PageFormat::Svg, widthMm, heightMm, "", "", 0 });
        DeviceCapabilities const& device = page->Capabilities();
        EXPECT_EQ(device.logPixelsX, dotsPerInch);
        EXPECT_EQ(device.logPixelsY, dotsPerInch);
        EXPECT_EQ(CSize(device.horzRes, device.vertRes), pixels);
        page->Polyline(std::array { CPoint(0, 0), CPoint(99, 9) }, {}, {});
        EXPECT_THAT(page->Finish(), HasSubstr(std::string("stroke-width=\"") + hairline));
    }
}

TEST(PageSurface, DenseCurvesMakeSmallDocuments)
{
    std::vector<CPoint> points;
    for (int i = 0; i < 40'000; ++i)
        points.push_back({ 300 + i / 10, 2000 + (i / 10) % 97 + i * 7 % 50 });
    Draw const draw = [&](Surface& page) { page.Stroke({ points, {} }, { { 0, 255 }, 6.0, {} }, false, {}); };
    EXPECT_LT(MakePage(PageFormat::Pdf, draw).size(), 100'000U);
    EXPECT_LT(MakePage(PageFormat::Svg, draw).size(), 100'000U);
}

TEST(PageSurface, AbsurdInputIsDrawnWithoutHarm)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    int const most = std::numeric_limits<int>::max();
    int const least = std::numeric_limits<int>::min();
    double const dashes[] = { nan, -1.0, 1e300 };
    CPoint const points[] = { { least, least }, { most, 50 }, { 70, most }, { 0, 0 } };
    std::size_t const starts[] = { 0, 9, 1, 2 };
    Raster const raster(3, 3, 1);
    LOGFONT const font = MakeFont(most, 900);
    COLORREF const black = 0;
    for (PageFormat const format : kFormats) {
        std::string const document = MakePage(format, [&](Surface& page) {
            for (double const width : { nan, -1.0, 1e300, 3.0 })
                page.Stroke({ points, starts }, { { 0, 255 }, width, dashes }, true, {});
            LineStyle const wide { 99, most, 0, black };
            page.Polyline(points, wide, {});
            page.Polyline({}, wide, {});
            page.Ellipse({ least, least, most, most }, &wide, &black, {});
            page.Arc({ least, 5, most, 9 }, { 0, 0 }, { 0, 0 }, wide, {});
            FillRect(page, { most, least, least, most }, 0, {});
            page.Fill(Region::FromPolygon(points, ALTERNATE), VectorBrush::Hatch(52, {}, {}), {});
            page.Text({ "X", { most, least }, &font, 0, black }, {});
            page.Image({ &raster, { least, least, most, most }, { least, least, most, most }, 77, 0, 1, 2 }, {});
            page.Image({ nullptr, {}, {}, SRCCOPY, 0, 0, 0 }, {});
        });
        EXPECT_GT(document.size(), 100U);
        EXPECT_EQ(document.find("nan"), std::string::npos);
    }
}

} // namespace
} // namespace ombrel
