#pragma once
#include "ombrel/chart/Picture.h"
#include "ombrel/layout/ChartNotes.h"

#include <string>
#include <string_view>

namespace ombrel {

/// What is drawn on bitmaps and pages, or written to files: what charts, scenes and maps have in common.
///
/// One thread a picture; threads may have pictures of their own. Errors: ChartError for what cannot be drawn or
/// written, and Error where the system refuses something, such as memory or OpenGL.
class OMBREL_EXPORT DrawnPicture {
public:
    virtual ~DrawnPicture() = default;
    /// Writes a picture (.png, .bmp), a page (.pdf, .svg, .ps) or the graph as a document (.ombrel), by the ending of
    /// the name. The file is written beside its target and renamed. form gives the size of pictures and pages; its
    /// format and title are not looked at.
    void Save(std::string const& path, PictureForm form = {});
    /// What files say for those who cannot see the picture; empty, as at first, for a sentence about kind, series and
    /// ranges.
    void Description(std::string_view text) { m_description = text; }
    /// The bytes of such a file.
    std::string Encode(PictureForm form);
    /// Draws into a rectangle of a context, device pixels: of a bitmap, a page, a window. Drawn again at the same size,
    /// only what has changed is worked out anew.
    void Draw(CDC& dc, CRect const& rect);
    void Draw(Picture& picture);

    /// Does what Draw does first: lays everything out for a context like dc and a rectangle of that size. What a graph
    /// holds then is what is drawn.
    void LayOut(CDC& dc, CRect const& rect);

    /// What was noticed in the data and in making what was last laid out.
    virtual ChartNotes Notes() const = 0;

protected:
    explicit DrawnPicture(std::string_view title) { SetFileTitle(title); }
    DrawnPicture(DrawnPicture&&) = default;
    DrawnPicture& operator=(DrawnPicture&&) = default;

    /// For those who list files.
    void SetFileTitle(std::string_view title);

private:
    /// window begins at the origin.
    virtual CAnnotatedGraph& LaidOut(CDC& dc, CRect const& window) = 0;

    std::string m_title;
    std::string m_description;
};

} // namespace ombrel
