#include "ombrel/graph3d/Mesh.h"

#include <new>

namespace ombrel {

constinit CRuntimeClass const CMesh::kClass = DynamicClass<CObject>("CMesh");

void CMesh::Init(int rows, int cols, double xMin, double xMax, double yMin, double yMax)
{
    Clear();
    if (rows < 1 || cols < 1)
        return;
    std::size_t const nodes = (static_cast<std::size_t>(rows) + 1) * (static_cast<std::size_t>(cols) + 1);
    if (nodes > m_z.max_size())
        throw std::bad_alloc();
    m_x.assign(nodes, 0.0);
    m_y.assign(nodes, 0.0);
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
    m_xDel = (xMax - xMin) / m_cols;
    m_yDel = (yMax - yMin) / m_rows;
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
