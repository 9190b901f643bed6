#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Index.h"
#include "ombrel/platform/framework/Object.h"

#include <array>
#include <cstddef>

namespace ombrel {

/// The four vertex indices of a face and, once sorted, a key to find the same face by, whatever its vertices' order.
class OMBREL_EXPORT CFaceIndices : public CObject {
public:
    static CRuntimeClass const kClass;
    CRuntimeClass const& GetRuntimeClass() const override { return kClass; }
    CFaceIndices() = default;
    CFaceIndices(DWORD a, DWORD b, DWORD c, DWORD d)
        : m_indices { a, b, c, d }
    {
    }
    /// Index i, 0 … 3; any other throws CInvalidArgException* (newly allocated).
    DWORD& operator[](int i) { return m_indices[CheckedIndex(i, m_indices.size())]; }
    DWORD operator[](int i) const { return m_indices[CheckedIndex(i, m_indices.size())]; }
    /// Orders the indices ascending and computes the key from them.
    void Sort();
    /// The key: 0 until Sort. Different faces may share one.
    DWORD Sum() const { return m_key; }
    /// Position by position, without the key: sort both first.
    friend bool operator==(CFaceIndices const& a, CFaceIndices const& b) { return a.m_indices == b.m_indices; }

private:
    std::array<DWORD, 4> m_indices {};
    DWORD m_key = 0;
};

/// Hashes sorted faces by their key.
struct FaceIndicesHash {
    std::size_t operator()(CFaceIndices const& face) const { return face.Sum(); }
};

} // namespace ombrel
