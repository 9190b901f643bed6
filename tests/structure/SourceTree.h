#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace ombrel::structure {

/// One source file: its path from the root of the tree, with '/', and its lines.
struct SourceFile {
    std::string path;
    std::vector<std::string> lines;
};

/// An include line: the name between the delimiters, and where it stands (line from 1).
struct Include {
    std::string name;
    bool isQuoted = false;
    size_t line = 0;
};

/// The files below the given folders of the tree that have one of our extensions, sorted by path; a folder that does
/// not exist holds none.
std::vector<SourceFile> ReadSources(std::filesystem::path const& root, std::vector<std::string> const& folders);

/// The include lines of a file, in order.
std::vector<Include> FindIncludes(SourceFile const& file);

/// The folder of the library that a path such as "ombrel/platform/gdi/DC.h" lies in ("platform/gdi"); empty at the top
/// of the tree, nothing when it is in none of them.
std::optional<std::string> FindFolder(std::string const& path);

/// The folder's subfolder that the path lies in ("text" of "ombrel/platform/gdi/text/Font.h"); empty for the folder's
/// own files.
std::string FindRoom(std::string const& path);

/// True for a file in a folder's room: its headers are not installed, and only the folder itself includes them.
bool IsInternal(std::string const& path);

/// True for a folder whose own headers are not installed either: higher folders include them in sources and rooms.
bool IsPrivate(std::string const& folder);

// Each check returns one line per fault, "path:line: what is wrong"; empty when all is well.

/// Includes between the library's folders against the order of the table in SourceTree.cpp, and files in no folder of
/// it.
std::vector<std::string> CheckDirection(std::vector<SourceFile> const& files);

/// Installed headers that include something which an installed tree does not have.
std::vector<std::string> CheckInstalledHeaders(std::vector<SourceFile> const& files);

/// Includes of internal headers, or of private folders' headers, by files outside the library; tests and benchmarks
/// may have those of private folders.
std::vector<std::string> CheckPublicOnly(std::vector<SourceFile> const& files);

/// Headers without #pragma once, and sources whose own header is not their first include.
std::vector<std::string> CheckHeaderHabits(std::vector<SourceFile> const& files);

/// Files of more lines than a reader bears: headers above 300 and sources above 600, times the given tolerance.
std::vector<std::string> CheckLength(std::vector<SourceFile> const& files, double tolerance);

} // namespace ombrel::structure
