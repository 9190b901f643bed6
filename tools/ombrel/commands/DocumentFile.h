#pragma once

#include <memory>

namespace ombrel {
class CGraph;
}

namespace ombrel::host {

class InputFile;
class Messages;
struct Options;

/// The graph of a document as LoadDocument gives it. Throws Failure, naming the file.
std::unique_ptr<CGraph> ReadDocument(Options const& options, InputFile& file, Messages const& messages);

} // namespace ombrel::host
