#include "tests/platform/gdi/Recorded.h"

#include <functional>
#include <gtest/gtest.h>

namespace ombrel {
namespace {

CPoint const kLine[] = { { 1, 2 }, { 3, 4 } };
CPoint const kOtherLine[] = { { 1, 2 }, { 3, 5 } };

RecordedPrimitive Record(std::function<void(Surface&)> const& draw)
{
    RecordingSurface surface({ 100, 100 });
    draw(surface);
    return surface.Primitives().at(0);
}

TEST(RecordingSurface, EqualityIsThatOfWhatIsDrawn)
{
    Raster black(4, 4, 24);
    Raster dotted(4, 4, 24);
    dotted.Row(1)[2] = 0xFF;
    LOGFONT font;
    LOGFONT bold;
    bold.lfWeight = 700;
    double const dashes[] = { 8, 2 };
    double const otherDashes[] = { 8, 3 };
    Clip clip;
    clip.region = std::make_shared<Region>(Region::FromRect({ 0, 0, 9, 9 }));
    Clip equalClip;
    equalClip.region = std::make_shared<Region>(Region::FromRect({ 0, 0, 9, 9 }));
    auto const image = [](Surface& s, Raster const& source) {
        s.Image({ &source, { 0, 0, 4, 4 }, { 0, 0, 4, 4 }, SRCCOPY, 0, 0xFFFFFF, 0xFFFFFF }, {});
    };
    auto const pen = [](std::span<double const> d) { return VectorPen { { 0, 255 }, 2.0, d }; };
    std::function<void(Surface&)> const different[] = {
        [](Surface& s) { s.Polyline(kLine, {}, {}); },
        [](Surface& s) { s.Polyline(kOtherLine, {}, {}); },
        [](Surface& s) {
            s.Polyline(kLine, { PS_DOT, 1, 0, {} }, {});
        },
        [](Surface& s) {
            s.Polyline(kLine, { PS_DOT, 1, 0, 0xFFFFFF }, {});
        },
        [&](Surface& s) { s.Polyline(kLine, {}, clip); },
        [&](Surface& s) {
            s.Stroke({ kLine, {} }, pen({}), false, {});
        },
        [&](Surface& s) {
            s.Stroke({ kLine, {} }, pen({}), true, {});
        },
        [&](Surface& s) {
            s.Stroke({ kLine, {} }, pen(dashes), false, {});
        },
        [&](Surface& s) {
            s.Stroke({ kLine, {} }, pen(otherDashes), false, {});
        },
        [&](Surface& s) {
            s.Text({ "a", { 1, 1 }, &font, 0, {} }, {});
        },
        [&](Surface& s) {
            s.Text({ "a", { 1, 1 }, &bold, 0, {} }, {});
        },
        [&](Surface& s) {
            s.Text({ "a", { 1, 1 }, &font, 0, 0 }, {});
        },
        [&](Surface& s) { image(s, black); },
        [&](Surface& s) { image(s, dotted); },
        [](Surface& s) {
            s.Fill(Region::FromRect({ 0, 0, 5, 5 }), VectorBrush::Solid(0), {});
        },
        [](Surface& s) {
            s.Fill(Region::FromRect({ 0, 0, 5, 5 }), VectorBrush::Hatch(3, {}, {}), {});
        },
        [](Surface& s) { s.Fill(Region::FromPolygon(kLine, WINDING), VectorBrush::Solid(0), {}); },
    };
    for (std::size_t i = 0; i < std::size(different); ++i)
        for (std::size_t k = 0; k < std::size(different); ++k)
            EXPECT_EQ(Record(different[i]) == Record(different[k]), i == k) << i << " and " << k;
    EXPECT_TRUE(Record([&](Surface& s) { s.Polyline(kLine, {}, clip); })
        == Record([&](Surface& s) { s.Polyline(kLine, {}, equalClip); }));
}

TEST(RecordingSurface, DashesOutliveThePenThatDrewThem)
{
    RecordingSurface surface({ 100, 100 });
    {
        std::vector<double> dashes { 3, 1 };
        surface.Stroke({ kLine, {} }, { { 0, 255 }, 2.0, dashes }, false, {});
        dashes.assign(2, 99.0);
    }
    std::vector<RecordedPrimitive> const copies = surface.Primitives();
    surface.Clear();
    EXPECT_EQ(test::OfKind<primitive::Stroke>(copies).at(0).pen.dashes, (std::vector<double> { 3, 1 }));
}

} // namespace
} // namespace ombrel
