#include "ombrel/graph3d/3DLineCurve.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/geometry/GridCoordinates.h"
#include "ombrel/graph3d/render/FaceBatch.h"
#include "ombrel/graph3d/render/ShapeBatch.h"
#include "ombrel/platform/framework/ArchiveFields.h"
#include "ombrel/platform/framework/Exception.h"

#include <algorithm>
#include <limits>

namespace ombrel {

constinit CRuntimeClass const C3DLineCurve::kClass = PersistentClass<C3DLineCurve, C3DCurve>("C3DLineCurve");

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

} // namespace

/// What was drawn last, and what it was made from.
struct C3DLineCurve::Drawing {
    struct Key {
        std::uint64_t revision = 0;
        std::uint64_t own = 0;
        BoxAxes axes;
        PointSettings look;
        unsigned long colour = 0;
        CVertex offset;
        friend bool operator==(Key const& a, Key const& b) = default;
    };
    bool isMade = false;
    Key key;
    ShapeBatch shapes;
    FaceBatch lines;
};

C3DLineCurve::C3DLineCurve(CPlot* plot, int useGraphColour)
    : C3DCurve(plot, useGraphColour)
    , m_drawing(std::make_unique<Drawing>())
{
    constexpr int kFirstNumPts = 100;
    m_points.Initialise(kFirstNumPts);
    m_look.symbolColour = static_cast<COLORREF>(GetColour());
    SetTitle("Line");
    SetItemType(it3DLineCurve);
    SetModified(0);
}

C3DLineCurve::~C3DLineCurve() = default;

void C3DLineCurve::Serialize(CArchive& ar)
{
    C3DCurve::Serialize(ar);
    ArchiveFields f(ar);
    int const version = f.Version(3);
    // The points say themselves how many they are.
    int count = GetNumPts();
    f.Int(count);
    if (version >= 2)
        f.Int(m_numIntermediatePts);
    f.Double(m_tMin, m_tMax).Int(m_look.lineStyle, m_look.lineMode, m_look.symbolStyle);
    f.Double(m_look.thicknessScaleFac, m_look.symbolScaleFac).Int(m_look.symbolsOn).Dword(m_look.symbolColour);
    f.Nested(m_points);
    if (version >= 2)
        f.Int(m_look.symbolAlignMode, m_look.endPointSymbolMode);
    if (ar.IsStoring())
        return;
    if (version < 3) {
        // There were no parametric curves.
        int const modified = Modified();
        int const type = GetCurveType();
        SetCurveType(type >= 1 && type <= 3 ? static_cast<CurveType>(type + 1) : GetCurveType());
        SetModified(modified);
    }
    SetPlotDataModified(1);
}

void C3DLineCurve::Initialise(int n)
{
    m_points.Initialise(n);
    SetModified(1);
    SetPlotDataModified(1);
}

void C3DLineCurve::SetNumPts(int n)
{
    if (std::max(n, 0) != GetNumPts())
        Initialise(n);
}

void C3DLineCurve::SetPoints(VARIANT const& points)
{
    SAFEARRAY const* const array = (points.vt & VT_ARRAY) != 0 ? points.parray.get() : nullptr;
    if (!array || array->bounds.size() != 2)
        throw new COleDispatchException("Scatter curve points array needs to be two dimensional");
    std::size_t const rows = array->bounds[0];
    std::size_t const columns = array->bounds[1];
    if (rows < 1 || columns < 1 || rows > std::numeric_limits<int>::max() || array->values.size() / rows < columns)
        throw new COleDispatchException("Problem with Scatter curve points array bounds");
    if (columns != 3)
        throw new COleDispatchException("Scatter curve points array must have 3 columns");
    Initialise(static_cast<int>(rows));
    double const* const v = array->values.data();
    for (std::size_t i = 0; CVertex & point : m_points.GetPoints()) {
        point = { v[i], v[rows + i], v[2 * rows + i] };
        ++i;
    }
}

void C3DLineCurve::SetPoints(CDoubleArray const* x, CDoubleArray const* y, CDoubleArray const* z)
{
    if (!x || !y || !z)
        return;
    Initialise(std::min({ x->GetValidSizeReverse(), y->GetValidSizeReverse(), z->GetValidSizeReverse() }));
    for (int i = 0; i < GetNumPts(); ++i)
        m_points[i] = { (*x)[i], (*y)[i], (*z)[i] };
}

