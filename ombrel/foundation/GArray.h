#pragma once
#include "ombrel/platform/framework/Arrays.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Object.h"

#include <limits>

namespace ombrel {

/// The marker for a missing value in curve data.
inline constexpr double kGap = std::numeric_limits<double>::max();

/// True for what counts as missing when data are ranged or drawn: the marker, infinities and what is not a number.
inline bool IsGap(double v) { return !(v < kGap && v > -kGap); }

/// Base of the typed arrays that carry curve data and labels.
class OMBREL_EXPORT CGArray : public CObject {
public:
    /// What the elements are.
    enum ElType : int { etDouble = 0, etString = 1, etDate = 2, etChar = 3 };
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CGArray() = default;
    ElType GetElType() const { return m_elType; }

    virtual int GetSize() const { return 0; }
    /// Returns 0. Entries that are not there throw CInvalidArgException* (newly allocated) and nothing is removed.
    virtual int RemoveAt(int /*index*/, int /*count*/ = 1) { return 0; }
    /// The argument matters to arrays that own their entries (CGCharArray) only.
    virtual int RemoveAll(int /*deleteEntries*/ = 1) { return 0; }
    /// How many leading entries are worth drawing; each class says what that is.
    virtual int GetValidSize() const { return 0; }
    /// 1 when something missing lies between valid entries, else 0.
    virtual int HasGaps() const { return 0; }

protected:
    explicit CGArray(ElType type)
        : m_elType(type)
    {
    }

private:
    ElType m_elType = etDouble;
};

/// The array operations that the typed arrays share: an inner array and its operations. Errors: as CArray.
template <typename T> class TypedArray : public CGArray {
public:
    int GetSize() const override { return m_array.GetSize(); }
    int RemoveAt(int index, int count = 1) override
    {
        m_array.RemoveAt(index, count);
        return 0;
    }
    int RemoveAll(int = 1) override
    {
        m_array.RemoveAll();
        return 0;
    }
    int GetUpperBound() const { return m_array.GetUpperBound(); }
    /// Negative sizes count as 0; growBy is only a hint.
    void SetSize(int size, int growBy = -1) { m_array.SetSize(std::max(size, 0), growBy); }
    void FreeExtra() { m_array.FreeExtra(); }
    /// Returns the index of the added entry.
    int Add(T const& value) { return m_array.Add(value); }
    /// Returns the index of the first appended entry.
    int Append(TypedArray const& other) { return m_array.Append(other.m_array); }
    void Copy(TypedArray const& other) { m_array = other.m_array; }
    T& ElementAt(int i) { return m_array.ElementAt(i); }
    T const& GetAt(int i) const { return m_array.GetAt(i); }
    void SetAt(int i, T const& value) { m_array.SetAt(i, value); }
    void SetAtGrow(int i, T const& value) { m_array.SetAtGrow(i, value); }
    void InsertAt(int i, T const& value, int count = 1) { m_array.InsertAt(i, value, count); }
    T* GetData() { return m_array.GetData(); }
    T const* GetData() const { return m_array.GetData(); }
    T& operator[](int i) { return m_array[i]; }
    T const& operator[](int i) const { return m_array[i]; }
    CArray<T>& GetArray() { return m_array; }
    CArray<T> const& GetArray() const { return m_array; }
    friend bool operator==(TypedArray const& a, TypedArray const& b) { return a.m_array == b.m_array; }

protected:
    TypedArray() = default;
    explicit TypedArray(ElType type)
        : CGArray(type)
    {
    }
    TypedArray(ElType type, std::initializer_list<T> values)
        : CGArray(type)
        , m_array(values)
    {
    }

    CArray<T> m_array;
};

/// Numbers of curve data. A gap marker inside the data is a missing value; markers at the end are spare room.
///
/// The statistics take the whole array as it is, markers included.
/// Errors: Serialize throws CArchiveException* (newly allocated), indices as those of CArray.
class OMBREL_EXPORT CDoubleArray : public TypedArray<double> {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CDoubleArray()
        : CDoubleArray(etDouble)
    {
    }
    CDoubleArray(std::initializer_list<double> values)
        : TypedArray(etDouble, values)
    {
    }

