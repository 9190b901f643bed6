#include "ombrel/layout/placing/Occupancy.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace ombrel {

namespace {

constexpr int kMostCells = 160;
constexpr int kRowsPerWord = 64;
constexpr std::size_t kWordsPerColumn = (kMostCells + kRowsPerWord - 1) / kRowsPerWord;

int CellsOf(int pixels) { return std::clamp(pixels / Occupancy::kSmallestCell, 1, kMostCells); }

/// The part of a segment that lies in the area, as fractions of its length; false when there is none.
bool ClipSegment(CRect const& area, double x0, double y0, double dx, double dy, double& from, double& to)
{
    from = 0.0;
    to = 1.0;
    auto const clip = [&](double delta, double room) {
        // What lies inside satisfies delta * t <= room.
        if (delta == 0.0)
            return room >= 0.0;
        double const t = room / delta;
        if (delta > 0.0)
            to = std::min(to, t);
        else
            from = std::max(from, t);
        return from <= to;
    };
    return clip(-dx, x0 - area.left) && clip(dx, area.right - x0) && clip(-dy, y0 - area.top)
        && clip(dy, area.bottom - y0);
}

} // namespace

Occupancy::Occupancy(CRect const& area)
    : m_area(area)
    , m_columns(CellsOf(area.Width()))
    , m_rows(CellsOf(area.Height()))
    , m_cells(static_cast<std::size_t>(m_columns) * kWordsPerColumn)
{
    m_cellWidth = std::max(1, static_cast<int>(area.Width())) / static_cast<double>(m_columns);
    m_cellHeight = std::max(1, static_cast<int>(area.Height())) / static_cast<double>(m_rows);
}

Occupancy::Cell Occupancy::CellAt(double x, double y) const
{
    auto const limited = [](double cell, int count) {
        return static_cast<int>(std::clamp(std::floor(cell), 0.0, static_cast<double>(count - 1)));
    };
    return { limited((x - m_area.left) / m_cellWidth, m_columns), limited((y - m_area.top) / m_cellHeight, m_rows) };
}

template <typename Visit> void Occupancy::ForRows(int column, int first, int last, Visit const& visit) const
{
    if (first > last)
        std::swap(first, last);
    constexpr std::uint64_t kAll = ~std::uint64_t { 0 };
    for (int word = first / kRowsPerWord; word <= last / kRowsPerWord; ++word) {
        int const low = std::max(first - word * kRowsPerWord, 0);
        int const high = std::min(last - word * kRowsPerWord, kRowsPerWord - 1);
        std::size_t const index = static_cast<std::size_t>(column) * kWordsPerColumn + static_cast<std::size_t>(word);
        visit(index, (kAll << low) & (kAll >> (kRowsPerWord - 1 - high)));
    }
}

void Occupancy::MarkRows(int column, int first, int last)
{
    ForRows(column, first, last, [this](std::size_t word, std::uint64_t mask) { m_cells[word] |= mask; });
}

void Occupancy::AddSegment(double x0, double y0, double x1, double y1, CRect const& within)
{
    double const dx = x1 - x0;
    double const dy = y1 - y0;
    double from = 0.0;
    double to = 1.0;
    CRect shown;
    if (!shown.IntersectRect(m_area, within) || !ClipSegment(shown, x0, y0, dx, dy, from, to))
        return;
    Cell const first = CellAt(x0 + from * dx, y0 + from * dy);
    Cell const last = CellAt(x0 + to * dx, y0 + to * dy);
    if (first.column == last.column) {
        MarkRows(first.column, first.row, last.row);
        return;
    }
    int const steps = std::max(std::abs(last.column - first.column), std::abs(last.row - first.row));
    // Half steps, so that a slanting line leaves no cell out.
    for (int i = 0; i <= 2 * steps; ++i) {
        double const t = from + (to - from) * i / (2.0 * steps);
        Cell const cell = CellAt(x0 + t * dx, y0 + t * dy);
        MarkRows(cell.column, cell.row, cell.row);
    }
}

void Occupancy::AddRect(CRect const& rect)
{
    CRect shown;
    if (!shown.IntersectRect(m_area, rect))
        return;
    Cell const first = CellAt(shown.left, shown.top);
    Cell const last = CellAt(shown.right - 1, shown.bottom - 1);
    for (int column = first.column; column <= last.column; ++column)
        MarkRows(column, first.row, last.row);
}

bool Occupancy::IsFree(CRect const& rect) const
{
    Cell const first = CellAt(rect.left, rect.top);
    Cell const last = CellAt(rect.right - 1, rect.bottom - 1);
    bool isFree = true;
    for (int column = first.column; column <= last.column; ++column)
        ForRows(column, first.row, last.row,
            [&](std::size_t word, std::uint64_t mask) { isFree = isFree && (m_cells[word] & mask) == 0; });
    return isFree;
}

std::optional<CPoint> FindFreePlace(Occupancy const& occupancy, CSize size, int gap)
{
    constexpr double kMostWidth = 0.6;
    constexpr double kMostHeight = 0.7;
    CRect const& area = occupancy.GetArea();
    if (size.cx + 2 * gap > kMostWidth * area.Width() || size.cy + 2 * gap > kMostHeight * area.Height())
        return std::nullopt;
    int const left = area.left + gap;
    int const right = area.right - gap - size.cx;
    int const middle = (left + right) / 2;
    int const top = area.top + gap;
    int const bottom = area.bottom - gap - size.cy;
    int const centre = (top + bottom) / 2;
    std::array<CPoint, 8> const places { CPoint(right, top), CPoint(left, top), CPoint(right, bottom),
        CPoint(left, bottom), CPoint(middle, top), CPoint(right, centre), CPoint(left, centre),
        CPoint(middle, bottom) };
    for (CPoint const& place : places) {
        CRect box(place, size);
        // Not touching either.
        box.InflateRect(gap / 2, gap / 2);
        if (occupancy.IsFree(box))
            return place;
    }
    return std::nullopt;
}

} // namespace ombrel
