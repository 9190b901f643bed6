#pragma once
#include <string>

namespace ombrel::host {

/// The manual page ombrel(1), in the man macros.
std::string ManPage();

/// Completion of commands, options, their words and files, for three shells.
std::string BashCompletion();
std::string ZshCompletion();
std::string FishCompletion();

/// What the README says of commands and options, in Markdown.
std::string ReadmeReference();

} // namespace ombrel::host
