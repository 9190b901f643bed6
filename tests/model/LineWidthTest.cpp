#include "ombrel/model/LineWidth.h"

#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/RecordingSurface.h"
#include "ombrel/platform/registry/Registry.h"
#include "ombrel/prefs/Preferences.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

namespace ombrel {
namespace {

class LineWidth : public testing::Test {
protected:
    LineWidth()
    {
        SetRegistryFile(m_file.string());
        CPreferences::SetGridThicknessScaleFac(2.0F);
    }
    ~LineWidth() override
    {
        SetRegistryFile("");
        std::filesystem::remove(m_file);
    }
    static CDC MakeDC(int across, int down, bool printing)
    {
        DeviceCapabilities capabilities;
        capabilities.logPixelsX = across;
        capabilities.logPixelsY = down;
        return CDC(std::make_shared<RecordingSurface>(CSize(100, 100), capabilities, printing));
    }

    std::filesystem::path m_file = testing::TempDir() + "/ombrel-lines-" + std::to_string(getpid());
};

TEST_F(LineWidth, FollowsTheCoarserResolutionAndIsAPixelAtLeast)
{
    CDC const screen = MakeDC(96, 96, false);
    EXPECT_EQ(DeviceLineWidth(screen, 2.5), 3);
    EXPECT_EQ(DeviceLineWidth(screen, 0.0), 1);
    EXPECT_EQ(DeviceLineWidth(screen, 1e9), 10000);
    EXPECT_EQ(DeviceLineWidth(MakeDC(600, 192, false), 2.0), 4);
    EXPECT_EQ(DeviceLineWidth(MakeDC(192, 600, false), 2.0), 4);
}

TEST_F(LineWidth, OfAPrintedLineFollowsThePreferenceOfItsKind)
{
    CDC const printer = MakeDC(600, 600, true);
    EXPECT_EQ(DeviceLineWidth(printer, 1.0, ThicknessKind::Curve), 6);
    EXPECT_EQ(DeviceLineWidth(printer, 1.0, ThicknessKind::Border), 3);
    EXPECT_EQ(DeviceLineWidth(printer, 1.0, ThicknessKind::Grid), 13);
    EXPECT_EQ(DeviceLineWidth(printer, 1.0), 6);
    EXPECT_EQ(DeviceLineWidth(MakeDC(600, 600, false), 1.0, ThicknessKind::Grid), 6);
}

TEST_F(LineWidth, StaysTheSameForOneDraw)
{
    CDC const printer = MakeDC(96, 96, true);
    auto const width = [&printer] { return DeviceLineWidth(printer, 10.0, ThicknessKind::Grid); };
    {
        PrintedLinesScope const draw;
        EXPECT_EQ(width(), 20);
        CPreferences::SetGridThicknessScaleFac(3.0F);
        EXPECT_EQ(width(), 20);
        {
            PrintedLinesScope const another;
            EXPECT_EQ(width(), 30);
        }
        EXPECT_EQ(width(), 20);
    }
    EXPECT_EQ(width(), 30);
}

} // namespace
} // namespace ombrel
