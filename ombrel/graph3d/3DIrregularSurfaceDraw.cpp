#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"
#include "ombrel/graph3d/ContourLines.h"
#include "ombrel/graph3d/geometry/PointCoordinates.h"
#include "ombrel/graph3d/render/IrregularSurfaceDrawing.h"
#include "ombrel/graph3d/render/NearerDepth.h"

namespace ombrel {

// --- Colours

double C3DIrregularSurfaceCurve::GetColourValue(std::size_t point) const
{
    CTableData const& table = PlotSecondaryVariable() ? m_valueTable : m_points;
    double const* const row = table.GetRow(PlotSecondaryVariable() ? 0 : 2);
    return point < static_cast<std::size_t>(table.GetNumCols()) ? row[point] : kGap;
}

double C3DIrregularSurfaceCurve::Get1DTextureCoord(int point) const
{
    double const value = GetColourValue(CheckedIndex(point, static_cast<std::size_t>(GetNumPoints())));
    double min = 0.0;
    double max = 0.0;
    GetUntransformedDataRange(min, max);
    return IsGridGap(value) ? 0.0 : GetTexelPlace(value, min, max);
}

std::vector<BYTE> C3DIrregularSurfaceCurve::Make1DTexture() const
{
    double min = 0.0;
    double max = 0.0;
    GetUntransformedDataRange(min, max);
    return MakeTexels(
        min, max, [this](double value) { return m_contours.on ? GetContourColour(value) : GetLUTColour(value); });
}

ColourKeySource C3DIrregularSurfaceCurve::GetColourKeySource() const
{
    ColourKeySource source = C3DCurve::GetColourKeySource();
    if (m_contours.on) {
        source.style = ColourKeySource::Style::Bands;
        GetContourColourKeyEntries(source.bandColours, source.bandValues);
    }
    return source;
}

// --- Levels

ContourColours C3DIrregularSurfaceCurve::MakeContourColours() const
{
    double lo = 0.0;
    double hi = 0.0;
    GetUntransformedDataRange(lo, hi);
    return { m_contours.GetLevels(m_arbitraryLevels), lo, hi, [this](double value) { return GetLUTColour(value); } };
}

void C3DIrregularSurfaceCurve::BuildContourLevels()
{
    m_contourColours.Replace(m_contours.on ? MakeContourColours() : ContourColours(), this);
}

void C3DIrregularSurfaceCurve::GetContourColourKeyEntries(CDWordArray& colours, CDoubleArray& values) const
{
    double lo = 0.0;
    double hi = 0.0;
    GetUntransformedDataRange(lo, hi);
    MakeContourColours().GetKeyEntries(UseColourmap() ? std::optional(lo) : std::nullopt, colours, values);
}

// --- Drawing

void C3DIrregularSurfaceCurve::Render()
{
    C3DGraph* const graph = Get3DGraph();
    if (!graph || !IsValid() || m_triangles.empty())
        return;
    UpdateGraphParameters();
    bool const isTransparent = m_transparency != 0.0 && !m_wireframeOn;
    IrregularSurfaceKey key;
    key.revision = m_revision;
    key.axes = m_axes;
    key.isFlat = m_normalAveraging == 0;
    key.hasOutlines = m_wireframeOn != 0;
    key.lineColour = FaceVertex::Bytes(m_wireframeColour);
    key.hasValueTable = PlotSecondaryVariable() != 0;
    key.colour = FaceVertex::Bytes(
        UseColourmap() ? 0xFFFFFF : static_cast<COLORREF>(GetColour()), isTransparent ? m_transparency : 0.0);
    FaceBatch& batch = m_drawing->Get(key, [this, &key](FaceBatch& faces) { FillBatch(faces, key); });
    unsigned int texture = 0;
    if (UseColourmap()) {
        BuildContourLevels();
        texture = m_drawing->colours.Update(Make1DTexture());
    }
    if (isTransparent)
        batch.AddTransparent(*graph, texture);
    else
        batch.DrawFaces(*graph, texture);
    if (m_wireframeOn) {
        NearerDepth const nearer(0.002);
        batch.DrawLines(*graph, graph->GetLineWidth(3), 0);
    }
}

void C3DIrregularSurfaceCurve::InvalidateDeviceObjects()
{
    m_drawing->InvalidateDeviceObjects();
    m_drawing->colours.Reset();
}

void C3DIrregularSurfaceCurve::FillBatch(FaceBatch& batch, IrregularSurfaceKey const& key) const
{
    // The points that triangles use, in the order in which these come to them: what neighbours need stands together.
    std::vector<std::uint32_t> points;
    std::vector<TriangleCorners> triangles;
    triangles.reserve(m_triangles.size());
    {
        std::vector<std::uint32_t> const order = OrderForDrawing(m_triangles, PointRows(m_points).GetRow(0));
        std::vector<int> numbers(static_cast<std::size_t>(GetNumPoints()), -1);
        for (std::uint32_t const t : order) {
            TriangleCorners corners = m_triangles[t];
            for (int& corner : corners) {
                int& number = numbers[static_cast<std::size_t>(corner)];
                if (number < 0) {
                    number = static_cast<int>(points.size());
                    points.push_back(static_cast<std::uint32_t>(corner));
                }
                corner = number;
            }
            triangles.push_back(corners);
        }
    }
    double min = 0.0;
    double max = 0.0;
    GetUntransformedDataRange(min, max);
    std::vector<FaceVertex> vertices(points.size());
    std::vector<std::array<double, 3>> places(points.size());
    CVertex place;
    for (std::size_t i = 0; i < points.size(); ++i) {
        GetNormalisedVertex(static_cast<int>(points[i]), place);
        places[i] = { place.X(), place.Y(), place.Z() };
        FaceVertex& vertex = vertices[i];
        vertex.place = FaceVertex::Floats(place);
        double const value = GetColourValue(points[i]);
        vertex.value = IsGridGap(value) ? 0.0F : static_cast<float>(GetTexelPlace(value, min, max));
        vertex.colour = key.colour;
    }
    std::vector<std::array<float, 3>> const faceNormals = MakeFaceNormals(triangles, places);
    if (!key.isFlat) {
        std::vector<std::array<float, 3>> const normals = AverageFaceNormals(triangles, faceNormals, points.size());
        for (std::size_t i = 0; i < vertices.size(); ++i) {
            vertices[i].normal = normals[i];
            batch.AddVertex(vertices[i]);
        }
    }
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        std::array<std::uint32_t, 3> corners {};
        for (std::size_t k = 0; k < 3; ++k) {
            corners[k] = static_cast<std::uint32_t>(triangles[t][k]);
            if (key.isFlat) {
                vertices[corners[k]].normal = faceNormals[t];
                corners[k] = batch.AddVertex(vertices[corners[k]]);
            }
        }
        auto const& [a, b, c] = corners;
        batch.AddTriangle(a, b, c);
    }
    if (!key.hasOutlines)
        return;
    auto const first = static_cast<std::uint32_t>(batch.GetVertices().size());
    for (FaceVertex& vertex : vertices) {
        vertex.colour = key.lineColour;
        batch.AddVertex(vertex);
    }
    for (auto const& [from, to] : FindEdges(triangles))
        batch.AddLine(first + static_cast<std::uint32_t>(from), first + static_cast<std::uint32_t>(to));
}

} // namespace ombrel
