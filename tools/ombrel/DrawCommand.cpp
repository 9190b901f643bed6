#include "tools/ombrel/DrawCommand.h"
#include "ombrel/graph2d/2DGraph.h"
#include "tools/ombrel/Document.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/Output.h"

namespace ombrel::host {

void RunDraw(Options const& options, InputFile& file, Messages const& messages)
{
    Target target = MakeTarget(options, options.files.front());
    if (IsSameFile(target.path, options.files.front()))
        throw Failure(kUsageFault, target.path + ": would be written over the document");
    std::unique_ptr<CGraph> const loaded = LoadDocument(file, options.inPlaceClass, messages);
    auto* const graph = DynamicDowncast<C2DGraph>(loaded.get());
    if (!graph)
        throw Failure(kDataFault,
            file.GetName() + ": holds a " + loaded->GetRuntimeClass().name + ", and only C2DGraph can be drawn");
    // As it was loaded: drawing lays the graph out anew for the picture's size.
    if (!options.save.empty())
        SaveDocument(options.save, *graph);
    graph->UpdatePlots();
    if (graph->GetTitle() != CString(kUntitled))
        target.title = graph->GetTitle().ToUtf8();
    Picture picture(target);
    DrawGraph(*graph, picture);
    WriteTarget(target, picture.Encode(), messages);
}

} // namespace ombrel::host
