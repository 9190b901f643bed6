#pragma once
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/gdi/Surface.h"

#include <memory>
#include <string>

namespace ombrel {

/// What a page is written as.
enum class PageFormat { Pdf, Svg, PostScript };

/// How pages keep the marks of many points.
enum class PageMarks {
    /// Those that later ones of the same kind hide are left out, and where more than some thousands of a kind show they
    /// become an image of the page's own resolution.
    Auto,
    /// Every one is a shape, in view or not.
    Vector
};

/// A printed page: its size, and what its document information says.
struct PageSetup {
    PageFormat format = PageFormat::Pdf;
    double widthMm = 297.0;
    double heightMm = 210.0;
    CString title;
    /// For those who cannot see it; in SVG and PDF.
    CString description;
    /// Seconds since 1970 for the document's date.
    long long creationTime = 0;
    PageMarks marks = PageMarks::Auto;
};

/// What has become of marks that are not on a page as shapes.
struct MarkCounts {
    /// Left out, since others hide them.
    long long hidden = 0;
    /// Part of an image.
    long long inImages = 0;
    friend bool operator==(MarkCounts const&, MarkCounts const&) = default;
};

/// A printer: device pixels at 600 to the inch, real millimetres. Lines stay lines, text stays text.
/// Pages longer than 1354 mm have 300 or 150 pixels to the inch, so that no side is beyond kMappedLimit.
class PageSurface : public Surface {
public:
    /// The bytes of the finished document; the surface takes no more drawing after it.
    /// Throws CResourceException* when the document cannot be made.
    virtual std::string Finish() = 0;
    /// What is drawn from here on goes on another page of the same size; false, and nothing is changed, where the
    /// format holds one page only, which is SVG.
    virtual bool NextPage() = 0;
    /// Sets the description of the setup, at any time before the end.
    virtual void Describe(CString const& description) = 0;
    /// Of the marks drawn so far.
    virtual MarkCounts GetMarkCounts() const = 0;
    bool IsPrinting() const override { return true; }
};

/// Of pages that are not very large.
inline constexpr int kPageDotsPerInch = 600;

/// Sides of 1 … 5080 mm (beyond, they are limited).
OMBREL_EXPORT std::unique_ptr<PageSurface> MakePageSurface(PageSetup const& setup);

} // namespace ombrel
