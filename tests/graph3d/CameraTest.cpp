#include "ombrel/graph3d/view/Camera.h"
#include "ombrel/graph3d/view/ViewDirection.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

namespace ombrel {
namespace {

constexpr double kDegrees = 3.14159265358979323846 / 180.0;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

ViewSettings View(double azimuth, double elevation)
{
    ViewSettings settings;
    settings.azimuth = azimuth;
    settings.elevation = elevation;
    settings.viewportSize = { 200, 200 };
    return settings;
}

TEST(Camera, StandsAsFarAndSeesAsMuchAsPerspectiveZoomAndShapeSay)
{
    struct Case {
        double perspective, zoom, aspect;
        double distance, nearPlane, farPlane, field;
    };
    double const field = 2.6 * std::atan(0.7 / 6.0) / kDegrees;
    Case const cases[] = {
        { 0.5, 1.0, 1.0, 6.0, 4.0, 8.0, 17.3015 },
        { 0.0, 1.0, 1.0, 10.5, 8.5, 12.5, 2.6 * std::atan(0.7 / 10.5) / kDegrees },
        { 0.5, 2.0, 1.0, 6.0, 4.0, 8.0, field / 2.0 },
        { 0.5, 1.0, 2.0, 6.0, 4.0, 8.0, field },
        { 0.5, 1.0, 0.5, 6.0, 4.0, 8.0, field * 2.0 },
        // The near plane stays before the eye.
        { 1.0, 1.0, 1.0, 1.5, 0.25, 3.5, 2.6 * std::atan(0.7 / 1.5) / kDegrees },
        // What makes no picture counts as the nearest that does.
        { 7.0, 1.0, 1.0, 1.5, 0.25, 3.5, 2.6 * std::atan(0.7 / 1.5) / kDegrees },
        { kNaN, 0.0, 0.0, 6.0, 4.0, 8.0, field },
        { 0.5, -3.0, kNaN, 6.0, 4.0, 8.0, field },
        { 0.5, 1e-30, 1.0, 6.0, 4.0, 8.0, 175.0 },
    };
    for (Case const& each : cases) {
        ViewSettings settings = View(330.0, 70.0);
        settings.perspective = each.perspective;
        settings.zoom = each.zoom;
        settings.aspectRatio = each.aspect;
        Camera const camera(settings);
        EXPECT_DOUBLE_EQ(camera.EyeDistance(), each.distance);
        EXPECT_DOUBLE_EQ(camera.Near(), each.nearPlane);
        EXPECT_DOUBLE_EQ(camera.Far(), each.farPlane);
        EXPECT_NEAR(camera.FieldOfView(), each.field, 5e-5) << each.perspective << " " << each.zoom;
    }
}

TEST(Camera, ProjectsTheCornersOfTheBox)
{
    // From the eye, at distance 6, half the picture's height is seen under half the field of view.
    double const t = std::tan(1.3 * std::atan(0.7 / 6.0));
    auto const seen = [t](double across, double depth) { return 100.0 + 100.0 * across / (depth * t); };
    for (int i = 0; i < 8; ++i) {
        double const x = i & 1 ? 0.5 : -0.5;
        double const y = i & 2 ? 0.5 : -0.5;
        double const z = i & 4 ? 0.5 : -0.5;
        struct Case {
            double azimuth, elevation;
            double windowX, windowY;
        };
        Case const cases[] = {
            // Straight down, x to the right.
            { 270.0, 0.0, seen(x, 6.0 - z), seen(y, 6.0 - z) },
            // Along y, and along −x; z goes up.
            { 270.0, 90.0, seen(x, 6.0 + y), seen(z, 6.0 + y) },
            { 0.0, 90.0, seen(y, 6.0 - x), seen(z, 6.0 - x) },
            { 720.0, 90.0, seen(y, 6.0 - x), seen(z, 6.0 - x) },
            // From below.
            { 270.0, 180.0, seen(x, 6.0 + z), seen(-y, 6.0 + z) },
        };
        for (Case const& each : cases) {
            std::optional<CVertex> const window = Camera(View(each.azimuth, each.elevation)).Project({ x, y, z });
            ASSERT_TRUE(window);
            EXPECT_NEAR(window->X(), each.windowX, 1e-9) << each.azimuth << " " << each.elevation;
            EXPECT_NEAR(window->Y(), each.windowY, 1e-9) << each.azimuth << " " << each.elevation;
        }
    }
    // The first view of every graph: turned by −60° about z, then tilted by −70° about x.
    std::optional<CVertex> const corner = Camera(View(330.0, 70.0)).Project({ 0.5, -0.5, 0.5 });
    double const right = 0.5 * 0.5 - 0.5 * std::sqrt(0.75);
    double const back = -0.5 * std::sqrt(0.75) - 0.5 * 0.5;
    double const c = std::cos(70 * kDegrees);
    double const s = std::sin(70 * kDegrees);
    ASSERT_TRUE(corner);
    EXPECT_NEAR(corner->X(), seen(right, 6.0 + s * back - c * 0.5), 1e-9);
    EXPECT_NEAR(corner->Y(), seen(c * back + s * 0.5, 6.0 + s * back - c * 0.5), 1e-9);
}

TEST(Camera, MovesThePictureByFractionsOfAPixelAndByTheViewsPosition)
{
    ViewSettings settings = View(270.0, 0.0);
    settings.viewportOrigin = { 30, 40 };
    CVertex const still = *Camera(settings).Project({ 0.3, 0.2, 0.1 });
    settings.jitterX = 0.25;
    settings.jitterY = 0.75;
    CVertex const moved = *Camera(settings).Project({ 0.3, 0.2, 0.1 });
    EXPECT_NEAR(moved.X() - still.X(), 0.25, 1e-9);
    EXPECT_NEAR(moved.Y() - still.Y(), 0.75, 1e-9);
    settings = View(270.0, 0.0);
    settings.xPos = 0.3;
    settings.yPos = -0.4;
    CVertex const shifted = *Camera(settings).Project({ -0.3, 0.4, 0.0 });
    EXPECT_NEAR(shifted.X(), 100.0, 1e-9);
    EXPECT_NEAR(shifted.Y(), 100.0, 1e-9);
}

TEST(Camera, FindsTheWayBackFromThePicture)
{
    ViewSettings settings = View(123.0, 57.0);
    settings.xPos = 0.1;
    settings.jitterX = 0.4;
    settings.aspectRatio = 1.5;
    for (Camera const& camera : { Camera(settings), Camera::WithoutPerspective(40.0, 110.0) }) {
        CVertex const point(0.3, -0.2, 0.45);
        std::optional<CVertex> const back = camera.Unproject(*camera.Project(point));
        ASSERT_TRUE(back);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR((*back)[i], point[i], 1e-9);
        EXPECT_NEAR(camera.GetDepthOf()(point.X(), point.Y(), point.Z()), camera.Project(point)->Z(), 1e-12);
    }
    EXPECT_EQ(Camera(View(270.0, 0.0)).GetDepthOf()(0.0, 0.0, 7.0), 0.0);
    // What lies behind the eye is not in the picture.
    EXPECT_FALSE(Camera(View(270.0, 0.0)).Project({ 0.0, 0.0, 7.0 }));
}

TEST(Camera, KnowsWhereTheEyeIs)
{
    for (auto const& [azimuth, elevation] :
        std::vector<std::pair<double, double>> { { 330, 70 }, { 45, 10 }, { 200, 130 } }) {
        ViewSettings settings = View(azimuth, elevation);
        settings.xPos = 0.3;
        settings.yPos = -0.2;
        Camera const camera(settings);
        // What is seen under one pixel lies on one line with the eye.
        for (CPoint const pixel : { CPoint(20, 30), CPoint(150, 90) }) {
            CVertex const near = *camera.Unproject(CVertex(pixel.x, pixel.y, 0.1));
            CVertex const far = *camera.Unproject(CVertex(pixel.x, pixel.y, 0.9));
            CVertex const ray = far - near;
            CVertex const back = camera.GetEye() - near;
            EXPECT_NEAR(ray.X() * back.Y(), ray.Y() * back.X(), 1e-9);
            EXPECT_NEAR(ray.Y() * back.Z(), ray.Z() * back.Y(), 1e-9);
            EXPECT_LT(ray.X() * back.X() + ray.Y() * back.Y() + ray.Z() * back.Z(), 0.0);
        }
    }
}

TEST(ViewDirection, CountsQuadrantsAndOctantsOfAnyAngle)
{
    struct Case {
        double azimuth, elevation;
        int quadrant, octant, level;
    };
    Case const cases[]
        = { { 330.0, 70.0, 3, 7, 0 }, { 0.0, 90.0, 0, 0, 1 }, { 45.0, 89.9, 0, 1, 0 }, { 359.9, 0.0, 3, 7, 0 },
              { -1.0, 0.0, 3, 7, 0 }, { 1e300, 0.0, -1, -1, 0 }, { kNaN, kNaN, 0, 0, 0 }, { -1e-20, 0.0, 3, 7, 0 } };
    for (Case const& each : cases) {
        ViewDirection const view(each.azimuth, each.elevation);
        EXPECT_EQ(view.level, each.level);
        ASSERT_GE(view.octant, 0);
        ASSERT_LE(view.octant, 7);
        EXPECT_EQ(view.quadrant, view.octant / 2);
        if (each.octant >= 0) {
            EXPECT_EQ(view.octant, each.octant) << each.azimuth;
        }
    }
}

} // namespace
} // namespace ombrel
