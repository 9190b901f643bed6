#include "tools/ombrel/OutputFile.h"
#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/chart/Document.h"
#include "ombrel/platform/framework/Unicode.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/TextMetrics.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/Messages.h"

#include <algorithm>
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

Target MakeTarget(Options const& options, std::string const& output, std::string const& input)
{
    Target target;
    auto const fail = [](std::string const& text) { throw Failure(kUsageFault, text); };
    bool const toStandardOutput = output == "-";
    if (toStandardOutput && !options.format)
        fail("-o - needs --format, since there is no extension to tell it");
    if (options.format) {
        target.format = *options.format;
    } else if (!output.empty()) {
        auto const format = FormatOfPath(output);
        if (!format)
            fail("-o " + output + ": expected the extension .png, .bmp, .pdf, .svg, .ps or .ombrel, or --format");
        target.format = *format;
    }
    if (!toStandardOutput)
        target.path = output.empty() ? DefaultPath(input, target.format) : output;
    return target;
}

/// Throws when an option is for pages or bitmaps alone and there is none.
void CheckForms(Options const& options, std::vector<Target> const& pictures)
{
    if (pictures.empty())
        return;
    auto const fail = [](char const* text) { throw Failure(kUsageFault, text); };
    auto const isPage = [](Target const& target) { return target.IsPage(); };
    bool const hasPages = std::any_of(pictures.begin(), pictures.end(), isPage);
    if (options.size && std::all_of(pictures.begin(), pictures.end(), isPage))
        fail("--size is for .png and .bmp; a page takes --page");
    if (options.IsGiven(OptionId::Scale) && std::all_of(pictures.begin(), pictures.end(), isPage))
        fail("--scale is for .png and .bmp; on a page everything has the size that it has in print");
    if (options.page && !hasPages)
        fail("--page is for .pdf, .svg and .ps; a picture takes --size");
    if (options.IsGiven(OptionId::Vector) && !hasPages)
        fail("--vector is for .pdf, .svg and .ps");
}

/// Notes which marks are not on the page as shapes.
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

std::string SizeText(Target const& target)
{
    auto const text = [](double width, double height, char const* unit) {
        return std::to_string(std::lround(width)) + " x " + std::to_string(std::lround(height)) + unit;
    };
    return target.IsPage() ? text(target.page.width, target.page.height, " mm")
                           : text(target.size.width, target.size.height, " pixels");
}

/// Of characters that stay away from the picture.
void TellMissing(Messages const& messages)
{
    constexpr std::size_t kMost = 5;
    std::u32string const missing = TakeCharactersWithoutGlyph();
    if (missing.empty())
        return;
    std::string text;
    for (char32_t const character : missing.substr(0, kMost)) {
        char number[16];
        std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(character));
        std::u16string units;
        unicode::Append(units, character);
        text += (text.empty() ? "" : ", ") + QuoteForMessage(unicode::ToUtf8(units)) + " (" + number + ")";
    }
    if (missing.size() > kMost)
        text += " and " + std::to_string(missing.size() - kMost) + " more";
    messages.Warning("no font has a glyph for " + text + "; a font that has it needs to be installed");
}

} // namespace

void CheckPaths(Options const& options, std::vector<std::string> const& paths)
{
    for (std::size_t i = 0; i < paths.size(); ++i) {
        for (std::string const& file : options.files) {
            if (file != "-" && IsSameFile(file, paths[i]))
                throw Failure(kUsageFault, paths[i] + ": would be written over the input");
        }
        for (std::size_t k = 0; k < i; ++k) {
            if (paths[i] == paths[k] || IsSameFile(paths[i], paths[k]))
                throw Failure(kUsageFault, paths[i].empty() ? "-o -: given twice" : paths[i] + ": is to be two files");
        }
    }
}

Outputs::Outputs(Options const& options, std::string const& input)
    : m_documents(options.save.empty() ? 0 : 1, options.save)
{
    auto const settle = [&options](Target& target) {
        target.size = options.size.value_or(target.size);
        target.scale = options.scale;
        target.page = options.page.value_or(target.page);
        target.description = options.description;
        target.marks = options.allVector ? PageMarks::Vector : PageMarks::Auto;
    };
    for (std::string const& output : options.outputs) {
        if (output.ends_with(".ombrel") && !options.format)
            m_documents.push_back(output);
        else
            settle(m_pictures.emplace_back(MakeTarget(options, output, input)));
    }
    if (options.outputs.empty())
        settle(m_pictures.emplace_back(MakeTarget(options, {}, input)));
    CheckForms(options, m_pictures);
    settle(m_scratch);
    if (options.page)
        m_scratch.format = PictureFormat::Pdf;
    std::vector<std::string> paths = m_documents;
    for (Target const& target : m_pictures)
        paths.push_back(target.path);
    CheckPaths(options, paths);
}

void Outputs::SetTitle(std::string const& title)
{
    for (Target& target : m_pictures)
        target.title = title;
}

void Outputs::Write(Draw const& draw, Messages const& messages, std::string const& document)
{
    std::vector<OutputFile> files;
    auto const addDocuments = [&](CAnnotatedGraph const* graph) {
        for (std::string const& path : m_documents) {
            if (!graph)
                throw Failure(kUsageFault, path + ": there is no graph to be stored");
            files.push_back({ path, document.empty() ? EncodeDocument(*graph) : document, {} });
        }
    };
    if (m_pictures.empty()) {
        Picture scratch(m_scratch);
        addDocuments(draw(scratch, true));
    }
    for (Target const& target : m_pictures) {
        Picture picture(target);
        CAnnotatedGraph const* const graph = draw(picture, &target == &m_pictures.back());
        if (&target == &m_pictures.front())
            addDocuments(graph);
        files.push_back({ target.path, picture.Encode(), SizeText(target) });
        TellMarks(target, picture, messages);
    }
    TellMissing(messages);
    WriteFiles(files, messages);
}

void WriteFiles(std::vector<OutputFile> const& files, Messages const& messages)
{
    std::string faults;
    for (OutputFile const& file : files) {
        try {
            if (file.path.empty()) {
                WriteToStandardOutput(file.bytes);
                continue;
            }
            WritePictureFile(file.path, file.bytes);
            if (!file.size.empty())
                messages.Note(file.path + ": written, " + file.size);
        } catch (std::runtime_error const& error) {
            faults += (faults.empty() ? "" : "; ") + std::string(error.what());
        }
    }
    if (!faults.empty())
        throw Failure(kDataFault, faults);
}

void WriteToStandardOutput(std::string const& bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0)
        throw Failure(kDataFault, std::string("standard output: cannot be written: ") + std::strerror(errno));
}

bool IsSameFile(std::string const& a, std::string const& b)
{
    std::error_code error;
    return std::filesystem::equivalent(a, b, error) && !error;
}

} // namespace ombrel::host