    /// The number of entries before the first gap marker.
    int GetValidSize() const override;
    int HasGaps() const override;
    /// The size without the run of gap markers at the end.
    int GetValidSizeReverse() const;

    /// 0 for an empty array.
    double Mean() const;
    /// Over n − 1; 0 for fewer than two entries.
    double Variance() const;
    double StandardDeviation() const;
    /// The third and fourth central moments over (n − 1) times the power of the deviation, nothing subtracted; 0 for
    /// fewer than two entries.
    double Skewness() const;
    double Kurtosis() const;
    /// Over the first GetValidSizeReverse() entries: the largest double, or minus it, when there are none.
    double Min() const;
    double Max() const;
    /// Ascending; values that are not numbers go to the end.
    void Sort();
    /// Sorts the array; the mean of the two middle entries of an even number, 0 for an empty array.
    double Median();
    /// For ascending entries: the index of the entry that equals x in single precision (exact is 1), else of the
    /// first entry above x (exact is 0); −1 when x lies before the first entry or after the last.
    int GetUpperIndex(double x, int& exact) const;

    /// A count, then the raw doubles; no version number.
    void Serialize(CArchive& ar) override;

protected:
    explicit CDoubleArray(ElType type)
        : TypedArray(type)
    {
    }

private:
    /// The sum of (v − mean) to the given power.
    double CentralMoment(int power) const;
};

/// OLE dates as doubles.
class OMBREL_EXPORT CDateArray : public CDoubleArray {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CDateArray()
        : CDoubleArray(etDate)
    {
    }
};

/// Texts; empty ones at the end are spare room.
class OMBREL_EXPORT CGStringArray : public TypedArray<CString> {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CGStringArray()
        : TypedArray(etString)
    {
    }
    /// The size without the run of empty strings at the end.
    int GetValidSize() const override;
};

/// Zero-terminated wide strings, or null, allocated with new char16_t[]: what is stored here, the array deletes.
///
/// Errors: as CArray. A string whose index throws stays the caller's.
class OMBREL_EXPORT CGCharArray : public CGArray {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CGCharArray()
        : CGArray(etChar)
    {
    }
    ~CGCharArray() override;
    /// Copies are deep.
    CGCharArray(CGCharArray const& other);
    CGCharArray& operator=(CGCharArray const& other);
    /// A string for the array to own.
    static char16_t* NewString(CString const& text);

    int GetSize() const override { return m_array.GetSize(); }
    /// Deletes the removed strings.
    int RemoveAt(int index, int count = 1) override;
    /// With 0 the strings are not deleted: they belong to whoever else holds them.
    int RemoveAll(int deleteEntries = 1) override;
    /// The number of entries before the first null.
    int GetValidSize() const override;
    /// 1 when an entry with text follows one that is null or white space only.
    int HasGaps() const override;

    int GetUpperBound() const { return m_array.GetUpperBound(); }
    /// Cut strings are deleted; new entries are null. Negative sizes count as 0.
    void SetSize(int size, int growBy = -1);
    void FreeExtra() { m_array.FreeExtra(); }
    /// These take the string over; SetAt and SetAtGrow delete the one that stood there. InsertAt of several entries
    /// takes over the string for the first and copies it for the others.
    int Add(char16_t* text) { return m_array.Add(text); }
    void SetAt(int i, char16_t* text);
    void SetAtGrow(int i, char16_t* text);
    void InsertAt(int i, char16_t* text, int count = 1);
    int Append(CGCharArray const& other);
    void Copy(CGCharArray const& other) { *this = other; }
    char16_t*& ElementAt(int i) { return m_array.ElementAt(i); }
    char16_t* GetAt(int i) const { return m_array.GetAt(i); }
    char16_t* const* GetData() const { return m_array.GetData(); }
    CArray<char16_t*>& GetArray() { return m_array; }

    /// The bytes that WriteData needs.
    int GetDataSize() const;
    /// Writes each entry as 8-bit text with a zero byte after it, and how many bytes that were.
    void WriteData(char* buffer, int& length) const;
    /// Appends the zero-terminated 8-bit texts of the buffer, at least one, until length bytes are used up; nothing
    /// past length bytes is read.
    void ReadData(char const* buffer, int length);

private:
    CArray<char16_t*> m_array;
};

} // namespace ombrel
