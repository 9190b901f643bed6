#pragma once
#include "ombrel/chart/Picture.h"
#include "tools/ombrel/Version.h"
#include "tools/ombrel/options/Options.h"

#include <functional>
#include <string>
#include <vector>

namespace ombrel {
class CAnnotatedGraph;
} // namespace ombrel

namespace ombrel::host {

class Messages;

/// What is to be drawn on, and where it is to be written.
struct Target : PictureForm {
    Target() { software = std::string("ombrel ") + kVersion; }
    /// Empty for standard output.
    std::string path;
};

/// A file that is ready to be written.
struct OutputFile {
    /// Empty for standard output.
    std::string path;
    std::string bytes;
    /// What is told of it; empty for nothing.
    std::string size {};
};

/// Writes each beside its target and renames it. One that cannot be written does not keep the others from being; what
/// is wrong with it is thrown at the end as Failure.
void WriteFiles(std::vector<OutputFile> const& files, Messages const& messages);

/// Throws Failure with kUsageFault when something would be written over an input or another output; an empty path is
/// standard output.
void CheckPaths(Options const& options, std::vector<std::string> const& paths);

/// The files that the options ask for.
class Outputs {
public:
    /// input names the picture when nothing else does. Throws Failure with kUsageFault, also when a file would be
    /// written over an input or another.
    Outputs(Options const& options, std::string const& input);

    /// Of the pictures, for those who list files.
    void SetTitle(std::string const& title);
    std::vector<Target>& GetPictures() { return m_pictures; }
    bool HasDocuments() const { return !m_documents.empty(); }

    /// Draws on the picture, the last one or not, and gives the graph.
    using Draw = std::function<CAnnotatedGraph const*(Picture& picture, bool isLast)>;
    /// Makes all files, and writes them when that has gone well. Documents hold the graph as it is in the first
    /// picture, unless their bytes are given.
    void Write(Draw const& draw, Messages const& messages, std::string const& document = {});

private:
    std::vector<Target> m_pictures;
    std::vector<std::string> m_documents;
    Target m_scratch;
};

/// To standard output. Throws Failure.
void WriteToStandardOutput(std::string const& bytes);

/// True when both name the same existing file.
bool IsSameFile(std::string const& a, std::string const& b);

} // namespace ombrel::host
