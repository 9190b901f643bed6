#include "ombrel/io/ScanTestHeader.h"
#include "tests/io/DataFile.h"
#include "tests/model/ArchiveBytes.h"

#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Bytes;
using test::DataFile;
using test::Load;
using test::Stored;

CScanTestHeader Read(std::string const& text)
{
    DataFile const data("disk7.dat", text);
    CStdioFile file(data.GetPath(), CFile::modeRead);
    CScanTestHeader header;
    header.Read(file);
    return header;
}

constexpr char kWhole[] = "  Station Number: 12 \r\n"
                          "Test Name:\tGlide: slow\n"
                          "\n"
                          "Comment: Gain was 3 before\n"
                          "Date: 1/2/1997 10:30\n"
                          "Gain: 4x\n"
                          "Sectors: 64\n"
                          "Head: Up\n"
                          "Priority: low\n"
                          "Unload on retrace: YES\n"
                          "Track Size: -5\n"
                          "Speed Mode: rpm\n"
                          "Fly Height on: yEs\n"
                          "Data File Number: 9\n"
                          "Mode: scan\n"
                          "Revs per track: 2\n"
                          "Abort Voltage: 1.5e1\n"
                          "Abort Count: 7\n"
                          "Minimum Display Voltage: -0.25\n"
                          "Speeds: 3600 5400\n"
                          "Zone Count: 3\n"
                          "Radii: 1.2\t3.4\n"
                          "Weather: fair\n"
                          "Now Start Test at once\n"
                          "Gain: 99\n";

Bytes WholeBytes(int version)
{
    Bytes bytes;
    bytes.Int(version).Text("disk7.dat").Text("12").Int(12).Text("Glide: slow").Text("Gain was 3 before");
    bytes.Text("1/2/1997 10:30").Text("4x").Int(4).Text("64").Int(64).Texts("Up", "low").Text("YES").Int(1);
    bytes.Text("-5").Int(-5).Text("rpm").Text("yEs").Int(1).Text("9").Int(9).Text("2").Int(2).Text("scan");
    bytes.Text("1.5e1").Double(15).Text("7").Int(7).Text("-0.25").Double(-0.25).Text("3600 5400").Double(3600, 5400, 0);
    bytes.Text("3").Int(3).Text("1.2\t3.4").Double(1.2, 3.4).Int(1).Double(0, 0).Int(1);
    if (version >= 2)
        bytes.Double(0, 0);
    return bytes;
}

TEST(ScanTestHeader, EveryLineGoesToTheFirstItemWhoseNameItHolds)
{
    CScanTestHeader header = Read(kWhole);
    EXPECT_EQ(Stored(header), WholeBytes(2)) << "texts and numbers, up to the line with Start Test";
    EXPECT_EQ(header.GetStationNumber(), 12);
    EXPECT_EQ(header.GetFileNumber(), 9);
    EXPECT_EQ(header.GetGain(), 4);
    EXPECT_EQ(header.GetSectorsPerRev(), 64);
    EXPECT_EQ(header.GetRevsPerTrack(), 2);
    EXPECT_EQ(header.GetTrackSize(), -5);
}

TEST(ScanTestHeader, WhatIsNoValueLeavesItsNumbersAlone)
{
    // The second line of each pair does not fit; its text is kept all the same.
    ScanTestItems const items = Read("Fly Height: yes\nFly Height: on\nUnload\n"
                                     "Radii: 1 2\nRadii: 5\n"
                                     "Speed: 1 2 3 4\nSpeed: fast 7\n"
                                     "Abort Voltage: 3\nAbort Voltage: high\n"
                                     "Gain: 3\nGain: loud")
                                    .GetItems();
    EXPECT_EQ(items.flyHeight.value, 1);
    EXPECT_EQ(items.flyHeight.text, "on");
    EXPECT_EQ(items.unloadOnRetrace.value, 0);
    EXPECT_EQ(items.unloadOnRetrace.text, "Unload") << "a line without a colon is its own value";
    EXPECT_THAT(items.radii.value, testing::ElementsAre(1, 2));
    EXPECT_EQ(items.radii.text, "5");
    EXPECT_THAT(items.speeds.value, testing::ElementsAre(1, 7, 3));
    EXPECT_EQ(items.abortVoltage.value, 3);
    EXPECT_EQ(items.gain.value, 0) << "whole numbers become 0 instead";
}

TEST(ScanTestHeader, ArchivesOfTheFirstVersionKeepTheLastTwoNumbers)
{
    Bytes bytes = WholeBytes(1);
    bytes.Double(6, 7);
    std::vector<std::byte> second = bytes.Get();
    second[0] = std::byte { 2 };
    CScanTestHeader header;
    ASSERT_TRUE(Load(header, Bytes::Of(second)));
    CScanTestHeader copy;
    copy = header;
    ASSERT_TRUE(Load(copy, WholeBytes(1)));
    EXPECT_EQ(Stored(copy).Get(), second);
}

} // namespace
} // namespace ombrel
