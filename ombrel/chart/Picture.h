#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"
#include "ombrel/platform/gdi/PageSurface.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace ombrel {

class CAnnotatedGraph;
class CDC;
class CDIB;
/// What a picture is written as: bitmaps (PNG, BMP) or pages.
enum class PictureFormat { Png, Bmp, Pdf, Svg, PostScript };

/// The format of a file by its extension.
OMBREL_EXPORT std::optional<PictureFormat> FormatOfPath(std::string_view path);

/// Pixels.
struct PictureSize {
    int width = 1000;
    int height = 640;
};

/// Millimetres.
struct PageSize {
    double width = 297.0;
    double height = 210.0;
};

/// What is to be drawn on.
struct PictureForm {
    PictureFormat format = PictureFormat::Png;
    /// Of bitmaps.
    PictureSize size {};
    /// Of bitmaps: how many times as large fonts, lines and marks are as on a screen of 96 dots per inch; above 0.
    /// Twice the size and twice the scale look the same on a screen of twice as many dots.
    double scale = 1.0;
    /// Of pages.
    PageSize page {};
    PageMarks marks = PageMarks::Auto;
    /// For those who list files, not drawn.
    std::string title {};
    /// For those who cannot see it, not drawn: in PNG, SVG and PDF files. Empty for a sentence about the graph that
    /// Draw drew last on each page.
    std::string description {};
    /// The program that made it, in PNG files.
    std::string software = "ombrel";

    bool IsPage() const { return format != PictureFormat::Png && format != PictureFormat::Bmp; }
};

/// A bitmap, or one page or several, to draw graphs on.
class OMBREL_EXPORT Picture {
public:
    /// Throws CResourceException* when there is no memory.
    explicit Picture(PictureForm form);
    ~Picture();
    Picture(Picture const&) = delete;
    Picture& operator=(Picture const&) = delete;
    PictureForm const& GetForm() const { return m_form; }
    CDC& GetDC();
    /// All of it, device pixels.
    CRect GetRect() const { return m_rect; }
    /// Draws a graph into the whole of it, and describes it where the form does not.
    void Draw(CAnnotatedGraph& graph);
    /// What is drawn from here on goes on another page of the same size. Throws ChartError for all formats but PDF and
    /// PostScript.
    void NextPage();
    /// The bytes of the file. Nothing may be drawn after it. Of pages they depend on what was drawn alone, and on the
    /// environment's SOURCE_DATE_EPOCH.
    std::string Encode();
    /// Which marks are not on the page as shapes; none of a bitmap.
    MarkCounts GetMarkCounts() const { return m_page ? m_page->GetMarkCounts() : MarkCounts(); }

private:
    /// The form's, or what the pages say.
    std::string Description() const;

    PictureForm m_form;
    /// Of the pages that are done, and of this one; empty where the form has a description or the format none.
    std::string m_earlierPages;
    std::string m_thisPage;
    CRect m_rect;
    std::unique_ptr<CDIB> m_bitmap;
    /// Owned by the device context.
    PageSurface* m_page = nullptr;
    std::unique_ptr<CDC> m_pageDC;
};

/// Writes beside the file and renames, so that nothing is lost when that fails. Throws ChartError.
OMBREL_EXPORT void WritePictureFile(std::string const& path, std::string const& bytes);

} // namespace ombrel
