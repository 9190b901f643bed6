#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/framework/Exception.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ombrel {
namespace {

namespace fs = std::filesystem;

/// A directory of its own for each test.
class FileTest : public testing::Test {
protected:
    FileTest()
    {
        std::string pattern = (fs::temp_directory_path() / "ombrel-file-XXXXXX").string();
        m_directory = mkdtemp(pattern.data());
    }
    ~FileTest() override { fs::remove_all(m_directory); }
    std::string Path(char const* name) const { return (m_directory / name).string(); }
    void Put(char const* name, std::string const& text) const { std::ofstream(Path(name), std::ios::binary) << text; }
    std::string Get(char const* name) const
    {
        std::ifstream in(Path(name), std::ios::binary);
        return { std::istreambuf_iterator<char>(in), {} };
    }
    std::ptrdiff_t CountFiles() const { return std::distance(fs::directory_iterator(m_directory), {}); }
    fs::path m_directory;
};

std::span<std::byte const> Bytes(std::string const& text) { return std::as_bytes(std::span(text.data(), text.size())); }

/// The file exception that the call throws; null when it throws none.
std::unique_ptr<CFileException> Failure(std::function<void()> const& call)
{
    try {
        call();
    } catch (CFileException* e) {
        return std::unique_ptr<CFileException>(e);
    }
    return nullptr;
}

} // namespace

