#include "tools/ombrel/commands/ColoursCommand.h"
#include "ombrel/chart/ColourMapSheet.h"
#include "ombrel/layout/ColourMapFiles.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

namespace ombrel::host {

namespace {

struct Entry {
    ColourMapRow row;
    ColourMapKind kind = ColourMapKind::File;
};

Entry LoadEntry(std::string const& name)
{
    Entry entry { { name, AuthorsOfColourMap(name), {} }, KindOfColourMap(name) };
    if (LoadColourMap(name, entry.row.map)) {
        if (entry.kind != ColourMapKind::File)
            entry.row.name = entry.row.map.GetName().ToUtf8();
        return entry;
    }
    std::error_code error;
    if (entry.kind == ColourMapKind::File && !std::filesystem::exists(name, error))
        throw Failure(kUsageFault, name + ": no colour map of that name (ombrel colours lists them), and no file");
    throw Failure(kDataFault, name + ": not a colour map file, or a damaged one");
}

/// Those named, or without names all that there are.
std::vector<Entry> LoadEntries(std::vector<std::string> const& names, Messages const& messages)
{
    std::vector<Entry> entries;
    entries.reserve(names.size());
    for (std::string const& name : names)
        entries.push_back(LoadEntry(name));
    if (!names.empty())
        return entries;
    for (std::string const& name : ListColourMaps()) {
        try {
            entries.push_back(LoadEntry(name));
        } catch (Failure const& failure) {
            // One bad file among those installed does not hide the others.
            messages.Warning(failure.what());
        }
    }
    return entries;
}

std::string KindText(ColourMapKind kind)
{
    switch (kind) {
    case ColourMapKind::Preset:
        return "preset";
    case ColourMapKind::Installed:
        return "installed";
    case ColourMapKind::File:
        break;
    }
    return "file";
}

/// Of the channel that has most.
std::string ControlPoints(CColourMap const& map)
{
    int most = 0;
    for (int c = 0; c < CColourMap::kChannels; ++c)
        most = std::max(most, map.GetChannel(c).positions.GetSize());
    return std::to_string(most);
}

std::string FormatList(std::vector<Entry> const& entries)
{
    std::vector<std::vector<std::string>> rows { { "name", "kind", "points", "by" } };
    for (Entry const& entry : entries)
        rows.push_back({ entry.row.name, KindText(entry.kind), ControlPoints(entry.row.map), entry.row.authors });
    return FormatRows(rows, 0);
}

/// As high as the sheet, unless the user chose a size.
void FitHeight(Target& target, std::size_t count)
{
    target.size.height = ColourMapSheetHeight(std::clamp<std::size_t>(count, 1, 400));
}

} // namespace

void RunColours(Options const& options, Messages const& messages)
{
    bool const toPicture
        = !options.files.empty() || !options.outputs.empty() || options.format || options.size || options.page;
    std::vector<Entry> entries = LoadEntries(options.files, messages);
    if (!toPicture) {
        WriteToStandardOutput(FormatList(entries));
        return;
    }
    Outputs outputs(options, options.files.size() == 1 ? options.files.front() : "colours");
    for (Target& target : outputs.GetPictures()) {
        if (!options.size)
            FitHeight(target, entries.size());
    }
    outputs.SetTitle(entries.size() == 1 ? entries.front().row.name : "Colour maps");
    std::vector<ColourMapRow> rows;
    rows.reserve(entries.size());
    for (Entry& entry : entries)
        rows.push_back(std::move(entry.row));
    auto const draw = [&rows](Picture& picture, bool) {
        DrawColourMapSheet(picture.GetDC(), picture.GetRect(), rows);
        return nullptr;
    };
    outputs.Write(draw, messages);
}

} // namespace ombrel::host
