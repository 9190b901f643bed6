#include "tools/ombrel/commands/DocumentFile.h"
#include "ombrel/chart/Document.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/model/Graph.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/options/Options.h"

namespace ombrel::host {

std::unique_ptr<CGraph> ReadDocument(Options const& options, InputFile& file, Messages const& messages)
{
    try {
        ChartNotes notes;
        std::unique_ptr<CGraph> graph = LoadDocument(file.ReadAll(), options.inPlaceClass, notes);
        messages.Tell(notes, file.GetName() + ": ");
        return graph;
    } catch (ChartError const& error) {
        if (error.GetCause() == ChartError::Cause::Setting)
            throw Failure(kUsageFault, std::string("--") + error.what());
        throw Failure(kDataFault, file.GetName() + ": " + error.what());
    }
}

} // namespace ombrel::host
