#include "ombrel/io/USGSDEM.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/host/Host.h"
#include "tests/io/DataFile.h"
#include "tests/model/ArchiveBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <numeric>

namespace ombrel {
namespace {

using test::Bytes;
using test::DataFile;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;

std::string Right(std::string const& text, std::size_t width)
{
    return text.size() >= width ? text : std::string(width - text.size(), ' ') + text;
}

struct Profile {
    /// Northing of the first elevation.
    double northing = 0;
    /// As they stand in the file; the profile announces as many.
    std::vector<std::string> elevations {};
};

std::vector<std::string> Texts(std::vector<int> const& values)
{
    std::vector<std::string> texts;
    for (int const v : values)
        texts.push_back(std::to_string(v));
    return texts;
}

/// An elevation model in 1024 characters a record.
struct Model {
    Model()
    {
        Put(1, "HILL");
        for (unsigned const one : { 145U, 151U, 157U, 541U })
            Number(one, 1);
        Number(529, 2);
        Number(535, 2);
        Corners(4000020, 4000110);
        Put(817, "3.000000E+01");
        Put(829, "3.000000E+01");
        Put(841, "1.000000E+00");
        Number(853, 1);
    }
    void Put(std::size_t column, std::string const& text) { head.replace(column - 1, text.size(), text); }
    /// Six characters wide.
    void Number(std::size_t column, int value) { Put(column, Right(std::to_string(value), 6)); }
    static std::string Real(double value)
    {
        char text[40];
        std::snprintf(text, sizeof text, "%24.15E", value);
        std::string real = text;
        return real.replace(real.find('E'), 1, "D");
    }
    void Corners(double south, double north)
    {
        for (std::size_t i = 0; i < 4; ++i) {
            Put(547 + 48 * i, Real(500000));
            Put(571 + 48 * i, Real(i == 1 || i == 2 ? north : south));
        }
    }
    /// Each record followed by the line break.
    std::string Text(std::string const& lineBreak = {}, bool trimmed = false) const
    {
        Model whole = *this;
        whole.Number(859, columns < 0 ? static_cast<int>(profiles.size()) : columns);
        std::vector<std::string> records { whole.head };
        for (std::size_t p = 0; p < profiles.size(); ++p) {
            Profile const& profile = profiles[p];
            std::string record = Right("1", 6) + Right(std::to_string(p + 1), 6);
            record += Right(std::to_string(profile.elevations.size()), 6) + Right("1", 6);
            record += Real(500000) + Real(profile.northing) + Real(0) + Real(0) + Real(0);
            for (std::string const& e : profile.elevations) {
                if (record.size() + 6 > 1024) {
                    records.push_back(record);
                    record.clear();
                }
                record += Right(e, 6);
            }
            records.push_back(record);
        }
        records.insert(records.end(), extra.begin(), extra.end());
        std::string text;
        for (std::string& record : records) {
            if (!trimmed)
                record.resize(1024, ' ');
            text += record;
            text += lineBreak;
        }
        return text;
    }

