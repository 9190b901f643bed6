#include "ombrel/platform/framework/Archive.h"
#include "tests/platform/framework/Refused.h"

#include <cerrno>
#include <functional>
#include <gtest/gtest.h>

namespace ombrel {
namespace {

using test::Refused;

/// Counts those that nobody has deleted.
class CountedException : public CException {
public:
    CountedException() { ++s_alive; }
    ~CountedException() override { --s_alive; }
    CString GetErrorMessage() const override { return "grüß"; }
    inline static int s_alive = 0;
};

void ReadFromAnEmptyFile()
{
    CFile file("/dev/null", CFile::modeRead);
    LONG value = 0;
    CArchive(&file, CArchive::load) >> value;
}

CArchiveException* Unknown()
{
    auto* const exception = new CArchiveException(CArchiveException::badClass, 7, "");
    exception->m_strFileName = "a.doc";
    exception->m_unknownClass = "CFoo";
    return exception;
}

TEST(Error, HoldsWhatThePointerHeld)
{
    using Case = std::tuple<std::function<void()>, Error::Kind, char const*, ErrorPlace>;
    Case const cases[] = {
        { [] { throw new CFileException(CFileException::fileNotFound, "a", ENOENT); }, Error::Kind::FileNotFound,
            "a was not found.", { "a", {}, ENOENT } },
        { [] { throw new CFileException(CFileException::diskFull, "b", ENOSPC); }, Error::Kind::File,
            "b could not be written: the disk is full.", { "b", {}, ENOSPC } },
        { [] { throw new CArchiveException(CArchiveException::badData, 12, "a date"); }, Error::Kind::Archive,
            "Archive, byte 12: a value is not valid; expected a date.", { "", 12, 0 } },
        { [] { throw Unknown(); }, Error::Kind::UnknownClass, "Archive, byte 7: unknown class CFoo.",
            { "a.doc", 7, 0 } },
        { ReadFromAnEmptyFile, Error::Kind::Archive, "Archive, byte 0: the data end too early; expected more data.",
            { "/dev/null", 0, 0 } },
        { [] { throw new COleDispatchException("No."); }, Error::Kind::Data, "No.", {} },
        { [] { throw new CResourceException; }, Error::Kind::Resource, "A required resource was unavailable.", {} },
        { [] { ThrowBadIndex(4, 3); }, Error::Kind::Argument, "The index 4 is not one of 3 elements.", {} },
        { [] { throw new CountedException; }, Error::Kind::Other, "grüß", {} },
    };
    for (auto const& [work, kind, message, place] : cases) {
        try {
            WithErrors(work);
            ADD_FAILURE() << message;
        } catch (Error const& error) {
            EXPECT_EQ(error.GetKind(), kind) << message;
            EXPECT_STREQ(error.what(), message);
            EXPECT_EQ(error.GetPath(), place.path);
            EXPECT_EQ(error.GetOffset(), place.offset) << message;
            EXPECT_EQ(error.GetSystemError(), place.systemError) << message;
        }
    }
    EXPECT_EQ(CountedException::s_alive, 0);
}

TEST(Error, ResultsAndOtherExceptionsPassAsTheyAre)
{
    int value = 3;
    EXPECT_EQ(&WithErrors([&]() -> int& { return value; }), &value);
    EXPECT_THROW(WithErrors([] { throw 5; }), int);
    EXPECT_TRUE(Succeeds([] {}));
    EXPECT_FALSE(Succeeds([] { throw new CountedException; }));
    EXPECT_THROW((void)Succeeds([] { throw 5; }), int);
}

TEST(Arrays, AnIndexOutsideIsRefusedAndChangesNothing)
{
    constexpr int kMost = std::numeric_limits<int>::max();
    CArray<int> const before { 1, 2, 3 };
    CArray<int> a = before;
    OwnedArray<CObject> owned;
    owned.Add(std::make_unique<CObject>());
    for (int const i : { -1, 3, kMost, -kMost - 1 }) {
        EXPECT_TRUE(Refused([&] { return a.GetAt(i); })) << i;
        EXPECT_TRUE(Refused([&] { return a[i]; })) << i;
        EXPECT_TRUE(Refused([&] { return before[i]; })) << i;
        EXPECT_TRUE(Refused([&] { a.SetAt(i, 0); })) << i;
        EXPECT_TRUE(Refused([&] { a.RemoveAt(i); })) << i;
        EXPECT_TRUE(Refused([&] { owned.Swap(0, i); })) << i;
        EXPECT_TRUE(Refused([&] { owned.Swap(i, 0); })) << i;
    }
    for (int const count : { -1, 3, kMost })
        EXPECT_TRUE(Refused([&] { a.RemoveAt(1, count); })) << count;
    EXPECT_TRUE(Refused([&] { a.SetSize(-1); }));
    EXPECT_TRUE(Refused([&] { a.SetAtGrow(-1, 0); }));
    EXPECT_TRUE(Refused([&] { a.SetAtGrow(kMost, 0); }));
    EXPECT_TRUE(Refused([&] { a.InsertAt(-1, 0); }));
    EXPECT_TRUE(Refused([&] { a.InsertAt(0, 0, -1); }));
    EXPECT_TRUE(Refused([&] { a.InsertAt(1, 0, kMost); }));
    EXPECT_EQ(a, before);
}

TEST(Arrays, GrowAndMoveTheirElements)
{
    CArray<CString> a { "a", "b", "c" };
    a.SetAtGrow(4, a[0]);
    a.InsertAt(1, a[2], 2);
    EXPECT_EQ(a, (CArray<CString> { "a", "c", "c", "b", "c", "", "a" }));
    a.RemoveAt(1, 3);
    a.RemoveAt(4, 0);
    a.InsertAt(5, "z");
    EXPECT_EQ(a, (CArray<CString> { "a", "c", "", "a", "", "z" }));
    a.SetSize(1);
    EXPECT_EQ(a.Append(a), 1);
    a.SetAtGrow(1, "y");
    EXPECT_EQ(a, (CArray<CString> { "a", "y" }));
}

} // namespace
} // namespace ombrel
