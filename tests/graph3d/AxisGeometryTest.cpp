#include "ombrel/graph3d/view/AxisGeometry.h"
#include "ombrel/graph3d/view/AxisTicks3D.h"
#include "ombrel/graph3d/view/LabelSpace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace ombrel {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

AxisGeometry Geometry(AxisType type, double azimuth, double elevation = 70.0)
{
    return AxisGeometry(type, ViewDirection(azimuth, elevation), { 1.0, 0.5, 0.25 });
}

void ExpectNear(CVertex const& v, double x, double y, double z, char const* what)
{
    EXPECT_NEAR(v.X(), x, 1e-6) << what;
    EXPECT_NEAR(v.Y(), y, 1e-6) << what;
    EXPECT_NEAR(v.Z(), z, 1e-6) << what;
}

TEST(AxisGeometry, PutsAxesOnTheEdgesThatTheViewShows)
{
    // The default view.
    ExpectNear(Geometry(atXAxis, 330.0).At(0.1), 0.1, -0.25, -0.125, "x");
    ExpectNear(Geometry(atYAxis, 330.0).At(0.1), 0.5, 0.1, -0.125, "y");
    ExpectNear(Geometry(atZAxis, 330.0).At(0.1), 0.5, 0.25, 0.1, "z");
    // From below, along the ceiling.
    ExpectNear(Geometry(atXAxis, 330.0, 90.0).At(0.1), 0.1, -0.25, 0.125, "x from below");
    struct Case {
        double azimuth;
        double yOfX, xOfY;
        double xOfZ, yOfZ;
        double tickX, tickY;
    };
    Case const cases[] = {
        { 10.0, 0.25, 0.5, 0.5, -0.25, 0.0, -1.0 },
        { 50.0, 0.25, 0.5, -0.5, 0.25, -1.0, 0.0 },
        { 100.0, 0.25, -0.5, 0.5, 0.25, 1.0, 0.0 },
        { 140.0, 0.25, -0.5, -0.5, -0.25, 0.0, -1.0 },
        { 190.0, -0.25, -0.5, -0.5, 0.25, 0.0, 1.0 },
        { 230.0, -0.25, -0.5, 0.5, -0.25, 1.0, 0.0 },
        { 280.0, -0.25, 0.5, -0.5, -0.25, -1.0, 0.0 },
        { 320.0, -0.25, 0.5, 0.5, 0.25, 0.0, 1.0 },
    };
    for (Case const& each : cases) {
        SCOPED_TRACE(each.azimuth);
        ExpectNear(Geometry(atXAxis, each.azimuth).At(0.0), 0.0, each.yOfX, -0.125, "x");
        ExpectNear(Geometry(atYAxis, each.azimuth).At(0.0), each.xOfY, 0.0, -0.125, "y");
        ExpectNear(Geometry(atZAxis, each.azimuth).At(0.0), each.xOfZ, each.yOfZ, 0.0, "z");
        ExpectNear(Geometry(atZAxis, each.azimuth).TickEnd({}, 2.0), 2.0 * each.tickX, 2.0 * each.tickY, 0.0, "tick");
    }
    ExpectNear(Geometry(atXAxis, 10.0).TickEnd({}, 2.0), 0.0, 0.0, -2.0, "tick from above");
    ExpectNear(Geometry(atYAxis, 10.0, 110.0).TickEnd({}, 2.0), 0.0, 0.0, 2.0, "tick from below");
}