    std::string head = std::string(1024, ' ');
    std::vector<Profile> profiles {};
    std::vector<std::string> extra {};
    /// What the header says, when that is not how many there are.
    int columns = -1;
};

/// Four rows and three columns: whole, starting late, ending early.
Model Hill()
{
    Model model;
    model.profiles = { { 4000020, Texts({ 1, 2, 3, 4 }) }, { 4000050, Texts({ -20, 30000, 40 }) },
        { 4000020, Texts({ 100, -32767 }) } };
    return model;
}

constexpr int kVoid = -32768;

struct Loaded {
    CUSGSDEM dem;
    int result = -1;
    CString message;
    std::string what;
    std::string output;
    std::vector<int> Cells() const { return { dem.GetElevations().begin(), dem.GetElevations().end() }; }
};

void Load(std::string const& text, Loaded& loaded)
{
    DataFile const data("model.dem", text);
    SetOutputFunction([&](CString const& line) { loaded.output += line.ToUtf8(); });
    try {
        loaded.result = loaded.dem.SetPathname(data.GetPath());
    } catch (CException* e) {
        loaded.message = e->GetErrorMessage();
        loaded.what = e->AsError().what();
        e->Delete();
    }
    SetOutputFunction(nullptr);
}

TEST(USGSDEM, ProfilesFillTheGridFromTheirNorthingOn)
{
    std::vector<std::string> texts { Hill().Text() };
    for (char const* const lineBreak : { "\n", "\r\n", "\r", "\n\n" }) {
        texts.push_back(Hill().Text(lineBreak));
        texts.push_back(Hill().Text(lineBreak, true));
    }
    // With the line break within the 1024 characters.
    std::string within = Hill().Text();
    for (std::size_t at = 1023; at < within.size(); at += 1024)
        within[at] = '\n';
    texts.push_back(within);
    for (std::string const& text : texts) {
        Loaded loaded;
        Load(text, loaded);
        EXPECT_EQ(loaded.what, "");
        EXPECT_EQ(loaded.result, 1);
        EXPECT_EQ(loaded.dem.GetNumRows(), 4) << "133337 - 133334 + 1";
        EXPECT_EQ(loaded.dem.GetNumCols(), 3);
        EXPECT_EQ(loaded.dem.GetDataSize(), 24);
        EXPECT_EQ(loaded.dem.GetXDel(), 30.0);
        // The north first.
        EXPECT_THAT(loaded.Cells(), ElementsAre(4, 40, kVoid, 3, 30000, kVoid, 2, -20, -32767, 1, kVoid, 100));
    }
}

TEST(USGSDEM, LongProfilesGoOnInFurtherRecords)
{
    std::vector<int> heights(146 + 170 + 5);
    std::iota(heights.begin(), heights.end(), -100);
    Model model;
    model.Corners(30, 30 * 321);
    model.profiles = { { 30, Texts(heights) }, { 30, Texts({ 7 }) }, { 30, Texts(heights) } };
    for (char const* const lineBreak : { "", "\n" }) {
        Loaded loaded;
        Load(model.Text(lineBreak), loaded);
        EXPECT_EQ(loaded.what, "");
        ASSERT_EQ(loaded.dem.GetNumRows(), 321);
        for (int row = 0; row < 321; ++row) {
            for (int column : { 0, 2 })
                ASSERT_EQ(loaded.dem.GetElevations()[static_cast<std::size_t>(row * 3 + column)], 220 - row);
        }
        EXPECT_EQ(loaded.Cells()[320 * 3 + 1], 7);
    }
}

TEST(USGSDEM, AProfileThatIsTooLongStaysInItsColumn)
{
    Model model = Hill();
    model.profiles[1].elevations = Texts({ 1, 2, 3, 4, 5, 6, 7 });
    model.profiles[2] = { 4000020 + 30 * 9, Texts({ 8, 9 }) };
    Loaded loaded;
    Load(model.Text(), loaded);
    EXPECT_THAT(loaded.Cells(), ElementsAre(4, 3, kVoid, 3, 2, kVoid, 2, 1, kVoid, 1, kVoid, kVoid));
}

TEST(USGSDEM, RowsAreFoundInSpiteOfARoundedResolution)
{
    // Two thirds of an arc-second with seven digits are a little more, and the third row from the south is below two.
    Model model;
    model.Put(829, "6.666667E-01");
    model.Corners(0, 200);
    model.profiles = { { 200.0, Texts({ 5 }) } };
    Loaded loaded;
    Load(model.Text(), loaded);
    ASSERT_EQ(loaded.dem.GetNumRows(), 301);
    EXPECT_EQ(loaded.Cells()[0], 5);
}

TEST(USGSDEM, BlankElevationsAreToldAboutAndTenAreTolerated)
{
    Model model;
    model.Corners(0, 30 * 11);
    model.profiles = { { 0, std::vector<std::string>(12, "") }, { 0, Texts({ 6 }) } };
    model.profiles[0].elevations[3] = "44";
    model.profiles[0].elevations[11] = "12345x";
    Loaded loaded;
    Load(model.Text(), loaded);
    EXPECT_EQ(loaded.result, 1);
    EXPECT_EQ(loaded.dem.GetNumBlank(), 10);
    EXPECT_EQ(loaded.dem.GetNumDamaged(), 0) << "what follows a number means nothing";
    EXPECT_EQ(loaded.Cells()[2 * 8], 44);
    EXPECT_EQ(loaded.Cells()[2 * 9], kVoid);
    EXPECT_EQ(loaded.Cells()[0], 12345);
    std::string lines;
    for (int i = 0; i < 10; ++i)
        lines += "Missing entry for profile 1\n";
    EXPECT_EQ(loaded.output, lines);

    model.profiles[1].elevations[0] = "";
    Loaded more;
    Load(model.Text(), more);
    EXPECT_EQ(more.message, "Too many missing entries -- giving up");
    EXPECT_EQ(more.output, lines);
    EXPECT_TRUE(more.Cells().empty());

    // Neither a word nor what 16 bits cannot hold is an elevation.
    model.profiles = { { 0, { "abc", "32768", "-", "-32769", "+1", "-0" } } };
    Loaded odd;
    Load(model.Text(), odd);
    EXPECT_EQ(odd.dem.GetNumDamaged(), 4);
    EXPECT_EQ(odd.Cells()[11], kVoid);
    EXPECT_EQ(odd.Cells()[10], kVoid);
    EXPECT_EQ(odd.Cells()[7], 1);
    EXPECT_EQ(odd.Cells()[6], 0);
}

TEST(USGSDEM, ErrorsTellWhereAndWhy)
{
    struct Case {
        std::function<void(Model&)> change;
        char const* message;
        char const* place;
    };
    constexpr char kEnd[] = "Read error or premature EOF on input";
    constexpr char kNotDEM[] = "Data cannot be interpreted in DEM format";
    Case const cases[] = {
        { [](Model& m) { m.Put(145, "  ABC "); }, kNotDEM, "columns 145 to 150" },
        { [](Model& m) { m.Put(547, std::string(24, ' ')); },
            "Corner coordinate easting for corner 1 not specified -- cannot get array dimensions\n", "byte 0" },
        { [](Model& m) { m.Put(547 + 24 * 5, std::string(24, ' ')); },
            "Corner coordinate westing for corner 3 not specified -- cannot get array dimensions\n", "667 to 690" },
        { [](Model& m) { m.Put(817, "0.000000E+00"); },
            "Grid spacing not specified -- cannot determine array dimensions\n", "byte 0" },
        { [](Model& m) { m.Put(829, std::string(12, ' ')); },
            "Grid spacing not specified -- cannot determine array dimensions\n", "byte 0" },
        { [](Model& m) {
             m.Number(151, 2);
             m.Number(535, 7);
         },
            "Random data patterns are not supported", "byte 0" },
        { [](Model& m) {
             m.Number(535, 3);
             m.Number(853, 2);
         },
            "Invalid units field -- not DEM format", "byte 0" },
        { [](Model& m) { m.Number(853, 2); }, "Rectangular patches are not supported", "byte 0" },
        { [](Model& m) { m.Corners(0, 30 * 40000.0); }, kNotDEM, "1 to 32767 rows" },
        { [](Model& m) { m.Put(571, Right("nan", 24)); }, kNotDEM, "1 to 32767 rows" },
        { [](Model& m) { m.columns = 0; }, kNotDEM, "1 to 32767 profiles" },
        { [](Model& m) { m.columns = 40000; }, kNotDEM, "1 to 32767 profiles" },
        { [](Model& m) { m.columns = 30000; }, kEnd,
            "byte 4096: Read error or premature EOF on input; expected profile 4 of 30000" },
        { [](Model& m) { m.profiles[1].northing = 3999980; }, "Profile 2 starts below image frame\n", "byte 2048" },
        { [](Model& m) {
             m.Corners(30, 30 * 32000.0);
             m.profiles.resize(40, m.profiles[0]);
         },
            kNotDEM, "32000 rows of 40 cells" },
    };
    for (Case const& c : cases) {
        Model model = Hill();
        c.change(model);
        Loaded loaded;
        Load(model.Text(), loaded);
        EXPECT_EQ(loaded.message, c.message);
        EXPECT_THAT(loaded.what, HasSubstr(c.place));
        EXPECT_TRUE(loaded.Cells().empty());
    }
}

TEST(USGSDEM, FilesThatEndTooEarlyOrGetOutOfStepAreRefused)
{
    std::string const whole = Hill().Text();
    std::string const lines = Hill().Text("\n");
    struct Case {
        std::string text;
        char const* message;
        char const* place;
    };
    std::string wrongProfile = whole;
    wrongProfile.replace(2 * 1024 + 6, 6, "     5");
    Case const cases[] = {
        { "", "Error reading first record of file", "byte 0" },
        { whole.substr(0, 1024), "Read error or premature EOF on input", "byte 1024" },
        { whole.substr(0, 3 * 1024 + 144 + 11), "Read error or premature EOF on input", "2 elevations" },
        { lines.substr(0, 3 * 1025), "Read error or premature EOF on input", "line 4" },
        { wrongProfile, "Bad profile number = 5 in B record header -- 2 expected\n", "byte 2048" },
    };
    for (Case const& c : cases) {
        Loaded loaded;
        Load(c.text, loaded);
        EXPECT_EQ(loaded.message, c.message);
        EXPECT_THAT(loaded.what, HasSubstr(c.place));
        EXPECT_THAT(loaded.what, HasSubstr("model.dem, "));
        EXPECT_EQ(loaded.dem.SetPathname("/nowhere.dem"), 0) << "what cannot be opened is no error";
    }
    Loaded cut;
    Load(whole.substr(0, 3 * 1024 + 144 + 12), cut);
    EXPECT_EQ(cut.result, 1) << "nothing of what is needed is missing";
}

TEST(USGSDEM, TheHeaderHasTheFieldsOfBothLayouts)
{
    Model model = Hill();
    model.Put(1, "DEVIL'S TOWER D");
    model.Number(163, 13);
    model.Put(169, Right("1.5D+02", 24));
    model.Put(169 + 24 * 14, Right("-2D0", 24));
    model.Put(739, Model::Real(-5.5));
    model.Put(763, Model::Real(30000));
    model.Put(787, Right("0.25", 24));
    model.Put(841, "1.000000D-01");
    Loaded older;
    Load(model.Text(), older);
    DEMHeader h = older.dem.GetHeader();
    EXPECT_EQ(std::string(h.fileName).substr(0, 17), "DEVIL'S TOWER D  ");
    EXPECT_EQ(h.zone, 13);
    EXPECT_EQ(h.projectionParameters[0], 150);
    EXPECT_EQ(h.projectionParameters[14], -2);
    EXPECT_EQ(h.corners[1], 4000020);
    EXPECT_EQ(h.corners[3], 4000110);
    EXPECT_EQ(h.minElevation, -5.5);
    EXPECT_EQ(h.maxElevation, 30000);
    EXPECT_EQ(h.rotationAngle, 0.25);
    EXPECT_EQ(h.zResolution, 0.1F);
    EXPECT_EQ(h.dataEdition, -1);
    EXPECT_EQ(h.horizontalDatum, -1);
    EXPECT_EQ(h.validationFlag, 0);

    // A geographic model of 3 arc-seconds has the datum of its time.
    model.Number(157, 0);
    model.Number(529, 3);
    model.Put(829, "3.000000E+00");
    model.Corners(60, 69);
    model.profiles = { { 60, Texts({ 1 }) } };
    Loaded arcSeconds;
    Load(model.Text(), arcSeconds);
    EXPECT_EQ(arcSeconds.dem.GetHeader().horizontalDatum, 2);

    model.Put(865, "   101    2297052001I  2 1 4   3   9");
    Loaded newer;
    Load(model.Text(), newer);
    h = newer.dem.GetHeader();
    EXPECT_EQ(h.largestContourInterval, 10);
    EXPECT_EQ(h.largestContourUnits, 1);
    EXPECT_EQ(h.smallestContourInterval, 2);
    EXPECT_EQ(h.smallestContourUnits, 2);
    EXPECT_EQ(h.sourceYear, 1997);
    EXPECT_EQ(h.sourceMonth, 5);
    EXPECT_EQ(h.revisionYear, 2001);
    EXPECT_EQ(h.revisionMonth, 0);
    EXPECT_EQ(h.inspectionFlag, 'I');
    EXPECT_EQ(h.validationFlag, -1);
    EXPECT_EQ(h.suspectAndVoid, 2);
    EXPECT_EQ(h.verticalDatum, 1);
    EXPECT_EQ(h.horizontalDatum, 4);
    EXPECT_EQ(h.dataEdition, 3);
    EXPECT_EQ(h.percentVoid, 9);
}

TEST(USGSDEM, StatisticsFollowWhenAnnounced)
{
    Model model = Hill();
    model.Number(811, 1);
    Loaded without;
    Load(model.Text("\n"), without);
    EXPECT_EQ(without.result, 1) << "their absence costs nothing";
    model.extra = { "     1     2     3     4    30     1    12    13    14    40" };
    for (char const* const lineBreak : { "", "\n", "\n\n" }) {
        Loaded loaded;
        Load(model.Text(lineBreak), loaded);
        auto const& s = loaded.dem.GetHeader().statistics;
        EXPECT_THAT(s[0], ElementsAre(1, 2, 3, 4, 30));
        EXPECT_THAT(s[1], ElementsAre(1, 12, 13, 14, 40));
    }
}

TEST(USGSDEM, AModelIsReadOnceForItsPath)
{
    DataFile const data("Model.dem", Hill().Text());
    std::string const path = data.GetPath().ToUtf8();
    CUSGSDEM dem;
    EXPECT_EQ(dem.SetPathname(data.GetPath()), 1);
    std::filesystem::remove(path);
    EXPECT_EQ(dem.SetPathname(data.GetPath()), 1) << "the file is gone, the model is not";
    EXPECT_EQ(dem.SetPathname(CString(path).MakeUpper()), 1);
    EXPECT_EQ(dem.GetPathname(), data.GetPath());
    EXPECT_EQ(dem.GetElevations().size(), 12u);
    EXPECT_EQ(dem.Load(), 0);
    EXPECT_TRUE(dem.GetElevations().empty());
    EXPECT_EQ(dem.SetPathname(data.GetPath()), 0);
}

TEST(USGSDEM, TheHeaderAloneLeavesTheElevations)
{
    DataFile const data("model.dem", Hill().Text().substr(0, 1024));
    CUSGSDEM dem;
    std::FILE* const file = std::fopen(data.GetPath().ToUtf8().c_str(), "r");
    dem.ReadAscii(file, 1);
    std::fclose(file);
    EXPECT_EQ(dem.GetNumRows(), 4);
    EXPECT_EQ(dem.GetNumCols(), 3);
    EXPECT_TRUE(dem.GetElevations().empty());
}

TEST(USGSDEM, ArchivesHoldTheHeaderAndHalfOfTheElevations)
{
    Loaded loaded;
    Load(Hill().Text(), loaded);
    Bytes const stored = test::Stored(loaded.dem);
    std::size_t const path = 4 + static_cast<std::size_t>(loaded.dem.GetPathname().GetLength()) * 2;
    ASSERT_EQ(stored.Get().size(), 4 + path + 4 + 520 + 4 + 12);
    Bytes const end = Bytes::Of(std::span(stored.Get()).last(16));
    EXPECT_EQ(end, Bytes().Int(12).Short(4, 40, kVoid, 3, 30000, kVoid)) << "as many bytes as cells";

    CUSGSDEM copy;
    ASSERT_TRUE(test::Load(copy, stored));
    EXPECT_EQ(test::Stored(copy), stored);
    EXPECT_EQ(copy.GetNumRows(), 4);
    std::vector<int> const cells(copy.GetElevations().begin(), copy.GetElevations().end());
    EXPECT_THAT(cells, ElementsAre(4, 40, kVoid, 3, 30000, kVoid, kVoid, kVoid, kVoid, kVoid, kVoid, kVoid));

    std::vector<std::byte> other = stored.Get();
    other[other.size() - 16] = std::byte { 11 };
    other.pop_back();
    ASSERT_TRUE(test::Load(copy, Bytes::Of(other)));
    EXPECT_TRUE(copy.GetElevations().empty()) << "eleven cells are no 4 × 3";
    other[other.size() - 12] = std::byte { 0x7F };
    EXPECT_FALSE(test::Load(copy, Bytes::Of(other))) << "more than there are";
    CUSGSDEM fresh;
    EXPECT_EQ(test::Stored(fresh), Bytes().Int(1).Text("").Int(0).Add(Bytes::Of(std::vector<std::byte>(520))).Int(0));
}

} // namespace
} // namespace ombrel
