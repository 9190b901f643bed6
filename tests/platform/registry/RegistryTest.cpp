#include "ombrel/platform/registry/Registry.h"
#include "ombrel/platform/registry/RegistryDocument.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace ombrel {
namespace {

class Registry : public testing::Test {
protected:
    Registry()
    {
        std::string pattern = testing::TempDir() + "ombrel-registry-XXXXXX";
        m_directory = mkdtemp(pattern.data());
        m_file = m_directory / "some" / "directory" / "registry";
        SetRegistryFile(m_file.string());
    }
    ~Registry() override
    {
        SetRegistryFile("");
        std::filesystem::remove_all(m_directory);
    }
    void WriteFile(std::string const& text)
    {
        std::filesystem::create_directories(m_file.parent_path());
        std::ofstream(m_file, std::ios::binary) << text;
    }
    std::string FileText() const
    {
        std::ifstream in(m_file, std::ios::binary);
        return { std::istreambuf_iterator<char>(in), {} };
    }
    static std::string Read(CString const& path, CString const& name)
    {
        CString value("(untouched)");
        bool const found = ReadRegistryValue(HKEY_CURRENT_USER, path, name, value);
        return found ? value.ToUtf8() : value == "(untouched)" ? "(none)" : "changed without success";
    }
    static bool Write(CString const& path, CString const& name, CString const& value)
    {
        return WriteRegistryValue(HKEY_CURRENT_USER, path, name, value);
    }

