#include "ombrel/Init.h"
#include "ombrel/annotation/Caption.h"
#include "ombrel/annotation/Legend.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DSeriesPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/platform/gdi/PageSurface.h"
#include "ombrel/platform/host/Host.h"
#include "ombrel/platform/registry/Registry.h"
#include "ombrel/prefs/Preferences.h"
#include "tests/model/ArchiveBytes.h"

#include <atomic>
#include <barrier>
#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <thread>
#include <unistd.h>

namespace ombrel {
namespace {

constexpr int kThreads = 8;

/// A graph of one of eight looks: four kinds of plot; titles that need no shaping, and such that do; fonts from the
/// packages' directories, and one that has to be looked for; hatches and symbols.
std::unique_ptr<C2DGraph> MakeGraph(int look)
{
    constexpr ItemType kPlots[] = { it2DLinePlot, it2DStackedBarPlot, it2DAreaPlot, it2DErrorBarPlot };
    constexpr char const* kTitles[] = { "Höhe", "Ωαβ", "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D", "xe\xCC\x81x" };
    constexpr char const* kFaces[] = { "Arial", "Times New Roman", "Courier New", "No Such Face" };
    auto graph = std::make_unique<C2DGraph>(1);
    CPlot* const plot = graph->AddPlot(kPlots[look % 4]);
    if (auto* const series = DynamicDowncast<C2DSeriesPlot>(plot))
        series->SetNumPts(40);
    for (int c = 0; c < 3; ++c) {
        auto& curve = static_cast<C2DCurve&>(*plot->CreateCurve());
        curve.SetTitle(kTitles[(look + c) % 4]);
        curve.SetDataSourceType(CPlotComponent::dsTable);
        curve.Initialise(40);
        for (int i = 0; i < 40; ++i)
            curve.SetAt(i, { i + 0.5 * look, 2.0 + std::sin(0.3 * i + c) });
        if (auto* const bars = DynamicDowncast<C2DErrorBarCurve>(&curve)) {
            for (int i = 0; i < 40; ++i)
                bars->GetHeights().Add(0.02 * i);
        }
        if (auto* const line = DynamicDowncast<C2DLine>(&curve)) {
            line->SetLineType(c);
            line->SetSymbolType(static_cast<C2DSymbol::SymbolType>(1 + c));
            line->SetFillOn(1);
            line->SetFillPattern(c);
        }
    }
    graph->UpdatePlots();
    CAxes& axes = *graph->GetAxes();
    axes.SetXAxisTitle(kTitles[look % 4]);
    axes.SetYAxisTitle(kTitles[(look + 2) % 4]);
    axes.SetLabelsFont(CFontData(kFaces[look / 2 % 4], look % 2 ? 700 : 400, 0, 1.0));
    graph->GetLegend()->Create({ 180, 20 });
    graph->AddCaption({ 60, 20 });
    return graph;
}

std::string Picture(C2DGraph& graph, PaintMode mode)
{
    CDIB target(320, 240, 24);
    graph.Draw(target.GetDC(), { 0, 0, 320, 240 }, mode);
    return target.EncodeBmp();
}

std::string Page(C2DGraph& graph, PageFormat format)
{
    PageSetup setup;
    setup.format = format;
    setup.title = "Threads";
    std::shared_ptr<PageSurface> const page = MakePageSurface(setup);
    CDC dc(page);
    graph.Draw(&dc, page->Bounds(), pmDirect);
    return page->Finish();
}

/// All that can be made of a graph, by name.
std::map<std::string, std::string> MakeAll(int look)
{
    auto const graph = MakeGraph(look);
    std::map<std::string, std::string> made;
    made["direct"] = Picture(*graph, pmDirect);
    made["off-screen"] = Picture(*graph, pmOffScreen);
    made["PDF"] = Page(*graph, PageFormat::Pdf);
    made["PostScript"] = Page(*graph, PageFormat::PostScript);
    made["SVG"] = Page(*graph, PageFormat::Svg);
    test::Bytes const document = test::Stored(*graph);
    made["document"] = document.Hex();
    C2DGraph loaded(1);
    EXPECT_TRUE(test::Load(loaded, document));
    made["stored again"] = test::Stored(loaded).Hex();
    return made;
}

class Threads : public testing::Test {
protected:
    Threads()
    {
        SetRegistryFile(m_file.string());
        CPreferences::SetAxesColour2D(RGB(200, 0, 0));
        CPreferences::SetCurveThicknessScaleFac(3.0F);
    }
    ~Threads() override
    {
        SetRegistryFile("");
        std::filesystem::remove(m_file);
    }
    /// Runs work(thread) in all threads, which start at once.
    template <typename Work> static void RunAtOnce(Work const& work)
    {
        std::barrier start(kThreads);
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t)
            threads.emplace_back([&, t] {
                start.arrive_and_wait();
                work(t);
            });
        for (auto& thread : threads)
            thread.join();
    }

