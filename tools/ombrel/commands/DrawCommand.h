#pragma once

namespace ombrel::host {

class InputFile;
class Messages;
struct Options;

/// Draws a stored document. Throws Failure.
void RunDraw(Options const& options, InputFile& file, Messages const& messages);

} // namespace ombrel::host