TEST_F(FileTest, LinesEndAtEitherBreakAndAByteOrderMarkIsSkipped)
{
    std::string const longLine(200'000, 'x');
    using Case = std::pair<std::string, std::vector<std::string>>;
    Case const cases[] = {
        { "", {} },
        { "a", { "a" } },
        { "a\n", { "a" } },
        { "a\r\nb\nc", { "a", "b", "c" } },
        { "\n\r\n\n", { "", "", "" } },
        { "a\rb\r\r\nc\r", { "a\rb\r", "c\r" } },
        { "\xEF\xBB\xBFü\n\xEF\xBB\xBFx", { "ü", "\uFEFFx" } },
        { "\xEF\xBB\xBF", {} },
        { "\xEF\xBB", { "\uFFFD" } },
        { longLine + "\r\n" + longLine, { longLine, longLine } },
    };
    for (auto const& [text, expected] : cases) {
        Put("lines.txt", text);
        CStdioFile file(Path("lines.txt"), CFile::modeRead);
        // Read twice: the mark is skipped again after going back.
        for (int pass = 0; pass < 2; ++pass) {
            std::vector<std::string> lines;
            for (CString line; file.ReadString(line);)
                lines.push_back(line.ToUtf8());
            EXPECT_EQ(lines, expected) << text.substr(0, 40);
            file.SeekToBegin();
        }
    }
}

TEST_F(FileTest, OpeningFailsWithTheCauseAndThePath)
{
    using Case = std::tuple<std::string, CFileException::Cause, int>;
    Case const cases[] = {
        { Path("missing"), CFileException::fileNotFound, ENOENT },
        { m_directory.string(), CFileException::accessDenied, EISDIR },
        { Path(std::string(300, 'n').c_str()), CFileException::badPath, ENAMETOOLONG },
        { "/dev/null/x", CFileException::badPath, ENOTDIR },
    };
    EXPECT_TRUE(Failure([&] { CFile file(Path("missing"), CFile::modeWrite); }));
    for (Case const& c : cases) {
        auto const e = Failure([&] { CFile file(std::get<0>(c), CFile::modeRead); });
        ASSERT_TRUE(e) << std::get<0>(c);
        EXPECT_EQ(Case(e->m_strFileName.ToUtf8(), e->m_cause, e->m_lOsError), c);
        EXPECT_NE(e->GetErrorMessage().Find(e->m_strFileName), -1);
    }
}

TEST_F(FileTest, MixedSmallAndLargeBlocksKeepTheirOrder)
{
    std::string expected;
    {
        CFile file(Path("blocks"), CFile::modeWrite | CFile::modeCreate);
        for (std::size_t const size : { 1u, 65'535u, 1u, 65'536u, 3u, 200'000u, 0u, 7u }) {
            std::string const block(size, static_cast<char>('a' + expected.size() % 26));
            file.Write(block.data(), block.size());
            expected += block;
            EXPECT_EQ(file.GetPosition(), expected.size());
        }
    }
    EXPECT_TRUE(Get("blocks") == expected);
    CFile file(Path("blocks"), CFile::modeRead);
    std::string read(expected.size() + 5, '\0');
    std::size_t done = 0;
    for (std::size_t const size : { 10u, 65'530u, 70'000u, 5u, 300'000u })
        done += file.Read(read.data() + done, std::min<std::size_t>(size, read.size() - done));
    read.resize(done);
    EXPECT_TRUE(read == expected);
    EXPECT_EQ(file.Read(read.data(), 1), 0u);
}

TEST_F(FileTest, WholeFilesAreReadFromDiskAndPipes)
{
    std::string const text = std::string(300'000, 'p') + "end";
    Put("whole", text);
    EXPECT_TRUE(std::ranges::equal(ReadWholeFile(Path("whole")), Bytes(text)));
    Put("empty", "");
    EXPECT_TRUE(ReadWholeFile(Path("empty")).empty());
    // A file of the kernel's that claims to have no length.
    EXPECT_FALSE(ReadWholeFile("/proc/self/status").empty());

    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_EQ(write(ends[1], "piped", 5), 5);
    close(ends[1]);
    EXPECT_EQ(ReadWholeFile("/proc/self/fd/" + std::to_string(ends[0])).size(), 5u);
    close(ends[0]);
}

TEST_F(FileTest, ReplacingKeepsPermissionsAndFollowsLinks)
{
    Put("target", "old");
    ASSERT_EQ(chmod(Path("target").c_str(), 0640), 0);
    fs::create_directory(m_directory / "sub");
    fs::create_symlink("../target", m_directory / "sub" / "relative");
    fs::create_symlink(m_directory / "sub" / "relative", m_directory / "link");
    WriteFileAtomically(Path("link"), Bytes("new text"));
    EXPECT_EQ(Get("target"), "new text");
    EXPECT_TRUE(fs::is_symlink(Path("link")));
    struct stat status;
    ASSERT_EQ(stat(Path("target").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);

    mode_t const mask = umask(027);
    WriteFileAtomically(Path("fresh"), Bytes(""));
    umask(mask);
    ASSERT_EQ(stat(Path("fresh").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);

    fs::create_symlink("behind", m_directory / "dangling");
    WriteFileAtomically(Path("dangling"), Bytes("made"));
    EXPECT_EQ(Get("behind"), "made");
    EXPECT_EQ(CountFiles(), 6);
}

TEST_F(FileTest, AFailedReplacementLeavesTheOldFileAndNothingElse)
{
    Put("target", "old");
    // Files of this process end at a size.
    auto const handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before {};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit const limit { 100'000, before.rlim_max };
    setrlimit(RLIMIT_FSIZE, &limit);
    auto const e = Failure([&] { WriteFileAtomically(Path("target"), Bytes(std::string(300'000, 'x'))); });
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    ASSERT_TRUE(e);
    EXPECT_EQ(e->m_cause, CFileException::diskFull);
    EXPECT_EQ(e->m_lOsError, EFBIG);
    EXPECT_EQ(Get("target"), "old");
    EXPECT_EQ(CountFiles(), 1);

    auto const missing = Failure([&] { WriteFileAtomically(Path("no/such/file"), Bytes("x")); });
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->m_cause, CFileException::badPath);
    EXPECT_EQ(missing->m_lOsError, ENOENT);
    EXPECT_TRUE(Failure([&] { WriteFileAtomically(m_directory.string(), Bytes("x")); }));
    fs::create_symlink("loop", m_directory / "loop");
    EXPECT_TRUE(Failure([&] { WriteFileAtomically(Path("loop"), Bytes("x")); }));
}

TEST_F(FileTest, DevicesPipesAndOpenFilesAreWrittenThrough)
{
    auto const e = Failure([] { WriteFileAtomically("/dev/full", Bytes("x")); });
    ASSERT_TRUE(e);
    EXPECT_EQ(e->m_cause, CFileException::diskFull);
    WriteFileAtomically("/dev/null", Bytes("x"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));

    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    WriteFileAtomically("/dev/fd/" + std::to_string(ends[1]), Bytes("through"));
    char text[10];
    EXPECT_EQ(read(ends[0], text, sizeof text), 7);
    close(ends[0]);
    close(ends[1]);
    // As with a program's output redirected into a file, which the shell holds open.
    Put("output", "before ");
    std::unique_ptr<FILE, int (*)(FILE*)> const open(std::fopen(Path("output").c_str(), "a"), std::fclose);
    WriteFileAtomically("/proc/self/fd/" + std::to_string(fileno(open.get())), Bytes("after"));
    EXPECT_EQ(Get("output"), "before after");
    EXPECT_EQ(CountFiles(), 1);
}

TEST(MemFile, GrowsAndOverwrites)
{
    CMemFile file;
    file.Write("abcdef", 6);
    file.SeekToBegin();
    char two[2];
    EXPECT_EQ(file.Read(two, 2), 2u);
    file.Write("CDEFGH", 6);
    EXPECT_EQ(file.Read(two, 2), 0u);
    EXPECT_EQ(std::string(reinterpret_cast<char const*>(file.GetBytes().data()), 8), "abCDEFGH");
    EXPECT_EQ(file.GetLength(), 8u);
    EXPECT_EQ(file.Detach().size(), 8u);
    file.Write("x", 1);
    EXPECT_EQ(file.GetLength(), 1u);
}

} // namespace ombrel
