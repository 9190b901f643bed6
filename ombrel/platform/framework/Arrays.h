#pragma once
#include "ombrel/platform/framework/Index.h"
#include "ombrel/platform/framework/String.h"

#include <iterator>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace ombrel {

/// A growing array of values with the framework's operations.
///
/// Errors: an index, a count or a size that does not fit throws CInvalidArgException* (newly allocated) and changes
/// nothing. Loops over many elements run over the iterators or GetData, which check nothing.
template <typename T> class CArray {
public:
    CArray() = default;
    CArray(std::initializer_list<T> values)
        : m_values(values)
    {
    }
    int GetSize() const { return static_cast<int>(m_values.size()); }
    int GetCount() const { return GetSize(); }
    int GetUpperBound() const { return GetSize() - 1; }
    bool IsEmpty() const { return m_values.empty(); }
    /// Grows with default values or cuts; growBy is only a hint.
    void SetSize(int size, [[maybe_unused]] int growBy = -1)
    {
        CheckRange(0, size, kMostElements);
        m_values.resize(static_cast<std::size_t>(size));
    }
    void FreeExtra() { m_values.shrink_to_fit(); }
    void RemoveAll() { m_values.clear(); }
    T const& GetAt(int i) const { return m_values[Index(i)]; }
    void SetAt(int i, T const& value) { m_values[Index(i)] = value; }
    T& ElementAt(int i) { return m_values[Index(i)]; }
    T& operator[](int i) { return m_values[Index(i)]; }
    T const& operator[](int i) const { return m_values[Index(i)]; }
    T* GetData() { return m_values.data(); }
    T const* GetData() const { return m_values.data(); }
    /// Sets an element, growing the array when the index lies past its end.
    void SetAtGrow(int i, T value)
    {
        std::size_t const index = CheckedIndex(i, kMostElements);
        if (index >= m_values.size())
            m_values.resize(index + 1);
        m_values[index] = std::move(value);
    }
    /// Returns the index of the added element.
    int Add(T const& value)
    {
        m_values.push_back(value);
        return GetUpperBound();
    }
    /// Returns the index of the first appended element.
    int Append(CArray const& other)
    {
        int const first = GetSize();
        m_values.reserve(m_values.size() + other.m_values.size());
        for (std::size_t i = 0, n = other.m_values.size(); i < n; ++i)
            m_values.push_back(T(other.m_values[i]));
        return first;
    }
    void Copy(CArray const& other) { m_values = other.m_values; }
    /// Past the end, the array grows first.
    void InsertAt(int i, T value, int count = 1)
    {
        CheckRange(i, count, kMostElements);
        CheckRange(GetSize(), count, kMostElements);
        if (i > GetSize())
            SetSize(i);
        m_values.insert(m_values.begin() + i, static_cast<std::size_t>(count), value);
    }
    void RemoveAt(int i, int count = 1)
    {
        CheckRange(i, count, m_values.size());
        m_values.erase(m_values.begin() + i, m_values.begin() + i + count);
    }
    auto begin() { return m_values.begin(); }
    auto end() { return m_values.end(); }
    auto begin() const { return m_values.begin(); }
    auto end() const { return m_values.end(); }
    friend bool operator==(CArray const& a, CArray const& b) { return a.m_values == b.m_values; }
    std::vector<T>& Values() { return m_values; }
    std::vector<T> const& Values() const { return m_values; }

private:
    /// As many as GetSize can count.
    static constexpr std::size_t kMostElements = std::numeric_limits<int>::max();
    std::size_t Index(int i) const { return CheckedIndex(i, m_values.size()); }
    std::vector<T> m_values;
};

/// An array of texts.
using CStringArray = CArray<CString>;
/// An array of numbers of 32 bits.
using CDWordArray = CArray<DWORD>;
/// An array of bytes.
using CByteArray = CArray<BYTE>;
/// The framework's plain array of doubles, without the meaning that curve data gives to its values.
using CPlainDoubleArray = CArray<double>;

/// An ordered array of owned objects: what Add takes over, the array deletes.
template <typename T> class OwnedArray {
public:
    int GetSize() const { return static_cast<int>(m_objects.size()); }
    bool IsEmpty() const { return m_objects.empty(); }
    /// The object at index (not owned by the caller), or null outside the array.
    T* GetAt(int i) const { return i >= 0 && i < GetSize() ? m_objects[static_cast<std::size_t>(i)].get() : nullptr; }
    T* operator[](int i) const { return GetAt(i); }
    /// Takes the object over; returns its index.
    int Add(std::unique_ptr<T> object)
    {
        m_objects.push_back(std::move(object));
        return GetSize() - 1;
    }
    /// −1 when the object is not here.
    int Find(T const* object) const
    {
        for (int i = 0; i < GetSize(); ++i) {
            if (GetAt(i) == object)
                return i;
        }
        return -1;
    }
    /// Takes the object out without deleting it; null outside the array. Drop the result to delete it.
    std::unique_ptr<T> Detach(int i)
    {
        if (!GetAt(i))
            return nullptr;
        std::unique_ptr<T> object = std::move(m_objects[static_cast<std::size_t>(i)]);
        m_objects.erase(m_objects.begin() + i);
        return object;
    }
    /// Takes every object out without deleting it: they belong to whoever else holds them.
    void DetachAll()
    {
        for (auto& object : m_objects)
            (void)object.release();
        m_objects.clear();
    }
    void DeleteAll() { m_objects.clear(); }
    /// Throws CInvalidArgException* (newly allocated) for an index outside.
    void Swap(int i, int j)
    {
        std::swap(m_objects[CheckedIndex(i, m_objects.size())], m_objects[CheckedIndex(j, m_objects.size())]);
    }

    /// Iterates over T*.
    class Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = T*;
        using difference_type = int;
        using pointer = T* const*;
        using reference = T*;
        Iterator(OwnedArray const* array, int index)
            : m_array(array)
            , m_index(index)
        {
        }
        T* operator*() const { return m_array->GetAt(m_index); }
        Iterator& operator++()
        {
            ++m_index;
            return *this;
        }
        bool operator==(Iterator const& other) const { return m_index == other.m_index; }

    private:
        OwnedArray const* m_array;
        int m_index;
    };
    Iterator begin() const { return { this, 0 }; }
    Iterator end() const { return { this, GetSize() }; }

private:
    std::vector<std::unique_ptr<T>> m_objects;
};

} // namespace ombrel
