#pragma once

#include <string>

namespace ombrel::host {

class InputFile;
class Messages;
struct Options;

/// What is in the file, as text for a person. Throws Failure.
std::string DescribeFile(Options const& options, InputFile& file, Messages const& messages);

} // namespace ombrel::host
