#pragma once
#include "ombrel/graph3d/Surface.h"

namespace ombrel::test {

/// A table whose value in row r and column c is height(c, r).
template <typename Height> CTableData MakeTable(int rows, int cols, Height const& height)
{
    CTableData table(rows, cols);
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < cols; ++c)
            table.SetAt(r, c, height(c, r));
    }
    return table;
}

/// Gives the curve such a table and its grid, which begins at (0, 0) and has steps of 1.
template <typename Height> void Fill(C3DRowColCurve& curve, int rows, int cols, Height const& height)
{
    curve.SetTableData(MakeTable(rows, cols, height));
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.AlignMeshes();
}

} // namespace ombrel::test