// Offsets of labels 0.1 wide and 0.04 high from ticks 0.02 long. With azimuths 0, 90, 180 and 270 one of sine and
// cosine is 0 and the other ±1.
TEST(AxisGeometry, MovesLabelsAwayFromTheirTicks)
{
    struct Case {
        AxisType type;
        double azimuth, elevation;
        bool horizontal;
        double x, y, z;
    };
    Case const cases[] = {
        { atXAxis, 0.0, 70.0, true, 0.0, 0.08, -0.04 },
        { atXAxis, 0.0, 110.0, true, 0.0, 0.08, 0.04 },
        { atXAxis, 90.0, 70.0, true, 0.0, 0.05, -0.04 },
        { atXAxis, 180.0, 70.0, true, 0.0, -0.08, -0.04 },
        { atXAxis, 270.0, 70.0, true, 0.0, -0.05, -0.04 },
        { atYAxis, 0.0, 70.0, true, 0.05, 0.0, -0.04 },
        { atYAxis, 90.0, 70.0, true, -0.08, 0.0, -0.04 },
        { atYAxis, 180.0, 70.0, true, -0.05, 0.0, -0.04 },
        { atYAxis, 270.0, 70.0, true, 0.08, 0.0, -0.04 },
        { atXAxis, 0.0, 70.0, false, 0.0, 0.03, -0.02 },
        { atXAxis, 0.0, 110.0, false, 0.0, 0.03, 0.12 },
        { atXAxis, 90.0, 70.0, false, 0.02, 0.03, -0.02 },
        { atXAxis, 180.0, 70.0, false, 0.0, -0.03, -0.02 },
        { atXAxis, 270.0, 70.0, false, -0.02, -0.03, -0.02 },
        { atYAxis, 0.0, 110.0, false, 0.015, -0.02, 0.12 },
        { atYAxis, 90.0, 110.0, false, -0.015, 0.0, 0.02 },
        { atYAxis, 180.0, 70.0, false, -0.015, 0.02, -0.02 },
        { atYAxis, 270.0, 70.0, false, 0.015, 0.0, -0.02 },
        // Half the width and two and a half ticks, across the line of sight.
        { atZAxis, 0.0, 70.0, true, 0.0, -0.1, 0.0 },
        { atZAxis, 90.0, 70.0, false, 0.1, 0.0, 0.0 },
    };
    for (Case const& each : cases) {
        CVertex const offset
            = Geometry(each.type, each.azimuth, each.elevation).LabelOffset(0.02, 0.1, 0.04, each.horizontal);
        SCOPED_TRACE(testing::Message() << "axis " << each.type << " azimuth " << each.azimuth);
        ExpectNear(offset, each.x, each.y, each.z, each.horizontal ? "horizontal" : "vertical");
    }
    // Odd octants go to the other side. sin 60° = cos 30° = 0.8660254.
    ExpectNear(Geometry(atZAxis, 60.0).LabelOffset(0.02, 0.1, 0.04, true), -0.0866025, 0.05, 0.0, "z");
}

// Titles 0.1 wide beside labels up to 0.2 wide, where a tick and a half is 0.03.
TEST(AxisGeometry, MovesTitlesAwayFromTheWidestLabel)
{
    struct Case {
        AxisType type;
        double azimuth, elevation;
        bool horizontal;
        double x, y, z;
    };
    Case const cases[] = {
        { atXAxis, 0.0, 70.0, true, 0.0, 0.43, -0.06 },
        { atXAxis, 90.0, 110.0, true, 0.0, 0.045, 0.06 },
        { atXAxis, 180.0, 70.0, true, 0.0, -0.445, -0.06 },
        { atXAxis, 270.0, 70.0, true, 0.0, -0.045, -0.06 },
        { atYAxis, 0.0, 70.0, true, 0.045, 0.0, -0.06 },
        { atYAxis, 90.0, 70.0, true, -0.445, 0.0, -0.06 },
        { atYAxis, 180.0, 70.0, true, -0.045, 0.0, -0.06 },
        { atYAxis, 270.0, 70.0, true, 0.445, 0.0, -0.06 },
        { atZAxis, 0.0, 70.0, true, 0.0, -0.18, 0.0 },
        { atZAxis, 0.0, 70.0, false, 0.0, -0.16, 0.0 },
    };
    for (Case const& each : cases) {
        CVertex const offset
            = Geometry(each.type, each.azimuth, each.elevation).TitleOffset(0.03, 0.2, 0.1, each.horizontal);
        SCOPED_TRACE(testing::Message() << "axis " << each.type << " azimuth " << each.azimuth);
        ExpectNear(offset, each.x, each.y, each.z, "title");
    }
    ExpectNear(Geometry(atZAxis, 60.0).TitleOffset(0.03, 0.2, 0.1, false), -0.1125833, 0.065, 0.0, "odd octant");
}

