#include "tools/ombrel/Program.h"
#include "ombrel/Init.h"
#include "ombrel/chart/Document.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/scene/Heights.h"
#include "ombrel/scene/MeshFile.h"
#include "tools/ombrel/FileWatch.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/Version.h"
#include "tools/ombrel/commands/ColoursCommand.h"
#include "tools/ombrel/commands/ConvertCommand.h"
#include "tools/ombrel/commands/DrawCommand.h"
#include "tools/ombrel/commands/GalleryCommand.h"
#include "tools/ombrel/commands/HeightCommands.h"
#include "tools/ombrel/commands/InfoCommand.h"
#include "tools/ombrel/commands/PlotCommand.h"
#include "tools/ombrel/options/Options.h"
#include "tools/ombrel/options/PlotChecks.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <new>

namespace ombrel::host {

namespace {

void Print(std::string const& text)
{
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
        throw Failure(kDataFault, "standard output: cannot be written");
}

/// What is wrong with a setting, which the text begins with, as the command line calls it.
std::string OptionText(std::string const& text) { return (text.find_first_of(" :") == 1 ? "-" : "--") + text; }

/// Without a command the first file decides.
Command CommandFor(Options const& options, InputFile& first)
{
    if (options.command != Command::None)
        return options.command;
    bool const isDocument = options.IsGiven(OptionId::InPlace) || LooksLikeDocument(first.Peek(kDocumentMarkLength));
    bool const isScene
        = IsHeightFile(first.GetName()) || (options.IsGiven(OptionId::Kind) && IsSceneKind(options.kind));
    Command const command = isDocument ? Command::Draw
        : IsMeshFile(first.GetName())  ? Command::Mesh
        : isScene                      ? Command::Surface
                                       : Command::Plot;
    CheckOptionsFor(options, command);
    return command;
}

InputFile& OnlyFile(std::vector<std::unique_ptr<InputFile>> const& files)
{
    if (files.size() > 1)
        throw Failure(kUsageFault, "expected one document, found " + std::to_string(files.size()) + " files");
    return *files.front();
}

void RunOnFiles(Options const& options, Messages const& messages)
{
    std::vector<std::unique_ptr<InputFile>> files;
    for (std::string const& path : options.files)
        files.push_back(std::make_unique<InputFile>(path));
    switch (CommandFor(options, *files.front())) {
    case Command::Draw:
        RunDraw(options, OnlyFile(files), messages);
        break;
    case Command::Convert:
        RunConvert(options, OnlyFile(files), messages);
        break;
    case Command::Surface:
        RunSurface(options, files, messages);
        break;
    case Command::Contour:
        RunContour(options, files, messages);
        break;
    case Command::Mesh:
        RunMesh(options, files, messages);
        break;
    case Command::Info:
        for (auto const& file : files)
            Print(DescribeFile(options, *file, messages));
        break;
    default:
        RunPlot(options, files, messages);
        break;
    }
}

/// The status of what was done; what went wrong is told.
int StatusOf(std::function<void()> const& act)
{
    Messages const messages(false);
    try {
        WithErrors(act);
        return kDone;
    } catch (Failure const& failure) {
        messages.Error(failure.what());
        return failure.GetStatus();
    } catch (ChartError const& error) {
        bool const isSetting = error.GetCause() == ChartError::Cause::Setting;
        messages.Error(isSetting ? OptionText(error.what()) : error.what());
        return isSetting ? kUsageFault : kDataFault;
    } catch (std::bad_alloc const&) {
        messages.Error("there is not enough memory");
    } catch (std::exception const& exception) {
        messages.Error(exception.what());
    }
    return kDataFault;
}

/// Draws again and again. Only a wrong command line ends it at once.
void Watch(Options const& options, Messages const& messages)
{
    if (std::count(options.files.begin(), options.files.end(), "-") > 0)
        throw Failure(kUsageFault, "--watch: standard input cannot be read again");
    FileWatch watch(options.files);
    do {
        if (StatusOf([&] { RunOnFiles(options, messages); }) == kUsageFault)
            throw Failure(kUsageFault, "--watch: ended, since the command line is at fault");
    } while (watch.Wait());
}

void Run(Options const& options)
{
    if (options.help) {
        Print(HelpText(options.command));
        return;
    }
    if (options.version) {
        Print(std::string("ombrel ") + kVersion + "\n");
        return;
    }
    Messages const messages(options.verbose);
    OmbrelInit();
    if (options.command == Command::Gallery) {
        RunGallery(options, messages);
        return;
    }
    if (options.command == Command::Colours) {
        RunColours(options, messages);
        return;
    }
    if (options.files.empty())
        throw Failure(kUsageFault, "expected a FILE (ombrel --help lists the commands and options)");
    if (std::count(options.files.begin(), options.files.end(), "-") > 1)
        throw Failure(kUsageFault, "standard input can be read once only");

    if (options.watch)
        Watch(options, messages);
    else
        RunOnFiles(options, messages);
}

} // namespace

int RunProgram(std::vector<std::string> const& arguments)
{
    return StatusOf([&] { Run(ParseOptions(arguments)); });
}

} // namespace ombrel::host
