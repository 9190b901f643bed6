#include "ombrel/platform/framework/Archive.h"

#include "ombrel/platform/framework/DateTime.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstring>
#include <limits>

namespace ombrel {

static_assert(std::endian::native == std::endian::little, "values are stored as they lie in memory");

namespace {

/// Blocks of this size and more go straight between the caller and the file.
constexpr std::size_t kBufferSize = std::size_t(64) << 10;
/// Objects within objects; documents need a handful.
constexpr int kDeepest = 64;
constexpr std::size_t kLongestClassName = 255;

/// What stands where an object's class or index is expected.
constexpr WORD kNullTag = 0;
constexpr WORD kNewClassTag = 0xFFFF;
constexpr WORD kBigTag = 0x7FFF;
constexpr WORD kClassBit = 0x8000;
constexpr DWORD kBigClassBit = 0x80000000;
/// Indices stay clear of the bit that marks classes.
constexpr std::uint32_t kLastIndex = 0x3FFFFFFE;

/// The mark of a wide string, 0xFF before it, stands in the place of a 16-bit length.
constexpr WORD kWideMark = 0xFFFE;

} // namespace

CArchive::CArchive(CFile* file, Mode mode)
    : m_mode(mode)
    , m_file(file)
{
    assert(file);
    if (mode == load) {
        std::uint64_t const length = file->GetLength();
        m_length = length - std::min(length, file->GetPosition());
    }
}

CArchive::CArchive(std::span<std::byte const> bytes)
    : m_mode(load)
    , m_unread(bytes)
    , m_transferred(bytes.size())
    , m_length(bytes.size())
{
}

CArchive::~CArchive()
{
    // Whoever needs to know whether that succeeds calls Close.
    if (!m_failed)
        (void)Succeeds([this] { Close(); });
}

void CArchive::Close()
{
    if (IsStoring())
        Flush();
}

void CArchive::Flush()
{
    Require(store);
    if (m_buffer.empty())
        return;
    // An error of the file leaves the archive failed: how much has arrived is not known.
    m_failed = true;
    m_file->Write(m_buffer.data(), m_buffer.size());
    m_failed = false;
    m_transferred += m_buffer.size();
    m_buffer.clear();
}

void CArchive::Require(Mode mode)
{
    if (m_failed)
        Fail(CArchiveException::genericException, "no further use after an earlier error");
    if (m_mode != mode)
        Fail(mode == load ? CArchiveException::writeOnly : CArchiveException::readOnly, {});
}

void CArchive::Fail(CArchiveException::Cause cause, CString const& expected)
{
    Fail(std::make_unique<CArchiveException>(cause, GetOffset(), expected));
}

void CArchive::Fail(std::unique_ptr<CArchiveException> exception)
{
    m_failed = true;
    if (m_file)
        exception->m_strFileName = m_file->GetFilePath();
    throw exception.release();
}

void CArchive::Write(void const* from, std::size_t count)
{
    Require(store);
    if (count == 0)
        return;
    if (m_buffer.size() + count > kBufferSize)
        Flush();
    if (count >= kBufferSize) {
        m_failed = true;
        m_file->Write(from, count);
        m_failed = false;
        m_transferred += count;
        return;
    }
    m_buffer.reserve(kBufferSize);
    auto const* const bytes = static_cast<std::byte const*>(from);
    m_buffer.insert(m_buffer.end(), bytes, bytes + count);
}

void CArchive::Read(void* into, std::size_t count)
{
    Require(load);
    if (count == 0)
        return;
    if (count > m_unread.size())
        RequireRemaining(count, 1, "more data");
    auto* bytes = static_cast<std::byte*>(into);
    if (count - std::min(count, m_unread.size()) >= kBufferSize) {
        std::size_t const ready = m_unread.size();
        std::copy(m_unread.begin(), m_unread.end(), bytes);
        m_unread = {};
        ReadFile(bytes + ready, count - ready);
        return;
    }
    for (;;) {
        std::size_t const n = std::min(count, m_unread.size());
        std::copy_n(m_unread.begin(), n, bytes);
        m_unread = m_unread.subspan(n);
        bytes += n;
        count -= n;
        if (count == 0)
            return;
        Fill(count);
    }
}

/// Reads from the file what must be there by its length.
void CArchive::ReadFile(std::byte* into, std::size_t count)
{
    m_failed = true;
    std::size_t const n = m_file->Read(into, count);
    m_failed = false;
    m_transferred += n;
    if (n < count)
        Fail(CArchiveException::endOfFile, "the rest of the file");
}

/// Makes at least the given number of bytes ready, or all that remain.
void CArchive::Fill(std::size_t wanted)
{
    std::uint64_t const remaining = GetRemaining();
    if (wanted <= m_unread.size() || remaining == m_unread.size())
        return;
    auto const total = static_cast<std::size_t>(std::min<std::uint64_t>(std::max(wanted, kBufferSize), remaining));
    std::size_t const ready = m_unread.size();
    if (ready > 0)
        std::memmove(m_buffer.data(), m_unread.data(), ready);
    m_unread = {};
    if (m_buffer.size() < total)
        m_buffer.resize(total);
    ReadFile(m_buffer.data() + ready, total - ready);
    m_unread = std::span<std::byte const>(m_buffer.data(), total);
}

std::span<std::byte const> CArchive::Peek(std::size_t count)
{
    Require(load);
    Fill(count);
    return m_unread.first(std::min(count, m_unread.size()));
}

std::uint64_t CArchive::GetRemaining() const
{
    std::uint64_t const offset = GetOffset();
    return IsStoring() ? 0 : m_length - std::min(m_length, offset);
}

std::uint64_t CArchive::GetOffset() const
{
    return IsStoring() ? m_transferred + m_buffer.size() : m_transferred - m_unread.size();
}

void CArchive::RequireRemaining(std::uint64_t count, std::size_t bytesEach, char const* what)
{
    Require(load);
    if (count > GetRemaining() / std::max<std::size_t>(bytesEach, 1))
        Fail(CArchiveException::endOfFile, what);
}

void CArchive::WriteCount(std::uint64_t count)
{
    if (count < 0xFFFF) {
        *this << static_cast<WORD>(count);
    } else if (count < 0xFFFFFFFF) {
        *this << WORD(0xFFFF) << static_cast<DWORD>(count);
    } else {
        *this << WORD(0xFFFF) << DWORD(0xFFFFFFFF) << count;
    }
}

std::size_t CArchive::ReadCount(std::size_t bytesEach)
{
    WORD shortCount = 0;
    *this >> shortCount;
    std::uint64_t count = shortCount;
    if (shortCount == 0xFFFF) {
        DWORD longCount = 0;
        *this >> longCount;
        count = longCount;
        if (longCount == 0xFFFFFFFF)
            *this >> count;
    }
    RequireRemaining(count, bytesEach, "as many elements as were counted");
    if (count > static_cast<std::uint64_t>(std::numeric_limits<int>::max()))
        Fail(CArchiveException::badData, "a count of elements that fits in memory");
    return static_cast<std::size_t>(count);
}

CArchive& CArchive::operator<<(CString const& v)
{
    auto const length = static_cast<DWORD>(v.View().size());
    *this << BYTE(0xFF) << kWideMark;
    if (length < 0xFF) {
        *this << static_cast<BYTE>(length);
    } else if (length < 0xFFFE) {
        *this << BYTE(0xFF) << static_cast<WORD>(length);
    } else {
        *this << BYTE(0xFF) << WORD(0xFFFF) << length;
    }
    Write(v.GetString(), v.View().size() * sizeof(char16_t));
    return *this;
}

/// The length of a string in units, and whether these are wide.
std::uint64_t CArchive::ReadLength(bool& wide)
{
    wide = false;
    for (;;) {
        BYTE byteLength = 0;
        *this >> byteLength;
        if (byteLength < 0xFF)
            return byteLength;
        WORD wordLength = 0;
        *this >> wordLength;
        if (wordLength == kWideMark) {
            if (wide)
                Fail(CArchiveException::badData, "the length of a string");
            wide = true;
            continue;
        }
        if (wordLength < 0xFFFF)
            return wordLength;
        DWORD longLength = 0;
        *this >> longLength;
        return longLength;
    }
}

CArchive& CArchive::operator>>(CString& v)
{
    bool wide = false;
    std::uint64_t const length = ReadLength(wide);
    RequireRemaining(length, wide ? sizeof(char16_t) : 1, "the characters of a string");
    if (length > static_cast<std::uint64_t>(std::numeric_limits<int>::max()))
        Fail(CArchiveException::badData, "a string that fits in memory");
    if (wide) {
        std::u16string text(static_cast<std::size_t>(length), u'\0');
        Read(text.data(), text.size() * sizeof(char16_t));
        v = CString(text);
    } else {
        std::string text(static_cast<std::size_t>(length), '\0');
        Read(text.data(), text.size());
        v = CString(text);
    }
    return *this;
}

CArchive& CArchive::operator<<(CRect const& v) { return *this << v.left << v.top << v.right << v.bottom; }
CArchive& CArchive::operator<<(CPoint v) { return *this << v.x << v.y; }
CArchive& CArchive::operator<<(CSize v) { return *this << v.cx << v.cy; }
CArchive& CArchive::operator>>(CRect& v) { return *this >> v.left >> v.top >> v.right >> v.bottom; }
CArchive& CArchive::operator>>(CPoint& v) { return *this >> v.x >> v.y; }
CArchive& CArchive::operator>>(CSize& v) { return *this >> v.cx >> v.cy; }

CArchive& CArchive::operator<<(COleDateTime const& v) { return *this << static_cast<LONG>(v.m_status) << v.m_value; }

CArchive& CArchive::operator>>(COleDateTime& v)
{
    LONG status = 0;
    double value = 0.0;
    *this >> status >> value;
    if (status < COleDateTime::valid || status > COleDateTime::null)
        Fail(CArchiveException::badData, "the status of a date");
    v.m_value = value;
    v.m_status = static_cast<COleDateTime::DateTimeStatus>(status);
    // Whatever the stream claims, only values in range are dates.
    if (v.IsValid() && !COleDateTime(value).IsValid())
        v.m_status = COleDateTime::invalid;
    return *this;
}

std::uint32_t CArchive::TakeIndex()
{
    if (m_nextIndex > kLastIndex)
        Fail(CArchiveException::badIndex, "fewer objects");
    return m_nextIndex++;
}

void CArchive::WriteIndex(std::uint32_t index, bool isClass)
{
    if (index < kBigTag)
        *this << static_cast<WORD>(isClass ? kClassBit | index : index);
    else
        *this << kBigTag << (isClass ? kBigClassBit | index : index);
}

void CArchive::WriteClass(CRuntimeClass const& c)
{
    if (auto const found = m_storedIndex.find(&c); found != m_storedIndex.end()) {
        WriteIndex(found->second, true);
        return;
    }
    std::string_view const name = c.name;
    if (!c.create || c.schema == CRuntimeClass::kNotPersistent || name.empty() || name.size() > kLongestClassName)
        Fail(CArchiveException::badClass, CString("a class with an archive form, not ") + CString(name));
    *this << kNewClassTag << c.schema << static_cast<WORD>(name.size());
    Write(name.data(), name.size());
    m_storedIndex.emplace(&c, TakeIndex());
}

void CArchive::WriteObject(CObject const* object)
{
    Require(store);
    if (!object) {
        *this << kNullTag;
        return;
    }
    if (auto const found = m_storedIndex.find(object); found != m_storedIndex.end()) {
        WriteIndex(found->second, false);
        return;
    }
    WriteClass(object->GetRuntimeClass());
    m_storedIndex.emplace(object, TakeIndex());
    // Storing does not change the object; Serialize is not const because it also loads.
    SerializeWithin(const_cast<CObject&>(*object));
}

void CArchive::SerializeWithin(CObject& object)
{
    if (m_depth == kDeepest)
        Fail(CArchiveException::tooDeep, "objects nested less deeply");
    ++m_depth;
    try {
        object.Serialize(*this);
    } catch (...) {
        m_failed = true;
        throw;
    }
    --m_depth;
}

CRuntimeClass const& CArchive::ReadNewClass()
{
    WORD schema = 0;
    WORD length = 0;
    *this >> schema >> length;
    if (length == 0 || length > kLongestClassName)
        Fail(CArchiveException::badClass, "the length of a class name");
    std::array<char, kLongestClassName> text;
    Read(text.data(), length);
    std::string_view const name(text.data(), length);
    CRuntimeClass const* const c = FindRegisteredClass(name);
    if (!c || !c->create) {
        char const* const hint = HasRegisteredClasses() ? "" : "a call of OmbrelInit before anything is loaded";
        auto unknown = std::make_unique<CArchiveException>(CArchiveException::badClass, GetOffset(), hint);
        unknown->m_unknownClass = CString(name);
        Fail(std::move(unknown));
    }
    if (c->schema != schema) {
        CString expected;
        expected.Format("schema %d of class %s, not %d", c->schema, c->name, schema);
        Fail(CArchiveException::badSchema, expected);
    }
    TakeIndex();
    m_loaded.push_back(c);
    return *c;
}

CRuntimeClass const* CArchive::ReadClass()
{
    WORD tag = 0;
    *this >> tag;
    if (tag == kNewClassTag)
        return &ReadNewClass();
    DWORD index = tag & (kClassBit - 1u);
    bool isClass = (tag & kClassBit) != 0;
    if (tag == kBigTag) {
        *this >> index;
        isClass = (index & kBigClassBit) != 0;
        index &= kBigClassBit - 1u;
    }
    if (!isClass) {
        if (index == kNullTag)
            return nullptr;
        Fail(CArchiveException::badIndex, "a new object");
    }
    if (index == 0 || index > m_loaded.size() || !m_loaded[index - 1])
        Fail(CArchiveException::badIndex, "the index of a class met before");
    return m_loaded[index - 1];
}

std::unique_ptr<CObject> CArchive::ReadObject(CRuntimeClass const& expected)
{
    Require(load);
    CRuntimeClass const* const c = ReadClass();
    if (!c)
        return nullptr;
    if (!c->IsDerivedFrom(expected)) {
        CString text;
        text.Format("an object of class %s, not %s", expected.name, c->name);
        Fail(CArchiveException::badClass, text);
    }
    TakeIndex();
    m_loaded.push_back(nullptr);
    std::unique_ptr<CObject> object = c->create();
    SerializeWithin(*object);
    return object;
}

} // namespace ombrel
