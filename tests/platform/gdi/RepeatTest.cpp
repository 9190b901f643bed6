#include "tests/platform/gdi/Picture.h"
#include "tests/platform/gdi/Recorded.h"

#include <gtest/gtest.h>
#include <random>

namespace ombrel {
namespace {

using Draw = std::function<void(CDC&)>;

/// Marks as symbols have them, filled and open, small and wide, and some that cannot be drawn ahead.
std::vector<Draw> Marks()
{
    auto const circle = [](int half) {
        return [half](CDC& dc) {
            CRect const box(1 - half, 1 - half, half, half);
            dc.Ellipse(box);
            dc.Arc(box, box.TopLeft(), box.BottomRight());
            dc.Arc(box, box.BottomRight(), box.TopLeft());
        };
    };
    auto const polygon = [](std::vector<CPoint> corners) {
        return [corners](CDC& dc) {
            CRgn region;
            region.CreatePolygonRgn(corners, ALTERNATE);
            dc.PaintRgn(&region);
            dc.Polyline(corners);
        };
    };
    return { circle(2), circle(5), circle(31), circle(33), circle(70),
        polygon({ { -4, -4 }, { 4, -4 }, { 4, 4 }, { -4, 4 }, { -4, -4 } }),
        polygon({ { -9, -9 }, { 0, 9 }, { 9, -9 }, { -9, -9 } }),
        polygon({ { 40, 20 }, { 60, 40 }, { 47, 30 }, { 40, 20 } }), [](CDC& dc) { dc.SetPixel(0, 0, kPenColour); },
        [](CDC& dc) { dc.LineTo(-6, 3); },
        [](CDC& dc) {
            dc.FillSolidRect({ -3, -2, 2, 5 }, kPenColour);
            dc.FillSolidRect({ -1, -1, 1, 2 }, RGB(0, 0, 255));
            dc.FillSolidRect({ 0, 0, 9, 1 }, kBrushColour);
        },
        [](CDC& dc) {
            VectorGraphics(dc).FillRectangle(VectorBrush::Hatch(4, { 0, 255 }, { 0, 90 }), 0, 0, 9, 9);
        },
        [](CDC& dc) { dc.TextOut(0, 0, "m"); }, [](CDC&) {} };
}

/// Crowded, some twice and some beyond the edges.
std::vector<CPoint> Points(unsigned count)
{
    std::mt19937 random(count);
    std::vector<CPoint> points;
    while (points.size() < count) {
        CPoint const p(static_cast<int>(random() % 260) - 30, static_cast<int>(random() % 190) - 30);
        points.insert(points.end(), 1 + random() % 2, p);
    }
    points.push_back({ 1 << 30, -(1 << 30) });
    return points;
}

TEST(Repeat, DrawsThePixelsOfMarksDrawnOneAfterTheOther)
{
    struct Setting {
        int bitsPerPixel;
        int penWidth;
        int penStyle;
        unsigned points;
        std::vector<CPoint> clip;
    };
    for (Setting const& s :
        { Setting { 32, 1, PS_SOLID, 400, {} }, Setting { 24, 3, PS_SOLID, 150, {} },
            Setting { 1, 1, PS_SOLID, 100, {} }, Setting { 24, 1, PS_DOT, 3000, {} }, Setting { 24, 1, PS_NULL, 5, {} },
            Setting { 24, 1, PS_SOLID, 300, { { 20, 30 }, { 130, 30 }, { 130, 90 }, { 20, 90 } } },
            Setting { 24, 1, PS_SOLID, 300, { { 100, 4 }, { 190, 60 }, { 100, 120 }, { 4, 60 } } } }) {
        std::vector<CPoint> const points = Points(s.points);
        std::size_t index = 0;
        for (Draw const& draw : Marks()) {
            auto const drawn = [&](auto&& repeat) {
                auto picture = std::make_unique<Picture>(200, 130, s.bitsPerPixel);
                picture->UsePen(s.penStyle, s.penWidth);
                CRgn region;
                region.CreatePolygonRgn(s.clip, WINDING);
                if (!s.clip.empty())
                    picture->DC().SelectClipRgn(&region);
                picture->DC().SetViewportOrg(2, -1);
                repeat(picture->DC());
                return picture;
            };
            auto const fast = drawn([&](CDC& dc) { dc.Repeat(draw, points); });
            auto const plain = drawn([&](CDC& dc) {
                for (CPoint const& p : points) {
                    dc.SetViewportOrg(2 + p.x, p.y - 1);
                    dc.MoveTo(0, 0);
                    draw(dc);
                }
            });
            int different = 0;
            for (int y = 0; y < 130; ++y)
                for (int x = 0; x < 200; ++x)
                    different += fast->Pixel(x, y) != plain->Pixel(x, y);
            EXPECT_EQ(different, 0) << "mark " << index << ", " << s.bitsPerPixel << " bits, pen " << s.penStyle << '/'
                                    << s.penWidth << ", clip " << s.clip.size();
            ++index;
        }
    }
}

TEST(Repeat, RecordsEveryPrimitiveAtEveryPoint)
{
    auto const surface = std::make_shared<RecordingSurface>(CSize(100, 100));
    CDC dc(surface);
    dc.Repeat(
        [](CDC& once) {
            once.Ellipse({ -2, -2, 2, 2 });
            once.TextOut(1, 1, "a");
        },
        std::vector<CPoint> { { 10, 20 }, { 30, 40 } });
    EXPECT_EQ(test::Dump(surface->Primitives()),
        "ellipse [8,18 12,22] pen=#000000/1/solid fill=#ffffff\n"
        "text 11,21 \"a\" #000000 font=System/16/w700 cell=#ffffff\n"
        "ellipse [28,38 32,42] pen=#000000/1/solid fill=#ffffff\n"
        "text 31,41 \"a\" #000000 font=System/16/w700 cell=#ffffff\n");
}

} // namespace
} // namespace ombrel
