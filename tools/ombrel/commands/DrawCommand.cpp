#include "tools/ombrel/commands/DrawCommand.h"
#include "ombrel/chart/Document.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/scene/SceneView.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/commands/DocumentFile.h"

namespace ombrel::host {

namespace {

bool HasBoxes(CAnnotatedGraph const& graph)
{
    return (graph.GetLegend() && graph.GetLegend()->IsOn())
        || (graph.GetCaptionArray() && graph.GetCaptionArray()->GetSize() > 0);
}

/// The picture may have another shape than the one that the document was made for: puts the title in the middle again
/// and what floats over the graph inside.
void FitToPicture(CAnnotatedGraph& graph, PictureForm const& form)
{
    if (!HasBoxes(graph))
        return;
    Picture scratch(form);
    graph.LayOut(&scratch.GetDC(), scratch.GetRect());
    if (auto* const flat = DynamicDowncast<C2DGraph>(&graph))
        PlaceTitle(*flat, scratch.GetDC());
    scratch.Draw(graph);
    KeepBoxesInside(graph);
}

} // namespace

void RunDraw(Options const& options, InputFile& file, Messages const& messages)
{
    Outputs outputs(options, options.files.front());
    std::unique_ptr<CGraph> const loaded = ReadDocument(options, file, messages);
    // Not by its run-time class: what 2D and 3D graphs share has none.
    auto* const graph = dynamic_cast<CAnnotatedGraph*>(loaded.get());
    if (!graph)
        throw Failure(kDataFault,
            file.GetName() + ": holds a " + loaded->GetRuntimeClass().name
                + ", and only C2DGraph and C3DGraph can be drawn");
    // As it was loaded: drawing lays the graph out anew for the picture's size.
    std::string const document = outputs.HasDocuments() ? EncodeDocument(*graph) : std::string();
    graph->UpdatePlots();
    // Documents do not say whether edges are smooth.
    auto* const scene = DynamicDowncast<C3DGraph>(loaded.get());
    if (scene)
        scene->SetAntialiasMode(options.surface.plainEdges ? 0 : 1);
    if (graph->GetTitle() != CString(kUntitled))
        outputs.SetTitle(graph->GetTitle().ToUtf8());
    double const zoom = scene ? scene->GetZoomFactor() : 1.0;
    auto const draw = [graph, scene, zoom](Picture& picture, bool) {
        if (scene) {
            scene->SetZoomFactor(zoom);
            scene->SetZoomFactor(ZoomToKeepWidth(*scene, picture.GetRect().Size()));
        }
        FitToPicture(*graph, picture.GetForm());
        picture.Draw(*graph);
        return graph;
    };
    outputs.Write(draw, messages, document);
}

} // namespace ombrel::host
