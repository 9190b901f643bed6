#pragma once
#include "ombrel/chart/Picture.h"
#include "tools/ombrel/Version.h"
#include "tools/ombrel/options/Options.h"

#include <string>

namespace ombrel::host {

class Messages;

/// What is to be drawn on, and where it is to be written.
struct Target : PictureForm {
    Target() { software = std::string("ombrel ") + kVersion; }
    /// Empty for standard output.
    std::string path;
};

/// The target that the options ask for, with the input's name for one that is not named. Throws Failure with
/// kUsageFault.
Target MakeTarget(Options const& options, std::string const& input);

/// Throws Failure with kUsageFault when the picture or the document would be written over an input or each other.
void CheckPaths(Options const& options, Target const& target);

/// Notes which marks are not on the page as shapes.
void TellMarks(Target const& target, Picture& picture, Messages const& messages);

/// Writes beside the target and renames, or to standard output. Throws Failure or ChartError.
void WriteTarget(Target const& target, std::string const& bytes, Messages const& messages);

/// True when both name the same existing file.
bool IsSameFile(std::string const& a, std::string const& b);

} // namespace ombrel::host
