#include "ombrel/graph3d/Mesh.h"

#include <algorithm>
#include <new>
#include <utility>

namespace ombrel {

constinit CRuntimeClass const CMesh::kClass = DynamicClass<CObject>("CMesh");

void CMesh::Init(int rows, int cols, double xMin, double xMax, double yMin, double yMax)
{
    Clear();
    if (rows < 0 || cols < 0)
        return;
    std::size_t const nodes = (static_cast<std::size_t>(rows) + 1) * (static_cast<std::size_t>(cols) + 1);
    if (nodes > m_z.max_size())
        throw std::bad_alloc();
    m_z.assign(nodes, 0.0);
    m_rows = rows;
    m_cols = cols;
    SetExtent(xMin, xMax, yMin, yMax);
}

void CMesh::SetExtent(double xMin, double xMax, double yMin, double yMax)
{
    m_xMin = xMin;
    m_xMax = xMax;
    m_yMin = yMin;
    m_yMax = yMax;
    m_xDel = m_cols > 0 ? (xMax - xMin) / m_cols : 0.0;
    m_yDel = m_rows > 0 ? (yMax - yMin) / m_rows : 0.0;
}

void CMesh::PlaceOverParameters()
{
    m_x = {};
    m_y = {};
}

void CMesh::MakePlaces()
{
    if (!IsOverParameters())
        return;
    std::vector<double> xs(m_z.size());
    std::vector<double> ys(m_z.size());
    for (int j = 0; HasNodes() && j <= m_rows; ++j) {
        ReadRow(0, j, xs.data() + GetIndex(0, j));
        ReadRow(1, j, ys.data() + GetIndex(0, j));
    }
    m_x = std::move(xs);
    m_y = std::move(ys);
}

void CMesh::ReadRow(int coordinate, int j, double* values) const
{
    std::size_t const count = static_cast<std::size_t>(m_cols) + 1;
    if (coordinate == 2) {
        std::copy_n(GetZRow(j), count, values);
    } else if (!IsOverParameters()) {
        std::copy_n((coordinate == 0 ? m_x : m_y).data() + GetIndex(0, j), count, values);
    } else if (coordinate == 0) {
        for (int i = 0; i <= m_cols; ++i)
            values[i] = GetMeshX(i);
    } else {
        std::fill_n(values, count, GetMeshY(j));
    }
}

void CMesh::Clear()
{
    m_rows = 0;
    m_cols = 0;
    m_x = {};
    m_y = {};
    m_z = {};
}

} // namespace ombrel
