#include "ombrel/table/RowOrder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

namespace ombrel {
namespace {

TEST(RowOrders, TellReturnsFromTurns)
{
    double const na = std::nan("");
    struct {
        std::vector<double> xs;
        std::size_t returns, first;
        bool toStart;
        std::size_t equal, repeats;
        bool mixed;
    } const cases[] {
        { {}, 0, 0, false, 0, 0, false },
        { { 3, 2, 1 }, 0, 0, false, 0, 0, false },
        { { 1, 2, 3, 1, 2, 3, 2, 3 }, 2, 3, true, 0, 5, true },
        { { 3, 2, 1, 3, 2, 1 }, 1, 3, true, 0, 3, true },
        { { 1, 2, 3, 2, 3 }, 1, 3, false, 0, 2, true },
        { { 1, na, 2, 0, na, 0, 3 }, 1, 3, false, 1, 1, true },
        { { 2, 1, 4, 3, 3, 5 }, 1, 3, false, 1, 1, true },
        // There and back, once more, and a closed outline.
        { { 0, 1, 2, 3, 2, 1, 0, 1, 2, 3 }, 0, 0, false, 0, 6, false },
        { { 1, 2, 3, 1 }, 0, 0, false, 0, 1, false },
    };
    for (auto const& c : cases) {
        ColumnValues xs;
        for (double const x : c.xs)
            xs.Append(x);
        RowOrder const order = OrderOf(xs);
        EXPECT_EQ(std::tuple(order.returns, order.firstReturn, order.returnsToStart, order.equal, CountRepeats(xs),
                      order.IsMixed()),
            std::tuple(c.returns, c.first, c.toStart, c.equal, c.repeats, c.mixed))
            << testing::PrintToString(c.xs);
    }
}

} // namespace
} // namespace ombrel
