#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Index.h"
#include "ombrel/platform/framework/Types.h"

#include <atomic>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace ombrel {

class FormatArgument;

/// A wide string: UTF-16 code units, lengths and positions counted in units.
///
/// 8-bit text is UTF-8; invalid sequences become U+FFFD and nothing throws but for lack of memory, and an index outside
/// the text (CInvalidArgException*, newly allocated). Copies share their units until one of them changes, and an empty
/// string is no more than a pointer: a document may hold millions of them. Threads may read and copy the same string.
class OMBREL_EXPORT CString {
public:
    CString() = default;
    CString(CString const& other) noexcept
        : m_block(other.m_block)
    {
        if (m_block)
            m_block->holders.fetch_add(1, std::memory_order_relaxed);
    }
    CString(CString&& other) noexcept
        : m_block(std::exchange(other.m_block, nullptr))
    {
    }
    ~CString() { Release(m_block); }
    CString& operator=(CString other) noexcept
    {
        std::swap(m_block, other.m_block);
        return *this;
    }
    CString(char const* utf8);
    CString(std::string_view utf8);
    CString(std::string const& utf8)
        : CString(std::string_view(utf8))
    {
    }
    CString(char16_t const* text);
    CString(std::u16string_view text)
        : m_block(NewBlock(text, text.size()))
    {
    }
    CString(std::u16string const& text)
        : CString(std::u16string_view(text))
    {
    }
    CString(wchar_t const* text);
    explicit CString(char16_t unit, int repeat = 1);

    int GetLength() const { return m_block ? static_cast<int>(m_block->length) : 0; }
    bool IsEmpty() const { return GetLength() == 0; }
    void Empty() { Release(std::exchange(m_block, nullptr)); }
    /// The unit at index; 0 at the index behind the last one.
    char16_t GetAt(int index) const { return GetString()[CheckedIndex(index, View().size() + 1)]; }
    char16_t operator[](int index) const { return GetAt(index); }
    void SetAt(int index, char16_t unit);
    /// The units, zero-terminated; valid until the string changes.
    char16_t const* GetString() const { return m_block ? m_block->Units() : u""; }
    std::u16string_view View() const { return { GetString(), static_cast<std::size_t>(GetLength()) }; }
    /// The text as UTF-8; an unpaired surrogate becomes U+FFFD.
    std::string ToUtf8() const;

    CString& operator+=(CString const& other);
    CString& operator+=(char16_t unit);
    friend OMBREL_EXPORT CString operator+(CString const& a, CString const& b);
    friend bool operator==(CString const& a, CString const& b) { return a.View() == b.View(); }
    friend std::strong_ordering operator<=>(CString const& a, CString const& b) { return a.View() <=> b.View(); }
    /// Negative, zero or positive, by UTF-16 units.
    int Compare(CString const& other) const;
    /// As Compare after Unicode simple case folding of both.
    int CompareNoCase(CString const& other) const;

    /// Parts of the string; positions and counts outside it are limited to it.
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;

    /// The first position at or after start, or −1.
    int Find(CString const& part, int start = 0) const;
    int Find(char16_t unit, int start = 0) const;
    /// The last position, or −1.
    int ReverseFind(char16_t unit) const;
    /// The first position of any unit of the set, or −1.
    int FindOneOf(CString const& set) const;

    CString& MakeLower();
    CString& MakeUpper();
    /// White space goes from both ends, the left or the right end.
    CString& Trim();
    CString& TrimLeft();
    CString& TrimRight();
    /// How many were replaced, removed.
    int Replace(CString const& old, CString const& replacement);
    int Remove(char16_t unit);
    /// Returns the new length.
    int Insert(int index, CString const& part);
    int Delete(int index, int count = 1);

    /// The printf conversions %d %i %u %x %X %c %s %e %f %g %% with flags, width and precision ('*' too), the same
    /// in every process locale. An argument of the wrong kind is converted; a missing one is left out.
    template <typename... Args> void Format(CString const& format, Args const&... args);
    void FormatV(CString const& format, std::span<FormatArgument const> args);

private:
    /// The units follow, zero-terminated.
    struct Block {
        std::atomic<std::uint32_t> holders;
        std::uint32_t length;
        /// Units that there is room for, without the terminator.
        std::uint32_t capacity;
        char16_t* Units() { return reinterpret_cast<char16_t*>(this + 1); }
    };
    /// With the text in it and room for more; null for no room at all.
    static Block* NewBlock(std::u16string_view text, std::size_t capacity);
    static void Release(Block* block)
    {
        if (block && block->holders.fetch_sub(1, std::memory_order_acq_rel) == 1)
            Free(block);
    }
    static void Free(Block* block);
    /// Replaces the text; the new one may be part of the old one.
    void Assign(std::u16string_view text);
    CString& Append(std::u16string_view text);

    /// Null for an empty string.
    Block* m_block = nullptr;
};

/// One argument of CString::Format.
class OMBREL_EXPORT FormatArgument {
public:
    /// What the argument is.
    enum class Kind { Integer, Real, Text };
    template <std::integral T> FormatArgument(T value)
        : m_kind(Kind::Integer)
        , m_long(sizeof(T) > sizeof(int))
        , m_integer(static_cast<long long>(value))
    {
    }
    FormatArgument(double value)
        : m_kind(Kind::Real)
        , m_real(value)
    {
    }
    FormatArgument(CString const& text)
        : m_kind(Kind::Text)
        , m_text(text)
    {
    }
    FormatArgument(char const* text)
        : m_kind(Kind::Text)
        , m_text(text)
    {
    }
    Kind GetKind() const { return m_kind; }
    /// Reals are cut towards zero and limited to the range (NaN gives 0); of a text its leading number, or 0.
    long long AsInteger() const;
    double AsReal() const;
    /// As %u and %x see it: a negative int is its 32 bits, a longer integer its 64 bits.
    unsigned long long AsUnsigned() const;
    /// Empty for numbers.
    CString const& AsText() const { return m_text; }
    /// The text, or the number as "%d" or "%g" writes it.
    CString ConvertedToText() const;

private:
    Kind m_kind;
    bool m_long = false;
    long long m_integer = 0;
    double m_real = 0.0;
    CString m_text;
};

template <typename... Args> void CString::Format(CString const& format, Args const&... args)
{
    FormatV(format, std::initializer_list<FormatArgument> { FormatArgument(args)... });
}

/// The leading integer of a text: white space, sign and digits; 0 without digits, limited to the int range.
OMBREL_EXPORT int _wtoi(CString const& text);

} // namespace ombrel
