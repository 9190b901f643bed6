#pragma once
#include "ombrel/platform/framework/Archive.h"
#include "ombrel/platform/framework/DateTime.h"

#include <type_traits>

namespace ombrel {

/// The fields of a class in stream order, listed once for both directions: each call stores its arguments or loads
/// them, so that storing and loading cannot drift apart. The method names the stored type, whatever the member's.
class ArchiveFields {
public:
    explicit ArchiveFields(CArchive& ar)
        : m_ar(ar)
    {
    }

    /// The layout version: stores current; returns the one in the stream when loading.
    int Version(int current)
    {
        LONG v = current;
        if (m_ar.IsStoring())
            m_ar << v;
        else
            m_ar >> v;
        return v;
    }
    /// 32-bit integers; members may be int, bool-like flags or enumerations with an int behind them.
    template <typename... T> ArchiveFields& Int(T&... members)
    {
        (As<LONG>(members), ...);
        return *this;
    }
    template <typename... T> ArchiveFields& Dword(T&... members)
    {
        (As<DWORD>(members), ...);
        return *this;
    }
    template <typename... T> ArchiveFields& Short(T&... members)
    {
        (As<std::int16_t>(members), ...);
        return *this;
    }
    template <typename... T> ArchiveFields& Byte(T&... members)
    {
        (As<BYTE>(members), ...);
        return *this;
    }
    template <typename... T> ArchiveFields& Float(T&... members)
    {
        (As<float>(members), ...);
        return *this;
    }
    template <typename... T> ArchiveFields& Double(T&... members)
    {
        (As<double>(members), ...);
        return *this;
    }
    template <typename... T> ArchiveFields& String(T&... members)
    {
        (Direct(members), ...);
        return *this;
    }
    template <typename... T> ArchiveFields& Rect(T&... members)
    {
        (Direct(members), ...);
        return *this;
    }
    ArchiveFields& Date(COleDateTime& member)
    {
        Direct(member);
        return *this;
    }
    /// Objects that are fields: their own Serialize in place, without class identity.
    template <typename... T> ArchiveFields& Nested(T&... objects)
    {
        (objects.Serialize(m_ar), ...);
        return *this;
    }
    /// A count, then one owned object reference each; loading replaces the array and accepts T's classes only.
    template <typename T> ArchiveFields& Owned(OwnedArray<T>& objects)
    {
        if (m_ar.IsStoring()) {
            m_ar.WriteCount(static_cast<std::uint64_t>(objects.GetSize()));
            for (T* object : objects)
                m_ar.WriteObject(object);
            return *this;
        }
        objects.DeleteAll();
        std::size_t const count = m_ar.ReadCount(sizeof(WORD));
        for (std::size_t i = 0; i < count; ++i) {
            auto object = m_ar.ReadObjectOf<T>();
            if (!object)
                m_ar.Fail(CArchiveException::badClass, CString("an object of class ") + CString(T::kClass.name));
            objects.Add(std::move(object));
        }
        return *this;
    }
    ArchiveFields& Strings(CStringArray& strings)
    {
        if (m_ar.IsStoring()) {
            m_ar.WriteCount(static_cast<std::uint64_t>(strings.GetSize()));
            for (CString const& s : strings)
                m_ar << s;
            return *this;
        }
        // At once: growing step by step would take half as much memory again.
        strings.RemoveAll();
        strings.SetSize(static_cast<int>(m_ar.ReadCount(1)));
        for (CString& s : strings)
            m_ar >> s;
        return *this;
    }
    /// A count, then the elements as they lie in memory: CDWordArray, CByteArray, arrays of doubles.
    template <typename T> ArchiveFields& Raw(CArray<T>& elements)
    {
        static_assert(std::is_arithmetic_v<T>);
        if (m_ar.IsStoring()) {
            m_ar.WriteCount(static_cast<std::uint64_t>(elements.GetSize()));
        } else {
            std::size_t const count = m_ar.ReadCount(sizeof(T));
            elements.RemoveAll();
            elements.SetSize(static_cast<int>(count));
        }
        std::size_t const bytes = static_cast<std::size_t>(elements.GetSize()) * sizeof(T);
        if (m_ar.IsStoring())
            m_ar.Write(elements.GetData(), bytes);
        else
            m_ar.Read(elements.GetData(), bytes);
        return *this;
    }
    CArchive& GetArchive() { return m_ar; }

private:
    template <typename Stored, typename T> void As(T& member)
    {
        if (m_ar.IsStoring()) {
            m_ar << static_cast<Stored>(member);
        } else {
            Stored v {};
            m_ar >> v;
            member = static_cast<T>(v);
        }
    }
    template <typename T> void Direct(T& member)
    {
        if (m_ar.IsStoring())
            m_ar << member;
        else
            m_ar >> member;
    }
    CArchive& m_ar;
};

} // namespace ombrel
