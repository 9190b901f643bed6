#include "ombrel/graph3d/3DObjectFile.h"
#include "ombrel/foundation/VException.h"
#include "tests/io/DataFile.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace ombrel {
namespace {

std::vector<std::string> LinesOf(C3DObjectFile& file)
{
    std::vector<std::string> lines;
    std::string_view line;
    bool isCounted = true;
    while (file.ReadLine(line)) {
        lines.emplace_back(line);
        isCounted = isCounted && file.GetLine() == lines.size();
    }
    EXPECT_TRUE(isCounted);
    EXPECT_EQ(file.GetRemaining(), 0U);
    return lines;
}

/// The lines by a second road, character by character.
std::vector<std::string> Split(std::string const& text)
{
    std::vector<std::string> lines;
    std::string line;
    bool isOpen = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        isOpen = true;
        if (text[i] != '\r' && text[i] != '\n') {
            line += text[i];
            continue;
        }
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            ++i;
        lines.push_back(std::exchange(line, {}));
        isOpen = false;
    }
    if (isOpen)
        lines.push_back(line);
    return lines;
}

TEST(ObjectFile, FilesAndStringsGiveTheSameLinesWhateverTheirBreaks)
{
    std::minstd_rand random(7);
    auto const anyText = [&](std::size_t length) {
        std::string text;
        while (text.size() < length)
            text += "ab \n\r\n\rxyz"[random() % 10];
        return text;
    };
    // The last ones are longer than the blocks that files are read in; one has no LF, one a line of many blocks.
    std::string const carriageReturns = [] {
        std::string text;
        for (int i = 0; i < 100000; ++i)
            text += "v 1\r";
        return text;
    }();
    for (std::string const& text : { std::string(), std::string("\n"), std::string("a"), anyText(40), anyText(41),
             anyText(300000), carriageReturns, std::string(2000000, 'q') + "\r\nend" }) {
        C3DObjectFile file;
        test::DataFile const data("lines.tvo", text);
        file.Open(data.GetPath(), CFile::modeRead);
        EXPECT_EQ(file.GetRemaining(), text.size());
        EXPECT_EQ(LinesOf(file), Split(text)) << text.size();
        C3DObjectFile string;
        string.SetReadMode(1);
        string.SetLines(text);
        string.Open("/no/such/file", CFile::modeRead);
        EXPECT_EQ(LinesOf(string), Split(text)) << text.size();
    }
}

TEST(ObjectFile, PropertiesAreLowerCaseTrimmedAndSplitAtTheFirstColon)
{
    C3DObjectFile file;
    test::DataFile const data("properties.tvo",
        "\xEF\xBB\xBF// a comment\n\n  Colour : 1 2:3 \r\n\t\n Wireframe\n:x: 1\n  // no: property\n"
        "\xC3\x84RA:\nThe EndObject of it\nrest: 1\n");
    file.Open(data.GetPath(), CFile::modeRead);
    struct {
        char const* name;
        char const* value;
        std::uint64_t line;
    } const expected[]
        = { { "colour", "1 2:3", 3 }, { "wireframe", "", 5 }, { ":x: 1", "", 6 }, { "\xC3\xA4ra", "", 8 } };
    CString name;
    CString value;
    for (auto const& property : expected) {
        ASSERT_TRUE(file.ReadProperty(name, value));
        EXPECT_EQ(name, CString(property.name));
        EXPECT_EQ(value, CString(property.value));
        EXPECT_EQ(file.GetLine(), property.line);
    }
    EXPECT_FALSE(file.ReadProperty(name, value));
    ASSERT_TRUE(file.ReadProperty(name, value));
    EXPECT_EQ(name, CString("rest"));
    EXPECT_FALSE(file.ReadProperty(name, value));
}

TEST(ObjectFile, FaultsNameFileAndLine)
{
    C3DObjectFile file;
    test::DataFile const data("lines.tvo", "a\nbb\n");
    std::string const path = data.GetPath().ToUtf8();
    file.Open(path, CFile::modeRead);
    std::string_view line;
    ASSERT_TRUE(file.ReadLine(line) && file.ReadLine(line));
    try {
        WithErrors([&] { file.Fail("Bad line", "a", "bb"); });
        FAIL();
    } catch (Error const& e) {
        EXPECT_EQ(std::string(e.what()), path + ", line 2: Bad line; expected a, found bb.");
        EXPECT_EQ(e.GetOffset(), std::optional<std::uint64_t>(2));
    }
    for (int i = 0; i < 1000; ++i)
        file.AddNote("again");
    EXPECT_EQ(file.GetNumNotes(), 1000U);
    EXPECT_LE(file.GetNotes().size(), 100U);
    EXPECT_THROW(WithErrors([&] { file.Open("/no/such/file", CFile::modeRead); }), Error);
}

TEST(ObjectFile, NumbersAreReadFromTheStartAndStopAtWhatIsNone)
{
    double values[3] = { 7, 7, 7 };
    EXPECT_EQ(ScanNumbers(" 1.5\t-2e1 x", values), 2U);
    EXPECT_EQ(values[1], -20.0);
    EXPECT_EQ(values[2], 7.0);
    EXPECT_EQ(ScanNumbers("1,5 2", values), 1U);
    EXPECT_EQ(ScanNumbers("nan 1", values), 0U);
    EXPECT_EQ(ScanNumbers("1 1e999 2", values), 1U);
    int counts[2] = {};
    EXPECT_EQ(ScanIntegers("12.5 3", counts), 1U);
    EXPECT_EQ(counts[0], 12);
    EXPECT_EQ(ScanIntegers("-3 99999999999", counts), 2U);
    EXPECT_EQ(counts[1], std::numeric_limits<int>::max());
}

} // namespace
} // namespace ombrel
