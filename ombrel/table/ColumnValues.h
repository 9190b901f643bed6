#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace ombrel {

/// The values of one column, in blocks: growing neither moves values nor needs memory for two copies of them.
class ColumnValues {
public:
    void Append(double value)
    {
        if (m_next == m_limit)
            AddBlock();
        *m_next++ = value;
    }
    std::size_t Size() const { return m_before + static_cast<std::size_t>(m_next - m_first); }
    void Clear() { *this = ColumnValues(); }

    /// Calls visit(value) for every value in order.
    template <typename Visit> void ForEach(Visit&& visit) const
    {
        for (std::size_t i = 0; i < m_blocks.size(); ++i) {
            double const* const block = m_blocks[i].get();
            double const* const end = i + 1 == m_blocks.size() ? m_next : block + BlockSize(i);
            for (double const* p = block; p != end; ++p)
                visit(*p);
        }
    }

    /// Puts change(value) in place of every value.
    template <typename Change> void Transform(Change&& change)
    {
        for (std::size_t i = 0; i < m_blocks.size(); ++i) {
            double* const block = m_blocks[i].get();
            double* const end = i + 1 == m_blocks.size() ? m_next : block + BlockSize(i);
            std::transform(block, end, block, change);
        }
    }

    /// Writes all values to out, which has room for Size() of them, and frees each block as it goes.
    void MoveTo(double* out)
    {
        for (std::size_t i = 0; i < m_blocks.size(); ++i) {
            double const* const end = i + 1 == m_blocks.size() ? m_next : m_blocks[i].get() + BlockSize(i);
            out = std::copy(static_cast<double const*>(m_blocks[i].get()), end, out);
            m_blocks[i].reset();
        }
        Clear();
    }

    ColumnValues() = default;
    ColumnValues(ColumnValues&& other) noexcept { *this = std::move(other); }
    ColumnValues& operator=(ColumnValues&& other) noexcept
    {
        m_blocks = std::move(other.m_blocks);
        other.m_blocks.clear();
        m_before = std::exchange(other.m_before, 0);
        m_first = std::exchange(other.m_first, nullptr);
        m_next = std::exchange(other.m_next, nullptr);
        m_limit = std::exchange(other.m_limit, nullptr);
        return *this;
    }

private:
    /// Small at first, since a table may have thousands of columns and few rows.
    static constexpr std::size_t BlockSize(std::size_t index)
    {
        constexpr std::size_t kSmallest = 32;
        constexpr std::size_t kDoublings = 11;
        return kSmallest << std::min(index, kDoublings);
    }
    void AddBlock()
    {
        std::size_t const size = BlockSize(m_blocks.size());
        m_blocks.push_back(std::make_unique_for_overwrite<double[]>(size));
        m_before += static_cast<std::size_t>(m_next - m_first);
        m_first = m_next = m_blocks.back().get();
        m_limit = m_first + size;
    }

    std::vector<std::unique_ptr<double[]>> m_blocks;
    /// Values in the blocks before the last.
    std::size_t m_before = 0;
    double* m_first = nullptr;
    double* m_next = nullptr;
    double* m_limit = nullptr;
};

} // namespace ombrel
