#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace ombrel {
class CGraph;
}

namespace ombrel::host {

class InputFile;
class Messages;

/// Whether a file that begins with these bytes is a graph document: an archive whose first object is new, of a class
/// not met before.
bool LooksLikeDocument(std::string_view firstBytes);
inline constexpr std::size_t kDocumentMarkLength = 8;

/// The graph of a document. inPlaceClass is empty for a document that holds an object reference, else the class of the
/// graph whose contents it holds. The graph is as it was stored: UpdatePlots makes it ready for drawing. Throws Failure
/// with kDataFault; with kUsageFault when there is no such class.
std::unique_ptr<CGraph> LoadDocument(InputFile& file, std::string const& inPlaceClass, Messages const& messages);

/// Stores the graph as an object reference. Throws Failure.
void SaveDocument(std::string const& path, CGraph const& graph);

} // namespace ombrel::host
