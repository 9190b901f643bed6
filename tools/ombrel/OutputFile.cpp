#include "tools/ombrel/OutputFile.h"
#include "ombrel/platform/gdi/DC.h"
#include "tools/ombrel/Messages.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace ombrel::host {

namespace {

char const* ExtensionOf(PictureFormat format)
{
    switch (format) {
    case PictureFormat::Png:
        return ".png";
    case PictureFormat::Bmp:
        return ".bmp";
    case PictureFormat::Pdf:
        return ".pdf";
    case PictureFormat::Svg:
        return ".svg";
    case PictureFormat::PostScript:
        return ".ps";
    }
    return "";
}

std::string DefaultPath(std::string const& input, PictureFormat format)
{
    if (input == "-")
        return std::string("stdin") + ExtensionOf(format);
    return std::filesystem::path(input).filename().replace_extension(ExtensionOf(format)).string();
}

void WriteToStandardOutput(std::string const& bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0)
        throw Failure(kDataFault, std::string("standard output: cannot be written: ") + std::strerror(errno));
}

} // namespace

Target MakeTarget(Options const& options, std::string const& input)
{
    Target target;
    auto const fail = [](std::string const& text) { throw Failure(kUsageFault, text); };
    bool const toStandardOutput = options.output == "-";
    if (toStandardOutput && !options.format)
        fail("-o - needs --format, since there is no extension to tell it");
    if (options.format) {
        target.format = *options.format;
    } else if (!options.output.empty()) {
        auto const format = FormatOfPath(options.output);
        if (!format)
            fail("-o " + options.output + ": expected the extension .png, .bmp, .pdf, .svg or .ps, or --format");
        target.format = *format;
    }
    if (!toStandardOutput)
        target.path = options.output.empty() ? DefaultPath(input, target.format) : options.output;
    if (options.size)
        target.size = *options.size;
    if (options.size && target.IsPage())
        fail("--size is for .png and .bmp; a page takes --page");
    if (options.page && !target.IsPage())
        fail("--page is for .pdf, .svg and .ps; a picture takes --size");
    if (options.IsGiven(OptionId::Vector) && !target.IsPage())
        fail("--vector is for .pdf, .svg and .ps");
    if (options.page)
        target.page = *options.page;
    target.description = options.description;
    target.marks = options.allVector ? PageMarks::Vector : PageMarks::Auto;
    return target;
}

void CheckPaths(Options const& options, Target const& target)
{
    for (std::string const& file : options.files) {
        for (std::string const& path : { target.path, options.save }) {
            if (file != "-" && !path.empty() && IsSameFile(file, path))
                throw Failure(kUsageFault, path + ": would be written over the input");
        }
    }
    if (!options.save.empty() && options.save == target.path)
        throw Failure(kUsageFault, options.save + ": is to be the picture and the document");
}

void TellMarks(Target const& target, Picture& picture, Messages const& messages)
{
    MarkCounts const counts = picture.GetMarkCounts();
    std::string text;
    if (counts.inImages > 0)
        text = std::to_string(counts.inImages) + " marks are part of an image of "
            + std::to_string(picture.GetDC().GetDeviceCaps(LOGPIXELSX)) + " dots per inch";
    if (counts.hidden > 0)
        text += (text.empty() ? "" : ", ") + std::to_string(counts.hidden) + " marks hidden by others are left out";
    if (!text.empty())
        messages.Note((target.path.empty() ? "page" : target.path) + ": " + text + " (--vector all keeps each)");
}

void WriteTarget(Target const& target, std::string const& bytes, Messages const& messages)
{
    if (target.path.empty()) {
        WriteToStandardOutput(bytes);
        return;
    }
    WritePictureFile(target.path, bytes);
    std::string text = target.path + ": written, ";
    if (target.IsPage())
        text += std::to_string(std::lround(target.page.width)) + " x " + std::to_string(std::lround(target.page.height))
            + " mm";
    else
        text += std::to_string(target.size.width) + " x " + std::to_string(target.size.height) + " pixels";
    messages.Note(text);
}

bool IsSameFile(std::string const& a, std::string const& b)
{
    std::error_code error;
    return std::filesystem::equivalent(a, b, error) && !error;
}

} // namespace ombrel::host
