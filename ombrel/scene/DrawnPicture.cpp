#include "ombrel/scene/DrawnPicture.h"
#include "ombrel/annotation/AnnotatedGraph.h"
#include "ombrel/chart/Document.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/scene/parts/SceneTexts.h"

namespace ombrel {

DrawnPicture::DrawnPicture(std::string title)
    : m_title(std::move(title))
{
}

void DrawnPicture::LayOut(CDC& dc, CRect const& rect) { LaidOut(dc, CRect(0, 0, rect.Width(), rect.Height())); }

void DrawnPicture::Draw(CDC& dc, CRect const& rect)
{
    LaidOut(dc, CRect(0, 0, rect.Width(), rect.Height())).Draw(&dc, rect, pmDirect);
}

void DrawnPicture::Draw(Picture& picture) { Draw(picture.GetDC(), picture.GetRect()); }

std::string DrawnPicture::Encode(PictureForm form)
{
    form.title = m_title;
    Picture picture(form);
    Draw(picture);
    return picture.Encode();
}

void DrawnPicture::Save(std::string const& path, PictureForm form)
{
    if (ExtensionOf(path) == ".ombrel") {
        form.format = PictureFormat::Png;
        // A draw gives annotation its place in the graph.
        Picture picture(form);
        CRect const rect = picture.GetRect();
        CAnnotatedGraph& graph = LaidOut(picture.GetDC(), rect);
        graph.Draw(&picture.GetDC(), rect, pmDirect);
        SaveDocument(path, graph);
        return;
    }
    auto const format = FormatOfPath(path);
    if (!format)
        throw ChartError(ChartError::Cause::Setting,
            "output: expected the extension .png, .bmp, .pdf, .svg, .ps or .ombrel, found " + path);
    form.format = *format;
    WritePictureFile(path, Encode(std::move(form)));
}

} // namespace ombrel
