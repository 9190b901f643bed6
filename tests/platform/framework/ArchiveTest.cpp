#include "ombrel/platform/framework/Archive.h"

#include "ombrel/platform/framework/ArchiveFields.h"
#include "tests/platform/framework/PrintString.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

namespace ombrel {

namespace {

using Bytes = std::vector<std::byte>;

/// Counts itself, so that tests see what is left behind.
class Leaf : public CObject {
public:
    static CRuntimeClass const kClass;
    explicit Leaf(int v = 0)
        : value(v)
    {
        ++s_alive;
    }
    ~Leaf() override { --s_alive; }
    Leaf(Leaf const&) = delete;
    Leaf& operator=(Leaf const&) = delete;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    void Serialize(CArchive& ar) override { ArchiveFields(ar).Int(value); }
    int value;
    inline static int s_alive = 0;
};

/// One of every kind of field, and leaves of its own.
class Branch : public Leaf {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    void Serialize(CArchive& ar) override
    {
        Leaf::Serialize(ar);
        ArchiveFields f(ar);
        version = f.Version(2);
        f.Double(number).Short(flag).Dword(colour).String(text).Rect(rectangle).Date(date).Owned(leaves);
        f.Strings(names).Raw(numbers).Raw(bytes).Nested(inner);
    }
    int version = 0;
    double number = 0.0;
    bool flag = false;
    COLORREF colour = 0;
    CString text;
    CRect rectangle;
    COleDateTime date;
    OwnedArray<Leaf> leaves;
    CStringArray names;
    CPlainDoubleArray numbers;
    CByteArray bytes;
    Leaf inner;
};

class Chain : public Leaf {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    void Serialize(CArchive& ar) override
    {
        if (ar.IsStoring())
            ar.WriteObject(next.get());
        else
            next = ar.ReadObjectOf<Chain>();
    }
    std::unique_ptr<Chain> next;
};

class Unregistered : public Leaf {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
};

constinit CRuntimeClass const Leaf::kClass = PersistentClass<Leaf, CObject>("Leaf");
constinit CRuntimeClass const Branch::kClass = PersistentClass<Branch, Leaf>("Branch");
constinit CRuntimeClass const Chain::kClass = PersistentClass<Chain, Leaf>("Chain");
constinit CRuntimeClass const Unregistered::kClass = DynamicClass<Leaf>("Unregistered");

class ArchiveTest : public testing::Test {
protected:
    ArchiveTest()
    {
        RegisterClass(Leaf::kClass);
        RegisterClass(Branch::kClass);
        RegisterClass(Chain::kClass);
    }
    ~ArchiveTest() override { EXPECT_EQ(Leaf::s_alive, 0); }
};

Bytes Store(std::function<void(CArchive&)> const& write)
{
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    write(ar);
    ar.Close();
    return file.Detach();
}

std::string Hex(Bytes const& bytes)
{
    std::string text;
    for (std::byte const b : bytes) {
        text += text.empty() ? "" : " ";
        text += "0123456789abcdef"[std::to_integer<int>(b) >> 4];
        text += "0123456789abcdef"[std::to_integer<int>(b) & 15];
    }
    return text;
}

Bytes FromHex(std::string_view hex)
{
    Bytes bytes;
    for (std::size_t i = 0; i < hex.size(); i += 3)
        bytes.push_back(static_cast<std::byte>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
    return bytes;
}

/// The cause and offset of what the call throws; cause none when it does not throw.
template <typename F> std::pair<CArchiveException::Cause, std::uint64_t> Failure(F call)
{
    try {
        call();
    } catch (CArchiveException* e) {
        std::unique_ptr<CArchiveException> const owner(e);
        EXPECT_FALSE(e->GetErrorMessage().IsEmpty());
        return { e->m_cause, e->m_offset };
    }
    return { CArchiveException::none, 0 };
}

template <typename F> CArchiveException::Cause Cause(F call) { return Failure(call).first; }

Bytes SomeDocument()
{
    Branch branch;
    branch.value = 7;
    branch.number = -0.5;
    branch.flag = true;
    branch.colour = RGB(1, 2, 3);
    branch.text = "Grüße";
    branch.rectangle = CRect(1, 2, 3, 4);
    branch.date = COleDateTime(36526.5);
    branch.leaves.Add(std::make_unique<Leaf>(1));
    branch.leaves.Add(std::make_unique<Branch>());
    branch.leaves.Add(std::make_unique<Leaf>(3));
    branch.names = { "one", "" };
    branch.numbers = { 1.5, std::nan(""), 1e308 };
    branch.bytes = { 9, 8 };
    branch.inner.value = 5;
    return Store([&](CArchive& ar) { ar.WriteObject(&branch); });
}

} // namespace

TEST(ArchiveWithoutClasses, AsksForTheCallThatRegistersThem)
{
    // The other tests register classes, for as long as the program runs.
    if (HasRegisteredClasses())
        GTEST_SKIP();
    Leaf const leaf;
    Bytes const stored = Store([&](CArchive& ar) { ar.WriteObject(&leaf); });
    auto const load = [&] { (void)CArchive(stored).ReadObject(CObject::kClass); };
    auto const message = [&] {
        try {
            WithErrors(load);
        } catch (Error const& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    EXPECT_EQ(
        message(), "Archive, byte 10: unknown class Leaf; expected a call of OmbrelInit before anything is loaded.");
    RegisterClass(Chain::kClass);
    EXPECT_EQ(message(), "Archive, byte 10: unknown class Leaf.");
}

TEST_F(ArchiveTest, ItemsHaveThePlatformsBytes)
{
    COleDateTime null(0.0);
    null.SetStatus(COleDateTime::null);
    using Case = std::tuple<std::function<void(CArchive&)>, char const*>;
    Case const cases[] = {
        { [](CArchive& ar) { ar << BYTE(0x12) << WORD(0x1234) << LONG(-2); }, "12 34 12 fe ff ff ff" },
        { [](CArchive& ar) { ar << std::int16_t(-2) << DWORD(0x01020304); }, "fe ff 04 03 02 01" },
        { [](CArchive& ar) { ar << 1.5f << -2.0; }, "00 00 c0 3f 00 00 00 00 00 00 00 c0" },
        { [](CArchive& ar) { ar << CString(); }, "ff fe ff 00" },
        { [](CArchive& ar) { ar << CString(u"A\u20AC\U0001F600"); }, "ff fe ff 04 41 00 ac 20 3d d8 00 de" },
        { [](CArchive& ar) { ar << CRect(1, 2, 3, -1); }, "01 00 00 00 02 00 00 00 03 00 00 00 ff ff ff ff" },
        { [](CArchive& ar) { ar << CPoint(1, 2) << CSize(3, 4); }, "01 00 00 00 02 00 00 00 03 00 00 00 04 00 00 00" },
        { [](CArchive& ar) { ar << COleDateTime(-1.25); }, "00 00 00 00 00 00 00 00 00 00 f4 bf" },
        { [&](CArchive& ar) { ar << null; }, "02 00 00 00 00 00 00 00 00 00 00 00" },
        { [](CArchive& ar) { ar.WriteCount(0xFFFF); }, "ff ff ff ff 00 00" },
        { [](CArchive& ar) { ar.WriteCount(0xFFFFFFFE); }, "ff ff fe ff ff ff" },
        { [](CArchive& ar) { ar.WriteCount(0xFFFFFFFF); }, "ff ff ff ff ff ff ff ff ff ff 00 00 00 00" },
        { [](CArchive& ar) { ar.WriteObject(nullptr); }, "00 00" },
    };
    for (auto const& [write, bytes] : cases)
        EXPECT_EQ(Hex(Store(write)), bytes);
}

TEST_F(ArchiveTest, StringLengthsChangeFormAtTheirBoundaries)
{
    for (auto const& [length, expected] :
        { std::pair(254, "ff fe ff fe"), { 255, "ff fe ff ff ff 00" }, { 0xFFFD, "ff fe ff ff fd ff" },
            { 0xFFFE, "ff fe ff ff ff ff fe ff 00 00" }, { 0x10001, "ff fe ff ff ff ff 01 00 01 00" } }) {
        CString const text(u'x', length);
        Bytes bytes = Store([&](CArchive& ar) { ar << text; });
        CArchive wide { std::span<std::byte const>(bytes) };
        CString loaded;
        wide >> loaded;
        EXPECT_EQ(loaded, text);
        EXPECT_EQ(wide.GetRemaining(), 0u);
        bytes.resize(bytes.size() - 2 * static_cast<std::size_t>(length));
        EXPECT_EQ(Hex(bytes), expected);
        // The 8-bit form: no mark, one byte a character.
        bytes.erase(bytes.begin(), bytes.begin() + 3);
        bytes.insert(bytes.end(), static_cast<std::size_t>(length), std::byte('x'));
        CArchive narrow { std::span<std::byte const>(bytes) };
        narrow >> loaded;
        EXPECT_EQ(loaded, text);
    }
    Bytes const utf8 = FromHex("04 c3 bc ff 41");
    CArchive ar { std::span<std::byte const>(utf8) };
    CString text;
    ar >> text;
    EXPECT_EQ(text, u"\u00FC\uFFFDA");
}

TEST_F(ArchiveTest, ObjectReferencesShareOneCounterWithClasses)
{
    Leaf const first(1);
    Leaf const second(2);
    Branch const other;
    Bytes const bytes = Store([&](CArchive& ar) {
        ar.WriteObject(&first);
        ar.WriteObject(&second);
        ar.WriteObject(nullptr);
        ar.WriteObject(&second);
    });
    EXPECT_EQ(Hex(bytes), "ff ff 01 00 04 00 4c 65 61 66 01 00 00 00 01 80 02 00 00 00 00 00 03 00");
    CArchive ar { std::span<std::byte const>(bytes) };
    EXPECT_EQ(ar.ReadObjectOf<Leaf>()->value, 1);
    EXPECT_EQ(ar.ReadObjectOf<Leaf>()->value, 2);
    EXPECT_EQ(ar.ReadObjectOf<Leaf>(), nullptr);
    EXPECT_EQ(Cause([&] { ar.ReadObjectOf<Leaf>(); }), CArchiveException::badIndex);
}

TEST_F(ArchiveTest, IndicesFrom0x7FFFTakeTheLongForm)
{
    std::vector<std::unique_ptr<Leaf>> leaves;
    // The class has index 1, so that the last of these has 0x7FFE.
    for (int i = 2; i <= 0x7FFE; ++i)
        leaves.push_back(std::make_unique<Leaf>(i));
    Leaf const leaf(-1); // 0x7FFF
    Chain const chain; // its class 0x8000, itself 0x8001
    Chain const another;
    auto const last = [&](std::vector<CObject const*> const& objects) {
        std::ptrdiff_t start = 0;
        Bytes bytes = Store([&](CArchive& ar) {
            for (auto const& l : leaves)
                ar.WriteObject(l.get());
            start = static_cast<std::ptrdiff_t>(ar.GetOffset());
            for (CObject const* const object : objects)
                ar.WriteObject(object);
        });
        return std::pair(bytes, Hex(Bytes(bytes.begin() + start, bytes.end())));
    };
    EXPECT_EQ(last({ leaves.back().get(), nullptr, &leaf, &leaf, &chain, &another }).second,
        "fe 7f 00 00 01 80 ff ff ff ff ff 7f ff 7f 00 00 "
        "ff ff 01 00 05 00 43 68 61 69 6e 00 00 ff 7f 00 80 00 80 00 00");
    Bytes const bytes = last({ &leaf, &chain, &another }).first;
    CArchive ar { std::span<std::byte const>(bytes) };
    for (auto const& l : leaves)
        ASSERT_EQ(ar.ReadObjectOf<Leaf>()->value, l->value);
    EXPECT_EQ(ar.ReadObjectOf<Leaf>()->value, -1);
    EXPECT_TRUE(ar.ReadObjectOf<Chain>());
    EXPECT_TRUE(ar.ReadObjectOf<Chain>());
}

TEST_F(ArchiveTest, ADocumentComesBackTheSame)
{
    Bytes const bytes = SomeDocument();
    CMemFile file(bytes);
    CArchive ar(&file, CArchive::load);
    auto const branch = ar.ReadObjectOf<Branch>();
    EXPECT_EQ(ar.GetRemaining(), 0u);
    EXPECT_EQ(branch->version, 2);
    EXPECT_TRUE(DynamicDowncast<Branch>(branch->leaves[1]));
    EXPECT_EQ(Hex(Store([&](CArchive& to) { to.WriteObject(branch.get()); })), Hex(bytes));
}

TEST_F(ArchiveTest, TruncationAtEveryByteThrowsAndLeavesNothingBehind)
{
    Bytes const bytes = SomeDocument();
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        CArchive fromMemory { std::span<std::byte const>(bytes.data(), length) };
        EXPECT_EQ(Cause([&] { fromMemory.ReadObjectOf<Branch>(); }), CArchiveException::endOfFile) << length;
        CMemFile file(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length)));
        CArchive fromFile(&file, CArchive::load);
        EXPECT_EQ(Cause([&] { fromFile.ReadObjectOf<Branch>(); }), CArchiveException::endOfFile) << length;
        EXPECT_EQ(Leaf::s_alive, 0) << length;
    }
}

TEST_F(ArchiveTest, DamagedReferencesAreRefused)
{
    struct {
        char const* bytes;
        CArchiveException::Cause cause;
    } const cases[] = {
        { "ff ff 02 00 04 00 4c 65 61 66 00 00 00 00", CArchiveException::badSchema },
        { "ff ff 01 00 04 00 4c 65 61 67 00 00 00 00", CArchiveException::badClass },
        { "ff ff 01 00 00 00", CArchiveException::badClass },
        { "ff ff 01 00 00 01 4c 65 61 66", CArchiveException::badClass },
        { "ff ff 01 00 ff 00 4c 65 61 66", CArchiveException::endOfFile },
        { "ff ff 01 00 05 00 43 68 61 69 6e 01 00", CArchiveException::badIndex },
        { "ff ff 01 00 05 00 43 68 61 69 6e 03 80", CArchiveException::badIndex },
        { "ff ff 01 00 05 00 43 68 61 69 6e ff 7f ff ff ff ff", CArchiveException::badIndex },
        { "ff ff 01 00 05 00 43 68 61 69 6e ff ff 01 00 04 00 4c 65 61 66", CArchiveException::badClass },
        { "00 80", CArchiveException::badIndex },
        { "02 00", CArchiveException::badIndex },
        { "ff 7f 01 00 00 80", CArchiveException::badIndex },
    };
    for (auto const& c : cases) {
        Bytes const bytes = FromHex(c.bytes);
        CArchive ar { std::span<std::byte const>(bytes) };
        EXPECT_EQ(Cause([&] { ar.ReadObjectOf<Leaf>(); }), c.cause) << c.bytes;
        EXPECT_EQ(Leaf::s_alive, 0) << c.bytes;
        BYTE next = 0;
        EXPECT_EQ(Cause([&] { ar >> next; }), CArchiveException::genericException) << c.bytes;
        EXPECT_EQ(Cause([&] { ar.Peek(1); }), CArchiveException::genericException) << c.bytes;
    }
}

TEST_F(ArchiveTest, CountsAndLengthsNeverExceedTheBytesThatRemain)
{
    CString text;
    CPlainDoubleArray numbers;
    OwnedArray<Leaf> leaves;
    COleDateTime date;
    auto const readString = [&](CArchive& ar) { ar >> text; };
    auto const readDoubles = [&](CArchive& ar) { ArchiveFields(ar).Raw(numbers); };
    auto const readLeaves = [&](CArchive& ar) { ArchiveFields(ar).Owned(leaves); };
    auto const readDate = [&](CArchive& ar) { ar >> date; };
    struct {
        char const* bytes;
        std::function<void(CArchive&)> read;
        CArchiveException::Cause cause;
    } const cases[] = {
        { "ff fe ff ff ff ff 00 28 6b ee 41 00", readString, CArchiveException::endOfFile },
        { "ff ff ff 00 28 6b ee 41 00", readString, CArchiveException::endOfFile },
        { "ff fe ff ff fe ff 00", readString, CArchiveException::badData },
        { "02 00 00 00 00 00 00 00 00 00", readDoubles, CArchiveException::endOfFile },
        { "ff ff ff ff ff ff ff ff ff ff ff ff ff ff", readDoubles, CArchiveException::endOfFile },
        { "ff ff 00 00 00 80 00", readDoubles, CArchiveException::endOfFile },
        { "03 00 00 00 00 00 00", readLeaves, CArchiveException::endOfFile },
        { "01 00 00 00", readLeaves, CArchiveException::badClass },
        { "03 00 00 00 00 00 00 00 00 00 f4 bf", readDate, CArchiveException::badData },
        // A date in the stream is not valid for claiming to be.
        { "00 00 00 00 00 00 00 00 00 00 f8 7f", readDate, CArchiveException::none },
    };
    for (auto const& c : cases) {
        Bytes const bytes = FromHex(c.bytes);
        CArchive ar { std::span<std::byte const>(bytes) };
        EXPECT_EQ(Cause([&] { c.read(ar); }), c.cause) << c.bytes;
    }
    EXPECT_EQ(date.GetStatus(), COleDateTime::invalid);
}

TEST_F(ArchiveTest, EmptyTextsTakeNoMoreThanAPointerEach)
{
    // One byte each, in the 8-bit form.
    Bytes bytes = FromHex("ff ff 00 00 10 00");
    bytes.resize(bytes.size() + 0x100000);
    CArchive ar { std::span<std::byte const>(bytes) };
    CStringArray texts;
    ArchiveFields(ar).Strings(texts);
    EXPECT_EQ(texts.GetSize(), 0x100000);
    EXPECT_LE(texts.Values().capacity() * sizeof(CString), 8u * 0x100000);
}

TEST_F(ArchiveTest, NestingIsBoundedInBothDirections)
{
    auto const stored = [](int depth) {
        std::unique_ptr<Chain> chain;
        for (; depth > 0; --depth) {
            auto outer = std::make_unique<Chain>();
            outer->next = std::move(chain);
            chain = std::move(outer);
        }
        return Store([&](CArchive& ar) { ar.WriteObject(chain.get()); });
    };
    Bytes bytes = stored(64);
    CArchive deep { std::span<std::byte const>(bytes) };
    EXPECT_TRUE(deep.ReadObjectOf<Chain>());
    EXPECT_EQ(Cause([&] { stored(65); }), CArchiveException::tooDeep);
    // Class 1, then objects of it within each other.
    bytes = FromHex("ff ff 01 00 05 00 43 68 61 69 6e");
    for (int i = 0; i < 100'000; ++i)
        bytes.insert(bytes.end(), { std::byte(0x01), std::byte(0x80) });
    CArchive tooDeep { std::span<std::byte const>(bytes) };
    EXPECT_EQ(Cause([&] { tooDeep.ReadObjectOf<Chain>(); }), CArchiveException::tooDeep);
}

TEST_F(ArchiveTest, TheWrongDirectionAndClassesWithoutAFormAreRefused)
{
    CMemFile file;
    CArchive storing(&file, CArchive::store);
    LONG value = 0;
    EXPECT_EQ(Cause([&] { storing >> value; }), CArchiveException::writeOnly);
    CArchive loading(&file, CArchive::load);
    EXPECT_EQ(Cause([&] { loading << value; }), CArchiveException::readOnly);
    Unregistered const object;
    CArchive ar(&file, CArchive::store);
    ar << value;
    EXPECT_EQ(Failure([&] { ar.WriteObject(&object); }), std::make_pair(CArchiveException::badClass, std::uint64_t(4)));
    EXPECT_EQ(Cause([&] { ar.Close(); }), CArchiveException::genericException);
}

TEST_F(ArchiveTest, LargeBlocksAndSmallOnesMixAcrossTheBuffer)
{
    Bytes block(150'000);
    for (std::size_t i = 0; i < block.size(); ++i)
        block[i] = static_cast<std::byte>(i * 31 >> 3);
    CMemFile file;
    file.Write("skip", 4);
    CArchive storing(&file, CArchive::store);
    storing << BYTE(1);
    storing.Write(block.data(), block.size());
    for (LONG i = 0; i < 40'000; ++i)
        storing << i;
    storing.Write(block.data(), 65'536);
    EXPECT_EQ(storing.GetOffset(), 1u + 150'000u + 160'000u + 65'536u);
    storing.Close();
    file.SeekToBegin();
    char skipped[4];
    file.Read(skipped, sizeof skipped);
    CArchive ar(&file, CArchive::load);
    EXPECT_EQ(ar.GetRemaining(), 1u + 150'000u + 160'000u + 65'536u);
    BYTE one = 0;
    ar >> one;
    Bytes loaded(block.size());
    ar.Read(loaded.data(), loaded.size());
    EXPECT_TRUE(loaded == block);
    for (LONG i = 0; i < 40'000; ++i) {
        // Looking ahead changes nothing, across the edge of the buffer too.
        LONG ahead = -1;
        std::memcpy(&ahead, ar.Peek(sizeof ahead).data(), sizeof ahead);
        LONG value = -1;
        ar >> value;
        ASSERT_EQ(value, i);
        ASSERT_EQ(ahead, i);
    }
    EXPECT_TRUE(std::ranges::equal(ar.Peek(1'000'000), std::span(block).first(65'536)));
    EXPECT_EQ(ar.GetRemaining(), 65'536u);
    EXPECT_EQ(Failure([&] { ar.Read(loaded.data(), 65'537); }),
        std::make_pair(CArchiveException::endOfFile, std::uint64_t(1 + 150'000 + 160'000)));
}

TEST_F(ArchiveTest, ErrorsOfTheFileReachWhoeverStores)
{
    for (int const count : { 1, 100'000 }) {
        try {
            CFile file("/dev/full", CFile::modeWrite);
            CArchive ar(&file, CArchive::store);
            CByteArray bytes;
            bytes.SetSize(count);
            ArchiveFields(ar).Raw(bytes);
            ar.Close();
            file.Close();
            ADD_FAILURE() << count;
        } catch (CFileException* e) {
            EXPECT_EQ(e->m_cause, CFileException::diskFull);
            e->Delete();
        }
    }
}

} // namespace ombrel
