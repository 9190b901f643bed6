#pragma once

namespace ombrel::host {

class Messages;
struct Options;

/// Draws every picture of the gallery into a folder, which is made when there is none, and an index page to leaf
/// through them. Throws Failure.
void RunGallery(Options const& options, Messages const& messages);

} // namespace ombrel::host
