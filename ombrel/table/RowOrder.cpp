#include "ombrel/table/RowOrder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <unordered_map>

namespace ombrel {

namespace {

/// Counts the returns downwards among rising values (sign 1), or upwards among falling ones (-1).
class ReturnCounter {
public:
    explicit ReturnCounter(double sign)
        : m_sign(sign)
    {
    }
    /// A step from one x to the next, which stands in the row.
    void AddStep(double from, double to, std::size_t row)
    {
        double const step = m_sign * (to - from);
        if (step > 0.0) {
            ++m_forward;
            if (m_backwardRun == 1 && m_hasRun && m_returns++ == 0) {
                m_firstRow = m_backwardRow;
                m_firstX = from;
            }
            m_backwardRun = 0;
            m_hasRun = true;
        } else if (step < 0.0) {
            ++m_backwardRun;
            m_backwardRow = row;
        }
    }
    std::size_t Forward() const { return m_forward; }
    void Tell(RowOrder& order, double start) const
    {
        order.returns = m_returns;
        order.firstReturn = m_firstRow;
        order.returnsToStart = m_returns > 0 && m_firstX == start;
    }

private:
    double m_sign;
    std::size_t m_forward = 0;
    std::size_t m_returns = 0;
    /// Steps back since the last one forward.
    std::size_t m_backwardRun = 0;
    /// There was a step forward.
    bool m_hasRun = false;
    /// Where the last of them led.
    std::size_t m_backwardRow = 0;
    std::size_t m_firstRow = 0;
    double m_firstX = 0.0;
};

} // namespace

RowOrder OrderOf(ColumnValues const& xs)
{
    RowOrder order;
    ReturnCounter rising(1.0);
    ReturnCounter falling(-1.0);
    double start = std::numeric_limits<double>::quiet_NaN();
    double last = start;
    double direction = 0.0;
    std::size_t row = 0;
    xs.ForEach([&](double x) {
        if (!std::isnan(x)) {
            if (std::isnan(last)) {
                start = x;
            } else {
                ++order.steps;
                order.equal += x == last;
                order.turns += direction * (x - last) < 0.0;
                direction = x == last ? direction : x - last;
                rising.AddStep(last, x, row);
                falling.AddStep(last, x, row);
            }
            last = x;
        }
        ++row;
    });
    (rising.Forward() >= falling.Forward() ? rising : falling).Tell(order, start);
    return order;
}

std::size_t CountRepeats(ColumnValues const& xs)
{
    std::vector<double> values;
    values.reserve(xs.Size());
    xs.ForEach([&values](double x) {
        if (!std::isnan(x))
            values.push_back(x);
    });
    if (!std::is_sorted(values.begin(), values.end()))
        std::sort(values.begin(), values.end());
    return values.size() - static_cast<std::size_t>(std::unique(values.begin(), values.end()) - values.begin());
}

std::optional<std::pair<std::size_t, std::size_t>> FindEqualWords(std::vector<std::string> const& words)
{
    std::unordered_map<std::string_view, std::size_t> rows;
    for (std::size_t row = 0; row < words.size(); ++row) {
        if (words[row].empty())
            continue;
        auto const [found, isNew] = rows.try_emplace(words[row], row);
        if (!isNew)
            return std::pair { found->second, row };
    }
    return std::nullopt;
}

} // namespace ombrel
