#include "ombrel/graph3d/geometry/CircleQueue.h"

#include <algorithm>

namespace ombrel {

CircleQueue::CircleQueue(std::span<FloatPoint const> sites, std::pmr::memory_resource* memory)
    : m_starts(memory)
    , m_lists(memory)
    , m_nodes(memory)
    , m_heap(memory)
    , m_lastBlock(static_cast<std::uint32_t>((sites.size() - 1) >> kBlockBits))
{
    m_starts.reserve(m_lastBlock + 2);
    for (std::size_t i = 0; i < sites.size(); i += std::size_t { 1 } << kBlockBits)
        m_starts.push_back(static_cast<double>(sites[i].y));
    m_starts.push_back(kNever);
    m_lists.assign(m_lastBlock + 1, kNone);
}

void CircleQueue::Advance(std::uint32_t site)
{
    std::uint32_t const block = site >> kBlockBits;
    if (block == m_block)
        return;
    for (; m_block < block; ++m_block) {
        for (std::uint32_t arc = m_lists[m_block + 1]; arc != kNone; arc = m_nodes[arc].next) {
            m_nodes[arc].list = kInHeap;
            m_heap.push_back({ m_nodes[arc].top, arc });
            std::push_heap(m_heap.begin(), m_heap.end());
        }
    }
    // Where events above are likely to belong.
    std::uint32_t const ahead = std::min(m_block + 32, m_lastBlock);
    m_blocksPerUnit = (ahead - m_block) / (m_starts[ahead] - m_starts[m_block]);
}

std::uint32_t CircleQueue::FindBlock(double top) const
{
    if (top < m_starts[m_block + 1])
        return m_block;
    double const guess = (top - m_starts[m_block]) * m_blocksPerUnit;
    std::uint32_t const farthest = m_lastBlock - m_block;
    std::uint32_t block = m_block + (guess < farthest ? static_cast<std::uint32_t>(guess) : farthest);
    for (int step = 0; step < 8; ++step) {
        if (top < m_starts[block])
            --block;
        else if (top >= m_starts[block + 1])
            ++block;
        else
            return block;
    }
    auto const first = m_starts.begin();
    return static_cast<std::uint32_t>(std::upper_bound(first + m_block, m_starts.end(), top) - first - 1);
}

void CircleQueue::Insert(std::uint32_t arc, double top)
{
    if (arc >= m_nodes.size())
        m_nodes.resize(arc + 1);
    // What overflows comes last.
    top = top < std::numeric_limits<double>::max() ? top : std::numeric_limits<double>::max();
    std::uint32_t const block = FindBlock(top);
    Node& node = m_nodes[arc];
    node.top = top;
    if (block == m_block) {
        node.list = kInHeap;
        m_heap.push_back({ top, arc });
        std::push_heap(m_heap.begin(), m_heap.end());
        return;
    }
    node.list = block;
    node.previous = kNone;
    node.next = m_lists[block];
    if (node.next != kNone)
        m_nodes[node.next].previous = arc;
    m_lists[block] = arc;
}

void CircleQueue::Remove(std::uint32_t arc)
{
    if (arc >= m_nodes.size())
        return;
    Node& node = m_nodes[arc];
    if (node.list < kInHeap) {
        (node.previous == kNone ? m_lists[node.list] : m_nodes[node.previous].next) = node.next;
        if (node.next != kNone)
            m_nodes[node.next].previous = node.previous;
    }
    node.list = kNone;
    node.top = kNever;
}

std::uint32_t CircleQueue::PopUpTo(double y)
{
    while (!m_heap.empty() && m_heap.front().top <= y) {
        Entry const entry = m_heap.front();
        std::pop_heap(m_heap.begin(), m_heap.end());
        m_heap.pop_back();
        Node& node = m_nodes[entry.arc];
        // Not one that was taken back; nor one whose arc has another by now.
        if (node.list != kInHeap || node.top != entry.top)
            continue;
        node.list = kNone;
        node.top = kNever;
        return entry.arc;
    }
    return kNone;
}

} // namespace ombrel