void C3DLineCurve::SetCoordinate(int i, int coordinate, double value)
{
    m_points[i][coordinate] = value;
    SetModified(1);
    SetPlotDataModified(1);
}

double C3DLineCurve::GetTVal(int i) const
{
    int const steps = GetNumPts() - 1;
    return steps < 1 ? m_tMin : m_tMin + i * (m_tMax - m_tMin) / steps;
}

int C3DLineCurve::GetDataSize() const { return GetNumPts() * static_cast<int>(3 * sizeof(double)); }

// --- From the data to space, and on to the data box

int C3DLineCurve::GetUsedIntermediatePts() const
{
    // A document of a few bytes may ask for any number.
    constexpr int kMostPoints = 1 << 18;
    int const gaps = GetNumPts() - 1;
    if (gaps < 1 || GetCurveType() == ctCartesian)
        return 0;
    return std::clamp(m_numIntermediatePts, 0, std::max(kMostPoints - 1 - gaps, 0) / gaps);
}

int C3DLineCurve::Evaluate()
{
    ++m_revision;
    m_transformed.Initialise(0);
    SetValid(0);
    if (GetDataSourceType() == dsFormula)
        return 0;
    m_intermediatePts = GetUsedIntermediatePts();
    int const step = m_intermediatePts + 1;
    int const count = GetNumPts();
    if (count == 0)
        return 0;
    m_transformed.Initialise((count - 1) * step + 1);
    GridCoordinates const coordinates(GetCurveType(), false);
    int numPresent = 0;
    auto const place = [&](int at, CVertex const& point) {
        if (C3DLineData::IsMissing(point)) {
            m_transformed[at] = { kNaN, kNaN, kNaN };
            return;
        }
        auto [x, y, z] = coordinates.At(point.X(), point.Y(), point.Z());
        Transform(&x, &y, &z);
        m_transformed[at] = { x, y, z };
        numPresent += C3DLineData::IsMissing(m_transformed[at]) ? 0 : 1;
    };
    for (int i = 0; i < count; ++i) {
        place(i * step, m_points[i]);
        if (i + 1 == count)
            break;
        CVertex const& from = m_points[i];
        CVertex const& to = m_points[i + 1];
        bool const isBroken = C3DLineData::IsMissing(from) || C3DLineData::IsMissing(to);
        for (int k = 1; k < step; ++k)
            place(i * step + k,
                isBroken ? CVertex(kNaN, kNaN, kNaN) : from + (to - from) * (static_cast<double>(k) / step));
    }
    SetValid(numPresent > 0 ? 1 : 0);
    return IsValid();
}

void C3DLineCurve::SetDefaults()
{
    m_lineThickness = 0.01 * std::max({ m_axes[0].scale, m_axes[1].scale, m_axes[2].scale });
}

void C3DLineCurve::Normalise()
{
    GetBoxAxes(m_axes);
    SetDefaults();
    m_normalised.clear();
    m_normalised.reserve(m_transformed.GetPoints().size());
    CVertex const offset = GetOffset();
    for (CVertex const& point : m_transformed.GetPoints())
        m_normalised.push_back(
            C3DLineData::IsMissing(point) ? CVertex(kNaN, kNaN, kNaN) : GetBoxPlace(m_axes, point + offset));
}

int C3DLineCurve::GetNumNormalisedPoints() const
{
    return (static_cast<int>(m_normalised.size()) + m_intermediatePts) / (m_intermediatePts + 1);
}

CVertex const& C3DLineCurve::GetNormalisedPoint(int i) const
{
    return m_normalised[static_cast<std::size_t>(i) * static_cast<std::size_t>(m_intermediatePts + 1)];
}

// --- Drawing