    std::filesystem::path m_file = testing::TempDir() + "/ombrel-threads-" + std::to_string(getpid());
};

TEST_F(Threads, DrawTheirGraphsAsTheyAreDrawnAlone)
{
    // First all at once, so that whatever is made on first use is made by several.
    std::map<std::string, std::string> together[kThreads][2];
    RunAtOnce([&](int t) {
        OmbrelInit();
        for (int round = 0; round < 2; ++round)
            together[t][round] = MakeAll((t + round) % kThreads);
    });
    std::map<std::string, std::string> alone[kThreads];
    for (int look = 0; look < kThreads; ++look)
        alone[look] = MakeAll(look);
    for (int t = 0; t < kThreads; ++t)
        for (int round = 0; round < 2; ++round)
            for (auto const& [name, bytes] : alone[(t + round) % kThreads])
                EXPECT_TRUE(together[t][round][name] == bytes) << name << " of thread " << t;
    // Every look is one of its own, and the preferences were believed.
    EXPECT_NE(alone[0]["direct"], alone[1]["direct"]);
    CPreferences::SetAxesColour2D(0);
    CPreferences::SetCurveThicknessScaleFac(1.0F);
    auto const plain = MakeAll(0);
    EXPECT_NE(plain.at("direct"), alone[0]["direct"]);
    EXPECT_NE(plain.at("SVG"), alone[0]["SVG"]);
}

TEST_F(Threads, LoseNoPreferenceOfAnother)
{
    RunAtOnce([](int t) {
        CString const name = "Thread " + std::to_string(t);
        for (int i = 0; i < 25; ++i) {
            CString const value = std::to_string(i);
            CString read;
            EXPECT_TRUE(WriteRegistryValue(HKEY_CURRENT_USER, "Threads", name, value));
            EXPECT_TRUE(ReadRegistryValue(HKEY_CURRENT_USER, "Threads", name, read));
            EXPECT_EQ(read, value);
            COLORREF colour = 0;
            CPreferences::GetAxesColour2D(colour);
            EXPECT_EQ(colour, RGB(200, 0, 0));
        }
    });
}

TEST_F(Threads, CallAndInstallHostFunctionsAndClassesAtOnce)
{
    std::atomic<int> shown = 0;
    RunAtOnce([&shown](int t) {
        for (int i = 0; i < 100; ++i) {
            SetMessageBoxFunction([&shown](CString const&, CString const&, UINT) { ++shown; });
            MessageBox("text", "title", MB_OK);
            SetStringResourceFunction([t](UINT id, CString& text) {
                text = std::to_string(t);
                return id == 1;
            });
            CString text;
            EXPECT_TRUE(LoadStringResource(1, text));
            EXPECT_EQ(text.GetLength(), 1);
            EXPECT_TRUE(LoadStringResource(1005, text));
            OmbrelInit();
            EXPECT_EQ(FindRegisteredClass("CAxes"), &CAxes::kClass);
            EXPECT_FALSE(GetLocaleTimePicture().IsEmpty());
        }
    });
    EXPECT_EQ(shown, kThreads * 100);
    SetMessageBoxFunction(nullptr);
    SetStringResourceFunction(nullptr);
}

} // namespace
} // namespace ombrel
