#include "tools/ombrel/commands/ConvertCommand.h"
#include "ombrel/chart/CurvesCsv.h"
#include "ombrel/chart/Document.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/model/Graph.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/commands/DocumentFile.h"

namespace ombrel::host {

void RunConvert(Options const& options, InputFile& file, Messages const& messages)
{
    std::vector<std::string> paths = options.outputs;
    if (paths.empty())
        paths.emplace_back("-");
    for (std::string& path : paths) {
        if (path != "-" && !path.ends_with(".csv") && !path.ends_with(".ombrel"))
            throw Failure(kUsageFault, "-o " + path + ": expected .ombrel or .csv (ombrel draw makes pictures)");
        if (path == "-")
            path.clear();
    }
    CheckPaths(options, paths);
    std::unique_ptr<CGraph> const graph = ReadDocument(options, file, messages);
    std::string const document = EncodeDocument(*graph);
    graph->UpdatePlots();
    std::vector<OutputFile> files;
    for (std::string const& path : paths) {
        try {
            bool const isDocument = path.ends_with(".ombrel");
            files.push_back({ path, isDocument ? document : CurvesAsCsv(*graph) });
        } catch (ChartError const& error) {
            throw Failure(kDataFault, file.GetName() + ": " + error.what());
        }
    }
    WriteFiles(files, messages);
}

} // namespace ombrel::host
