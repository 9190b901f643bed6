#pragma once
#include "ombrel/platform/framework/Export.h"

#include <memory>
#include <string>
#include <string_view>

namespace ombrel {

class CGraph;
class ChartNotes;

/// Whether a file that begins with these bytes is a graph document: an archive whose first object is new, of a class
/// not met before.
OMBREL_EXPORT bool LooksLikeDocument(std::string_view firstBytes);
/// How many bytes that takes.
inline constexpr std::size_t kDocumentMarkLength = 8;

/// The graph of a document's bytes. inPlaceClass is empty for a document that holds an object reference, else the class
/// of the graph whose contents it holds. The graph is as it was stored: UpdatePlots makes it ready for drawing. Bytes
/// after it are noted. Throws ChartError.
OMBREL_EXPORT std::unique_ptr<CGraph> LoadDocument(
    std::string_view bytes, std::string const& inPlaceClass, ChartNotes& notes);

/// The bytes of a document that holds the graph as an object reference.
OMBREL_EXPORT std::string EncodeDocument(CGraph const& graph);

/// Stores the graph as an object reference in a file. Throws ChartError.
OMBREL_EXPORT void SaveDocument(std::string const& path, CGraph const& graph);

} // namespace ombrel
