#include "ombrel/foundation/GArray.h"

#include "ombrel/platform/framework/ArchiveFields.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>

namespace ombrel {

constinit CRuntimeClass const CGArray::kClass = DynamicClass<CObject>("CGArray");
constinit CRuntimeClass const CDoubleArray::kClass = DynamicClass<CGArray>("CDoubleArray");
constinit CRuntimeClass const CDateArray::kClass = DynamicClass<CDoubleArray>("CDateArray");
constinit CRuntimeClass const CGStringArray::kClass = DynamicClass<CGArray>("CGStringArray");
constinit CRuntimeClass const CGCharArray::kClass = DynamicClass<CGArray>("CGCharArray");

int CDoubleArray::GetValidSize() const
{
    return static_cast<int>(std::find(m_array.begin(), m_array.end(), kGap) - m_array.begin());
}

int CDoubleArray::HasGaps() const { return GetValidSize() < GetValidSizeReverse() ? 1 : 0; }

int CDoubleArray::GetValidSizeReverse() const
{
    int size = GetSize();
    while (size > 0 && m_array[size - 1] == kGap)
        --size;
    return size;
}

double CDoubleArray::Mean() const
{
    double sum = 0.0;
    for (double const v : m_array)
        sum += v;
    return m_array.IsEmpty() ? 0.0 : sum / GetSize();
}

double CDoubleArray::CentralMoment(int power) const
{
    double const mean = Mean();
    double sum = 0.0;
    for (double const v : m_array) {
        double term = v - mean;
        for (int i = 1; i < power; ++i)
            term *= v - mean;
        sum += term;
    }
    return sum;
}

double CDoubleArray::Variance() const { return GetSize() <= 1 ? 0.0 : CentralMoment(2) / (GetSize() - 1); }

double CDoubleArray::StandardDeviation() const { return std::sqrt(Variance()); }

double CDoubleArray::Skewness() const
{
    if (GetSize() <= 1)
        return 0.0;
    double const deviation = StandardDeviation();
    return CentralMoment(3) / ((GetSize() - 1) * deviation * deviation * deviation);
}

double CDoubleArray::Kurtosis() const
{
    if (GetSize() <= 1)
        return 0.0;
    double const variance = Variance();
    return CentralMoment(4) / ((GetSize() - 1) * variance * variance);
}

double CDoubleArray::Min() const
{
    double least = kGap;
    for (int i = 0, n = GetValidSizeReverse(); i < n; ++i)
        least = m_array[i] < least ? m_array[i] : least;
    return least;
}

double CDoubleArray::Max() const
{
    double greatest = -kGap;
    for (int i = 0, n = GetValidSizeReverse(); i < n; ++i)
        greatest = m_array[i] > greatest ? m_array[i] : greatest;
    return greatest;
}

void CDoubleArray::Sort()
{
    auto const numbersEnd = std::partition(m_array.begin(), m_array.end(), [](double v) { return !std::isnan(v); });
    std::sort(m_array.begin(), numbersEnd);
}

double CDoubleArray::Median()
{
    int const n = GetSize();
    if (n == 0)
        return 0.0;
    Sort();
    double const upper = m_array[n / 2];
    if (n % 2 != 0)
        return upper;
    return (m_array[n / 2 - 1] + upper) / 2.0;
}

int CDoubleArray::GetUpperIndex(double x, int& exact) const
{
    auto const same = [x](double v) { return static_cast<float>(v) == static_cast<float>(x); };
    exact = 0;
    for (int i = 0; i + 1 < GetSize(); ++i) {
        double const lower = m_array[i];
        double const upper = m_array[i + 1];
        if (same(lower) || same(upper)) {
            exact = 1;
            return same(lower) ? i : i + 1;
        }
        if (lower < x && x < upper)
            return i + 1;
    }
    return -1;
}

void CDoubleArray::Serialize(CArchive& ar) { ArchiveFields(ar).Raw(m_array); }

int CGStringArray::GetValidSize() const
{
    int size = GetSize();
    while (size > 0 && m_array[size - 1].IsEmpty())
        --size;
    return size;
}

CGCharArray::~CGCharArray() { CGCharArray::RemoveAll(1); }

CGCharArray::CGCharArray(CGCharArray const& other)
    : CGArray(other)
{
    Append(other);
}

CGCharArray& CGCharArray::operator=(CGCharArray const& other)
{
    CGCharArray copy(other);
    std::swap(m_array, copy.m_array);
    return *this;
}

char16_t* CGCharArray::NewString(CString const& text)
{
    auto const length = static_cast<std::size_t>(text.GetLength());
    char16_t* const copy = new char16_t[length + 1];
    std::copy_n(text.GetString(), length + 1, copy);
    return copy;
}

int CGCharArray::RemoveAt(int index, int count)
{
    CheckRange(index, count, static_cast<std::size_t>(GetSize()));
    std::for_each_n(m_array.begin() + index, count, [](char16_t* text) { delete[] text; });
    m_array.RemoveAt(index, count);
    return 0;
}

int CGCharArray::RemoveAll(int deleteEntries)
{
    if (deleteEntries != 0) {
        for (char16_t* const text : m_array)
            delete[] text;
    }
    m_array.RemoveAll();
    return 0;
}

int CGCharArray::GetValidSize() const
{
    return static_cast<int>(std::find(m_array.begin(), m_array.end(), nullptr) - m_array.begin());
}

int CGCharArray::HasGaps() const
{
    bool blankSeen = false;
    for (char16_t const* const text : m_array) {
        bool const blank = !text || CString(text).Trim().IsEmpty();
        if (blankSeen && !blank)
            return 1;
        blankSeen = blankSeen || blank;
    }
    return 0;
}

void CGCharArray::SetSize(int size, int growBy)
{
    size = std::max(size, 0);
    for (int i = size; i < GetSize(); ++i)
        delete[] m_array[i];
    m_array.SetSize(size, growBy);
}

void CGCharArray::SetAt(int i, char16_t* text)
{
    char16_t* const old = std::exchange(m_array[i], text);
    if (old != text)
        delete[] old;
}

void CGCharArray::SetAtGrow(int i, char16_t* text)
{
    if (i >= GetSize())
        m_array.SetAtGrow(i, text);
    else
        SetAt(i, text);
}

void CGCharArray::InsertAt(int i, char16_t* text, int count)
{
    if (count <= 0)
        return;
    m_array.InsertAt(i, nullptr, count);
    SetAt(i, text);
    for (int j = i + 1; text && j < i + count; ++j)
        SetAt(j, NewString(text));
}

int CGCharArray::Append(CGCharArray const& other)
{
    int const first = GetSize();
    int const added = other.GetSize();
    m_array.SetSize(first + added);
    for (int i = 0; i < added; ++i)
        m_array[first + i] = other.m_array[i] ? NewString(other.m_array[i]) : nullptr;
    return first;
}

int CGCharArray::GetDataSize() const
{
    std::size_t size = 0;
    for (char16_t const* const text : m_array)
        size += (text ? CString(text).ToUtf8().size() : 0) + 1;
    return static_cast<int>(size);
}

void CGCharArray::WriteData(char* buffer, int& length) const
{
    char* end = buffer;
    for (char16_t const* const text : m_array) {
        std::string const bytes = text ? CString(text).ToUtf8() : std::string();
        // The terminator goes along.
        end = std::copy_n(bytes.c_str(), bytes.size() + 1, end);
    }
    length = static_cast<int>(end - buffer);
}

void CGCharArray::ReadData(char const* buffer, int length)
{
    std::string_view rest(buffer, static_cast<std::size_t>(std::max(length, 0)));
    do {
        std::string_view const text = rest.substr(0, rest.find('\0'));
        Add(NewString(CString(text)));
        rest.remove_prefix(std::min(text.size() + 1, rest.size()));
    } while (!rest.empty());
}

} // namespace ombrel