std::vector<double> Values(Ticks3D const& ticks)
{
    std::vector<double> values;
    for (Tick3D const& tick : ticks.major)
        values.push_back(tick.value);
    return values;
}

TickSettings3D Settings(C3DAxis::TickMode mode, double min, double max)
{
    TickSettings3D settings;
    settings.mode = mode;
    settings.min = min;
    settings.max = max;
    settings.numTicks = 3;
    settings.tickMin = 0.25;
    settings.tickDel = 1.0;
    return settings;
}

auto Near(double v) { return DoubleNear(v, 1e-12); }

TEST(AxisTicks3D, StandWhereTheModeSays)
{
    using enum C3DAxis::TickMode;
    EXPECT_THAT(Values(MakeTicks(Settings(tmNone, 0.0, 3.0))), IsEmpty());
    EXPECT_THAT(Values(MakeTicks(Settings(tmDivisions, 0.0, 3.0))), ElementsAre(0.0, 1.5, 3.0));
    EXPECT_THAT(Values(MakeTicks(Settings(tmStep, 0.0, 3.0))), ElementsAre(0.25, 1.25, 2.25));
    TickSettings3D far = Settings(tmStep, 0.0, 3.0);
    far.tickMin = 12.5;
    EXPECT_THAT(Values(MakeTicks(far)), ElementsAre(0.5, 1.5, 2.5));
    // Neither end is lost to rounding, and zero is zero.
    TickSettings3D tenths = Settings(tmStep, -0.3, 0.3);
    tenths.tickMin = -0.3;
    tenths.tickDel = 0.1;
    EXPECT_THAT(Values(MakeTicks(tenths)), ElementsAre(-0.3, Near(-0.2), Near(-0.1), 0.0, Near(0.1), Near(0.2), 0.3));
}

TEST(AxisTicks3D, MixArbitraryOnesInAndDivideTheOthers)
{
    using enum C3DAxis::TickMode;
    double const arbitrary[] = { 2.0, kNaN, 0.5 };
    for (C3DAxis::TickMode const mode : { tmNone, tmDivisions, tmStep, tmArbitrary, tmDivisionsArbitrary }) {
        TickSettings3D settings = Settings(mode, 0.0, 3.0);
        settings.arbitrary = arbitrary;
        settings.numMinorDivs = 2;
        Ticks3D const ticks = MakeTicks(settings);
        bool const mixes = mode >= tmArbitrary;
        EXPECT_EQ(std::ranges::count_if(ticks.major, &Tick3D::isArbitrary), mixes ? 2 : 0) << mode;
        EXPECT_TRUE(std::ranges::is_sorted(Values(ticks))) << mode;
    }
    TickSettings3D settings = Settings(tmDivisionsArbitrary, 3.0, 0.0);
    settings.arbitrary = arbitrary;
    settings.numMinorDivs = 3;
    Ticks3D const ticks = MakeTicks(settings);
    // Backwards on an axis that runs so. The first minor tick of each part lies on the major one.
    EXPECT_THAT(Values(ticks), ElementsAre(3.0, 2.0, 1.5, 0.5, 0.0));
    EXPECT_THAT(ticks.minor, ElementsAre(3.0, 2.5, 2.0, 1.5, 1.0, 0.5));
}

