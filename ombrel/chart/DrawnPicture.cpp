#include "ombrel/chart/DrawnPicture.h"
#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/chart/Document.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/Titles.h"
#include "ombrel/platform/framework/Exception.h"
#include "ombrel/table/Utf8.h"

namespace ombrel {

void DrawnPicture::SetFileTitle(std::string_view title) { m_title = OneLine(std::string(title)); }

void DrawnPicture::LayOut(CDC& dc, CRect const& rect)
{
    WithErrors([&] { LaidOut(dc, CRect(CPoint(0, 0), rect.Size())); });
}

void DrawnPicture::Draw(CDC& dc, CRect const& rect)
{
    WithErrors([&] { LaidOut(dc, CRect(CPoint(0, 0), rect.Size())).Draw(&dc, rect, pmDirect); });
}

void DrawnPicture::Draw(Picture& picture)
{
    WithErrors([&] { picture.Draw(LaidOut(picture.GetDC(), picture.GetRect())); });
}

std::string DrawnPicture::Encode(PictureForm form)
{
    form.title = m_title;
    if (!m_description.empty())
        form.description = m_description;
    return WithErrors([&] {
        Picture picture(std::move(form));
        Draw(picture);
        return picture.Encode();
    });
}

void DrawnPicture::Save(std::string const& path, PictureForm form)
{
    if (path.ends_with(".ombrel")) {
        form.format = PictureFormat::Png;
        WithErrors([&] {
            // A draw gives annotation its place in the graph.
            Picture picture(form);
            CRect const rect = picture.GetRect();
            CAnnotatedGraph& graph = LaidOut(picture.GetDC(), rect);
            graph.Draw(&picture.GetDC(), rect, pmDirect);
            SaveDocument(path, graph);
        });
        return;
    }
    auto const format = FormatOfPath(path);
    if (!format)
        throw ChartError(ChartError::Cause::Setting,
            "path: expected a name that ends in .png, .bmp, .pdf, .svg, .ps or .ombrel, found "
                + QuoteForMessage(path));
    form.format = *format;
    WritePictureFile(path, Encode(std::move(form)));
}

} // namespace ombrel
