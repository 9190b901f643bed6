#pragma once

namespace ombrel::host {

class InputFile;
class Messages;
struct Options;

/// Writes a document in the newest layout, or its curves as a table. Throws Failure.
void RunConvert(Options const& options, InputFile& file, Messages const& messages);

} // namespace ombrel::host
