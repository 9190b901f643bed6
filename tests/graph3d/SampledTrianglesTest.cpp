#include "ombrel/graph3d/render/SampledTriangles.h"
#include "ombrel/graph3d/render/FaceBatch.h"
#include "tests/graph3d/DataPlot.h"
#include "tests/graph3d/Draw3D.h"

#include <cmath>
#include <random>

namespace ombrel {
namespace {

using test::Draw3D;

/// Triangles of all shapes, most of them smaller than a pixel, in and around the box: as one batch, which is large
/// enough to have only those drawn that can be seen, or as many small ones.
class Dust : public test::DataCurve {
public:
    using DataCurve::DataCurve;
    void Make(std::size_t parts)
    {
        constexpr std::size_t kTriangles = 300000;
        std::mt19937 random(5);
        auto const number
            = [&random](double reach) { return reach * (2.0 * (static_cast<double>(random()) / 4294967296.0) - 1.0); };
        batches = std::vector<FaceBatch>(parts);
        for (std::size_t t = 0; t < kTriangles; ++t) {
            FaceBatch& batch = batches[t * parts / kTriangles];
            double const size = std::exp(-6.0 + number(2.0));
            CVertex const centre(number(0.55), number(0.55), number(0.55));
            FaceVertex vertex;
            vertex.normal = { 0.0F, 0.0F, 1.0F };
            vertex.colour = FaceVertex::Bytes(static_cast<COLORREF>(random() & 0xFFFFFF));
            std::array<std::uint32_t, 3> corners {};
            for (std::uint32_t& corner : corners) {
                vertex.place
                    = FaceVertex::Floats(centre + CVertex(number(size), number(size), number(t % 2 ? size : 0.0)));
                corner = batch.AddVertex(vertex);
            }
            batch.AddTriangle(corners[0], corners[1], corners[2]);
        }
    }
    void Render() override
    {
        for (FaceBatch& batch : batches)
            batch.DrawFaces(*Get3DGraph(), 0);
        std::vector<FaceVertex> const vertices(batches[0].GetVertices().begin(), batches[0].GetVertices().end());
        SampledTriangles found;
        found.Find({ vertices.front().place.data(), sizeof(FaceVertex), vertices.size() }, batches[0].GetTriangles(),
            SampledTriangles::Form::List);
        numFound = found.GetIndices().size() / 3;
    }
    std::vector<FaceBatch> batches;
    std::size_t numFound = 0;
};

TEST_F(Draw3D, LeavesOutTrianglesThatCoverNoPixelOnly)
{
    auto* const dust = &test::AddCurve<Dust>(m_graph);
    struct View {
        double azimuth;
        double perspective;
        double zoom;
        int antialias = 0;
    };
    for (View const& view : { View { 33.0, 0.5, 1.0 }, { 120.0, 1.0, 1.0 }, { 10.0, 0.9, 40.0 }, { 10.0, 0.2, 1e5 },
             { 77.0, 0.0, 1.3, 1 } }) {
        m_graph.SetViewingAzimuth(view.azimuth);
        m_graph.SetPerspective(view.perspective);
        m_graph.SetZoomFactor(view.zoom);
        m_graph.SetAntialiasMode(view.antialias);
        std::array<std::vector<COLORREF>, 2> pictures;
        for (std::size_t const road : { 0U, 1U }) {
            dust->Make(road == 0 ? 2 : 1);
            DrawAnew();
            pictures[road] = Pixels();
        }
        EXPECT_EQ(pictures[0], pictures[1]) << view.azimuth;
        if (view.zoom < 2.0) {
            EXPECT_LT(dust->numFound, 100000U) << view.azimuth;
            EXPECT_GT(dust->numFound, 3000U) << view.azimuth;
        }
    }
}

/// A strip of two rows of cells.
class Strip : public test::DataCurve {
public:
    using DataCurve::DataCurve;
    void Render() override
    {
        std::vector<std::array<float, 3>> places;
        std::vector<std::uint32_t> strip;
        for (std::uint32_t i = 0; i < 1000; ++i) {
            float const x = static_cast<float>(i) / 1000.0F - 0.5F;
            places.insert(places.end(), { { x, -0.3F, 0.0F }, { x, 0.0F, x } });
            strip.insert(strip.end(), { 2 * i, 2 * i + 1 });
        }
        std::vector<std::uint32_t> list;
        for (std::uint32_t i = 0; i + 2 < strip.size(); ++i)
            list.insert(list.end(), { strip[i + i % 2], strip[i + 1 - i % 2], strip[i + 2] });
        SampledTriangles::Places const from { places.front().data(), sizeof places.front(), places.size() };
        SampledTriangles ofStrip;
        SampledTriangles ofList;
        ofStrip.Find(from, strip, SampledTriangles::Form::Strip);
        ofList.Find(from, list, SampledTriangles::Form::List);
        EXPECT_TRUE(std::ranges::equal(ofStrip.GetIndices(), ofList.GetIndices()));
        EXPECT_GT(ofStrip.GetIndices().size(), 300U);
        EXPECT_LT(ofStrip.GetIndices().size(), list.size());
        // Turned around, the same ones cover a pixel.
        for (std::size_t i = 0; i < list.size(); i += 3)
            std::swap(list[i], list[i + 1]);
        SampledTriangles turned;
        turned.Find(from, list, SampledTriangles::Form::List);
        EXPECT_EQ(turned.GetIndices().size(), ofList.GetIndices().size());
        ++rendered;
    }
};

TEST_F(Draw3D, FindsTheTrianglesOfStripsAsThoseOfLists)
{
    auto* const strip = &test::AddCurve<Strip>(m_graph);
    Draw();
    EXPECT_EQ(strip->rendered, 1);
}

} // namespace
} // namespace ombrel
