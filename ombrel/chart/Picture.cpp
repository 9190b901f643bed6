#include "ombrel/chart/Picture.h"
#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/Description.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/platform/framework/File.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/PageSurface.h"
#include "ombrel/platform/gdi/PngEncoder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <span>

namespace ombrel {

namespace {

int DotsPerInch(PictureForm const& form)
{
    constexpr double kScreen = 96.0;
    return std::max(static_cast<int>(std::lround(kScreen * form.scale)), 1);
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

} // namespace

std::optional<PictureFormat> FormatOfPath(std::string_view path)
{
    constexpr std::array<std::string_view, 5> kExtensions { "png", "bmp", "pdf", "svg", "ps" };
    auto const point = path.find_last_of("./");
    if (point == std::string_view::npos || path[point] != '.')
        return std::nullopt;
    std::string extension(path.substr(point + 1));
    std::transform(extension.begin(), extension.end(), extension.begin(),
        [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    auto const found = std::find(kExtensions.begin(), kExtensions.end(), extension);
    if (found == kExtensions.end())
        return std::nullopt;
    return static_cast<PictureFormat>(found - kExtensions.begin());
}

Picture::Picture(PictureForm form)
    : m_form(std::move(form))
{
    if (!m_form.IsPage()) {
        m_rect = CRect(0, 0, m_form.size.width, m_form.size.height);
        m_bitmap = std::make_unique<CDIB>(m_form.size.width, m_form.size.height, 24);
        m_bitmap->SetDotsPerInch(DotsPerInch(m_form));
        return;
    }
    PageSetup setup;
    setup.format = PageFormatOf(m_form.format);
    setup.widthMm = m_form.page.width;
    setup.heightMm = m_form.page.height;
    setup.title = CString(m_form.title);
    setup.creationTime = CreationTime();
    setup.marks = m_form.marks;
    std::shared_ptr<PageSurface> surface = MakePageSurface(setup);
    m_page = surface.get();
    m_rect = surface->Bounds();
    m_pageDC = std::make_unique<CDC>(std::move(surface));
}

Picture::~Picture() = default;

CDC& Picture::GetDC() { return m_pageDC ? *m_pageDC : *m_bitmap->GetDC(); }

void Picture::NextPage()
{
    if (!m_page || !m_page->NextPage())
        throw ChartError(ChartError::Cause::Setting, "pages: several need PDF or PostScript");
    if (!m_thisPage.empty())
        m_earlierPages += m_thisPage + ' ';
    m_thisPage.clear();
}

std::string Picture::Description() const
{
    return m_form.description.empty() ? m_earlierPages + m_thisPage : m_form.description;
}

std::string Picture::Encode()
{
    if (m_page) {
        m_page->Describe(CString(Description()));
        return m_page->Finish();
    }
    if (m_form.format == PictureFormat::Bmp)
        return m_bitmap->EncodeBmp();
    PngSettings settings;
    settings.dotsPerInch = DotsPerInch(m_form);
    if (!m_form.title.empty())
        settings.texts.emplace_back("Title", m_form.title);
    if (std::string const description = Description(); !description.empty())
        settings.texts.emplace_back("Description", description);
    settings.texts.emplace_back("Software", m_form.software);
    return EncodePng(*m_bitmap->GetBitmap().GetRaster(), settings);
}

void Picture::Draw(CAnnotatedGraph& graph)
{
    graph.Draw(&GetDC(), m_rect, pmDirect);
    // Drawn again and again, bitmaps without texts and pages without descriptions need no words.
    bool const isTold = m_form.format != PictureFormat::Bmp && m_form.format != PictureFormat::PostScript;
    if (isTold && m_form.description.empty())
        m_thisPage = DescribeGraph(graph);
}

void WritePictureFile(std::string const& path, std::string const& bytes)
{
    CString const name(path);
    // The library's file names are Unicode; another file must not be written in place of this one.
    if (name.ToUtf8() != path)
        throw ChartError(ChartError::Cause::Data, path + ": cannot be written: its name is not UTF-8");
    try {
        WithErrors([&] { WriteFileAtomically(name, std::as_bytes(std::span(bytes))); });
    } catch (Error const& error) {
        std::string const text = error.GetSystemError() ? std::strerror(error.GetSystemError()) : error.what();
        throw ChartError(ChartError::Cause::Data, path + ": cannot be written: " + text);
    }
}

} // namespace ombrel