void C3DLineCurve::Render()
{
    C3DGraph* const graph = Get3DGraph();
    if (!graph || !IsValid())
        return;
    Drawing& drawing = *m_drawing;
    Drawing::Key key { m_revision, GetGeometryRevision(), m_axes, m_look, GetColour(), GetOffset() };
    GetBoxAxes(key.axes);
    if (!drawing.isMade || !(drawing.key == key)) {
        Normalise();
        drawing.shapes.Clear();
        drawing.lines.Clear();
        BuildGeometry({ drawing.shapes, drawing.lines });
        drawing.key = key;
        drawing.isMade = true;
    }
    drawing.shapes.Draw(*graph);
    constexpr double kWidest = 100.0;
    double const width = std::min(GetThinLineWidth(), kWidest);
    if (width > 0.0)
        drawing.lines.DrawSmoothLines(*graph, width);
}

double C3DLineCurve::GetThinLineWidth() const
{
    // No preference scales these lines.
    constexpr int kNoKind = -1;
    return std::max(1.5, Get3DGraph()->GetLineWidth(kNoKind)) * m_look.thicknessScaleFac;
}

void C3DLineCurve::BuildGeometry(Geometry const& geometry)
{
    if (m_look.lineMode != 1)
        BuildLines(geometry);
    if (!m_look.symbolsOn)
        return;
    int const last = GetNumNormalisedPoints() - 1;
    for (int i = 0; i <= last; ++i) {
        if (m_look.endPointSymbolMode == 0 || i == 0 || i == last)
            DrawSymbol(geometry.shapes, GetNormalisedPoint(i), 1.0, m_look.symbolColour);
    }
}

void C3DLineCurve::BuildLines(Geometry const& geometry)
{
    auto const colour = static_cast<COLORREF>(GetColour());
    std::span<CVertex const> const points = m_normalised;
    std::size_t const step = m_look.lineMode == 2 ? static_cast<std::size_t>(m_intermediatePts) + 1 : points.size();
    // Of separate segments every other one, each with its intermediate points.
    for (std::size_t first = 0; first + 1 < points.size(); first += 2 * step) {
        std::size_t const count = m_look.lineMode == 2 ? step + 1 : points.size();
        std::span<CVertex const> const piece = points.subspan(first, std::min(count, points.size() - first));
        if (m_look.lineStyle != 0)
            geometry.shapes.AddTube(piece, m_lineThickness * m_look.thicknessScaleFac, colour);
        else
            AddThinLine(geometry.lines, piece, colour);
    }
}

void C3DLineCurve::AddThinLine(FaceBatch& lines, std::span<CVertex const> points, COLORREF colour)
{
    FaceVertex vertex;
    vertex.colour = FaceVertex::Bytes(colour);
    bool isAfterPoint = false;
    for (CVertex const& point : points) {
        // Such lines may well cross the box; farther out, single precision places them wildly.
        constexpr double kFarthest = 1e6;
        bool const isThere
            = std::fabs(point.X()) < kFarthest && std::fabs(point.Y()) < kFarthest && std::fabs(point.Z()) < kFarthest;
        if (isThere) {
            vertex.place = FaceVertex::Floats(point);
            std::uint32_t const index = lines.AddVertex(vertex);
            if (isAfterPoint)
                lines.AddLine(index - 1, index);
        }
        isAfterPoint = isThere;
    }
}

void C3DLineCurve::DrawSymbol(ShapeBatch& shapes, CVertex const& place, double factor, COLORREF colour) const
{
    double const size = GetSymbolSize() * factor;
    if (!(size > 0.0))
        return;
    CVertex centre = place;
    if (m_look.symbolAlignMode == 1)
        centre[2] -= size;
    else if (m_look.symbolAlignMode == 2)
        centre[2] += size;
    CVertex const up(0.0, 0.0, size);
    switch (m_look.symbolStyle) {
    case 1:
        shapes.AddCone(centre - up, centre + up, size, colour);
        break;
    case 2:
        shapes.AddCone(centre + up, centre - up, size, colour);
        break;
    case 3:
        shapes.AddCuboid(centre, { size, size, size }, colour);
        break;
    default:
        shapes.AddSphere(centre, size, colour);
        break;
    }
}

void C3DLineCurve::InvalidateDeviceObjects()
{
    m_drawing->shapes.InvalidateDeviceObjects();
    m_drawing->lines.InvalidateDeviceObjects();
}

} // namespace ombrel
