#pragma once
#include "ombrel/platform/framework/Archive.h"

#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ombrel::test {

/// The bytes that an archive should hold, put together without the archive's own code: little-endian, in order.
class Bytes {
public:
    template <typename... T> Bytes& Int(T... values) { return (Append<std::int32_t>(values), ..., *this); }
    template <typename... T> Bytes& Short(T... values) { return (Append<std::int16_t>(values), ..., *this); }
    template <typename... T> Bytes& Byte(T... values) { return (Append<std::uint8_t>(values), ..., *this); }
    template <typename... T> Bytes& Float(T... values) { return (Append<float>(values), ..., *this); }
    template <typename... T> Bytes& Double(T... values) { return (Append<double>(values), ..., *this); }
    /// ASCII as a wide string of fewer than 255 units.
    Bytes& Text(std::string_view ascii)
    {
        for (int const unit : { 0xFF, 0xFE, 0xFF, static_cast<int>(ascii.size()) })
            Append<std::uint8_t>(unit);
        for (char const c : ascii)
            Append<std::uint16_t>(c);
        return *this;
    }
    template <typename... T> Bytes& Texts(T... ascii) { return (Text(ascii), ..., *this); }
    /// A new object of a class met for the first time, up to its own bytes.
    Bytes& NewClass(std::string_view name)
    {
        Short(-1, 1, static_cast<int>(name.size()));
        for (char const c : name)
            Append<std::uint8_t>(c);
        return *this;
    }
    Bytes& Add(Bytes const& other)
    {
        m_bytes.insert(m_bytes.end(), other.m_bytes.begin(), other.m_bytes.end());
        return *this;
    }
    // The forms that value types have in archives
    Bytes& Point(double x, double y) { return Int(1).Double(x, y); }
    Bytes& Font(std::string_view face, int weight, int italic, double factor)
    {
        return Int(1).Text(face).Int(weight, italic).Double(factor);
    }
    /// The common part of graph components.
    Bytes& Component(int colour, int modified, int zModified, int tag)
    {
        return Int(1, colour, 1, modified, zModified, tag);
    }

    std::vector<std::byte> const& Get() const { return m_bytes; }
    /// As text, so that a failed comparison can be read.
    std::string Hex() const
    {
        std::string hex;
        for (std::byte const b : m_bytes) {
            constexpr char kDigits[] = "0123456789ABCDEF";
            hex += { kDigits[std::to_integer<int>(b >> 4)], kDigits[std::to_integer<int>(b & std::byte { 15 })], ' ' };
        }
        return hex;
    }
    friend bool operator==(Bytes const& a, Bytes const& b) { return a.m_bytes == b.m_bytes; }
    friend void PrintTo(Bytes const& bytes, std::ostream* out) { *out << bytes.Hex(); }

    static Bytes Of(std::span<std::byte const> from)
    {
        Bytes bytes;
        bytes.m_bytes.assign(from.begin(), from.end());
        return bytes;
    }

private:
    template <typename Stored, typename T> void Append(T value)
    {
        auto const stored = static_cast<Stored>(value);
        std::byte raw[sizeof stored];
        std::memcpy(raw, &stored, sizeof stored);
        m_bytes.insert(m_bytes.end(), raw, raw + sizeof stored);
    }
    std::vector<std::byte> m_bytes;
};

/// What the object stores by itself, without class identity.
inline Bytes Stored(CObject& object)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    object.Serialize(archive);
    archive.Close();
    return Bytes::Of(file.GetBytes());
}

/// Loads the object from what Stored gives; true when all bytes were used and nothing was thrown.
inline bool Load(CObject& object, Bytes const& bytes)
{
    CArchive archive { std::span<std::byte const>(bytes.Get()) };
    try {
        object.Serialize(archive);
    } catch (CArchiveException* e) {
        e->Delete();
        return false;
    }
    return archive.GetRemaining() == 0;
}

} // namespace ombrel::test