TEST(AxisTicks3D, AreNoneRatherThanEndless)
{
    using enum C3DAxis::TickMode;
    struct Case {
        double min, max;
        int numTicks;
        int minor;
        double tickMin, tickDel;
    };
    constexpr int kMost = std::numeric_limits<int>::max();
    Case const cases[] = {
        { 0.0, 1.0, kMost, kMost, 0.0, 1e-300 },
        { 0.0, 1.0, 1, 0, 0.0, 0.0 },
        { 0.0, 1.0, 0, 0, 0.0, -1.0 },
        { 0.0, 1.0, std::numeric_limits<int>::min(), 0, 1e300, 1e-3 },
        { kNaN, 1.0, 5, 0, kNaN, 1.0 },
        { -1.7e308, 1.7e308, 5, 0, 0.0, kNaN },
    };
    for (Case const& each : cases) {
        TickSettings3D settings = Settings(tmDivisions, each.min, each.max);
        settings.numTicks = each.numTicks;
        settings.numMinorDivs = each.minor;
        settings.tickMin = each.tickMin;
        settings.tickDel = each.tickDel;
        EXPECT_THAT(MakeTicks(settings).major, IsEmpty()) << each.numTicks;
        settings.mode = tmStep;
        EXPECT_THAT(MakeTicks(settings).major, IsEmpty()) << each.tickDel;
    }
    TickSettings3D many = Settings(tmDivisions, 0.0, 1.0);
    many.numMinorDivs = kMost;
    EXPECT_THAT(MakeTicks(many).minor, IsEmpty());
}

TEST(LabelSpace, FindsTheWayOutOfTheBoxAndOfOtherLabels)
{
    // A box that shows as a square standing on a corner.
    PicturePoint const corners[] = { { 50, 0 }, { 100, 50 }, { 50, 100 }, { 0, 50 }, { 50, 50 } };
    LabelSpace space({ 0, 0, 200, 200 }, corners);
    EXPECT_TRUE(space.MeetsBox({ 40, 40, 60, 60 }));
    EXPECT_FALSE(space.MeetsBox({ 0, 0, 20, 20 }));
    EXPECT_TRUE(space.MeetsBox({ 0, 0, 30, 30 }));
    EXPECT_FALSE(space.MeetsBox({ 100, 40, 120, 60 }));
    EXPECT_TRUE(space.MeetsBox({ -10, -10, 210, 210 }));
    EXPECT_TRUE(space.IsInPicture({ 0, 0, 200, 200 }));
    EXPECT_FALSE(space.IsInPicture({ 0, 0, 201, 200 }));

    // Away from the lower right side.
    PicturePoint const out = space.Outwards({ 100, 50 }, { 50, 100 });
    EXPECT_NEAR(out.x, std::sqrt(0.5), 1e-9);
    EXPECT_NEAR(out.y, std::sqrt(0.5), 1e-9);
    CRect const label(70, 70, 80, 80);
    std::optional<CPoint> const way = space.WayOut(label, out, LabelSpace::Clear::OfAll, 100);
    ASSERT_TRUE(way);
    // Its upper left corner comes to x + y = 150.
    EXPECT_EQ(*way, CPoint(5, 5));
    EXPECT_FALSE(space.WayOut(label, out, LabelSpace::Clear::OfAll, 3));
    space.Take({ 75, 75, 85, 85 });
    EXPECT_EQ(space.WayOut(label, out, LabelSpace::Clear::OfAll, 100), CPoint(15, 15));
    EXPECT_EQ(space.WayOut(label, out, LabelSpace::Clear::OfBox, 100), CPoint(5, 5));
    // A line that is seen from its end.
    EXPECT_NEAR(space.Outwards({ 100, 50 }, { 100, 50 }).x, 1.0, 1e-9);
    // Without an outline nothing is in the way.
    EXPECT_TRUE(LabelSpace({ 0, 0, 9, 9 }, {}).IsFree({ 1, 1, 2, 2 }));
    PicturePoint const none = LabelSpace().Outwards({ 0, 0 }, { 0, 0 });
    EXPECT_EQ(none.y, 1.0);
}

} // namespace
} // namespace ombrel
