#include "ombrel/chart/Document.h"
#include "ombrel/Init.h"
#include "ombrel/chart/Picture.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/model/Graph.h"
#include "ombrel/platform/framework/Archive.h"

#include <span>

namespace ombrel {

namespace {

std::unique_ptr<CGraph> LoadInPlace(CArchive& archive, CRuntimeClass const& graphClass)
{
    std::unique_ptr<CObject> object = graphClass.create();
    object->Serialize(archive);
    return std::unique_ptr<CGraph>(static_cast<CGraph*>(object.release()));
}

CRuntimeClass const* FindGraphClass(std::string const& name)
{
    CRuntimeClass const* const found = FindRegisteredClass(name);
    bool const isGraph = found && found->create && found->IsDerivedFrom(CGraph::kClass);
    if (!isGraph)
        throw ChartError(ChartError::Cause::Setting,
            "in-place: expected the class of a graph, such as C2DGraph, found \"" + name + "\"");
    return found;
}

} // namespace

bool LooksLikeDocument(std::string_view firstBytes)
{
    // FFFF announces the class, then its schema 1 and the length of its name, which begins with a C.
    return firstBytes.size() >= kDocumentMarkLength && firstBytes.substr(0, 4) == std::string_view("\xFF\xFF\x01\0", 4)
        && firstBytes[5] == 0 && firstBytes[6] == 'C';
}

std::unique_ptr<CGraph> LoadDocument(std::string_view bytes, std::string const& inPlaceClass, ChartNotes& notes)
{
    OmbrelInit();
    CRuntimeClass const* const graphClass = inPlaceClass.empty() ? nullptr : FindGraphClass(inPlaceClass);
    std::unique_ptr<CGraph> graph;
    try {
        WithErrors([&] {
            CArchive archive(std::as_bytes(std::span(bytes)));
            graph = graphClass ? LoadInPlace(archive, *graphClass) : archive.ReadObjectOf<CGraph>();
            if (archive.GetRemaining() > 0)
                notes.AddWarning(std::to_string(archive.GetRemaining()) + " bytes after the graph are ignored");
        });
    } catch (Error const& error) {
        // A class that nobody knows here may be one of another program, or of a later version.
        bool const isForeign = error.GetKind() == Error::Kind::UnknownClass;
        throw ChartError(ChartError::Cause::Data,
            (isForeign ? "cannot be read: " : "is not a graph document: ") + std::string(error.what()));
    }
    if (!graph)
        throw ChartError(ChartError::Cause::Data, "holds no graph");
    return graph;
}

std::string EncodeDocument(CGraph const& graph)
{
    CMemFile memory;
    CArchive archive(&memory, CArchive::store);
    archive.WriteObject(&graph);
    archive.Close();
    auto const& bytes = memory.GetBytes();
    return { reinterpret_cast<char const*>(bytes.data()), bytes.size() };
}

void SaveDocument(std::string const& path, CGraph const& graph) { WritePictureFile(path, EncodeDocument(graph)); }

} // namespace ombrel
