#include "tools/ombrel/OutputFile.h"
#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/PageSurface.h"
#include "ombrel/platform/gdi/PngEncoder.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/Version.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace ombrel::host {

namespace {

constexpr int kScreenDotsPerInch = 96;

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

PageFormat PageFormatOf(PictureFormat format)
{
    switch (format) {
    case PictureFormat::Svg:
        return PageFormat::Svg;
    case PictureFormat::PostScript:
        return PageFormat::PostScript;
    default:
        return PageFormat::Pdf;
    }
}

/// The time that documents are to say they were made at: the clock would make every run's bytes different.
long long CreationTime()
{
    char const* const text = std::getenv("SOURCE_DATE_EPOCH");
    long long time = 0;
    if (text)
        std::from_chars(text, text + std::strlen(text), time);
    return std::max(time, 0LL);
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
    if (options.page)
        target.page = *options.page;
    return target;
}

Picture::Picture(Target const& target)
    : m_target(target)
{
    if (!target.IsPage()) {
        m_rect = CRect(0, 0, target.size.width, target.size.height);
        m_bitmap = std::make_unique<CDIB>(target.size.width, target.size.height, 24);
        return;
    }
    PageSetup setup;
    setup.format = PageFormatOf(target.format);
    setup.widthMm = target.page.width;
    setup.heightMm = target.page.height;
    setup.title = CString(target.title);
    setup.creationTime = CreationTime();
    std::shared_ptr<PageSurface> surface = MakePageSurface(setup);
    m_page = surface.get();
    m_rect = surface->Bounds();
    m_pageDC = std::make_unique<CDC>(std::move(surface));
}

Picture::~Picture() = default;

CDC& Picture::GetDC() { return m_pageDC ? *m_pageDC : *m_bitmap->GetDC(); }

std::string Picture::Encode()
{
    if (m_page)
        return m_page->Finish();
    if (m_target.format == PictureFormat::Bmp)
        return m_bitmap->EncodeBmp();
    PngSettings settings;
    settings.dotsPerInch = kScreenDotsPerInch;
    if (!m_target.title.empty())
        settings.texts.emplace_back("Title", m_target.title);
    settings.texts.emplace_back("Software", std::string("ombrel ") + kVersion);
    return EncodePng(*m_bitmap->GetBitmap().GetRaster(), settings);
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

void DrawGraph(CAnnotatedGraph& graph, Picture& picture) { graph.Draw(&picture.GetDC(), picture.GetRect(), pmDirect); }

void WriteFile(std::string const& path, std::string const& bytes)
{
    CString const name(path);
    // The library's file names are Unicode; another file must not be written in place of this one.
    if (name.ToUtf8() != path)
        throw Failure(kDataFault, path + ": cannot be written: its name is not UTF-8");
    try {
        WithErrors([&] { WriteFileAtomically(name, std::as_bytes(std::span(bytes))); });
    } catch (Error const& error) {
        std::string const text = error.GetSystemError() ? std::strerror(error.GetSystemError()) : error.what();
        throw Failure(kDataFault, path + ": cannot be written: " + text);
    }
}

void WriteTarget(Target const& target, std::string const& bytes, Messages const& messages)
{
    if (target.path.empty()) {
        WriteToStandardOutput(bytes);
        return;
    }
    WriteFile(target.path, bytes);
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