    std::filesystem::path m_directory;
    std::filesystem::path m_file;
};

TEST_F(Registry, WritingCreatesDirectoriesFileAndKey)
{
    EXPECT_EQ(Read("Software\\Ombrel", "Name"), "(none)");
    EXPECT_TRUE(Write("Software\\Ombrel", "Name", "value"));
    EXPECT_EQ(Read("software\\ombrel", "NAME"), "value");
    EXPECT_EQ(Read("Software", "Name"), "(none)");
    EXPECT_EQ(FileText(), "[Software\\Ombrel]\nName = value\n");
    EXPECT_FALSE(WriteRegistryValue(static_cast<HKEY>(0), "Software", "Name", "value"));
    CString value;
    EXPECT_FALSE(ReadRegistryValue(static_cast<HKEY>(0), "Software\\Ombrel", "Name", value));
    // What no reader would take is not written.
    EXPECT_FALSE(Write("Software\\Ombrel", "Name", CString(u'x', 17 << 20)));
    EXPECT_EQ(Read("Software\\Ombrel", "Name"), "value");
}

TEST_F(Registry, AChangeOfTheFileIsSeenByTheNextReader)
{
    // Same length, within one tick of the file system's clock.
    for (int i = 100; i < 200; ++i) {
        WriteFile("[Key]\nName = " + std::to_string(i) + "\n");
        ASSERT_EQ(Read("Key", "Name"), std::to_string(i));
    }
    // Once the file has come to rest it is kept; what changes it within the second shows all the same.
    std::this_thread::sleep_for(std::chrono::milliseconds(40));
    EXPECT_EQ(Read("Key", "Name"), "199");
    WriteFile("[Key]\nName = 200\n");
    EXPECT_EQ(Read("Key", "Name"), "200");
    std::filesystem::remove(m_file);
    EXPECT_EQ(Read("Key", "Name"), "(none)");
}

TEST_F(Registry, AFileThatCannotBeReadIsNeitherBelievedNorReplaced)
{
    WriteFile("[Key]\nName = 1\n");
    std::filesystem::resize_file(m_file, (16U << 20) + 1);
    EXPECT_EQ(Read("Key", "Name"), "(none)");
    EXPECT_FALSE(Write("Key", "Name", "2"));
    EXPECT_EQ(std::filesystem::file_size(m_file), (16U << 20) + 1);

    std::filesystem::remove(m_file);
    std::filesystem::create_directory(m_file);
    EXPECT_EQ(Read("Key", "Name"), "(none)");
    EXPECT_FALSE(Write("Key", "Name", "2"));

    SetRegistryFile("/proc/no such directory/registry");
    EXPECT_FALSE(Write("Key", "Name", "2"));
}

TEST_F(Registry, AFileThatIsWriteProtectedIsReadButNotOpenedForEverything)
{
    WriteFile("[Key]\nName = 1\n");
    auto const readOnly = std::filesystem::perms(0444);
    auto const writable = std::filesystem::perms(0666);
    std::filesystem::permissions(m_directory, std::filesystem::perms(0777));
    auto const countFaults = [&] {
        if (geteuid() == 0 && (chown(m_file.c_str(), 65534, 65534) != 0 || setuid(65534) != 0))
            return 100;
        int faults = 0;
        CString value;
        for (auto const rights : { writable, readOnly, writable, readOnly }) {
            std::filesystem::permissions(m_file, rights);
            bool const all = ReadRegistryValue(HKEY_CURRENT_USER, "Key", "Name", value, KEY_ALL_ACCESS);
            faults += Read("Key", "Name") != "1" || all != (rights == writable);
        }
        return faults + Write("Key", "Name", "2");
    };
    // A process of its own, which gives the rights of root away.
    EXPECT_EXIT(_exit(countFaults()), testing::ExitedWithCode(0), "");
    EXPECT_EQ(Read("Key", "Name"), "1");
}

TEST_F(Registry, ProcessesThatWriteAtOnceLoseNothing)
{
    constexpr int kProcesses = 3;
    constexpr int kValues = 40;
    for (int process = 0; process < kProcesses; ++process) {
        if (fork() == 0) {
            bool good = true;
            for (int i = 0; i < kValues; ++i)
                good = Write("Key", std::to_string(process) + "/" + std::to_string(i), "x") && good;
            _exit(good ? 0 : 1);
        }
    }
    for (int process = 0; process < kProcesses; ++process) {
        int status = 0;
        ASSERT_GT(wait(&status), 0);
        EXPECT_EQ(status, 0);
    }
    for (int process = 0; process < kProcesses; ++process) {
        for (int i = 0; i < kValues; ++i)
            EXPECT_EQ(Read("Key", std::to_string(process) + "/" + std::to_string(i)), "x");
    }
}

TEST_F(Registry, TheDefaultFileFollowsTheEnvironment)
{
    setenv("HOME", m_directory.c_str(), 1);
    for (auto const& [configuration, directory] :
        { std::pair((m_directory / "own").string(), "own"), { "relative", ".config" }, { "", ".config" } }) {
        std::filesystem::remove_all(m_directory / ".config");
        setenv("XDG_CONFIG_HOME", configuration.c_str(), 1);
        SetRegistryFile("");
        EXPECT_TRUE(Write("Key", "Name", "value"));
        EXPECT_TRUE(std::filesystem::exists(m_directory / directory / "ombrel" / "registry")) << configuration;
    }
}

/// The value as UTF-8, or "(none)".
std::string Found(RegistryDocument const& document, char const* path, char const* name)
{
    std::optional<CString> const value = document.Find(path, name);
    return value ? value->ToUtf8() : "(none)";
}

TEST(RegistryDocument, FindsValuesAsAPersonWouldWriteThem)
{
    auto const document = ParseRegistry("\xEF\xBB\xBF# my settings\n"
                                        "[Software\\Ombrel]\r\n"
                                        "  Plain=1  \r\n"
                                        "Tabs\t=\t2\t\n"
                                        "\tAxes Colour = 12 = 0xC\n"
                                        "; another comment\n"
                                        "@ = the default value\n"
                                        "Empty =\n"
                                        "Twice = first\n"
                                        "\n"
                                        "[software\\OMBREL\\]\n"
                                        "twice = second\n"
                                        "[\\Software\\\\Ombrel\\Gr\xC3\xA4"
                                        "fe]\n"
                                        "N\xC3\x84ME = caf\xC3\xA9\\tbar");
    using Case = std::tuple<char const*, char const*, char const*>;
    for (auto const& [path, name, value] :
        { Case { "Software\\Ombrel", "Plain", "1" }, { "SOFTWARE\\ombrel\\", "PLAIN", "1" },
            { "Software\\Ombrel", "Tabs", "2" }, { "Software\\Ombrel", "Axes Colour", "12 = 0xC" },
            { "Software\\Ombrel", "", "the default value" }, { "Software\\Ombrel", "@", "(none)" },
            { "Software\\Ombrel", "Empty", "" }, { "Software\\Ombrel", "Twice", "second" },
            { "Software\\Ombrel\\GR\xC3\x84"
              "FE",
                "n\xC3\xA4me", "caf\xC3\xA9\tbar" },
            { "Software", "Plain", "(none)" }, { "", "Plain", "(none)" } })
        EXPECT_EQ(Found(document, path, name), value) << path << " / " << name;
    EXPECT_EQ(document.GetDamagedLines(), 0);
}

TEST(RegistryDocument, SkipsDamagedLinesAndKeepsThemInPlace)
{
    std::string const text = "orphan = value before any key\n"
                             "[Good]\n"
                             "no equals sign\n"
                             "= no name\n"
                             "bad = \\q escape\n"
                             "bad = cut \\u12\n"
                             "bad = \\uXYZW\n"
                             "bad = ends \\\n"
                             "bad = not \xFF UTF-8\n"
                             "bad = control \x01\n"
                             "ok = 1\n"
                             "[Broken\n"
                             "ok = of a key that nobody knows\n"
                             "[Bro\tken]\n"
                             "[Last]\n"
                             "\xEF\xBB\xBF[Marked]\n"
                             "ok = 3\n";
    auto document = ParseRegistry(text);
    EXPECT_EQ(document.GetDamagedLines(), 13);
    EXPECT_EQ(Found(document, "Good", "ok"), "1");
    EXPECT_EQ(Found(document, "Good", "bad"), "(none)");
    EXPECT_EQ(Found(document, "Broken", "ok"), "(none)");
    EXPECT_EQ(document.ToText(), text);

    ASSERT_TRUE(document.Set("good", "OK", "2"));
    ASSERT_TRUE(document.Set("Good", "a#;b", ""));
    ASSERT_TRUE(document.Set("Other", "", "y"));
    std::string expected = text;
    expected.replace(expected.find("ok = 1\n"), 7, "OK = 2\na#;b =\n");
    EXPECT_EQ(document.ToText(), expected + "\n[Other]\n@ = y\n");
    EXPECT_EQ(Found(document, "Good", "ok"), "2");
    EXPECT_EQ(Found(document, "Last", "ok"), "3");
}

TEST(RegistryDocument, AnyTextSurvivesAsNameAndAsValue)
{
    CString const texts[] = { "plain", " leading", "trailing ", "  ", " ", "\ttabs\t", "line\r\nbreak", "a=b=c", "#x",
        ";x", "[x]", "@", "@x", "\\", "\\n", "C:\\data\\", "100 %", "\"quoted\"", CString(u'\0'),
        CString(std::u16string_view(u"a\0b", 3)), CString(u"\xD800"), CString(u"\xDC00x\xD83D"), CString(u"\U0001F600"),
        CString(u"\uFEFFmark"), CString(u"\uFFFD"), CString(u'\x7F'), CString(u'x', 5000) };
    RegistryDocument document;
    for (CString const& text : texts) {
        ASSERT_TRUE(document.Set("Names", text, "n"));
        ASSERT_TRUE(document.Set("Values", text, text));
    }
    auto const copy = ParseRegistry(document.ToText());
    EXPECT_EQ(copy.GetDamagedLines(), 0) << document.ToText();
    for (CString const& text : texts) {
        EXPECT_EQ(copy.Find("Names", text), CString("n")) << text.ToUtf8();
        EXPECT_EQ(copy.Find("Values", text), text) << text.ToUtf8();
    }
}

TEST(RegistryDocument, RefusesKeysThatNoLineCanHold)
{
    RegistryDocument document;
    for (CString const& path : { CString("a\nb"), CString(u"a\xD800"), CString(u'\0') })
        EXPECT_FALSE(document.Set(path, "name", "value"));
    EXPECT_EQ(document.ToText(), "");
    for (char const* const path : { "", " blanks ", "a]b", "[a]", "a=b", "#a", "\xEF\xBF\xBD" }) {
        EXPECT_TRUE(document.Set(path, "name", path));
        EXPECT_EQ(ParseRegistry(document.ToText()).Find(path, "name"), CString(path)) << path;
    }
}

} // namespace
} // namespace ombrel
